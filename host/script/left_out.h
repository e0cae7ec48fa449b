// What the host's language has and this one does not, so that a program hears about it by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace script {

// Where the word stands that gives it away.
enum class LeftOutAt {
    Statement, // at the beginning of a statement or a declaration
    Parameter, // in front of a parameter
    Name,      // a function, a class or a type of the host's language
    Sign,
};

struct LeftOut {
    LeftOutAt at;
    const char *words;   // separated by blanks
    const char *what;    // "... are not part of this language here"; empty: the word "is not part of …"
    const char *instead; // what to write; may be empty
};

const std::vector<LeftOut> &leftOut();

// The message for a word that is left out, or nothing.
std::string leftOutMessage(LeftOutAt at, std::string_view word);
std::string leftOutMessage(const LeftOut &row, std::string_view word);

} // namespace script
