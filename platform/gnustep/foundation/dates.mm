// A date is any number of seconds, as on macOS. GNUstep ends at the years 1 and 4001 and refuses what is no number; its
// calendar dates still do the former.

#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>

#include <cmath>

using InitWithInterval = id (*)(id, SEL, NSTimeInterval);

static InitWithInterval calendarDateBefore;

static id initDate(id self, SEL, NSTimeInterval seconds)
{
    static Ivar interval = class_getInstanceVariable(object_getClass(self), "_seconds_since_ref");
    memcpy(reinterpret_cast<char *>(self) + ivar_getOffset(interval), &seconds, sizeof seconds);
    return self;
}

static id initCalendarDate(id self, SEL selector, NSTimeInterval seconds)
{
    return calendarDateBefore(self, selector, std::isnan(seconds) ? INFINITY : seconds);
}

@interface PlatformDates : NSObject
@end

@implementation PlatformDates

+ (void)load
{
    platform::replaceMethod("NSGDate", "initWithTimeIntervalSinceReferenceDate:", initDate);
    calendarDateBefore =
        platform::replaceMethod("NSCalendarDate", "initWithTimeIntervalSinceReferenceDate:", initCalendarDate);
}

@end
