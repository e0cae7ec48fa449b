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

// Empty, or what the exception of C++ says that ended the body: those are caught in plain C++ files only, Objective-C
// ones in Objective-C++ files only.
std::string whyBodyFails(const std::function<void()> &body);

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

    void add(std::string name, std::function<void()> body) { cases.push_back({std::move(name), std::move(body)}); }
};
using Batches = std::vector<Batch>;

// A case that is a batch by itself.
void addAlone(Batches &batches, std::string name, int seconds, std::function<void()> body);

struct Group {
    const char *name;
    void (*add)(const Settings &settings, Batches &batches);
};

const std::vector<Group> &groups();

// The hosts on which a group is run: one up to level 2, `some` from level 3 on, `all` from level 7 on.
using Profiles = std::vector<std::string>;
const Profiles &everyProfile();
Profiles profilesAt(int level, const Profiles &some, const Profiles &all = everyProfile());

void addMissingEntryPoints(const Settings &settings, Batches &batches);
void addCocoaRaises(const Settings &settings, Batches &batches);
void addHostFailures(const Settings &settings, Batches &batches);
void addArguments(const Settings &settings, Batches &batches);
void addState(const Settings &settings, Batches &batches);
void addReentry(const Settings &settings, Batches &batches);
void addLoading(const Settings &settings, Batches &batches);
void addPersistence(const Settings &settings, Batches &batches);

} // namespace validate
