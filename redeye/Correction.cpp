#include "redeye/Correction.h"

#include <algorithm>

#include "redeye/Truncate.h"

// Single-precision variables, double literals: the plain C reading of the
// correction, which the tests hold to bit for bit.

DarkeningTerms MakeDarkeningTerms(float darkening) {
    DarkeningTerms terms;
    terms.strength = darkening / 5.0;
    terms.threshold = terms.strength * 7.0 + 100.0;
    return terms;
}

void CorrectPixel(uint16_t* hls, uint8_t weight, uint8_t depth, const DarkeningTerms& terms) {
    if (weight == 0) return;
    const int lightness = hls[1];
    float k = weight / 255.0;
    if (lightness > 150) k = 1.0;
    // A weight of 170 or more, or a light pixel, loses all colour.
    if (k == 1.0) {
        hls[2] = 0;
    } else {
        hls[2] = static_cast<uint16_t>(TruncateToInt32(hls[2] * std::max(0.0, 1.0 - 1.5 * k)));
    }
    if (lightness < terms.threshold) {
        // Full darkening 15 lightness steps below the threshold, fading out above.
        const float fade = std::min((terms.threshold - lightness) / 15.0, 1.0);
        const float darkened = lightness - depth * terms.strength * fade;
        hls[1] = static_cast<uint16_t>(std::clamp(TruncateToInt32(darkened), 0, 255));
    }
}
