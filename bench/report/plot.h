// The figures as a picture.
#pragma once

#include "bench/report/results.h"

namespace bench {

// An SVG: for the members with small arguments, what a call costs and who spends it.
std::string plot(const Results &results);

} // namespace bench
