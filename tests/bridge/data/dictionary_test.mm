// Dictionaries both ways: entries, nil and empty, what the host lacks.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

class Dictionary : public CrossingTest {
protected:
    NSDictionary *dictionaryOf(const Value &value) { return toCocoaWith("setDictionaryValue", value); }
    Value hostDictionaryOf(NSDictionary *dictionary) { return toHostWith("dictionaryForKey", dictionary); }
};

NSNumber *asLong(int number)
{
    return [NSNumber numberWithLong:number];
}

} // namespace

TEST_F(Dictionary, EveryKindOfEntryCrossesBothWays)
{
    start();
    Value dictionary = Value::dictionary({
        {"text", "Größe"},
        {"number", 5},
        {"yes", true},
        {"half", 0.5},
        {"data", Value::memoryBlock("bytes")},
        {"list", Value::variants({1, "two"})},
        {"inner", Value::dictionary({{"deep", Value::strings({"x"})}})},
    });
    NSDictionary *result = dictionaryOf(dictionary);
    ASSERT_EQ([result count], 7u);
    EXPECT_TRUE([[result objectForKey:@"text"] isEqual:@"Größe"]);
    EXPECT_TRUE([[result objectForKey:@"number"] isEqual:asLong(5)]);
    EXPECT_TRUE([[[result objectForKey:@"inner"] objectForKey:@"deep"] isEqual:[NSArray arrayWithObject:@"x"]]);

    Value back = hostDictionaryOf(result);
    ASSERT_EQ(back.count(), 7);
    EXPECT_EQ(back.lookup("text").text(), "Größe");
    EXPECT_TRUE(back.lookup("yes").boolean());
    EXPECT_EQ(back.lookup("half").kind(), Value::Kind::Double);
    EXPECT_EQ(back.lookup("data").bytes(), "bytes");
    EXPECT_EQ(back.lookup("list").at(1).text(), "two");
    EXPECT_EQ(back.lookup("inner").lookup("deep").at(0).text(), "x");
}

TEST_F(Dictionary, NilIsNilBothWays)
{
    start();
    EXPECT_EQ(dictionaryOf(Value()), nil);
    EXPECT_TRUE(hostDictionaryOf(nil).isNil());
}

TEST_F(Dictionary, EmptyIsEmptyAndImmutableNotNil)
{
    start();
    NSDictionary *result = dictionaryOf(Value::dictionary());
    ASSERT_NE(result, nil);
    EXPECT_EQ([result count], 0u);
    EXPECT_FALSE([result isKindOfClass:[NSMutableDictionary class]]);
    EXPECT_TRUE([dictionaryOf(Value::dictionary({{"k", 1}})) isKindOfClass:[NSMutableDictionary class]]);

    Value back = hostDictionaryOf([NSDictionary dictionary]);
    ASSERT_TRUE(back.isA("Dictionary"));
    EXPECT_EQ(back.count(), 0);
}

TEST_F(Dictionary, ValuesWithoutACocoaFormBecomeNull)
{
    start(profileWithBareFamily());
    defineWrapperClass("Thing");
    NSDictionary *result = dictionaryOf(Value::dictionary({
        {"nothing", Value()},
        {"no bytes", Value::memoryBlock("")},
        {"any object", host.newInstance("Thing")},
        {"colors", Value::array(host::ElementType::Color, {Value::color(1)})},
        {"last", 1},
    }));
    ASSERT_EQ([result count], 5u);
    for (NSString *key : {@"nothing", @"no bytes", @"any object", @"colors"})
        EXPECT_EQ([result objectForKey:key], [NSNull null]) << textOf(key);
    EXPECT_TRUE([[result objectForKey:@"last"] isEqual:asLong(1)]);
}

TEST_F(Dictionary, AKeyWithoutACocoaFormBecomesNull)
{
    start(profileWithBareFamily());
    defineWrapperClass("Thing");
    NSDictionary *result = dictionaryOf(Value::dictionary({{host.newInstance("Thing"), "value"}, {"k", "v"}}));
    ASSERT_EQ([result count], 2u);
    EXPECT_TRUE([[result objectForKey:[NSNull null]] isEqual:@"value"]);
    EXPECT_TRUE([[result objectForKey:@"k"] isEqual:@"v"]);
}

TEST_F(Dictionary, ANilKeyIsPassedOverWithItsValue)
{
    start();
    NSDictionary *result = dictionaryOf(Value::dictionary({{"a", 1}, {Value(), Value::memoryBlock("x")}, {"b", 2}}));
    ASSERT_EQ([result count], 2u);
    EXPECT_TRUE([[result objectForKey:@"b"] isEqual:asLong(2)]);
}

TEST_F(Dictionary, KeysOfAnyKindCross)
{
    start();
    NSDictionary *result = dictionaryOf(Value::dictionary({{1, "one"}, {2.5, "two and a half"}, {"", "empty"}}));
    EXPECT_TRUE([[result objectForKey:asLong(1)] isEqual:@"one"]);
    EXPECT_TRUE([[result objectForKey:[NSNumber numberWithDouble:2.5]] isEqual:@"two and a half"]);
    EXPECT_TRUE([[result objectForKey:@""] isEqual:@"empty"]);
    Value back = hostDictionaryOf(result);
    ASSERT_EQ(back.count(), 3);
    EXPECT_EQ(back.lookup(1).text(), "one");
    EXPECT_EQ(back.lookup(2.5).text(), "two and a half");
    EXPECT_EQ(back.lookup(Value::nullString()).text(), "empty");
}

TEST_F(Dictionary, NullsFromCocoaAreNilEntries)
{
    start();
    Value back = hostDictionaryOf([NSDictionary dictionaryWithObject:[NSNull null] forKey:@"k"]);
    ASSERT_EQ(back.count(), 1);
    EXPECT_TRUE(back.hasKey("k"));
    EXPECT_TRUE(back.lookup("k").isNil());
}

TEST_F(Dictionary, ThatTheHostCannotMakeIsNil)
{
    start();
    host.failCreation(host::Creation::Dictionary, 1);
    EXPECT_TRUE(hostDictionaryOf([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).isNil());
    EXPECT_EQ(hostDictionaryOf([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).count(), 1);
}

TEST_F(Dictionary, ThatTheHostCannotCountIsEmpty)
{
    host.hide("REALGetPropValueInt");
    start();
    NSDictionary *result = dictionaryOf(Value::dictionary({{"k", "v"}}));
    ASSERT_NE(result, nil);
    EXPECT_EQ([result count], 0u);
    EXPECT_FALSE([result isKindOfClass:[NSMutableDictionary class]]);
}

TEST_F(Dictionary, ThatTheHostFailsToCountIsEmptyWhateverItWrote)
{
    start();
    Value dictionary = Value::dictionary({{"k", "v"}});
    host.replace("REALGetPropValueInt", bodyOf([](void *, const char *, int32_t *count) -> unsigned char {
                     *count = 1;
                     return 0;
                 }));
    NSDictionary *result = dictionaryOf(dictionary);
    ASSERT_NE(result, nil);
    EXPECT_EQ([result count], 0u);
}

TEST_F(Dictionary, ThatCocoaCannotMakeIsNil)
{
    start();
    Value dictionary = Value::dictionary({{"k", "v"}});
    carrier();
    support::CocoaMethod none("NSMutableDictionary", "dictionaryWithCapacity:", support::MethodOf::Class,
                              bodyOf([](id, SEL, unsigned) -> id { return nil; }));
    host.resetCounts();
    EXPECT_EQ(dictionaryOf(dictionary), nil);
    EXPECT_EQ(host.calls("REALLoadObjectMethod"), 0) << "no entry is read";
}

TEST_F(Dictionary, AnAnswerWithoutKeysIsAnEmptyDictionary)
{
    start();
    NSDictionary *source = [NSDictionary dictionaryWithObject:@"v" forKey:@"k"];
    support::CocoaMethod keys("NSDictionary", "allKeys", support::MethodOf::Instance,
                              bodyOf([](id, SEL) -> id { return nil; }));
    Value back = hostDictionaryOf(source);
    ASSERT_TRUE(back.isA("Dictionary"));
    EXPECT_EQ(back.count(), 0);
}
