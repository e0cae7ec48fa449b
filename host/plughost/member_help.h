// The reference of the class, built into the program.
#pragma once

#include <string>

namespace plughost {

// What the reference says of the members of that name; empty when there is none.
std::string memberHelp(const std::string &name);

} // namespace plughost
