#include "platform/gnustep/foundation/property_lists.h"

#include <objc/runtime.h>
#include <string.h>

#include <cmath>

namespace platform {

bool isBoolean(NSNumber *number)
{
    static Class booleanClass = objc_getClass("NSBoolNumber");
    return [number isKindOfClass:booleanClass];
}

bool isReal(NSNumber *number)
{
    return strchr("fd", [number objCType][0]) != nullptr;
}

bool isPropertyList(id value)
{
    if ([value isKindOfClass:[NSArray class]]) {
        for (id element in value)
            if (!isPropertyList(element))
                return false;
        return true;
    }
    if ([value isKindOfClass:[NSDictionary class]]) {
        for (id key in value)
            if (![key isKindOfClass:[NSString class]] || !isPropertyList([value objectForKey:key]))
                return false;
        return true;
    }
    return [value isKindOfClass:[NSString class]] || [value isKindOfClass:[NSNumber class]] ||
           [value isKindOfClass:[NSData class]] || [value isKindOfClass:[NSDate class]];
}

static bool isSameNumber(NSNumber *a, NSNumber *b)
{
    if (isBoolean(a) != isBoolean(b) || isReal(a) != isReal(b))
        return false;
    if (!isReal(a))
        return [a isEqual:b];
    double x = [a doubleValue];
    double y = [b doubleValue];
    return strcmp([a objCType], [b objCType]) == 0 && memcmp(&x, &y, sizeof x) == 0;
}

// Every 8-byte integer is exact in a long double.
static bool areEqualNumbers(NSNumber *a, NSNumber *b)
{
    auto valueOf = [](NSNumber *number) -> long double {
        if (isReal(number))
            return [number doubleValue];
        bool isUnsigned = strchr("CSILQ", [number objCType][0]);
        return isUnsigned ? static_cast<long double>([number unsignedLongLongValue]) : [number longLongValue];
    };
    long double x = valueOf(a);
    long double y = valueOf(b);
    return isBoolean(a) == isBoolean(b) &&
           ((std::isnan(x) && std::isnan(y)) || (x == y && std::signbit(x) == std::signbit(y)));
}

static bool compare(id a, id b, bool (*compareNumbers)(NSNumber *, NSNumber *))
{
    if ([a isKindOfClass:[NSNumber class]])
        return [b isKindOfClass:[NSNumber class]] && compareNumbers(a, b);
    if ([a isKindOfClass:[NSArray class]]) {
        if (![b isKindOfClass:[NSArray class]] || [a count] != [b count])
            return false;
        for (NSUInteger i = 0; i < [a count]; ++i)
            if (!compare([a objectAtIndex:i], [b objectAtIndex:i], compareNumbers))
                return false;
        return true;
    }
    if ([a isKindOfClass:[NSDictionary class]]) {
        if (![b isKindOfClass:[NSDictionary class]] || [a count] != [b count])
            return false;
        for (id key in a) {
            id other = [b objectForKey:key];
            if (!other || !compare([a objectForKey:key], other, compareNumbers))
                return false;
        }
        return true;
    }
    return [a isEqual:b];
}

bool isSameValue(id a, id b)
{
    return compare(a, b, isSameNumber);
}

bool areEqual(id a, id b)
{
    return compare(a, b, areEqualNumbers);
}

} // namespace platform
