#include "platform/gnustep/appkit/window_server.h"

#include "platform/gnustep/foundation/replacement.h"

#pragma clang diagnostic ignored "-Wunused-parameter"
#pragma clang diagnostic ignored "-Wmissing-selector-name" // GNUstep's selectors have nameless parts

// What there is nothing to do for without a display, and nothing to answer but 0.
static const char *const idle[] = {
    // of the screen
    "beep", "serverDevice",
    // of windows
    "appOwnsMiniwindow", "docedited::", "flushwindowrect::", "miniwindow:", "orderwindow:::", "setIgnoreMouse::",
    "setParentWindow:forChildWindow:", "setShadow::", "setWindowdevice:forContext:", "setalpha::", "setinputfocus:",
    "setinputstate::", "setmaxsize::", "setminsize::", "setresizeincrements::", "setwindowlevel::", "stylewindow::",
    "titlewindow::", "windowDevice:", "windowbacking::", "windowlevel:",
    // of the mouse and events
    "capturemouse:", "freecursor:", "getEventMatchingMask:beforeDate:inMode:dequeue:", "hidecursor",
    "recolorcursor:::", "releasemouse", "setcursor:", "setcursorcolor:::", "showcursor"};

@implementation PlatformWindowServer

+ (void)initialize
{
    if (self != [PlatformWindowServer class])
        return;
    for (const char *operation : idle)
        platform::replaceMethod(self, operation, platform::answerNothing);
}

- (id)initWithAttributes:(NSDictionary *)info
{
    if ((self = [super initWithAttributes:info]))
        frames = [[NSMutableDictionary alloc] init];
    return self;
}

- (void)dealloc
{
    [frames release];
    [super dealloc];
}

- (BOOL)handlesWindowDecorations
{
    return YES;
}

// Screen

- (NSArray *)screenList
{
    return [NSArray arrayWithObject:[NSNumber numberWithInt:0]];
}

- (NSSize)resolutionForScreen:(int)screen
{
    return NSMakeSize(72, 72);
}

- (NSRect)boundsForScreen:(int)screen
{
    return NSMakeRect(0, 0, 1024, 768);
}

- (NSWindowDepth)windowDepthForScreen:(int)screen
{
    return NSBestDepth(NSCalibratedRGBColorSpace, 8, 32, NO, nullptr);
}

- (const NSWindowDepth *)availableDepthsForScreen:(int)screen
{
    static const NSWindowDepth depths[] = {[self windowDepthForScreen:0], 0};
    return depths;
}

// Windows

static NSNumber *keyOf(int window)
{
    return [NSNumber numberWithInt:window];
}

- (int)window:(NSRect)frame:(NSBackingStoreType)type:(unsigned int)style:(int)screen
{
    ++lastWindow;
    [frames setObject:[NSValue valueWithRect:frame] forKey:keyOf(lastWindow)];
    [self _setWindowOwnedByServer:lastWindow];
    return lastWindow;
}

- (int)window:(NSRect)frame:(NSBackingStoreType)type:(unsigned int)style
{
    return [self window:frame:type:style:0];
}

- (void)termwindow:(int)window
{
    [frames removeObjectForKey:keyOf(window)];
}

- (NSRect)windowbounds:(int)window
{
    return [[frames objectForKey:keyOf(window)] rectValue];
}

// A window takes its new frame from the events with which a display server answers.
- (void)tellWindow:(int)window of:(GSAppKitSubtype)change with:(CGFloat)first and:(CGFloat)second
{
    NSEvent *event = [NSEvent otherEventWithType:NSAppKitDefined
                                        location:[self windowbounds:window].origin
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:window
                                         context:GSCurrentContext()
                                         subtype:change
                                           data1:first
                                           data2:second];
    [GSWindowWithNumber(window) sendEvent:event];
}

- (void)placewindow:(NSRect)frame:(int)window
{
    [frames setObject:[NSValue valueWithRect:frame] forKey:keyOf(window)];
    [self tellWindow:window of:GSAppKitWindowMoved with:frame.origin.x and:frame.origin.y];
    [self tellWindow:window of:GSAppKitWindowResized with:frame.size.width and:frame.size.height];
}

- (void)movewindow:(NSPoint)origin:(int)window
{
    NSRect frame = [self windowbounds:window];
    frame.origin = origin;
    [self placewindow:frame:window];
}

- (void)styleoffsets:(float *)left:(float *)right:(float *)top:(float *)bottom:(unsigned int)style
{
    *left = *right = *top = *bottom = 0;
}

- (NSArray *)windowlist
{
    return [NSArray array];
}

- (int)windowdepth:(int)window
{
    return [self windowDepthForScreen:0];
}

// Mouse and events

- (NSPoint)mouselocation
{
    return NSZeroPoint;
}

- (NSPoint)mouseLocationOnScreen:(int)screen window:(int *)window
{
    if (window)
        *window = 0;
    return NSZeroPoint;
}

// NSCursor takes any pointer but null for a cursor.
- (void)standardcursor:(int)style:(void **)cursor
{
    *cursor = self;
}

- (void)imagecursor:(NSPoint)hotSpot:(NSImage *)image:(void **)cursor
{
    *cursor = self;
}

@end
