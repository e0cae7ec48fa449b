// What Cocoa raises in the middle of a scalar or text accessor, and the member that names the class of such exceptions.
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_under_test.h"
#include "tests/support/recording_defaults.h"
#include "tests/userdefaults/cocoa_objects.h"

using support::LogCapture;
using support::raisedOnce;
using support::RecordingDefaults;
using ::testing::Combine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::ValuesIn;

namespace {

struct Accessor {
    const char *name;
    const char *selector;
    host::Arguments (*arguments)();
    host::Value::Kind result;
};

void PrintTo(const Accessor &accessor, std::ostream *out)
{
    *out << accessor.name;
}

using Kind = host::Value::Kind;

host::Arguments key()
{
    return {"Key"};
}

const Accessor kAccessors[] = {
    {"integerForKey", "integerForKey:", key, Kind::Int32},
    {"floatForKey", "floatForKey:", key, Kind::Single},
    {"doubleForKey", "doubleForKey:", key, Kind::Double},
    {"boolForKey", "boolForKey:", key, Kind::Boolean},
    {"stringForKey", "stringForKey:", key, Kind::String},
    {"URLForKey", "URLForKey:", key, Kind::String},
    {"setIntegerValue", "setInteger:forKey:",
     [] {
         return host::Arguments{"Key", 7};
     },
     Kind::Nothing},
    {"setFloatValue", "setFloat:forKey:",
     [] {
         return host::Arguments{"Key", 0.5f};
     },
     Kind::Nothing},
    {"setDoubleValue", "setDouble:forKey:",
     [] {
         return host::Arguments{"Key", 0.5};
     },
     Kind::Nothing},
    {"setBoolValue", "setBool:forKey:",
     [] {
         return host::Arguments{"Key", true};
     },
     Kind::Nothing},
    {"setStringValue", "setObject:forKey:",
     [] {
         return host::Arguments{"Key", "text"};
     },
     Kind::Nothing},
    {"setURLValue", "setURL:forKey:",
     [] {
         return host::Arguments{"Key", "http://localhost/"};
     },
     Kind::Nothing},
};

bool isNeutral(const host::Value &value)
{
    switch (value.kind()) {
    case Kind::Nothing:
        return true;
    case Kind::String:
        return value.isNullHandle();
    case Kind::Boolean:
        return !value.boolean();
    default:
        return value.number() == 0;
    }
}

class RaisingAccessor : public support::BlackBox,
                        public ::testing::WithParamInterface<std::tuple<support::ProfileFacts, Accessor>> {
protected:
    void SetUp() override
    {
        start(std::get<0>(GetParam()).name);
        instance = newEmptyInstance();
        standIn.carryIn(instance);
        standIn.raise(accessor().selector);
    }
    void TearDown() override
    {
        instance = {};
        BlackBox::TearDown();
    }
    const Accessor &accessor() { return std::get<1>(GetParam()); }

    RecordingDefaults standIn;
    host::Value instance;
    LogCapture log;
};

TEST_P(RaisingAccessor, LogsOnceRaisesOnceGivesTheNeutralResultAndWorksAgainAfterwards)
{
    host::Outcome outcome = host.tryCall(instance, accessor().name, accessor().arguments());
    EXPECT_TRUE(raisedOnce(outcome.raised, "NSExceptionKTZ", "raised by the stand-in"));
    EXPECT_THAT(log.messages(), ElementsAre(support::kStandInLogLine));
    EXPECT_EQ(outcome.result.kind(), accessor().result);
    EXPECT_TRUE(isNeutral(outcome.result));
    EXPECT_EQ(standIn.messages().size(), 1u);

    host::Value defaults = standardUserDefaults();
    EXPECT_THAT(host.tryCall(defaults, accessor().name, accessor().arguments()).raised, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, RaisingAccessor, Combine(support::everyProfile(), ValuesIn(kAccessors)), [](const auto &info) {
        return support::profileTestName({std::get<0>(info.param), 0}) + "_" + std::get<1>(info.param).name;
    });

class ForeignObject : public support::BlackBoxOn2013 {};

TEST_F(ForeignObject, PassesThroughAGetterAndASetterUnchanged)
{
    LogCapture log;
    RecordingDefaults standIn;
    standIn.throwForeignObject("integerForKey:");
    standIn.throwForeignObject("setInteger:forKey:");
    host::Value instance = newEmptyInstance(), key = "Key";
    standIn.carryIn(instance);
    auto get = reinterpret_cast<int32_t (*)(void *, void *)>(method("integerForKey").function);
    auto set = reinterpret_cast<void (*)(void *, void *, int32_t)>(method("setIntegerValue").function);
    EXPECT_EQ(cocoa::objectThrownBy([&] { get(instance.handle(), key.handle()); }), "foreign");
    EXPECT_EQ(cocoa::objectThrownBy([&] { set(instance.handle(), key.handle(), 1); }), "foreign");
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

TEST_F(ForeignObject, EmptyKeyOfASetterIsRefusedByCocoaAndRaisedInHostCode)
{
    LogCapture log;
    host::Value defaults = standardUserDefaults();
    host::Outcome outcome = host.tryCall(defaults, "setIntegerValue", {host::Value::nullString(), 1});
    ASSERT_EQ(outcome.raised.size(), 1u);
    EXPECT_EQ(outcome.raised[0].className, "NSExceptionKTZ");
    EXPECT_EQ(log.messages().size(), 1u);
}

class ExceptionMember : public support::BlackBoxOnEveryHost {};

TEST_P(ExceptionMember, GivesNil)
{
    host::Value instance = newEmptyInstance();
    host::Outcome outcome = host.invoke(method("_exception"), instance, {});
    EXPECT_TRUE(outcome.result.isNil());
    EXPECT_THAT(outcome.raised, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Hosts, ExceptionMember, support::everyProfile(), support::profileTestName);

} // namespace
