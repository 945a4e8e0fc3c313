// Zero-filled working buffers for one region, as the page allocator gives
// them to the filtering driver.
#pragma once

#include <cstdint>
#include <vector>

#include "redeye/Pipeline.h"

struct RegionBuffers {
    std::vector<uint8_t> work;
    std::vector<uint16_t> hls;
    std::vector<uint32_t> distance;
    std::vector<uint8_t> weight, coverage, depth;

    RegionBuffers(int32_t width, int32_t height);
    PipelineBuffers View();
    void Clear();  // back to zero
};
