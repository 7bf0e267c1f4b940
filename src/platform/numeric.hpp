// Number conversions with the behaviour of the processor the program was written for.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace aerix {

// Double to 32-bit integer, rounding toward zero. Out-of-range values saturate and NaN gives 0,
// as the ARM conversion did; never undefined behaviour.
inline std::int32_t TruncInt32(double value) {
    if (std::isnan(value))
        return 0;
    if (value >= 2147483647.0)
        return std::numeric_limits<std::int32_t>::max();
    if (value <= -2147483648.0)
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

}  // namespace aerix
