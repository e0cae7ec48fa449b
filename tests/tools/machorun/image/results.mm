// Every way in which a method takes arguments and gives its result.
#include "tests/tools/machorun/image/exported.h"

#include <Foundation/Foundation.h>

EXPORTED int intResult(id object)
{
    return [object intValue];
}
EXPORTED int negativeIntResult()
{
    return [[NSNumber numberWithInt:-5] intValue];
}
EXPORTED long long longLongResult(long long value)
{
    return [[NSNumber numberWithLongLong:value] longLongValue];
}
EXPORTED float floatResult(float value)
{
    return [[NSNumber numberWithFloat:value] floatValue];
}
EXPORTED double doubleResult(double value)
{
    return [[NSNumber numberWithDouble:value] doubleValue];
}
EXPORTED int boolResult(int value)
{
    return [[NSNumber numberWithBool:(BOOL)value] boolValue];
}
EXPORTED int shortResult(id object)
{
    return [object shortValue];
}

EXPORTED void rangeResult(unsigned location, unsigned length, unsigned *result)
{
    NSRange range = [[NSValue valueWithRange:NSMakeRange(location, length)] rangeValue];
    result[0] = range.location;
    result[1] = range.length;
}

EXPORTED void pointResult(float x, float y, float *result)
{
    NSPoint point = [[NSValue valueWithPoint:NSMakePoint(x, y)] pointValue];
    result[0] = point.x;
    result[1] = point.y;
}

EXPORTED void sizeResult(float width, float height, float *result)
{
    NSSize size = [[NSValue valueWithSize:NSMakeSize(width, height)] sizeValue];
    result[0] = size.width;
    result[1] = size.height;
}

EXPORTED void rectResult(float x, float y, float width, float height, float *result)
{
    NSRect rect = [[NSValue valueWithRect:NSMakeRect(x, y, width, height)] rectValue];
    result[0] = rect.origin.x;
    result[1] = rect.origin.y;
    result[2] = rect.size.width;
    result[3] = rect.size.height;
}

// A small struct from a method that takes an argument.
EXPORTED unsigned placeOf(id part, id whole)
{
    return [whole rangeOfString:part].location;
}

EXPORTED id formatted(int number, id object, double fraction)
{
    return [NSString stringWithFormat:@"%d-%@-%.2f", number, object, fraction];
}

EXPORTED int nilAnswersZero(id nothing)
{
    NSRange range = [nothing rangeValue];
    return [nothing intValue] == 0 && [nothing longLongValue] == 0 && [nothing description] == nil &&
           range.location == 0 && range.length == 0;
}

// A result left on the floating-point stack, or one missing there, shows after eight calls.
EXPORTED double sumOfNilResults(id nothing, int times)
{
    double sum = 0;
    for (int i = 0; i < times; i++) {
        sum += 1.0 + [nothing doubleValue] + [nothing floatValue];
        [nothing intValue];
    }
    return sum;
}

// As on macOS, nil leaves the memory for a large struct alone; what matters is that the stack stays right.
EXPORTED int nilLargeStruct(id nothing)
{
    int before = 7;
    NSRect rect = [nothing rectValue];
    (void)rect;
    return before;
}
