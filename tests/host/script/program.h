// Runs programs of the script language in this process, with the plug-in loaded.
#pragma once

#include <string>
#include <vector>

#include "tests/support/host_test.h"

namespace script_test {

struct Ran {
    bool isDone = false;
    std::string output;
    std::string errors;
};

// A program and what it prints, or the errors that are reported for it.
struct Sample {
    std::string program;
    std::string expected;
};

class Programs : public support::BlackBoxOn2013 {
protected:
    // The program's name in messages is "p".
    static Ran run(const std::string &program);

    // Each prints that and comes to its end.
    static void expectOutputs(const std::vector<Sample> &samples);
    // Each is an expression; Str of it is printed.
    static void expectValues(const std::vector<Sample> &samples);
    // For each this and nothing else is reported, and nothing is printed.
    static void expectErrors(const std::vector<Sample> &samples);
};

} // namespace script_test
