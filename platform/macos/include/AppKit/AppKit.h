// AppKit, as far as the plug-in uses it.
#pragma once

#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>
#include <Foundation/Foundation.h>

OBJC_EXPORT BOOL NSApplicationLoad(void);

@interface NSApplication : NSObject
+ (NSApplication *)sharedApplication;
@end

// Only asked for their class.
@interface NSFont : NSObject
@end
@interface NSParagraphStyle : NSObject
@end
@interface NSView : NSObject
@end
@interface NSWindow : NSObject
@end
