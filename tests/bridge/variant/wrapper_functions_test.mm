// What the functions that make wrapper objects promise beyond what the conversions ask of them: those look first
// whether there is an object, and whether it has a wrapper.
#include "bridge/family/cocoa_init.h"
#include "bridge/family/instances.h"
#include "bridge/variant/wrapper_objects.h"
#include "tests/support/inner_test.h"

#include <Foundation/Foundation.h>

using host::Value;

namespace {

class WrapperFunctions : public support::InnerOn2013 {
protected:
    void SetUp() override
    {
        support::InnerOn2013::SetUp();
        CocoaInit();
        host.defineClass({kClass, "", 64, {}, {}, nullptr, nullptr});
        object = [[[NSObject alloc] init] autorelease];
    }

    static Value registered(id object)
    {
        return support::adopted([=](HeldHandles &held) { return NewRegisteredWrapper(object, kClass, held); });
    }
    static Value walked(id object, Class required)
    {
        return support::adopted([=](HeldHandles &held) { return NewNSObjectKTZ(object, required, held); });
    }

    static constexpr char kClass[] = "NSObjectKTZ";
    id object = nil;
};

} // namespace

TEST_F(WrapperFunctions, GiveNullForNil)
{
    EXPECT_TRUE(registered(nil).isNil());
    EXPECT_TRUE(walked(nil, [NSObject class]).isNil());
    EXPECT_TRUE(registered(object).isObject());
    EXPECT_TRUE(walked(object, [NSObject class]).isObject());
}

TEST_F(WrapperFunctions, MakeNothingForAKindThatTheSystemLacks)
{
    EXPECT_TRUE(walked(object, nil).isNil());
    EXPECT_TRUE(host.imbalances().empty()) << "an object of another kind leaves an instance behind";
}

TEST_F(WrapperFunctions, GiveTheSharedWrapperOfAnObjectAgain)
{
    Value first = registered(object);
    Value second = registered(object);
    EXPECT_TRUE(second.sameHandle(first));
    EXPECT_EQ(first.lockCount(), 2);
    ForgetCarrier(object);
    [object release]; // as the finaliser of a wrapper class does
}
