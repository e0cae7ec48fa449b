// Numbers are of the kinds that Core Foundation has: whole ones of 1, 2, 4 and 8 bytes, none of them unsigned, and one
// of 16 bytes for what needs it. A number keeps the kind that it is made with, but for -1 to 12, which are 4 bytes
// always, and for what is no number or infinite, which is a double. GNUstep takes the smallest of its own kinds.

#include "platform/gnustep/foundation/numbers.h"

#include "platform/gnustep/foundation/replacement.h"

#include <string.h>

#include <cmath>
#include <limits>

@interface NSSignedIntegerNumber : NSNumber
@end

@interface NSIntNumber : NSSignedIntegerNumber {
@public
    int value;
}
@end

@interface NSLongLongNumber : NSSignedIntegerNumber {
@public
    long long value;
}
@end

@interface NSUnsignedLongLongNumber : NSNumber {
@public
    unsigned long long value;
}
@end

// Kinds of whole numbers that GNUstep has no class for.
#define NARROW_NUMBER(Number, Type, code)                                                                              \
    @interface Number : NSIntNumber                                                                                    \
    @end                                                                                                               \
    @implementation Number                                                                                             \
    -(const char *)objCType                                                                                            \
    {                                                                                                                  \
        return code;                                                                                                   \
    }                                                                                                                  \
    -(void)getValue : (void *)buffer                                                                                   \
    {                                                                                                                  \
        Type narrow = value;                                                                                           \
        memcpy(buffer, &narrow, sizeof narrow);                                                                        \
    }                                                                                                                  \
    @end

NARROW_NUMBER(PlatformCharNumber, signed char, "c")
NARROW_NUMBER(PlatformShortNumber, short, "s")

using platform::initialize;
using platform::numberOf16Bytes;
using platform::replaceClassMethod;

namespace {

template <typename Number, typename Value>
NSNumber *make(Value value)
{
    Number *number = [[Number alloc] init];
    number->value = value;
    return [number autorelease];
}

id (*intBefore)(id, SEL, int);
id (*doubleBefore)(id, SEL, double);

NSNumber *wholeNumber(char kind, SInt64 value)
{
    if (kind == 'i' || (value >= -1 && value <= 12))
        return intBefore([NSNumber class], @selector(numberWithInt:), value);
    return kind == 'c'   ? make<PlatformCharNumber>(value)
           : kind == 's' ? make<PlatformShortNumber>(value)
                         : make<NSLongLongNumber>(value);
}

// The kind for a type of C: the next wider one where it is unsigned.
template <typename Type>
constexpr char kindFor()
{
    size_t size = sizeof(Type) * (std::numeric_limits<Type>::is_signed ? 1 : 2);
    return size == 1 ? 'c' : size == 2 ? 's' : size == 4 ? 'i' : 'q';
}

// One such function for each method, since two methods may take the same type. A subclass makes its own objects.
template <typename Type, int method>
struct Maker {
    static inline id (*before)(id, SEL, Type);

    static id number(id self, SEL selector, Type value)
    {
        initialize(self);
        if (self != [NSNumber class])
            return before(self, selector, value);
        if (!std::numeric_limits<Type>::is_signed && sizeof(Type) == 8 && static_cast<UInt64>(value) >> 63)
            return numberOf16Bytes(value);
        return wholeNumber(kindFor<Type>(), value);
    }

    static void install(const char *name) { before = replaceClassMethod("NSNumber", name, number); }
};

// Each a number that exists once.
id sharedReal(double value)
{
    static NSNumber *const notANumber = [doubleBefore([NSNumber class], @selector(numberWithDouble:), NAN) retain];
    static NSNumber *const infinity = [doubleBefore([NSNumber class], @selector(numberWithDouble:), INFINITY) retain];
    static NSNumber *const negative = [doubleBefore([NSNumber class], @selector(numberWithDouble:), -INFINITY) retain];
    return std::isnan(value) ? notANumber : value > 0 ? infinity : negative;
}

template <typename Type>
struct RealMaker {
    static inline id (*before)(id, SEL, Type);

    static id number(id self, SEL selector, Type value)
    {
        initialize(self);
        return self == [NSNumber class] && !std::isfinite(value) ? sharedReal(value) : before(self, selector, value);
    }
};

} // namespace

NSNumber *platform::numberOf16Bytes(UInt64 value)
{
    return make<NSUnsignedLongLongNumber>(value);
}

__attribute__((constructor)) static void install()
{
    Maker<signed char, 0>::install("numberWithChar:");
    Maker<unsigned char, 0>::install("numberWithUnsignedChar:");
    Maker<short, 0>::install("numberWithShort:");
    Maker<unsigned short, 0>::install("numberWithUnsignedShort:");
    Maker<int, 0>::install("numberWithInt:");
    intBefore = Maker<int, 0>::before;
    Maker<unsigned, 0>::install("numberWithUnsignedInt:");
    Maker<int, 1>::install("numberWithLong:");
    Maker<unsigned, 1>::install("numberWithUnsignedLong:");
    Maker<int, 2>::install("numberWithInteger:");
    Maker<unsigned, 2>::install("numberWithUnsignedInteger:");
    Maker<long long, 0>::install("numberWithLongLong:");
    Maker<unsigned long long, 0>::install("numberWithUnsignedLongLong:");
    RealMaker<float>::before = replaceClassMethod("NSNumber", "numberWithFloat:", RealMaker<float>::number);
    doubleBefore = RealMaker<double>::before =
        replaceClassMethod("NSNumber", "numberWithDouble:", RealMaker<double>::number);
}
