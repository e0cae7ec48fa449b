#include "host/runtime/variants.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "host/runtime/arrays.h"

namespace host::runtime {

namespace {

const Class &variantClass()
{
    static const Class *variant = findClass("Variant");
    return *variant;
}

// A real number as an integer, cut towards zero and to the ends of the range; 0 for not-a-number.
int64_t cut(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 9223372036854775808.0)
        return std::numeric_limits<int64_t>::max();
    if (value < -9223372036854775808.0)
        return std::numeric_limits<int64_t>::min();
    return int64_t(value);
}

std::string numberText(double value, int digits)
{
    char text[40];
    snprintf(text, sizeof text, "%.*g", digits, value);
    return text;
}

Value objectOrNil(const Value &value)
{
    return value.isObject() || value.isArray() ? value : Value();
}

const VariantProperty kProperties[] = {
    {"Type", Passing::Int32, [](const Value &value) { return Value(value.varType()); }},
    {"Int32Value", Passing::Int32, [](const Value &value) { return Value(variantAsInt32(value)); }},
    {"IntegerValue", Passing::Int32, [](const Value &value) { return Value(variantAsInt32(value)); }},
    {"UInt32Value", Passing::UInt32, [](const Value &value) { return Value(uint32_t(variantAsInt64(value))); }},
    {"LongValue", Passing::Int64, [](const Value &value) { return Value(variantAsInt64(value)); }},
    {"Int64Value", Passing::Int64, [](const Value &value) { return Value(variantAsInt64(value)); }},
    {"UInt64Value", Passing::UInt64, [](const Value &value) { return Value(uint64_t(variantAsInt64(value))); }},
    {"SingleValue", Passing::Single, [](const Value &value) { return Value(float(variantAsDouble(value))); }},
    {"DoubleValue", Passing::Double, [](const Value &value) { return Value(variantAsDouble(value)); }},
    {"CurrencyValue", Passing::Currency, [](const Value &value) { return Value::currency(variantAsDouble(value)); }},
    {"BooleanValue", Passing::Boolean, [](const Value &value) { return Value(variantAsBoolean(value)); }},
    {"ColorValue", Passing::Color, [](const Value &value) { return Value::color(uint32_t(variantAsInt64(value))); }},
    {"StringValue", Passing::String, [](const Value &value) { return variantAsString(value); }},
    {"DateValue", Passing::Object, [](const Value &value) { return value.isA("Date") ? value : Value(); }},
    {"ObjectValue", Passing::Object, [](const Value &value) { return objectOrNil(value); }},
};

} // namespace

Value valueOfVariant(const void *record)
{
    Value handle = Value::borrowHandle(const_cast<void *>(record));
    if (auto *variant = payloadOf<VariantPayload>(handle))
        return variant->value;
    return handle;
}

ObjectHandle *newVariant(const Value &value)
{
    auto *variant = new ObjectHandle(variantClass());
    variant->payload = std::make_unique<VariantPayload>(value);
    return variant;
}

void *handOut(const Value &value)
{
    if (Handle *handle = find(value.handle()))
        lock(*handle);
    return value.handle();
}

void *handOutVariant(const Value &value)
{
    return handOut(value.boxed());
}

int32_t variantAsInt32(const Value &value)
{
    return int32_t(variantAsInt64(value));
}

int64_t variantAsInt64(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::UInt64:
        return int64_t(value.uint64());
    case Value::Kind::Int32:
    case Value::Kind::UInt32:
    case Value::Kind::Int64:
        return value.int64();
    case Value::Kind::Single:
    case Value::Kind::Double:
    case Value::Kind::Currency:
        return cut(value.number());
    case Value::Kind::Boolean:
        return value.boolean();
    case Value::Kind::Color:
        return value.colorValue();
    case Value::Kind::String:
        return cut(strtod(value.text().c_str(), nullptr));
    case Value::Kind::Nothing:
    case Value::Kind::Object:
    case Value::Kind::Array:
        return 0;
    }
    return 0;
}

double variantAsDouble(const Value &value)
{
    if (value.isNumber())
        return value.number();
    if (value.isString())
        return strtod(value.text().c_str(), nullptr);
    return double(variantAsInt64(value));
}

bool variantAsBoolean(const Value &value)
{
    if (value.isString())
        return equalIgnoringCase(value.text(), "true");
    return variantAsDouble(value) != 0;
}

Value variantAsString(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::String:
        return value;
    case Value::Kind::Int32:
    case Value::Kind::UInt32:
    case Value::Kind::Int64:
        return std::to_string(value.int64());
    case Value::Kind::UInt64:
        return std::to_string(value.uint64());
    case Value::Kind::Single:
        return numberText(value.number(), 7);
    case Value::Kind::Double:
    case Value::Kind::Currency:
        return numberText(value.number(), 15);
    case Value::Kind::Boolean:
        return value.boolean() ? "true" : "false";
    case Value::Kind::Color: {
        char text[16];
        snprintf(text, sizeof text, "&h%08X", value.colorValue());
        return text;
    }
    case Value::Kind::Nothing:
    case Value::Kind::Object:
    case Value::Kind::Array:
        return Value::nullString();
    }
    return Value::nullString();
}

const VariantProperty *findVariantProperty(const std::string &name)
{
    for (const VariantProperty &property : kProperties)
        if (equalIgnoringCase(property.name, name))
            return &property;
    return nullptr;
}

void addVariantClass()
{
    addOwnClass("Variant", "", [] { return std::make_unique<VariantPayload>(Value()); });
}

} // namespace host::runtime
