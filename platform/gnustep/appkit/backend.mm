// libgnustep-gui asks for its display back end through its procedure linkage table; a definition in a library that the
// loader meets earlier takes the place of its own. This one makes AppKit's classes work in a process without a display.

#include "platform/gnustep/appkit/fonts.h"
#include "platform/gnustep/appkit/graphics_context.h"
#include "platform/gnustep/appkit/window_server.h"

#import <AppKit/AppKit.h>

extern "C" BOOL initialize_gnustep_backend(void)
{
    [GSDisplayServer setDefaultServerClass:[PlatformWindowServer class]];
    [NSGraphicsContext setDefaultContextClass:[PlatformGraphicsContext class]];
    [GSFontEnumerator setDefaultClass:[PlatformFontEnumerator class]];
    [GSFontInfo setDefaultClass:[PlatformFontMetrics class]];
    return YES;
}

BOOL NSApplicationLoad(void)
{
    [NSApplication class]; // its +initialize starts the back end
    return YES;
}
