#include "redeye/Classify.h"

#include <algorithm>
#include <cmath>

#include "redeye/Color.h"
#include "redeye/Sse2Pixels.h"

// The arithmetic follows the plain C reading of the class tests: f and g are
// single-precision variables, the thresholds are double expressions of them
// and of the tolerance, evaluated left to right. The whole-number thresholds
// below are derived from exactly those doubles, so every class is the one
// the expressions give.

namespace {

constexpr uint16_t kNever = 256;

// Least v in 0..255 with v > x, v >= x, or not v < x; kNever when none.
uint16_t FirstAbove(double x) {
    if (std::isnan(x) || x >= 255) return kNever;
    return x < 0 ? 0 : static_cast<uint16_t>(std::floor(x) + 1);
}

uint16_t FirstAtLeast(double x) {
    if (std::isnan(x) || x > 255) return kNever;
    return x <= 0 ? 0 : static_cast<uint16_t>(std::ceil(x));
}

uint16_t FirstNotBelow(double x) {
    if (std::isnan(x) || x <= 0) return 0;
    return x > 255 ? kNever : static_cast<uint16_t>(std::ceil(x));
}

ToleranceTerms MakeToleranceTerms(float t) { return {t, t / 1.5, FirstNotBelow(t / 2.0 + 175.0)}; }

HueTerms MakeHueTerms(const ToleranceTerms& terms, int h) {
    const double t = terms.t;
    const float f = h < 11 ? h * 6.0 : (255 - h) * 0.35;
    const bool wideP = h > 255.0 - t || h < 10;
    const bool wideQ = h > 255.0 - t / 2.0 || h < 10;
    HueTerms hue;
    hue.threeF = 3 * f;
    hue.satA = h > 230 - t / 3.0 ? FirstAbove(hue.threeF + 155.0 - t / 1.2) : kNever;
    hue.satB = h < t / 5.0 + 7.0 ? FirstAbove(hue.threeF + 155.0 - t / 1.5) : kNever;
    hue.satC = f < 2.0 ? FirstAbove(150) : kNever;
    hue.satD = h > 215 ? FirstAtLeast(f + 60.0) : kNever;
    hue.satE = h < 11 ? FirstAtLeast(f + 100.0) : kNever;
    hue.satF = h < 3 ? FirstAbove(f + 50.0) : kNever;
    hue.satG = wideP ? FirstAbove(f + 80.0) : kNever;
    hue.satH = wideP ? FirstAbove(70.0 - t / 5.0 + f) : kNever;
    hue.satI = wideQ ? FirstAbove(f + 200.0) : kNever;
    return hue;
}

SaturationTerms MakeSaturationTerms(const ToleranceTerms& terms, int s) {
    const float g = (255 - s) / 1.5;
    return {g, FirstAbove(g + 50.0 - terms.t / 2.0)};
}

uint16_t LeastSaturation(const HueTerms& hue) {
    return std::min(
        {hue.satA, hue.satB, hue.satC, hue.satD, hue.satE, hue.satF, hue.satG, hue.satH, hue.satI});
}

PixelClass Classify(const ToleranceTerms& terms, const HueTerms& hue, const SaturationTerms& sat,
                    int s, int l) {
    if (s >= hue.satA || s >= hue.satB) {
        const double lightFloorAB = sat.g / 2.0 + hue.threeF + 65.0 - terms.dropAB;
        if (l > lightFloorAB &&
            ((s >= hue.satA && l < terms.lightEndA) || (s >= hue.satB && l < 175))) {
            return kClassRed;
        }
    }
    if (s >= hue.satC && l >= sat.lightC && l < 175) return kClassRed;
    const bool weak = (s >= hue.satD && l < 235) | (s >= hue.satE && l < 190) |
                      (s >= hue.satF && l < 155) | (s >= hue.satG && l >= 51 && l <= 99) |
                      (s >= hue.satH && l >= 91 && l <= 149) | (s >= hue.satI && l >= 181);
    return weak ? kClassWeakRed : kClassOther;
}

}  // namespace

PixelClass ClassifyPixel(uint8_t hue, uint8_t saturation, uint8_t lightness, float tolerance) {
    const ToleranceTerms terms = MakeToleranceTerms(tolerance);
    return Classify(terms, MakeHueTerms(terms, hue), MakeSaturationTerms(terms, saturation),
                    saturation, lightness);
}

int IsReddishHue(const uint16_t* hls) { return hls[0] > 200 || hls[0] < 11 ? 2 : 0; }

void PrepareClassThresholds(float tolerance, ClassThresholds* thresholds) {
    thresholds->tolerance = MakeToleranceTerms(tolerance);
    thresholds->lowHueEnd = 0;
    thresholds->highHueStart = 255;
    thresholds->leastSaturation = kNever;
    for (int value = 0; value < 256; ++value) {
        const HueTerms hue = MakeHueTerms(thresholds->tolerance, value);
        thresholds->hue[value] = hue;
        thresholds->saturation[value] = MakeSaturationTerms(thresholds->tolerance, value);
        const int least = LeastSaturation(hue);
        if (least == kNever) continue;
        thresholds->leastSaturation = std::min(thresholds->leastSaturation, least);
        if (value < 128) {
            thresholds->lowHueEnd = value + 1;  // the last such hue below 128
        } else {
            thresholds->highHueStart = std::min(thresholds->highHueStart, value - 1);
        }
    }
}

PixelClass ClassifyWithThresholds(const ClassThresholds& thresholds, uint8_t hue,
                                  uint8_t saturation, uint8_t lightness) {
    return Classify(thresholds.tolerance, thresholds.hue[hue], thresholds.saturation[saturation],
                    saturation, lightness);
}

bool ClassifyRow(uint8_t* work, uint16_t* hls, int32_t count, const ClassThresholds& thresholds) {
    uint8_t coloured = 0;
    int32_t x = 0;
#if defined(__SSE2__)
    // Eight pixels at a time; most blocks hold no pixel whose hue and
    // saturation can be coloured and take class 0 at once.
    const __m128i lowEnd = sse2::Words(int16_t(thresholds.lowHueEnd));
    const __m128i highStart = sse2::Words(int16_t(thresholds.highHueStart));
    const __m128i belowLeast = sse2::Words(int16_t(thresholds.leastSaturation - 1));
    for (; x + 8 <= count; x += 8) {
        uint8_t* pixels = work + 3 * x;
        uint16_t* values = hls + 3 * x;
        const sse2::Pixels8 converted = sse2::RgbToHls8(sse2::LoadBytes(pixels));
        sse2::StoreWords(converted, values);
        sse2::StoreBytes({_mm_setzero_si128(), converted.c0, converted.c2}, pixels);
        const __m128i candidates =
            _mm_and_si128(_mm_or_si128(_mm_cmplt_epi16(converted.c0, lowEnd),
                                       _mm_cmpgt_epi16(converted.c0, highStart)),
                          _mm_cmpgt_epi16(converted.c2, belowLeast));
        if (_mm_movemask_epi8(candidates) == 0) continue;
        for (int i = 0; i < 24; i += 3) {
            pixels[i] = ClassifyWithThresholds(thresholds, uint8_t(values[i]),
                                               uint8_t(values[i + 2]), uint8_t(values[i + 1]));
            coloured |= pixels[i];
        }
    }
#endif
    for (; x < count; ++x) {
        uint8_t* pixel = work + 3 * x;
        uint16_t* value = hls + 3 * x;
        RgbToHls(pixel, value);
        pixel[0] = ClassifyWithThresholds(thresholds, uint8_t(value[0]), uint8_t(value[2]),
                                          uint8_t(value[1]));
        pixel[1] = uint8_t(value[0]);
        pixel[2] = uint8_t(value[2]);
        coloured |= pixel[0];
    }
    return coloured != 0;
}
