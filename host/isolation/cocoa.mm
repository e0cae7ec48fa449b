#include "host/isolation/cocoa.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

namespace isolation {

void startCocoa()
{
    @autoreleasepool {
        [NSApplication sharedApplication];
        [NSFont systemFontOfSize:12];
        [[NSCalendarDate date] description];
        [NSURL URLWithString:@"http://example.com/"];
    }
}

} // namespace isolation
