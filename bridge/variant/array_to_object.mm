#include "bridge/variant/array_to_object.h"

#include "bridge/data/date.h"
#include "bridge/strings/ns_string.h"
#include "bridge/variant/variant_to_object.h"
#include "hostapi/held_handles.h"
#include "hostapi/records.h"

// What a handle from an array's storage lacks and one from the host's readers has: a lock of ours.
static REALstring Locked(REALstring string)
{
    if (string)
        REALLockString(string);
    return string;
}

static REALobject Locked(REALobject object)
{
    if (object)
        REALLockObject(object);
    return object;
}

template <typename Value>
static Value ElementInStorage(const void *storage, int32_t index)
{
    return static_cast<const Value *>(storage)[index];
}

// The element of an array, locked for the caller where it is a handle.
template <typename Handle, typename Reader>
static Handle ElementOf(REALarray array, const void *storage, int32_t index, Reader &read)
{
    return storage ? Locked(ElementInStorage<Handle>(storage, index)) : read(array, index);
}

// The walk that all arrays in a Variant's place share. Where the storage lies is asked for each element, as
// host code that runs meanwhile may move it. The upper bound is read once: an array that host code makes shorter
// meanwhile is read, on a host with storage, behind its end. A host without RuntimeUBound counts as having one
// element: that is kept, so that an array of one still crosses there.
template <typename Append>
static NSMutableArray *ArrayOfElements(REALobject object, Append append)
{
    REALarray array = reinterpret_cast<REALarray>(object);
    NSMutableArray *result = [NSMutableArray array];
    const int32_t upperBound = REALGetArrayUBound(array);
    for (int32_t index = 0; index <= upperBound; index++)
        append(result, array, ArrayStorage(array), index);
    return result;
}

template <typename Value>
static id ArrayOfValues(REALobject object, Value (*read)(REALarray, int32_t), id (*box)(Value))
{
    return ArrayOfElements(object, [=](NSMutableArray *result, REALarray array, const void *storage, int32_t index) {
        const Value value = storage ? ElementInStorage<Value>(storage, index) : read(array, index);
        [result addObject:box(value)];
    });
}

// A nil element is handed on to addObject:, which raises: host code learns that its array cannot be stored.
template <typename Handle>
static id ArrayOfHandles(REALobject object, Handle (*read)(REALarray, int32_t), id (*convert)(Handle, HeldHandles &),
                         HeldHandles &held)
{
    return ArrayOfElements(object, [&](NSMutableArray *result, REALarray array, const void *storage, int32_t index) {
        Handle element = held.hold(ElementOf<Handle>(array, storage, index, read));
        [result addObject:convert(element, held)];
        held.release(element);
    });
}

static id TextElement(REALstring string, HeldHandles &)
{
    return TextOf(string);
}

static id DateElement(REALobject date, HeldHandles &)
{
    return NewNSDate(reinterpret_cast<REALdate>(date));
}

// clang-format off

id ArrayOfInt32s(REALobject array, HeldHandles &)   { return ArrayOfValues<int32_t>(array, REALGetArrayValueInt32, [](int32_t v) -> id { return [NSNumber numberWithLong:v]; }); }
id ArrayOfInt64s(REALobject array, HeldHandles &)   { return ArrayOfValues<int64_t>(array, REALGetArrayValueInt64, [](int64_t v) -> id { return [NSNumber numberWithLongLong:v]; }); }
id ArrayOfSingles(REALobject array, HeldHandles &)  { return ArrayOfValues<float>(array, REALGetArrayValueSingle, [](float v) -> id { return [NSNumber numberWithFloat:v]; }); }
id ArrayOfDoubles(REALobject array, HeldHandles &)  { return ArrayOfValues<double>(array, REALGetArrayValueDouble, [](double v) -> id { return [NSNumber numberWithDouble:v]; }); }
id ArrayOfBooleans(REALobject array, HeldHandles &) { return ArrayOfValues<uint8_t>(array, REALGetArrayValueUInt8, [](uint8_t v) -> id { return [NSNumber numberWithBool:static_cast<BOOL>(v)]; }); }
id ArrayOfDates(REALobject array, HeldHandles &held)   { return ArrayOfHandles<REALobject>(array, REALGetArrayValueObject, DateElement, held); }
id ArrayOfStrings(REALobject array, HeldHandles &held) { return ArrayOfHandles<REALstring>(array, REALGetArrayValueString, TextElement, held); }
id ArrayOfObjects(REALobject array, HeldHandles &held) { return ArrayOfHandles<REALobject>(array, REALGetArrayValueObject, GetVariantAsNSObject, held); }

// clang-format on

// The walk through an array argument: null entries never stop it.
template <typename Handle, typename Reader>
static NSArray *ArrayOfArgument(REALarray array, Reader &read, id (*convert)(Handle, HeldHandles &), HeldHandles &held)
{
    if (!array)
        return nil;
    const int32_t upperBound = REALGetArrayUBound(array);
    NSMutableArray *result = [NSMutableArray arrayWithCapacity:upperBound + 1];
    for (int32_t index = 0; result && index <= upperBound; index++) {
        Handle element = held.hold(ElementOf<Handle>(array, ArrayStorage(array), index, read));
        id object = element ? convert(element, held) : nil;
        if (object)
            [result addObject:object];
        held.release(element);
    }
    return result;
}

NSArray *ArrayOfStringArgument(REALarray array, HeldHandles &held)
{
    return ArrayOfArgument<REALstring>(array, REALGetArrayString, TextElement, held);
}

NSArray *ArrayOfVariantArgument(REALarray array, HeldHandles &held)
{
    return ArrayOfArgument<REALobject>(array, REALGetArrayObject, GetVariantAsNSObject, held);
}
