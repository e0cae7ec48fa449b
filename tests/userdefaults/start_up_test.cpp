// Which members of the class start Cocoa.
#include "tests/support/cocoa_method.h"
#include "tests/support/host_test.h"
#include "tests/support/plugin_under_test.h"
#include "tests/userdefaults/cocoa_objects.h"

using support::CocoaMethod;
using support::kClass;
using support::MethodOf;

namespace {

constexpr char kConstructor[] = "Constructor";
constexpr char kConstructorUser[] = "Constructor(username as string)";

void *noDefaults(void *, void *)
{
    return nullptr;
}

int preparations;

void *countPreparation(void *, void *)
{
    preparations++;
    return nullptr;
}

// The family comes late, so that its preparation shows which member starts Cocoa.
class StartUp : public support::BlackBox {
protected:
    // How often the members that `use` calls prepare the family's exceptions.
    template <class Use>
    void expectPreparations(int expected, Use use)
    {
        CocoaMethod counted("NSException", "PrepareNSExceptionKTZ", MethodOf::Class,
                            reinterpret_cast<void *>(countPreparation));
        use();
        EXPECT_EQ(preparations, expected);
    }

    void startWithoutFamily()
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.family = false;
        start(profile);
    }
    void loadFamily() { host.load(support::familyLibrary()); }
};

TEST_F(StartUp, IsRunByTheInitialiserOfAnInstance)
{
    startWithoutFamily();
    loadFamily();
    expectPreparations(1, [&] { newEmptyInstance(); });
}

TEST_F(StartUp, IsRunByTheFinaliserOfAnInstance)
{
    startWithoutFamily();
    host::Value instance = newEmptyInstance();
    loadFamily();
    expectPreparations(1, [&] { instance = {}; });
}

TEST_F(StartUp, IsRunByTheConstructor)
{
    startWithoutFamily();
    host::Value instance = newEmptyInstance();
    loadFamily();
    expectPreparations(1, [&] { host.invoke(method(kConstructor), instance, {}); });
    EXPECT_EQ(cocoa::registeredCarrier(cocoa::carriedBy(instance)), instance.handle());
}

TEST_F(StartUp, IsRunByTheConstructorWithAUser)
{
    startWithoutFamily();
    host::Value instance = newEmptyInstance();
    loadFamily();
    expectPreparations(1, [&] { host.invoke(method(kConstructorUser), instance, {cocoa::currentUser()}); });
}

TEST_F(StartUp, IsNotRunByARefusedConstructor)
{
    startWithoutFamily();
    host::Value instance = host.newObject(kClass);
    loadFamily();
    expectPreparations(0, [&] { host.invoke(method(kConstructor), instance, {}); });
}

TEST_F(StartUp, IsRunByStandardUserDefaults)
{
    startWithoutFamily();
    loadFamily();
    expectPreparations(1, [&] {
        CocoaMethod none("NSUserDefaults", "standardUserDefaults", MethodOf::Class,
                         reinterpret_cast<void *>(noDefaults));
        EXPECT_TRUE(standardUserDefaults().isNil());
    });
}

TEST_F(StartUp, IsRunByResetStandardUserDefaults)
{
    startWithoutFamily();
    loadFamily();
    expectPreparations(1, [&] { host.callShared(kClass, "resetStandardUserDefaults"); });
}

TEST_F(StartUp, IsNotRunByTheNamesOfDomains)
{
    startWithoutFamily();
    loadFamily();
    expectPreparations(0, [&] {
        for (const char *name :
             {"NSGlobalDomain", "NSArgumentDomain", "NSRegistrationDomain", "NSUserDefaultsDidChangeNotification"})
            host.callShared(kClass, name);
    });
}

TEST_F(StartUp, WithoutFamilyInstancesWorkAndAreNotRecorded)
{
    startWithoutFamily();
    host::Value instance = host.newObject(kClass);
    EXPECT_NE(cocoa::carriedBy(instance), nullptr);
    host.call(instance, "setIntegerValue", {"Runs", 3});
    EXPECT_EQ(host.call(instance, "integerForKey", {"Runs"}).int32(), 3);
}

} // namespace
