// How deep each pixel lies inside a red or weak-red patch: a 3-4 chamfer
// distance to the nearest other pixel (or the region's outside), smoothed
// into a 0-255 depth map.
#pragma once

#include <cstdint>

int32_t Min4(int32_t a, int32_t b, int32_t c, int32_t d);
int32_t Min5(int32_t a, int32_t b, int32_t c, int32_t d, int32_t e);

// work: 3 bytes a pixel, class byte first, row step 3 * width. The distance
// map must arrive zero-filled; entries of class-other pixels stay 0.
void ChamferDistance(const uint8_t* work, int32_t width, int32_t height, uint32_t* distance);

// Mean of each interior pixel's 3x3 distances, limited to 255, with isolated
// shallow points (depth 1 or 2 among neighbours below 3) removed. The depth
// map must arrive zero-filled; its border stays 0.
void SmoothDistance(uint8_t* depth, const uint32_t* distance, int32_t width, int32_t height);
