#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

#include "redeye/Color.h"
#include "redeye/Pipeline.h"
#include "tests/native/RegionBuffers.h"
#include "tests/native/TestImages.h"

namespace {

using Rgb = std::array<uint8_t, 3>;

Rgb RoundTrip(const uint8_t* rgb) {
    uint16_t hls[3];
    Rgb back;
    RgbToHls(rgb, hls);
    HlsToRgb(hls, back.data());
    return back;
}

Rgb PixelAt(const std::vector<uint8_t>& work, int width, int x, int y) {
    const uint8_t* px = &work[3 * (y * width + x)];
    return {px[0], px[1], px[2]};
}

struct Outcome {
    std::vector<uint8_t> input, output;
};

Outcome Correct(int width, int height, float tolerance, float darkening, Rgb fill,
                uint32_t scene = 0) {
    RegionBuffers buffers(width, height);
    for (size_t i = 0; i < buffers.work.size(); i += 3) {
        std::copy(fill.begin(), fill.end(), buffers.work.begin() + i);
    }
    if (scene != 0) PaintScene(buffers.work.data(), width, height, scene);
    Outcome run{buffers.work, {}};
    RunRedEyePipeline(buffers.View(), width, height, tolerance, darkening);
    run.output = buffers.work;
    return run;
}

// (220, 30, 40) is red at every tolerance from 0; its lightness is 118.
constexpr Rgb kPupil{220, 30, 40};

TEST(Pipeline, BorderPixelsOnlyMakeTheRoundTrip) {
    const int width = 12, height = 10;
    const Outcome run = Correct(width, height, 50, 50, kPupil);
    const Rgb roundTrip = RoundTrip(kPupil.data());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool border = x == 0 || y == 0 || x == width - 1 || y == height - 1;
            if (border) {
                EXPECT_EQ(PixelAt(run.output, width, x, y), roundTrip) << x << "," << y;
            } else {
                EXPECT_NE(PixelAt(run.output, width, x, y), roundTrip) << x << "," << y;
            }
        }
    }
    // The patch's core loses all colour and, at darkening 50, all lightness.
    EXPECT_EQ(PixelAt(run.output, width, 5, 5), (Rgb{0, 0, 0}));
}

TEST(Pipeline, ToleranceAndDarkeningZeroStillDesaturateRed) {
    const Outcome run = Correct(12, 10, 0, 0, kPupil);
    // Rule A holds at tolerance 0; darkening 0 keeps lightness 118 and the
    // core loses its saturation: grey 118 * 255 / 240.
    for (int y = 2; y < 8; ++y) {
        for (int x = 2; x < 10; ++x) EXPECT_EQ(PixelAt(run.output, 12, x, y), (Rgb{125, 125, 125}));
    }
}

TEST(Pipeline, PixelsFarFromRedOnlyMakeTheRoundTrip) {
    const Outcome run = Correct(40, 30, 100, 100, {40, 150, 60});  // green: never reddish
    for (size_t i = 0; i < run.input.size(); i += 3) {
        ASSERT_EQ(PixelAt(run.output, 40, int(i / 3 % 40), int(i / 3 / 40)),
                  RoundTrip(&run.input[i]));
    }
}

TEST(Pipeline, EmptyRegionsTouchNothing) {
    const PipelineBuffers none{nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
    RunRedEyePipeline(none, 0, 10, 50, 50);
    RunRedEyePipeline(none, 10, 0, 50, 50);
    RunRedEyePipeline(none, -5, -5, 50, 50);
}

// Values no dialog offers still give defined results, and the sanitizers
// see no undefined conversion on the way.
TEST(Pipeline, ExtremeValuesAreHandled) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    const Rgb grey{128, 128, 128};
    // No tolerance at all: nothing is red, every pixel only makes the round trip.
    for (const float tolerance : {nan, -infinity, -1e30f}) {
        const Outcome run = Correct(20, 16, tolerance, 50, grey, 41);
        for (size_t i = 0; i < run.input.size(); i += 3) {
            ASSERT_EQ(PixelAt(run.output, 20, int(i / 3 % 20), int(i / 3 / 20)),
                      RoundTrip(&run.input[i]));
        }
    }
    // Unlimited tolerance: every pixel is red, the core turns grey.
    for (const float tolerance : {infinity, 1e30f}) {
        const Outcome run = Correct(20, 16, tolerance, 0, grey, 42);
        for (int y = 3; y < 13; ++y) {
            for (int x = 3; x < 17; ++x) {
                const Rgb px = PixelAt(run.output, 20, x, y);
                ASSERT_TRUE(px[0] == px[1] && px[1] == px[2]) << x << "," << y;
            }
        }
    }
    // Darkening that cannot apply leaves the lightness as darkening 0 does.
    const std::vector<uint8_t> undarkened = Correct(20, 16, 60, 0, grey, 43).output;
    for (const float darkening : {nan, -infinity}) {
        EXPECT_EQ(Correct(20, 16, 60, darkening, grey, 43).output, undarkened);
    }
    for (const float darkening : {infinity, 1e30f, -1e30f}) {
        Correct(20, 16, 60, darkening, grey, 44);
    }
}

}  // namespace
