// Apple has one header for each of these classes; nobody includes them singly here.
#pragma once

#include <Foundation/NSObject.h>

@interface NSEnumerator : NSObject
- (id)nextObject;
@end

@interface NSArray : NSObject
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
- (NSEnumerator *)objectEnumerator;
@end

@interface NSMutableArray : NSArray
+ (id)array;
+ (id)arrayWithCapacity:(NSUInteger)capacity;
- (void)addObject:(id)object;
@end

@interface NSSet : NSObject
- (NSArray *)allObjects;
@end

@interface NSDictionary : NSObject
+ (id)dictionary;
- (NSUInteger)count;
- (NSArray *)allKeys;
- (id)objectForKey:(id)key;
@end

@interface NSMutableDictionary : NSDictionary
+ (id)dictionaryWithCapacity:(NSUInteger)capacity;
- (void)setObject:(id)object forKey:(id)key;
@end

@interface NSData : NSObject
+ (id)dataWithBytes:(const void *)bytes length:(NSUInteger)length;
- (NSUInteger)length;
- (const void *)bytes;
@end
