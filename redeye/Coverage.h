// How much red surrounds each interior pixel. rowStep is the work image's row
// step in bytes; the two maps have one byte a pixel (row step rowStep / 3).
// Both maps must arrive zero-filled; their border stays 0.
#pragma once

#include <cstddef>
#include <cstdint>

// coverage: 4 for a red pixel plus 1 for each red neighbour, out of 12,
// scaled to 0-255; weight: 4 times the own coverage plus the eight
// neighbours' coverage, divided by 12.
void CoverageMaps(uint8_t* weight, uint8_t* coverage, const uint8_t* work, int32_t width,
                  int32_t height, ptrdiff_t rowStep);
