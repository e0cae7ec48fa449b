// Single values as text, for command lines and inside JSON. Readers throw InputError, which says what is wrong.
#pragma once

#include <cstdint>
#include <string>

#include "host/value.h"

namespace plughost {

int integerOfText(const std::string &text);
float singleOfText(const std::string &text);
bool booleanOfText(const std::string &text);  // true or false, yes or no, 1 or 0, in any case
double doubleOfText(const std::string &text); // "NaN", "Infinity" and "-Infinity" too
std::string textOfDouble(double value);       // the shortest text that gives the same value again
std::string textOfSingle(float value);
std::string bytesOfText(const std::string &hexadecimal);
host::Value dateOfText(const std::string &iso8601); // without a zone: wall-clock time
std::string textOfDate(const host::Value &date);
host::Value fileOfText(const std::string &path); // made absolute; the folder it lies in must exist
uint32_t colorOfText(const std::string &text);   // "#RRGGBB"
std::string textOfColor(uint32_t rgb);

} // namespace plughost
