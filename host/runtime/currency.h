// Currency values: 64-bit integers of ten-thousandths.
#pragma once

#include <cmath>
#include <cstdint>

namespace host::runtime {

constexpr double kCurrencyUnits = 10000;

inline int64_t toCurrency(double value)
{
    return llround(value * kCurrencyUnits);
}

inline double fromCurrency(int64_t units)
{
    return double(units) / kCurrencyUnits;
}

} // namespace host::runtime
