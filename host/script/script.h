// The host's language, as far as docs/script.md describes it: whole programs, and one line after the other.
//
// The plug-ins must be loaded before, since their classes are part of what a program is checked against.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace script {

// Reads, checks and runs a program; its Print goes to standard output. What is wrong with it, or what it raised and did
// not catch, goes to standard error. False when anything did.
bool runProgram(const std::string &name, const std::string &text);

// Lines that share their variables, methods and classes. The value of an expression that stands alone is printed.
class Conversation {
public:
    Conversation();
    ~Conversation();

    enum class Answer { Done, Failed, WantsMore };
    // Reads, checks and runs what was entered. WantsMore: a block is still open, and nothing was run; enter the same
    // text again with further lines.
    Answer enter(const std::string &text);
    // The same at the end of the input: says what is missing.
    void finish(const std::string &text);

    // What the word at the end of an unfinished line can become, in alphabetical order.
    std::vector<std::string> completions(const std::string &line) const;

private:
    struct State;
    std::unique_ptr<State> _state;
};

} // namespace script
