#include "tests/native/DigestCases.h"

#include <cinttypes>
#include <cstdio>
#include <limits>

#include "tests/native/RegionBuffers.h"
#include "tests/native/TestImages.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

uint64_t Fnv1a64(const uint8_t* bytes, size_t count) {
    uint64_t hash = 14695981039346656037ull;
    for (size_t i = 0; i < count; ++i) {
        hash ^= bytes[i];
        hash *= 1099511628211ull;
    }
    return hash;
}

}  // namespace

const DigestCase kDigestCases[] = {
    {"single-pixel", 1, 1, 1, 50, 50, false},
    {"thin-row", 37, 1, 2, 50, 50, false},
    {"thin-column", 1, 29, 3, 75, 40, false},
    {"tiny", 3, 3, 4, 50, 50, false},
    {"small-default", 17, 13, 5, 50, 50, false},
    {"small-tolerance-0", 40, 30, 6, 0, 50, false},
    {"small-darkening-0", 40, 30, 7, 50, 0, false},
    {"small-tolerance-100", 64, 48, 8, 100, 100, false},
    {"odd-fractions", 61, 47, 9, 33.3f, 66.7f, false},
    {"odd-fractions-2", 59, 53, 10, 12.5f, 87.5f, false},
    {"medium-scene", 200, 150, 11, 50, 50, false},
    {"medium-scene-2", 333, 97, 12, 80, 25, false},
    {"medium-scene-3", 128, 256, 13, 39.99f, 99.9f, false},
    {"portrait", 320, 240, 14, 50, 50, true},
    {"portrait-wide-tolerance", 320, 240, 15, 100, 70, true},
    {"portrait-low-tolerance", 257, 199, 16, 10, 30, true},
    {"tolerance-150", 90, 70, 17, 150, 50, false},
    {"tolerance-300", 90, 70, 18, 300, 50, false},
    {"tolerance-negative", 90, 70, 19, -20, 50, false},
    {"darkening-negative", 90, 70, 20, 50, -40, false},
    {"darkening-250", 90, 70, 21, 50, 250, false},
    {"tolerance-huge", 50, 40, 22, 1e30f, 50, false},
    {"tolerance-minus-huge", 50, 40, 23, -1e30f, 50, false},
    {"darkening-huge", 50, 40, 24, 50, 1e30f, false},
    {"tolerance-infinite", 50, 40, 25, kInfinity, 50, false},
    {"darkening-infinite", 50, 40, 26, 50, kInfinity, false},
    {"darkening-minus-infinite", 50, 40, 27, 50, -kInfinity, false},
    {"tolerance-nan", 50, 40, 28, kNaN, 50, false},
    {"darkening-nan", 50, 40, 29, 50, kNaN, false},
};
const size_t kDigestCaseCount = sizeof kDigestCases / sizeof kDigestCases[0];

uint64_t RunDigestCase(const DigestCase& c) {
    RegionBuffers buffers(c.width, c.height);
    if (c.portrait) {
        PaintPortrait(buffers.work.data(), c.width, c.height, c.seed);
    } else {
        PaintScene(buffers.work.data(), c.width, c.height, c.seed);
    }
    RunRedEyePipeline(buffers.View(), c.width, c.height, c.tolerance, c.darkening);
    return Fnv1a64(buffers.work.data(), buffers.work.size());
}

std::string FormatDigestLine(const char* name, uint64_t digest) {
    char line[128];
    std::snprintf(line, sizeof line, "%s %016" PRIx64, name, digest);
    return line;
}

std::map<std::string, uint64_t> ReadDigestFile(const char* path) {
    std::map<std::string, uint64_t> digests;
    std::FILE* file = std::fopen(path, "r");
    if (!file) return digests;
    char name[100];
    uint64_t digest;
    while (std::fscanf(file, "%99s %" SCNx64, name, &digest) == 2) digests[name] = digest;
    std::fclose(file);
    return digests;
}
