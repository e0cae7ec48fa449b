// Chooses the cases and runs them, each batch in a child process of its own.
#pragma once

#include <vector>

#include "host/validate/case.h"
#include "host/validate/report.h"

namespace validate {

// The cases that --only asks for, in their batches; batches without any are left out.
std::vector<Batch> selected(std::vector<Batch> batches, const std::string &only);

void runBatches(const std::vector<Batch> &batches, const Settings &settings, Report &report);

} // namespace validate
