// Integer conversion between 8-bit RGB and HLS on a 0-240 scale (hue 0 and
// 240 red, 80 green, 160 blue; grey has hue 160 and saturation 0). The
// roundings are part of the behaviour: a round trip may shift a pixel by a
// few steps, and every pixel of a working region makes one.
#pragma once

#include <cstdint>

// rgb: R, G, B bytes; hls: hue, lightness, saturation.
void RgbToHls(const uint8_t* rgb, uint16_t* hls);
void HlsToRgb(const uint16_t* hls, uint8_t* rgb);

// One channel on the 0-240 scale for the hue h (values above 240 are taken
// modulo 240 once; a wrapped negative hue stays large and yields m1).
uint16_t HueToChannel(uint16_t m1, uint16_t m2, uint16_t hue);

// HlsToRgb along a row of count pixels, for hues up to 240, lightness up to
// 255 and saturation up to 240: the values the pipeline holds.
void HlsRowToRgb(const uint16_t* hls, uint8_t* rgb, int32_t count);
