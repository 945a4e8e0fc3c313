#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "redeye/Correction.h"
#include "redeye/Truncate.h"

namespace {

using Hls = std::array<uint16_t, 3>;

Hls Correct(Hls hls, uint8_t weight, uint8_t depth, float darkening) {
    CorrectPixel(hls.data(), weight, depth, MakeDarkeningTerms(darkening));
    return hls;
}

TEST(CorrectPixel, SaturationFollowsTheWeight) {
    EXPECT_EQ(Correct({7, 100, 200}, 0, 50, 100), (Hls{7, 100, 200}));  // no weight, no change
    EXPECT_EQ(Correct({7, 100, 200}, 170, 0, 0), (Hls{7, 100, 0}));
    EXPECT_EQ(Correct({7, 100, 200}, 169, 0, 0), (Hls{7, 100, 1}));
    // k = 85/255 held in single precision is a hair above 1/3: 240 * 0.49999998
    // truncates to 119, not 120.
    EXPECT_EQ(Correct({7, 100, 240}, 85, 0, 0), (Hls{7, 100, 119}));
    // Lighter than 150: all colour goes whatever the weight.
    EXPECT_EQ(Correct({7, 151, 200}, 1, 0, 0), (Hls{7, 151, 0}));
}

TEST(CorrectPixel, DarkeningGrowsWithDepthAndFadesBelowTheThreshold) {
    // Darkening 50: D = 10, threshold 170.
    EXPECT_EQ(Correct({3, 100, 0}, 255, 5, 50)[1], 50);     // 100 - 5 * 10
    EXPECT_EQ(Correct({3, 160, 0}, 255, 10, 50)[1], 93);    // 160 - 100 * 10/15
    EXPECT_EQ(Correct({3, 170, 0}, 255, 10, 50)[1], 170);   // at the threshold: kept
    EXPECT_EQ(Correct({3, 30, 0}, 255, 255, 100)[1], 0);    // limited to 0
    EXPECT_EQ(Correct({3, 20, 0}, 255, 255, -50)[1], 255);  // brightening, limited to 255
    EXPECT_EQ(Correct({3, 50, 0}, 255, 200, 0)[1], 50);     // darkening 0
}

TEST(CorrectPixel, NonFiniteDarkeningStaysDefined) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Correct({3, 100, 80}, 255, 9, nan), (Hls{3, 100, 0}));
    EXPECT_EQ(Correct({3, 100, 80}, 255, 9, -infinity), (Hls{3, 100, 0}));
    EXPECT_EQ(Correct({3, 100, 80}, 255, 9, infinity), (Hls{3, 0, 0}));
    // Depth 0 times an infinite D is NaN, which converts to 0.
    EXPECT_EQ(Correct({3, 100, 80}, 255, 0, infinity), (Hls{3, 0, 0}));
    EXPECT_EQ(Correct({3, 100, 80}, 255, 9, 1e30f), (Hls{3, 0, 0}));
}

TEST(TruncateToInt32, TruncatesTowardZeroAndSaturates) {
    EXPECT_EQ(TruncateToInt32(2.9), 2);
    EXPECT_EQ(TruncateToInt32(-2.9), -2);
    EXPECT_EQ(TruncateToInt32(-0.5), 0);
    EXPECT_EQ(TruncateToInt32(2147483647.9), 2147483647);
    EXPECT_EQ(TruncateToInt32(-2147483648.9), -2147483647 - 1);
    EXPECT_EQ(TruncateToInt32(1e30), 2147483647);
    EXPECT_EQ(TruncateToInt32(-std::numeric_limits<double>::infinity()), -2147483647 - 1);
    EXPECT_EQ(TruncateToInt32(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
