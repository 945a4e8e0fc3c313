#include "redeye/Classify.h"

// The arithmetic follows the plain C reading of the class tests: f and g are
// single-precision variables, the thresholds are double expressions of them
// and of the tolerance, evaluated left to right. The precomputed terms hold
// exactly the doubles those expressions produce, so a table-driven class is
// bit for bit the one computed from scratch.

namespace {

ToleranceTerms MakeToleranceTerms(float t) {
    ToleranceTerms terms;
    terms.hueAboveA = 230 - t / 3.0;
    terms.satDropA = t / 1.2;
    terms.lightBelowA = t / 2.0 + 175.0;
    terms.dropAB = t / 1.5;
    terms.hueBelowB = t / 5.0 + 7.0;
    terms.lightDropC = t / 2.0;
    terms.satBaseH = 70.0 - t / 5.0;
    terms.hueAboveWideP = 255.0 - t;
    terms.hueAboveWideQ = 255.0 - t / 2.0;
    return terms;
}

HueTerms MakeHueTerms(const ToleranceTerms& t, int h) {
    const float f = h < 11 ? h * 6.0 : (255 - h) * 0.35;
    HueTerms terms;
    terms.threeF = 3 * f;
    terms.hueA = h > t.hueAboveA;
    terms.satA = terms.threeF + 155.0 - t.satDropA;
    terms.hueB = h < t.hueBelowB;
    terms.satB = terms.threeF + 155.0 - t.dropAB;
    terms.hueC = f < 2.0;
    terms.hueD = h > 215;
    terms.satD = f + 60.0;
    terms.hueE = h < 11;
    terms.satE = f + 100.0;
    terms.hueF = h < 3;
    terms.satF = f + 50.0;
    terms.wideP = h > t.hueAboveWideP || h < 10;
    terms.satG = f + 80.0;
    terms.satH = t.satBaseH + f;
    terms.wideQ = h > t.hueAboveWideQ || h < 10;
    terms.satI = f + 200.0;
    terms.mayBeColoured = terms.hueA || terms.hueB || terms.hueC || terms.hueD || terms.hueE ||
                          terms.wideP || terms.wideQ;
    return terms;
}

float SaturationTerm(int s) { return (255 - s) / 1.5; }

PixelClass Classify(const ToleranceTerms& t, const HueTerms& h, int s, int l, float g) {
    const double lightFloorAB = g / 2.0 + h.threeF + 65.0 - t.dropAB;
    const bool a = h.hueA && s > h.satA && l < t.lightBelowA && l > lightFloorAB;
    const bool b = h.hueB && s > h.satB && l > lightFloorAB && l < 175;
    const bool c = h.hueC && s > 150 && l > g + 50.0 - t.lightDropC && l < 175;
    if (a || b || c) return kClassRed;

    const bool d = h.hueD && s >= h.satD && l < 235;
    const bool e = h.hueE && s >= h.satE && l < 190;
    const bool f = h.hueF && s > h.satF && l < 155;
    const bool g2 = h.wideP && s > h.satG && l >= 51 && l <= 99;
    const bool h2 = h.wideP && s > h.satH && l >= 91 && l <= 149;
    const bool i = h.wideQ && s > h.satI && l >= 181;
    if (d || e || f || g2 || h2 || i) return kClassWeakRed;
    return kClassOther;
}

}  // namespace

PixelClass ClassifyPixel(uint8_t hue, uint8_t saturation, uint8_t lightness, float tolerance) {
    const ToleranceTerms terms = MakeToleranceTerms(tolerance);
    return Classify(terms, MakeHueTerms(terms, hue), saturation, lightness,
                    SaturationTerm(saturation));
}

int IsReddishHue(const uint16_t* hls) { return hls[0] > 200 || hls[0] < 11 ? 2 : 0; }

void PrepareClassThresholds(float tolerance, ClassThresholds* thresholds) {
    thresholds->tolerance = MakeToleranceTerms(tolerance);
    for (int value = 0; value < 256; ++value) {
        thresholds->hue[value] = MakeHueTerms(thresholds->tolerance, value);
        thresholds->g[value] = SaturationTerm(value);
    }
}

PixelClass ClassifyWithThresholds(const ClassThresholds& thresholds, uint8_t hue,
                                  uint8_t saturation, uint8_t lightness) {
    const HueTerms& terms = thresholds.hue[hue];
    if (!terms.mayBeColoured) return kClassOther;
    return Classify(thresholds.tolerance, terms, saturation, lightness, thresholds.g[saturation]);
}
