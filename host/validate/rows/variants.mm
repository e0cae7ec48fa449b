#import <AppKit/AppKit.h>

#include "host/validate/rows/expected.h"
#include "host/validate/rows/samples.h"
#include "host/validate/rows/tables.h"

namespace validate {

using host::ElementType;
using host::Value;

namespace {

struct NumberType {
    const char *type;
    const char *entry;
    const char *shownValue;
};

// The whole of a 64-bit unsigned number is not read, only its low half.
const NumberType kNumberTypes[] = {
    {"c", "BooleanToVariant", "true"},
    {"C", "Int32ToVariant", "int32 251"},
    {"s", "Int32ToVariant", "int32 -5"},
    {"S", "Int32ToVariant", "int32 65531"},
    {"i", "Int32ToVariant", "int32 -5"},
    {"I", "UInt32ToVariant", "uint32 4294967291"},
    {"l", "Int32ToVariant", "int32 -5"},
    {"L", "UInt32ToVariant", "uint32 4294967291"},
    {"q", "Int64ToVariant", "int64 -5"},
    {"Q", "UInt64ToVariant", "uint64 4294967291"},
    {"f", "SingleToVariant", "single 1.5"},
    {"d", "DoubleToVariant", "double 1.5"},
    {"{whatever=}", "DoubleToVariant", "double 1.5"},
};

Row got(const std::string &variation, Answer answer, Text result)
{
    return getter("variantForKey(key as string) as variant", "objectForKey", std::move(answer), std::move(result),
                  variation);
}

Row got(const char *variation, id (*make)(), Text result)
{
    return got(variation, answerObject("objectForKey:", make), std::move(result));
}

Row set(const char *variation, std::function<Value()> value, Text stored)
{
    return setter("setVariantValue(key as string, value as variant)", "setObject", std::move(value), std::move(stored),
                  variation);
}

Text listOf(std::vector<Text> elements)
{
    return [=](World &world) { return world.newArray() ? newList(world, elements) : "nil"; };
}

std::string existingItemOrItsAddress(World &world)
{
    std::string made = world.newItem("REALFolderItemFromParentFSRef", kExistingFile);
    return made == "nil" ? world.newTextVariant("file://*/etc/hosts") : made;
}

Text wrapperNamed(const char *className)
{
    return [=](World &world) { return world.newObject(className, className); };
}

} // namespace

// clang-format off

Rows variantGetterRows()
{
    Rows rows = {
        got("nil", Answer(), text("nil")),
        got("null", []() -> id { return [NSNull null]; }, text("nil")),
        got("text", []() -> id { return @"Text"; }, textVariant("Text")),
        got("data", bytes, newBlock),
        got("date", dateInMarch, newDate),
        got("dictionary", nestedDictionary, newNestedDictionary),
        got("array", twoStrings, listOf({textVariant("first"), textVariant("second")})),
        got("set", []() -> id { return [NSSet setWithObject:@"x"]; }, listOf({textVariant("x")})),
        got("url", []() -> id { return [NSURL URLWithString:@"http://example.com/a"]; }, textVariant("http://example.com/a")),
        got("file", []() -> id { return [NSURL fileURLWithPath:@(kExistingFile)]; }, existingItemOrItsAddress),
        got("font", []() -> id { return [NSFont systemFontOfSize:12]; }, wrapperNamed("NSFontKTZ")),
        got("rect", []() -> id { return [NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]; }, wrapperNamed("NSRectKTZ")),
        got("pointer", []() -> id { return [NSValue valueWithPointer:nullptr]; }, text("nil")),
    };
    for (const NumberType &number : kNumberTypes)
        rows.push_back(got(std::string("number-") + number.type,
                           [number](StandIn &standIn) { standIn.answerObject("objectForKey:", numberOf(number.type, -5, 1.5)); },
                           variantOf(number.entry, number.shownValue)));
    return rows;
}

Rows variantSetterRows()
{
    return {
        set("nil", [] { return Value(); }, text("nil")),
        set("int32", [] { return Value(7); }, int32("7")),
        set("int64", [] { return Value(5000000000LL); }, number("VariantToInt64", "REALGetPropValueInt64", "5000000000", "0")),
        set("single", [] { return Value(1.5f); }, number("VariantToSingle", "REALGetPropValueSingle", "single 1.5", "single 0")),
        set("double", [] { return Value(2.25); }, number("VariantToDouble", "REALGetPropValueDouble", "double 2.25", "double 0")),
        set("currency", [] { return Value::currency(3.5); }, number("VariantToDouble", "REALGetPropValueDouble", "double 3.5", "double 0")),
        set("boolean", [] { return Value(true); }, number("VariantToInt32", "REALGetPropValueInt", "yes", "no")),
        set("color", [] { return Value::color(0x123456); }, int32("1193046")),
        set("text", [] { return Value("Text"); }, textInVariant("Text")),
        set("empty", [] { return Value::emptyString(); }, textInVariant("")),
        set("date", dateValue, dateInVariant),
        set("memoryblock", block, objectOfClass("MemoryBlock", readBlock)),
        set("dictionary", dictionary, objectOfClass("Dictionary", readDictionary)),
        set("folderitem", [] { return Value::folderItem(kExistingFile); }, objectWithItem(readItem(kExistingFile, "<file://*/etc/hosts>"))),
        set("object", [] { return theHost().newInstance("RuntimeException"); }, objectOfClass("RuntimeException", wrapped)),
        set("integers", [] { return Value::array(ElementType::Int32, {1, 2}); }, arrayOf({text("1"), text("2")}, "0")),
        set("longs", [] { return Value::array(ElementType::Int64, {5000000000LL, 2LL}); }, arrayOf({text("5000000000"), text("2")}, "0")),
        set("singles", [] { return Value::array(ElementType::Single, {1.5f}); }, arrayOf({text("single 1.5")}, "single 0")),
        set("doubles", [] { return Value::array(ElementType::Double, {2.25}); }, arrayOf({text("double 2.25")}, "double 0")),
        set("booleans", [] { return Value::array(ElementType::Boolean, {true, false}); }, arrayOf({text("yes"), text("no")}, "no")),
        set("strings", [] { return Value::strings({"first", "second"}); }, arrayOf({readText("first"), readText("second")}, "nil")),
        set("strings-with-null", [] { return Value::strings({"first", Value::nullString()}); }, arrayOf({readText("first"), text("nil")}, "nil")),
        set("dates", [] { return Value::array(ElementType::Date, {dateValue()}); }, arrayOf({[](World &world) { return world.date(kDate); }}, "nil")),
        set("variants", [] { return Value::variants({7, "x", dictionary()}); },
            arrayOf({int32("7"), textInVariant("x"), objectOfClass("Dictionary", readDictionary)}, "nil")),
        set("currencies", [] { return Value::array(ElementType::Currency, {Value::currency(1)}); }, text("nil")),
    };
}

// clang-format on

} // namespace validate
