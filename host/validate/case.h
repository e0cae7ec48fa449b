// The cases: what has a name, passes or fails, and is counted.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/validate/settings.h"

namespace validate {

// What is wrong, in words; ends the case.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

inline void expect(bool isTrue, const std::string &otherwise)
{
    if (!isTrue)
        throw Failure(otherwise);
}

void expectEqual(const std::string &actual, const std::string &expected, const std::string &what);

struct Case {
    std::string name;
    std::function<void()> body;
};

// Cases that one child process runs one after the other. A case that crashes or hangs ends the process; the cases after
// it run in a new one. Each case must pass on its own, too: that is how a failure is reproduced.
struct Batch {
    std::function<void()> prepare; // in the child, before the first case
    std::vector<Case> cases;
    int secondsPerCase = 20;
    bool losesMemory = false; // and must, so that nobody looks for it
};

struct Group {
    const char *name;
    const char *proves;
    void (*add)(const Settings &settings, std::vector<Batch> &batches);
};

const std::vector<Group> &groups();

void addMissingEntryPoints(const Settings &settings, std::vector<Batch> &batches);
void addCocoaRaises(const Settings &settings, std::vector<Batch> &batches);
void addHostFailures(const Settings &settings, std::vector<Batch> &batches);
void addArguments(const Settings &settings, std::vector<Batch> &batches);
void addState(const Settings &settings, std::vector<Batch> &batches);
void addReentry(const Settings &settings, std::vector<Batch> &batches);
void addLoading(const Settings &settings, std::vector<Batch> &batches);
void addPersistence(const Settings &settings, std::vector<Batch> &batches);

} // namespace validate
