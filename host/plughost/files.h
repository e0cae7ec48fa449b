// Files that commands read.
#pragma once

#include <string>

namespace plughost {

// The bytes of a file; "-" is standard input. Throws InputError when it cannot be read.
std::string readFile(const std::string &path);
// For messages: the path, or "standard input".
std::string nameOfFile(const std::string &path);

} // namespace plughost
