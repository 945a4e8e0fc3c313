// The red-eye pipeline, built natively and for the Windows module: byte for
// byte the literal reference on seeded regions, the colour conversion
// against plain division, and the recorded output digests of a fixed set of
// runs (equal digests mean the same corrected bytes on every build).
#include <gtest/gtest.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "redeye/Classify.h"
#include "redeye/Color.h"
#include "tests/native/LiteralPipeline.h"
#include "tests/native/RegionBuffers.h"
#include "tests/native/TestImages.h"

namespace {

using Painter = void (*)(uint8_t*, int32_t, int32_t, uint32_t);

// Near-black (1, 1, 1) comes back from the round trip as 1, the code of the
// red class: were the row three above a red block turned back into RGB
// before the block's coverage is measured, the green rows between would
// take weight from it and lose colour. The seed is the block's top row.
void PaintNearBlackAboveRed(uint8_t* rgb, int32_t width, int32_t height, uint32_t top) {
    for (int32_t i = 0; i < width * height; ++i) {
        const int32_t y = i / width;
        const bool red = y >= int32_t(top) && y < int32_t(top) + 4, dark = y == int32_t(top) - 3;
        rgb[3 * i] = red ? 220 : dark ? 1 : 40;
        rgb[3 * i + 1] = red ? 30 : dark ? 1 : 150;
        rgb[3 * i + 2] = red ? 40 : dark ? 1 : 60;
    }
}

// Regions of random size and random user values, each value `low` plus a
// multiple of 1 / `steps` up to `high`: whole numbers as the dialog gives
// them, fractions, and values no dialog offers.
TEST(Differential, PipelineGivesTheLiteralBytes) {
    struct Case {
        const char* what;
        Painter paint;
        uint32_t regions;
        int32_t minWidth, maxWidth, minHeight, maxHeight;
        float low, high, steps;
    };
    const Case cases[] = {
        {"scenes", PaintScene, 600, 1, 64, 1, 64, 0, 100, 100},
        {"whole numbers", PaintScene, 100, 31, 31, 23, 23, 0, 100, 1},
        {"beyond the dialog's range", PaintScene, 150, 1, 48, 1, 48, -100, 400, 100},
        {"patches in separate row bands", PaintPatches, 60, 3, 40, 40, 240, 0, 100, 100},
        {"near-black row above a red block", PaintNearBlackAboveRed, 12, 9, 9, 16, 16, 50, 50, 1},
    };
    Random random(2024);
    for (const Case& c : cases) {
        const auto value = [&] {
            return c.low + random.Below(int32_t((c.high - c.low) * c.steps) + 1) / c.steps;
        };
        for (uint32_t seed = 0; seed < c.regions; ++seed) {
            const int32_t width = random.Between(c.minWidth, c.maxWidth);
            const int32_t height = random.Between(c.minHeight, c.maxHeight);
            const float tolerance = value(), darkening = value();
            RegionBuffers fast(width, height), plain(width, height);
            c.paint(fast.work.data(), width, height, seed);
            plain.work = fast.work;
            RunRedEyePipeline(fast.View(), width, height, tolerance, darkening);
            literal::RunPipeline(plain.View(), width, height, tolerance, darkening);
            ASSERT_EQ(fast.work, plain.work)
                << c.what << ": " << width << "x" << height << " seed " << seed << " tolerance "
                << tolerance << " darkening " << darkening;
        }
    }
}

// Every colour, pixel by pixel and eight at a time (the row classifier).
TEST(ColorConversion, EveryColourConvertsLikePlainDivision) {
    ClassThresholds thresholds;
    PrepareClassThresholds(50, &thresholds);
    std::vector<uint8_t> rgb(3 * 65536), row;
    std::vector<uint16_t> rowHls(3 * 65536);
    int mismatches = 0;
    for (int r = 0; r < 256; ++r) {
        for (int i = 0; i < 65536; ++i) {
            rgb[3 * i] = uint8_t(r);
            rgb[3 * i + 1] = uint8_t(i >> 8);
            rgb[3 * i + 2] = uint8_t(i);
        }
        row = rgb;
        ClassifyRow(row.data(), rowHls.data(), 65536, thresholds);
        for (int i = 0; i < 65536; ++i) {
            uint16_t plain[3], fast[3];
            literal::RgbToHls(&rgb[3 * i], plain);
            RgbToHls(&rgb[3 * i], fast);
            if ((!std::equal(plain, plain + 3, fast) ||
                 !std::equal(plain, plain + 3, &rowHls[3 * i])) &&
                ++mismatches <= 5) {
                ADD_FAILURE() << r << "," << (i >> 8) << "," << (i & 255);
            }
        }
    }
    EXPECT_EQ(mismatches, 0);
}

uint64_t Fnv1a64(const std::vector<uint8_t>& bytes) {
    uint64_t hash = 14695981039346656037ull;
    for (const uint8_t b : bytes) hash = (hash ^ b) * 1099511628211ull;
    return hash;
}

// Each case paints the scene (or the portrait) of seed = its line number.
TEST(PipelineDigests, MatchTheRecordedFile) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const struct {
        const char* name;
        int32_t width, height;
        float tolerance, darkening;
        bool portrait;
    } cases[] = {
        {"single-pixel", 1, 1, 50, 50, false},
        {"thin-row", 37, 1, 50, 50, false},
        {"thin-column", 1, 29, 75, 40, false},
        {"tiny", 3, 3, 50, 50, false},
        {"small-default", 17, 13, 50, 50, false},
        {"small-tolerance-0", 40, 30, 0, 50, false},
        {"small-darkening-0", 40, 30, 50, 0, false},
        {"small-tolerance-100", 64, 48, 100, 100, false},
        {"odd-fractions", 61, 47, 33.3f, 66.7f, false},
        {"odd-fractions-2", 59, 53, 12.5f, 87.5f, false},
        {"medium-scene", 200, 150, 50, 50, false},
        {"medium-scene-2", 333, 97, 80, 25, false},
        {"medium-scene-3", 128, 256, 39.99f, 99.9f, false},
        {"portrait", 320, 240, 50, 50, true},
        {"portrait-wide-tolerance", 320, 240, 100, 70, true},
        {"portrait-low-tolerance", 257, 199, 10, 30, true},
        {"tolerance-150", 90, 70, 150, 50, false},
        {"tolerance-300", 90, 70, 300, 50, false},
        {"tolerance-negative", 90, 70, -20, 50, false},
        {"darkening-negative", 90, 70, 50, -40, false},
        {"darkening-250", 90, 70, 50, 250, false},
        {"tolerance-huge", 50, 40, 1e30f, 50, false},
        {"tolerance-minus-huge", 50, 40, -1e30f, 50, false},
        {"darkening-huge", 50, 40, 50, 1e30f, false},
        {"tolerance-infinite", 50, 40, kInfinity, 50, false},
        {"darkening-infinite", 50, 40, 50, kInfinity, false},
        {"darkening-minus-infinite", 50, 40, 50, -kInfinity, false},
        {"tolerance-nan", 50, 40, kNaN, 50, false},
        {"darkening-nan", 50, 40, 50, kNaN, false},
    };
    std::string digests;
    uint32_t seed = 0;
    for (const auto& c : cases) {
        RegionBuffers buffers(c.width, c.height);
        (c.portrait ? PaintPortrait : PaintScene)(buffers.work.data(), c.width, c.height, ++seed);
        RunRedEyePipeline(buffers.View(), c.width, c.height, c.tolerance, c.darkening);
        char line[80];
        std::snprintf(line, sizeof line, "%s %016" PRIx64 "\n", c.name, Fnv1a64(buffers.work));
        digests += line;
    }
    std::ostringstream recorded;
    recorded << std::ifstream(QUORVEX_DIGEST_FILE).rdbuf();
    EXPECT_EQ(recorded.str(), digests) << "new content of " << QUORVEX_DIGEST_FILE << ":\n"
                                       << digests;
}

}  // namespace
