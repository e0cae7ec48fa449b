// Declarations of the host language, such as "setIntegerValue(key as string, value as integer)",
// "persistentDomainNames as string()" or "Value(key As Variant, Assigns _value As Variant)".
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// How a value of a declared type is passed in a call.
enum class Passing {
    Nothing, // no result
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Single,
    Double,
    Currency,
    Boolean,
    Color,
    String,
    Variant,
    Object,
    Pointer,
};

struct DeclaredType {
    std::string name; // as written: "string", "NSUserDefaultsKTZ"; empty when there is none
    Passing passing = Passing::Nothing;
    bool isArray = false; // an array of `passing`

    // Equal for the host: same passing, and the same class name (ignoring case) for objects.
    bool operator==(const DeclaredType &other) const;
    bool operator!=(const DeclaredType &other) const { return !(*this == other); }
    std::string text() const; // "string()", "integer"
};

struct Parameter {
    std::string name;
    DeclaredType type;
};

struct Declaration {
    std::string name;
    std::vector<Parameter> parameters; // an assigned value is the last one
    bool assigns = false;              // the last parameter is declared with Assigns
    DeclaredType result;

    // The same method for the host: equal names (ignoring case), parameter types and Assigns; parameter names and
    // spelling do not count. The result counts, as it does for the host's own look-up.
    bool matches(const Declaration &other) const;
    std::string text() const; // one spelling for all equal declarations up to names
};

struct DeclarationError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Throws DeclarationError, which names the place and what was expected there.
Declaration parseDeclaration(std::string_view text);

// The type of a name in a declaration: "Integer" and "Int32" are the same, an unknown name is a class.
DeclaredType declaredType(std::string_view name, bool isArray = false);

// "Integer", "Byte"; empty for objects and for no type at all.
std::string usualName(Passing passing);

bool equalIgnoringCase(std::string_view a, std::string_view b);

} // namespace host
