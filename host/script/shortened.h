// Texts of any length in messages that people read.
#pragma once

#include <string>

namespace script {

// The beginning and the end of a long text, with the number of characters that are left out between them.
std::string shortened(const std::string &utf8);

} // namespace script
