// Values of the host language as JSON and back.
//
// nil, booleans, Int32, Int64, Double, text, Variant arrays and Dictionaries with text keys are what JSON has. An
// integer is read as an Int32 where it fits, else as an Int64, beyond that as a UInt64; a number with a point or an
// exponent is a Double. An Int64 is written without its kind, which the defaults database gives to most numbers by
// itself. Everything else carries a tag, an object with one key:
//   {"$int64": 5} {"$uint32": 5} {"$uint64": 5}   integers of another kind than their size tells
//   {"$single": 0.1}, {"$double": "NaN"}          "NaN", "Infinity" and "-Infinity" where JSON has no number
//   {"$currency": 1.5}, {"$color": "#FF8000"}
//   {"$date": "2012-02-29T10:20:30"}              wall-clock time, as the host's Date
//   {"$data": "00ff"}                             a MemoryBlock's bytes in hexadecimal digits
//   {"$file": "/an/absolute/path"}                a FolderItem
//   {"$dictionary": [[key, value], ...]}          a Dictionary with a key that is no text, or text that starts with "$"
// An object of any other class is written as {"$object": "its class"}, which cannot be read.
#pragma once

#include <string>

#include "host/value.h"

namespace plughost {

enum class JsonLayout { OneLine, Indented };

// Dictionaries are written in the order of their keys, so that equal values give equal text.
std::string jsonOf(const host::Value &value, JsonLayout layout = JsonLayout::OneLine);

// A value's sort in words, for messages: "a list", "an object", "text", "boolean".
std::string sortOf(const host::Value &value);

// `what` names the text in messages: a file, an argument. Both throw InputError, which says what is wrong and where.
host::Value valueOfJson(const std::string &text, const std::string &what);
host::Value dictionaryOfJson(const std::string &text, const std::string &what);

} // namespace plughost
