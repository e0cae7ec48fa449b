// Ctrl-C: the program that runs ends, the process goes on.
#pragma once

#include <csignal>

namespace script {

// As long as it lives, SIGINT is noted instead of ending the process.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption &) = delete;
    Interruption &operator=(const Interruption &) = delete;

    // Whether it came since the last time that somebody asked.
    static bool take();

private:
    struct sigaction _before = {};
};

} // namespace script
