// The results for other programs.
#pragma once

#include "bench/report/results.h"

namespace bench {

nlohmann::json asJson(const Measurements &results, const std::vector<Judged> &judged, const nlohmann::json &others);

} // namespace bench
