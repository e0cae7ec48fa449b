#include "host/runtime/variants.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/state.h"

namespace host::runtime::entries {

namespace {

void *newCountedVariant(const Value &value)
{
    return creationFails(Creation::Variant) ? nullptr : newVariant(value)->record;
}

Value valueOf(void *variant, const char *user)
{
    Handle *handle = find(variant);
    if (handle && handle->kind == HandleKind::Array)
        return valueOfVariant(variant);
    return expectObject(variant, user) ? valueOfVariant(variant) : Value();
}

} // namespace

void *variantFromString(void *string)
{
    bool isString = expect(string, HandleKind::String, "StringToVariant");
    return newCountedVariant(isString ? Value::borrowHandle(string) : Value::nullString());
}

void *variantFromInt32(int32_t value)
{
    return newCountedVariant(value);
}

void *variantFromUInt32(uint32_t value)
{
    return newCountedVariant(value);
}

void *variantFromInt64(int64_t value)
{
    return newCountedVariant(value);
}

void *variantFromUInt64(uint64_t value)
{
    return newCountedVariant(value);
}

void *variantFromSingle(float value)
{
    return newCountedVariant(value);
}

void *variantFromDouble(double value)
{
    return newCountedVariant(value);
}

void *variantFromBoolean(Byte value)
{
    return newCountedVariant(value != 0);
}

void *variantToString(void *variant)
{
    Value string = variantAsString(valueOf(variant, "VariantToString"));
    if (string.handle())
        lock(*find(string.handle()));
    return string.handle();
}

int32_t variantToInt32(void *variant)
{
    return variantAsInt32(valueOf(variant, "VariantToInt32"));
}

int64_t variantToInt64(void *variant)
{
    return variantAsInt64(valueOf(variant, "VariantToInt64"));
}

float variantToSingle(void *variant)
{
    return float(variantAsDouble(valueOf(variant, "VariantToSingle")));
}

double variantToDouble(void *variant)
{
    return variantAsDouble(valueOf(variant, "VariantToDouble"));
}

int32_t variantType(void *variant)
{
    return valueOf(variant, "VarType").varType();
}

} // namespace host::runtime::entries
