// The command line as a whole: what the library that reads it does not do.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace plughost {

// Reads the arguments. Throws what CLI::App::parse throws, except UsageError for a command or an option
// that there is not, with the one that may have been meant.
void readArguments(CLI::App &app, int count, char **arguments);

// An argument whose text goes on exactly as it was given: the library would take "{}" and "[a,b]" for notations of its
// own, and "-Infinity" for options.
CLI::Option *addPlainArgument(CLI::App *command, const std::string &name, std::function<void(const std::string &)> take,
                              const std::string &description);
CLI::Option *addPlainArgument(CLI::App *command, const std::string &name, std::string &text,
                              const std::string &description);

} // namespace plughost
