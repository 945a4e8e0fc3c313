#include "tests/native/RegionBuffers.h"

#include <algorithm>
#include <cstddef>

RegionBuffers::RegionBuffers(int32_t width, int32_t height) {
    const size_t pixels = static_cast<size_t>(std::max(width, 0)) * std::max(height, 0);
    work.resize(3 * pixels);
    hls.resize(3 * pixels);
    distance.resize(pixels);
    weight.resize(pixels);
    coverage.resize(pixels);
    depth.resize(pixels);
}

PipelineBuffers RegionBuffers::View() {
    return {work.data(), hls.data(), distance.data(), weight.data(), coverage.data(), depth.data()};
}

void RegionBuffers::Clear() {
    std::fill(work.begin(), work.end(), 0);
    std::fill(hls.begin(), hls.end(), 0);
    std::fill(distance.begin(), distance.end(), 0);
    std::fill(weight.begin(), weight.end(), 0);
    std::fill(coverage.begin(), coverage.end(), 0);
    std::fill(depth.begin(), depth.end(), 0);
}
