// The argument TYPE of the commands that read or store one value.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "host/plughost/text_value.h"

namespace plughost {

// A name that is no type is wrong usage.
CLI::Option *addTypeArgument(CLI::App *command, std::string &type);
const ValueType &typeArgument(const std::string &name);
// The types with how their values are written, for the end of a help text.
std::string typesHelp();

} // namespace plughost
