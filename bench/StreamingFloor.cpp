#include "bench/StreamingFloor.h"

#include <cstddef>

namespace {

// Reads one buffer and writes another of the same length (a sweep that
// turns one map into the next).
template <typename In, typename Out>
void Transform(const In* in, Out* out, size_t count) {
    for (size_t i = 0; i < count; ++i) out[i] = static_cast<Out>(in[i] + 1);
}

// Reads and rewrites a buffer in place.
template <typename T>
void Update(T* values, size_t count) {
    for (size_t i = 0; i < count; ++i) values[i] = static_cast<T>(values[i] ^ 1);
}

template <typename T>
uint64_t Sum(const T* values, size_t count) {
    uint64_t sum = 0;
    for (size_t i = 0; i < count; ++i) sum += values[i];
    return sum;
}

}  // namespace

uint64_t StreamWorkingBuffers(const PipelineBuffers& b, int32_t width, int32_t height) {
    const size_t pixels = static_cast<size_t>(width) * height;
    uint64_t checksum = 0;
    // Classification: RGB in, HLS out, class bytes over the RGB.
    Transform(b.work, b.hls, 3 * pixels);
    Update(b.work, 3 * pixels);
    // Distance: the starting values, then two passes over classes and distances.
    for (int pass = 0; pass < 3; ++pass) {
        checksum += Sum(b.work, 3 * pixels);
        Update(b.distance, pixels);
    }
    // Depth: the mean, then the removal of shallow points.
    Transform(b.distance, b.depth, pixels);
    Update(b.depth, pixels);
    // Growing into weak red (one round of two sweeps), along rows (two rounds).
    for (int sweep = 0; sweep < 2; ++sweep) Update(b.work, 3 * pixels);
    for (int sweep = 0; sweep < 4; ++sweep) {
        checksum += Sum(b.work, 3 * pixels) + Sum(b.hls, 3 * pixels);
    }
    // Coverage and weight.
    checksum += Sum(b.work, 3 * pixels);
    Update(b.coverage, pixels);
    Transform(b.coverage, b.weight, pixels);
    // Correction, then HLS back to RGB.
    checksum += Sum(b.weight, pixels) + Sum(b.depth, pixels);
    Update(b.hls, 3 * pixels);
    Transform(b.hls, b.work, 3 * pixels);
    return checksum;
}
