// Chooses the cases and runs them, each batch in a child process of its own.
#pragma once

#include <string>
#include <vector>

#include "host/validate/case.h"
#include "host/validate/report.h"

namespace validate {

// The cases that --only asks for, in their batches; batches without any are left out.
Batches selected(Batches batches, const std::string &only);

// Loads the plug-in once, in a process of its own: empty when it registers the class, else what is wrong, in one line.
std::string whyItDoesNotLoad(const Settings &settings);

void runBatches(const Batches &batches, const Settings &settings, Report &report);

} // namespace validate
