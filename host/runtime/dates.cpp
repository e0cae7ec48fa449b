#include "host/runtime/dates.h"

#include <cmath>
#include <cstdio>
#include <ctime>

#include "host/exception.h"

namespace host::runtime {

namespace {

constexpr int64_t kSecondsPerDay = 86400;

// Days since 1 January 1970 of a day in the Gregorian calendar, whose year begins in March for this reckoning.
int64_t daysFromCivil(int64_t year, int64_t month, int64_t day)
{
    year += (month - 1) / 12;
    month = (month - 1) % 12 + 1;
    if (month < 1) {
        month += 12;
        --year;
    }
    if (month <= 2)
        --year;
    int64_t era = (year >= 0 ? year : year - 399) / 400;
    int64_t yearOfEra = year - era * 400;
    int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468 + day - 1;
}

const int64_t kEpochDays = daysFromCivil(1904, 1, 1);

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
    tm local;
    localtime_r(&now, &local);
    year = local.tm_year + 1900;
    month = local.tm_mon + 1;
    day = local.tm_mday;
    hour = local.tm_hour;
    minute = local.tm_min;
    second = local.tm_sec;
}

double DatePayload::totalSeconds() const
{
    int64_t days = daysFromCivil(year, month, day) - kEpochDays;
    return double(days * kSecondsPerDay + int64_t(hour) * 3600 + int64_t(minute) * 60 + second);
}

void DatePayload::setTotalSeconds(double seconds)
{
    int64_t whole = int64_t(std::floor(seconds));
    int64_t days = whole / kSecondsPerDay;
    int64_t rest = whole % kSecondsPerDay;
    if (rest < 0) {
        rest += kSecondsPerDay;
        --days;
    }
    days += kEpochDays + 719468;
    int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    int64_t dayOfEra = days - era * 146097;
    int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    int64_t marchMonth = (5 * dayOfYear + 2) / 153;
    day = int32_t(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
    month = int32_t(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
    year = int32_t(yearOfEra + era * 400 + (month <= 2));
    hour = int32_t(rest / 3600);
    minute = int32_t(rest / 60 % 60);
    second = int32_t(rest % 60);
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
