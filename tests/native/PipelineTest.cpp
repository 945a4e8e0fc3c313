// The red-eye pipeline, built natively and for the Windows module: byte for
// byte the literal reference on seeded regions, the colour conversion
// against plain division, and the recorded output digests of a fixed set of
// runs (equal digests mean the same corrected bytes on every build).
#include <gtest/gtest.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <fstream>
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
        {"stripes in separate row bands", PaintStripes, 60, 3, 40, 40, 240, 0, 100, 100},
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
    std::vector<uint16_t> plain(rgb.size()), fast(rgb.size()), eight(rgb.size());
    for (int red = 0; red < 256; ++red) {
        for (int i = 0; i < 65536; ++i) {
            const uint8_t colour[] = {uint8_t(red), uint8_t(i >> 8), uint8_t(i)};
            std::copy_n(colour, 3, &rgb[3 * i]);
            literal::RgbToHls(colour, &plain[3 * i]);
            RgbToHls(colour, &fast[3 * i]);
        }
        row = rgb;
        ClassifyRow(row.data(), eight.data(), 65536, thresholds);
        for (const auto* hls : {&fast, &eight}) {
            const size_t at =
                std::mismatch(plain.begin(), plain.end(), hls->begin()).first - plain.begin();
            ASSERT_EQ(at, plain.size()) << red << "," << (at / 3 >> 8) << "," << (at / 3 & 255);
        }
    }
}

uint64_t Fnv1a64(const std::vector<uint8_t>& bytes) {
    uint64_t hash = 14695981039346656037ull;
    for (const uint8_t b : bytes) hash = (hash ^ b) * 1099511628211ull;
    return hash;
}

// Each line of the file names a run and the digest of its corrected bytes:
// the test makes every run and compares the whole file, which it prints
// anew on a mismatch.
TEST(PipelineDigests, MatchTheRecordedFile) {
    std::ifstream file(QUORVEX_DIGEST_FILE);
    std::string recorded, computed, line;
    for (uint32_t seed = 1; std::getline(file, line); recorded += line + "\n") {
        char name[64], tolerance[32], darkening[32], picture[16];
        int32_t width, height;
        if (std::sscanf(line.c_str(), "%63s %d %d %31s %31s %15s", name, &width, &height, tolerance,
                        darkening, picture) != 6) {
            computed += line + "\n";  // the heading
            continue;
        }
        RegionBuffers buffers(width, height);
        (picture == std::string("portrait") ? PaintPortrait : PaintScene)(buffers.work.data(),
                                                                          width, height, seed++);
        RunRedEyePipeline(buffers.View(), width, height, std::strtof(tolerance, nullptr),
                          std::strtof(darkening, nullptr));
        char digest[24];
        std::snprintf(digest, sizeof digest, " %016" PRIx64 "\n", Fnv1a64(buffers.work));
        computed += line.substr(0, line.rfind(' ')) + digest;
    }
    ASSERT_FALSE(recorded.empty()) << "cannot read " << QUORVEX_DIGEST_FILE;
    EXPECT_EQ(recorded, computed) << "new content of " << QUORVEX_DIGEST_FILE << ":\n" << computed;
}

}  // namespace
