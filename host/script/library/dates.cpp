// Dates as texts, in the form of the United States.
#include "host/runtime/dates.h"
#include "host/script/library.h"

namespace script::library {

namespace {

tm partsOf(const Value &date)
{
    return host::runtime::payloadOf<host::runtime::DatePayload>(date)->parts();
}

// "%" in a format of the C library, which begins numbers with 0 where these texts do not: "-" leaves that out.
Value formatted(const Value &date, const char *format)
{
    tm parts = partsOf(date);
    char text[80];
    strftime(text, sizeof text, format, &parts);
    return text;
}

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
        {"Date.AbbreviatedDate As String", [](A a, At) { return formatted(a[0], "%b %-d, %Y"); }},
        {"Date.DayOfWeek As Integer", [](A a, At) { return Value(partsOf(a[0]).tm_wday + 1); }},
        {"Date.DayOfYear As Integer", [](A a, At) { return Value(partsOf(a[0]).tm_yday + 1); }},
        {"Date.LongDate As String", [](A a, At) { return formatted(a[0], "%A, %B %-d, %Y"); }},
        {"Date.LongTime As String", [](A a, At) { return formatted(a[0], "%-I:%M:%S %p"); }},
        {"Date.ShortDate As String", [](A a, At) { return formatted(a[0], "%-m/%-d/%y"); }},
        {"Date.ShortTime As String", [](A a, At) { return formatted(a[0], "%-I:%M %p"); }},
        {"Date.SQLDate As String", [](A a, At) { return formatted(a[0], "%Y-%m-%d"); }, setSQLDate},
        {"Date.WeekOfYear As Integer",
         [](A a, At) {
             tm parts = partsOf(a[0]);
             int firstWeekday = (parts.tm_wday - parts.tm_yday % 7 + 7) % 7;
             return Value((parts.tm_yday + firstWeekday) / 7 + 1);
         }},
    };
}

} // namespace script::library
