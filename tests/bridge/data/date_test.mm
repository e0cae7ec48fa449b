// Dates: wall-clock time in the local time zone, whole seconds, both ways.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

const std::vector<std::string> kPartsInOrder = {"Year", "Month", "Day", "Hour", "Minute", "Second"};

// What the plug-in reads or sets, in its order, and how often reading works.
std::vector<std::string> parts;
size_t partsThatCanBeRead;

unsigned char readPart(void *, const char *name, int32_t *value)
{
    static const int32_t values[] = {2012, 2, 29, 10, 20, 30};
    parts.push_back(name);
    for (size_t i = 0; i < std::size(values); i++)
        if (kPartsInOrder[i] == name)
            *value = values[i];
    return parts.size() <= partsThatCanBeRead;
}

unsigned char setPart(void *, const char *name, int32_t value)
{
    parts.push_back(name + std::string(" ") + std::to_string(value));
    return 1;
}

struct Moment {
    int year, month, day, hour, minute, second;
};

const Moment kMoments[] = {
    {2012, 2, 29, 10, 20, 30}, {2000, 2, 29, 0, 0, 0},     {1999, 12, 31, 23, 59, 59}, {1970, 1, 1, 0, 0, 0},
    {1904, 1, 1, 12, 0, 1},    {2001, 1, 1, 0, 0, 0},      {2038, 1, 19, 3, 14, 8},    {2400, 2, 29, 1, 1, 1},
    {1600, 3, 1, 6, 7, 8},     {4000, 12, 31, 23, 59, 59},
};

class Date : public CrossingTest {
protected:
    static void useTimeZone(NSString *name)
    {
        NSTimeZone *zone = [NSTimeZone timeZoneWithName:name];
        ASSERT_NE(zone, nil) << textOf(name);
        [NSTimeZone setDefaultTimeZone:zone];
    }

    static Value valueOf(const Moment &m) { return Value::date(m.year, m.month, m.day, m.hour, m.minute, m.second); }

    static void expectMoment(const Value &date, const Moment &expected)
    {
        ASSERT_TRUE(date.isA("Date")) << date.describe();
        const int values[] = {expected.year, expected.month,  expected.day,
                              expected.hour, expected.minute, expected.second};
        for (size_t i = 0; i < std::size(values); i++)
            EXPECT_EQ(date.property(kPartsInOrder[i]).int32(), values[i]) << kPartsInOrder[i];
    }
};

} // namespace

TEST_F(Date, BecomesTheCalendarDateOfThatWallClockTime)
{
    start();
    for (NSString *zone : {@"UTC", @"America/New_York", @"Asia/Kolkata", @"Pacific/Auckland"}) {
        useTimeZone(zone);
        for (const Moment &m : kMoments) {
            SCOPED_TRACE(textOf(zone) + " " + std::to_string(m.year));
            NSCalendarDate *date = toCocoa(valueOf(m));
            ASSERT_TRUE([date isKindOfClass:[NSCalendarDate class]]);
            EXPECT_TRUE([date isEqual:[NSCalendarDate dateWithYear:m.year
                                                             month:m.month
                                                               day:m.day
                                                              hour:m.hour
                                                            minute:m.minute
                                                            second:m.second
                                                          timeZone:[NSTimeZone defaultTimeZone]]]);
            expectMoment(toHost(date), m);
        }
    }
}

TEST_F(Date, IsReadInTheLocalTimeZoneOfTheMoment)
{
    start();
    useTimeZone(@"UTC");
    NSDate *date = toCocoa(Value::date(2012, 7, 1, 12, 0, 0));
    useTimeZone(@"Asia/Tokyo");
    expectMoment(toHost([NSDate dateWithTimeIntervalSinceReferenceDate:[date timeIntervalSinceReferenceDate]]),
                 {2012, 7, 1, 21, 0, 0});
}

TEST_F(Date, LosesFractionsOfASecond)
{
    start();
    useTimeZone(@"UTC");
    expectMoment(toHost([NSDate dateWithTimeIntervalSinceReferenceDate:0.999]), {2001, 1, 1, 0, 0, 0});
    expectMoment(toHost([NSDate dateWithTimeIntervalSinceReferenceDate:59.5]), {2001, 1, 1, 0, 0, 59});
}

TEST_F(Date, HasItsPropertiesReadInOneOrder)
{
    start();
    useTimeZone(@"UTC");
    Value date = Value::date(1980, 1, 1);
    host.replace("REALGetPropValueInt", reinterpret_cast<void *>(readPart));
    partsThatCanBeRead = 6;
    parts.clear();
    NSCalendarDate *result = toCocoa(date);
    EXPECT_EQ(parts, kPartsInOrder);
    EXPECT_TRUE([[result descriptionWithCalendarFormat:@"%Y-%m-%d %H:%M:%S"] isEqual:@"2012-02-29 10:20:30"])
        << textOf(result);
}

TEST_F(Date, WithAPropertyThatCannotBeReadIsNilAndNoFurtherOneIsRead)
{
    start();
    Value date = Value::date(1980, 1, 1);
    host.replace("REALGetPropValueInt", reinterpret_cast<void *>(readPart));
    for (partsThatCanBeRead = 0; partsThatCanBeRead < 6; partsThatCanBeRead++) {
        parts.clear();
        EXPECT_EQ(toCocoa(date), nil);
        EXPECT_EQ(parts.size(), partsThatCanBeRead + 1);
    }
}

TEST_F(Date, WithoutTheIntegerGetterIsNil)
{
    host.hide("REALGetPropValueInt");
    start();
    EXPECT_EQ(toCocoa(Value::date(2012, 2, 29)), nil);
    host.showAll();
    EXPECT_NE(toCocoa(Value::date(2012, 2, 29)), nil);
}

TEST_F(Date, HasItsPropertiesSetInOneOrder)
{
    start();
    useTimeZone(@"UTC");
    host.replace("REALSetPropValueInt", reinterpret_cast<void *>(setPart));
    parts.clear();
    toHost([NSDate dateWithTimeIntervalSinceReferenceDate:3661]);
    EXPECT_EQ(parts, (std::vector<std::string>{"Year 2001", "Month 1", "Day 1", "Hour 1", "Minute 1", "Second 1"}));
}

TEST_F(Date, WithoutTheIntegerSetterIsADateAllTheSame)
{
    host.hide("REALSetPropValueInt");
    start();
    host.resetCounts();
    EXPECT_TRUE(toHost([NSDate date]).isA("Date"));
    EXPECT_EQ(host.lookups("REALSetPropValueInt"), 6) << "the look-up is tried again for each property";
}

TEST_F(Date, ThatTheHostCannotMakeIsNil)
{
    start();
    host.failCreation(host::Creation::Instance, 1);
    EXPECT_TRUE(toHost([NSDate date]).isNil());
    EXPECT_TRUE(toHost([NSDate date]).isA("Date"));
}

TEST_F(Date, ThatCocoaCannotTellTheDayOfIsNil)
{
    start();
    NSDate *date = [NSDate dateWithTimeIntervalSinceReferenceDate:0];
    carrier();
    host.resetCounts();
    support::CocoaMethod none("NSCalendarDate", "initWithTimeIntervalSinceReferenceDate:", support::MethodOf::Instance,
                              bodyOf([](id self, SEL, double) -> id {
                                  [self release];
                                  return nil;
                              }));
    EXPECT_TRUE(toHost(date).isNil());
    EXPECT_EQ(host.calls("PluginNewInstance"), 0);
}

TEST_F(Date, OfAnyKindOfCocoaIsAHostDate)
{
    start();
    useTimeZone(@"UTC");
    NSCalendarDate *elsewhere = [NSCalendarDate dateWithYear:2012
                                                       month:2
                                                         day:29
                                                        hour:23
                                                      minute:0
                                                      second:0
                                                    timeZone:[NSTimeZone timeZoneForSecondsFromGMT:-7200]];
    expectMoment(toHost(elsewhere), {2012, 3, 1, 1, 0, 0});
}
