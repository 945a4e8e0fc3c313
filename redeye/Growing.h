// Growing the red class: into weak red next to red, and along rows into
// pixels whose hue is close to red. Class bytes are the first byte of each
// 3-byte pixel of the work image; rowStep is the work image's row step in
// bytes, which is also the HLS image's row step in values.
#pragma once

#include <cstddef>
#include <cstdint>

// Each round: a forward sweep (rows 0..H-2, columns 0..W-2) turns weak red
// into red when its right, lower or lower-right neighbour is red; a backward
// sweep (rows H-1..1, columns W-1..1) does so for the left, upper and
// upper-left neighbour. No rounds for rounds <= 0.
void GrowIntoWeak(uint8_t* work, int32_t width, int32_t height, ptrdiff_t rowStep, int32_t rounds);

// Each round spreads red by one pixel to the left and to the right into any
// pixel, whatever its class, whose hue is reddish (IsReddishHue).
void GrowAlongRows(const uint16_t* hls, uint8_t* work, int32_t width, int32_t height,
                   ptrdiff_t rowStep, int32_t rounds);
