#pragma once

#include <Foundation/NSUserDefaults.h>

@class NSURL;

@interface NSUserDefaults (MacOSAccessors)

// A file URL is stored as its path, with the home folder as "~"; another one as keyed-archived data; nil removes the
// value.
- (void)setURL:(NSURL *)url forKey:(NSString *)defaultName;

// Autoreleased; a string is read as a path, data as an archived URL, anything else gives nil.
- (NSURL *)URLForKey:(NSString *)defaultName;

// Whether an administrator fixes the value: in the application's or the global domain, or in the one named.
- (BOOL)objectIsForcedForKey:(NSString *)key;
- (BOOL)objectIsForcedForKey:(NSString *)key inDomain:(NSString *)domain;

@end
