#include "host/plughost/text_value.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>

#include "host/plughost/errors.h"
#include "host/plughost/files.h"
#include "host/plughost/json_value.h"

namespace plughost {

using host::Value;

// clang-format off
const std::vector<ValueType> &valueTypes()
{
    static const std::vector<ValueType> types = {
        {"integer",     ValueType::Integer,     "integerForKey",     "setIntegerValue",     "-2147483648 to 2147483647"},
        {"single",      ValueType::Single,      "floatForKey",       "setFloatValue",       "0.1, 1e10, NaN, Infinity"},
        {"float",       ValueType::Single,      "floatForKey",       "setFloatValue",       "the same as single"},
        {"double",      ValueType::Double,      "doubleForKey",      "setDoubleValue",      "as single"},
        {"boolean",     ValueType::Boolean,     "boolForKey",        "setBoolValue",        "true or false, yes or no, 1 or 0"},
        {"string",      ValueType::Text,        "stringForKey",      "setStringValue",      "any text"},
        {"url",         ValueType::Text,        "URLForKey",         "setURLValue",         "an absolute URL"},
        {"data",        ValueType::Data,        "dataForKey",        "setDataValue",        "hexadecimal digits, or @FILE"},
        {"file",        ValueType::File,        "fileForKey",        "setFileValue",        "a path"},
        {"date",        ValueType::Date,        "variantForKey",     "setVariantValue",     "2012-02-29 or 2012-02-29T10:20:30, local time"},
        {"variant",     ValueType::Variant,     "variantForKey",     "setVariantValue",     "JSON, or @FILE with JSON"},
        {"dictionary",  ValueType::Dictionary,  "dictionaryForKey",  "setDictionaryValue",  "a JSON object, or @FILE"},
        {"array",       ValueType::Array,       "arrayForKey",       "setArrayValue",       "a JSON list, or @FILE"},
        {"stringarray", ValueType::StringArray, "stringArrayForKey", "setStringArrayValue", "a JSON list of texts, or @FILE"},
    };
    return types;
}
// clang-format on

const ValueType *valueTypeNamed(const std::string &name)
{
    for (const ValueType &type : valueTypes())
        if (name == type.name)
            return &type;
    return nullptr;
}

std::optional<ValueType::Kind> kindOf(const host::DeclaredType &type)
{
    static const struct {
        const char *className;
        ValueType::Kind kind;
    } classes[] = {{"MemoryBlock", ValueType::Data},
                   {"FolderItem", ValueType::File},
                   {"Date", ValueType::Date},
                   {"Dictionary", ValueType::Dictionary}};

    switch (type.passing) {
    case host::Passing::Int32:
        return type.isArray ? std::nullopt : std::optional(ValueType::Integer);
    case host::Passing::Single:
        return type.isArray ? std::nullopt : std::optional(ValueType::Single);
    case host::Passing::Double:
        return type.isArray ? std::nullopt : std::optional(ValueType::Double);
    case host::Passing::Boolean:
        return type.isArray ? std::nullopt : std::optional(ValueType::Boolean);
    case host::Passing::String:
        return type.isArray ? ValueType::StringArray : ValueType::Text;
    case host::Passing::Variant:
        return type.isArray ? ValueType::Array : ValueType::Variant;
    case host::Passing::Object:
        for (const auto &row : classes)
            if (!type.isArray && host::equalIgnoringCase(type.name, row.className))
                return row.kind;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

static std::string quoted(const std::string &text)
{
    return "\"" + text + "\"";
}

static std::string lowercase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(tolower(c)); });
    return text;
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

static int integerOfText(const std::string &text)
{
    return numberOfText<int>(text, "integer");
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

static bool booleanOfText(const std::string &text)
{
    std::string word = lowercase(text);
    if (word == "true" || word == "yes" || word == "1")
        return true;
    if (word == "false" || word == "no" || word == "0")
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

static int hexadecimalDigit(char c)
{
    const char digits[] = "0123456789abcdef";
    const char *found = c ? strchr(digits, tolower((unsigned char)c)) : nullptr;
    return found ? int(found - digits) : -1;
}

std::string bytesOfText(const std::string &text)
{
    for (size_t i = 0; i < text.size(); i++)
        if (hexadecimalDigit(text[i]) < 0)
            throw InputError("data: character " + std::to_string(i + 1) + " is no hexadecimal digit");
    if (text.size() % 2)
        throw InputError("data: an odd number of hexadecimal digits");
    std::string bytes;
    for (size_t i = 0; i < text.size(); i += 2)
        bytes += char(hexadecimalDigit(text[i]) * 16 + hexadecimalDigit(text[i + 1]));
    return bytes;
}

std::string textOfBytes(const std::string &bytes)
{
    std::string text;
    for (unsigned char byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
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
    auto part = [&](const char *name) { return int(date.property(name).int32()); };
    char buffer[96];
    snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", part("Year"), part("Month"), part("Day"),
             part("Hour"), part("Minute"), part("Second"));
    return buffer;
}

// --- By kind -------------------------------------------------------------------------------------------------------

// JSON or data on the command line, or the file named behind "@".
static bool isFileName(const std::string &text)
{
    return text.rfind('@', 0) == 0;
}

static Value arrayOfJson(const std::string &text, const std::string &what)
{
    Value value = valueOfJson(text, what);
    if (!value.isArray())
        throw InputError(what + ": expected a JSON list, found " + sortOf(value));
    return value;
}

static Value stringsOfJson(const std::string &text, const std::string &what)
{
    Value list = arrayOfJson(text, what);
    Value strings = Value::strings({});
    for (int32_t i = 0; i < list.count(); i++) {
        Value element = list.at(i);
        if (!element.isString())
            throw InputError(what + ": /" + std::to_string(i) + ": expected text, found " + sortOf(element));
        strings.append(element);
    }
    return strings;
}

static Value scalarOfText(ValueType::Kind kind, const std::string &text)
{
    switch (kind) {
    case ValueType::Integer:
        return integerOfText(text);
    case ValueType::Single:
        return numberOfText<float>(text, "single");
    case ValueType::Double:
        return numberOfText<double>(text, "double");
    case ValueType::Boolean:
        return booleanOfText(text);
    case ValueType::Data:
        return Value::memoryBlock(isFileName(text) ? readFile(text.substr(1)) : bytesOfText(text));
    case ValueType::File:
        return fileOfText(text);
    case ValueType::Date:
        return dateOfText(text);
    default:
        return text;
    }
}

Value valueOfText(ValueType::Kind kind, const std::string &text, const std::string &what)
{
    if (kind >= ValueType::Variant) {
        std::string json = isFileName(text) ? readFile(text.substr(1)) : text;
        std::string source = isFileName(text) ? text.substr(1) : what;
        switch (kind) {
        case ValueType::Dictionary:
            return dictionaryOfJson(json, source);
        case ValueType::Array:
            return arrayOfJson(json, source);
        case ValueType::StringArray:
            return stringsOfJson(json, source);
        default:
            return valueOfJson(json, source);
        }
    }
    try {
        return scalarOfText(kind, text);
    } catch (const InputError &error) {
        throw InputError(what + ": " + error.what());
    }
}

std::string textOfValue(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::Nil:
        return "nil";
    case Value::Kind::String:
        return value.text();
    case Value::Kind::Single:
        return textOfSingle(value.single());
    case Value::Kind::Double:
        return textOfDouble(value.number());
    default:
        break;
    }
    if (value.isA("MemoryBlock"))
        return textOfBytes(value.bytes());
    if (value.isA("FolderItem"))
        return value.path();
    if (value.isA("Date"))
        return textOfDate(value);
    return jsonOf(value);
}

} // namespace plughost
