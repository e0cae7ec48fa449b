// The environment that Foundation reads when it starts, before main: character sets, its configuration, a time zone.
#pragma once

#include <string>

namespace plughost {

// For a program that is executed afterwards. What the caller's environment sets already is left as it is, except that a
// defaults folder, when one is given (it is made if missing), always takes the place of the one in the configuration;
// child processes inherit it. Throws UsageError for a folder that cannot be used.
void prepareEnvironment(const std::string &defaultsDir);

} // namespace plughost
