// The host's language, as far as docs/script.md describes it: whole programs, and one line after the other.
//
// The plug-ins must be loaded before, since their classes are part of what a program is checked against.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/value.h"

namespace script {

// Reads, checks and runs a program; its Print goes to standard output. What is wrong with it, or what it raised and did
// not catch, goes to standard error, with the calls that led there. False when anything did.
bool runProgram(const std::string &name, const std::string &text);

// For people, on standard output.
void printValue(const host::Value &value);

// Lines that share their variables, methods and classes.
class Conversation {
public:
    using Show = std::function<void(const host::Value &)>;
    // `show` gets the value of an expression that stands alone.
    explicit Conversation(Show show = printValue);
    ~Conversation();

    enum class Answer { Done, Failed, Mistaken, WantsMore };
    // Reads, checks and runs what was entered; messages count its lines from `firstLine`. Failed: it was not run to its
    // end. Mistaken: nothing of it was run, and mistakenLine() is the first that has to be mended. WantsMore: a block
    // is still open, and nothing was run; enter the same text again with further lines.
    Answer enter(const std::string &text, size_t firstLine = 1);
    size_t mistakenLine() const;
    // The same at the end of the input: says what is missing.
    void finish(const std::string &text, size_t firstLine = 1);

    // Whether a variable, a method or a class of that name was entered.
    bool knows(const std::string &name) const;
    // Every variable with its type and value, in alphabetical order, as a line each.
    std::vector<std::string> variables() const;

    // What the word at the end of an unfinished line can become, in alphabetical order.
    std::vector<std::string> completions(const std::string &line) const;

private:
    struct State;
    std::unique_ptr<State> _state;
};

} // namespace script
