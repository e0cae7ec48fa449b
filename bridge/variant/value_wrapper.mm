#include "bridge/variant/value_wrapper.h"

#include "bridge/family/family.h"
#include "bridge/variant/wrapper_objects.h"
#include "hostapi/records.h"
#include "hostapi/services.h"

#include <cstring>
#include <iterator>

namespace {

struct ValueRow {
    const char *objCType;
    REALobject (*newObject)(NSValue *value);
};

} // namespace

static_assert(sizeof(NSRect) == 4 * 4 && sizeof(NSSize) == 2 * 4 && sizeof(NSPoint) == 2 * 4 &&
                  sizeof(NSRange) == 2 * 4,
              "the fields are 32 bits each, in the host objects as in Cocoa");

// The family's time values convert themselves, where the library that knows them is loaded.
#define IF_IT_RESPONDS(message)                                                                                        \
    [](NSValue *v) -> REALobject { return [v respondsToSelector:@selector(message)] ? [v message] : nullptr; }

// clang-format off

static const ValueRow rows[] = {
    {"{_NSRect={_NSPoint=ff}{_NSSize=ff}}", [](NSValue *v) { return NewStructWrapper("NSRectKTZ", [v rectValue]); }},
    {"{_NSSize=ff}",                        [](NSValue *v) { return NewStructWrapper("NSSizeKTZ", [v sizeValue]); }},
    {"{_NSRange=II}",                       [](NSValue *v) { return NewStructWrapper("NSRangeKTZ", [v rangeValue]); }},
    {"{_NSPoint=ff}",                       [](NSValue *v) { return NewStructWrapper("NSPointKTZ", [v pointValue]); }},
    {"{?=qll}",                             IF_IT_RESPONDS(QTTimeValueKTZ)},
    {"{?={?=qll}{?=qll}}",                  IF_IT_RESPONDS(QTTimeRangeValueKTZ)},
    {"{?=qiIq}",                            IF_IT_RESPONDS(CMTimeValueKTZ)},
    {"{?={?=qiIq}{?=qiIq}}",                IF_IT_RESPONDS(CMTimeRangeValueKTZ)},
    {"{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}", IF_IT_RESPONDS(CMTimeMappingValueKTZ)},
};
static_assert(std::size(rows) == 9);

// clang-format on

REALobject NewVariantFromValue(NSValue *value)
{
    const char *type = [value objCType];
    for (const ValueRow &row : rows) {
        if (strcmp(type, row.objCType) == 0)
            return row.newObject(value);
    }
    return nullptr;
}

template <typename Struct>
static Struct StructOf(REALobject object)
{
    Struct value;
    memcpy(&value, InstanceData(object), sizeof value);
    return value;
}

id RectValueOf(REALobject object, HeldHandles &)
{
    return [NSValue valueWithRect:StructOf<NSRect>(object)];
}

id SizeValueOf(REALobject object, HeldHandles &)
{
    return [NSValue valueWithSize:StructOf<NSSize>(object)];
}

id RangeValueOf(REALobject object, HeldHandles &)
{
    return [NSValue valueWithRange:StructOf<NSRange>(object)];
}

id PointValueOf(REALobject object, HeldHandles &)
{
    return [NSValue valueWithPoint:StructOf<NSPoint>(object)];
}
