#pragma once

#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSFontInfo.h>

// The fonts that exist without a display: "Plain", "Plain-Bold" and "Fixed".
@interface PlatformFontEnumerator : GSFontEnumerator
@end

// Their metrics: every glyph is six tenths of the size wide.
@interface PlatformFontMetrics : GSFontInfo
@end
