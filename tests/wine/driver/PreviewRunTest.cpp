// Preview runs inside the open main dialog: what the filter leaves in the
// host's output buffer for the part of the image the detail pane shows; and
// the real run after OK, which corrects the region the preview left in the
// record and is the only one to report progress to the host.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "DialogRun.h"
#include "RedEyePixels.h"
#include "plugin/FilterParameters.h"

namespace {

using testhost::Image;

// An RGB image with alpha shown in a detail pane of 120 x 80.
constexpr int kWidth = 300;
constexpr int kHeight = 200;
constexpr int kPlanes = 4;

struct PreviewCase {
    const char* name;
    PixelBox selection;             // empty: none, and the preview works on the record's view
    float viewX, viewY, viewScale;  // set in the record, or with a selection fitted to it
    // Worked out by hand: the part of the image copied to the output's
    // (0, 0), and the region corrected and written back shifted as the copy.
    PixelBox copied;
    PixelBox region;
};

const PreviewCase kCases[] = {
    // At 2 the pane shows 240 x 160 image pixels; from x 100 they would end
    // past the image, so the copy starts at 300 - 240 - 1. The region starts
    // at the view and is as large as the copy, cut at the image's last column.
    {"AtTheRightEdge", {}, 100.7f, 30.2f, 2, {59, 30, 299, 190}, {100, 30, 299, 190}},
    // At 1 the region is exactly what was copied.
    {"OneToOne", {}, 10.9f, 5.5f, 1, {10, 5, 130, 85}, {10, 5, 130, 85}},
    // At 0.5 the pane shows 60 x 40 pixels, here from the bottom-right corner.
    {"ZoomedInAtTheCorner", {}, 250, 190, 0.5f, {239, 159, 299, 199}, {250, 190, 299, 199}},
    // A view before the image's first column and row copies from (0, 0); the
    // region still ends where the view would, 120 x 80 from (-20, -3).
    {"BeforeTheImage", {}, -20.5f, -3, 1, {0, 0, 120, 80}, {0, 0, 100, 77}},
    // At 3 the image fills only 100 x 66 pane pixels: 300 x 198 image pixels,
    // the whole width, one row short of the whole height.
    {"PastTheImage", {}, 50, 50, 3, {0, 1, 300, 199}, {50, 50, 299, 199}},
    // A selection of 60 x 40 pixels round the left pupil fills the pane at
    // 0.5: the copy starts at the box's corner and the corrected box lands at
    // the output's (0, 0).
    {"Fitted", {70, 80, 131, 121}, 70, 80, 0.5f, {70, 80, 130, 120}, {70, 80, 130, 120}},
};

// The host's output buffer as an image of the document's size.
Image OutputBuffer(testhost::TestHost& host) {
    const FilterRecord& record = host.record();
    Image buffer(kWidth, kHeight, kPlanes);
    const auto* rows = static_cast<const uint8_t*>(record.outData);
    for (int y = 0; y < kHeight; ++y) {
        std::copy_n(rows + y * record.outRowBytes, buffer.RowBytes(), buffer.Row(y));
    }
    return buffer;
}

// The output buffer, which held the document when the dialog opened, after
// one preview run of `preview`.
Image AfterPreview(const Image& document, const PreviewCase& preview) {
    Image expected = document;
    const PixelBox& copied = preview.copied;
    for (int y = 0; y < copied.Height(); ++y) {
        for (int x = 0; x < copied.Width(); ++x) {
            expected.SetPixel(x, y, document.Pixel(copied.left + x, copied.top + y));
        }
    }
    const PixelBox& region = preview.region;
    PutCorrected(expected, region.left - copied.left, region.top - copied.top, document, region);
    return expected;
}

TEST(PreviewRun, CorrectsTheViewInTheOutputBufferAndOkCorrectsItsRegion) {
    for (const PreviewCase& preview : kCases) {
        SCOPED_TRACE(preview.name);
        DialogRun run;
        run.SizePane(IDC_DETAIL_PANE, SIZE{120, 80});
        run.host.image() = RedEyeImage(kWidth, kHeight, kPlanes);
        const PixelBox& s = preview.selection;
        const bool selected = s.Width() > 0;
        if (selected) {
            run.SizePane(IDC_NAVIGATOR_PANE, SIZE{346, 260});
            run.host.image().SelectRect(s.left, s.top, s.Width(), s.Height());
        } else {
            run.Record().viewX = preview.viewX;
            run.Record().viewY = preview.viewY;
            run.Record().viewScale = preview.viewScale;
        }
        const testhost::RunReport report = run.Run({
            [&run, &preview, selected](HWND dialog) {
                ASSERT_NE(run.host.record().outData, nullptr);
                ASSERT_GE(run.host.record().outRowBytes, kWidth * kPlanes);
                EXPECT_EQ(testhost::DescribeDifference(OutputBuffer(run.host),
                                                       AfterPreview(run.host.image(), preview)),
                          "");
                const FilterParameters& record = run.Record();
                EXPECT_EQ(record.viewState, selected ? kViewSelectionBox : kViewStoredRect);
                EXPECT_EQ(std::vector<float>({record.viewX, record.viewY, record.viewScale}),
                          std::vector<float>({preview.viewX, preview.viewY, preview.viewScale}));
                const PixelBox& r = preview.region;
                EXPECT_EQ(std::vector<int>({record.viewLeft, record.viewTop, record.viewRight,
                                            record.viewBottom}),
                          std::vector<int>({r.left, r.top, r.right, r.bottom}));
                // Later runs reuse the preview's buffers: the same values, the same bytes.
                for (const char* tolerance : {"90", "50"})
                    TypeValue(dialog, IDC_TOLERANCE, tolerance);
                EXPECT_EQ(testhost::DescribeDifference(OutputBuffer(run.host),
                                                       AfterPreview(run.host.image(), preview)),
                          "");
                EXPECT_TRUE(run.host.log().progress.empty());
                SendCommand(dialog, IDOK);
            },
        });
        EXPECT_TRUE(report.Ok());
        EXPECT_EQ(testhost::DescribeDifference(run.host.output(),
                                               Corrected(run.host.image(), preview.region)),
                  "");
        ASSERT_EQ(run.host.log().progress.size(), 1u);
        EXPECT_EQ(run.host.log().progress[0].done, 0);
        EXPECT_EQ(run.host.log().progress[0].total, 100);
        EXPECT_EQ(run.host.log().faults, std::vector<std::string>{});
    }
}

}  // namespace
