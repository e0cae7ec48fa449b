// The results for people, and for other programs.
#pragma once

#include "bench/report/results.h"

#include <ostream>

namespace bench {

void printResults(std::ostream &out, const Measurements &results);
void printBudgets(std::ostream &out, const std::vector<Judged> &judged);
void printComparison(std::ostream &out, const nlohmann::json &others, const Results &results);
// The tables of docs/performance.md.
void printMarkdown(std::ostream &out, const Measurements &results, const std::vector<Judged> &judged,
                   const nlohmann::json &others);
nlohmann::json asJson(const Measurements &results, const std::vector<Judged> &judged, const nlohmann::json &others);

} // namespace bench
