#include "host/plughost/text_forms.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "host/declaration.h"
#include "host/plughost/errors.h"
#include "host/runtime/text.h"

namespace plughost {

using host::Value;

static std::string quoted(const std::string &text)
{
    return "\"" + text + "\"";
}

// --- Numbers -------------------------------------------------------------------------------------------------------

// What std::from_chars reads, a plus sign, and the words for what is no number, in any case.
template <typename Number>
static Number numberOfText(const std::string &text, const std::string &type)
{
    const char *begin = text.data() + (text.rfind('+', 0) == 0 && text.rfind("+-", 0) != 0);
    const char *end = text.data() + text.size();
    Number value{};
    auto [stop, error] = std::from_chars(begin, end, value);
    if (error == std::errc::result_out_of_range && stop == end)
        throw InputError(quoted(text) + " is out of the range of type " + type);
    if (error != std::errc() || stop != end)
        throw InputError(quoted(text) + " is not of type " + type);
    return value;
}

int integerOfText(const std::string &text)
{
    return numberOfText<int>(text, "integer");
}

float singleOfText(const std::string &text)
{
    return numberOfText<float>(text, "single");
}

double doubleOfText(const std::string &text)
{
    return numberOfText<double>(text, "double");
}

template <typename Real>
static std::string textOfReal(Real value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value > 0 ? "Infinity" : "-Infinity";
    char buffer[64];
    auto [end, error] = std::to_chars(buffer, std::end(buffer), value);
    return std::string(buffer, end);
}

std::string textOfDouble(double value)
{
    return textOfReal(value);
}

std::string textOfSingle(float value)
{
    return textOfReal(value);
}

bool booleanOfText(const std::string &text)
{
    for (const char *word : {"true", "yes", "1"})
        if (host::equalIgnoringCase(text, word))
            return true;
    for (const char *word : {"false", "no", "0"})
        if (host::equalIgnoringCase(text, word))
            return false;
    throw InputError(quoted(text) + " is neither true nor false");
}

uint32_t colorOfText(const std::string &text)
{
    uint32_t rgb = 0;
    auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), rgb, 16);
    if (text.size() != 7 || text[0] != '#' || error != std::errc() || *end)
        throw InputError(quoted(text) + " is no colour, such as #FF8000");
    return rgb;
}

std::string textOfColor(uint32_t rgb)
{
    char buffer[16];
    snprintf(buffer, sizeof buffer, "#%06X", unsigned(rgb & 0xFFFFFF));
    return buffer;
}

// --- Data, files, dates --------------------------------------------------------------------------------------------

std::string bytesOfText(const std::string &text)
{
    for (size_t i = 0; i < text.size(); i++)
        if (!isxdigit(static_cast<unsigned char>(text[i])))
            throw InputError("data: character " + std::to_string(i + 1) + " is no hexadecimal digit");
    if (text.size() % 2)
        throw InputError("data: an odd number of hexadecimal digits");
    return host::runtime::bytesOfHexadecimal(text);
}

Value fileOfText(const std::string &path)
{
    if (path.empty())
        throw InputError("a file's path cannot be empty");
    std::filesystem::path absolute = std::filesystem::absolute(path).lexically_normal();
    std::error_code ignored;
    std::filesystem::path folder = absolute.parent_path();
    if (!std::filesystem::is_directory(folder, ignored))
        throw InputError(quoted(path) + " lies in no existing folder");
    return Value::folderItem(absolute);
}

static int daysOfMonth(int year, int month)
{
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

Value dateOfText(const std::string &text)
{
    int year, month, day, hour = 0, minute = 0, second = 0, length = 0;
    bool fixedWidth = text.size() == 10 || text.size() == 19;
    bool read = sscanf(text.c_str(), "%4d-%2d-%2d%n", &year, &month, &day, &length) == 3;
    if (read && text.size() == 19)
        read = (text[10] == 'T' || text[10] == ' ') &&
               sscanf(text.c_str() + 11, "%2d:%2d:%2d%n", &hour, &minute, &second, &length) == 3;
    if (!read || !fixedWidth || length != (text.size() == 10 ? 10 : 8))
        throw InputError(quoted(text) + " is no date, such as 2012-02-29 or 2012-02-29T10:20:30 (local time, no zone)");
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > daysOfMonth(year, month) || hour < 0 || hour > 23 ||
        minute < 0 || minute > 59 || second < 0 || second > 59)
        throw InputError(quoted(text) + " is not in the calendar");
    return Value::date(year, month, day, hour, minute, second);
}

std::string textOfDate(const Value &date)
{
    std::string text = date.property("SQLDateTime").text();
    return text.replace(text.find(' '), 1, "T");
}

} // namespace plughost
