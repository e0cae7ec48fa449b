// Property lists of any bytes become host values and Cocoa's objects again: against an account of what the host cannot
// keep. What comes out must be a property list that is written and read again without a change.
#include "bridge/variant/object_to_variant.h"
#include "bridge/variant/variant_to_object.h"
#include "hostapi/held_handles.h"
#include "platform/gnustep/foundation/property_lists.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/pool.h"
#include "tests/fuzz/small_host.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cmath>
#include <vector>

using small_host::Object;

// How many objects a run may read. An object may stand for many, where arrays refer to one array many times.
static const int mostObjects = 400;

// Whether the form is read in reasonable time: it counts as a reader does, and stops where a reader would go on and on.
class SizeOfBinaryForm {
public:
    SizeOfBinaryForm(const uint8_t *bytes, size_t size) : _bytes(bytes), _size(size) {}

    bool isReasonable()
    {
        if (_size < 40)
            return true;
        const uint8_t *trailer = _bytes + _size - 32;
        _placeSize = trailer[6];
        _referenceSize = trailer[7];
        if (_placeSize < 1 || _placeSize > 8 || _referenceSize < 1 || _referenceSize > 8)
            return true;
        _count = number(_size - 24, 8);
        _table = number(_size - 8, 8);
        visit(number(_size - 16, 8));
        return _visited < mostObjects;
    }

private:
    const uint8_t *_bytes;
    size_t _size;
    size_t _placeSize = 0;
    size_t _referenceSize = 0;
    uint64_t _count = 0;
    uint64_t _table = 0;
    int _visited = 0;

    uint64_t number(uint64_t at, size_t width) const
    {
        uint64_t number = 0;
        for (size_t i = 0; i < width; i++)
            number = number << 8 | (at + i < _size ? _bytes[at + i] : 0);
        return number;
    }

    void visit(uint64_t object)
    {
        if (++_visited >= mostObjects || object >= _count || _table > _size)
            return;
        uint64_t place = number(_table + object * _placeSize, _placeSize);
        if (place >= _size || _bytes[place] < 0xA0)
            return;
        uint64_t references = _bytes[place] & 15;
        const bool isDictionary = _bytes[place] >> 4 == 0xD;
        place++;
        if (references == 15 && place < _size) {
            const size_t width = size_t(1) << (_bytes[place] & 3);
            references = number(place + 1, width);
            place += 1 + width;
        }
        if (references > _size)
            return;
        for (uint64_t i = 0; i < references * (isDictionary ? 2 : 1) && _visited < mostObjects; i++)
            visit(number(place + i * _referenceSize, _referenceSize));
    }
};

// How much of a text a host string holds: up to its first U+0000, and nothing where UTF-8 cannot express the text.
static NSUInteger keptLength(NSString *text)
{
    const NSUInteger length = [text length];
    NSUInteger kept = length;
    for (NSUInteger i = 0; i < length; i++) {
        const unichar unit = [text characterAtIndex:i];
        if (!unit && i < kept)
            kept = i;
        if ((unit & 0xF800) != 0xD800)
            continue;
        if (unit >= 0xDC00 || ++i == length || ([text characterAtIndex:i] & 0xFC00) != 0xDC00)
            return 0;
    }
    return kept;
}

// U+FEFF in front is the mark of UTF-8, which is left out when the host's text is read.
static NSString *keptText(NSString *text)
{
    std::vector<unichar> units(keptLength(text));
    [text getCharacters:units.data() range:NSMakeRange(0, units.size())];
    if (!units.empty() && units[0] == 0xFEFF)
        units.erase(units.begin());
    return [(NSString *)CFStringCreateWithCharacters(nullptr, units.data(), CFIndex(units.size())) autorelease];
}

// What the host makes of a property list, seen from Cocoa again; nil for nothing. `refused` when an array gets an
// element that is nothing, which Cocoa does not take back; `unknown` when this account does not say.
struct Expectation {
    bool refused = false;
    bool unknown = false;

    id of(id value)
    {
        if ([value isKindOfClass:[NSString class]])
            return keptText(value);
        if ([value isKindOfClass:[NSData class]])
            return [value length] ? value : nil;
        if ([value isKindOfClass:[NSDate class]])
            return ofDate(value);
        if ([value isKindOfClass:[NSArray class]])
            return ofArray(value);
        if ([value isKindOfClass:[NSDictionary class]])
            return ofDictionary(value);
        if (![value isKindOfClass:[NSNumber class]]) {
            unknown = true; // null or a set
            return value;
        }
        if (strcmp([value objCType], "Q") == 0) // its low half only
            return [NSNumber numberWithLongLong:static_cast<uint32_t>([value unsignedLongLongValue])];
        return value;
    }

private:
    id ofDate(NSDate *date)
    {
        const double seconds = [date timeIntervalSinceReferenceDate];
        // Between about the years 400 and 3600. A calendar counts from the year 1, which costs the smallest fractions.
        const double whole = round(seconds);
        if (!(fabs(seconds) < 5e10) || (seconds != whole && fabs(seconds - whole) < 1e-4)) {
            unknown = true;
            return date;
        }
        return [NSDate dateWithTimeIntervalSinceReferenceDate:floor(seconds)];
    }

    id ofArray(NSArray *array)
    {
        NSMutableArray *result = [NSMutableArray array];
        for (id element in array) {
            id expected = of(element);
            refused = refused || !expected;
            [result addObject:expected ? expected : [NSNull null]];
        }
        return result;
    }

    id ofDictionary(NSDictionary *dictionary)
    {
        NSMutableDictionary *result = [NSMutableDictionary dictionary];
        for (id key in dictionary) {
            if (![key isKindOfClass:[NSString class]] || [keptText(key) length] != [key length]) {
                unknown = true; // keys may become alike
                continue;
            }
            id expected = of([dictionary objectForKey:key]);
            [result setObject:expected ? expected : [NSNull null] forKey:key];
        }
        return result;
    }
};

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

static void run(const uint8_t *bytes, size_t size)
{
    RunPool pool;
    NSData *data = [NSData dataWithBytesNoCopy:const_cast<uint8_t *>(bytes) length:size freeWhenDone:NO];
    id propertyList = platform::propertyListFromBinary(data);
    if (!propertyList)
        return;

    HeldHandles held;
    auto *object = reinterpret_cast<Object *>(held.keep(NewVariantFromNSObject(propertyList, held)));
    const int made = small_host::liveHandles;
    bool refused = false;
    id again = toCocoa(object, &refused);
    REQUIRE(small_host::liveHandles == made);
    small_host::unlock(object);

    Expectation expectation;
    id expected = expectation.of(propertyList);
    if (expectation.unknown)
        return;
    REQUIRE(refused == expectation.refused);
    if (refused)
        return;
    REQUIRE(expected ? platform::isSameValue(expected, again) : !again);
    if (!again || !platform::isPropertyList(again))
        return;
    NSData *written = platform::binaryPropertyList(again);
    REQUIRE(written);
    REQUIRE(platform::isSameValue(platform::propertyListFromBinary(written), again));
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    small_host::install(2013.03);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (SizeOfBinaryForm(data, size).isReasonable())
        run(data, size);
    REQUIRE(small_host::liveHandles == 0 && small_host::raisedExceptions == 0);
    return 0;
}
