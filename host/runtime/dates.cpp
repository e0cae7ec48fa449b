// The C library's calendar, far beyond 2038.
#define _FILE_OFFSET_BITS 64
#define _TIME_BITS 64

#include "host/runtime/dates.h"

#include <cmath>
#include <cstdio>
#include <ctime>

#include "host/exception.h"

namespace host::runtime {

static_assert(sizeof(time_t) == sizeof(int64_t));

namespace {

constexpr double kFrom1904To1970 = 2082844800; // seconds

struct Field {
    const char *name;
    int32_t DatePayload::*member;
};

const Field kFields[] = {
    {"Year", &DatePayload::year}, {"Month", &DatePayload::month},   {"Day", &DatePayload::day},
    {"Hour", &DatePayload::hour}, {"Minute", &DatePayload::minute}, {"Second", &DatePayload::second},
};

DatePayload &dateOf(ObjectHandle &object)
{
    return *payloadOf<DatePayload>(&object);
}

} // namespace

DatePayload::DatePayload()
{
    time_t now = time(nullptr);
    tm parts;
    localtime_r(&now, &parts);
    set(parts);
}

void DatePayload::set(const tm &parts)
{
    year = parts.tm_year + 1900;
    month = parts.tm_mon + 1;
    day = parts.tm_mday;
    hour = parts.tm_hour;
    minute = parts.tm_min;
    second = parts.tm_sec;
}

tm DatePayload::parts() const
{
    tm parts{};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    timegm(&parts);
    return parts;
}

double DatePayload::totalSeconds() const
{
    tm whole = parts();
    return double(timegm(&whole)) + kFrom1904To1970;
}

void DatePayload::setTotalSeconds(double seconds)
{
    auto since1970 = time_t(std::floor(seconds) - kFrom1904To1970);
    tm parts;
    if (gmtime_r(&since1970, &parts))
        set(parts);
}

std::string DatePayload::describe() const
{
    DatePayload shown = *this;
    shown.normalise();
    char text[80];
    snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", shown.year, shown.month, shown.day, shown.hour,
             shown.minute, shown.second);
    return text;
}

void addDateClass()
{
    Class &date = addOwnClass("Date", "", [] { return std::make_unique<DatePayload>(); });
    for (const Field &field : kFields) {
        auto member = field.member;
        date.properties.push_back(
            {field.name, Passing::Int32, [member](ObjectHandle &object) { return Value(dateOf(object).get(member)); },
             [member](ObjectHandle &object, const Value &value) { dateOf(object).set(member, value.int32()); }});
    }
    date.properties.push_back(
        {"TotalSeconds", Passing::Double, [](ObjectHandle &object) { return Value(dateOf(object).totalSeconds()); },
         [](ObjectHandle &object, const Value &value) { dateOf(object).setTotalSeconds(value.number()); }});
    date.properties.push_back({"SQLDateTime", Passing::String,
                               [](ObjectHandle &object) { return Value(dateOf(object).describe()); },
                               [](ObjectHandle &object, const Value &value) {
                                   DatePayload &d = dateOf(object);
                                   if (sscanf(value.text().c_str(), "%d-%d-%d %d:%d:%d", &d.year, &d.month, &d.day,
                                              &d.hour, &d.minute, &d.second) < 3)
                                       throw TypeError("\"" + value.text() + "\" is no date and time");
                               }});
}

} // namespace host::runtime
