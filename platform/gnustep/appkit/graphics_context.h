#pragma once

#import <AppKit/AppKit.h>

// A drawing context whose drawing operations do nothing.
@interface PlatformGraphicsContext : NSGraphicsContext
@end
