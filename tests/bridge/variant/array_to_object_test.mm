// Host arrays in a Variant's place: every element type, read from the array's storage or through the host's readers.
#include "tests/bridge/crossing.h"

using host::ElementType;
using host::Value;

namespace {

struct ArrayHost {
    const char *name;
    double version;
    bool arrayStorage;
    bool readsStorage; // expected of the plug-in
};

const ArrayHost kArrayHosts[] = {
    {"OldHostWithStorage", 2011.4, true, true},  {"OldHostWithoutStorage", 2011.4, false, false},
    {"LastHostWithStorage", 2013.9, true, true}, {"LastHostWithoutStorage", 2013.9, false, false},
    {"FirstLaterHost", 2013.91, false, false},   {"LaterHostWithStorageAllTheSame", 2014.1, true, false},
};

NSNumber *asLong(int number)
{
    return [NSNumber numberWithLong:number];
}

Value arrayOf(int32_t type)
{
    switch (ElementType(type)) {
    case ElementType::Int32:
        return Value::array(ElementType::Int32, {INT32_MIN, 0, INT32_MAX});
    case ElementType::Int64:
        return Value::array(ElementType::Int64, {INT64_MIN, 5ll, INT64_MAX});
    case ElementType::Single:
        return Value::array(ElementType::Single, {0.1f, -1.0f, INFINITY});
    case ElementType::Double:
        return Value::array(ElementType::Double, {0.1, -1e300, -INFINITY});
    case ElementType::Boolean:
        return Value::array(ElementType::Boolean, {true, false, true});
    case ElementType::String:
        return Value::strings({"a", "Größe", "\U0001F600"});
    case ElementType::Date:
        return Value::array(ElementType::Date, {Value::date(2012, 2, 29, 1, 2, 3), Value::date(1999, 12, 31)});
    default:
        return Value::variants({1, "two", 3.0, true, Value::strings({"inner"}), Value::memoryBlock("four")});
    }
}

NSDate *dateOf(int year, int month, int day, int hour, int minute, int second)
{
    return [NSCalendarDate dateWithYear:year
                                  month:month
                                    day:day
                                   hour:hour
                                 minute:minute
                                 second:second
                               timeZone:[NSTimeZone localTimeZone]];
}

NSArray *expectedOf(int32_t type)
{
    switch (ElementType(type)) {
    case ElementType::Int32:
        return [NSArray arrayWithObjects:asLong(INT32_MIN), asLong(0), asLong(INT32_MAX), nil];
    case ElementType::Int64:
        return [NSArray arrayWithObjects:[NSNumber numberWithLongLong:INT64_MIN], [NSNumber numberWithLongLong:5],
                                         [NSNumber numberWithLongLong:INT64_MAX], nil];
    case ElementType::Single:
        return [NSArray arrayWithObjects:[NSNumber numberWithFloat:0.1f], [NSNumber numberWithFloat:-1],
                                         [NSNumber numberWithFloat:INFINITY], nil];
    case ElementType::Double:
        return [NSArray arrayWithObjects:[NSNumber numberWithDouble:0.1], [NSNumber numberWithDouble:-1e300],
                                         [NSNumber numberWithDouble:-INFINITY], nil];
    case ElementType::Boolean:
        return [NSArray arrayWithObjects:[NSNumber numberWithBool:YES], [NSNumber numberWithBool:NO],
                                         [NSNumber numberWithBool:YES], nil];
    case ElementType::String:
        return [NSArray arrayWithObjects:@"a", @"Größe", @"\U0001F600", nil];
    case ElementType::Date:
        return [NSArray arrayWithObjects:dateOf(2012, 2, 29, 1, 2, 3), dateOf(1999, 12, 31, 0, 0, 0), nil];
    default:
        return
            [NSArray arrayWithObjects:asLong(1), @"two", [NSNumber numberWithDouble:3], [NSNumber numberWithBool:YES],
                                      [NSArray arrayWithObject:@"inner"], [NSData dataWithBytes:"four" length:4], nil];
    }
}

const ElementType kElementTypes[] = {
    ElementType::Int32,   ElementType::Int64,  ElementType::Single, ElementType::Double,
    ElementType::Boolean, ElementType::String, ElementType::Date,   ElementType::Object,
};

class ArrayToObject : public CrossingTest {};

class ArrayToObjectOn : public CrossingTest, public testing::WithParamInterface<ArrayHost> {
protected:
    void startHost()
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.version = GetParam().version;
        profile.arrayStorage = GetParam().arrayStorage;
        start(profile);
    }
};

INSTANTIATE_TEST_SUITE_P(Hosts, ArrayToObjectOn, testing::ValuesIn(kArrayHosts),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace

TEST_P(ArrayToObjectOn, EveryElementTypeIsConvertedInOrder)
{
    startHost();
    for (ElementType type : kElementTypes) {
        Value array = arrayOf(int32_t(type));
        SCOPED_TRACE(array.typeName());
        host.resetCounts();
        NSMutableArray *result = toCocoa(array);
        EXPECT_TRUE([result isKindOfClass:[NSMutableArray class]]);
        EXPECT_TRUE([result isEqual:expectedOf(int32_t(type))]) << textOf(result);
        const long readers = GetParam().readsStorage ? 0 : array.count() + (type == ElementType::Object ? 1 : 0);
        EXPECT_EQ(host.calls("RuntimeArrayDirectGetGetProc"), readers) << "the reader is asked for at each element";
        for (int32_t i = 0; i < array.count(); i++)
            if (array.at(i).handle())
                EXPECT_EQ(array.at(i).lockCount(), 2) << "the array's and the one of this line";
    }
}

// Host code that runs while an element is converted: it makes the array move its storage, and changes what comes next.
TEST_P(ArrayToObjectOn, WhereTheElementsLieIsAskedAnewForEach)
{
    startHost();
    const char *textService = GetParam().version < 2012 ? "REALGetStringEncoding" : "REALGetStringCFString";
    struct Row {
        Value array;
        Value later;          // what comes after the first element in the end
        const char *service;  // asked for each element
        int callsBeforeFirst; // of that service
    };
    Row rows[] = {
        {Value::variants(std::vector<Value>(40, "early")), "late", "VarType", 1},
        {Value::strings(std::vector<Value>(40, "early")), "late", textService, 1},
        {Value::array(ElementType::Date, std::vector<Value>(40, Value::date(2000, 1, 1))), Value::date(2012, 2, 29),
         "REALGetPropValueInt", 0},
    };
    for (Row &row : rows) {
        SCOPED_TRACE(row.array.typeName());
        int calls = 0;
        host.beforeCall(row.service, [&] {
            if (calls++ != row.callsBeforeFirst)
                return;
            for (int i = 0; i < 1000; i++)
                row.array.append(row.later);
            for (int i = 1; i < 40; i++)
                row.array.setAt(i, row.later);
        });
        NSArray *result = toCocoa(row.array);
        host.beforeCall(row.service, nullptr);
        ASSERT_EQ([result count], 40u) << "the bound is asked once";
        id later = toCocoa(row.later);
        for (int i = 1; i < 40; i++)
            EXPECT_TRUE([[result objectAtIndex:i] isEqual:later]) << i << textOf([result objectAtIndex:i]);
    }
}

TEST_P(ArrayToObjectOn, AnEmptyArrayIsAnEmptyArray)
{
    startHost();
    for (ElementType type : kElementTypes) {
        NSArray *result = toCocoa(Value::array(type));
        ASSERT_TRUE([result isKindOfClass:[NSMutableArray class]]) << int32_t(type);
        EXPECT_EQ([result count], 0u);
    }
}

TEST_P(ArrayToObjectOn, ArraysOfCurrenciesAndColorsAreNil)
{
    startHost();
    EXPECT_EQ(toCocoa(Value::array(ElementType::Currency, {Value::currency(1.5)})), nil);
    EXPECT_EQ(toCocoa(Value::array(ElementType::Color, {Value::color(1)})), nil);
}

// Host code learns that its array cannot be stored; a null string by itself is an empty text, but not in an array.
TEST_P(ArrayToObjectOn, ANilElementRaisesInHostCodeAndNothingIsSent)
{
    startHost();
    support::LogCapture log;
    const Value arrays[] = {
        Value::strings({"a", Value::nullString(), "c"}),
        Value::variants({1, Value(), 3}),
        Value::array(ElementType::Date, {Value::date(2000, 1, 1), Value()}),
        Value::variants({"x", Value::variants({Value::strings({"a", Value::nullString()})})}),
        Value::variants({Value::memoryBlock("")}),
    };
    for (const Value &array : arrays) {
        std::vector<host::RaisedException> raised = tryToCocoa(array);
        ASSERT_EQ(raised.size(), 1u) << array.describe();
        EXPECT_EQ(raised[0].className, "NSExceptionKTZ");
        EXPECT_EQ(timesSent(), 0) << array.describe();
    }
    EXPECT_EQ(log.messages().size(), std::size(arrays));
}

TEST_P(ArrayToObjectOn, AHandleOfAnEmptyStringIsAnEmptyElementWhereTheHostConvertsIt)
{
    startHost();
    EXPECT_TRUE([toCocoa(Value::strings({Value::emptyString()})) isEqual:[NSArray arrayWithObject:@""]]);
}

// Hosts without the bound count as having one element: programs on them pass arrays of one.
TEST_F(ArrayToObject, WithoutTheUpperBoundOneElementIsRead)
{
    host.hide("RuntimeUBound");
    start();
    for (ElementType type : kElementTypes) {
        NSArray *result = toCocoa(arrayOf(int32_t(type)));
        EXPECT_TRUE([result isEqual:[expectedOf(int32_t(type)) subarrayWithRange:NSMakeRange(0, 1)]]) << textOf(result);
    }
}

TEST_F(ArrayToObject, WithoutReadersNumbersAre0AndHandlesNil)
{
    host.hide("RuntimeArrayDirectGetGetProc");
    start("2014.1");
    support::LogCapture log;
    EXPECT_TRUE([toCocoa(Value::array(ElementType::Int32, {5})) isEqual:[NSArray arrayWithObject:asLong(0)]]);
    EXPECT_TRUE([toCocoa(Value::array(ElementType::Double, {5.0})) isEqual:[NSArray arrayWithObject:asLong(0)]]);
    NSArray *booleans = toCocoa(Value::array(ElementType::Boolean, {true}));
    EXPECT_TRUE([booleans isEqual:[NSArray arrayWithObject:[NSNumber numberWithBool:NO]]]);
    for (const Value &array : {Value::strings({"a"}), Value::variants({1})}) {
        EXPECT_EQ(tryToCocoa(array).size(), 1u) << array.describe();
        EXPECT_EQ(timesSent(), 0);
    }
}

TEST_F(ArrayToObject, AnArrayWithoutAReaderOfItsOwnGives0)
{
    start("2014.1");
    host.replace("RuntimeArrayDirectGetGetProc", bodyOf([](void *) -> void * { return nullptr; }));
    EXPECT_TRUE([toCocoa(Value::array(ElementType::Int64, {5ll})) isEqual:[NSArray arrayWithObject:asLong(0)]]);
    host.replace("RuntimeArrayDirectGetGetProc", nullptr);
    EXPECT_TRUE([toCocoa(Value::array(ElementType::Int64, {5ll})) isEqual:[NSArray arrayWithObject:asLong(5)]]);
}

TEST_F(ArrayToObject, MixedElementsAreConvertedEachByItsOwnType)
{
    start();
    Value dictionary = Value::dictionary({{"k", Value::variants({1, "x"})}});
    NSArray *result =
        toCocoa(Value::variants({Value::variants({Value::variants({})}), dictionary, Value::currency(2.5)}));
    ASSERT_EQ([result count], 3u);
    NSArray *nested = [result objectAtIndex:0];
    EXPECT_TRUE([nested isEqual:[NSArray arrayWithObject:[NSArray array]]]);
    EXPECT_TRUE([nested isKindOfClass:[NSMutableArray class]]);
    EXPECT_TRUE([[nested objectAtIndex:0] isKindOfClass:[NSMutableArray class]]);
    NSArray *inDictionary = [NSArray arrayWithObjects:asLong(1), @"x", nil];
    EXPECT_TRUE([[[result objectAtIndex:1] objectForKey:@"k"] isEqual:inDictionary]);
    EXPECT_TRUE([[result objectAtIndex:2] isEqual:[NSNumber numberWithDouble:2.5]]);
}
