#include "host/plughost/text_value.h"

#include "host/plughost/errors.h"
#include "host/plughost/files.h"
#include "host/plughost/json_value.h"
#include "host/plughost/text_forms.h"
#include "host/runtime/text.h"

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
    using host::Passing;
    static const struct {
        Passing passing;
        bool isArray;
        const char *className;
        ValueType::Kind kind;
    } rows[] = {
        {Passing::Int32, false, nullptr, ValueType::Integer},
        {Passing::Single, false, nullptr, ValueType::Single},
        {Passing::Double, false, nullptr, ValueType::Double},
        {Passing::Boolean, false, nullptr, ValueType::Boolean},
        {Passing::String, false, nullptr, ValueType::Text},
        {Passing::String, true, nullptr, ValueType::StringArray},
        {Passing::Variant, false, nullptr, ValueType::Variant},
        {Passing::Variant, true, nullptr, ValueType::Array},
        {Passing::Object, false, "MemoryBlock", ValueType::Data},
        {Passing::Object, false, "FolderItem", ValueType::File},
        {Passing::Object, false, "Date", ValueType::Date},
        {Passing::Object, false, "Dictionary", ValueType::Dictionary},
    };
    for (const auto &row : rows)
        if (row.passing == type.passing && row.isArray == type.isArray &&
            (!row.className || host::equalIgnoringCase(type.name, row.className)))
            return row.kind;
    return std::nullopt;
}

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
        return singleOfText(text);
    case ValueType::Double:
        return doubleOfText(text);
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
    case Value::Kind::Nothing:
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
        return host::runtime::hexadecimalOf(value.bytes());
    if (value.isA("FolderItem"))
        return value.path();
    if (value.isA("Date"))
        return textOfDate(value);
    return jsonOf(value);
}

} // namespace plughost
