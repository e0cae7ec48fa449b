// Numbers as the tables write them.
#pragma once

#include "bench/report/results.h"

namespace bench {

// The host on which all cases run.
inline constexpr char kHostOfAllCases[] = "2013.03";

std::string whole(std::optional<double> value); // "12 345"; "-" for nothing
std::string number(double value);               // with two decimals where it is small and has any
std::string shown(const Decision &file);

std::optional<double> of(const std::optional<Count> &count, double Count::*member);
std::optional<double> totalOf(const std::optional<Count> &count);

// Cocoa's part beyond what the call by hand needs anyway.
std::optional<double> moreCocoa(const Result &result);

// The instructions of the macOS file's own code for the same call.
std::optional<double> ownOnMacOS(const Measurements &measurements, const Result &result);

} // namespace bench
