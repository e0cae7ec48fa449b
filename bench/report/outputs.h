// The forms in which the results are shown.
#pragma once

#include "bench/report/results.h"

#include <ostream>

namespace bench {

// On a terminal.
void printResults(std::ostream &out, const Measurements &results);
void printBudgets(std::ostream &out, const std::vector<Judged> &judged);
void printComparison(std::ostream &out, const nlohmann::json &others, const Results &results);

// For the pages under docs, in Markdown. The summary is what a reader wants first: what a call costs beside Cocoa's
// own, how that grows, and what other ways cost; the tables are a page of their own.
void printSummary(std::ostream &out, const Measurements &results, const nlohmann::json &others);
void printTables(std::ostream &out, const Measurements &results, const std::vector<Judged> &judged);

// Cases whose costs can stand beside each other; the summary and the picture show these.
extern const std::vector<std::string> kChosenCases;

// An SVG: what a call of each of them costs and who spends it.
std::string plot(const Results &results);

// For other programs.
nlohmann::json asJson(const Measurements &results, const std::vector<Judged> &judged, const nlohmann::json &others);

} // namespace bench
