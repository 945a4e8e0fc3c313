// Conversion of an RGB colour into plane bytes through the host's colour
// services, for each image mode.
#include <gtest/gtest.h>

#include <vector>

#include "plugin/FilterGlobals.h"
#include "plugin/HostServices.h"

namespace {

ColorServicesInfo lastRequest;

// Answers with fixed components, as a host's converter would.
OSErr Convert(ColorServicesInfo* info) {
    lastRequest = *info;
    for (int i = 0; i < 4; ++i) info->colorComponents[i] = static_cast<int16_t>(0x1100 + 0x11 * i);
    return noErr;
}

OSErr Refuse(ColorServicesInfo*) { return errPlugInHostInsufficient; }

class ColorToPlanesTest : public ::testing::Test {
  protected:
    OSErr ConvertIn(int16_t mode, ColorServicesProc services) {
        record.imageMode = mode;
        record.colorServices = services;
        return ColorToPlanes(&globals, bytes, 1, 2, 3, 4, &planeCount);
    }

    FilterRecord record{};
    int16_t result = 0;
    FilterGlobals globals{&result, &record, {}};
    uint8_t bytes[5] = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    int16_t planeCount = -1;
};

TEST_F(ColorToPlanesTest, RgbAndCmykTakeTheLowByteOfEachComponent) {
    ASSERT_EQ(ConvertIn(plugInModeRGBColor, Convert), noErr);
    EXPECT_EQ(lastRequest.selector, plugIncolorServicesConvertColor);
    EXPECT_EQ(lastRequest.sourceSpace, plugIncolorServicesRGBSpace);
    EXPECT_EQ(lastRequest.resultSpace, plugIncolorServicesRGBSpace);
    EXPECT_EQ(lastRequest.colorComponents[3], 4);
    EXPECT_EQ(planeCount, 3);
    EXPECT_EQ(bytes[0], 0x00);
    EXPECT_EQ(bytes[2], 0x22);
    EXPECT_EQ(bytes[3], 0xEE);

    ASSERT_EQ(ConvertIn(plugInModeCMYKColor, Convert), noErr);
    EXPECT_EQ(lastRequest.resultSpace, plugIncolorServicesCMYKSpace);
    EXPECT_EQ(planeCount, 4);
    EXPECT_EQ(bytes[3], 0x33);
}

TEST_F(ColorToPlanesTest, ModesWithoutAColourSpaceConvertNothing) {
    const std::vector<int16_t> modes = {plugInModeIndexedColor, plugInModeMultichannel, 16, -1};
    for (int16_t mode : modes) {
        EXPECT_EQ(ConvertIn(mode, Convert), noErr) << mode;
        EXPECT_EQ(planeCount, -1);
        EXPECT_EQ(bytes[0], 0xEE);
    }
}

TEST_F(ColorToPlanesTest, AMissingOrFailingServiceIsReported) {
    EXPECT_EQ(ConvertIn(plugInModeGrayScale, nullptr), errPlugInHostInsufficient);
    EXPECT_EQ(ConvertIn(plugInModeLabColor, Refuse), errPlugInHostInsufficient);
    EXPECT_EQ(planeCount, -1);
}

}  // namespace
