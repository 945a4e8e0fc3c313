#include "testhost/ColorServices.h"

#include <algorithm>

namespace testhost {

namespace {

struct Rgb {
    int r, g, b;
};

int Clamp255(int v) { return std::clamp(v, 0, 255); }

bool ToRgb(int16_t space, const int16_t* c, Rgb* rgb) {
    switch (space) {
        case plugIncolorServicesRGBSpace:
            *rgb = {Clamp255(c[0]), Clamp255(c[1]), Clamp255(c[2])};
            return true;
        case plugIncolorServicesGraySpace:
            *rgb = {Clamp255(c[0]), Clamp255(c[0]), Clamp255(c[0])};
            return true;
        case plugIncolorServicesCMYKSpace:
            *rgb = {255 - Clamp255(c[0] + c[3]), 255 - Clamp255(c[1] + c[3]),
                    255 - Clamp255(c[2] + c[3])};
            return true;
        default:
            return false;
    }
}

// Hue in degrees 0..359 of an RGB colour with the given extremes.
int Hue(const Rgb& c, int high, int low) {
    const int range = high - low;
    if (range == 0) return 0;
    int hue;
    if (high == c.r) {
        hue = 60 * (c.g - c.b) / range;
    } else if (high == c.g) {
        hue = 120 + 60 * (c.b - c.r) / range;
    } else {
        hue = 240 + 60 * (c.r - c.g) / range;
    }
    return (hue + 360) % 360;
}

bool FromRgb(int16_t space, const Rgb& c, int16_t* out) {
    const int high = std::max({c.r, c.g, c.b});
    const int low = std::min({c.r, c.g, c.b});
    int values[4] = {};
    switch (space) {
        case plugIncolorServicesRGBSpace:
            values[0] = c.r, values[1] = c.g, values[2] = c.b;
            break;
        case plugIncolorServicesGraySpace:
            values[0] = (c.r * 30 + c.g * 59 + c.b * 11 + 50) / 100;
            break;
        case plugIncolorServicesCMYKSpace:
            values[3] = 255 - high;
            for (int i = 0; i < 3; ++i) {
                const int channel = i == 0 ? c.r : (i == 1 ? c.g : c.b);
                values[i] = high == 0 ? 0 : (high - channel) * 255 / high;
            }
            break;
        case plugIncolorServicesHSBSpace:
            values[0] = Hue(c, high, low);
            values[1] = high == 0 ? 0 : (high - low) * 255 / high;
            values[2] = high;
            break;
        case plugIncolorServicesHSLSpace: {
            const int sum = high + low;
            values[0] = Hue(c, high, low);
            values[2] = sum / 2;
            const int divisor = sum <= 255 ? sum : 510 - sum;
            values[1] = divisor == 0 ? 0 : (high - low) * 255 / divisor;
            break;
        }
        default:
            return false;
    }
    for (int i = 0; i < 4; ++i) out[i] = static_cast<int16_t>(values[i]);
    return true;
}

// Where the colour of a special-colour or sample-point request comes from.
OSErr SourceColor(const ColorServicesInfo& info, const FilterRecord& record, const Image& source,
                  Rgb* rgb) {
    switch (info.selector) {
        case plugIncolorServicesConvertColor:
            return ToRgb(info.sourceSpace, info.colorComponents, rgb) ? noErr
                                                                      : errPlugInHostInsufficient;
        case plugIncolorServicesGetSpecialColor: {
            const int32_t id = info.selectorParameter.specialColorID;
            if (id != 0 && id != 1) return paramErr;
            const uint8_t* color = id == 0 ? record.foreColor : record.backColor;
            *rgb = {color[0], color[1], color[2]};
            return noErr;
        }
        case plugIncolorServicesSamplePoint: {
            const Point16* point = info.selectorParameter.globalSamplePoint;
            if (point == nullptr) return paramErr;
            if (!source.Contains(point->h, point->v)) return errInvalidSamplePoint;
            const int shift = source.Depth() == 16 ? 8 : 0;
            const int last = source.Planes() - 1;
            *rgb = {source.Sample(point->h, point->v, 0) >> shift,
                    source.Sample(point->h, point->v, std::min(1, last)) >> shift,
                    source.Sample(point->h, point->v, std::min(2, last)) >> shift};
            return noErr;
        }
        default:  // no colour picker in a test host
            return errPlugInHostInsufficient;
    }
}

}  // namespace

OSErr AnswerColorServices(ColorServicesInfo* info, const FilterRecord& record,
                          const Image& source) {
    if (info == nullptr || info->infoSize < static_cast<int32_t>(sizeof(ColorServicesInfo))) {
        return paramErr;
    }
    Rgb rgb{};
    const OSErr err = SourceColor(*info, record, source, &rgb);
    if (err != noErr) return err;
    if (!FromRgb(info->resultSpace, rgb, info->colorComponents)) return errPlugInHostInsufficient;
    info->resultGamutInfoValid = 1;
    info->resultInGamut = 1;
    return noErr;
}

}  // namespace testhost
