// The view the dialog opens with and its zoom steps: the zoom that fits the
// selection, its limits, the zoom buttons, and the navigator's size.
#include <gtest/gtest.h>

#include "DialogRun.h"

namespace {

constexpr ClientSize kDetailSize{350, 250};
constexpr ClientSize kNavigatorSize{346, 260};

// A grey image with one selected rectangle, in panes of known sizes.
void SetUpImage(DialogRun& run, int width, int height, RECT selection) {
    run.SizePane(IDC_DETAIL_PANE, kDetailSize);
    run.SizePane(IDC_NAVIGATOR_PANE, kNavigatorSize);
    testhost::Image image(width, height, 3);
    image.Fill({128, 128, 128});
    image.SelectRect(selection.left, selection.top, selection.right - selection.left,
                     selection.bottom - selection.top);
    run.host.image() = image;
}

bool Enabled(HWND dialog, int itemId) { return IsWindowEnabled(GetDlgItem(dialog, itemId)) != 0; }

void ExpectZoomButtons(HWND dialog, bool zoomIn, bool zoomOut) {
    EXPECT_EQ(Enabled(dialog, IDC_ZOOM_IN), zoomIn);
    EXPECT_EQ(Enabled(dialog, IDC_ZOOM_OUT), zoomOut);
}

// Box x 200..1200, y 300..600 (largest x and y exclusive of the 1001 x 301
// selected pixels) in a 1400 x 800 image: 1000 wide in a 350-pixel pane.
void SetUpWideBox(DialogRun& run) { SetUpImage(run, 1400, 800, RECT{200, 300, 1201, 601}); }

TEST(DialogView, WideSelectionFitsWithTheNextWholeDivisor) {
    DialogRun run;
    SetUpWideBox(run);
    run.Run({
        [&run](HWND dialog) {
            const FilterParameters& record = run.Record();
            // 1000 / 350 = 2.857... and 300 / 250 = 1.2: rounded up to 3.
            EXPECT_EQ(record.viewScale, 3.0f);
            EXPECT_EQ(record.viewState, kViewSelectionBox);
            EXPECT_EQ(record.viewLeft, 200);
            EXPECT_EQ(record.viewRight, 1200);
            EXPECT_EQ(record.viewTop, 300);
            EXPECT_EQ(record.viewBottom, 600);
            // Centred: 333 x 100 pane pixels of box in 350 x 250.
            EXPECT_EQ(record.viewX, 200.0f - 8 * 3);
            EXPECT_EQ(record.viewY, 300.0f - 75 * 3);
            ExpectZoomButtons(dialog, true, true);
            EXPECT_EQ(PaneOf(dialog, IDC_NAVIGATOR_PANE)->maxScale, 4.0f);  // 1400 / 346
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST(DialogView, SelectionThatFitsKeepsItsExactZoom) {
    DialogRun run;
    SetUpImage(run, 1400, 800, RECT{500, 300, 651, 401});  // a box of 150 x 100
    run.Run({
        [&run](HWND dialog) {
            const float scale = 150.0f / 350.0f;
            EXPECT_EQ(run.Record().viewScale, scale);
            const int shownWidth = static_cast<int>(150 / scale);
            EXPECT_EQ(run.Record().viewX, 500 - ((350 - shownWidth) / 2) * scale);
            ExpectZoomButtons(dialog, true, true);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST(DialogView, TinySelectionStopsAtTheSmallestZoom) {
    DialogRun run;
    SetUpImage(run, 1400, 800, RECT{500, 300, 521, 311});  // 20 x 10
    run.Run({
        [&run](HWND dialog) {
            EXPECT_EQ(run.Record().viewScale, 0.2f);
            ExpectZoomButtons(dialog, false, true);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST(DialogView, HugeSelectionStopsAtTheNavigatorsDivisor) {
    DialogRun run;
    SetUpImage(run, 1400, 800, RECT{10, 10, 1391, 201});  // 1380 / 350 = 3.9 -> 4 = maxScale
    run.Run({
        [&run](HWND dialog) {
            EXPECT_EQ(run.Record().viewScale, 4.0f);
            ExpectZoomButtons(dialog, true, false);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

// Each step zooms once and checks the new zoom and the buttons.
std::vector<DialogStep> ZoomSteps(DialogRun& run, int itemId, std::vector<float> expected) {
    std::vector<DialogStep> steps;
    for (size_t i = 0; i < expected.size(); ++i) {
        const bool last = i + 1 == expected.size();
        steps.push_back([&run, itemId, scale = expected[i], last](HWND dialog) {
            SendCommand(dialog, itemId);
            EXPECT_EQ(run.Record().viewScale, scale);
            EXPECT_EQ(Enabled(dialog, itemId), !last) << "at " << scale;
        });
    }
    return steps;
}

TEST(DialogView, ZoomStepsDownToTheFloorAndUpToTheNavigatorsDivisor) {
    DialogRun run;
    SetUpWideBox(run);
    std::vector<DialogStep> steps = ZoomSteps(run, IDC_ZOOM_IN, {2, 1, 0.5f, 0.25f, 0.2f});
    std::vector<DialogStep> out = ZoomSteps(run, IDC_ZOOM_OUT, {0.4f, 0.8f, 1.6f, 2, 3, 4});
    steps.insert(steps.end(), out.begin(), out.end());
    steps.push_back([](HWND dialog) {
        EXPECT_TRUE(Enabled(dialog, IDC_ZOOM_IN));
        SendCommand(dialog, IDOK);
    });
    run.Run(steps);
}

TEST(DialogView, ZoomKeepsTheViewCentred) {
    DialogRun run;
    SetUpWideBox(run);
    run.Run({
        [&run](HWND dialog) {
            const PreviewPaneRecord* detail = PaneOf(dialog, IDC_DETAIL_PANE);
            const PanePoint shown = detail->shownSize;
            const float x = run.Record().viewX;
            const float y = run.Record().viewY;
            SendCommand(dialog, IDC_ZOOM_IN);  // 3 -> 2
            EXPECT_EQ(run.Record().viewX, x + shown.x / 2.0f);
            EXPECT_EQ(run.Record().viewY, y + shown.y / 2.0f);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST(DialogView, NavigatorShowsTheWholeImageReducedToAWidthOfFour) {
    DialogRun run;
    SetUpImage(run, 1000, 600, RECT{100, 100, 200, 200});
    run.Run({
        [](HWND dialog) {
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            // 346 / 1000 = 0.346: 346 x 207, the width cut to 344.
            EXPECT_EQ(navigator->shownSize.x, 344);
            EXPECT_EQ(navigator->shownSize.y, 207);
            EXPECT_EQ(navigator->bitmapSize.x, 344);
            EXPECT_EQ(navigator->bitmapSize.y, 207);
            EXPECT_EQ(navigator->imageOrigin.x, 1);
            EXPECT_EQ(navigator->imageOrigin.y, 26);
            EXPECT_EQ(navigator->maxScale, 2.0f);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST(DialogView, EmptySelectionLeavesTheStoredView) {
    DialogRun run;
    SetUpImage(run, 400, 300, RECT{0, 0, 0, 0});  // a mask with nothing selected
    run.Record().viewScale = 2.0f;
    run.Record().viewX = 30.0f;
    run.Run({
        [&run](HWND dialog) {
            EXPECT_EQ(run.Record().viewState, kViewEmptySelection);
            EXPECT_EQ(run.Record().viewScale, 2.0f);
            EXPECT_EQ(run.Record().viewX, 30.0f);
            SendCommand(dialog, IDOK);
        },
    });
}

TEST(DialogView, NoSelectionShowsTheNoticeAndKeepsTheDialog) {
    DialogRun run;
    run.host.image() = testhost::Image(400, 300, 3);
    const testhost::RunReport report = run.Run({
        [&run](HWND dialog) {
            const std::vector<testhost::ShownDialog>& shown = run.host.log().dialogs;
            ASSERT_EQ(shown.size(), 2u);
            EXPECT_EQ(shown[0].caption, "Notice");
            EXPECT_TRUE(shown[0].hasOwner);
            EXPECT_EQ(shown[1].caption, "Velmora Quorvex");
            EXPECT_TRUE(IsWindowVisible(dialog));
            SendCommand(dialog, IDOK);
        },
    });
    EXPECT_EQ(report.result, noErr);
}

}  // namespace
