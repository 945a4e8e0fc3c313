// Converts an RGB colour into the bytes of the image's planes through the
// host's colour services.
#include <iterator>

#include "plugin/FilterGlobals.h"
#include "plugin/HostServices.h"

namespace {

constexpr int16_t kNoColorSpace = -1;  // 65535 as an unsigned code

struct ModeColorSpace {
    int16_t space;
    int16_t planes;
};

// Indexed by image mode 0..15.
constexpr ModeColorSpace kModeColorSpaces[] = {
    {plugIncolorServicesGraySpace, 1},  // bitmap
    {plugIncolorServicesGraySpace, 1},  // grey scale
    {kNoColorSpace, 0},                 // indexed colour
    {plugIncolorServicesRGBSpace, 3},   // RGB
    {plugIncolorServicesCMYKSpace, 4},  // CMYK
    {plugIncolorServicesHSLSpace, 3},   // HSL
    {plugIncolorServicesHSBSpace, 3},   // HSB
    {kNoColorSpace, 0},                 // multichannel
    {plugIncolorServicesGraySpace, 1},  // duotone
    {plugIncolorServicesLabSpace, 3},   // Lab
    {plugIncolorServicesGraySpace, 1},  // grey 16
    {plugIncolorServicesRGBSpace, 3},   // RGB 48
    {plugIncolorServicesLabSpace, 3},   // Lab 48
    {plugIncolorServicesCMYKSpace, 4},  // CMYK 64
    {kNoColorSpace, 0},                 // deep multichannel
    {plugIncolorServicesGraySpace, 1},  // duotone 16
};

ModeColorSpace ColorSpaceOf(int16_t imageMode) {
    if (imageMode < 0 || imageMode >= static_cast<int16_t>(std::size(kModeColorSpaces))) {
        return {kNoColorSpace, 0};
    }
    return kModeColorSpaces[imageMode];
}

}  // namespace

OSErr ColorToPlanes(FilterGlobals* globals, uint8_t* planeBytes, uint16_t c1, uint16_t c2,
                    uint16_t c3, uint16_t c4, int16_t* planeCount) {
    FilterRecord* filterRecord = globals->filterRecord;
    const ModeColorSpace target = ColorSpaceOf(filterRecord->imageMode);
    if (target.space == kNoColorSpace) return noErr;
    if (filterRecord->colorServices == nullptr) return errPlugInHostInsufficient;

    ColorServicesInfo info = {};
    info.infoSize = sizeof(info);
    info.selector = plugIncolorServicesConvertColor;
    info.sourceSpace = plugIncolorServicesRGBSpace;
    info.resultSpace = target.space;
    const uint16_t components[4] = {c1, c2, c3, c4};
    for (int i = 0; i < 4; ++i) info.colorComponents[i] = static_cast<int16_t>(components[i]);
    const OSErr error = filterRecord->colorServices(&info);
    if (error != noErr) return error;

    *planeCount = target.planes;
    for (int i = 0; i < target.planes; ++i) {
        planeBytes[i] = static_cast<uint8_t>(info.colorComponents[i] & 0xFF);
    }
    return noErr;
}
