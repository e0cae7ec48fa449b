// The members of the class itself: the standard defaults object and the four names.
#include "tests/support/cocoa_method.h"
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_under_test.h"
#include "tests/support/recording_defaults.h"
#include "tests/userdefaults/cocoa_objects.h"

using support::CocoaMethod;
using support::kClass;
using support::LogCapture;
using support::MethodOf;
using support::raisedOnce;
using support::RaisingMethod;
using support::RecordingDefaults;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class StandardDefaults : public support::BlackBoxOnEveryHost {};

TEST_P(StandardDefaults, AreOneHostObjectWithALockForEachCaller)
{
    host::Value first = standardUserDefaults();
    EXPECT_EQ(first.className(), kClass);
    EXPECT_EQ(first.lockCount(), 1);
    host::Value second = standardUserDefaults();
    EXPECT_TRUE(second.sameHandle(first));
    EXPECT_EQ(first.lockCount(), 2);
}

TEST_P(StandardDefaults, CarryTheStandardObjectRetainedOnce)
{
    newEmptyInstance(); // Cocoa's start-up keeps the standard object too
    void *standard = cocoa::standardUserDefaults();
    pool->drain();
    const int before = cocoa::retainCount(standard);
    host::Value first = standardUserDefaults(), second = standardUserDefaults();
    EXPECT_EQ(cocoa::carriedBy(first), standard);
    EXPECT_EQ(cocoa::registeredCarrier(standard), first.handle());
    pool->drain();
    EXPECT_EQ(cocoa::retainCount(standard), before + 1);
    first = second = {};
    pool->drain();
    EXPECT_EQ(cocoa::retainCount(standard), before);
    EXPECT_EQ(cocoa::registeredCarrier(standard), nullptr);
}

TEST_P(StandardDefaults, AreANewObjectAfterTheOldOneDied)
{
    host::Value defaults = standardUserDefaults();
    defaults = {};
    defaults = standardUserDefaults();
    EXPECT_EQ(cocoa::registeredCarrier(cocoa::standardUserDefaults()), defaults.handle());
    EXPECT_TRUE(standardUserDefaults().sameHandle(defaults));
}

TEST_P(StandardDefaults, AreNotAnInstanceMadeByAConstructor)
{
    host::Value constructed = host.newObject(kClass);
    EXPECT_FALSE(standardUserDefaults().sameHandle(constructed));
}

INSTANTIATE_TEST_SUITE_P(Hosts, StandardDefaults, support::everyProfile(), support::profileTestName);

void *standardNow;
int resets;

void *answerStandardNow(void *, void *)
{
    return standardNow;
}
void countReset(void *, void *)
{
    resets++;
}

class StandardDefaultsRules : public support::BlackBoxOn2013 {
protected:
    LogCapture log;
};

TEST_F(StandardDefaultsRules, NilFromCocoaIsNil)
{
    CocoaMethod nil("NSUserDefaults", "standardUserDefaults", MethodOf::Class,
                    reinterpret_cast<void *>(answerStandardNow));
    standardNow = nullptr;
    host.resetCounts();
    EXPECT_TRUE(standardUserDefaults().isNil());
    EXPECT_EQ(host.calls("PluginNewInstance"), 0);
}

TEST_F(StandardDefaultsRules, WithoutANewInstanceAreNilAndNothingIsRecorded)
{
    newEmptyInstance(); // Cocoa's start-up keeps the standard object too
    void *standard = cocoa::standardUserDefaults();
    pool->drain();
    const int before = cocoa::retainCount(standard);
    host.failCreation(host::Creation::Instance, 1);
    EXPECT_TRUE(standardUserDefaults().isNil());
    host.hide("PluginNewInstance");
    EXPECT_EQ(cocoa::registeredCarrier(standard), nullptr);
    pool->drain();
    EXPECT_EQ(cocoa::retainCount(standard), before);
}

TEST_F(StandardDefaultsRules, OnAHostWithoutPluginNewInstanceAreNil)
{
    host.hide("PluginNewInstance");
    EXPECT_TRUE(standardUserDefaults().isNil());
    EXPECT_EQ(cocoa::registeredCarriers(), 0);
    host.show("PluginNewInstance");
    EXPECT_FALSE(standardUserDefaults().isNil());
}

TEST_F(StandardDefaultsRules, ExceptionOfCocoaIsRaisedAndTheyAreNil)
{
    newEmptyInstance(); // Cocoa's start-up is over
    RaisingMethod raising("NSUserDefaults", "standardUserDefaults", MethodOf::Class, 1);
    host::Outcome outcome = host.tryCallShared(kClass, "standardUserDefaults");
    EXPECT_TRUE(outcome.result.isNil());
    EXPECT_TRUE(raisedOnce(outcome.raised, "NSExceptionKTZ", "raised by the test"));
    EXPECT_THAT(log.messages(), ElementsAre(support::kRaisingMethodLogLine));
}

TEST_F(StandardDefaultsRules, WhatWasMadeForThemIsGivenBackWhenCocoaRaises)
{
    newEmptyInstance(); // Cocoa's start-up is over
    void *usual = cocoa::standardUserDefaults();
    CocoaMethod answered("NSUserDefaults", "standardUserDefaults", MethodOf::Class,
                         reinterpret_cast<void *>(answerStandardNow));
    standardNow = cocoa::unretainableObject([=] { standardNow = usual; }); // logging uses them, too
    const host::LedgerMark mark = host.mark();
    host::Outcome outcome = host.tryCallShared(kClass, "standardUserDefaults");
    EXPECT_TRUE(outcome.result.isNil());
    EXPECT_TRUE(raisedOnce(outcome.raised, "NSExceptionKTZ", "not retained"));
    EXPECT_THAT(log.messages(), ElementsAre("A NSTestException: not retained, Info: (null)\n"));
    EXPECT_THAT(host.leaks(mark), IsEmpty());
}

TEST_F(StandardDefaultsRules, AreWhateverObjectCocoaHandsOutNow)
{
    RecordingDefaults before, after;
    CocoaMethod answered("NSUserDefaults", "standardUserDefaults", MethodOf::Class,
                         reinterpret_cast<void *>(answerStandardNow));
    standardNow = before.object();
    host::Value first = standardUserDefaults();
    standardNow = after.object();
    host::Value second = standardUserDefaults();
    EXPECT_FALSE(second.sameHandle(first));
    EXPECT_EQ(cocoa::carriedBy(first), before.object()) << "the old object stays where it is";
    EXPECT_EQ(cocoa::carriedBy(second), after.object());
    standardNow = before.object();
    EXPECT_TRUE(standardUserDefaults().sameHandle(first));
}

TEST_F(StandardDefaultsRules, FindAnyInstanceThatIsRecordedForTheObject)
{
    host::Value constructed = host.newObject(kClass);
    CocoaMethod answered("NSUserDefaults", "standardUserDefaults", MethodOf::Class,
                         reinterpret_cast<void *>(answerStandardNow));
    standardNow = cocoa::carriedBy(constructed);
    EXPECT_TRUE(standardUserDefaults().sameHandle(constructed));
}

TEST_F(StandardDefaultsRules, ResetSendsOneMessageAndLeavesTheRegistryAlone)
{
    host::Value defaults = standardUserDefaults();
    CocoaMethod counted("NSUserDefaults", "resetStandardUserDefaults", MethodOf::Class,
                        reinterpret_cast<void *>(countReset));
    host.callShared(kClass, "resetStandardUserDefaults");
    EXPECT_EQ(resets, 1);
    EXPECT_EQ(cocoa::registeredCarrier(cocoa::carriedBy(defaults)), defaults.handle());
}

TEST_F(StandardDefaultsRules, ResetRaisesWhatCocoaRaises)
{
    RaisingMethod raising("NSUserDefaults", "resetStandardUserDefaults", MethodOf::Class);
    host::Outcome outcome = host.tryCallShared(kClass, "resetStandardUserDefaults");
    EXPECT_TRUE(raisedOnce(outcome.raised, "NSExceptionKTZ", "raised by the test"));
    EXPECT_THAT(log.messages(), ElementsAre(support::kRaisingMethodLogLine));
}

class WithoutFamily : public support::BlackBox {
protected:
    void SetUp() override
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.family = false;
        start(profile);
    }
};

TEST_F(WithoutFamily, EveryCallMakesAHostObjectOfTheSameDefaults)
{
    host::Value first = standardUserDefaults(), second = standardUserDefaults();
    EXPECT_FALSE(second.sameHandle(first));
    EXPECT_EQ(cocoa::carriedBy(first), cocoa::carriedBy(second));
    host.assign(first, "integerForKey", {"Runs"}, 5);
    EXPECT_EQ(host.call(second, "integerForKey", {"Runs"}).int32(), 5);
}

// --- The four names ---------------------------------------------------------------------------------------------

class Names : public support::BlackBoxOnEveryHost {};

TEST_P(Names, AreThoseOfCocoa)
{
    for (const char *name :
         {"NSGlobalDomain", "NSArgumentDomain", "NSRegistrationDomain", "NSUserDefaultsDidChangeNotification"}) {
        host::Value text = host.callShared(kClass, name);
        EXPECT_EQ(text.text(), name);
        EXPECT_EQ(text.encoding(), host::kUTF8);
        EXPECT_EQ(text.lockCount(), 1);
    }
}

TEST_P(Names, AreNullWhereTheSystemLacksThem)
{
    for (const char *name :
         {"NSGlobalDomain", "NSArgumentDomain", "NSRegistrationDomain", "NSUserDefaultsDidChangeNotification"}) {
        cocoa::AbsentConstant absent(name);
        EXPECT_TRUE(host.callShared(kClass, name).isNullHandle()) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Hosts, Names, support::everyProfile(), support::profileTestName);

} // namespace
