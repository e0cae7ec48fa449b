#include "platform/gnustep/appkit/window_server.h"

#pragma clang diagnostic ignored "-Wunused-parameter"
#pragma clang diagnostic ignored "-Wmissing-selector-name" // GNUstep's selectors have nameless parts

@implementation PlatformWindowServer

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
- (void *)serverDevice
{
    return nullptr;
}
- (void)beep
{
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
- (void *)windowDevice:(int)window
{
    return nullptr;
}
- (int)windowdepth:(int)window
{
    return [self windowDepthForScreen:0];
}
- (int)windowlevel:(int)window
{
    return 0;
}
- (BOOL)appOwnsMiniwindow
{
    return NO;
}
- (void)stylewindow:(unsigned int)style:(int)window
{
}
- (void)windowbacking:(NSBackingStoreType)type:(int)window
{
}
- (void)titlewindow:(NSString *)title:(int)window
{
}
- (void)miniwindow:(int)window
{
}
- (void)setWindowdevice:(int)window forContext:(NSGraphicsContext *)context
{
}
- (void)orderwindow:(int)order:(int)other:(int)window
{
}
- (void)setwindowlevel:(int)level:(int)window
{
}
- (void)setmaxsize:(NSSize)size:(int)window
{
}
- (void)setminsize:(NSSize)size:(int)window
{
}
- (void)setresizeincrements:(NSSize)size:(int)window
{
}
- (void)flushwindowrect:(NSRect)rect:(int)window
{
}
- (void)docedited:(int)edited:(int)window
{
}
- (void)setinputstate:(int)state:(int)window
{
}
- (void)setinputfocus:(int)window
{
}
- (void)setalpha:(float)alpha:(int)window
{
}
- (void)setShadow:(BOOL)hasShadow:(int)window
{
}
- (void)setParentWindow:(int)parent forChildWindow:(int)child
{
}
- (void)setIgnoreMouse:(BOOL)ignore:(int)window
{
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

- (BOOL)capturemouse:(int)window
{
    return NO;
}
- (void)releasemouse
{
}
- (void)hidecursor
{
}
- (void)showcursor
{
}
- (void)setcursor:(void *)cursor
{
}
- (void)freecursor:(void *)cursor
{
}
- (void)setcursorcolor:(NSColor *)foreground:(NSColor *)background:(void *)cursor
{
}
- (void)recolorcursor:(NSColor *)foreground:(NSColor *)background:(void *)cursor
{
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

- (NSEvent *)getEventMatchingMask:(unsigned)mask beforeDate:(NSDate *)limit inMode:(NSString *)mode dequeue:(BOOL)flag
{
    return nil;
}

@end
