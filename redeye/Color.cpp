#include "redeye/Color.h"

#include <algorithm>

#include "redeye/Sse2Pixels.h"

namespace {

// Every quotient in RgbToHls has a numerator below 2^16 and a divisor from 1
// to 510. For those, n * (floor(2^31 / d) + 1) >> 31 is exactly n / d: the
// product overshoots n / d by at most n / 2^31 < 1 / 510, which cannot carry
// the result past the next integer. The exhaustive colour test checks it.
constexpr int kReciprocalShift = 31;
constexpr uint32_t kMaxDivisor = 510;

struct ConversionTables {
    uint32_t reciprocal[kMaxDivisor + 1];
    uint8_t lightness[kMaxDivisor + 1];  // indexed by max + min
};

constexpr ConversionTables MakeConversionTables() {
    ConversionTables tables{};
    for (uint32_t d = 1; d <= kMaxDivisor; ++d) {
        tables.reciprocal[d] = static_cast<uint32_t>((uint64_t{1} << kReciprocalShift) / d + 1);
    }
    for (uint32_t sum = 0; sum <= kMaxDivisor; ++sum) {
        tables.lightness[sum] = static_cast<uint8_t>((sum * 240 + 255) / 510);
    }
    return tables;
}

constexpr ConversionTables kTables = MakeConversionTables();

inline uint32_t Divide(uint32_t numerator, uint32_t divisor) {
    return static_cast<uint32_t>((uint64_t{numerator} * kTables.reciprocal[divisor]) >>
                                 kReciprocalShift);
}

inline uint8_t ScaleTo255(uint16_t channel) {
    return static_cast<uint8_t>((channel * 255 + 120) / 240);
}

}  // namespace

void RgbToHls(const uint8_t* rgb, uint16_t* hls) {
    const uint32_t r = rgb[0], g = rgb[1], b = rgb[2];
    const uint32_t maxChannel = std::max(r, std::max(g, b));
    const uint32_t minChannel = std::min(r, std::min(g, b));
    const uint32_t sum = maxChannel + minChannel;
    const uint32_t lightness = kTables.lightness[sum];
    hls[1] = static_cast<uint16_t>(lightness);
    if (maxChannel == minChannel) {
        hls[0] = 160;
        hls[2] = 0;
        return;
    }
    const uint32_t delta = maxChannel - minChannel;
    const uint32_t spread = lightness <= 120 ? sum : 2 * 255 - sum;
    hls[2] = static_cast<uint16_t>(Divide(delta * 240 + spread / 2, spread));

    // How far a channel lies below the maximum, in 40ths of delta, rounded.
    const auto below = [&](uint32_t channel) {
        return static_cast<int>(Divide((maxChannel - channel) * 40 + delta / 2, delta));
    };
    int hue;
    if (r == maxChannel) {
        hue = below(b) - below(g);
    } else if (g == maxChannel) {
        hue = 80 + below(r) - below(b);
    } else {
        hue = 160 + below(g) - below(r);
    }
    // The differences lie within -40..40, so one wrap brings the hue to 0..239.
    if (hue < 0) hue += 240;
    hls[0] = static_cast<uint16_t>(hue);
}

uint16_t HueToChannel(uint16_t m1, uint16_t m2, uint16_t hue) {
    if (hue > 240) hue = static_cast<uint16_t>(hue - 240);
    const int rise = m2 - m1;
    if (hue < 40) return static_cast<uint16_t>(m1 + (rise * hue + 20) / 40);
    if (hue < 120) return m2;
    if (hue < 160) return static_cast<uint16_t>(m1 + (rise * (160 - hue) + 20) / 40);
    return m1;
}

void HlsToRgb(const uint16_t* hls, uint8_t* rgb) {
    const uint16_t hue = hls[0];
    const int lightness = hls[1], saturation = hls[2];
    if (saturation == 0) {
        const auto grey = static_cast<uint8_t>(lightness * 255 / 240);
        rgb[0] = rgb[1] = rgb[2] = grey;
        return;
    }
    const auto m2 = static_cast<uint16_t>(
        lightness <= 120 ? (lightness * (240 + saturation) + 120) / 240
                         : lightness + saturation -
                               static_cast<int>((uint32_t(lightness) * saturation + 120) / 240));
    const auto m1 = static_cast<uint16_t>(2 * lightness - m2);
    rgb[0] = ScaleTo255(HueToChannel(m1, m2, static_cast<uint16_t>(hue + 80)));
    rgb[1] = ScaleTo255(HueToChannel(m1, m2, hue));
    rgb[2] = ScaleTo255(HueToChannel(m1, m2, static_cast<uint16_t>(hue - 80)));
}

void HlsRowToRgb(const uint16_t* hls, uint8_t* rgb, int32_t count) {
    int32_t x = 0;
#if defined(__SSE2__)
    for (; x + 8 <= count; x += 8) {
        sse2::StoreBytes(sse2::HlsToRgb8(sse2::LoadWords(hls + 3 * x)), rgb + 3 * x);
    }
#endif
    for (; x < count; ++x) HlsToRgb(hls + 3 * x, rgb + 3 * x);
}
