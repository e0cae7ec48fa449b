// Host values of any shape go to Cocoa and come back: against a model of what each must become on either side. Arrays
// that Cocoa refuses, because an element has no Cocoa form, must leave nothing behind.
#include "bridge/variant/object_to_variant.h"
#include "bridge/variant/variant_to_object.h"
#include "hostapi/held_handles.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/pool.h"
#include "tests/fuzz/small_host.h"

#include <string>
#include <vector>

using namespace small_host;

// What a host value means.
struct Meaning {
    enum Kind { Nothing, Whole, Single, Double, Boolean, Text, Date, Data, Array, Dictionary, Structure };
    Meaning(Kind kind = Nothing) : kind(kind) {}

    Kind kind;
    int64_t whole = 0;   // Whole and Boolean
    bool isWide = false; // Whole: of 64 bits
    double real = 0;     // Single and Double
    std::string text;    // Text up to its first zero byte, Data, the fields of a Structure; Structure: class in `name`
    const char *name = nullptr;
    int32_t date[6] = {};
    std::vector<Meaning> parts;    // elements or values
    std::vector<std::string> keys; // Dictionary
    bool isRefused = false;        // somewhere inside, Cocoa is handed an element that is nothing
};

static const double versions[] = {2009.0, 2011.4, 2012.0, 2013.9, 2014.1, 2024.1};
static const uint32_t utf8 = 0x08000100;

static Object *build(Input &input, int depth, Meaning *meaning);

// --- Building
// ----------------------------------------------------------------------------------------------------------

// Bytes of the input as characters of one to four bytes of UTF-8.
static std::string textFrom(Input &input)
{
    std::string text;
    for (size_t length = input.byte() % 12; length > 0 && input.left(); length--) {
        const uint8_t byte = input.byte();
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else if (byte < 0xF0) {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        } else {
            static const char *const rare[] = {"\xEF\xBB\xBF", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xEF\xBF\xBE"};
            text += rare[byte % 4];
        }
    }
    return text;
}

static String *stringFrom(Input &input, Meaning *meaning)
{
    const std::string text = textFrom(input);
    meaning->kind = Meaning::Text;
    meaning->text = text.substr(0, text.find('\0'));
    if (meaning->text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        meaning->text.erase(0, 3); // Core Foundation leaves a mark in front out
    return newString(text.data(), text.size(), utf8);
}

// Core Foundation has -1 to 12 ready made, of 32 bits.
static bool keepsItsWidth(int64_t whole)
{
    return whole < -1 || whole > 12;
}

// Of 24 bits, so that it is the same in a register, which has more of them.
static float singleFrom(Input &input)
{
    return (input.number<int32_t>() >> 8) / 64.0f;
}

static Object *dateFrom(Input &input, Meaning *meaning)
{
    Object *date = newInstance("Date");
    const int32_t parts[] = {1800 + 2 * input.byte(), 1 + input.byte() % 12, 1 + input.byte() % 28,
                             input.byte() % 24,       input.byte() % 60,     input.byte() % 60};
    memcpy(date->value.date, parts, sizeof parts);
    meaning->kind = Meaning::Date;
    memcpy(meaning->date, parts, sizeof parts);
    return date;
}

static Object *arrayFrom(Input &input, int depth, Meaning *meaning)
{
    static const int32_t types[] = {kInt32,  kInt64, kSingle, kDouble, kBoolean,
                                    kString, kDate,  kObject, kObject, kCurrency};
    const uint8_t choice = input.byte();
    const int32_t type = types[choice % 10];
    Object *array = newArray(type);
    meaning->kind = type == kCurrency ? Meaning::Nothing : Meaning::Array;
    for (size_t count = choice / 10 % 8; count > 0 && input.left(); count--) {
        Meaning part;
        int64_t packed = 0;
        switch (type) {
        case kInt32:
            part = Meaning::Whole;
            part.whole = static_cast<int32_t>(packed = input.number<int32_t>());
            appendElement(array, &packed);
            break;
        case kInt64:
            part = Meaning::Whole;
            part.whole = packed = input.number<int64_t>();
            part.isWide = keepsItsWidth(part.whole);
            appendElement(array, &packed);
            break;
        case kSingle: {
            part = Meaning::Single;
            const float single = singleFrom(input);
            part.real = single;
            appendElement(array, &single);
            break;
        }
        case kDouble:
        case kCurrency:
            part = Meaning::Double;
            part.real = input.number<int32_t>() / 64.0;
            appendElement(array, &part.real);
            break;
        case kBoolean:
            part = Meaning::Boolean;
            packed = input.byte();
            part.whole = packed != 0;
            appendElement(array, &packed);
            break;
        case kString: {
            String *string = input.byte() == 0xFF ? nullptr : stringFrom(input, &part);
            meaning->isRefused |= !string;
            appendElement(array, &string);
            break;
        }
        case kDate: {
            Object *date = input.byte() == 0xFF ? nullptr : dateFrom(input, &part);
            meaning->isRefused |= !date;
            appendElement(array, &date);
            break;
        }
        case kObject: {
            Object *element = build(input, depth + 1, &part);
            meaning->isRefused |= part.kind == Meaning::Nothing || part.isRefused;
            appendElement(array, &element);
            break;
        }
        }
        meaning->parts.push_back(part);
    }
    if (type == kCurrency)
        meaning->isRefused = false;
    return array;
}

static Object *dictionaryFrom(Input &input, int depth, Meaning *meaning)
{
    Object *dictionary = newInstance("Dictionary");
    meaning->kind = Meaning::Dictionary;
    for (size_t count = input.byte() % 5; count > 0 && input.left(); count--) {
        // No two keys are alike.
        const std::string key = std::to_string(meaning->keys.size()) + textFrom(input);
        Meaning part;
        Object *value = build(input, depth + 1, &part);
        meaning->isRefused |= part.isRefused;
        appendEntry(dictionary, newText(newString(key.data(), key.size(), utf8)), value);
        meaning->keys.push_back(key.substr(0, key.find('\0')));
        meaning->parts.push_back(part);
    }
    return dictionary;
}

static Object *build(Input &input, int depth, Meaning *meaning)
{
    static const int32_t textTypes[] = {8, 18, 19, 20, 21, 23};
    Object *object = nullptr;
    const uint8_t choice = input.byte();
    switch (choice % 20) {
    case 0: // nothing, and types that have no Cocoa form
        return choice < 100 ? nullptr : newVariant(choice % 3 ? 22 : 24 + input.byte());
    case 1:
        object = newVariant(kInt32);
        meaning->kind = Meaning::Whole;
        meaning->whole = object->value.int32 = input.number<int32_t>();
        break;
    case 2:
        object = newVariant(kColor);
        meaning->kind = Meaning::Whole;
        meaning->whole = object->value.int32 = input.number<int32_t>();
        break;
    case 3:
    case 4:
        object = newVariant(kInt64);
        meaning->kind = Meaning::Whole;
        meaning->whole = object->value.int64 = input.number<int64_t>();
        meaning->isWide = keepsItsWidth(meaning->whole);
        break;
    case 5:
        object = newVariant(kSingle);
        meaning->kind = Meaning::Single;
        meaning->real = object->value.single = singleFrom(input);
        break;
    case 6:
    case 7:
        object = newVariant(choice % 20 == 6 ? kDouble : kCurrency);
        meaning->kind = Meaning::Double;
        meaning->real = object->value.real = input.number<int32_t>() / 64.0;
        break;
    case 8:
        object = newVariant(kBoolean);
        meaning->kind = Meaning::Boolean;
        object->value.int32 = input.number<uint16_t>();
        meaning->whole = (object->value.int32 & 0xFF) != 0; // only the low byte counts
        break;
    case 9:
    case 10:
        object = newText(stringFrom(input, meaning));
        object->type = choice < 200 ? static_cast<int32_t>(kString) : textTypes[choice % 6];
        break;
    case 11:
        object = newText(nullptr);
        meaning->kind = Meaning::Text;
        break;
    case 12:
        object = dateFrom(input, meaning);
        break;
    case 13: {
        size_t length;
        const char *bytes = input.text(input.byte() % 24, &length);
        object = newBlock(length);
        if (length)
            memcpy(object->elements, bytes, length);
        meaning->kind = length ? Meaning::Data : Meaning::Nothing; // an empty block is nothing to Cocoa
        meaning->text.assign(bytes, length);
        break;
    }
    case 14: {
        static const char *const names[] = {"NSRectKTZ", "NSSizeKTZ", "NSRangeKTZ", "NSPointKTZ"};
        meaning->kind = Meaning::Structure;
        meaning->name = names[choice / 20 % 4];
        object = newInstance(meaning->name);
        const size_t size = choice / 20 % 4 == 0 ? 16 : 8;
        for (size_t i = 0; i < size / 4; i++) {
            const int32_t whole = input.number<int16_t>();
            const float real = whole;
            memcpy(object->value.data + 4 * i, choice / 20 % 4 == 2 ? static_cast<const void *>(&whole) : &real, 4);
        }
        meaning->text.assign(reinterpret_cast<const char *>(object->value.data), size);
        break;
    }
    case 15:
    case 16:
    case 17:
        return depth < 6 ? arrayFrom(input, depth, meaning) : nullptr;
    default:
        return depth < 6 ? dictionaryFrom(input, depth, meaning) : nullptr;
    }
    return object;
}

// --- Cocoa's side
// ------------------------------------------------------------------------------------------------------

static void requireMeans(id object, const Meaning &meaning);

static NSString *textOf(const std::string &utf8Text)
{
    // Behind another character a mark stays.
    CFStringRef text = CFStringCreateWithCString(nullptr, ("-" + utf8Text).c_str(), kCFStringEncodingUTF8);
    return [[(NSString *)text autorelease] substringFromIndex:1];
}

static void requireNumber(id object, const Meaning &meaning)
{
    REQUIRE([object isKindOfClass:[NSNumber class]]);
    const char type = [object objCType][0];
    switch (meaning.kind) {
    case Meaning::Whole:
        REQUIRE(type != 'f' && type != 'd' && type != 'c' && [object longLongValue] == meaning.whole);
        break;
    case Meaning::Boolean:
        REQUIRE(type == 'c' && [object boolValue] == meaning.whole);
        break;
    case Meaning::Single:
        REQUIRE(type == 'f' && [object floatValue] == meaning.real);
        break;
    default:
        REQUIRE(type == 'd' && [object doubleValue] == meaning.real);
    }
}

static void requireDate(NSCalendarDate *date, const Meaning &meaning)
{
    REQUIRE([date isKindOfClass:[NSCalendarDate class]]);
    REQUIRE([date yearOfCommonEra] == meaning.date[0] && [date monthOfYear] == meaning.date[1] &&
            [date dayOfMonth] == meaning.date[2] && [date hourOfDay] == meaning.date[3] &&
            [date minuteOfHour] == meaning.date[4] && [date secondOfMinute] == meaning.date[5]);
}

template <class Structure>
static bool isSame(const Structure &structure, const std::string &fields)
{
    return fields.size() == sizeof structure && memcmp(&structure, fields.data(), sizeof structure) == 0;
}

static void requireStructure(id value, const Meaning &meaning)
{
    REQUIRE([value isKindOfClass:[NSValue class]]);
    switch (meaning.name[3]) { // NSRect, NSSize, NSRange, NSPoint
    case 'e':
        REQUIRE(isSame([value rectValue], meaning.text));
        return;
    case 'i':
        REQUIRE(isSame([value sizeValue], meaning.text));
        return;
    case 'a':
        REQUIRE(isSame([value rangeValue], meaning.text));
        return;
    default:
        REQUIRE(isSame([value pointValue], meaning.text));
    }
}

static void requireMeans(id object, const Meaning &meaning)
{
    switch (meaning.kind) {
    case Meaning::Nothing:
        REQUIRE(!object || object == [NSNull null]);
        return;
    case Meaning::Text:
        REQUIRE([object isKindOfClass:[NSString class]] && [object isEqualToString:textOf(meaning.text)]);
        return;
    case Meaning::Date:
        requireDate(object, meaning);
        return;
    case Meaning::Data:
        REQUIRE([object isKindOfClass:[NSData class]] && [object length] == meaning.text.size() &&
                memcmp([object bytes], meaning.text.data(), meaning.text.size()) == 0);
        return;
    case Meaning::Array:
        REQUIRE([object isKindOfClass:[NSMutableArray class]] && [object count] == meaning.parts.size());
        for (size_t i = 0; i < meaning.parts.size(); i++)
            requireMeans([object objectAtIndex:i], meaning.parts[i]);
        return;
    case Meaning::Dictionary:
        REQUIRE([object isKindOfClass:[NSDictionary class]] && [object count] == meaning.parts.size());
        for (size_t i = 0; i < meaning.parts.size(); i++) {
            id value = [object objectForKey:textOf(meaning.keys[i])];
            REQUIRE(value);
            requireMeans(value, meaning.parts[i]);
        }
        return;
    case Meaning::Structure:
        requireStructure(object, meaning);
        return;
    default:
        requireNumber(object, meaning);
    }
}

// --- The way back
// ------------------------------------------------------------------------------------------------------

static bool isText(const Object *variant, const std::string &text)
{
    if (!variant || variant->type != kString)
        return false;
    const String *string = variant->value.string;
    if (!string)
        return text.empty(); // an empty text is no host string
    return string->encoding == utf8 && string->length == static_cast<int32_t>(text.size()) &&
           memcmp(string->text(), text.data(), text.size()) == 0;
}

static void requireBack(const Object *object, const Meaning &meaning)
{
    if (meaning.kind == Meaning::Nothing) {
        REQUIRE(!object);
        return;
    }
    REQUIRE(object && object->locks == 1);
    switch (meaning.kind) {
    case Meaning::Whole:
        REQUIRE(object->type == (meaning.isWide ? kInt64 : kInt32)); // a number keeps the kind that it was made of
        REQUIRE((meaning.isWide ? object->value.int64 : object->value.int32) == meaning.whole);
        return;
    case Meaning::Single:
        REQUIRE(object->type == kSingle && object->value.single == meaning.real);
        return;
    case Meaning::Double:
        REQUIRE(object->type == kDouble && object->value.real == meaning.real);
        return;
    case Meaning::Boolean:
        REQUIRE(object->type == kBoolean && object->value.data[0] == meaning.whole);
        return;
    case Meaning::Text:
        REQUIRE(isText(object, meaning.text));
        return;
    case Meaning::Date:
        REQUIRE(object->type == kDate && memcmp(object->value.date, meaning.date, sizeof meaning.date) == 0);
        return;
    case Meaning::Data:
        REQUIRE(strcmp(object->className, "MemoryBlock") == 0 &&
                object->count == static_cast<int32_t>(meaning.text.size()) &&
                memcmp(object->elements, meaning.text.data(), meaning.text.size()) == 0);
        return;
    case Meaning::Array:
        REQUIRE(object->type == kArrayOf + kObject && object->count == static_cast<int32_t>(meaning.parts.size()));
        for (int32_t i = 0; i < object->count; i++)
            requireBack(object->objects()[i], meaning.parts[i]);
        return;
    case Meaning::Dictionary:
        REQUIRE(strcmp(object->className, "Dictionary") == 0 &&
                object->count == static_cast<int32_t>(meaning.parts.size()));
        for (size_t i = 0; i < meaning.parts.size(); i++) {
            int32_t at = 0;
            while (at < object->count && !isText(object->objects()[2 * at], meaning.keys[i]))
                at++;
            REQUIRE(at < object->count);
            requireBack(object->objects()[2 * at + 1], meaning.parts[i]);
        }
        return;
    default:
        REQUIRE(strcmp(object->className, meaning.name) == 0 &&
                memcmp(object->value.data, meaning.text.data(), meaning.text.size()) == 0);
    }
}

static id toCocoa(Object *object, bool *refused)
{
    HeldHandles held;
    id result = nil;
    @try {
        result = GetVariantAsNSObject(reinterpret_cast<REALobject>(object), held);
    } @catch (NSException *) {
        held.releaseAll(); // as the guard of every method does
        *refused = true;
    }
    REQUIRE(held.count() == 0);
    return result;
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    install(2013.03);
    return 0;
}

static void run(Input &input)
{
    RunPool pool;
    setVersion(versions[input.byte() % 6]);
    Meaning meaning;
    Object *object = build(input, 0, &meaning);
    const int made = liveHandles;

    bool refused = false;
    id cocoa = toCocoa(object, &refused);
    REQUIRE(refused == meaning.isRefused);
    REQUIRE(liveHandles == made);
    if (!refused) {
        requireMeans(cocoa, meaning);
        HeldHandles held;
        auto *back = reinterpret_cast<Object *>(held.keep(NewVariantFromNSObject(cocoa, held)));
        requireBack(back, meaning);
        unlock(back);
        REQUIRE(liveHandles == made);
    }
    unlock(object);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Input input(data, size);
    run(input);
    REQUIRE(liveHandles == 0 && raisedExceptions == 0);
    return 0;
}
