// What the language brings along: its functions, and the members of arrays.
#pragma once

#include <string>
#include <vector>

#include "host/declaration.h"
#include "host/script/source.h"
#include "host/value.h"

namespace script {

struct Builtin {
    const char *text; // of the declaration
    host::Declaration declaration;
    // The arguments are of the declared types. Throws Raised.
    host::Value (*run)(const host::Arguments &arguments, const Place &place);
};

// Several functions can share a name.
const std::vector<Builtin> &builtins();

enum class ArrayOperation { Append, Insert, Remove, Pop, IndexOf, Ubound, Sort };

struct ArrayMember {
    const char *name;
    ArrayOperation operation;
    const char *parameters; // i: an index, e: an element
    char result;            // i: Integer, e: an element, ' ': none
};

const std::vector<ArrayMember> &arrayMembers();
const ArrayMember *arrayMember(const std::string &name);

host::Value runArrayMember(ArrayOperation operation, host::Value array, const host::Arguments &arguments,
                           const Place &place);
// Throws Raised for an index outside of the array; `end` is the first one that is too large.
void needIndex(const host::Value &array, int32_t index, int32_t end, const Place &place);

} // namespace script
