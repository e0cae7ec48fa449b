#include "tests/platform/support.h"

#import <AppKit/AppKit.h>

namespace {

class Headless : public PlatformTest {
protected:
    Headless()
    {
        NSApplicationLoad();
        [NSApplication sharedApplication];
    }
};

TEST_F(Headless, ThereIsOneApplication)
{
    EXPECT_TRUE(NSApplicationLoad());
    EXPECT_NE(nil, NSApp);
    EXPECT_EQ(NSApp, [NSApplication sharedApplication]);
}

TEST_F(Headless, FontsHaveNamesSizesAndWidths)
{
    NSFont *font = [NSFont systemFontOfSize:10];
    EXPECT_TRUE([font isKindOfClass:objc_getClass("NSFont")]);
    EXPECT_STREQ("Plain", [[font fontName] UTF8String]);
    EXPECT_EQ(10, [font pointSize]);
    EXPECT_FLOAT_EQ(18, [font widthOfString:@"abc"]);
    EXPECT_FLOAT_EQ(8, [font ascender]);
    EXPECT_STREQ("Plain-Bold", [[[NSFont boldSystemFontOfSize:12] fontName] UTF8String]);
    EXPECT_TRUE([[NSFont userFixedPitchFontOfSize:12] isFixedPitch]);
    EXPECT_EQ(font, [NSFont systemFontOfSize:10]);
}

TEST_F(Headless, WindowsKeepTheirFrames)
{
    NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(10, 20, 300, 200)
                                                   styleMask:NSTitledWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setTitle:@"Title"];
    [window setFrameOrigin:NSMakePoint(30, 40)];
    EXPECT_TRUE(NSEqualPoints(NSMakePoint(30, 40), [window frame].origin));
    [window setFrame:NSMakeRect(1, 2, 100, 50) display:YES];
    EXPECT_TRUE(NSEqualRects(NSMakeRect(1, 2, 100, 50), [window frame]));
    [window orderFront:nil];
    [window display];
    EXPECT_EQ(NSZeroPoint.x, [window mouseLocationOutsideOfEventStream].x + [window frame].origin.x);
    [window close];
    [window release];
}

TEST_F(Headless, ViewsAndTextFieldsAreDrawnNowhere)
{
    NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                   styleMask:NSBorderlessWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setReleasedWhenClosed:NO];
    NSTextField *field = [[[NSTextField alloc] initWithFrame:NSMakeRect(0, 0, 80, 20)] autorelease];
    NSView *view = [[[NSView alloc] initWithFrame:NSMakeRect(5, 5, 90, 90)] autorelease];
    [field setStringValue:@"text"];
    [view addSubview:field];
    [[window contentView] addSubview:view];
    [window display];
    EXPECT_EQ(window, [field window]);
    EXPECT_STREQ("text", [[field stringValue] UTF8String]);
    EXPECT_TRUE([field isKindOfClass:[NSView class]]);
    [window close];
    [window release];
}

TEST_F(Headless, ScreensHaveASize)
{
    EXPECT_EQ(1u, [[NSScreen screens] count]);
    EXPECT_TRUE(NSEqualRects(NSMakeRect(0, 0, 1024, 768), [[NSScreen mainScreen] frame]));
}

TEST_F(Headless, TextHasStylesAndAttributes)
{
    NSMutableParagraphStyle *style = [[[NSMutableParagraphStyle alloc] init] autorelease];
    [style setAlignment:NSCenterTextAlignment];
    NSDictionary *attributes =
        [NSDictionary dictionaryWithObjectsAndKeys:style, NSParagraphStyleAttributeName, [NSFont systemFontOfSize:12],
                                                   NSFontAttributeName, nil];
    NSAttributedString *string = [[[NSAttributedString alloc] initWithString:@"text"
                                                                  attributes:attributes] autorelease];
    EXPECT_EQ(style, [string attribute:NSParagraphStyleAttributeName atIndex:0 effectiveRange:nullptr]);
}

TEST_F(Headless, RunningApplicationsAreAClass)
{
    id application = [[[objc_getClass("NSRunningApplication") alloc] init] autorelease];
    EXPECT_TRUE([application isKindOfClass:[NSRunningApplication class]]);
}

TEST_F(Headless, NoEventEverComes)
{
    NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                        untilDate:[NSDate dateWithTimeIntervalSinceNow:0.01]
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    EXPECT_TRUE(event == nil || [event type] == NSAppKitDefined);
}

} // namespace
