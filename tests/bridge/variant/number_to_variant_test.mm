// Cocoa's numbers as host Variants, by the type that a number says it has.
#include "tests/bridge/crossing.h"

using host::Value;

// A number of any type, with another value for each of its accessors, so that a result tells which one was asked.
@interface NumberOfAnyType : NSNumber {
    const char *_type;
}
+ (NumberOfAnyType *)numberOfType:(const char *)type;
@end

@implementation NumberOfAnyType

+ (NumberOfAnyType *)numberOfType:(const char *)type
{
    NumberOfAnyType *number = [NSAllocateObject(self, 0, nullptr) autorelease];
    number->_type = type;
    return number;
}

- (void)dealloc
{
    NSDeallocateObject(self);
    return;
    [super dealloc];
}

- (const char *)objCType
{
    return _type;
}
- (BOOL)boolValue
{
    return YES;
}
- (signed char)charValue
{
    return 65;
}
- (unsigned char)unsignedCharValue
{
    return 200;
}
- (short)shortValue
{
    return -300;
}
- (unsigned short)unsignedShortValue
{
    return 60000;
}
- (int)intValue
{
    return -70000;
}
- (unsigned)unsignedIntValue
{
    return 4000000001u;
}
- (long)longValue
{
    return -80000;
}
- (unsigned long)unsignedLongValue
{
    return 3000000001ul;
}
- (long long)longLongValue
{
    return -5000000000ll;
}
- (unsigned long long)unsignedLongLongValue
{
    return 0x8000000000000000ull;
}
- (float)floatValue
{
    return 1.5f;
}
- (double)doubleValue
{
    return 2.25;
}
- (NSInteger)integerValue
{
    return 77;
}
- (NSUInteger)unsignedIntegerValue
{
    return 78;
}

@end

namespace {

struct NumberRow {
    const char *objCType;
    Value::Kind kind;
    Value expected;
    const char *hostService;
};

const NumberRow kNumberRows[] = {
    {"c", Value::Kind::Boolean, true, "BooleanToVariant"},
    {"C", Value::Kind::Int32, 200, "Int32ToVariant"},
    {"s", Value::Kind::Int32, -300, "Int32ToVariant"},
    {"S", Value::Kind::Int32, 60000, "Int32ToVariant"},
    {"i", Value::Kind::Int32, -70000, "Int32ToVariant"},
    {"I", Value::Kind::UInt32, 4000000001u, "UInt32ToVariant"},
    {"l", Value::Kind::Int32, -80000, "Int32ToVariant"},
    {"L", Value::Kind::UInt32, 3000000001u, "UInt32ToVariant"},
    {"q", Value::Kind::Int64, -5000000000ll, "Int64ToVariant"},
    {"Q", Value::Kind::UInt64, 3000000001ull, "UInt64ToVariant"},
    {"f", Value::Kind::Single, 1.5f, "SingleToVariant"},
    {"d", Value::Kind::Double, 2.25, "DoubleToVariant"},
    // Every other text is a double, also one that only begins like a row above.
    {"B", Value::Kind::Double, 2.25, "DoubleToVariant"},
    {"", Value::Kind::Double, 2.25, "DoubleToVariant"},
    {"ii", Value::Kind::Double, 2.25, "DoubleToVariant"},
    {"cC", Value::Kind::Double, 2.25, "DoubleToVariant"},
    {"D", Value::Kind::Double, 2.25, "DoubleToVariant"},
    {"t", Value::Kind::Double, 2.25, "DoubleToVariant"},
    {"{?=i}", Value::Kind::Double, 2.25, "DoubleToVariant"},
};

const char *const kNumberServices[] = {
    "BooleanToVariant", "Int32ToVariant",  "UInt32ToVariant", "Int64ToVariant",
    "UInt64ToVariant",  "SingleToVariant", "DoubleToVariant",
};

class NumberToVariant : public CrossingTest {};

} // namespace

TEST_F(NumberToVariant, EveryTypeHasItsAccessorAndItsVariant)
{
    start();
    for (const NumberRow &row : kNumberRows) {
        SCOPED_TRACE(row.objCType);
        host.resetCounts();
        Value value = toHost([NumberOfAnyType numberOfType:row.objCType]);
        EXPECT_EQ(value.kind(), row.kind);
        EXPECT_TRUE(value.equals(row.expected)) << value.describe();
        for (const char *service : kNumberServices)
            EXPECT_EQ(host.calls(service), strcmp(service, row.hostService) == 0 ? 1 : 0) << service;
    }
}

TEST_F(NumberToVariant, AMissingServiceOfTheHostGivesNil)
{
    for (const char *service : kNumberServices)
        host.hide(service);
    start();
    for (const NumberRow &row : kNumberRows)
        EXPECT_TRUE(toHost([NumberOfAnyType numberOfType:row.objCType]).isNil()) << row.objCType;
    host.showAll();
    EXPECT_TRUE(toHost([NumberOfAnyType numberOfType:"i"]).equals(-70000)) << "a failed look-up must not be kept";
}

TEST_F(NumberToVariant, AnyCharIsABooleanEvenOneThatWasALetter)
{
    start();
    EXPECT_EQ(toHost([NSNumber numberWithBool:YES]).kind(), Value::Kind::Boolean);
    EXPECT_TRUE(toHost([NSNumber numberWithBool:YES]).boolean());
    EXPECT_EQ(toHost([NSNumber numberWithBool:NO]).kind(), Value::Kind::Boolean);
    EXPECT_FALSE(toHost([NSNumber numberWithBool:NO]).boolean());
    Value letter = toHost([NumberOfAnyType numberOfType:"c"]); // its charValue is 65
    EXPECT_EQ(letter.kind(), Value::Kind::Boolean);
    EXPECT_TRUE(letter.boolean());
}

// Host programs have come to rely on the cut: the numbers were stored by programs that knew 32 bits only.
TEST_F(NumberToVariant, AnUnsigned64BitNumberIsCutToItsLow32Bits)
{
    start();
    Value value = toHost([NSNumber numberWithUnsignedLongLong:0x8000000000000005ull]);
    EXPECT_EQ(value.kind(), Value::Kind::UInt64);
    EXPECT_EQ(value.uint64(), 5u);
    EXPECT_EQ(toHost([NSNumber numberWithUnsignedLongLong:0xFFFFFFFFFFFFFFFFull]).uint64(), 0xFFFFFFFFu);
}

TEST_F(NumberToVariant, CocoasOwnNumbersKeepTheirValues)
{
    start();
    const struct {
        NSNumber *number;
        Value expected;
    } rows[] = {
        {[NSNumber numberWithInt:INT32_MIN], INT32_MIN},
        {[NSNumber numberWithInt:INT32_MAX], INT32_MAX},
        {[NSNumber numberWithLongLong:INT64_MIN], INT64_MIN},
        {[NSNumber numberWithLongLong:INT64_MAX], INT64_MAX},
        {[NSNumber numberWithLongLong:2147483648ll], 2147483648ll},
        {[NSNumber numberWithFloat:0.1f], 0.1f},
        {[NSNumber numberWithDouble:0.1], 0.1},
        {[NSNumber numberWithDouble:-INFINITY], -INFINITY},
        {[NSNumber numberWithFloat:INFINITY], INFINITY},
    };
    for (const auto &row : rows) {
        Value value = toHost(row.number);
        EXPECT_TRUE(value.equals(row.expected)) << value.describe() << " for " << row.expected.describe();
    }
    EXPECT_TRUE(std::isnan(toHost([NSNumber numberWithDouble:NAN]).number()));
    EXPECT_TRUE(std::signbit(toHost([NSNumber numberWithDouble:-0.0]).number()));
}
