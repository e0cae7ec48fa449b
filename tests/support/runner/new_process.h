// Cases about what is decided when a process starts.
#pragma once

#include <map>
#include <string>

namespace test_runner {

using Environment = std::map<std::string, std::string>;

// Runs the current case once more, in a process of its own from its start with these variables in its environment. In
// that process the answer is true; false tells the outer one that all is done:
//
//     if (!inNewProcess({{"LANG", "de"}}))
//         return;
bool inNewProcess(const Environment &environment = {});
bool isNewProcess();

// Runs a case of this program in a process of its own from its start, and answers why it fails; empty when it passed.
std::string whyItFailsFromTheStart(const std::string &name, const Environment &environment = {});

} // namespace test_runner
