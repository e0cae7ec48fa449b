// Integers, singles, doubles and booleans: the one message that each accessor sends, and what becomes of the answer.
#include "tests/support/host_test.h"
#include "tests/support/recording_defaults.h"

#include <cfloat>
#include <climits>
#include <functional>

using support::RecordingDefaults;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A getter, what Cocoa answers it, and what host code gets.
struct Get {
    const char *name;
    const char *method;
    std::string message;
    std::function<void(RecordingDefaults &)> answer;
    host::Value::Kind kind;
    double result;
};

void PrintTo(const Get &get, std::ostream *out)
{
    *out << get.name;
}

template <class Number>
std::function<void(RecordingDefaults &)> answers(const char *selector, Number number)
{
    return [=](RecordingDefaults &standIn) { standIn.answer(selector, number); };
}

using Kind = host::Value::Kind;
constexpr unsigned char kYes = 1, kNo = 0;

// clang-format off
const Get kGets[] = {
    {"Integer", "integerForKey", "integerForKey:\"Key\"", answers("integerForKey:", 5), Kind::Int32, 5},
    {"IntegerNegative", "integerForKey", "integerForKey:\"Key\"", answers("integerForKey:", -1), Kind::Int32, -1},
    {"IntegerLargest", "integerForKey", "integerForKey:\"Key\"", answers("integerForKey:", INT_MAX), Kind::Int32, INT_MAX},
    {"IntegerSmallest", "integerForKey", "integerForKey:\"Key\"", answers("integerForKey:", INT_MIN), Kind::Int32, INT_MIN},
    {"Float", "floatForKey", "floatForKey:\"Key\"", answers("floatForKey:", -1.25f), Kind::Single, -1.25},
    {"FloatWithoutExactDecimal", "floatForKey", "floatForKey:\"Key\"", answers("floatForKey:", 0.1f), Kind::Single, 0.1f},
    {"FloatLargest", "floatForKey", "floatForKey:\"Key\"", answers("floatForKey:", FLT_MAX), Kind::Single, FLT_MAX},
    {"Double", "doubleForKey", "doubleForKey:\"Key\"", answers("doubleForKey:", 0.1), Kind::Double, 0.1},
    {"DoubleNegative", "doubleForKey", "doubleForKey:\"Key\"", answers("doubleForKey:", -2.5), Kind::Double, -2.5},
    {"DoubleLargest", "doubleForKey", "doubleForKey:\"Key\"", answers("doubleForKey:", DBL_MAX), Kind::Double, DBL_MAX},
    {"BoolTrue", "boolForKey", "boolForKey:\"Key\"", answers("boolForKey:", kYes), Kind::Boolean, 1},
    {"BoolFalse", "boolForKey", "boolForKey:\"Key\"", answers("boolForKey:", kNo), Kind::Boolean, 0},
};
// clang-format on

double numberOf(const host::Value &value)
{
    return value.kind() == Kind::Boolean ? value.boolean() : value.number();
}

class ScalarGetter : public support::BlackBoxOn2013, public ::testing::WithParamInterface<Get> {};

TEST_P(ScalarGetter, SendsItsMessageOnceAndGivesTheAnswer)
{
    RecordingDefaults standIn;
    GetParam().answer(standIn);
    host::Value instance = newEmptyInstance();
    standIn.carryIn(instance);
    host::Value result = host.call(instance, GetParam().method, {"Key"});
    EXPECT_EQ(result.kind(), GetParam().kind);
    EXPECT_EQ(numberOf(result), GetParam().result);
    EXPECT_THAT(standIn.messages(), ElementsAre(GetParam().message));
}

TEST_P(ScalarGetter, OfAnInstanceThatCarriesNothingGivesZero)
{
    host::Value result = host.call(newEmptyInstance(), GetParam().method, {"Key"});
    EXPECT_EQ(result.kind(), GetParam().kind);
    EXPECT_EQ(numberOf(result), 0);
}

TEST_P(ScalarGetter, LeavesTheDefaultsObjectRetainedAsItWas)
{
    RecordingDefaults standIn;
    host::Value instance = newEmptyInstance();
    standIn.carryIn(instance);
    host.call(instance, GetParam().method, {"Key"});
    pool->drain();
    EXPECT_EQ(standIn.retainCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(All, ScalarGetter, ::testing::ValuesIn(kGets),
                         [](const auto &info) { return info.param.name; });

// A setter by both of its names: the assignable getter and the method of its own.
struct Set {
    const char *name;
    const char *getter, *setter;
    std::function<host::Value()> value;
    std::string message;
};

void PrintTo(const Set &set, std::ostream *out)
{
    *out << set.name;
}

template <class Number>
std::function<host::Value()> value(Number number)
{
    return [=] { return host::Value(number); };
}

// clang-format off
const Set kSets[] = {
    {"Integer", "integerForKey", "setIntegerValue", value(7), "setInteger:7 forKey:\"Key\""},
    {"IntegerSmallest", "integerForKey", "setIntegerValue", value(INT_MIN), "setInteger:-2147483648 forKey:\"Key\""},
    {"Float", "floatForKey", "setFloatValue", value(-1.25f), "setFloat:-1.25 forKey:\"Key\""},
    {"FloatWithoutExactDecimal", "floatForKey", "setFloatValue", value(0.1f), "setFloat:0.100000001 forKey:\"Key\""},
    {"Double", "doubleForKey", "setDoubleValue", value(0.1), "setDouble:0.10000000000000001 forKey:\"Key\""},
    {"DoubleBeyondSingle", "doubleForKey", "setDoubleValue", value(-1e300), "setDouble:-1.0000000000000001e+300 forKey:\"Key\""},
    {"BoolTrue", "boolForKey", "setBoolValue", value(true), "setBool:1 forKey:\"Key\""},
    {"BoolFalse", "boolForKey", "setBoolValue", value(false), "setBool:0 forKey:\"Key\""},
};
// clang-format on

class ScalarSetter : public support::BlackBoxOn2013, public ::testing::WithParamInterface<Set> {};

TEST_P(ScalarSetter, SendsItsMessageOnceByEitherName)
{
    RecordingDefaults standIn;
    host::Value instance = newEmptyInstance();
    standIn.carryIn(instance);
    host.call(instance, GetParam().setter, {"Key", GetParam().value()});
    EXPECT_THAT(standIn.messages(), ElementsAre(GetParam().message));
    standIn.forgetMessages();
    host.assign(instance, GetParam().getter, {"Key"}, GetParam().value());
    EXPECT_THAT(standIn.messages(), ElementsAre(GetParam().message));
}

TEST_P(ScalarSetter, OfAnInstanceThatCarriesNothingDoesNothing)
{
    host.call(newEmptyInstance(), GetParam().setter, {"Key", GetParam().value()});
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, ScalarSetter, ::testing::ValuesIn(kSets),
                         [](const auto &info) { return info.param.name; });

class OnStandIn : public support::BlackBoxOn2013 {
protected:
    void SetUp() override
    {
        support::BlackBoxOn2013::SetUp();
        instance = newEmptyInstance();
        standIn.carryIn(instance);
    }
    void TearDown() override
    {
        instance = {};
        support::BlackBoxOn2013::TearDown();
    }
    RecordingDefaults standIn;
    host::Value instance;
};

// --- Systems without doubles in their defaults -----------------------------------------------------------------

TEST_F(OnStandIn, DoubleThatTheSystemLacksIsReadAsSingleAndWidened)
{
    standIn.doNotRespondTo("doubleForKey:");
    standIn.answer("floatForKey:", 0.1f);
    EXPECT_EQ(host.call(instance, "doubleForKey", {"Key"}).number(), double(0.1f));
    EXPECT_THAT(standIn.messages(), ElementsAre("floatForKey:\"Key\""));
}

TEST_F(OnStandIn, DoubleThatTheSystemLacksIsStoredRoundedToSingle)
{
    standIn.doNotRespondTo("setDouble:forKey:");
    host.assign(instance, "doubleForKey", {"Key"}, 0.1);
    EXPECT_THAT(standIn.messages(), ElementsAre("setFloat:0.100000001 forKey:\"Key\""));
}

// --- Booleans are one signed byte ------------------------------------------------------------------------------

TEST_F(OnStandIn, BooleanAnswerIsOneSignedByte)
{
    host::Value key = "Key";
    standIn.answer("boolForKey:", static_cast<unsigned char>(0xFF));
    auto boolForKey = reinterpret_cast<int32_t (*)(void *, void *)>(method("boolForKey").function);
    const int32_t answer = boolForKey(instance.handle(), key.handle());
    EXPECT_EQ(answer, -1) << "the byte's sign stands in the whole register";
}

TEST_F(OnStandIn, BooleanValueIsPassedOnAsItsByte)
{
    host::Value key = "Key";
    auto setBool = reinterpret_cast<void (*)(void *, void *, int32_t)>(method("setBoolValue").function);
    setBool(instance.handle(), key.handle(), -1);
    setBool(instance.handle(), key.handle(), 0x102);
    EXPECT_THAT(standIn.messages(), ElementsAre("setBool:-1 forKey:\"Key\"", "setBool:2 forKey:\"Key\""));
}

// --- Against Cocoa's own defaults, on every host ---------------------------------------------------------------

class StoredScalars : public support::BlackBoxOnEveryHost {};

TEST_P(StoredScalars, ComeBackAsTheyWereStored)
{
    host::Value defaults = standardUserDefaults();
    host.assign(defaults, "integerForKey", {"Integer"}, -70000);
    host.assign(defaults, "floatForKey", {"Float"}, 0.1f);
    host.assign(defaults, "doubleForKey", {"Double"}, 0.1);
    host.assign(defaults, "boolForKey", {"Bool"}, true);
    EXPECT_EQ(host.call(defaults, "integerForKey", {"Integer"}).int32(), -70000);
    EXPECT_EQ(host.call(defaults, "floatForKey", {"Float"}).single(), 0.1f);
    EXPECT_EQ(host.call(defaults, "doubleForKey", {"Double"}).number(), 0.1);
    EXPECT_TRUE(host.call(defaults, "boolForKey", {"Bool"}).boolean());
}

TEST_P(StoredScalars, NeverStoredAreZero)
{
    host::Value defaults = standardUserDefaults();
    EXPECT_EQ(host.call(defaults, "integerForKey", {"None"}).int32(), 0);
    EXPECT_EQ(host.call(defaults, "floatForKey", {"None"}).single(), 0.0f);
    EXPECT_EQ(host.call(defaults, "doubleForKey", {"None"}).number(), 0.0);
    EXPECT_FALSE(host.call(defaults, "boolForKey", {"None"}).boolean());
}

INSTANTIATE_TEST_SUITE_P(Hosts, StoredScalars, support::everyProfile(), support::profileTestName);

} // namespace
