#include <gtest/gtest.h>

#include "redeye/Pipeline.h"
#include "tests/native/LiteralPipeline.h"
#include "tests/native/RegionBuffers.h"
#include "tests/native/TestImages.h"

namespace {

// The fast pipeline against the literal one on random scenes, byte for byte.
using Painter = void (*)(uint8_t*, int32_t, int32_t, uint32_t);

void ExpectSameAsLiteral(int32_t width, int32_t height, uint32_t seed, float tolerance,
                         float darkening, Painter paint = PaintScene) {
    RegionBuffers fast(width, height), plain(width, height);
    paint(fast.work.data(), width, height, seed);
    plain.work = fast.work;
    RunRedEyePipeline(fast.View(), width, height, tolerance, darkening);
    literal::RunPipeline(plain.View(), width, height, tolerance, darkening);
    ASSERT_EQ(fast.work, plain.work) << width << "x" << height << " seed " << seed << " tolerance "
                                     << tolerance << " darkening " << darkening;
}

TEST(Differential, RandomRegionsAndUserValues) {
    Random random(2024);
    for (uint32_t trial = 1; trial <= 600; ++trial) {
        const int32_t width = random.Between(1, 64), height = random.Between(1, 64);
        const float tolerance = random.Below(10001) / 100.0f;
        const float darkening = random.Below(10001) / 100.0f;
        ExpectSameAsLiteral(width, height, trial, tolerance, darkening);
    }
}

TEST(Differential, ValuesBeyondTheDialogRange) {
    Random random(77);
    for (uint32_t trial = 1; trial <= 120; ++trial) {
        const int32_t width = random.Between(1, 48), height = random.Between(1, 48);
        const float tolerance = random.Below(40001) / 100.0f - 60;
        const float darkening = random.Below(60001) / 100.0f - 200;
        ExpectSameAsLiteral(width, height, 5000 + trial, tolerance, darkening);
    }
}

TEST(Differential, WholeNumberUserValues) {
    for (int value = 0; value <= 100; ++value) {
        ExpectSameAsLiteral(31, 23, 9000 + value, float(value), float(100 - value));
    }
}

TEST(Differential, PatchesInSeparateRowBands) {
    Random random(99);
    for (uint32_t trial = 1; trial <= 60; ++trial) {
        const int32_t width = random.Between(3, 40), height = random.Between(40, 240);
        ExpectSameAsLiteral(width, height, 7000 + trial, random.Below(10001) / 100.0f,
                            random.Below(10001) / 100.0f, PaintPatches);
    }
}

// Near-black (1, 1, 1) comes back from the round trip as 1, the code of the
// red class: were the row three above a red block turned back into RGB
// before the block's coverage is measured, the green rows between would
// take weight from it and lose colour.
TEST(Differential, NearBlackRowAboveARedBlock) {
    const Painter paint = [](uint8_t* rgb, int32_t width, int32_t height, uint32_t top) {
        for (int32_t i = 0; i < width * height; ++i) {
            const int32_t y = i / width;
            const bool red = y >= int32_t(top) && y < int32_t(top) + 4;
            const bool dark = y == int32_t(top) - 3;
            rgb[3 * i] = red ? 220 : dark ? 1 : 40;
            rgb[3 * i + 1] = red ? 30 : dark ? 1 : 150;
            rgb[3 * i + 2] = red ? 40 : dark ? 1 : 60;
        }
    };
    for (uint32_t top = 0; top < 12; ++top) ExpectSameAsLiteral(9, 16, top, 50, 50, paint);
}

}  // namespace
