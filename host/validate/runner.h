// Runs batches of cases, each in a child process of its own with a folder of its own, a few at a time.
#pragma once

#include <vector>

#include "host/validate/case.h"
#include "host/validate/report.h"

namespace validate {

// The cases that --only asks for, in their batches; batches without any are left out.
std::vector<Batch> selected(std::vector<Batch> batches, const std::string &only);

void runBatches(const std::vector<Batch> &batches, const Settings &settings, Report &report);

} // namespace validate
