// The members of arrays.
#pragma once

#include <string>
#include <vector>

#include "host/script/source.h"
#include "host/value.h"

namespace script {

struct ArrayMember {
    const char *name;
    const char *parameters; // i: an index, e: an element; behind "?" can be left out
    char result;            // i: Integer, e: an element, ' ': none
    // The arguments are of the types that `parameters` says. Throws Raised.
    host::Value (*run)(host::Value array, const host::Arguments &arguments, const Place &place);
};

const std::vector<ArrayMember> &arrayMembers();
const ArrayMember *arrayMember(const std::string &name);

// As the language compares: texts without regard to case.
bool areEqual(const host::Value &a, const host::Value &b);

// Throws Raised for an index outside of the array; `end` is the first one that is too large.
void needIndex(const host::Value &array, int32_t index, int32_t end, const Place &place);

} // namespace script
