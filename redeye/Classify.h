// Pixel classes of the red-eye search: each pixel's hue, saturation and
// lightness (0-240 scale, low bytes) decide whether it is red, weak red or
// other. The tolerance widens the red tests and the hue windows.
#pragma once

#include <cstdint>

enum PixelClass : uint8_t {
    kClassOther = 0,
    kClassRed = 1,
    kClassWeakRed = 2,
};

PixelClass ClassifyPixel(uint8_t hue, uint8_t saturation, uint8_t lightness, float tolerance);

// 2 for a hue next to pure red (above 200 or below 11), else 0.
int IsReddishHue(const uint16_t* hls);

// The class tests worked out once for a tolerance. Every comparison of a
// whole number with a threshold becomes a comparison with the first whole
// number that passes it (256: none does); only the lightness floor of rules
// A and B, which mixes hue and saturation terms, stays a double.

struct ToleranceTerms {
    double t;
    double dropAB;       // t/1.5
    uint16_t lightEndA;  // l passes l < t/2 + 175 when below this
};

struct HueTerms {
    float threeF;  // 3f, f being the distance from pure red
    // Least saturation passing each rule's saturation test, 256 when the
    // hue fails the rule's hue test.
    uint16_t satA, satB, satC, satD, satE, satF, satG, satH, satI;
};

struct SaturationTerms {
    float g;          // (255 - s) / 1.5
    uint16_t lightC;  // least lightness above g + 50 - t/2
};

struct ClassThresholds {
    ToleranceTerms tolerance;
    HueTerms hue[256];
    SaturationTerms saturation[256];
    // Pixels that can be anything but other have a hue below lowHueEnd or
    // above highHueStart (each rule's hue test is a lower or an upper
    // bound), and a saturation of at least leastSaturation.
    int lowHueEnd, highHueStart, leastSaturation;
};

void PrepareClassThresholds(float tolerance, ClassThresholds* thresholds);

PixelClass ClassifyWithThresholds(const ClassThresholds& thresholds, uint8_t hue,
                                  uint8_t saturation, uint8_t lightness);

// Step 1 of the pipeline on a row: RGB to HLS into hls, and in place of the
// RGB the class, hue and saturation bytes. Returns whether any pixel of the
// row is red or weak red.
bool ClassifyRow(uint8_t* work, uint16_t* hls, int32_t count, const ClassThresholds& thresholds);
