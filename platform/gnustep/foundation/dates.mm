// A date is any number of seconds, as on macOS. GNUstep's ends at the years 1 and 4001, and what is no number raises;
// its calendar dates still end there, because its calendar does.

#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>
#include <string.h>

static id (*calendarDateBefore)(id, SEL, NSTimeInterval);

static id initDate(id self, SEL, NSTimeInterval seconds)
{
    static Ivar interval = class_getInstanceVariable(object_getClass(self), "_seconds_since_ref");
    memcpy(reinterpret_cast<char *>(self) + ivar_getOffset(interval), &seconds, sizeof seconds);
    return self;
}

static id initCalendarDate(id self, SEL selector, NSTimeInterval seconds)
{
    double first = [[NSDate distantPast] timeIntervalSinceReferenceDate];
    double last = [[NSDate distantFuture] timeIntervalSinceReferenceDate];
    return calendarDateBefore(self, selector, seconds <= first ? first : seconds < last ? seconds : last);
}

__attribute__((constructor)) static void install()
{
    platform::replaceMethod("NSGDate", "initWithTimeIntervalSinceReferenceDate:", initDate);
    calendarDateBefore =
        platform::replaceMethod("NSCalendarDate", "initWithTimeIntervalSinceReferenceDate:", initCalendarDate);
}
