#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "redeye/Classify.h"
#include "redeye/Color.h"
#include "tests/native/LiteralPipeline.h"

namespace {

using Hls = std::array<uint16_t, 3>;
using Rgb = std::array<uint8_t, 3>;

Hls ToHls(Rgb rgb) {
    Hls hls{};
    RgbToHls(rgb.data(), hls.data());
    return hls;
}

Rgb ToRgb(Hls hls) {
    Rgb rgb{};
    HlsToRgb(hls.data(), rgb.data());
    return rgb;
}

TEST(ColorConversion, KnownColoursAndTheirRoundTrips) {
    struct Case {
        Rgb rgb;
        Hls hls;
        Rgb back;
    };
    const Case cases[] = {
        {{0, 0, 0}, {160, 0, 0}, {0, 0, 0}},
        {{255, 255, 255}, {160, 240, 0}, {255, 255, 255}},
        {{255, 0, 0}, {0, 120, 240}, {255, 0, 0}},
        {{0, 0, 255}, {160, 120, 240}, {0, 0, 255}},
        {{128, 128, 128}, {160, 120, 0}, {127, 127, 127}},
        {{200, 30, 40}, {238, 108, 177}, {200, 30, 38}},
        // Lighter than mid-grey: the saturation and m2 formulas of the upper half.
        {{255, 128, 128}, {0, 180, 240}, {255, 128, 128}},
        {{40, 200, 120}, {100, 113, 160}, {40, 200, 120}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ToHls(c.rgb), c.hls)
            << int(c.rgb[0]) << "," << int(c.rgb[1]) << "," << int(c.rgb[2]);
        EXPECT_EQ(ToRgb(c.hls), c.back)
            << int(c.rgb[0]) << "," << int(c.rgb[1]) << "," << int(c.rgb[2]);
    }
}

// Every colour, pixel by pixel and eight at a time (the row classifier),
// against the conversion written with plain divisions.
TEST(ColorConversion, EveryColourConvertsLikePlainDivision) {
    ClassThresholds thresholds;
    PrepareClassThresholds(50, &thresholds);
    std::vector<uint8_t> row(3 * 65536);
    std::vector<uint16_t> rowHls(3 * 65536);
    int mismatches = 0;
    for (int r = 0; r < 256; ++r) {
        for (int i = 0; i < 65536; ++i) {
            row[3 * i] = uint8_t(r);
            row[3 * i + 1] = uint8_t(i >> 8);
            row[3 * i + 2] = uint8_t(i);
        }
        const std::vector<uint8_t> rgb = row;
        ClassifyRow(row.data(), rowHls.data(), 65536, thresholds);
        for (int i = 0; i < 65536; ++i) {
            Hls plain, fast, eight;
            literal::RgbToHls(&rgb[3 * i], plain.data());
            RgbToHls(&rgb[3 * i], fast.data());
            std::copy_n(&rowHls[3 * i], 3, eight.begin());
            if ((fast != plain || eight != plain) && ++mismatches <= 5) {
                ADD_FAILURE() << r << "," << (i >> 8) << "," << (i & 255);
            }
        }
    }
    EXPECT_EQ(mismatches, 0);
}

// Every hue, lightness and saturation the pipeline can hold, eight at a time.
TEST(ColorConversion, RowConversionMatchesEveryTriple) {
    std::vector<uint16_t> hls;
    for (int s = 0; s <= 240; ++s)
        for (int h = 0; h <= 240; ++h) hls.insert(hls.end(), {uint16_t(h), 0, uint16_t(s)});
    const int count = int(hls.size() / 3);
    std::vector<uint8_t> row(3 * count);
    int mismatches = 0;
    for (int l = 0; l <= 255; ++l) {
        for (int i = 0; i < count; ++i) hls[3 * i + 1] = uint16_t(l);
        HlsRowToRgb(hls.data(), row.data(), count);
        for (int i = 0; i < count; ++i) {
            Rgb single;
            HlsToRgb(&hls[3 * i], single.data());
            if (!std::equal(single.begin(), single.end(), &row[3 * i]) && ++mismatches <= 5) {
                ADD_FAILURE() << hls[3 * i] << "," << l << "," << hls[3 * i + 2];
            }
        }
    }
    EXPECT_EQ(mismatches, 0);
}

TEST(ColorConversion, HueToChannelWrapsHuesAbove240) {
    // Rising, flat, falling and low parts of the channel curve.
    EXPECT_EQ(HueToChannel(40, 200, 20), 120);
    EXPECT_EQ(HueToChannel(40, 200, 80), 200);
    EXPECT_EQ(HueToChannel(40, 200, 150), 80);
    EXPECT_EQ(HueToChannel(40, 200, 200), 40);
    // 260 is taken as 20; a hue below 0 wrapped to 16 bits gives m1.
    EXPECT_EQ(HueToChannel(40, 200, 260), HueToChannel(40, 200, 20));
    EXPECT_EQ(HueToChannel(40, 200, uint16_t(10 - 80)), 40);
    // m2 below m1 (lightness above 240 after brightening): the division
    // truncates toward zero, -1580 / 40 = -39.
    EXPECT_EQ(HueToChannel(200, 40, 10), 161);
}

TEST(ColorConversion, LightnessAbove240StaysDefined) {
    // Brightening past white (negative darkening) reaches lightness 255; the
    // channels then leave 0..255 and are stored modulo 256.
    EXPECT_EQ(ToRgb({0, 255, 0}), (Rgb{14, 14, 14}));
    EXPECT_EQ(ToRgb({0, 255, 240}), (Rgb{255, 31, 31}));
}

}  // namespace
