// Dates as texts, in the form of the United States.
#include <ctime>

#include "host/script/library.h"

namespace script {

using host::Arguments;
using host::Value;

namespace {

using A = Arguments &;
using At = const Place &;

// The date's parts with a weekday and a day of the year.
tm partsOf(const Value &date)
{
    tm parts{};
    parts.tm_year = date.property("Year").int32() - 1900;
    parts.tm_mon = date.property("Month").int32() - 1;
    parts.tm_mday = date.property("Day").int32();
    parts.tm_hour = date.property("Hour").int32();
    parts.tm_min = date.property("Minute").int32();
    parts.tm_sec = date.property("Second").int32();
    tm whole = parts;
    timegm(&whole);
    return whole;
}

std::string formatted(const Value &date, const char *format)
{
    tm parts = partsOf(date);
    char text[80];
    strftime(text, sizeof text, format, &parts);
    return text;
}

// "%" in a format of the C library, which begins numbers with 0 where these texts do not: "-" leaves that out.
template <const char *const *Format>
Value text(A a, At)
{
    return Value(formatted(a[0], *Format));
}

const char *const kSQLDate = "%Y-%m-%d";
const char *const kShortDate = "%-m/%-d/%y";
const char *const kAbbreviatedDate = "%b %-d, %Y";
const char *const kLongDate = "%A, %B %-d, %Y";
const char *const kShortTime = "%-I:%M %p";
const char *const kLongTime = "%-I:%M:%S %p";

Value setSQLDate(A a, At place)
{
    hosted(place, [&] {
        a[0].setProperty("SQLDateTime", a[1].text());
        for (const char *part : {"Hour", "Minute", "Second"})
            a[0].setProperty(part, 0);
        return Value();
    });
    return Value();
}

} // namespace

LibraryRows dateRows()
{
    return {
        {"Date.AbbreviatedDate As String", text<&kAbbreviatedDate>},
        {"Date.DayOfWeek As Integer", [](A a, At) { return Value(partsOf(a[0]).tm_wday + 1); }},
        {"Date.DayOfYear As Integer", [](A a, At) { return Value(partsOf(a[0]).tm_yday + 1); }},
        {"Date.LongDate As String", text<&kLongDate>},
        {"Date.LongTime As String", text<&kLongTime>},
        {"Date.ShortDate As String", text<&kShortDate>},
        {"Date.ShortTime As String", text<&kShortTime>},
        {"Date.SQLDate As String", text<&kSQLDate>, setSQLDate},
        {"Date.WeekOfYear As Integer",
         [](A a, At) {
             tm parts = partsOf(a[0]);
             int firstWeekday = (parts.tm_wday - parts.tm_yday % 7 + 7) % 7;
             return Value((parts.tm_yday + firstWeekday) / 7 + 1);
         }},
    };
}

} // namespace script
