#include "host/plughost/json_value.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "host/plughost/errors.h"
#include "host/plughost/strict_json.h"
#include "host/plughost/text_forms.h"
#include "host/runtime/text.h"

namespace plughost {

using host::Value;

// Deeper values would exhaust the stack of the conversions.
static const int kDeepest = 5000;

static Json tagged(const char *tag, Json value)
{
    return Json{{tag, std::move(value)}};
}

// --- Value to JSON -------------------------------------------------------------------------------------------------

static Json jsonOfReal(double value, const char *tag, bool alwaysTagged)
{
    if (!std::isfinite(value))
        return tagged(tag, textOfDouble(value));
    return alwaysTagged ? tagged(tag, value) : Json(value);
}

// The shortest decimal number that gives the same Single again.
static Json jsonOfSingle(float value)
{
    if (!std::isfinite(value))
        return jsonOfReal(value, "$single", true);
    double shortest = std::stod(textOfSingle(value));
    return tagged("$single", float(shortest) == value ? shortest : double(value));
}

static Json jsonOfUInt64(uint64_t value)
{
    bool sizeTells = value > uint64_t(std::numeric_limits<int64_t>::max());
    return sizeTells ? Json(value) : tagged("$uint64", value);
}

static Json jsonOfValue(const Value &value);

static bool isPlainKey(const Value &key)
{
    return key.isString() && key.text().rfind('$', 0) != 0;
}

static Json jsonOfDictionary(const Value &dictionary)
{
    Json object = Json::object();
    std::vector<std::pair<std::string, Json>> pairs;
    bool plain = true;
    for (int32_t i = 0; i < dictionary.count(); i++) {
        Value key = dictionary.keyAt(i);
        Json value = jsonOfValue(dictionary.lookup(key));
        plain = plain && isPlainKey(key);
        if (plain)
            object[key.text()] = value;
        Json jsonKey = jsonOfValue(key);
        pairs.emplace_back(jsonKey.dump(), Json::array({jsonKey, std::move(value)}));
    }
    if (plain)
        return object;
    std::sort(pairs.begin(), pairs.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    Json list = Json::array();
    for (auto &pair : pairs)
        list.push_back(std::move(pair.second));
    return tagged("$dictionary", list);
}

static Json jsonOfArray(const Value &array)
{
    Json list = Json::array();
    for (int32_t i = 0; i < array.count(); i++)
        list.push_back(jsonOfValue(array.at(i)));
    return list;
}

static Json jsonOfObject(const Value &object)
{
    if (object.isA("Dictionary"))
        return jsonOfDictionary(object);
    if (object.isA("Date"))
        return tagged("$date", textOfDate(object));
    if (object.isA("MemoryBlock"))
        return tagged("$data", host::runtime::hexadecimalOf(object.bytes()));
    if (object.isA("FolderItem"))
        return tagged("$file", object.path());
    return tagged("$object", object.className());
}

static Json jsonOfValue(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::Nothing:
        return nullptr;
    case Value::Kind::Int32:
        return value.int32();
    case Value::Kind::UInt32:
        return tagged("$uint32", value.uint64());
    case Value::Kind::Int64:
        return Json(value.int64());
    case Value::Kind::UInt64:
        return jsonOfUInt64(value.uint64());
    case Value::Kind::Single:
        return jsonOfSingle(value.single());
    case Value::Kind::Double:
        return jsonOfReal(value.number(), "$double", false);
    case Value::Kind::Currency:
        return tagged("$currency", value.number());
    case Value::Kind::Boolean:
        return value.boolean();
    case Value::Kind::Color:
        return tagged("$color", textOfColor(value.colorValue()));
    case Value::Kind::String:
        return value.text();
    case Value::Kind::Array:
        return jsonOfArray(value);
    case Value::Kind::Object:
        return jsonOfObject(value);
    }
    return nullptr;
}

std::string jsonOf(const Value &value, JsonLayout layout)
{
    return jsonOfValue(value).dump(layout == JsonLayout::Indented ? 2 : -1, ' ', false, Json::error_handler_t::replace);
}

// --- JSON to Value -------------------------------------------------------------------------------------------------

static std::string textIn(const Json &json)
{
    if (!json.is_string())
        throw InputError("expected text, found " + json.dump());
    return json.get<std::string>();
}

static double realIn(const Json &json)
{
    if (json.is_string())
        return doubleOfText(json.get<std::string>());
    if (!json.is_number())
        throw InputError("expected a number, found " + json.dump());
    return json.get<double>();
}

template <typename Integer>
static Integer integerIn(const Json &json)
{
    bool fits = json.is_number_unsigned()
                    ? json.get<uint64_t>() <= uint64_t(std::numeric_limits<Integer>::max())
                    : json.is_number_integer() && std::is_signed<Integer>::value; // a negative one
    if (!fits)
        throw InputError("expected an integer of this kind, found " + json.dump());
    return json.get<Integer>();
}

static float singleIn(const Json &json)
{
    double value = realIn(json);
    if (std::isfinite(value) && !std::isfinite(float(value)))
        throw InputError(json.dump() + " does not fit a Single");
    return float(value);
}

static Value currencyIn(const Json &json)
{
    double value = realIn(json);
    if (!(std::fabs(value) < 9.2e14))
        throw InputError(json.dump() + " does not fit a Currency");
    return Value::currency(value);
}

static Value pairsIn(const Json &json, int depth);

// One row for each tag that can be read.
struct Tag {
    const char *name;
    Value (*value)(const Json &json, int depth);
};

static const Tag kTags[] = {
    {"$int64", [](const Json &json, int) { return Value((long long)integerIn<int64_t>(json)); }},
    {"$uint32", [](const Json &json, int) { return Value((unsigned)integerIn<uint32_t>(json)); }},
    {"$uint64", [](const Json &json, int) { return Value((unsigned long long)integerIn<uint64_t>(json)); }},
    {"$single", [](const Json &json, int) { return Value(singleIn(json)); }},
    {"$double", [](const Json &json, int) { return Value(realIn(json)); }},
    {"$currency", [](const Json &json, int) { return currencyIn(json); }},
    {"$color", [](const Json &json, int) { return Value::color(colorOfText(textIn(json))); }},
    {"$date", [](const Json &json, int) { return dateOfText(textIn(json)); }},
    {"$data", [](const Json &json, int) { return Value::memoryBlock(bytesOfText(textIn(json))); }},
    {"$file", [](const Json &json, int) { return fileOfText(textIn(json)); }},
    {"$dictionary", pairsIn},
};

static Value valueOf(const Json &json, int depth);

// The same as valueOf; a message says at which place of its parent it happened.
static Value valueAt(const std::string &place, const Json &json, int depth)
{
    try {
        return valueOf(json, depth);
    } catch (const InputError &error) {
        std::string message = error.what();
        bool hasPlace = message.rfind('/', 0) == 0;
        throw InputError("/" + place + (hasPlace ? "" : ": ") + message);
    }
}

static Value pairsIn(const Json &json, int depth)
{
    if (!json.is_array())
        throw InputError("expected a list of [key, value], found " + json.dump());
    Value dictionary = Value::dictionary();
    for (size_t i = 0; i < json.size(); i++) {
        const Json &pair = json[i];
        if (!pair.is_array() || pair.size() != 2)
            throw InputError("expected [key, value], found " + pair.dump());
        std::string place = "$dictionary/" + std::to_string(i);
        Value key = valueAt(place + "/0", pair[0], depth + 1);
        if (key.isNil())
            throw InputError("a key of a Dictionary cannot be null");
        if (dictionary.hasKey(key))
            throw InputError("the key " + pair[0].dump() + " stands twice");
        dictionary.put(key, valueAt(place + "/1", pair[1], depth + 1));
    }
    return dictionary;
}

static Value taggedValue(const std::string &name, const Json &object, int depth)
{
    if (object.size() != 1)
        throw InputError("the tag \"" + name + "\" must be the only key of its object");
    for (const Tag &tag : kTags)
        if (name == tag.name)
            return tag.value(object.begin().value(), depth);
    throw InputError("\"" + name + "\" is no tag that can be read");
}

static Value objectValue(const Json &object, int depth)
{
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        if (entry.key().rfind('$', 0) == 0)
            return taggedValue(entry.key(), object, depth);
    Value dictionary = Value::dictionary();
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        dictionary.put(entry.key(), valueAt(entry.key(), entry.value(), depth + 1));
    return dictionary;
}

static Value listValue(const Json &list, int depth)
{
    std::vector<Value> elements;
    for (size_t i = 0; i < list.size(); i++)
        elements.push_back(valueAt(std::to_string(i), list[i], depth + 1));
    return Value::variants(elements);
}

static Value integerValue(const Json &json)
{
    if (json.is_number_unsigned() && json.get<uint64_t>() > uint64_t(std::numeric_limits<int64_t>::max()))
        return (unsigned long long)json.get<uint64_t>();
    int64_t value = json.get<int64_t>();
    if (value < std::numeric_limits<int32_t>::min() || value > std::numeric_limits<int32_t>::max())
        return (long long)value;
    return int(value);
}

static Value valueOf(const Json &json, int depth)
{
    if (depth > kDeepest)
        throw InputError("nested deeper than " + std::to_string(kDeepest) + " levels");
    switch (json.type()) {
    case Json::value_t::boolean:
        return json.get<bool>();
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned:
        return integerValue(json);
    case Json::value_t::number_float:
        return json.get<double>();
    case Json::value_t::string:
        return json.get<std::string>();
    case Json::value_t::array:
        return listValue(json, depth);
    case Json::value_t::object:
        return objectValue(json, depth);
    default:
        return nullptr;
    }
}

Value valueOfJson(const std::string &text, const std::string &what)
{
    try {
        return valueOf(parseStrictJson(text), 0);
    } catch (const InputError &error) {
        throw InputError(what + ": " + error.what());
    }
}

std::string sortOf(const Value &value)
{
    if (value.isArray())
        return "a list";
    if (value.isA("Dictionary"))
        return "an object";
    return value.isString() ? "text" : value.typeName();
}

Value dictionaryOfJson(const std::string &text, const std::string &what)
{
    Value value = valueOfJson(text, what);
    if (!value.isA("Dictionary"))
        throw InputError(what + ": expected a JSON object, found " + sortOf(value));
    return value;
}

} // namespace plughost
