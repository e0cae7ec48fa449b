#pragma once

#include <Foundation/NSObjCRuntime.h>

__attribute__((objc_root_class))
@interface NSObject {
    Class isa;
}
+ (id)alloc;
+ (id)new;
+ (Class)class;
+ (Class)superclass;
+ (BOOL)respondsToSelector:(SEL)selector; // the root's instance methods answer for its class too
- (id)init;
- (void)dealloc;
- (id)retain;
- (void)release;
- (id)autorelease;
- (Class)class;
- (Class)superclass;
- (BOOL)isKindOfClass:(Class)wanted;
- (BOOL)respondsToSelector:(SEL)selector;
- (NSString *)description;
@end

@interface NSNull : NSObject
+ (NSNull *)null;
@end
