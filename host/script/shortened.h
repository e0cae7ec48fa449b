// Texts of any length in messages that people read.
#pragma once

#include <string>

namespace script {

// The beginning of a long text, with the number of characters that are left out behind it.
std::string shortened(const std::string &utf8);

} // namespace script
