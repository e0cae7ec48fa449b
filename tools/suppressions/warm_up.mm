// Only in the build under sanitizers: lets Foundation's time zones start while leaks are not counted. Their +initialize
// makes one object of 20 bytes that is never used again, and the functions on the way there have no names by which
// tools/suppressions/lsan.supp could tell them.

#import <Foundation/Foundation.h>

#include <sanitizer/lsan_interface.h>

@interface TimeZoneWarmUp : NSObject
@end

@implementation TimeZoneWarmUp

+ (void)load
{
    NSAutoreleasePool *pool = [NSAutoreleasePool new];
    __lsan_disable();
    [NSTimeZone class];
    __lsan_enable();
    [pool release];
}

@end
