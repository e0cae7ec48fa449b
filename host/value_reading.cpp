// The contents of a single value: numbers, texts, equality.
#include "host/exception.h"
#include "host/runtime/dictionaries.h"
#include "host/runtime/memory_blocks.h"
#include "host/runtime/text.h"
#include "host/value_access.h"

#include <cmath>
#include <limits>

namespace host {

using namespace runtime;

bool Value::boolean() const
{
    if (_kind != Kind::Boolean)
        wrongKind(*this, "a boolean");
    return _value.integer != 0;
}

int32_t Value::int32() const
{
    int64_t wide = int64();
    if (wide < std::numeric_limits<int32_t>::min() || wide > std::numeric_limits<int32_t>::max())
        throw TypeError(std::to_string(wide) + " does not fit an integer of 32 bits");
    return int32_t(wide);
}

int64_t Value::int64() const
{
    switch (_kind) {
    case Kind::Int32:
    case Kind::UInt32:
    case Kind::Int64:
        return _value.integer;
    case Kind::UInt64:
        if (_value.integer < 0)
            throw TypeError(std::to_string(uint64()) + " does not fit a signed integer of 64 bits");
        return _value.integer;
    case Kind::Single:
    case Kind::Double:
    case Kind::Currency:
        if (_value.real != std::floor(_value.real) || std::fabs(_value.real) >= 9223372036854775808.0)
            throw TypeError(describe() + " is no whole number of 64 bits");
        return int64_t(_value.real);
    default:
        wrongKind(*this, "a number");
    }
}

uint64_t Value::uint64() const
{
    if (_kind == Kind::UInt64)
        return uint64_t(_value.integer);
    int64_t value = int64();
    if (value < 0)
        throw TypeError(std::to_string(value) + " is negative");
    return uint64_t(value);
}

float Value::single() const
{
    return float(number());
}

double Value::number() const
{
    if (_kind == Kind::Single || _kind == Kind::Double || _kind == Kind::Currency)
        return _value.real;
    return _kind == Kind::UInt64 ? double(uint64()) : double(int64());
}

uint32_t Value::colorValue() const
{
    if (_kind != Kind::Color)
        wrongKind(*this, "a colour");
    return uint32_t(_value.integer);
}

std::string Value::text() const
{
    StringHandle *string = stringOf(*this);
    if (!string)
        return {};
    std::optional<std::string> text = convertText(string->bytes(), string->encoding(), kUTF8);
    return text ? *text : std::string(string->bytes());
}

std::string Value::bytes() const
{
    if (auto *block = payloadOf<MemoryBlockPayload>(*this))
        return std::string(block->bytes());
    StringHandle *string = stringOf(*this);
    return string ? std::string(string->bytes()) : std::string();
}

uint32_t Value::encoding() const
{
    StringHandle *string = stringOf(*this);
    return string ? string->encoding() : kUnknownEncoding;
}

bool Value::equals(const Value &other) const
{
    if (isNumber() && other.isNumber()) {
        bool reals = (_kind >= Kind::Single) || (other._kind >= Kind::Single);
        return reals ? number() == other.number() : keyText(*this) == keyText(other);
    }
    return keyText(*this) == keyText(other);
}

} // namespace host
