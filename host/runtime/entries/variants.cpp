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

void *variantFromString(void *string)
{
    bool isString = expect(string, HandleKind::String, "StringToVariant");
    return newCountedVariant(isString ? Value::borrowHandle(string) : Value::nullString());
}

template <class Number>
void *variantFrom(Number value)
{
    return newCountedVariant(value);
}

void *variantFromBoolean(Byte value)
{
    return newCountedVariant(value != 0);
}

void *variantToString(void *variant)
{
    return handOut(variantAsString(valueOf(variant, "VariantToString")));
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

} // namespace

EntryPoints variantEntryPoints()
{
    constexpr double kWithConversions = 2010.0; // before these, a Variant was read through its properties
    return {
        entry<variantFromString>("StringToVariant"),
        entry<variantFrom<int32_t>>("Int32ToVariant"),
        entry<variantFrom<uint32_t>>("UInt32ToVariant"),
        entry<variantFrom<int64_t>>("Int64ToVariant"),
        entry<variantFrom<uint64_t>>("UInt64ToVariant"),
        entry<variantFrom<float>>("SingleToVariant"),
        entry<variantFrom<double>>("DoubleToVariant"),
        entry<variantFromBoolean>("BooleanToVariant"),
        entry<variantToString>("VariantToString", kWithConversions),
        entry<variantToInt32>("VariantToInt32", kWithConversions),
        entry<variantToInt64>("VariantToInt64", kWithConversions),
        entry<variantToSingle>("VariantToSingle", kWithConversions),
        entry<variantToDouble>("VariantToDouble", kWithConversions),
        global<variantType>("VarType", "VarType(value As Variant) As Int32"),
    };
}

} // namespace host::runtime::entries
