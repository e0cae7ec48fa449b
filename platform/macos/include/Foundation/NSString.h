#pragma once

#include <Foundation/NSGeometry.h>
#include <Foundation/NSObject.h>

@interface NSString : NSObject
+ (id)string;
+ (id)stringWithUTF8String:(const char *)text;
+ (id)stringWithFormat:(NSString *)format, ...;
- (NSUInteger)length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (const char *)UTF8String;
- (BOOL)isEqualToString:(NSString *)string;
- (NSRange)rangeOfString:(NSString *)string;
- (float)floatValue;
- (double)doubleValue;
@end
