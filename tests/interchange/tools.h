// Commands that nobody here wrote, and what they print.
#pragma once

#include <string>

namespace interchange {

// A word of a shell command.
std::string quoted(const std::string &text);

// What a shell command prints; the test fails when the command's status is not 0.
std::string outputOf(const std::string &command);
int statusOf(const std::string &command);

// Words with one space between them: the tools' line breaks and indentation say nothing.
std::string onOneLine(const std::string &text);

} // namespace interchange
