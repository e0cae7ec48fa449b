// Runs cases in child processes, a few at a time, each with a folder of its own: a case that crashes or hangs is one
// failed case. What the calling process has started (Foundation, AppKit) every child finds started.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace isolation {

// Cases that one child runs one after the other. After one that crashed or hangs, the others run in a new child.
struct Batch {
    std::vector<std::string> names;
    // In the child, whose current folder is its own: runs the case with that number and answers why it fails; empty
    // when it passed. `isFirst` in each child.
    std::function<std::string(size_t number, bool isFirst)> whyItFails;
    int secondsPerCase;
};

struct Outcome {
    std::string name;
    std::string why;    // empty: passed
    std::string output; // what its process has written, to either stream, up to then
};

struct Manner {
    unsigned jobs;         // children at a time
    bool keepsOutput;      // or it is thrown away
    bool endsAsProgramsDo; // with the work that is due when a program exits, which may fail a case, or at once
};

void run(const std::vector<Batch> &batches, const Manner &manner, const std::function<void(const Outcome &)> &ended);

// How a process ended that did not exit with status 0, in words; empty when it did.
std::string abnormalEnd(int waitStatus);

} // namespace isolation
