// A real run of the filter through the test host: what the host finds in its
// document afterwards, for every protocol and image kind.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "plugin/FilterParameters.h"
#include "redeye/Pipeline.h"
#include "testhost/TestHost.h"

namespace {

using testhost::Image;

// Skin with a little grain and two red pupils with a catchlight.
Image Portrait(int width, int height, int planes) {
    Image image(width, height, planes);
    image.FillNoise(11);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::vector<uint16_t> px = image.Pixel(x, y);
            px[0] = static_cast<uint16_t>(190 + px[0] % 16);
            px[1] = static_cast<uint16_t>(140 + px[1] % 16);
            px[2] = static_cast<uint16_t>(115 + px[2] % 16);
            for (int cx : {width / 3, 2 * width / 3}) {
                const double d = std::hypot(x - cx, y - height / 2);
                if (d < 7) px[0] = 205, px[1] = static_cast<uint16_t>(25 + d * 2), px[2] = 35;
                if (std::hypot(x - cx - 2, y - height / 2 + 2) < 1.5) px[0] = px[1] = px[2] = 250;
            }
            image.SetPixel(x, y, px);
        }
    }
    return image;
}

// The expected document: the region [left, right) x [top, bottom) run
// through the pipeline, everything else as it was.
Image Corrected(const Image& in, int left, int top, int right, int bottom, float tolerance,
                float darkening) {
    const int w = right - left;
    const int h = bottom - top;
    std::vector<uint8_t> work(w * h * 3), weight(w * h), coverage(w * h), depth(w * h);
    std::vector<uint16_t> hls(w * h * 3);
    std::vector<uint32_t> distance(w * h);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            for (int c = 0; c < 3; ++c) {
                work[(y * w + x) * 3 + c] = static_cast<uint8_t>(in.Sample(left + x, top + y, c));
            }
        }
    }
    const PipelineBuffers buffers{work.data(),   hls.data(),      distance.data(),
                                  weight.data(), coverage.data(), depth.data()};
    RunRedEyePipeline(buffers, w, h, tolerance, darkening);
    Image out = in;
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            for (int c = 0; c < 3; ++c)
                out.SetSample(left + x, top + y, c, work[(y * w + x) * 3 + c]);
        }
    }
    return out;
}

class RealRun : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError(); }
    void TearDown() override { EXPECT_EQ(host.log().faults, std::vector<std::string>{}); }

    FilterParameters* Parameters() { return host.ParametersAs<FilterParameters>(); }
    std::vector<std::string> Captions() {
        std::vector<std::string> captions;
        for (const auto& dialog : host.log().dialogs) captions.push_back(dialog.caption);
        return captions;
    }

    testhost::TestHost host;
};

TEST_F(RealRun, CorrectsTheSelectionBoxInBothProtocolsAndEveryPlaneCount) {
    for (int planes : {3, 4, 5}) {
        for (bool wholeImage : {true, false}) {
            SCOPED_TRACE(std::to_string(planes) + " planes, " +
                         (wholeImage ? "whole image" : "bands"));
            testhost::TestHost run;
            ASSERT_TRUE(run.Load(QUORVEX_MODULE_PATH));
            run.image() = Portrait(90, 60, planes);
            // Box x 18..67, y 20..38. In bands, the rows below the image come
            // padded with a selected mask; a box ending above the second band
            // (rows 40..79) keeps those rows out of the image.
            run.image().SelectRect(18, 20, 50, 19);
            run.settings.advanceState = wholeImage;
            // Bands of 20 rows: the bands requested are rows 20..59 and 40..79.
            run.settings.maxSpace = wholeImage ? (1 << 30) : 20 * (90 + 2 * 90 * planes);
            ASSERT_TRUE(run.Run().Ok());
            // The box's last column and row (x 67, y 38) are outside the region.
            const Image expected = Corrected(run.image(), 18, 20, 67, 38, 50.0f, 50.0f);
            EXPECT_EQ(testhost::DescribeDifference(run.output(), expected), "");
            EXPECT_NE(testhost::CountDifferentSamples(run.output(), run.image()), 0u);
            EXPECT_EQ(run.log().faults, std::vector<std::string>{});
        }
    }
}

TEST_F(RealRun, UsesTheStoredToleranceAndDarkening) {
    host.image() = Portrait(80, 40, 3);
    host.image().SelectRect(10, 8, 60, 25);
    host.settings.parameters = testhost::ParametersCall::kNever;
    ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
    Parameters()->tolerance = 90.0f;
    Parameters()->darkening = 10.0f;
    ASSERT_TRUE(host.RunFromPrepare().Ok());
    EXPECT_EQ(testhost::DescribeDifference(host.output(),
                                           Corrected(host.image(), 10, 8, 69, 32, 90.0f, 10.0f)),
              "");
    EXPECT_EQ(Parameters()->viewState, kViewSelectionBox);
    EXPECT_EQ(Parameters()->viewLeft, 10);
    EXPECT_EQ(Parameters()->viewRight, 69);
    EXPECT_EQ(Parameters()->imageTouched, 1);
}

TEST_F(RealRun, ReportsCompletionOnceAsZeroOfAHundred) {
    host.image() = Portrait(40, 30, 3);
    host.image().SelectRect(5, 5, 30, 20);
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_EQ(host.log().progress.size(), 1u);
    EXPECT_EQ(host.log().progress[0].done, 0);
    EXPECT_EQ(host.log().progress[0].total, 100);
}

TEST_F(RealRun, AlphaAndExtraChannelsAreNeverChanged) {
    host.image() = Portrait(60, 40, 5);
    host.image().SelectRect(0, 0, 60, 40);
    ASSERT_TRUE(host.Run().Ok());
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 60; ++x) {
            ASSERT_EQ(host.output().Sample(x, y, 3), host.image().Sample(x, y, 3));
            ASSERT_EQ(host.output().Sample(x, y, 4), host.image().Sample(x, y, 4));
        }
    }
}

TEST_F(RealRun, ASelectionAtTheRightAndBottomEdgesIsClampedInside) {
    host.image() = Portrait(50, 30, 3);
    host.image().SelectRect(20, 10, 30, 20);  // reaches x 49 and y 29
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Parameters()->viewRight, 49);
    EXPECT_EQ(Parameters()->viewBottom, 29);
    EXPECT_EQ(testhost::DescribeDifference(host.output(),
                                           Corrected(host.image(), 20, 10, 49, 29, 50.0f, 50.0f)),
              "");
    EXPECT_TRUE(testhost::SameOutside(host.output(), host.image(), 20, 10, 29, 19));
}

TEST_F(RealRun, AOnePixelWideSelectionChangesNothing) {
    host.image() = Portrait(40, 30, 3);
    host.image().SelectRect(13, 5, 1, 20);
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Parameters()->viewState, kViewEmptySelection);
    EXPECT_EQ(testhost::DescribeDifference(host.output(), host.image()), "");
    EXPECT_TRUE(host.log().dialogs.empty());
}

TEST_F(RealRun, WithoutASelectionTheNoticeShowsAndTheStoredRegionIsUsed) {
    host.image() = Portrait(40, 30, 3);
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Captions(), std::vector<std::string>{"Notice"});
    EXPECT_EQ(Parameters()->viewState, kViewStoredRect);
    // A new record's stored region is empty: nothing changes.
    EXPECT_EQ(testhost::DescribeDifference(host.output(), host.image()), "");

    // A region a preview left behind is corrected on the next real run.
    Parameters()->viewLeft = 4;
    Parameters()->viewTop = 6;
    Parameters()->viewRight = 36;
    Parameters()->viewBottom = 24;
    host.ClearLog();
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(testhost::DescribeDifference(host.output(),
                                           Corrected(host.image(), 4, 6, 36, 24, 50.0f, 50.0f)),
              "");
}

TEST_F(RealRun, AGreyImageGetsBothWarningsAndPassesThrough) {
    host.image() = Image(30, 20, 1);
    host.image().FillNoise(3);
    host.image().SelectRect(2, 2, 20, 10);
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Captions(), (std::vector<std::string>{"WARNING", "Sory"}));
    ASSERT_EQ(host.log().dialogs.size(), 2u);
    EXPECT_EQ(host.log().dialogs[0].texts, std::vector<std::string>{"Color mode should be RGB!"});
    EXPECT_EQ(host.log().dialogs[1].texts,
              std::vector<std::string>{"dont support this image mode"});
    EXPECT_EQ(testhost::DescribeDifference(host.output(), host.image()), "");
    EXPECT_TRUE(host.log().progress.empty()) << "an unsupported mode returns without a signal";
}

TEST_F(RealRun, CmykAndSixteenBitGreyPassThroughUnchanged) {
    for (auto [planes, depth, mode] :
         {std::tuple{4, 8, plugInModeCMYKColor}, std::tuple{1, 16, plugInModeGray16}}) {
        testhost::TestHost run;
        ASSERT_TRUE(run.Load(QUORVEX_MODULE_PATH));
        run.image() = Image(24, 16, planes, depth);
        run.image().FillNoise(5);
        run.image().SelectRect(1, 1, 20, 10);
        run.settings.imageMode = mode;
        ASSERT_TRUE(run.Run().Ok());
        EXPECT_EQ(testhost::DescribeDifference(run.output(), run.image()), "") << mode;
        EXPECT_EQ(run.log().dialogs.back().caption, "Sory");
    }
}

// 48-bit RGB passes the mode check and its bytes are processed as if they
// were 8-bit samples, three bytes to a pixel.
TEST_F(RealRun, FortyEightBitRgbIsProcessedByteWise) {
    host.image() = Image(20, 12, 3, 16);
    host.image().FillNoise(9);
    host.image().SelectRect(0, 0, 20, 12);
    host.settings.imageMode = plugInModeRGB48;
    ASSERT_TRUE(host.Run().Ok());

    // The region is 19 x 11 "pixels" of the raw bytes, rows of 120 bytes.
    const int w = 19, h = 11, rowBytes = 20 * 3 * 2;
    Image expectedImage = host.image();
    std::vector<uint8_t> work(w * h * 3), weight(w * h), coverage(w * h), depth(w * h);
    std::vector<uint16_t> hls(w * h * 3);
    std::vector<uint32_t> distance(w * h);
    const uint8_t* raw = host.image().Data();
    for (int y = 0; y < h; ++y) {
        for (int i = 0; i < w * 3; ++i) work[y * w * 3 + i] = raw[y * rowBytes + i];
    }
    RunRedEyePipeline(
        {work.data(), hls.data(), distance.data(), weight.data(), coverage.data(), depth.data()}, w,
        h, 50.0f, 50.0f);
    for (int y = 0; y < h; ++y) {
        for (int i = 0; i < w * 3; ++i)
            expectedImage.Data()[y * rowBytes + i] = work[y * w * 3 + i];
    }
    EXPECT_EQ(testhost::DescribeDifference(host.output(), expectedImage), "");
}

}  // namespace
