// A real run of the filter through the test host: what the host finds in its
// document afterwards, for every image kind and protocol, and the region the
// selection or the stored view makes the filter correct.
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "RedEyePixels.h"
#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"

namespace {

using testhost::Image;

// Each message box as "caption: texts".
std::vector<std::string> Boxes(testhost::TestHost& host) {
    std::vector<std::string> boxes;
    for (const auto& box : host.log().dialogs) {
        boxes.push_back(box.caption + ":");
        for (const std::string& text : box.texts) boxes.back() += " " + text;
    }
    return boxes;
}

const std::string kNotice =
    "Notice: You should have a selection  around the areas that you want to process!";
const std::string kNotRgb = "WARNING: Color mode should be RGB!";
const std::string kUnsupported = "Sory: dont support this image mode";

struct ImageKind {
    const char* name;
    int planes, depth;
    int16_t mode;
    // The mode passes the check: the region is corrected and completion is
    // reported. 48-bit RGB is corrected byte-wise, as if its bytes were
    // 8-bit samples three to a pixel.
    bool processed;
    std::vector<std::string> boxes;  // of one filter call with a selection
};

const ImageKind kImageKinds[] = {
    {"Rgb", 3, 8, plugInModeRGBColor, true, {}},
    {"RgbWithAlpha", 4, 8, plugInModeRGBColor, true, {}},
    {"RgbWithAlphaAndExtra", 5, 8, plugInModeRGBColor, true, {}},
    {"Rgb48", 3, 16, plugInModeRGB48, true, {}},
    {"Grey", 1, 8, plugInModeGrayScale, false, {kNotRgb, kUnsupported}},
    {"Grey16", 1, 16, plugInModeGray16, false, {kNotRgb, kUnsupported}},
    {"Cmyk", 4, 8, plugInModeCMYKColor, false, {kUnsupported}},
};

// A 90 x 60 document, selected at x 18..67, y 20..38: the region corrected
// is x 18..66, y 20..37, the box's largest x and y taken as its exclusive
// edge. In bands of 20 rows the module asks for rows 20..59, then 40..79
// (the rows below the image come padded, their mask selected) and filters
// each band in its own call: the selection is corrected as in whole-image
// mode, and the second band puts the rows it shares with the first back.
TEST(RealRun, EveryImageKindInBothProtocolsWithAndWithoutASelection) {
    for (size_t i = 0; i < 4 * std::size(kImageKinds); ++i) {
        const ImageKind& kind = kImageKinds[i / 4];
        const bool bands = i % 4 >= 2, selected = i % 2 == 1;
        SCOPED_TRACE(std::string(kind.name) + (bands ? " in bands" : " whole image") +
                     (selected ? " with a selection" : " without a selection"));
        testhost::TestHost host;
        ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
        Image& image = host.image();
        if (kind.depth == 8 && kind.mode == plugInModeRGBColor) {
            image = RedEyeImage(90, 60, kind.planes);
        } else {
            image = Image(90, 60, kind.planes, kind.depth);
            image.FillNoise(9);
        }
        if (selected) image.SelectRect(18, 20, 50, 19);
        host.settings.imageMode = kind.mode;
        host.settings.advanceState = !bands;
        // One mask byte and an input and an output byte per plane for each
        // pixel of a band's rows.
        if (bands) host.settings.maxSpace = 20 * 90 * (1 + 2 * kind.planes);

        const testhost::RunReport report = host.Run();
        ASSERT_TRUE(report.Ok());
        EXPECT_EQ(report.continueCalls, bands ? 2 : 0);
        const bool corrects = kind.processed && selected;
        EXPECT_EQ(testhost::DescribeDifference(
                      host.output(), corrects ? Corrected(image, {18, 20, 67, 38}) : image),
                  "");
        EXPECT_EQ(testhost::CountDifferentSamples(host.output(), image) != 0, corrects);
        std::vector<std::string> boxes;
        for (int call = 0; call < (bands ? 2 : 1); ++call) {
            if (kind.processed && !selected) boxes.push_back(kNotice);
            boxes.insert(boxes.end(), kind.boxes.begin(), kind.boxes.end());
        }
        EXPECT_EQ(Boxes(host), boxes);
        // Each call past the mode check reports completion as 0 of 100.
        using Progress = std::pair<int, int>;
        std::vector<Progress> progress;
        for (const auto& p : host.log().progress) progress.push_back({p.done, p.total});
        const size_t reports = kind.processed ? (bands ? 2 : 1) : 0;
        EXPECT_EQ(progress, std::vector<Progress>(reports, Progress(0, 100)));
        if (kind.processed) {
            EXPECT_EQ(host.ParametersAs<FilterParameters>()->viewState,
                      selected ? kViewSelectionBox : kViewStoredRect);
        }
        EXPECT_EQ(host.log().faults, std::vector<std::string>{});
    }
}

// The region corrected, with the record's tolerance and darkening: the
// selection's box, its largest x and y taken as its exclusive edge (so
// clamped inside at the image's right and bottom); nothing for a selection
// one pixel wide; without a selection the view the last preview left in
// the record, after the notice.
struct RegionCase {
    const char* name;
    PixelBox selection;   // in a 50 x 30 document; empty: no selection
    PixelBox storedView;  // left in the record before the run
    float tolerance, darkening;
    int16_t viewState;
    PixelBox region;  // empty: nothing changes
};

const RegionCase kRegionCases[] = {
    {"StoredSettings", {10, 8, 40, 23}, {}, 90, 10, kViewSelectionBox, {10, 8, 39, 22}},
    {"AtTheEdges", {20, 10, 50, 30}, {}, 50, 50, kViewSelectionBox, {20, 10, 49, 29}},
    {"OnePixelWide", {13, 5, 14, 25}, {}, 50, 50, kViewEmptySelection, {}},
    {"NoSelection", {}, {4, 6, 36, 24}, 50, 50, kViewStoredRect, {4, 6, 36, 24}},
};

TEST(RealRun, CorrectsTheSelectionsBoxOrTheStoredViewWithTheStoredSettings) {
    for (const RegionCase& c : kRegionCases) {
        SCOPED_TRACE(c.name);
        testhost::TestHost host;
        ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
        host.image() = RedEyeImage(50, 30, 3);
        const PixelBox& s = c.selection;
        if (s.Width() > 0) host.image().SelectRect(s.left, s.top, s.Width(), s.Height());
        host.settings.parameters = testhost::ParametersCall::kNever;
        ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
        FilterParameters* record = host.ParametersAs<FilterParameters>();
        record->tolerance = c.tolerance;
        record->darkening = c.darkening;
        if (c.storedView.Width() > 0) {
            record->viewLeft = c.storedView.left;
            record->viewTop = c.storedView.top;
            record->viewRight = c.storedView.right;
            record->viewBottom = c.storedView.bottom;
        }
        ASSERT_TRUE(host.RunFromPrepare().Ok());

        const bool corrects = c.region.Width() > 0;
        const Image& in = host.image();
        EXPECT_EQ(
            testhost::DescribeDifference(
                host.output(), corrects ? Corrected(in, c.region, c.tolerance, c.darkening) : in),
            "");
        EXPECT_EQ(Boxes(host), std::vector<std::string>(s.Width() > 0 ? 0 : 1, kNotice));
        record = host.ParametersAs<FilterParameters>();
        EXPECT_EQ(record->viewState, c.viewState);
        if (corrects) {
            EXPECT_EQ(record->imageTouched, 1);
            EXPECT_EQ(
                std::vector<int>(
                    {record->viewLeft, record->viewTop, record->viewRight, record->viewBottom}),
                std::vector<int>({c.region.left, c.region.top, c.region.right, c.region.bottom}));
        }
        EXPECT_EQ(host.log().faults, std::vector<std::string>{});
    }
}

}  // namespace
