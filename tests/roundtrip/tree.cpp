#include "tests/roundtrip/tree.h"

#include <cmath>
#include <cstring>

namespace roundtrip {

using host::ElementType;
using host::Value;

namespace {

float singleOf(uint64_t bits)
{
    const uint32_t low = uint32_t(bits);
    float value;
    memcpy(&value, &low, sizeof value);
    return value;
}

double doubleOf(uint64_t bits)
{
    double value;
    memcpy(&value, &bits, sizeof value);
    return value;
}

template <class Real>
bool sameReal(Real a, Real b)
{
    return std::isnan(a) ? std::isnan(b) : memcmp(&a, &b, sizeof a) == 0;
}

std::string wrong(const std::string &path, const std::string &expected, const Value &readBack)
{
    return path + ": " + expected + " expected, not " + readBack.typeName() + " " + readBack.describe().substr(0, 200);
}

// Whole numbers come from the disk with 64 bits, but for a few small ones that the system shares.
std::string integerDifference(int64_t expected, const Value &readBack, const std::string &path)
{
    const bool isShared = expected >= -1 && expected <= 12;
    const bool right = readBack.kind() == (isShared ? Value::Kind::Int32 : Value::Kind::Int64);
    if (right && readBack.int64() == expected)
        return "";
    return wrong(path, std::string(isShared ? "an Int32 of " : "an Int64 of ") + std::to_string(expected), readBack);
}

} // namespace

Value Tree::value() const
{
    switch (kind) {
    case Kind::Nothing:
        return Value();
    case Kind::Boolean:
        return bits != 0;
    case Kind::Int32:
        return int32_t(bits);
    case Kind::UInt32:
        return uint32_t(bits);
    case Kind::Int64:
        return int64_t(bits);
    case Kind::UInt64:
        return bits;
    case Kind::Single:
        return singleOf(bits);
    case Kind::Double:
        return doubleOf(bits);
    case Kind::Currency:
        return Value::currency(real);
    case Kind::Color:
        return Value::color(uint32_t(bits));
    case Kind::Text:
        return Value(text);
    case Kind::Date:
        return Value::date(date[0], date[1], date[2], date[3], date[4], date[5]);
    case Kind::Bytes:
        return Value::memoryBlock(text);
    case Kind::File:
        return Value::folderItem("/tmp/" + text);
    case Kind::Array: {
        Value array = Value::array(elementType);
        for (const Tree &element : elements)
            array.append(element.value());
        return array;
    }
    case Kind::Dictionary: {
        Value dictionary = Value::dictionary();
        for (size_t i = 0; i < keys.size(); i++)
            dictionary.put(keys[i], elements[i].value());
        return dictionary;
    }
    }
    return Value();
}

bool Tree::hasForm() const
{
    const bool isFormless =
        kind == Kind::Nothing || (kind == Kind::Bytes && text.empty()) ||
        (kind == Kind::Array && (elementType == ElementType::Currency || elementType == ElementType::Color));
    return !isFormless;
}

bool Tree::isStorable() const
{
    if (!hasForm() || kind == Kind::File)
        return false;
    for (const Tree &element : elements)
        if (!element.isStorable())
            return false;
    return true;
}

std::string Tree::difference(const Value &readBack, const std::string &path) const
{
    switch (kind) {
    case Kind::Nothing:
    case Kind::File:
        return readBack.isNil() ? "" : wrong(path, "nil", readBack);
    case Kind::Boolean:
        if (readBack.kind() == Value::Kind::Boolean && readBack.boolean() == (bits != 0))
            return "";
        return wrong(path, bits ? "true" : "false", readBack);
    case Kind::Int32:
        return integerDifference(int32_t(bits), readBack, path);
    case Kind::UInt32:
        return integerDifference(uint32_t(bits), readBack, path);
    case Kind::Int64:
    case Kind::UInt64:
        return integerDifference(int64_t(bits), readBack, path);
    case Kind::Color:
        return integerDifference(int32_t(bits), readBack, path);
    case Kind::Single: // what is no number or infinite is a double always
        if (readBack.kind() == (std::isfinite(singleOf(bits)) ? Value::Kind::Single : Value::Kind::Double) &&
            sameReal<double>(readBack.number(), singleOf(bits)))
            return "";
        return wrong(path, "a Single of " + std::to_string(singleOf(bits)), readBack);
    case Kind::Double:
    case Kind::Currency: {
        const double expected = kind == Kind::Double ? doubleOf(bits) : real;
        if (readBack.kind() == Value::Kind::Double && sameReal(readBack.number(), expected))
            return "";
        return wrong(path, "a Double of " + std::to_string(expected), readBack);
    }
    case Kind::Text: {
        const std::string expected = text.substr(0, text.find('\0')); // text ends at its first zero
        if (readBack.isString() && readBack.text() == expected && readBack.isNullHandle() == expected.empty())
            return "";
        return wrong(path, Value(expected).describe(), readBack);
    }
    case Kind::Date:
        if (readBack.isA("Date") && readBack.equals(value()))
            return "";
        return wrong(path, value().describe(), readBack);
    case Kind::Bytes:
        if (text.empty())
            return readBack.isNil() ? "" : wrong(path, "nil", readBack);
        if (readBack.isA("MemoryBlock") && readBack.bytes() == text)
            return "";
        return wrong(path, std::to_string(text.size()) + " bytes", readBack);
    case Kind::Array:
        if (!readBack.isArray() || readBack.elementType() != ElementType::Object ||
            readBack.count() != int32_t(elements.size()))
            return wrong(path, "a Variant array of " + std::to_string(elements.size()), readBack);
        for (size_t i = 0; i < elements.size(); i++) {
            std::string found = elements[i].difference(readBack.at(int32_t(i)), path + "[" + std::to_string(i) + "]");
            if (!found.empty())
                return found;
        }
        return "";
    case Kind::Dictionary:
        if (!readBack.isA("Dictionary") || readBack.count() != int32_t(keys.size()))
            return wrong(path, "a Dictionary of " + std::to_string(keys.size()), readBack);
        for (size_t i = 0; i < keys.size(); i++) {
            if (!readBack.hasKey(keys[i]))
                return wrong(path, "a key " + Value(keys[i]).describe(), readBack);
            std::string found = elements[i].difference(readBack.lookup(keys[i]), path + "{" + std::to_string(i) + "}");
            if (!found.empty())
                return found;
        }
        return "";
    }
    return "";
}

} // namespace roundtrip
