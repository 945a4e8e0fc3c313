// Small hand-built regions for the stage tests, written as text: one
// character a pixel, rows separated by '|'.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ClassGrid {
    int32_t width = 0, height = 0;
    std::vector<uint8_t> work;  // 3 bytes a pixel, class byte first

    // '.' other, 'R' red, 'w' weak red.
    explicit ClassGrid(const std::string& rows);
    uint8_t Class(int32_t x, int32_t y) const { return work[3 * (y * width + x)]; }
    std::string Classes() const;  // back to text
};
