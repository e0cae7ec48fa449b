// The results on a terminal.
#pragma once

#include "bench/report/results.h"

#include <ostream>

namespace bench {

void printResults(std::ostream &out, const Measurements &results);
void printBudgets(std::ostream &out, const std::vector<Judged> &judged);
void printComparison(std::ostream &out, const nlohmann::json &others, const Results &results);

} // namespace bench
