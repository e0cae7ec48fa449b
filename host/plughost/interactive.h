// plughost without a command: the host's language, line by line.
#pragma once

#include "host/plughost/program.h"

namespace plughost {

// Reads lines until the end of the input, or "Exit". On a terminal with prompts, a history that is kept between runs,
// and names completed with the tab key; otherwise quietly, and the status is 1 when a line could not be run.
int runInteractively(Program &program);

} // namespace plughost
