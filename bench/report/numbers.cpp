#include "bench/report/numbers.h"

#include <cmath>
#include <cstdio>

namespace bench {

std::string whole(std::optional<double> value)
{
    if (!value)
        return "-";
    std::string digits = std::to_string(std::llround(std::abs(*value)));
    for (int place = int(digits.size()) - 3; place > 0; place -= 3)
        digits.insert(size_t(place), " ");
    return *value < -0.5 ? "-" + digits : digits;
}

std::string number(double value)
{
    char text[40];
    snprintf(text, sizeof text, std::abs(value) < 100 && value != std::floor(value) ? "%.2f" : "%.0f", value);
    return text;
}

std::string shown(const Decision &file)
{
    return file.measured ? number(*file.measured) : "nothing measured";
}

std::optional<double> of(const std::optional<Count> &count, double Count::*member)
{
    return count ? std::optional((*count).*member) : std::nullopt;
}

std::optional<double> totalOf(const std::optional<Count> &count)
{
    return count ? std::optional(count->total()) : std::nullopt;
}

std::optional<double> moreCocoa(const Result &result)
{
    if (!result.through)
        return std::nullopt;
    return result.through->cocoa - (result.hand ? result.hand->cocoa : 0);
}

std::optional<double> ownOnMacOS(const Measurements &measurements, const Result &result)
{
    const Result *same = measurements.macosFile.find(result.configuration, result.name);
    return same ? of(same->through, &Count::own) : std::nullopt;
}

} // namespace bench
