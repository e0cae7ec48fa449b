// What is logged about files of defaults that cannot be read or written, as lines of the command line: each line once,
// and of a file that cannot be written only that.
#pragma once

#include <string>

namespace plughost {

// Takes a line of the log. True when it was about such a file, and is printed now or by printUnreadFiles.
bool takeFileComplaint(const std::string &logged);

// Whether a line has said of any file that it cannot be written.
bool hasComplainedOfWriting();

// The files that could not be read, where nothing was said of writing them.
void printUnreadFiles();

} // namespace plughost
