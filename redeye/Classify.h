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

// The thresholds of the class tests that depend on the tolerance alone.
struct ToleranceTerms {
    double hueAboveA;      // 230 - t/3
    double satDropA;       // t/1.2
    double lightBelowA;    // t/2 + 175
    double dropAB;         // t/1.5
    double hueBelowB;      // t/5 + 7
    double lightDropC;     // t/2
    double satBaseH;       // 70 - t/5
    double hueAboveWideP;  // 255 - t
    double hueAboveWideQ;  // 255 - t/2
};

// The parts of the class tests that depend on the hue (and tolerance) alone.
struct HueTerms {
    bool mayBeColoured;  // false: the class is other whatever s and l are
    bool hueA, hueB, hueC, hueD, hueE, hueF, wideP, wideQ;
    float threeF;  // 3f, f being the distance from pure red
    double satA, satB, satD, satE, satF, satG, satH, satI;
};

// Everything the class tests need for one tolerance, for every hue byte and
// saturation byte; built once per region so that classifying a pixel is a
// few comparisons (and none for most hues).
struct ClassThresholds {
    ToleranceTerms tolerance;
    HueTerms hue[256];
    float g[256];  // (255 - s) / 1.5 by saturation
};

void PrepareClassThresholds(float tolerance, ClassThresholds* thresholds);

PixelClass ClassifyWithThresholds(const ClassThresholds& thresholds, uint8_t hue,
                                  uint8_t saturation, uint8_t lightness);
