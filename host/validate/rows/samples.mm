#include "host/validate/rows/samples.h"

@interface ValidationNumber : NSNumber {
@public
    const char *type;
    long long whole;
    double real;
}
@end

@implementation ValidationNumber

- (const char *)objCType
{
    return type;
}
- (BOOL)boolValue
{
    return whole != 0;
}
- (unsigned char)unsignedCharValue
{
    return static_cast<unsigned char>(whole);
}
- (short)shortValue
{
    return static_cast<short>(whole);
}
- (unsigned short)unsignedShortValue
{
    return static_cast<unsigned short>(whole);
}
- (int)intValue
{
    return static_cast<int>(whole);
}
- (unsigned int)unsignedIntValue
{
    return static_cast<unsigned>(whole);
}
- (long)longValue
{
    return static_cast<long>(whole);
}
- (unsigned long)unsignedLongValue
{
    return static_cast<unsigned long>(whole);
}
- (long long)longLongValue
{
    return whole;
}
- (float)floatValue
{
    return static_cast<float>(real);
}
- (double)doubleValue
{
    return real;
}

@end

namespace validate {

using host::Value;

id numberOf(const char *type, long long whole, double real)
{
    ValidationNumber *number = [[[ValidationNumber alloc] init] autorelease];
    number->type = type;
    number->whole = whole;
    number->real = real;
    return number;
}

id dateInMarch()
{
    return [NSCalendarDate dateWithYear:2012
                                  month:3
                                    day:29
                                   hour:10
                                 minute:20
                                 second:30
                               timeZone:[NSTimeZone localTimeZone]];
}

id twoStrings()
{
    return [NSArray arrayWithObjects:@"first", @"second", nil];
}

id bytes()
{
    unsigned char raw[] = {0x00, 0xFF, 0x10};
    return [NSData dataWithBytes:raw length:sizeof raw];
}

id longText()
{
    return [@"" stringByPaddingToLength:150 withString:@"x" startingAtIndex:0];
}

id nestedDictionary()
{
    NSDictionary *inner = [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:7] forKey:@"inside"];
    return [NSDictionary dictionaryWithObject:inner forKey:@"outside"];
}

Value dictionary()
{
    return Value::dictionary({{"name", 7}});
}

Value block()
{
    return Value::memoryBlock(std::string("\x00\xff\x10", 3));
}

Value dateValue()
{
    return Value::date(2012, 3, 29, 10, 20, 30);
}

} // namespace validate
