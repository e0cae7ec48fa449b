#include "bridge/data/date.h"

#include "hostapi/held_handles.h"

#include <iterator>

// The parts of a Date, in the order in which the host's properties are read and set. A month set before
// its day may pass through a day that the month lacks, as it does in host code.
static const char *const kParts[] = {"Year", "Month", "Day", "Hour", "Minute", "Second"};
enum DatePart { kYear, kMonth, kDay, kHour, kMinute, kSecond, kPartCount };
static_assert(std::size(kParts) == kPartCount);

NSCalendarDate *NewNSDate(REALdate date)
{
    if (!date)
        return nil;
    int32_t value[kPartCount];
    for (int part = 0; part < kPartCount; part++) {
        if (!REALGetPropValueInt32(AsObject(date), kParts[part], &value[part]))
            return nil;
    }
    return [NSCalendarDate dateWithYear:value[kYear]
                                  month:value[kMonth]
                                    day:value[kDay]
                                   hour:value[kHour]
                                 minute:value[kMinute]
                                 second:value[kSecond]
                               timeZone:[NSTimeZone localTimeZone]];
}

REALobject NewHostDate(NSDate *date, HeldHandles &held)
{
    NSCalendarDate *calendarDate = [[[NSCalendarDate alloc]
        initWithTimeIntervalSinceReferenceDate:[date timeIntervalSinceReferenceDate]] autorelease];
    if (!calendarDate)
        return nullptr;

    int32_t value[kPartCount];
    value[kYear] = [calendarDate yearOfCommonEra];
    value[kMonth] = [calendarDate monthOfYear];
    value[kDay] = [calendarDate dayOfMonth];
    value[kSecond] = [calendarDate secondOfMinute];
    value[kMinute] = [calendarDate minuteOfHour];
    value[kHour] = [calendarDate hourOfDay];

    REALobject hostDate = held.hold(REALnewInstance("Date"));
    if (!hostDate)
        return nullptr;
    for (int part = 0; part < kPartCount; part++)
        REALSetPropValueInt32(hostDate, kParts[part], value[part]);
    return hostDate;
}
