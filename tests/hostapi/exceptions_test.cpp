// Failures that the plug-in finds itself, on their way to host code.
#include "hostapi/exceptions.h"
#include "tests/support/inner_test.h"

using support::raisedOnce;

namespace {

using Raise = support::InnerOnEveryHost;

TEST_P(Raise, MakesAnExceptionOfTheClassWithTheMessageAndErrorNumberZero)
{
    RaiseException("UnsupportedOperationException", "not now", 5);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "UnsupportedOperationException", "not now"));
}

TEST_P(Raise, UnknownClassBecomesRuntimeException)
{
    RaiseException("NoSuchException", "x", 5);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "RuntimeException", "x"));
}

TEST_P(Raise, MessageIsASCII)
{
    RaiseException("RuntimeException", "x", 0);
    auto raised = host.takePendingExceptions();
    ASSERT_EQ(raised.size(), 1u);
    EXPECT_EQ(raised[0].object.property("Message").encoding(), host::kASCII);
}

TEST_P(Raise, NullMessageIsAnExceptionWithANullMessage)
{
    RaiseException("RuntimeException", nullptr, 0);
    auto raised = host.takePendingExceptions();
    EXPECT_TRUE(raisedOnce(raised, "RuntimeException", ""));
    ASSERT_EQ(raised.size(), 1u);
    EXPECT_TRUE(raised[0].object.property("Message").isNullHandle());
}

TEST_P(Raise, ErrorNumberIsSetToZeroWhateverIsGiven)
{
    int numberSeen = -1;
    host.beforeCall("RuntimeRaiseException", [&] { numberSeen = host.calls("REALSetPropValueInt"); });
    RaiseException("RuntimeException", "x", 0xFFFFFFFF);
    EXPECT_EQ(numberSeen, 1) << "set before the exception is raised";
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "RuntimeException", "x"));
}

TEST_P(Raise, CallsTheHostInOneOrder)
{
    const std::vector<std::string> order = {
        "REALBuildString",       "PluginNewInstance", "REALSetPropValueString", "REALSetPropValueInt",
        "RuntimeRaiseException", "REALUnlockObject",  "REALUnlockString",
    };
    std::vector<std::string> called;
    for (const std::string &entry : order)
        host.beforeCall(entry, [&called, entry] { called.push_back(entry); });
    RaiseException("RuntimeException", "x", 0);
    for (const std::string &entry : order)
        host.beforeCall(entry, nullptr);
    EXPECT_EQ(called, order);
    host.takePendingExceptions();
}

INSTANTIATE_TEST_SUITE_P(Hosts, Raise, support::everyProfile(), support::profileTestName);

// A missing or failing service skips its own step only.
using RaiseWithout = support::InnerOn2013;

TEST_F(RaiseWithout, PluginNewInstanceRaisesNothing)
{
    host.hide("PluginNewInstance");
    host.resetCounts();
    RaiseException("RuntimeException", "x", 0);
    EXPECT_TRUE(host.takePendingExceptions().empty());
    EXPECT_EQ(host.lookups("PluginNewInstance"), 2) << "for the class, and for RuntimeException";
    EXPECT_EQ(host.calls("REALUnlockString"), 1);
}

TEST_F(RaiseWithout, AnyInstanceRaisesNothing)
{
    host.failCreation(host::Creation::Instance, 1, 2);
    host.resetCounts();
    RaiseException("OutOfMemoryException", "x", 0);
    EXPECT_TRUE(host.takePendingExceptions().empty());
    EXPECT_EQ(host.calls("PluginNewInstance"), 2);
    EXPECT_EQ(host.calls("REALUnlockString"), 1);
}

TEST_F(RaiseWithout, AnInstanceOfTheClassRaisesRuntimeException)
{
    host.failCreation(host::Creation::Instance, 1);
    RaiseException("OutOfMemoryException", "x", 0);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "RuntimeException", "x"));
}

TEST_F(RaiseWithout, ABuiltMessageRaisesWithoutOne)
{
    host.failCreation(host::Creation::String, 1);
    RaiseException("RuntimeException", "x", 0);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "RuntimeException", ""));
}

TEST_F(RaiseWithout, SettingTextsRaisesWithoutMessage)
{
    host.hide("REALSetPropValueString");
    RaiseException("RuntimeException", "x", 0);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "RuntimeException", ""));
}

TEST_F(RaiseWithout, SettingNumbersRaisesWithTheMessage)
{
    host.hide("REALSetPropValueInt");
    RaiseException("RuntimeException", "x", 0);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "RuntimeException", "x"));
}

TEST_F(RaiseWithout, RuntimeRaiseExceptionOnlyUnlocksWhatItMade)
{
    host.hide("RuntimeRaiseException");
    host.resetCounts();
    RaiseException("RuntimeException", "x", 0);
    EXPECT_TRUE(host.takePendingExceptions().empty());
    EXPECT_EQ(host.calls("REALUnlockObject"), 1);
    EXPECT_EQ(host.calls("REALUnlockString"), 1);
}

} // namespace
