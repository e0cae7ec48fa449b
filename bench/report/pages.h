// What the pages under docs show, in Markdown.
#pragma once

#include "bench/report/results.h"

#include <ostream>

namespace bench {

// What a reader wants first: what a call costs beside Cocoa's own, how that grows, and what other ways cost.
void printSummary(std::ostream &out, const Measurements &results, const nlohmann::json &others);

// The page of long tables.
void printTables(std::ostream &out, const Measurements &results, const std::vector<Judged> &judged);

// Cases whose costs can stand beside each other; the summary and the picture show these.
extern const std::vector<std::string> kChosenCases;

} // namespace bench
