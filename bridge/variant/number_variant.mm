#include "bridge/variant/number_variant.h"

#include "hostapi/held_handles.h"

#include <iterator>

namespace {

struct NumberRow {
    char objCType;
    REALobject (*newVariant)(NSNumber *number);
};

} // namespace

static REALobject NewDouble(NSNumber *number)
{
    return REALNewVariantDouble([number doubleValue]);
}

// clang-format off

// By the whole text of the number's type. `long` has 32 bits here.
//
// Two rows are kept as they are because stored values and host programs rely on them: a `char` is always a
// boolean (Cocoa stores booleans so), and "Q" reads 32 bits only, so numbers of 2^32 and more come back cut
// to their low half.
static const NumberRow rows[] = {
    {'c', [](NSNumber *n) { return REALNewVariantBoolean([n boolValue]); }},
    {'C', [](NSNumber *n) { return REALNewVariantInteger([n unsignedCharValue]); }},
    {'s', [](NSNumber *n) { return REALNewVariantInteger([n shortValue]); }},
    {'S', [](NSNumber *n) { return REALNewVariantInteger([n unsignedShortValue]); }},
    {'i', [](NSNumber *n) { return REALNewVariantInteger([n intValue]); }},
    {'I', [](NSNumber *n) { return REALNewVariantUInt32([n unsignedIntValue]); }},
    {'l', [](NSNumber *n) { return REALNewVariantInteger([n longValue]); }},
    {'L', [](NSNumber *n) { return REALNewVariantUInt32([n unsignedLongValue]); }},
    {'q', [](NSNumber *n) { return REALNewVariantInt64([n longLongValue]); }},
    {'Q', [](NSNumber *n) { return REALNewVariantUInt64([n unsignedLongValue]); }},
    {'f', [](NSNumber *n) { return REALNewVariantSingle([n floatValue]); }},
    {'d', NewDouble},
};
static_assert(std::size(rows) == 12);

// clang-format on

REALobject NewVariantFromNumber(NSNumber *number, HeldHandles &held)
{
    const char *type = [number objCType];
    for (const NumberRow &row : rows) {
        if (type[0] == row.objCType && type[1] == 0)
            return held.hold(row.newVariant(number));
    }
    return held.hold(NewDouble(number));
}
