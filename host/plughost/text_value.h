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

// The single forms; readers throw InputError.
double doubleOfText(const std::string &text); // "NaN", "Infinity" and "-Infinity" too
std::string textOfDouble(double value);       // the shortest text that gives the same value again
std::string textOfSingle(float value);
std::string bytesOfText(const std::string &hexadecimal);
std::string textOfBytes(const std::string &bytes);
host::Value dateOfText(const std::string &iso8601); // without a zone: wall-clock time
std::string textOfDate(const host::Value &date);
host::Value fileOfText(const std::string &path); // made absolute; the folder it lies in must exist
uint32_t colorOfText(const std::string &text);   // "#RRGGBB"
std::string textOfColor(uint32_t rgb);

} // namespace plughost
