// The binary property list, both ways. GNUstep's own writer stores values that compare equal only once, so that a
// boolean comes back as the integer 1 stored elsewhere in the same domain; it raises for a real that is no number, and
// loses the upper half of large unsigned integers. Its reader and its tools read what is written here.
//
// Null and sets, which no other form has, are read and can be written again, as on macOS.
//
// The form: "bplist00"; the objects, each a marker byte (kind and small count) and its contents; a table of the
// objects' places; 32 bytes that say how wide places and references are, how many objects there are, and where root and
// table lie. Numbers are big-endian. A set of bytes behind marker 0xA0 or 0xD0 refers to other objects by number.

#include "platform/gnustep/foundation/property_lists.h"

#include "platform/gnustep/core_foundation/strings.h"
#include "platform/gnustep/foundation/numbers.h"

#include <string.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace platform {
namespace {

enum Marker : UInt8 {
    nullMarker = 0x00,
    falseMarker = 0x08,
    trueMarker = 0x09,
    integerMarker = 0x10, // the low half is the logarithm of the size, for reals and dates as well
    realMarker = 0x20,
    dateMarker = 0x33,
    dataMarker = 0x40, // the low half of this and the following ones is the count, or 15 when an integer gives it
    asciiMarker = 0x50,
    unicodeMarker = 0x60,
    arrayMarker = 0xA0,
    setMarker = 0xC0,
    dictionaryMarker = 0xD0
};

const char magic[] = "bplist00";
const size_t magicSize = 8;
const size_t trailerSize = 32;

class Writer {
public:
    // False for what is no property list.
    bool add(id value, UInt32 *number);
    NSData *finish(UInt32 root);

private:
    std::vector<std::string> objects; // of collections only marker and count: references are written at the end
    std::vector<std::vector<UInt32>> references;
    std::map<std::string, UInt32> strings; // keys recur in lists of dictionaries

    UInt32 append(const std::string &object)
    {
        objects.push_back(object);
        references.emplace_back();
        return objects.size() - 1;
    }

    static void putNumber(UInt64 number, size_t size, std::string *to)
    {
        while (size--)
            to->push_back(number >> 8 * size);
    }

    static std::string integer(UInt64 number, bool negative)
    {
        int power = negative ? 3 : number < 0x100 ? 0 : number < 0x10000 ? 1 : number >> 32 ? 3 : 2;
        std::string object(1, integerMarker | power);
        putNumber(number, 1 << power, &object);
        return object;
    }

    static std::string integerOf16Bytes(UInt64 number)
    {
        std::string object(1, integerMarker | 4);
        putNumber(0, 8, &object);
        putNumber(number, 8, &object);
        return object;
    }

    template <typename Float, typename Bits>
    static std::string real(UInt8 marker, Float value)
    {
        static_assert(sizeof(Float) == sizeof(Bits));
        Bits bits;
        memcpy(&bits, &value, sizeof bits);
        std::string object(1, marker);
        putNumber(bits, sizeof bits, &object);
        return object;
    }

    static std::string number(NSNumber *number)
    {
        if (isBoolean(number))
            return std::string(1, [number boolValue] ? trueMarker : falseMarker);
        if ([number objCType][0] == 'f')
            return real<float, uint32_t>(realMarker | 2, [number floatValue]);
        if (isReal(number))
            return real<double, UInt64>(realMarker | 3, [number doubleValue]);
        if ([number objCType][0] == 'Q')
            return integerOf16Bytes([number unsignedLongLongValue]);
        if (strchr("CSIL", [number objCType][0]))
            return integer([number unsignedLongLongValue], false);
        return integer([number longLongValue], [number longLongValue] < 0);
    }

    static std::string withCount(UInt8 marker, size_t count)
    {
        return count < 15 ? std::string(1, marker | count) : std::string(1, marker | 15) + integer(count, false);
    }

    static std::string string(NSString *text)
    {
        Units units = unitsOf(text);
        std::string ascii;
        if (encodeText(units, kCFStringEncodingASCII, &ascii))
            return withCount(asciiMarker, units.size()) + ascii;
        std::string object = withCount(unicodeMarker, units.size());
        for (UniChar unit : units)
            putNumber(unit, sizeof unit, &object);
        return object;
    }
};

bool Writer::add(id value, UInt32 *index)
{
    if ([value isKindOfClass:[NSString class]]) {
        std::string object = string(value);
        auto [entry, isNew] = strings.try_emplace(object, objects.size());
        *index = isNew ? append(object) : entry->second;
        return true;
    }
    if ([value isKindOfClass:[NSNumber class]]) {
        *index = append(number(value));
    } else if ([value isKindOfClass:[NSDate class]]) {
        *index = append(real<double, UInt64>(dateMarker, [value timeIntervalSinceReferenceDate]));
    } else if ([value isKindOfClass:[NSData class]]) {
        std::string bytes(static_cast<const char *>([value bytes]), [value length]);
        *index = append(withCount(dataMarker, bytes.size()) + bytes);
    } else if ([value isKindOfClass:[NSNull class]]) {
        *index = append(std::string(1, nullMarker));
    } else if ([value isKindOfClass:[NSArray class]] || [value isKindOfClass:[NSSet class]]) {
        *index = append(withCount([value isKindOfClass:[NSSet class]] ? setMarker : arrayMarker, [value count]));
        std::vector<UInt32> elements;
        for (id element in value) {
            elements.emplace_back();
            if (!add(element, &elements.back()))
                return false;
        }
        references[*index] = elements;
    } else if ([value isKindOfClass:[NSDictionary class]]) {
        *index = append(withCount(dictionaryMarker, [value count]));
        std::vector<UInt32> keys;
        std::vector<UInt32> values;
        for (id key in value) {
            keys.emplace_back();
            values.emplace_back();
            if (![key isKindOfClass:[NSString class]] || !add(key, &keys.back()) ||
                !add([value objectForKey:key], &values.back()))
                return false;
        }
        keys.insert(keys.end(), values.begin(), values.end());
        references[*index] = keys;
    } else {
        return false;
    }
    return true;
}

NSData *Writer::finish(UInt32 root)
{
    auto bytesFor = [](UInt64 largest) { return largest < 0x100 ? 1 : largest < 0x10000 ? 2 : 4; };
    size_t referenceSize = bytesFor(objects.size());
    std::string bytes(magic);
    std::vector<size_t> places;
    for (size_t i = 0; i < objects.size(); ++i) {
        places.push_back(bytes.size());
        bytes += objects[i];
        for (UInt32 reference : references[i])
            putNumber(reference, referenceSize, &bytes);
    }
    size_t table = bytes.size();
    size_t placeSize = bytesFor(table);
    for (size_t place : places)
        putNumber(place, placeSize, &bytes);
    bytes.append(6, '\0');
    bytes.push_back(placeSize);
    bytes.push_back(referenceSize);
    putNumber(objects.size(), 8, &bytes);
    putNumber(root, 8, &bytes);
    putNumber(table, 8, &bytes);
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

class Reader {
public:
    explicit Reader(NSData *data) : bytes(static_cast<const UInt8 *>([data bytes])), size([data length]) {}

    id root()
    {
        if (size < magicSize + trailerSize || memcmp(bytes, magic, magicSize) != 0)
            return nil;
        const UInt8 *trailer = bytes + size - trailerSize;
        placeSize = trailer[6];
        referenceSize = trailer[7];
        count = getNumber(trailer + 8, 8);
        table = getNumber(trailer + 24, 8);
        end = size - trailerSize;
        if (placeSize < 1 || placeSize > 8 || referenceSize < 1 || referenceSize > 8 || table > end ||
            count > (end - table) / placeSize)
            return nil;
        return object(getNumber(trailer + 16, 8), 0);
    }

private:
    const UInt8 *bytes;
    size_t size;
    size_t placeSize = 0;
    size_t referenceSize = 0;
    UInt64 count = 0;
    UInt64 table = 0;
    size_t end = 0;

    // An object that contains itself would never end.
    static const unsigned deepest = 10000;

    static UInt64 getNumber(const UInt8 *from, size_t length)
    {
        UInt64 number = 0;
        while (length--)
            number = number << 8 | *from++;
        return number;
    }

    bool has(size_t position, UInt64 length) const { return position <= end && length <= end - position; }

    // Moves behind marker and count.
    bool readCount(size_t *position, size_t *length) const
    {
        *length = bytes[(*position)++] & 15;
        if (*length < 15)
            return true;
        if (!has(*position, 1) || (bytes[*position] & 0xF0) != integerMarker || (bytes[*position] & 15) > 3)
            return false;
        size_t width = 1 << (bytes[(*position)++] & 15);
        if (!has(*position, width))
            return false;
        UInt64 number = getNumber(bytes + *position, width);
        *position += width;
        *length = number;
        return number <= size;
    }

    id integer(size_t position, unsigned power) const
    {
        size_t width = 1 << power;
        if (power > 4 || !has(position, width))
            return nil;
        UInt64 low = getNumber(bytes + position, width); // of 16 bytes only the last 8 count
        return power == 4 ? numberOf16Bytes(low) : [NSNumber numberWithLongLong:low];
    }

    template <typename Float, typename Bits>
    bool real(size_t position, Float *value) const
    {
        if (!has(position, sizeof(Bits)))
            return false;
        Bits bits = getNumber(bytes + position, sizeof bits);
        memcpy(value, &bits, sizeof bits);
        return true;
    }

    id realNumber(size_t position, unsigned power) const
    {
        float single;
        double full;
        if (power == 2 && real<float, uint32_t>(position, &single))
            return [NSNumber numberWithFloat:single];
        if (power == 3 && real<double, UInt64>(position, &full))
            return [NSNumber numberWithDouble:full];
        return nil;
    }

    id text(size_t position, size_t length, size_t width) const
    {
        if (!has(position, static_cast<UInt64>(length) * width))
            return nil;
        Units units(length);
        for (size_t i = 0; i < length; ++i)
            units[i] = getNumber(bytes + position + i * width, width);
        return [newString(units.data(), length) autorelease];
    }

    id objectReferredToAt(size_t position, unsigned depth) const
    {
        return object(getNumber(bytes + position, referenceSize), depth);
    }

    id array(size_t position, size_t length, unsigned depth) const
    {
        if (!has(position, static_cast<UInt64>(length) * referenceSize))
            return nil;
        NSMutableArray *array = [NSMutableArray arrayWithCapacity:length];
        for (size_t i = 0; i < length; ++i) {
            id element = objectReferredToAt(position + i * referenceSize, depth);
            if (!element)
                return nil;
            [array addObject:element];
        }
        return [[array copy] autorelease];
    }

    id dictionary(size_t position, size_t length, unsigned depth) const
    {
        if (!has(position, static_cast<UInt64>(length) * 2 * referenceSize))
            return nil;
        NSMutableDictionary *dictionary = [NSMutableDictionary dictionaryWithCapacity:length];
        for (size_t i = 0; i < length; ++i) {
            id key = objectReferredToAt(position + i * referenceSize, depth);
            id value = objectReferredToAt(position + (length + i) * referenceSize, depth);
            if (![key isKindOfClass:[NSString class]] || !value)
                return nil;
            [dictionary setObject:value forKey:key];
        }
        return [[dictionary copy] autorelease];
    }

    id object(UInt64 number, unsigned depth) const
    {
        if (number >= count || depth > deepest)
            return nil;
        UInt64 place = getNumber(bytes + table + number * placeSize, placeSize);
        if (place < magicSize || place >= end)
            return nil;
        size_t position = place;
        UInt8 marker = bytes[position];
        size_t length;
        double seconds;
        switch (marker & 0xF0) {
        case integerMarker:
            return integer(position + 1, marker & 15);
        case realMarker:
            return realNumber(position + 1, marker & 15);
        case dateMarker & 0xF0:
            return real<double, UInt64>(position + 1, &seconds)
                       ? [NSDate dateWithTimeIntervalSinceReferenceDate:seconds]
                       : nil;
        case 0:
            if (marker == nullMarker)
                return [NSNull null];
            return marker == trueMarker || marker == falseMarker ? [NSNumber numberWithBool:marker == trueMarker] : nil;
        }
        if (!readCount(&position, &length))
            return nil;
        switch (marker & 0xF0) {
        case dataMarker:
            return has(position, length) ? [NSData dataWithBytes:bytes + position length:length] : nil;
        case asciiMarker:
            return text(position, length, 1);
        case unicodeMarker:
            return text(position, length, 2);
        case arrayMarker:
            return array(position, length, depth + 1);
        case setMarker:
            return [NSSet setWithArray:array(position, length, depth + 1)];
        case dictionaryMarker:
            return dictionary(position, length, depth + 1);
        }
        return nil;
    }
};

} // namespace

NSData *binaryPropertyList(id root)
{
    Writer writer;
    UInt32 number;
    return writer.add(root, &number) ? writer.finish(number) : nil;
}

id propertyListFromBinary(NSData *data)
{
    return Reader(data).root();
}

} // namespace platform
