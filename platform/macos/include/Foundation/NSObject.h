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
- (NSUInteger)retainCount;
- (Class)class;
- (Class)superclass;
- (NSUInteger)hash;
- (BOOL)isEqual:(id)object;
- (BOOL)isKindOfClass:(Class)wanted;
- (BOOL)respondsToSelector:(SEL)selector;
- (id)performSelector:(SEL)selector withObject:(id)object;
- (NSString *)description;
@end

@interface NSAutoreleasePool : NSObject
@end

@interface NSNull : NSObject
+ (NSNull *)null;
@end
