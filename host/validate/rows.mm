#include "host/validate/rows.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <unistd.h>

// A number of any encoding: Foundation itself makes only some of them.
@interface ValidationNumber : NSNumber {
@public
    const char *type;
    long long whole;
    double real;
}
@end

@implementation ValidationNumber

- (const char *)objCType
{
    return type;
}
- (BOOL)boolValue
{
    return whole != 0;
}
- (unsigned char)unsignedCharValue
{
    return static_cast<unsigned char>(whole);
}
- (short)shortValue
{
    return static_cast<short>(whole);
}
- (unsigned short)unsignedShortValue
{
    return static_cast<unsigned short>(whole);
}
- (int)intValue
{
    return static_cast<int>(whole);
}
- (unsigned int)unsignedIntValue
{
    return static_cast<unsigned>(whole);
}
- (long)longValue
{
    return static_cast<long>(whole);
}
- (unsigned long)unsignedLongValue
{
    return static_cast<unsigned long>(whole);
}
- (long long)longLongValue
{
    return whole;
}
- (float)floatValue
{
    return static_cast<float>(real);
}
- (double)doubleValue
{
    return real;
}

@end

namespace validate {

using host::Arguments;
using host::ElementType;
using host::Value;

namespace {

const char kKey[] = "Key";
const char kExistingFile[] = "/etc/hosts";
const char kMissingFile[] = "/etc/no such file";

using Text = std::function<std::string(World &)>;
using Answer = std::function<void(StandIn &)>;

std::string key(World &world)
{
    return world.text(kKey);
}

Arguments keyArgument()
{
    return {kKey};
}

template <class Number>
Answer answerNumber(const char *selector, Number number)
{
    return [=](StandIn &standIn) { standIn.answerNumber(selector, &number, sizeof number); };
}

Answer answerObject(const char *selector, id (*make)())
{
    return [=](StandIn &standIn) { standIn.answerObject(selector, make()); };
}

Text text(const char *exactly)
{
    return [=](World &) { return std::string(exactly); };
}

// "integerForKey:" and the like with the key.
Text withKey(const std::string &selector)
{
    return [=](World &world) { return selector + ":" + key(world); };
}

Row getter(const char *name, const char *declaration, const char *selector, Answer answer, Text result)
{
    Row row;
    row.name = name;
    row.declaration = declaration;
    row.arguments = keyArgument;
    row.answer = std::move(answer);
    row.message = withKey(selector);
    row.result = std::move(result);
    return row;
}

// A setter stores `value` with setObject:forKey: or a message like it.
Row setter(const char *name, const char *declaration, const char *selector, std::function<Value()> value, Text stored)
{
    Row row;
    row.name = name;
    row.declaration = declaration;
    row.arguments = [=] { return Arguments{kKey, value()}; };
    // The key comes first; only setString and the other objects are converted after it, which changes no lock.
    row.message = [=](World &world) {
        std::string name = key(world);
        return std::string(selector) + ":" + stored(world) + " forKey:" + name;
    };
    return row;
}

Row named(const char *name, const char *declaration, const char *selector)
{
    return getter(name, declaration, selector, nullptr, nullptr);
}

id numberOf(const char *type, long long whole, double real)
{
    ValidationNumber *number = [[[ValidationNumber alloc] init] autorelease];
    number->type = type;
    number->whole = whole;
    number->real = real;
    return number;
}

id dateInMarch()
{
    return [NSCalendarDate dateWithYear:2012
                                  month:3
                                    day:29
                                   hour:10
                                 minute:20
                                 second:30
                               timeZone:[NSTimeZone localTimeZone]];
}

const char kDate[] = "date 2012-03-29 10:20:30";

// Without the setter a Date is the moment when it was made.
std::string newDate(World &world)
{
    std::string made = world.newObject("Date", kDate);
    return made == "nil" || world.has("REALSetPropValueInt") ? made : "date *";
}

// One entry; its key is lost where there are no text Variants.
std::string newDictionary(World &world, const std::string &entryKey, const Text &value)
{
    std::string made = world.newObject("Dictionary", "{}");
    if (made == "nil")
        return made;
    std::string shownKey = world.newTextVariant(entryKey);
    std::string shownValue = value(world);
    return world.has("REALLoadObjectMethod") ? "{" + shownKey + ": " + shownValue + "}" : made;
}

std::string newList(World &world, const std::vector<Text> &elements)
{
    std::string list;
    for (const Text &element : elements) {
        std::string made = element(world);
        if (world.inserts())
            list += (list.empty() ? "" : ", ") + made;
    }
    return "[" + list + "]";
}

Text variantOf(const char *entry, const char *shownValue)
{
    return [=](World &world) { return world.newVariant(entry, shownValue); };
}

Text textVariant(const char *utf8)
{
    return [=](World &world) { return world.newTextVariant(utf8); };
}

Text newString(const char *utf8)
{
    return [=](World &world) { return world.newText(utf8); };
}

Text item(const char *entry, const char *path)
{
    return [=](World &world) { return world.newItem(entry, path); };
}

id twoStrings()
{
    return [NSArray arrayWithObjects:@"first", @"second", nil];
}

id bytes()
{
    unsigned char raw[] = {0x00, 0xFF, 0x10};
    return [NSData dataWithBytes:raw length:sizeof raw];
}

std::string newBlock(World &world)
{
    return world.newMemoryBlock("00ff10", 3);
}

id longText()
{
    return [@"" stringByPaddingToLength:150 withString:@"x" startingAtIndex:0];
}

const std::string &longUTF8()
{
    static const std::string text(150, 'x');
    return text;
}

id nestedDictionary()
{
    NSDictionary *inner = [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:7] forKey:@"inside"];
    return [NSDictionary dictionaryWithObject:inner forKey:@"outside"];
}

std::string newNestedDictionary(World &world)
{
    return newDictionary(world, "outside",
                         [](World &w) { return newDictionary(w, "inside", variantOf("Int32ToVariant", "int32 7")); });
}

// --- What host code hands in ----------------------------------------------------------------------------------------

Value dictionary()
{
    return Value::dictionary({{"name", 7}});
}

// Without its methods a Dictionary is taken for one without entries.
std::string readDictionary(World &world)
{
    if (!world.has("REALGetPropValueInt") || !world.has("REALLoadObjectMethod"))
        return "{}";
    std::string name = world.textOfVariant("name");
    return "{" + name + ": " + world.number("VariantToInt32", "REALGetPropValueInt", "7", "0") + "}";
}

Value block()
{
    return Value::memoryBlock(std::string("\x00\xff\x10", 3));
}

std::string readBlock(World &world)
{
    return world.has("memoryBlockGetSize") && world.has("memoryBlockGetPtr") ? "{00ff10}" : "nil";
}

Text readItem(const char *path, const char *url)
{
    bool exists = access(path, F_OK) == 0;
    return [=](World &world) {
        bool byReference = world.has("REALFSRefFromFolderItem");
        bool bySpec = exists && world.has("REALFSSpecFromFolderItem");
        return byReference || bySpec ? std::string(url) : std::string("nil");
    };
}

// An object that is recognised by its class is converted; any other travels in a wrapper, where there is one.
std::string wrapped(World &world)
{
    return world.family() ? "KTZREALobjectWrapper" : "nil";
}

Text objectOfClass(const char *className, const Text &convert)
{
    return [=](World &world) {
        if (!world.knowsTypes())
            return std::string("nil");
        return world.is(className) ? convert(world) : wrapped(world);
    };
}

// A FolderItem is recognised by its method.
Text objectWithItem(const Text &convert)
{
    return [=](World &world) {
        if (!world.knowsTypes())
            return std::string("nil");
        return world.has("REALLoadObjectMethod") ? convert(world) : wrapped(world);
    };
}

// An array in a Variant's place. Elements are read from storage, or by procedures that may be missing; what cannot be
// read is `zero`. A nil element is refused by Cocoa.
Text arrayOf(std::vector<Text> elements, const char *zero)
{
    return [=](World &world) {
        if (!world.knowsTypes())
            return std::string("nil");
        bool reads = world.readsStorage() || world.has("RuntimeArrayDirectGetGetProc");
        std::string list;
        for (int32_t i = 0; i < world.elements(int32_t(elements.size())); i++) {
            std::string element = reads ? elements[size_t(i)](world) : zero;
            if (element == "nil")
                throw CocoaRefuses{"NSInvalidArgumentException"};
            list += (i ? ", " : "") + element;
        }
        return "[" + list + "]";
    };
}

Text readText(const char *ascii)
{
    return [=](World &world) { return world.text(ascii); };
}

// An array argument: elements that cannot be read or converted are left out.
Text arrayArgument(const char *reader, std::vector<Text> elements)
{
    return [=](World &world) {
        std::string list;
        bool reads = world.readsStorage() || world.has(reader);
        for (int32_t i = 0; reads && i < world.elements(int32_t(elements.size())); i++) {
            std::string element = elements[size_t(i)](world);
            if (element != "nil")
                list += (list.empty() ? "" : ", ") + element;
        }
        return "[" + list + "]";
    };
}

Text number(const char *convert, const char *property, const char *value, const char *zero)
{
    return [=](World &world) { return world.number(convert, property, value, zero); };
}

Text int32(const char *value)
{
    return number("VariantToInt32", "REALGetPropValueInt", value, "0");
}

Text textInVariant(const char *ascii)
{
    return [=](World &world) { return world.textOfVariant(ascii); };
}

Value dateValue()
{
    return Value::date(2012, 3, 29, 10, 20, 30);
}

std::string dateInVariant(World &world)
{
    if (!world.knowsTypes() || !world.has("REALGetPropValueObject"))
        return "nil";
    return world.date(kDate);
}

// --- The table ------------------------------------------------------------------------------------------------------

const char kVariantGetter[] = "variantForKey(key as string) as variant";
const char kVariantSetter[] = "setVariantValue(key as string, value as variant)";

void addScalars(std::vector<Row> &rows)
{
    rows.push_back(getter("integerForKey", "integerForKey(key as string) as integer", "integerForKey",
                          answerNumber("integerForKey:", 7), text("int32 7")));
    rows.push_back(getter("floatForKey", "floatForKey(key as string) as single", "floatForKey",
                          answerNumber("floatForKey:", 1.5f), text("single 1.5")));
    rows.push_back(getter("doubleForKey", "doubleForKey(key as string) as double", "doubleForKey",
                          answerNumber("doubleForKey:", 2.25), text("double 2.25")));
    rows.push_back(getter("boolForKey", "boolForKey(key as string) as boolean", "boolForKey",
                          answerNumber("boolForKey:", char(1)), text("true")));
    rows.push_back(setter(
        "setIntegerValue", "setIntegerValue(key as string, value as integer)", "setInteger", [] { return Value(7); },
        text("7")));
    rows.push_back(setter(
        "setFloatValue", "setFloatValue(key as string, value as single)", "setFloat", [] { return Value(1.5f); },
        text("1.5")));
    rows.push_back(setter(
        "setDoubleValue", "setDoubleValue(key as string, value as double)", "setDouble", [] { return Value(2.25); },
        text("2.25")));
    rows.push_back(setter(
        "setBoolValue", "setBoolValue(key as string, value as boolean)", "setBool", [] { return Value(true); },
        text("1")));
}

void addTexts(std::vector<Row> &rows)
{
    rows.push_back(getter("stringForKey", "stringForKey(key as string) as string", "stringForKey",
                          answerObject("stringForKey:", []() -> id { return @"Text"; }), newString("Text")));
    rows.push_back(getter("stringForKey-long", "stringForKey(key as string) as string", "stringForKey",
                          answerObject("stringForKey:", longText),
                          [](World &world) { return world.newText(longUTF8()); }));
    rows.push_back(
        getter("stringForKey-nil", "stringForKey(key as string) as string", "stringForKey", nullptr, text("null")));
    rows.push_back(
        getter("URLForKey", "URLForKey(key as string) as string", "URLForKey",
               answerObject("URLForKey:", []() -> id { return [NSURL URLWithString:@"http://example.com/a"]; }),
               newString("http://example.com/a")));
    rows.push_back(setter(
        "setStringValue", "setStringValue(key as string, value as string)", "setObject", [] { return Value("Text"); },
        readText("Text")));
    rows.push_back(setter(
        "setStringValue-null", "setStringValue(key as string, value as string)", "setObject",
        [] { return Value::nullString(); }, text("nil")));
    rows.push_back(setter(
        "setURLValue", "setURLValue(key as string, value as string)", "setURL",
        [] { return Value("http://example.com/a"); },
        [](World &world) { return world.text("") == "nil" ? "nil" : "<http://example.com/a>"; }));
}

void addData(std::vector<Row> &rows)
{
    rows.push_back(getter("dataForKey", "dataForKey(key as string) as memoryblock", "dataForKey",
                          answerObject("dataForKey:", bytes), newBlock));
    rows.push_back(
        setter("setDataValue", "setDataValue(key as string, value as memoryblock)", "setObject", block, readBlock));
    rows.push_back(getter("fileForKey", "fileForKey(key as string) as folderitem", "URLForKey",
                          answerObject("URLForKey:", []() -> id { return [NSURL fileURLWithPath:@(kExistingFile)]; }),
                          item("REALFolderItemFromParentFSRef", kExistingFile)));
    rows.push_back(getter("fileForKey-missing", "fileForKey(key as string) as folderitem", "URLForKey",
                          answerObject("URLForKey:", []() -> id { return [NSURL fileURLWithPath:@(kMissingFile)]; }),
                          item("REALFolderItemFromParentFSRef", kMissingFile)));
    rows.push_back(getter("fileForKey-root", "fileForKey(key as string) as folderitem", "URLForKey",
                          answerObject("URLForKey:", []() -> id { return [NSURL fileURLWithPath:@"/"]; }),
                          item("FolderItemFromFSSpec", "/")));
    rows.push_back(setter(
        "setFileValue", "setFileValue(key as string, value as folderitem)", "setURL",
        [] { return Value::folderItem(kExistingFile); }, readItem(kExistingFile, "<file://*/etc/hosts>")));
    rows.push_back(setter(
        "setFileValue-missing", "setFileValue(key as string, value as folderitem)", "setURL",
        [] { return Value::folderItem(kMissingFile); }, readItem(kMissingFile, "<file://*/etc/no%20such%20file>")));
}

void addCollections(std::vector<Row> &rows)
{
    Text listOfTwo = [](World &world) { return newList(world, {newString("first"), newString("second")}); };
    rows.push_back(getter("stringArrayForKey", "stringArrayForKey(key as string) as string()", "stringArrayForKey",
                          answerObject("stringArrayForKey:", twoStrings), listOfTwo));
    rows.push_back(getter("dictionaryForKey", "dictionaryForKey(key as string) as dictionary", "dictionaryForKey",
                          answerObject("dictionaryForKey:", nestedDictionary), newNestedDictionary));
    rows.push_back(getter("arrayForKey", "arrayForKey(key as string) as variant()", "arrayForKey",
                          answerObject("arrayForKey:",
                                       []() -> id {
                                           return [NSArray arrayWithObjects:[NSNumber numberWithInt:7], @"x",
                                                                            [NSNull null], nestedDictionary(), nil];
                                       }),
                          [](World &world) {
                              return newList(world, {variantOf("Int32ToVariant", "int32 7"), textVariant("x"),
                                                     text("nil"), newNestedDictionary});
                          }));
    rows.push_back(setter(
        "setStringArrayValue", "setStringArrayValue(key as string, values() as string)", "setObject",
        [] {
            return Value::strings({"first", "second"});
        },
        arrayArgument("RuntimeDirectReadStringArray", {readText("first"), readText("second")})));
    rows.push_back(setter("setDictionaryValue", "setDictionaryValue(key as string, value as dictionary)", "setObject",
                          dictionary, readDictionary));
    rows.push_back(setter(
        "setArrayValue", "setArrayValue(key as string, values() as variant)", "setObject",
        [] {
            return Value::variants({7, "x", nullptr, 8});
        },
        arrayArgument("RuntimeDirectReadObjectArray", {int32("7"), textInVariant("x"), text("nil"), int32("8")})));
}

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

Row variantGetter(const std::string &name, Answer answer, Text result)
{
    Row row = getter("", kVariantGetter, "objectForKey", std::move(answer), std::move(result));
    row.name = "variantForKey-" + name;
    return row;
}

void addVariantGetters(std::vector<Row> &rows)
{
    for (const NumberType &number : kNumberTypes)
        rows.push_back(variantGetter(
            std::string("number-") + number.type,
            [number](StandIn &standIn) { standIn.answerObject("objectForKey:", numberOf(number.type, -5, 1.5)); },
            variantOf(number.entry, number.shownValue)));
    rows.push_back(variantGetter("nil", nullptr, text("nil")));
    rows.push_back(
        variantGetter("null", answerObject("objectForKey:", []() -> id { return [NSNull null]; }), text("nil")));
    rows.push_back(
        variantGetter("text", answerObject("objectForKey:", []() -> id { return @"Text"; }), textVariant("Text")));
    rows.push_back(variantGetter("data", answerObject("objectForKey:", bytes), newBlock));
    rows.push_back(variantGetter("date", answerObject("objectForKey:", dateInMarch), newDate));
    rows.push_back(variantGetter("dictionary", answerObject("objectForKey:", nestedDictionary), newNestedDictionary));
    rows.push_back(variantGetter("array", answerObject("objectForKey:", twoStrings), [](World &world) {
        return world.newArray() ? newList(world, {textVariant("first"), textVariant("second")}) : "nil";
    }));
    rows.push_back(
        variantGetter("set", answerObject("objectForKey:", []() -> id { return [NSSet setWithObject:@"x"]; }),
                      [](World &world) { return world.newArray() ? newList(world, {textVariant("x")}) : "nil"; }));
    rows.push_back(variantGetter(
        "url", answerObject("objectForKey:", []() -> id { return [NSURL URLWithString:@"http://example.com/a"]; }),
        textVariant("http://example.com/a")));
    rows.push_back(variantGetter(
        "file", answerObject("objectForKey:", []() -> id { return [NSURL fileURLWithPath:@(kExistingFile)]; }),
        [](World &world) {
            std::string made = world.newItem("REALFolderItemFromParentFSRef", kExistingFile);
            return made == "nil" ? world.newTextVariant("file://*/etc/hosts") : made;
        }));
    rows.push_back(variantGetter("font",
                                 answerObject("objectForKey:", []() -> id { return [NSFont systemFontOfSize:12]; }),
                                 [](World &world) { return world.newObject("NSFontKTZ", "NSFontKTZ"); }));
    rows.push_back(variantGetter(
        "rect", answerObject("objectForKey:", []() -> id { return [NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]; }),
        [](World &world) { return world.newObject("NSRectKTZ", "NSRectKTZ"); }));
    rows.push_back(variantGetter(
        "pointer", answerObject("objectForKey:", []() -> id { return [NSValue valueWithPointer:nullptr]; }),
        text("nil")));
}

Row variantSetter(const char *name, std::function<Value()> value, Text stored)
{
    Row row = setter("", kVariantSetter, "setObject", std::move(value), std::move(stored));
    row.name = std::string("setVariantValue-") + name;
    return row;
}

void addVariantSetters(std::vector<Row> &rows)
{
    const Text storedSingle = number("VariantToSingle", "REALGetPropValueSingle", "single 1.5", "single 0");
    rows.push_back(variantSetter(
        "nil", [] { return Value(); }, text("nil")));
    rows.push_back(variantSetter(
        "int32", [] { return Value(7); }, int32("7")));
    rows.push_back(variantSetter(
        "int64", [] { return Value(5000000000LL); },
        number("VariantToInt64", "REALGetPropValueInt64", "5000000000", "0")));
    rows.push_back(variantSetter(
        "single", [] { return Value(1.5f); }, storedSingle));
    rows.push_back(variantSetter(
        "double", [] { return Value(2.25); },
        number("VariantToDouble", "REALGetPropValueDouble", "double 2.25", "double 0")));
    rows.push_back(variantSetter(
        "currency", [] { return Value::currency(3.5); },
        number("VariantToDouble", "REALGetPropValueDouble", "double 3.5", "double 0")));
    rows.push_back(variantSetter(
        "boolean", [] { return Value(true); }, number("VariantToInt32", "REALGetPropValueInt", "yes", "no")));
    rows.push_back(variantSetter(
        "color", [] { return Value::color(0x123456); }, int32("1193046")));
    rows.push_back(variantSetter(
        "text", [] { return Value("Text"); }, textInVariant("Text")));
    rows.push_back(variantSetter(
        "empty", [] { return Value::emptyString(); }, textInVariant("")));
    rows.push_back(variantSetter("date", dateValue, dateInVariant));
    rows.push_back(variantSetter("memoryblock", block, objectOfClass("MemoryBlock", readBlock)));
    rows.push_back(variantSetter("dictionary", dictionary, objectOfClass("Dictionary", readDictionary)));
    rows.push_back(variantSetter(
        "folderitem", [] { return Value::folderItem(kExistingFile); },
        objectWithItem(readItem(kExistingFile, "<file://*/etc/hosts>"))));
    rows.push_back(variantSetter(
        "object", [] { return theHost().newInstance("RuntimeException"); },
        objectOfClass("RuntimeException", wrapped)));
    rows.push_back(variantSetter(
        "integers",
        [] {
            return Value::array(ElementType::Int32, {1, 2});
        },
        arrayOf({text("1"), text("2")}, "0")));
    rows.push_back(variantSetter(
        "longs",
        [] {
            return Value::array(ElementType::Int64, {5000000000LL, 2LL});
        },
        arrayOf({text("5000000000"), text("2")}, "0")));
    rows.push_back(variantSetter(
        "singles", [] { return Value::array(ElementType::Single, {1.5f}); },
        arrayOf({text("single 1.5")}, "single 0")));
    rows.push_back(variantSetter(
        "doubles", [] { return Value::array(ElementType::Double, {2.25}); },
        arrayOf({text("double 2.25")}, "double 0")));
    rows.push_back(variantSetter(
        "booleans",
        [] {
            return Value::array(ElementType::Boolean, {true, false});
        },
        arrayOf({text("yes"), text("no")}, "no")));
    rows.push_back(variantSetter(
        "strings",
        [] {
            return Value::strings({"first", "second"});
        },
        arrayOf({readText("first"), readText("second")}, "nil")));
    rows.push_back(variantSetter(
        "strings-with-null",
        [] {
            return Value::strings({"first", Value::nullString()});
        },
        arrayOf({readText("first"), text("nil")}, "nil")));
    rows.push_back(variantSetter(
        "dates", [] { return Value::array(ElementType::Date, {dateValue()}); },
        arrayOf({[](World &world) { return world.date(kDate); }}, "nil")));
    rows.push_back(variantSetter(
        "variants",
        [] {
            return Value::variants({7, "x", dictionary()});
        },
        arrayOf({int32("7"), textInVariant("x"), objectOfClass("Dictionary", readDictionary)}, "nil")));
    rows.push_back(variantSetter(
        "currencies", [] { return Value::array(ElementType::Currency, {Value::currency(1)}); }, text("nil")));
}

void addDomains(std::vector<Row> &rows)
{
    Row synchronize = named("synchronize", "synchronize as boolean", "");
    synchronize.arguments = nullptr;
    synchronize.message = text("synchronize");
    synchronize.answer = answerNumber("synchronize", char(1));
    synchronize.result = text("true");
    rows.push_back(synchronize);

    rows.push_back(named("removeObjectForKey", "removeObjectForKey(defaultName as string)", "removeObjectForKey"));
    rows.push_back(named("removeVolatileDomainForName", "removeVolatileDomainForName(domainName as string)",
                         "removeVolatileDomainForName"));
    rows.push_back(named("removePersistentDomainForName", "removePersistentDomainForName(domainName as string)",
                         "removePersistentDomainForName"));
    rows.push_back(named("addSuiteNamed", "addSuiteNamed(suiteName as string)", "addSuiteNamed"));
    rows.push_back(named("removeSuiteNamed", "removeSuiteNamed(suiteName as string)", "removeSuiteNamed"));

    Row registers = named("registerDefaults", "registerDefaults(dic as dictionary)", "");
    registers.arguments = [] { return Arguments{dictionary()}; };
    registers.message = [](World &world) { return "registerDefaults:" + readDictionary(world); };
    rows.push_back(registers);

    Row representation = named("dictionaryRepresentation", "dictionaryRepresentation as dictionary", "");
    representation.arguments = nullptr;
    representation.message = text("dictionaryRepresentation");
    representation.answer = answerObject("dictionaryRepresentation", nestedDictionary);
    representation.result = newNestedDictionary;
    rows.push_back(representation);

    rows.push_back(getter("objectIsForcedForKey", "objectIsForcedForKey(key as string) as boolean",
                          "objectIsForcedForKey", answerNumber("objectIsForcedForKey:", char(1)), text("true")));
    Row inDomain =
        getter("objectIsForcedForKey-domain", "objectIsForcedForKey(key as string, domain as string) as boolean", "",
               answerNumber("objectIsForcedForKey:inDomain:", char(1)), text("true"));
    inDomain.arguments = [] { return Arguments{kKey, "Domain"}; };
    inDomain.message = [](World &world) {
        std::string name = key(world);
        return "objectIsForcedForKey:" + name + " inDomain:" + world.text("Domain");
    };
    rows.push_back(inDomain);

    for (const char *kind : {"Persistent", "Volatile"}) {
        Row setsDomain;
        setsDomain.name = std::string("set") + kind + "Domain";
        setsDomain.declaration = setsDomain.name + "(domain as dictionary, domainName as string)";
        setsDomain.arguments = [] { return Arguments{dictionary(), kKey}; };
        setsDomain.message = [name = setsDomain.name](World &world) {
            std::string domain = key(world);
            return name + ":" + readDictionary(world) + " forName:" + domain;
        };
        rows.push_back(setsDomain);
    }
    Text listOfTwo = [](World &world) { return newList(world, {newString("first"), newString("second")}); };
    for (const char *names : {"persistentDomainNames", "volatileDomainNames"}) {
        Row lists = named(names, "", "");
        lists.declaration = std::string(names) + " as string()";
        lists.arguments = nullptr;
        lists.message = text(names);
        lists.answer = answerObject(names, twoStrings);
        lists.result = listOfTwo;
        rows.push_back(lists);
    }
    rows.push_back(getter("persistentDomainForName", "persistentDomainForName(domainName as string) as dictionary",
                          "persistentDomainForName", answerObject("persistentDomainForName:", nestedDictionary),
                          newNestedDictionary));
    rows.push_back(getter("volatileDomainForName", "volatileDomainForName(domainName as string) as dictionary",
                          "volatileDomainForName", answerObject("volatileDomainForName:", nestedDictionary),
                          newNestedDictionary));
}

Row plain(const char *name, const char *declaration, bool isShared, Text result)
{
    Row row;
    row.name = name;
    row.declaration = declaration;
    row.isShared = isShared;
    row.result = std::move(result);
    return row;
}

void addLifecycle(std::vector<Row> &rows)
{
    rows.push_back(plain("_exception", "_exception as NSExceptionKTZ", false, nullptr));
    Row constructor = plain("Constructor", "Constructor", false, nullptr);
    constructor.carries = false;
    rows.push_back(constructor);
    Row forUser = plain("Constructor-user", "Constructor(username as string)", false, nullptr);
    forUser.carries = false;
    forUser.arguments = [] { return Arguments{Value::nullString()}; };
    rows.push_back(forUser);
    Text refused = [](World &world) {
        world.raise("UnsupportedOperationException", "Constructor called too often. Object is already initialized.");
        return std::string("nil");
    };
    rows.push_back(plain("Constructor-again", "Constructor", false, refused));
    Row again = plain("Constructor-user-again", "Constructor(username as string)", false, refused);
    again.arguments = keyArgument;
    rows.push_back(again);

    for (const char *constant :
         {"NSGlobalDomain", "NSArgumentDomain", "NSRegistrationDomain", "NSUserDefaultsDidChangeNotification"})
        rows.push_back(plain(constant, "", true, newString(constant)));
    for (Row &row : rows)
        if (row.declaration.empty())
            row.declaration = row.name + " as string";
    rows.push_back(plain("resetStandardUserDefaults", "resetStandardUserDefaults", true, nullptr));
    rows.push_back(plain("standardUserDefaults", "standardUserDefaults as NSUserDefaultsKTZ", true,
                         [](World &world) { return world.newObject(kClass, kClass); }));
}

// The same setters as host code reaches them by an assignment to the getter.
void addAssignments(std::vector<Row> &rows)
{
    static const char *const pairs[][2] = {
        {"integerForKey(key as string) as integer", "setIntegerValue"},
        {"floatForKey(key as string) as single", "setFloatValue"},
        {"doubleForKey(key as string) as double", "setDoubleValue"},
        {"boolForKey(key as string) as boolean", "setBoolValue"},
        {"stringForKey(key as string) as string", "setStringValue"},
        {"dataForKey(key as string) as memoryblock", "setDataValue"},
        {"variantForKey(key as string) as variant", "setVariantValue-int32"},
        {"fileForKey(key as string) as folderitem", "setFileValue"},
        {"URLForKey(key as string) as string", "setURLValue"},
        {"dictionaryForKey(key as string) as dictionary", "setDictionaryValue"},
    };
    for (const auto &[declaration, setterName] : pairs)
        for (size_t i = 0, count = rows.size(); i < count; i++)
            if (rows[i].name == setterName) {
                Row row = rows[i];
                row.declaration = declaration;
                row.isAssigned = true;
                row.name = row.declaration.substr(0, row.declaration.find('(')) + "-assigned";
                rows.push_back(row);
            }
}

} // namespace

const std::vector<Row> &rows()
{
    static const std::vector<Row> *all = [] {
        auto *made = new std::vector<Row>;
        addLifecycle(*made);
        addScalars(*made);
        addTexts(*made);
        addData(*made);
        addCollections(*made);
        addVariantGetters(*made);
        addVariantSetters(*made);
        addDomains(*made);
        addAssignments(*made);
        return made;
    }();
    return *all;
}

} // namespace validate
