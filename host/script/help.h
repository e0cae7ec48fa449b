// What there is to know about a name of the language or of the host.
#pragma once

#include <string>
#include <vector>

namespace script {

// The declarations of the functions and members of that name, or the members of the class; empty when there are none.
std::vector<std::string> declarationsOf(const std::string &name);

} // namespace script
