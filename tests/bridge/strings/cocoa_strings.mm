#include "tests/bridge/strings/cocoa_strings.h"

#import <Foundation/Foundation.h>

@interface LengthOnlyString : NSString {
@public
    NSUInteger length;
}
@end

@implementation LengthOnlyString

- (NSUInteger)length
{
    return length;
}

- (unichar)characterAtIndex:(NSUInteger)index
{
    [NSException raise:NSRangeException format:@"there is no character %u", unsigned(index)];
    return 0;
}

@end

CFStringRef CreateLengthOnlyString(uint32_t length)
{
    LengthOnlyString *string = [[LengthOnlyString alloc] init];
    string->length = length;
    return (CFStringRef)string;
}

unsigned RetainCountOf(CFStringRef string)
{
    return [(NSString *)string retainCount];
}
