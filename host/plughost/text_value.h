// Values as one writes them on a command line, by type, and back.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/declaration.h"
#include "host/value.h"

namespace plughost {

// A type of value as the commands name it, with the accessors of the class that go with it.
struct ValueType {
    enum Kind { Integer, Single, Double, Boolean, Text, Data, File, Date, Variant, Dictionary, Array, StringArray };
    const char *name;
    Kind kind;
    const char *getter;
    const char *setter;
    const char *written; // how a value is written
};

const std::vector<ValueType> &valueTypes();
// Null when there is no type of that name.
const ValueType *valueTypeNamed(const std::string &name);
// The kind of a declared parameter; nothing for a class whose objects cannot be written.
std::optional<ValueType::Kind> kindOf(const host::DeclaredType &type);

// `what` names the text in messages. Throws InputError, which says what is wrong with the text.
host::Value valueOfText(ValueType::Kind kind, const std::string &text, const std::string &what);
// What valueOfText reads, and "nil" for nil; other kinds than scalars and text as JSON.
std::string textOfValue(const host::Value &value);

} // namespace plughost
