#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "redeye/Classify.h"
#include "tests/native/LiteralPipeline.h"
#include "tests/native/TestImages.h"

namespace {

TEST(ClassifyPixel, RuleEdges) {
    struct Case {
        uint8_t h, s, l;
        float t;
        PixelClass expected;
        const char* why;
    };
    const Case cases[] = {
        {0, 240, 174, 50, kClassRed, "pure red: rule B up to lightness 174"},
        {0, 240, 175, 50, kClassWeakRed, "at 175 only weak-red rules hold"},
        {214, 240, 120, 50, kClassRed, "rule A above hue 230 - 50/3 = 213.3"},
        {213, 240, 120, 50, kClassWeakRed, "below it rule H"},
        {213, 240, 120, 53, kClassRed, "a larger tolerance widens rule A's hue window"},
        {5, 130, 180, 50, kClassWeakRed, "rule E at hue 5 (f = 30): saturation f + 100"},
        {5, 129, 180, 50, kClassOther, "one short of it"},
        {0, 51, 120, 50, kClassWeakRed, "rule F: saturation above f + 50"},
        {0, 50, 120, 50, kClassOther, "not above it"},
        {0, 240, 190, 50, kClassWeakRed, "rule I: light and very saturated"},
        {0, 240, 236, 50, kClassWeakRed, "rule I has no upper lightness"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ClassifyPixel(c.h, c.s, c.l, c.t), c.expected) << c.why;
    }
}

TEST(ClassifyPixel, GreyIsOtherUpToTolerance300) {
    for (float t = 0; t <= 300; t += 0.25f) {
        for (int l = 0; l <= 240; ++l) {
            ASSERT_EQ(ClassifyPixel(160, 0, uint8_t(l), t), kClassOther) << "t=" << t << " l=" << l;
        }
    }
}

TEST(ClassifyPixel, ReddishHueWindow) {
    const uint16_t hues[][3] = {{200, 0, 0}, {201, 0, 0}, {10, 0, 0}, {11, 0, 0}, {0, 0, 0}};
    EXPECT_EQ(IsReddishHue(hues[0]), 0);
    EXPECT_EQ(IsReddishHue(hues[1]), 2);
    EXPECT_EQ(IsReddishHue(hues[2]), 2);
    EXPECT_EQ(IsReddishHue(hues[3]), 0);
    EXPECT_EQ(IsReddishHue(hues[4]), 2);
}

// The whole-number thresholds prepared once per region against the float
// rules, over every hue, saturation and lightness byte.
TEST(ClassifyPixel, PreparedThresholdsFollowTheRulesForEveryByte) {
    ClassThresholds thresholds;
    PrepareClassThresholds(50, &thresholds);
    int mismatches = 0;
    for (int h = 0; h < 256; ++h)
        for (int s = 0; s < 256; ++s)
            for (int l = 0; l < 256; ++l) {
                if (ClassifyWithThresholds(thresholds, uint8_t(h), uint8_t(s), uint8_t(l)) !=
                        literal::ClassifyPixel(uint8_t(h), uint8_t(s), uint8_t(l), 50) &&
                    ++mismatches <= 5) {
                    ADD_FAILURE() << "h=" << h << " s=" << s << " l=" << l;
                }
            }
    EXPECT_EQ(mismatches, 0);
}

TEST(ClassifyPixel, PreparedThresholdsFollowTheRulesForAnyTolerance) {
    Random random(7);
    const float specials[] = {-1e30f,
                              1e30f,
                              std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::quiet_NaN(),
                              -50,
                              1000,
                              33.3f,
                              0,
                              100};
    for (int trial = 0; trial < 60; ++trial) {
        const float t = trial < 10 ? specials[trial] : random.Below(40000) / 100.0f - 50;
        ClassThresholds thresholds;
        PrepareClassThresholds(t, &thresholds);
        for (int sample = 0; sample < 20000; ++sample) {
            const auto h = uint8_t(random.Below(256)), s = uint8_t(random.Below(256)),
                       l = uint8_t(random.Below(256));
            const uint8_t expected = literal::ClassifyPixel(h, s, l, t);
            ASSERT_EQ(ClassifyPixel(h, s, l, t), expected)
                << t << " " << int(h) << " " << int(s) << " " << int(l);
            ASSERT_EQ(ClassifyWithThresholds(thresholds, h, s, l), expected)
                << t << " " << int(h) << " " << int(s) << " " << int(l);
        }
    }
}

}  // namespace
