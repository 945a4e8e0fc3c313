// Desaturating and darkening one pixel of a red patch, in HLS.
#pragma once

#include <cstdint>

// The darkening user value worked out for a region: D = darkening / 5 and
// the lightness below which pixels are darkened.
struct DarkeningTerms {
    float strength;   // D
    float threshold;  // 7D + 100
};

DarkeningTerms MakeDarkeningTerms(float darkening);

// hls: the pixel's hue, lightness, saturation; weight 0 leaves it as it is.
// The hue never changes; the lightness stays within 0..255.
void CorrectPixel(uint16_t* hls, uint8_t weight, uint8_t depth, const DarkeningTerms& terms);
