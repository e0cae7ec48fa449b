// The start-up of Cocoa: once, and what the family's libraries bring as soon as they are there.
#include "bridge/family/cocoa_init.h"
#include "bridge/family/instances.h"
#include "tests/support/cocoa_method.h"
#include "tests/support/inner_test.h"
#include "tests/support/plugin_under_test.h"

using support::CocoaMethod;
using support::MethodOf;

namespace {

int applications, preparations;

void *countApplication(void *, void *)
{
    applications++;
    return nullptr;
}

void *countPreparation(void *, void *)
{
    preparations++;
    return nullptr;
}

host::Value carrierOf(const void *object)
{
    return support::adopted([=](HeldHandles &held) { return LockedCarrierOf(object, held); });
}

class CocoaStartUp : public support::Inner {
protected:
    void startWithoutFamily()
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.family = false;
        start(profile);
    }
};

TEST_F(CocoaStartUp, StartsTheApplicationOnce)
{
    startWithoutFamily();
    CocoaMethod counted("NSApplication", "sharedApplication", MethodOf::Class,
                        reinterpret_cast<void *>(countApplication));
    CocoaInit();
    CocoaInit();
    EXPECT_EQ(applications, 1);
}

TEST_F(CocoaStartUp, DoesNotHappenWhenTheHostLoadsThePlugIn)
{
    CocoaMethod counted("NSApplication", "sharedApplication", MethodOf::Class,
                        reinterpret_cast<void *>(countApplication));
    startWithoutFamily();
    EXPECT_EQ(applications, 0);
}

TEST_F(CocoaStartUp, PreparesTheFamilysExceptionsOnce)
{
    start("2013.03");
    CocoaMethod counted("NSException", "PrepareNSExceptionKTZ", MethodOf::Class,
                        reinterpret_cast<void *>(countPreparation));
    CocoaInit();
    CocoaInit();
    EXPECT_EQ(preparations, 1);
}

TEST_F(CocoaStartUp, FetchesTheFamilysRegistry)
{
    start("2013.03");
    EXPECT_EQ(instances, nullptr);
    CocoaInit();
    EXPECT_NE(instances, nullptr);
}

TEST_F(CocoaStartUp, WithoutTheFamilyGoesOnWithoutARegistry)
{
    startWithoutFamily();
    CocoaInit();
    EXPECT_EQ(instances, nullptr);
    EXPECT_TRUE(carrierOf(this).isNil());
    RecordCarrier(this, nullptr);
    ForgetCarrier(this);
}

TEST_F(CocoaStartUp, AsksForTheFamilyAgainUntilItIsThere)
{
    startWithoutFamily();
    CocoaInit();
    host.load(support::familyLibrary());
    CocoaMethod counted("NSException", "PrepareNSExceptionKTZ", MethodOf::Class,
                        reinterpret_cast<void *>(countPreparation));
    CocoaInit();
    CocoaInit();
    EXPECT_NE(instances, nullptr);
    EXPECT_EQ(preparations, 1);
}

TEST_F(CocoaStartUp, KeepsTheRegistryThatItFetched)
{
    start("2013.03");
    CocoaInit();
    CFMutableDictionaryRef first = instances;
    CocoaMethod another("NSException", "GetInstancesDictionaryKTZ", MethodOf::Class,
                        reinterpret_cast<void *>(countPreparation));
    CocoaInit();
    EXPECT_EQ(instances, first);
    EXPECT_EQ(preparations, 0) << "not asked for again";
}

TEST_F(CocoaStartUp, ACarrierIsLockedForWhoeverFindsIt)
{
    start("2013.03");
    CocoaInit();
    host::Value date = host.newInstance("Date");
    RecordCarrier(this, support::objectOf(date));
    EXPECT_EQ(date.lockCount(), 1) << "an entry holds no lock";

    host::Value found = carrierOf(this);
    EXPECT_TRUE(found.sameHandle(date));
    EXPECT_EQ(date.lockCount(), 2);

    ForgetCarrier(this);
    EXPECT_TRUE(carrierOf(this).isNil());
}

} // namespace
