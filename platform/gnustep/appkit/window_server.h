#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

// A display server that only remembers where its windows are: nothing is shown and no event ever comes.
@interface PlatformWindowServer : GSDisplayServer {
    NSMutableDictionary *frames; // window number to NSValue of its frame
    int lastWindow;
}
@end
