// Writes 24-bit pictures as PNG files (uncompressed deflate blocks), so that
// tests can leave screenshots without any image library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// `pixels` holds width * height values 0x00RRGGBB, top row first.
bool WritePng(const std::string& path, int width, int height, const std::vector<uint32_t>& pixels);
