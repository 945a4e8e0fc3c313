// A real run of the filter through the test host: what the host finds in its
// document afterwards, for every protocol and image kind.
#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "ExpectedPixels.h"
#include "RedEyeImage.h"
#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"

namespace {

using testhost::Image;

std::vector<std::string> Captions(testhost::TestHost& host) {
    std::vector<std::string> captions;
    for (const auto& dialog : host.log().dialogs) captions.push_back(dialog.caption);
    return captions;
}

// ---- Every image kind in both protocols, with and without a selection ----

enum class Protocol { kWholeImage, kBands };

// A 90 x 60 document. In bands of 20 rows the module asks for rows 20..59,
// then 40..79 (the rows below the image come padded, their mask selected)
// and filters each band in its own call. A selection within rows 20..39 is
// therefore corrected as in whole-image mode, and the second band puts the
// rows it shares with the first back to their input.
constexpr int kWidth = 90;
constexpr int kHeight = 60;
constexpr int kBandRows = 20;
constexpr int kBands = 2;

void UseProtocol(testhost::TestHost& host, Protocol protocol) {
    const int planes = host.image().Planes();
    host.settings.advanceState = protocol == Protocol::kWholeImage;
    // The module sizes its bands from one mask byte and an input and an
    // output byte per plane for each pixel of a row.
    if (protocol == Protocol::kBands)
        host.settings.maxSpace = kBandRows * kWidth * (1 + 2 * planes);
}

// The selected rectangle x 18..67, y 20..38: the region corrected is
// x 18..66, y 20..37 (the box's largest x and y are its exclusive edge).
void Select(Image& image) { image.SelectRect(18, 20, 50, 19); }
constexpr PixelBox kRegion{18, 20, 67, 38};

struct ImageKind {
    const char* name;
    int planes;
    int depth;
    int16_t mode;
    // The mode passes the check: the region is corrected and completion is
    // reported. 48-bit RGB is corrected byte-wise, as if its bytes were
    // 8-bit samples three to a pixel.
    bool processed;
    // Message boxes of one filter call, with and without a selection.
    std::vector<std::string> boxesWithSelection;
    std::vector<std::string> boxesWithoutSelection;
};

const ImageKind kImageKinds[] = {
    {"Rgb", 3, 8, plugInModeRGBColor, true, {}, {"Notice"}},
    {"RgbWithAlpha", 4, 8, plugInModeRGBColor, true, {}, {"Notice"}},
    {"RgbWithAlphaAndExtra", 5, 8, plugInModeRGBColor, true, {}, {"Notice"}},
    {"Rgb48", 3, 16, plugInModeRGB48, true, {}, {"Notice"}},
    {"Grey", 1, 8, plugInModeGrayScale, false, {"WARNING", "Sory"}, {"WARNING", "Sory"}},
    {"Grey16", 1, 16, plugInModeGray16, false, {"WARNING", "Sory"}, {"WARNING", "Sory"}},
    {"Cmyk", 4, 8, plugInModeCMYKColor, false, {"Sory"}, {"Sory"}},
};

Image ImageOf(const ImageKind& kind) {
    if (kind.depth == 8 && kind.mode == plugInModeRGBColor) {
        return RedEyeImage(kWidth, kHeight, kind.planes);
    }
    Image image(kWidth, kHeight, kind.planes, kind.depth);
    image.FillNoise(9);
    return image;
}

// Test names and failure messages show the kind and the protocol by name.
void PrintTo(const ImageKind& kind, std::ostream* out) { *out << kind.name; }
void PrintTo(Protocol protocol, std::ostream* out) {
    *out << (protocol == Protocol::kBands ? "InBands" : "WholeImage");
}

const std::map<std::string, std::string> kBoxTexts = {
    {"WARNING", "Color mode should be RGB!"},
    {"Sory", "dont support this image mode"},
};

using KindProtocolSelection = std::tuple<ImageKind, Protocol, bool>;

class EveryImageKind : public ::testing::TestWithParam<KindProtocolSelection> {};

TEST_P(EveryImageKind, FiltersTheDocumentAsItsModeAndSelectionSay) {
    const auto& [kind, protocol, selected] = GetParam();
    testhost::TestHost host;
    ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
    host.image() = ImageOf(kind);
    if (selected) Select(host.image());
    host.settings.imageMode = kind.mode;
    UseProtocol(host, protocol);

    const testhost::RunReport report = host.Run();
    ASSERT_TRUE(report.Ok());
    const int filterCalls = protocol == Protocol::kBands ? kBands : 1;
    EXPECT_EQ(report.continueCalls, protocol == Protocol::kBands ? kBands : 0);

    const Image expected =
        kind.processed && selected ? Corrected(host.image(), kRegion) : host.image();
    EXPECT_EQ(testhost::DescribeDifference(host.output(), expected), "");
    if (kind.processed && selected) {
        EXPECT_NE(testhost::CountDifferentSamples(host.output(), host.image()), 0u);
    }

    std::vector<std::string> boxes;
    for (int call = 0; call < filterCalls; ++call) {
        const auto& ofOneCall = selected ? kind.boxesWithSelection : kind.boxesWithoutSelection;
        boxes.insert(boxes.end(), ofOneCall.begin(), ofOneCall.end());
    }
    EXPECT_EQ(Captions(host), boxes);
    for (const testhost::ShownDialog& box : host.log().dialogs) {
        const auto text = kBoxTexts.find(box.caption);
        if (text != kBoxTexts.end()) {
            EXPECT_EQ(box.texts, std::vector<std::string>{text->second});
        }
    }

    // Each call that gets past the mode check reports completion as 0 of 100.
    ASSERT_EQ(host.log().progress.size(), kind.processed ? size_t(filterCalls) : 0u);
    for (const testhost::ProgressRecord& progress : host.log().progress) {
        EXPECT_EQ(progress.done, 0);
        EXPECT_EQ(progress.total, 100);
    }
    if (kind.processed) {
        EXPECT_EQ(host.ParametersAs<FilterParameters>()->viewState,
                  selected ? kViewSelectionBox : kViewStoredRect);
    }
    EXPECT_EQ(host.log().faults, std::vector<std::string>{});
}

std::string CaseName(const ::testing::TestParamInfo<KindProtocolSelection>& info) {
    const auto& [kind, protocol, selected] = info.param;
    return ::testing::PrintToString(kind) + ::testing::PrintToString(protocol) +
           (selected ? "WithSelection" : "WithoutSelection");
}

INSTANTIATE_TEST_SUITE_P(RealRun, EveryImageKind,
                         ::testing::Combine(::testing::ValuesIn(kImageKinds),
                                            ::testing::Values(Protocol::kWholeImage,
                                                              Protocol::kBands),
                                            ::testing::Bool()),
                         CaseName);

// ---- Single cases ----

class RealRun : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError(); }
    void TearDown() override { EXPECT_EQ(host.log().faults, std::vector<std::string>{}); }

    FilterParameters* Parameters() { return host.ParametersAs<FilterParameters>(); }

    testhost::TestHost host;
};

TEST_F(RealRun, UsesTheStoredToleranceAndDarkening) {
    host.image() = RedEyeImage(80, 40, 3);
    host.image().SelectRect(10, 8, 60, 25);
    host.settings.parameters = testhost::ParametersCall::kNever;
    ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
    Parameters()->tolerance = 90.0f;
    Parameters()->darkening = 10.0f;
    ASSERT_TRUE(host.RunFromPrepare().Ok());
    EXPECT_EQ(testhost::DescribeDifference(host.output(),
                                           Corrected(host.image(), {10, 8, 69, 32}, 90.0f, 10.0f)),
              "");
    EXPECT_EQ(Parameters()->viewState, kViewSelectionBox);
    EXPECT_EQ(Parameters()->viewLeft, 10);
    EXPECT_EQ(Parameters()->viewRight, 69);
    EXPECT_EQ(Parameters()->imageTouched, 1);
}

TEST_F(RealRun, ASelectionAtTheRightAndBottomEdgesIsClampedInside) {
    host.image() = RedEyeImage(50, 30, 3);
    host.image().SelectRect(20, 10, 30, 20);  // reaches x 49 and y 29
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Parameters()->viewRight, 49);
    EXPECT_EQ(Parameters()->viewBottom, 29);
    EXPECT_EQ(
        testhost::DescribeDifference(host.output(), Corrected(host.image(), {20, 10, 49, 29})), "");
    EXPECT_TRUE(testhost::SameOutside(host.output(), host.image(), 20, 10, 29, 19));
}

TEST_F(RealRun, AOnePixelWideSelectionChangesNothing) {
    host.image() = RedEyeImage(40, 30, 3);
    host.image().SelectRect(13, 5, 1, 20);
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Parameters()->viewState, kViewEmptySelection);
    EXPECT_EQ(testhost::DescribeDifference(host.output(), host.image()), "");
    EXPECT_TRUE(host.log().dialogs.empty());
}

// Without a selection the notice shows and the region the last preview left
// in the parameters is corrected.
TEST_F(RealRun, WithoutASelectionTheStoredRegionIsCorrected) {
    host.image() = RedEyeImage(40, 30, 3);
    host.settings.parameters = testhost::ParametersCall::kNever;
    ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
    Parameters()->viewLeft = 4;
    Parameters()->viewTop = 6;
    Parameters()->viewRight = 36;
    Parameters()->viewBottom = 24;
    ASSERT_TRUE(host.RunFromPrepare().Ok());
    EXPECT_EQ(Captions(host), std::vector<std::string>{"Notice"});
    EXPECT_EQ(testhost::DescribeDifference(host.output(), Corrected(host.image(), {4, 6, 36, 24})),
              "");
}

}  // namespace
