// Numbers as Format writes them.
#pragma once

#include <string>

namespace script {

// Up to three patterns with ";" between them: for numbers above 0, below 0, and for 0. In a pattern "0" is a digit that
// is always there and "#" one that is when it counts; "." and "," stand for themselves, "%" for hundredths, "e" for an
// exponent, "+" and "-" for the sign, which a pattern without them leaves out; "\" takes the next character as it is.
std::string formattedNumber(double number, const std::string &patterns);

} // namespace script
