#pragma once

#include <Foundation/NSObject.h>

@class NSArray, NSData, NSDictionary, NSURL;

FOUNDATION_EXPORT NSString *const NSGlobalDomain;
FOUNDATION_EXPORT NSString *const NSArgumentDomain;
FOUNDATION_EXPORT NSString *const NSRegistrationDomain;
FOUNDATION_EXPORT NSString *const NSUserDefaultsDidChangeNotification;

@interface NSUserDefaults : NSObject
+ (NSUserDefaults *)standardUserDefaults;
+ (void)resetStandardUserDefaults;
- (id)initWithUser:(NSString *)user;

- (id)objectForKey:(NSString *)key;
- (void)setObject:(id)value forKey:(NSString *)key;
- (void)removeObjectForKey:(NSString *)key;

- (NSInteger)integerForKey:(NSString *)key;
- (float)floatForKey:(NSString *)key;
- (double)doubleForKey:(NSString *)key; // since 10.5, like its setter: ask before sending
- (BOOL)boolForKey:(NSString *)key;
- (NSString *)stringForKey:(NSString *)key;
- (NSURL *)URLForKey:(NSString *)key; // since 10.6, like its setter
- (NSData *)dataForKey:(NSString *)key;
- (NSArray *)arrayForKey:(NSString *)key;
- (NSArray *)stringArrayForKey:(NSString *)key;
- (NSDictionary *)dictionaryForKey:(NSString *)key;
- (void)setInteger:(NSInteger)value forKey:(NSString *)key;
- (void)setFloat:(float)value forKey:(NSString *)key;
- (void)setDouble:(double)value forKey:(NSString *)key;
- (void)setBool:(BOOL)value forKey:(NSString *)key;
- (void)setURL:(NSURL *)value forKey:(NSString *)key;

- (void)registerDefaults:(NSDictionary *)values;
- (void)addSuiteNamed:(NSString *)name;
- (void)removeSuiteNamed:(NSString *)name;
- (NSDictionary *)dictionaryRepresentation;
- (BOOL)synchronize;

- (NSArray *)volatileDomainNames;
- (NSDictionary *)volatileDomainForName:(NSString *)name;
- (void)setVolatileDomain:(NSDictionary *)domain forName:(NSString *)name;
- (void)removeVolatileDomainForName:(NSString *)name;
- (NSArray *)persistentDomainNames;
- (NSDictionary *)persistentDomainForName:(NSString *)name;
- (void)setPersistentDomain:(NSDictionary *)domain forName:(NSString *)name;
- (void)removePersistentDomainForName:(NSString *)name;

- (BOOL)objectIsForcedForKey:(NSString *)key;
- (BOOL)objectIsForcedForKey:(NSString *)key inDomain:(NSString *)domain;
@end
