#pragma once

#include <Foundation/NSObject.h>

@class NSDictionary;

@interface NSException : NSObject
+ (NSException *)exceptionWithName:(NSString *)name reason:(NSString *)reason userInfo:(NSDictionary *)userInfo;
+ (void)raise:(NSString *)name format:(NSString *)format, ...;
- (void)raise;
- (NSString *)name;
- (NSString *)reason;
- (NSDictionary *)userInfo;
@end
