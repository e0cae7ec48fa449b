// How a command ends when it cannot do what it was asked: one line, and the exit status.
#pragma once

#include <stdexcept>

namespace plughost {

constexpr int kDone = 0;
constexpr int kBadInput = 1;
constexpr int kWrongUsage = 2;

// Bad input: a value, a file or an answer that cannot be used. Exit status 1.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The command line itself asks for something that does not exist. Exit status 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// What went wrong has been printed. Exit status 1.
struct Reported {};

} // namespace plughost
