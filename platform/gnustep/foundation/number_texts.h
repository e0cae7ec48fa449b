#pragma once

#include <cstddef>
#include <string>

namespace platform {

// The decimal number that a text begins with, behind white space; how many characters it takes, 0 for none. What is too
// large is infinite.
size_t readReal(const std::string &text, double *number);

} // namespace platform
