#include "bridge/variant/variant_to_object.h"

#include "bridge/data/date.h"
#include "bridge/strings/ns_string.h"
#include "bridge/variant/array_to_object.h"
#include "bridge/variant/host_object.h"
#include "hostapi/held_handles.h"

#include <iterator>

// A scalar's value from the host's own conversion, or from the Variant's property where the host lacks
// that; 0 where it lacks both.
template <typename Value>
static Value ValueOf(REALobject variant, HostEntry<Value(REALobject)> &convert,
                     HostEntry<RBBoolean(REALobject, const char *, Value *)> &getProperty, const char *property)
{
    if (auto convertNow = convert.get())
        return convertNow(variant);
    Value value = Value();
    getProperty(variant, property, &value);
    return value;
}

static int32_t Int32Of(REALobject variant)
{
    return ValueOf(variant, GetVariantInt32, REALGetPropValueInt32, "Int32Value");
}

static id NumberOfInt32(REALobject variant, HeldHandles &)
{
    return [NSNumber numberWithLong:Int32Of(variant)];
}

static id NumberOfInt64(REALobject variant, HeldHandles &)
{
    return [NSNumber numberWithLongLong:ValueOf(variant, GetVariantInt64, REALGetPropValueInt64, "LongValue")];
}

static id NumberOfSingle(REALobject variant, HeldHandles &)
{
    return [NSNumber numberWithFloat:ValueOf(variant, GetVariantSingle, REALGetPropValueSingle, "SingleValue")];
}

static id NumberOfDouble(REALobject variant, HeldHandles &)
{
    return [NSNumber numberWithDouble:ValueOf(variant, GetVariantDouble, REALGetPropValueDouble, "DoubleValue")];
}

// Only the low byte of the value counts, so 256 is false: what the host stores in a boolean is a byte.
static id NumberOfBoolean(REALobject variant, HeldHandles &)
{
    return [NSNumber numberWithBool:static_cast<BOOL>(static_cast<int8_t>(Int32Of(variant)))];
}

static id StringOf(REALobject variant, HeldHandles &held)
{
    REALstring string = held.hold(ValueOf(variant, GetVariantString, REALGetPropValueString, "StringValue"));
    NSString *text = TextOf(string);
    held.release(string);
    return text ? text : @"";
}

static id DateOf(REALobject variant, HeldHandles &held)
{
    REALobject date = nullptr;
    if (!REALGetPropValueObject(variant, "DateValue", &date))
        return nil;
    held.hold(date);
    id result = NewNSDate(reinterpret_cast<REALdate>(date));
    held.release(date);
    return result;
}

namespace {

struct TypeRow {
    int32_t type;
    id (*convert)(REALobject variant, HeldHandles &held);
};

} // namespace

// clang-format off

// Every type that has a Cocoa form, by the host's type code; an array's code is 4096 and its elements'.
// Codes that are not listed give nil: among them nothing (0), and an array of currencies (4102), although
// a single currency is a double.
static const TypeRow rows[] = {
    {2,    NumberOfInt32},
    {3,    NumberOfInt64},
    {4,    NumberOfSingle},
    {5,    NumberOfDouble},
    {6,    NumberOfDouble},   // Currency
    {7,    DateOf},
    {8,    StringOf},
    {9,    ObjectOfHostObject},
    {11,   NumberOfBoolean},
    {16,   NumberOfInt32},    // Color
    {18,   StringOf},         // 18 to 21 and 23: further kinds of strings
    {19,   StringOf},
    {20,   StringOf},
    {21,   StringOf},
    {23,   StringOf},
    {4098, ArrayOfInt32s},
    {4099, ArrayOfInt64s},
    {4100, ArrayOfSingles},
    {4101, ArrayOfDoubles},
    {4103, ArrayOfDates},
    {4104, ArrayOfStrings},
    {4105, ArrayOfObjects},
    {4107, ArrayOfBooleans},
};
static_assert(std::size(rows) == 23);

// clang-format on

static int32_t TypeOf(REALobject variant)
{
    if (auto typeOf = GetVariantType.get())
        return typeOf(variant);
    int32_t type = 0;
    REALGetPropValueInt32(variant, "Type", &type);
    return type;
}

id GetVariantAsNSObject(REALobject variant, HeldHandles &held)
{
    if (!variant)
        return nil;
    const int32_t type = TypeOf(variant);
    for (const TypeRow &row : rows) {
        if (row.type == type)
            return row.convert(variant, held);
    }
    return nil;
}
