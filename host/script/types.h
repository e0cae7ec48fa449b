// Types of the script language, which are those of the host's declarations.
#pragma once

#include "host/script/syntax.h"

namespace script {

// No value at all; the type of Nil, which fits every object, array and Variant.
Type nothing();
Type nilType();
// A type of the language by name, any case; an unknown name is a class. Byte, Int8… are what the declarations name so.
Type typeNamed(const std::string &name, bool isArray = false);
Type classType(const std::string &name);
Type elementOf(const Type &array);
Type arrayOf(const Type &element);

// Not an array, and of one of these.
template <host::Passing first, host::Passing last = first>
bool isOf(const Type &type)
{
    return !type.isArray && type.passing >= first && type.passing <= last;
}
constexpr auto isNothing = isOf<host::Passing::Nothing>;
constexpr auto isNil = isOf<host::Passing::Pointer>;
constexpr auto isVariant = isOf<host::Passing::Variant>;
constexpr auto isInteger = isOf<host::Passing::Int8, host::Passing::UInt64>;
constexpr auto isNumber = isOf<host::Passing::Int8, host::Passing::Currency>;
constexpr auto isString = isOf<host::Passing::String>;
constexpr auto isBoolean = isOf<host::Passing::Boolean>;
constexpr auto isObject = isOf<host::Passing::Object>; // of a class
bool isDate(const Type &type);

// "Integer", "String()", "NSUserDefaultsKTZ": the language's own spelling.
std::string nameOf(const Type &type);
// The same with an article: "an Integer".
std::string articleAndName(const Type &type);

// The type of a value that is known before the program runs.
Type typeOf(const host::Value &value);

// How well a value of a type fits where another is declared: 2 exactly, 1 converted or perhaps (a Variant), 0 not.
int fit(const Type &declared, const Type &given);

// Whether < and its like can stand between values of the two.
bool canBeOrdered(const Type &a, const Type &b);

// What a variable holds before anything is assigned to it.
host::Value initialValue(const Type &type);

// A value as the declared type holds it: numbers as numbers of that type (integers keep their low bits, reals are cut
// towards zero), a Variant as what it is to become. Throws Raised for an object of another class.
host::Value converted(const host::Value &value, const Type &declared, const Place &place);

} // namespace script
