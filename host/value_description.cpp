// Values in words, for people.
#include "host/runtime/dictionaries.h"
#include "host/runtime/text.h"
#include "host/runtime/variants.h"
#include "host/value_access.h"

namespace host {

using namespace runtime;

namespace {

constexpr int kDescribedDepth = 8;

std::string describeAt(const Value &value, int depth);

std::string describeArray(const Value &array, int depth)
{
    std::string text = "[";
    for (int32_t i = 0; i < array.count(); ++i)
        text += (i ? ", " : "") + describeAt(array.at(i), depth + 1);
    return text + "]";
}

std::string describeDictionary(const DictionaryPayload &dictionary, int depth)
{
    std::string text = "{";
    for (const DictionaryPayload::Entry &entry : dictionary.entries)
        text += (text.size() > 1 ? ", " : "") + describeAt(entry.key, depth + 1) + ": " +
                describeAt(entry.value, depth + 1);
    return text + "}";
}

std::string describeString(const Value &string)
{
    if (string.isNullHandle())
        return "\"\"";
    std::optional<std::string> text = convertText(string.bytes(), string.encoding(), kUTF8);
    std::string quoted = "\"";
    for (char c : text ? *text : string.bytes())
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + "\"";
}

std::string describeAt(const Value &value, int depth)
{
    if (depth > kDescribedDepth)
        return "...";
    switch (value.kind()) {
    case Value::Kind::Nothing:
        return "nil";
    case Value::Kind::String:
        return describeString(value);
    case Value::Kind::Array:
        return describeArray(value, depth);
    case Value::Kind::Object:
        break;
    default:
        return variantAsString(value).text();
    }
    if (auto *variant = payloadOf<VariantPayload>(value))
        return describeAt(variant->value, depth);
    if (auto *dictionary = payloadOf<DictionaryPayload>(value))
        return describeDictionary(*dictionary, depth);
    return find(value.handle())->what();
}

} // namespace

std::string Value::describe() const
{
    return describeAt(*this, 0);
}

} // namespace host
