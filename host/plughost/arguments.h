// What has to be known of the arguments before Foundation reads them.
#pragma once

#include <string>

namespace plughost {

// Throws UsageError: Foundation would end the program with ten lines about itself.
void requireText(int count, char **arguments);

// What --defaults-dir, or the environment, says; empty when neither does.
std::string defaultsFolderOf(int count, char **arguments);

} // namespace plughost
