// Float-to-integer conversion of the pixel code: truncates toward zero like a
// C cast, but saturates values outside the int32 range and maps NaN to 0, so
// that no tolerance or darkening the host stores can make it undefined.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

inline int32_t TruncateToInt32(double value) {
    if (std::isnan(value)) return 0;
    if (value >= 2147483647.0) return std::numeric_limits<int32_t>::max();
    if (value <= -2147483648.0) return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(value);
}
