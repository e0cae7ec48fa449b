// Variants. A Variant that holds an object or an array is that handle; every other one is an object of the class
// "Variant" that keeps a value.
#pragma once

#include "host/runtime/objects.h"

namespace host::runtime {

struct VariantPayload : Payload {
    explicit VariantPayload(Value value) : value(std::move(value)) {}
    std::string describe() const override { return value.describe(); }
    Value value; // a scalar or a string, the null string among them; nil in a Variant made by its class name
};

// What stands behind any handle that is a Variant: the value kept, or the object, array or string itself. Nil for null.
Value valueOfVariant(const void *record);

// A new Variant object with one lock for the caller.
ObjectHandle *newVariant(const Value &value);

// What a plug-in gets for a value: its handle with one lock for the plug-in. In the place of a Variant, a scalar or a
// string becomes a new one.
void *handOut(const Value &value);
void *handOutVariant(const Value &value);

// The conversions that every Variant offers, whatever it holds; nothing for a value that cannot be converted.
int32_t variantAsInt32(const Value &value);
int64_t variantAsInt64(const Value &value);
double variantAsDouble(const Value &value);
bool variantAsBoolean(const Value &value);
Value variantAsString(const Value &value); // a string, null for nil

// The properties of all Variants ("Int32Value", "Type"), for any object or array.
struct VariantProperty {
    const char *name;
    Passing type;
    Value (*get)(const Value &value);
};
const VariantProperty *findVariantProperty(const std::string &name);

} // namespace host::runtime
