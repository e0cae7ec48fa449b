#include "tests/host/fixture.h"

#include <limits>

namespace {

using namespace host;
using host_tests::PluginFixture;

std::string messageOf(const std::function<void()> &body)
{
    try {
        body();
    } catch (const CallError &error) {
        return error.what();
    }
    return "nothing was thrown";
}

class Calls : public PluginFixture {
protected:
    void SetUp() override
    {
        start();
        object = host.newObject("TestClass");
    }

    void TearDown() override
    {
        object = nullptr;
        PluginFixture::TearDown();
    }

    Value object;
};

TEST_F(Calls, EveryTypeArrivesAsDeclared)
{
    Value dictionary = Value::dictionary();
    host.call(object, "takeAll", {-7, 0x123456789ALL, 1.5f, 2.25, true, dictionary});
    EXPECT_EQ(seen->self, object.handle());
    EXPECT_EQ(seen->integer, -7);
    EXPECT_EQ(seen->wide, 0x123456789ALL);
    EXPECT_EQ(seen->single, 1.5f);
    EXPECT_EQ(seen->real, 2.25);
    EXPECT_EQ(seen->boolean, 1);
    EXPECT_EQ(seen->handle, dictionary.handle());
}

TEST_F(Calls, NumbersComeBackAsDeclared)
{
    EXPECT_EQ(host.call(object, "halfOf", {3.0f}).single(), 1.5f);
    EXPECT_EQ(host.call(object, "thirdOf", {1.0}).number(), 1.0 / 3);
    int64_t wide = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(host.call(object, "nextOf", {(long long)wide}).int64(), wide + 1);
}

TEST_F(Calls, OnlyTheLowestByteOfABooleanCounts)
{
    EXPECT_FALSE(host.call(object, "no").boolean());
    EXPECT_TRUE(host.call(object, "yes").boolean());
}

TEST_F(Calls, NumbersConvertWhereNothingIsLost)
{
    EXPECT_EQ(host.call(object, "thirdOf", {3}).number(), 1.0);
    host.assign(object, "itemFor", {"k"}, 4.0);
    EXPECT_EQ(seen->integer, 4);
    EXPECT_EQ(messageOf([&] { host.assign(object, "itemFor", {"k"}, 4.5); }),
              "itemFor(key as string, assigns value as integer): the second argument, value, must be integer, not "
              "double 4.5");
    EXPECT_THROW(host.assign(object, "itemFor", {"k"}, 0x100000000LL), TypeError);
}

TEST_F(Calls, WrongArgumentsAreRefusedBeforeTheCall)
{
    seen->integer = 99;
    EXPECT_EQ(messageOf([&] {
                  host.call(object, "takeAll", {"text", 0LL, 0.0f, 0.0, true, nullptr});
              }),
              "takeAll(i as integer, w as int64, s as single, d as double, b as boolean, o as dictionary): the first "
              "argument, i, must be integer, not string \"text\"");
    EXPECT_EQ(messageOf([&] {
                  host.call(object, "takeAll", {1, 0LL, 0.0f, 0.0, true, Value::memoryBlock("x")});
              }),
              "takeAll(i as integer, w as int64, s as single, d as double, b as boolean, o as dictionary): the 6th "
              "argument, o, must be dictionary, not MemoryBlock");
    EXPECT_EQ(messageOf([&] { host.call(object, "halfOf", {}); }),
              "halfOf(value as single) as single: takes 1 argument, not 0");
    EXPECT_EQ(messageOf([&] { host.call(object, "missing", {}); }),
              "there is no method missing in the class TestClass");
    EXPECT_EQ(messageOf([&] { host.callShared("Missing", "x", {}); }), "there is no class Missing");
    EXPECT_EQ(seen->integer, 99);
}

TEST_F(Calls, OverloadsAreChosenByNumberAndTypes)
{
    EXPECT_EQ(host.call(object, "overloaded", {5}).int32(), 1);
    EXPECT_EQ(host.call(object, "overloaded", {"5"}).int32(), 2);
    EXPECT_EQ(host.call(object, "overloaded", {"5", nullptr}).int32(), 3);
    EXPECT_EQ(host.call(object, "OVERLOADED", {5}).int32(), 1);
    EXPECT_THROW(host.call(object, "overloaded", {true}), TypeError);
    EXPECT_EQ(host.call(host.newObject("TestClass", {42}), "data").int32(), 42);
    EXPECT_EQ(host.call(object, "data").int32(), 1);
}

TEST_F(Calls, AssignmentCallsTheSetterWithTheValueLast)
{
    Value key("k");
    host.assign(object, "itemFor", {key}, 12);
    EXPECT_EQ(seen->handle, key.handle());
    EXPECT_EQ(host.call(object, "itemFor", {"k"}).int32(), 12);
    EXPECT_EQ(messageOf([&] { host.assign(object, "data", {}, 1); }), "data as integer: cannot be assigned to");
}

TEST_F(Calls, SharedMethodsGetNoObject)
{
    EXPECT_EQ(host.callShared("testclass", "sum", {40, 2}).int32(), 42);
    EXPECT_THROW(host.call(object, "sum", {40, 2}), CallError);
}

TEST_F(Calls, StringsAreBorrowedAndResultsTakenOver)
{
    Value string("abc");
    Value same = host.call(object, "sameString", {string});
    EXPECT_TRUE(same.sameHandle(string));
    EXPECT_EQ(string.lockCount(), 2);
    EXPECT_EQ(host.call(object, "sameString", {nullptr}).text(), "");
    EXPECT_TRUE(host.call(object, "sameString", {nullptr}).isNullHandle());
}

TEST_F(Calls, ScalarsTravelInVariantsOfTheirOwn)
{
    LedgerMark before = host.mark();
    EXPECT_EQ(host.call(object, "sameVariant", {17}).int32(), 17);
    EXPECT_EQ(host.call(object, "sameVariant", {"text"}).text(), "text");
    EXPECT_TRUE(host.call(object, "sameVariant", {nullptr}).isNil());
    EXPECT_TRUE(host.liveSince(before).empty());
    Value dictionary = Value::dictionary();
    EXPECT_TRUE(host.call(object, "sameVariant", {dictionary}).sameHandle(dictionary));
    EXPECT_EQ(seen->handle, dictionary.handle());
}

TEST_F(Calls, ResultOfAnotherClassIsAFault)
{
    host.call(object, "wrongResult");
    ASSERT_EQ(host.faults().size(), 1u);
    EXPECT_EQ(host.takeFaults().front(), "wrongResult as dictionary: the result must be dictionary, not Date");
}

TEST_F(Calls, EverythingRaisedIsDeliveredWhenTheCallEnds)
{
    try {
        host.call(object, "raiseTwice");
        FAIL() << "nothing was thrown";
    } catch (const Exception &exception) {
        ASSERT_EQ(exception.raised().size(), 2u);
        EXPECT_EQ(exception.className(), "OutOfMemoryException");
        EXPECT_EQ(exception.message(), "OutOf");
        EXPECT_EQ(exception.errorNumber(), 7);
        EXPECT_EQ(exception.raised()[1].className, "RuntimeException");
        EXPECT_TRUE(exception.raised()[1].object.isA("RuntimeException"));
    }
    EXPECT_TRUE(host.takePendingExceptions().empty());
    EXPECT_EQ(host.tryCall(object, "raiseTwice").raised.size(), 2u);
}

TEST_F(Calls, HostMethodsInCppServeTheSameDeclarations)
{
    HostClass definition;
    definition.name = "Scripted";
    definition.superName = "TestClass";
    definition.methods = {
        {"join(a as string, b as integer, c as double) as string",
         [](const Value &, const Arguments &arguments) {
             return Value(arguments[0].text() + arguments[1].describe() + arguments[2].describe());
         }},
        {"fail",
         [](const Value &, const Arguments &) -> Value {
             Host::shared().raise("OutOfBoundsException", "by hand", 3);
             return nullptr;
         }},
        {"wrong as integer", [](const Value &, const Arguments &) { return Value("text"); }},
    };
    definition.sharedMethods = {{"twice(b as boolean) as single", [](const Value &, const Arguments &arguments) {
                                     return Value(arguments[0].boolean() ? 2.5f : 0.0f);
                                 }}};
    host.defineClass(definition);
    Value scripted = host.newObject("Scripted");
    EXPECT_EQ(host.call(scripted, "join", {"x", 1, 2.5}).text(), "x12.5");
    EXPECT_EQ(host.callShared("Scripted", "twice", {true}).single(), 2.5f);
    EXPECT_EQ(host.tryCall(scripted, "fail").raised.at(0).errorNumber, 3);
    EXPECT_EQ(host.tryCall(scripted, "wrong").raised.at(0).className, "TypeMismatchException");
    // What it inherits.
    EXPECT_EQ(host.call(scripted, "data").int32(), 1);
    EXPECT_TRUE(scripted.isA("testclass"));
}

} // namespace
