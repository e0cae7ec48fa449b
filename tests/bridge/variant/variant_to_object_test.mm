// Scalar host values as Cocoa objects: the dispatch by the host's type codes, and how each value is read.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

int32_t typeCode;
int32_t typeCodeNow(void *)
{
    return typeCode;
}
int32_t low256(void *)
{
    return 256;
}
int32_t low257(void *)
{
    return 257;
}
int32_t low255(void *)
{
    return 255;
}
int32_t lowOne(void *)
{
    return 1;
}

// The codes that stand for something; 9 and the arrays need handles of their own and are tested where they belong.
const int32_t kScalarCodes[] = {2, 3, 4, 5, 6, 7, 8, 11, 16, 18, 19, 20, 21, 23};
const int32_t kHandleCodes[] = {9, 4098, 4099, 4100, 4101, 4103, 4104, 4105, 4107};

template <size_t count>
bool isAmong(const int32_t (&codes)[count], int32_t code)
{
    return std::find(codes, codes + count, code) != codes + count;
}

class VariantToObject : public CrossingTest {
protected:
    void playTypeCodes() { host.replace("VarType", reinterpret_cast<void *>(typeCodeNow)); }

    id toCocoaAs(int32_t code, const Value &value)
    {
        typeCode = code;
        return toCocoa(value);
    }

    static void expectNumber(id object, NSNumber *expected)
    {
        ASSERT_TRUE([object isKindOfClass:[NSNumber class]]) << textOf(object);
        EXPECT_TRUE([object isEqual:expected]) << textOf(object) << " for " << textOf(expected);
        EXPECT_STREQ([object objCType], [expected objCType]);
    }
};

} // namespace

TEST_F(VariantToObject, EachScalarBecomesItsNumber)
{
    start();
    expectNumber(toCocoa(INT32_MIN), [NSNumber numberWithLong:INT32_MIN]);
    expectNumber(toCocoa(INT32_MAX), [NSNumber numberWithLong:INT32_MAX]);
    expectNumber(toCocoa(INT64_MIN), [NSNumber numberWithLongLong:INT64_MIN]);
    expectNumber(toCocoa(INT64_MAX), [NSNumber numberWithLongLong:INT64_MAX]);
    expectNumber(toCocoa(7ll), [NSNumber numberWithLongLong:7]);
    expectNumber(toCocoa(0.1f), [NSNumber numberWithFloat:0.1f]);
    expectNumber(toCocoa(0.1), [NSNumber numberWithDouble:0.1]);
    expectNumber(toCocoa(Value::currency(1.5)), [NSNumber numberWithDouble:1.5]);
    expectNumber(toCocoa(Value::color(0x00FF8001)), [NSNumber numberWithLong:0x00FF8001]);
    expectNumber(toCocoa(true), [NSNumber numberWithBool:YES]);
    expectNumber(toCocoa(false), [NSNumber numberWithBool:NO]);
}

TEST_F(VariantToObject, AColorWithItsHighestBitIsANegativeNumber)
{
    start();
    expectNumber(toCocoa(Value::color(0x80000001u)), [NSNumber numberWithLong:int32_t(0x80000001u)]);
}

TEST_F(VariantToObject, NilIsNil)
{
    start();
    EXPECT_EQ(toCocoa(Value()), nil);
    Value nothing = Value("x").boxed();
    playTypeCodes();
    EXPECT_EQ(toCocoaAs(0, nothing), nil);
}

TEST_F(VariantToObject, EveryListedCodeHasAResultAndEveryOtherIsNil)
{
    start();
    playTypeCodes();
    Value date = Value::date(2012, 2, 29);
    for (int32_t code = -3; code <= 4200; code++) {
        if (isAmong(kHandleCodes, code))
            continue;
        Value value = code == 7 ? date : Value("12");
        EXPECT_EQ(toCocoaAs(code, value) != nil, isAmong(kScalarCodes, code)) << code;
    }
    for (int32_t code : {INT32_MIN, -4104, -9, 8192, 8200, 65544, INT32_MAX})
        EXPECT_EQ(toCocoaAs(code, Value("12")), nil) << code;
}

TEST_F(VariantToObject, TheCodeAloneDecidesTheKindOfNumber)
{
    start();
    playTypeCodes();
    const struct {
        int32_t code;
        NSNumber *expected;
    } rows[] = {
        {2, [NSNumber numberWithLong:12]},     {3, [NSNumber numberWithLongLong:12]},
        {4, [NSNumber numberWithFloat:12.5]},  {5, [NSNumber numberWithDouble:12.5]},
        {6, [NSNumber numberWithDouble:12.5]}, {11, [NSNumber numberWithBool:YES]},
        {16, [NSNumber numberWithLong:12]},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.code);
        expectNumber(toCocoaAs(row.code, 12.5), row.expected);
    }
    for (int32_t code : {8, 18, 19, 20, 21, 23})
        EXPECT_TRUE([toCocoaAs(code, 12.5) isEqual:@"12.5"]) << code;
}

// A boolean of the host is a byte: what lies above it is not looked at.
TEST_F(VariantToObject, OnlyTheLowByteOfABooleanCounts)
{
    start();
    const struct {
        int32_t (*value)(void *);
        BOOL expected;
    } rows[] = {{low256, NO}, {low257, YES}, {low255, YES}, {lowOne, YES}};
    for (const auto &row : rows) {
        host.replace("VariantToInt32", reinterpret_cast<void *>(row.value));
        expectNumber(toCocoa(true), [NSNumber numberWithBool:row.expected]);
    }
}

TEST_F(VariantToObject, TheHostsConversionIsPreferredToTheProperty)
{
    start();
    host.resetCounts();
    for (const Value &value : {Value(1), Value(1ll), Value(1.0f), Value(1.0), Value("x"), Value(true)})
        toCocoa(value);
    for (const char *entry : {"REALGetPropValueInt", "REALGetPropValueInt64", "REALGetPropValueSingle",
                              "REALGetPropValueDouble", "REALGetPropValueString"})
        EXPECT_EQ(host.calls(entry), 0) << entry;
}

namespace {

struct Conversion {
    const char *entry;
    const char *property;
    const char *getter;
    Value value;
    NSNumber *(*expected)(int number);
};

NSNumber *asLong(int number)
{
    return [NSNumber numberWithLong:number];
}
NSNumber *asLongLong(int number)
{
    return [NSNumber numberWithLongLong:number];
}
NSNumber *asFloat(int number)
{
    return [NSNumber numberWithFloat:number];
}
NSNumber *asDouble(int number)
{
    return [NSNumber numberWithDouble:number];
}
NSNumber *asBool(int number)
{
    return [NSNumber numberWithBool:number != 0];
}

const std::vector<Conversion> &conversions()
{
    static const std::vector<Conversion> rows = {
        {"VariantToInt32", "Int32Value", "REALGetPropValueInt", 9, asLong},
        {"VariantToInt32", "Int32Value", "REALGetPropValueInt", Value::color(9), asLong},
        {"VariantToInt32", "Int32Value", "REALGetPropValueInt", true, asBool},
        {"VariantToInt64", "LongValue", "REALGetPropValueInt64", 9ll, asLongLong},
        {"VariantToSingle", "SingleValue", "REALGetPropValueSingle", 9.0f, asFloat},
        {"VariantToDouble", "DoubleValue", "REALGetPropValueDouble", 9.0, asDouble},
        {"VariantToDouble", "DoubleValue", "REALGetPropValueDouble", Value::currency(9), asDouble},
    };
    return rows;
}

} // namespace

TEST_F(VariantToObject, WithoutTheHostsConversionThePropertyIsRead)
{
    for (const Conversion &row : conversions())
        host.hide(row.entry);
    host.hide("VariantToString");
    start();
    for (const Conversion &row : conversions()) {
        SCOPED_TRACE(row.value.describe());
        host.resetCounts();
        expectNumber(toCocoa(row.value), row.expected(9));
        EXPECT_EQ(host.calls(row.getter), 1);
    }
    EXPECT_TRUE([toCocoa("text") isEqual:@"text"]);
}

TEST_F(VariantToObject, WithNeitherAScalarIsStored0)
{
    for (const Conversion &row : conversions())
        host.hide(row.entry);
    host.hide("VariantToString");
    start();
    for (const Conversion &row : conversions())
        host.hideProperty("Variant", row.property);
    host.hideProperty("Variant", "StringValue");
    for (const Conversion &row : conversions())
        expectNumber(toCocoa(row.value), row.expected(0));
    EXPECT_TRUE([toCocoa("text") isEqual:@""]);
}

TEST_F(VariantToObject, WithoutAnyGetterAScalarIsStored0)
{
    for (const Conversion &row : conversions()) {
        host.hide(row.entry);
        host.hide(row.getter);
    }
    for (const char *entry : {"VariantToString", "REALGetPropValueString", "REALGetPropValueObject"})
        host.hide(entry);
    start();
    for (const Conversion &row : conversions())
        expectNumber(toCocoa(row.value), row.expected(0));
    EXPECT_TRUE([toCocoa("text") isEqual:@""]);
    EXPECT_EQ(toCocoa(Value::date(2012, 2, 29)), nil);
}

TEST_F(VariantToObject, WithoutTheTypeMethodTheTypePropertyTells)
{
    host.hide("VarType");
    start();
    host.resetCounts();
    expectNumber(toCocoa(5), [NSNumber numberWithLong:5]);
    EXPECT_EQ(host.calls("REALGetPropValueInt"), 1);
    EXPECT_TRUE([toCocoa("x") isEqual:@"x"]);
    EXPECT_TRUE([toCocoa(Value::strings({"a"})) isEqual:[NSArray arrayWithObject:@"a"]]);
}

TEST_F(VariantToObject, AHostThatTellsNoTypeStoresNothing)
{
    host.hide("VarType");
    host.hide("REALGetPropValueInt");
    start();
    for (const Value &value : {Value(1), Value("x"), Value::dictionary(), Value::date(2000, 1, 1)})
        EXPECT_EQ(toCocoa(value), nil) << value.describe();
}

TEST_F(VariantToObject, AHostWithoutGlobalMethodsTellsTheTypeByTheProperty)
{
    host.hide("REALLoadGlobalMethod");
    start();
    expectNumber(toCocoa(5), [NSNumber numberWithLong:5]);
}

TEST_F(VariantToObject, TextOfEveryHostBecomesText)
{
    start();
    EXPECT_TRUE([toCocoa("Größe \U0001F600") isEqual:@"Größe \U0001F600"]);
    EXPECT_TRUE([toCocoa(Value::utf16(u"Ωmega")) isEqual:@"Ωmega"]);
    EXPECT_TRUE([toCocoa(Value::string("\x8A", host::kMacRoman)) isEqual:@"ä"]);
}

TEST_F(VariantToObject, EmptyTextIsOneConstantEmptyTextNeverNil)
{
    start();
    id null = toCocoa(Value::nullString().boxed());
    ASSERT_NE(null, nil);
    EXPECT_EQ([null length], 0u);
    EXPECT_EQ(toCocoa(Value::nullString().boxed()), null) << "the same object each time";
    EXPECT_TRUE([toCocoa(Value::emptyString()) isEqual:@""]);
}

TEST_F(VariantToObject, ADateIsReadFromItsPropertyOnEveryHost)
{
    start();
    host.resetCounts();
    NSCalendarDate *date = toCocoa(Value::date(2012, 2, 29, 10, 20, 30));
    EXPECT_EQ(host.calls("REALGetPropValueObject"), 1);
    ASSERT_TRUE([date isKindOfClass:[NSCalendarDate class]]);
    EXPECT_EQ([date yearOfCommonEra], 2012);
    EXPECT_EQ([date secondOfMinute], 30);
}

TEST_F(VariantToObject, ADateThatTheHostDoesNotHandOutIsNil)
{
    host.hide("REALGetPropValueObject");
    start();
    EXPECT_EQ(toCocoa(Value::date(2012, 2, 29)), nil);
    host.show("REALGetPropValueObject");
    EXPECT_NE(toCocoa(Value::date(2012, 2, 29)), nil);
    host.replace("REALGetPropValueObject", bodyOf([](void *, const char *, void **) -> unsigned char { return 0; }));
    EXPECT_EQ(toCocoa(Value::date(2012, 2, 29)), nil);
    host.replace("REALGetPropValueObject", bodyOf([](void *, const char *, void **date) -> unsigned char {
                     *date = nullptr;
                     return 1;
                 }));
    EXPECT_EQ(toCocoa(Value::date(2012, 2, 29)), nil);
}
