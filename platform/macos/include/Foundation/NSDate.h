#pragma once

#include <Foundation/NSObject.h>

@interface NSTimeZone : NSObject
+ (NSTimeZone *)localTimeZone;
@end

@interface NSDate : NSObject
- (id)initWithTimeIntervalSinceReferenceDate:(NSTimeInterval)seconds;
- (NSTimeInterval)timeIntervalSinceReferenceDate;
@end

@interface NSCalendarDate : NSDate
+ (id)dateWithYear:(NSInteger)year
             month:(NSUInteger)month
               day:(NSUInteger)day
              hour:(NSUInteger)hour
            minute:(NSUInteger)minute
            second:(NSUInteger)second
          timeZone:(NSTimeZone *)timeZone;
- (NSInteger)yearOfCommonEra;
- (NSInteger)monthOfYear;
- (NSInteger)dayOfMonth;
- (NSInteger)hourOfDay;
- (NSInteger)minuteOfHour;
- (NSInteger)secondOfMinute;
@end
