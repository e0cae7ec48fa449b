// plughost: a command line for the class of the plug-in, which plays the host around it.
#pragma once

#include <string>

namespace plughost {

// What the main function does. The plug-in and its family lie in the folder, unless the arguments say otherwise; their
// count includes the name of the program. Answers the exit status.
int run(const std::string &folder, int count, char **arguments);

} // namespace plughost
