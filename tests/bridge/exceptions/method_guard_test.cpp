// Cocoa's exceptions: logged once, raised once in host code, and nothing else lost on the way.
#include "hostapi/held_handles.h"
#include "hostapi/strings.h"
#include "tests/bridge/exceptions/cocoa_throwers.h"
#include "tests/support/cocoa_method.h"
#include "tests/support/inner_test.h"
#include "tests/support/log_capture.h"

#include <stdexcept>

using namespace cocoa_throwers;
using support::LogCapture;
using support::raisedOnce;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class MethodGuard : public support::InnerOn2013 {
protected:
    LogCapture log;
};

TEST_F(MethodGuard, GivesTheBodysResultAndLogsNothing)
{
    EXPECT_EQ(guardedInt32([] { return -7; }), -7);
    EXPECT_EQ(guardedDouble([] { return 2.5; }), 2.5);
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

TEST_F(MethodGuard, LogsAnNSExceptionOnceAndRaisesItOnce)
{
    guardedNothing([] { raise("NSRangeException", "too far"); });
    EXPECT_THAT(log.messages(), ElementsAre("A NSRangeException: too far, Info: (null)\n"));
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "NSExceptionKTZ", "too far"));
}

TEST_F(MethodGuard, GivesTheNeutralResultAfterAnNSException)
{
    auto fails = [](auto result) {
        return [=] {
            raise("NSRangeException", "too far");
            return result;
        };
    };
    EXPECT_EQ(guardedInt32(fails(5)), 0);
    EXPECT_EQ(guardedDouble(fails(5.5)), 0.0);
    EXPECT_EQ(guardedHandle(fails(REALobject(&host))), nullptr);
    EXPECT_EQ(host.takePendingExceptions().size(), 3u);
}

// What every end of a call must give back; the test's end looks at the locks of all handles.
void holdTwo(HeldHandles &held)
{
    held.hold(REALnewInstance("Date"));
    REALBuildUnicodeString("text", 4, kUTF8Text, held);
}

TEST_F(MethodGuard, UnlocksWhatTheBodyHeldWhenItFails)
{
    guardedHolding([](HeldHandles &held) {
        holdTwo(held);
        raise("NSRangeException", "too far");
    });
    EXPECT_EQ(host.takePendingExceptions().size(), 1u);
}

TEST_F(MethodGuard, UnlocksWhatTheBodyForgotWhenItReturns)
{
    guardedHolding(holdTwo);
}

TEST_F(MethodGuard, UnlocksWhatTheBodyHeldWhenAForeignObjectPasses)
{
    EXPECT_EQ(thrownBy([] {
                  guardedHolding([](HeldHandles &held) {
                      holdTwo(held);
                      throwObject();
                  });
              }),
              "foreign");
}

TEST_F(MethodGuard, UnlocksWhatTheBodyHeldWhenACPlusPlusExceptionPasses)
{
    EXPECT_THROW(guardedHolding([](HeldHandles &held) {
                     holdTwo(held);
                     throw std::out_of_range("of the host");
                 }),
                 std::out_of_range);
}

TEST_F(MethodGuard, KnowsWhoseHandlesAreWhoseWhenCallsAreInsideEachOther)
{
    guardedHolding([&](HeldHandles &outer) {
        REALobject date = outer.hold(REALnewInstance("Date"));
        guardedHolding([](HeldHandles &inner) {
            holdTwo(inner);
            raise("NSRangeException", "too far");
        });
        EXPECT_THROW(guardedHolding([](HeldHandles &inner) {
                         holdTwo(inner);
                         throw std::out_of_range("swallowed by host code inside");
                     }),
                     std::out_of_range);
        EXPECT_EQ(host.handleInfo(date)->locks, 1);
        outer.release(date);
    });
    host.takePendingExceptions();
}

TEST_F(MethodGuard, ANeutralHandleIsGivenToTheCallerUnlessTheCallIsLeft)
{
    auto newDate = [] { return REALnewInstance("Date"); };
    auto nothing = [](HeldHandles &) {};
    host::Value::adopt(guardedFrom(newDate(), nothing));
    host::Value::adopt(guardedFrom(newDate(), [](HeldHandles &) { raise("NSRangeException", "too far"); }));
    host::Value::adopt(guardedFrom(newDate(), [](HeldHandles &) { throwWithoutMemory(); }));
    EXPECT_EQ(thrownBy([&] { guardedFrom(newDate(), [](HeldHandles &) { throwObject(); }); }), "foreign");
    EXPECT_THROW(guardedFrom(newDate(), [](HeldHandles &) { throw std::out_of_range("x"); }), std::out_of_range);
    EXPECT_EQ(host.takePendingExceptions().size(), 2u);
}

TEST_F(MethodGuard, ALackOfMemoryForHandlesIsRaisedInHostCodeAndGivesTheNeutralResult)
{
    EXPECT_EQ(guardedInt32([]() -> int32_t {
                  throwWithoutMemory();
                  return 1;
              }),
              0);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "OutOfMemoryException",
                           "Failed to allocate memory for a conversion."));
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(MethodGuard, LetsAForeignObjectPassUnchanged)
{
    EXPECT_EQ(thrownBy([] { guardedNothing([] { throwObject(); }); }), "foreign");
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

TEST_F(MethodGuard, LetsACPlusPlusExceptionPassUnchanged)
{
    try {
        guardedNothing([] { throw std::out_of_range("of the host"); });
        FAIL() << "swallowed";
    } catch (const std::out_of_range &error) {
        EXPECT_STREQ(error.what(), "of the host");
    }
    EXPECT_THAT(log.messages(), IsEmpty());
}

// --- RaiseNSExceptionKTZ ----------------------------------------------------------------------------------------

TEST_F(MethodGuard, LogsTheInfoOfAnException)
{
    raiseInHostCode("NSTestException", "with info", true);
    EXPECT_THAT(log.messages(), ElementsAre("A NSTestException: with info, Info: {Line = 7; }\n"));
    host.takePendingExceptions();
}

void *noHostException(void *, void *, void *)
{
    return nullptr;
}

TEST_F(MethodGuard, DropsAnExceptionThatTheFamilyMakesNoHostExceptionOf)
{
    support::CocoaMethod none("NSException", "NewNSExceptionKTZ:", support::MethodOf::Class,
                              reinterpret_cast<void *>(noHostException));
    EXPECT_EQ(guardedInt32([]() -> int32_t {
                  raise("NSRangeException", "too far");
                  return 1;
              }),
              0);
    EXPECT_THAT(log.messages(), ElementsAre("A NSRangeException: too far, Info: (null)\n"));
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

TEST_F(MethodGuard, UnlocksTheHostExceptionOnce)
{
    host.resetCounts();
    raiseInHostCode("NSTestException", "x");
    EXPECT_EQ(host.calls("RuntimeRaiseException"), 1);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "NSExceptionKTZ", "x"));
}

TEST_F(MethodGuard, StillUnlocksTheHostExceptionOnAHostThatCannotRaise)
{
    host.hide("RuntimeRaiseException");
    raiseInHostCode("NSTestException", "x");
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

// The family's method is sent without asking first: without it, Cocoa itself raises.
class WithoutFamily : public support::Inner {
protected:
    void SetUp() override
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.family = false;
        start(profile);
    }
    LogCapture log;
};

TEST_F(WithoutFamily, ANSExceptionIsLoggedAndTheMissingMethodRaises)
{
    EXPECT_EQ(thrownBy([] { raiseInHostCode("NSTestException", "x"); }), "NSInvalidArgumentException");
    EXPECT_THAT(log.messages(), ElementsAre("A NSTestException: x, Info: (null)\n"));
}

TEST_F(WithoutFamily, TheGuardUnlocksWhatTheBodyHeldAllTheSame)
{
    EXPECT_EQ(thrownBy([] {
                  guardedHolding([](HeldHandles &held) {
                      holdTwo(held);
                      raise("NSTestException", "x");
                  });
              }),
              "NSInvalidArgumentException");
}

} // namespace
