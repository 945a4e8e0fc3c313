// Floats a host may keep in the module's stored record where the module
// expects a user value or a view position: the fuzz targets and the host
// campaign both feed them in.
#pragma once

#include <cfloat>
#include <cstdint>
#include <cstring>
#include <limits>

namespace hostile {

constexpr float kSpecialFloats[] = {
    std::numeric_limits<float>::quiet_NaN(),
    std::numeric_limits<float>::infinity(),
    -std::numeric_limits<float>::infinity(),
    1e30f,
    -1e30f,
    FLT_MAX,
    -FLT_MAX,
    -0.0f,
    std::numeric_limits<float>::denorm_min(),
};
constexpr uint32_t kSpecialFloatCount = sizeof kSpecialFloats / sizeof kSpecialFloats[0];

// Any bit pattern, signalling NaNs included.
inline float FloatFromBits(uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

}  // namespace hostile
