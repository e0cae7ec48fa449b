#include "host/script/types.h"

#include <cmath>
#include <cstring>

#include "host/host.h"
#include "host/runtime/arrays.h"
#include "host/runtime/variants.h"
#include "host/script/raised.h"

namespace script {

using host::Passing;
using host::Value;

namespace {

struct NamedPassing {
    Passing passing;
    const char *name;
};

const NamedPassing kNames[] = {
    {Passing::Int8, "Int8"},     {Passing::UInt8, "Byte"},        {Passing::Int16, "Int16"},
    {Passing::UInt16, "UInt16"}, {Passing::Int32, "Integer"},     {Passing::UInt32, "UInt32"},
    {Passing::Int64, "Int64"},   {Passing::UInt64, "UInt64"},     {Passing::Single, "Single"},
    {Passing::Double, "Double"}, {Passing::Currency, "Currency"}, {Passing::Boolean, "Boolean"},
    {Passing::Color, "Color"},   {Passing::String, "String"},     {Passing::Variant, "Variant"},
};

bool isPlain(const Type &type, Passing passing)
{
    return !type.isArray && type.passing == passing;
}

bool isSubclass(const std::string &name, const std::string &ancestor)
{
    const host::Host &host = host::Host::shared();
    std::string each = name;
    while (!each.empty()) {
        if (host::equalIgnoringCase(each, ancestor))
            return true;
        const host::ClassDescription *description = host.findClass(each);
        each = description ? description->superName : "";
    }
    return host::equalIgnoringCase(ancestor, "Object");
}

} // namespace

Type nothing()
{
    return {};
}

Type nilType()
{
    return {"Nil", Passing::Pointer, false};
}

Type typeNamed(const std::string &name, bool isArray)
{
    return host::declaredType(name, isArray);
}

Type classType(const std::string &name)
{
    return {name, Passing::Object, false};
}

Type elementOf(const Type &array)
{
    Type element = array;
    element.isArray = false;
    return element;
}

Type arrayOf(const Type &element)
{
    Type array = element;
    array.isArray = true;
    return array;
}

bool isNothing(const Type &type)
{
    return isPlain(type, Passing::Nothing);
}

bool isNil(const Type &type)
{
    return isPlain(type, Passing::Pointer);
}

bool isVariant(const Type &type)
{
    return isPlain(type, Passing::Variant);
}

bool isInteger(const Type &type)
{
    return !type.isArray && type.passing >= Passing::Int8 && type.passing <= Passing::UInt64;
}

bool isNumber(const Type &type)
{
    return !type.isArray && type.passing >= Passing::Int8 && type.passing <= Passing::Currency;
}

bool isString(const Type &type)
{
    return isPlain(type, Passing::String);
}

bool isBoolean(const Type &type)
{
    return isPlain(type, Passing::Boolean);
}

bool isObject(const Type &type)
{
    return isPlain(type, Passing::Object);
}

static bool isMemoryBlock(const Type &type)
{
    return isObject(type) && host::equalIgnoringCase(type.name, "MemoryBlock");
}

bool isDate(const Type &type)
{
    return isObject(type) && host::equalIgnoringCase(type.name, "Date");
}

std::string nameOf(const Type &type)
{
    std::string name = type.name;
    for (const NamedPassing &each : kNames)
        if (each.passing == type.passing)
            name = each.name;
    if (type.passing == Passing::Object)
        if (const host::ClassDescription *description = host::Host::shared().findClass(type.name))
            name = description->name;
    if (isNothing(type))
        name = "no value";
    return type.isArray ? name + "()" : name;
}

std::string articleAndName(const Type &type)
{
    std::string name = nameOf(type);
    if (isNil(type) || isNothing(type))
        return name;
    // NS… is spelled out when it is read.
    bool isVowel = strchr("AEIO", name[0]) || (name[0] == 'U' && name[1] == 'n') || name.rfind("NS", 0) == 0;
    return (isVowel ? "an " : "a ") + name;
}

Type typeOf(const Value &value)
{
    switch (value.kind()) {
    case Value::Kind::Nothing:
        return nilType();
    case Value::Kind::Int32:
        return typeNamed("Integer");
    case Value::Kind::UInt32:
        return typeNamed("UInt32");
    case Value::Kind::Int64:
        return typeNamed("Int64");
    case Value::Kind::UInt64:
        return typeNamed("UInt64");
    case Value::Kind::Single:
        return typeNamed("Single");
    case Value::Kind::Double:
        return typeNamed("Double");
    case Value::Kind::Currency:
        return typeNamed("Currency");
    case Value::Kind::Boolean:
        return typeNamed("Boolean");
    case Value::Kind::Color:
        return typeNamed("Color");
    case Value::Kind::String:
        return typeNamed("String");
    case Value::Kind::Object:
        return classType(value.className());
    case Value::Kind::Array:
        return typeNamed("Variant", true);
    }
    return nothing();
}

int fit(const Type &declared, const Type &given)
{
    if (isNothing(given) || isNothing(declared))
        return 0;
    if (isVariant(declared))
        return isVariant(given) ? 2 : 1;
    if (isVariant(given))
        return 1;
    if (declared.isArray || given.isArray) {
        bool isSame = declared.isArray && given.isArray && elementOf(declared) == elementOf(given);
        return isSame ? 2 : declared.isArray && isNil(given) ? 1 : 0;
    }
    if (isNumber(declared))
        return !isNumber(given) ? 0 : declared.passing == given.passing ? 2 : 1;
    if (isObject(declared)) {
        if (isNil(given) || (isMemoryBlock(declared) && isString(given)))
            return 1;
        return !isObject(given) || !isSubclass(given.name, declared.name) ? 0
               : host::equalIgnoringCase(given.name, declared.name)       ? 2
                                                                          : 1;
    }
    if (isString(declared) && isMemoryBlock(given))
        return 1;
    return declared.passing == given.passing ? 2 : 0;
}

Value initialValue(const Type &type)
{
    if (type.isArray)
        return Value::array(host::runtime::elementTypeOf(type));
    switch (type.passing) {
    case Passing::String:
        return Value::nullString();
    case Passing::Boolean:
        return Value(false);
    case Passing::Color:
        return Value::color(0);
    case Passing::Object:
    case Passing::Variant:
    case Passing::Pointer:
    case Passing::Nothing:
        return Value();
    default:
        return converted(Value(0), type, {});
    }
}

static Value asNumber(const Value &value, Passing passing)
{
    switch (passing) {
    case Passing::Int8:
        return Value(int(int8_t(host::runtime::variantAsInt64(value))));
    case Passing::UInt8:
        return Value(int(uint8_t(host::runtime::variantAsInt64(value))));
    case Passing::Int16:
        return Value(int(int16_t(host::runtime::variantAsInt64(value))));
    case Passing::UInt16:
        return Value(int(uint16_t(host::runtime::variantAsInt64(value))));
    case Passing::Int32:
        return Value(int32_t(host::runtime::variantAsInt64(value)));
    case Passing::UInt32:
        return Value(uint32_t(host::runtime::variantAsInt64(value)));
    case Passing::Int64:
        return Value(static_cast<long long>(host::runtime::variantAsInt64(value)));
    case Passing::UInt64:
        return Value(static_cast<unsigned long long>(host::runtime::variantAsInt64(value)));
    case Passing::Single:
        return Value(float(host::runtime::variantAsDouble(value)));
    case Passing::Currency:
        return Value::currency(host::runtime::variantAsDouble(value));
    default:
        return Value(host::runtime::variantAsDouble(value));
    }
}

Value converted(const Value &given, const Type &declared, const Place &place)
{
    if (isNothing(declared) || isNil(declared))
        return given;
    // A Variant object stands for its value.
    Value value = given.isObject() ? Value::borrow(given.handle()) : given;
    if (isVariant(declared))
        return value;
    if (isNumber(declared))
        return asNumber(value, declared.passing);
    // The bytes of a text are those of a MemoryBlock, and the other way round.
    if (isMemoryBlock(declared) && value.isString())
        return Value::memoryBlock(value.isNullHandle() ? "" : value.bytes());
    if (isString(declared) && value.isA("MemoryBlock"))
        return Value::string(value.bytes(), host::kUnknownEncoding);
    if (isString(declared))
        return value.isString() ? value : value.isNil() ? Value::nullString() : host::runtime::variantAsString(value);
    if (isBoolean(declared))
        return Value(host::runtime::variantAsBoolean(value));
    if (declared.passing == Passing::Color && !declared.isArray)
        return value.kind() == Value::Kind::Color ? value
                                                  : Value::color(uint32_t(host::runtime::variantAsInt64(value)));
    bool fits = value.isNil() ||
                (declared.isArray ? value.isArray() && value.elementType() == host::runtime::elementTypeOf(declared)
                                  : value.isObject() &&
                                        (host::equalIgnoringCase(declared.name, "Object") || value.isA(declared.name)));
    if (!fits) {
        std::string given = value.isArray() ? "an " + value.typeName() : articleAndName(typeOf(value));
        throw raised("TypeMismatchException", "This is " + given + ", not " + articleAndName(declared) + ".", place);
    }
    return value;
}

} // namespace script
