// Zero-filled working buffers for one region, as the page allocator gives
// them to the filtering driver.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "redeye/Pipeline.h"

struct RegionBuffers {
    std::vector<uint8_t> work;
    std::vector<uint16_t> hls;
    std::vector<uint32_t> distance;
    std::vector<uint8_t> weight, coverage, depth;

    RegionBuffers(int32_t width, int32_t height) {
        const size_t pixels = static_cast<size_t>(std::max(width, 0)) * std::max(height, 0);
        work.resize(3 * pixels);
        hls.resize(3 * pixels);
        distance.resize(pixels);
        weight.resize(pixels);
        coverage.resize(pixels);
        depth.resize(pixels);
    }
    PipelineBuffers View() {
        return {work.data(),   hls.data(),      distance.data(),
                weight.data(), coverage.data(), depth.data()};
    }
};
