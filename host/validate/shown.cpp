// Values in words.
#include <cstdio>

#include "host/runtime/text.h"
#include "host/validate/ground.h"

namespace validate {

using host::Value;

static std::string number(const char *kind, double value)
{
    char text[64];
    snprintf(text, sizeof text, "%s %.17g", kind, value);
    return text;
}

static std::string shownString(const Value &string)
{
    if (string.isNullHandle())
        return "null";
    std::string text = "\"" + string.bytes() + "\"";
    if (string.encoding() == host::kUTF8)
        return text;
    return text + (string.encoding() == host::kUnknownEncoding ? "?" : "#" + std::to_string(string.encoding()));
}

static std::string shownDictionary(const Value &dictionary)
{
    std::string text = "{";
    for (int32_t i = 0; i < dictionary.count(); i++) {
        Value key = dictionary.keyAt(i);
        text += (i ? ", " : "") + shown(key) + ": " + shown(dictionary.lookup(key));
    }
    return text + "}";
}

static std::string shownObject(const Value &object)
{
    if (object.isA("Dictionary"))
        return shownDictionary(object);
    if (object.isA("MemoryBlock"))
        return "<" + host::runtime::hexadecimalOf(object.bytes()) + ">";
    if (object.isA("FolderItem"))
        return "file " + object.path();
    if (object.isA("Date"))
        return "date " + object.property("SQLDateTime").text();
    return object.className();
}

std::string shown(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::Nothing:
        return "nil";
    case Value::Kind::Int32:
        return "int32 " + std::to_string(value.int32());
    case Value::Kind::UInt32:
        return "uint32 " + std::to_string(value.int64());
    case Value::Kind::Int64:
        return "int64 " + std::to_string(value.int64());
    case Value::Kind::UInt64:
        return "uint64 " + std::to_string(value.uint64());
    case Value::Kind::Single:
        return number("single", value.number());
    case Value::Kind::Double:
        return number("double", value.number());
    case Value::Kind::Currency:
        return number("currency", value.number());
    case Value::Kind::Boolean:
        return value.boolean() ? "true" : "false";
    case Value::Kind::Color:
        return "color " + std::to_string(value.colorValue());
    case Value::Kind::String:
        return shownString(value);
    case Value::Kind::Object:
        return shownObject(value);
    case Value::Kind::Array: {
        std::string text = "[";
        for (int32_t i = 0; i < value.count(); i++)
            text += (i ? ", " : "") + shown(value.at(i));
        return text + "]";
    }
    }
    return "?";
}

} // namespace validate
