#include "host/script/types.h"

#include <cmath>
#include <cstring>

#include "host/host.h"
#include "host/runtime/arrays.h"
#include "host/runtime/passing.h"
#include "host/runtime/variants.h"
#include "host/script/raised.h"

namespace script {

using host::Passing;
using host::Value;

static bool isSubclass(const std::string &name, const std::string &ancestor)
{
    using host::runtime::findClass;
    bool isKind = findClass(name) && findClass(ancestor) && findClass(name)->isKindOf(*findClass(ancestor));
    return isKind || host::equalIgnoringCase(name, ancestor) || host::equalIgnoringCase(ancestor, "Object");
}

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
    bool hasName = type.passing == Passing::Object || type.passing == Passing::Pointer;
    std::string name = hasName ? type.name : usualName(type.passing);
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
    if (value.isNil())
        return nilType();
    if (value.isObject())
        return classType(value.className());
    return value.isArray() ? typeNamed("Variant", true) : typeNamed(value.typeName());
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

// An integer keeps its low bits.
static Value asNumber(const Value &value, Passing passing)
{
    host::runtime::Slot slot;
    slot.uint64 = uint64_t(host::runtime::variantAsInt64(value));
    double real = host::runtime::variantAsDouble(value);
    return passing == Passing::Single     ? Value(float(real))
           : passing == Passing::Double   ? Value(real)
           : passing == Passing::Currency ? Value::currency(real)
                                          : host::runtime::factsOf(passing).take(slot);
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
