// The view the dialog opens with, its zoom steps, and the two panes: the
// zoom that fits the selection and its limits, the navigator's picture and
// its frame, and dragging the picture and the frame.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "DialogRun.h"
#include "Portrait.h"
#include "ScreenCapture.h"

namespace {

bool Enabled(HWND dialog, int itemId) { return IsWindowEnabled(GetDlgItem(dialog, itemId)) != 0; }

// The frame sits at the view's corner scaled down to the navigator's
// picture, rounded to the nearest pixel, and kept from the picture's
// right and bottom edges.
void ExpectFrameAtTheView(HWND dialog, const FilterParameters& record, int width, int height) {
    const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
    auto place = [](float view, int shown, int image, int frame) {
        const int at = std::max(static_cast<int>(std::floor(view * shown / image + 0.5f)), 0);
        return at < shown - frame ? at : shown - frame - 1;
    };
    const PanePoint shown = navigator->shownSize, frame = navigator->imageSize;
    EXPECT_EQ(navigator->framePos.x, place(record.viewX, shown.x, width, frame.x));
    EXPECT_EQ(navigator->framePos.y, place(record.viewY, shown.y, height, frame.y));
}

uint32_t Inverted(uint32_t rgb) { return ~rgb & 0x00FFFFFF; }

// The navigator as shown against its own picture: the frame's edges are
// inverted, its corners twice; at 1:1 there is no frame.
void ExpectFrameDrawn(HWND dialog, bool drawn) {
    const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
    const Capture shown = CaptureClient(GetDlgItem(dialog, IDC_NAVIGATOR_PANE));
    const Capture picture = BitmapPixels(navigator->bitmap);
    const PanePoint origin = navigator->imageOrigin, frame = navigator->framePos;
    const uint32_t edge = picture.At(frame.x + 2, frame.y);
    EXPECT_EQ(shown.At(origin.x + frame.x + 2, origin.y + frame.y), drawn ? Inverted(edge) : edge);
    EXPECT_EQ(shown.At(origin.x + frame.x, origin.y + frame.y), picture.At(frame.x, frame.y));
}

// A grey image in a detail pane of 350 x 250 and a navigator of 346 x 260.
// The navigator's picture is the image reduced to fit, its width cut to a
// multiple of four, in the middle of the pane.
struct Opening {
    const char* name;
    int width, height;
    RECT selection;             // empty: a mask that selects nothing
    float scale, viewX, viewY;  // of the view fitted to the selection's box, centred in the pane
    bool zoomIn, zoomOut;       // the zoom buttons enabled
    PanePoint navigator;
};

// The box's largest x and y are its exclusive edge: a selection 1001 wide
// makes a box 1000 wide. The zoom out limit is the navigator's reduction
// rounded up: 4 for 1400 pixels, 2 for 1000.
constexpr float kFit = 150 / 350.0f;
const Opening kOpenings[] = {
    // 1000 / 350 = 2.9 and 300 / 250 = 1.2: rounded up to 3.
    {"Wide", 1400, 800, {200, 300, 1201, 601}, 3, 176, 75, true, true, {344, 197}},
    // 150 x 100 fits: its own zoom of 150 / 350.
    {"Fits", 1400, 800, {500, 300, 651, 401}, kFit, 500, 300 - 8 * kFit, true, true, {344, 197}},
    {"Tiny", 1400, 800, {500, 300, 521, 311}, 0.2f, 475, 280, false, true, {344, 197}},
    // 1380 / 350 = 3.9: 4.
    {"Huge", 1400, 800, {10, 10, 1391, 201}, 4, 2, 0, true, false, {344, 197}},
    // 700 / 350 = 2.
    {"InASmallerImage", 1000, 600, {100, 100, 801, 201}, 2, 100, 0, true, false, {344, 207}},
    // Nothing selected: the view stored in the record stays.
    {"NothingSelected", 400, 300, {0, 0, 0, 0}, 2, 30, 0, true, true, {344, 259}},
};

void SetUpImage(DialogRun& run, int width, int height, RECT selection) {
    run.SizePane(IDC_DETAIL_PANE, SIZE{350, 250});
    run.SizePane(IDC_NAVIGATOR_PANE, SIZE{346, 260});
    testhost::Image image(width, height, 3);
    image.Fill({128, 128, 128});
    image.SelectRect(selection.left, selection.top, selection.right - selection.left,
                     selection.bottom - selection.top);
    run.host.image() = image;
}

TEST(DialogView, OpensFittedToTheSelectionWithinTheZoomLimitsOrWithTheNotice) {
    for (const Opening& c : kOpenings) {
        SCOPED_TRACE(c.name);
        DialogRun run;
        SetUpImage(run, c.width, c.height, c.selection);
        const bool empty = c.selection.right == 0;
        if (empty) {
            run.Record().viewScale = c.scale;
            run.Record().viewX = c.viewX;
        }
        run.Run({[&run, &c, empty](HWND dialog) {
            const FilterParameters& record = run.Record();
            EXPECT_EQ(record.viewState, empty ? kViewEmptySelection : kViewSelectionBox);
            EXPECT_EQ(record.viewScale, c.scale);
            EXPECT_FLOAT_EQ(record.viewX, c.viewX);
            EXPECT_FLOAT_EQ(record.viewY, c.viewY);
            EXPECT_EQ(Enabled(dialog, IDC_ZOOM_IN), c.zoomIn);
            EXPECT_EQ(Enabled(dialog, IDC_ZOOM_OUT), c.zoomOut);
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            EXPECT_EQ(navigator->shownSize.x, c.navigator.x);
            EXPECT_EQ(navigator->shownSize.y, c.navigator.y);
            EXPECT_EQ(navigator->imageOrigin.x, (346 - c.navigator.x) / 2);
            EXPECT_EQ(navigator->imageOrigin.y, (260 - c.navigator.y) / 2);
            ExpectFrameAtTheView(dialog, record, c.width, c.height);
            SendCommand(dialog, IDOK);
        }});
    }
    // No selection at all: the notice opens over the dialog, which stays.
    DialogRun run;
    run.host.image() = testhost::Image(400, 300, 3);
    const testhost::RunReport report = run.Run({[&run](HWND dialog) {
        const std::vector<testhost::ShownDialog>& shown = run.host.log().dialogs;
        ASSERT_EQ(shown.size(), 2u);
        EXPECT_EQ(shown[0].caption, "Notice");
        EXPECT_TRUE(shown[0].hasOwner);
        EXPECT_EQ(shown[1].caption, "Velmora Quorvex");
        EXPECT_TRUE(IsWindowVisible(dialog));
        SendCommand(dialog, IDOK);
    }});
    EXPECT_EQ(report.result, noErr);
}

// Each step in halves the zoom below 2 and takes one off above, down to
// 0.2; each step out doubles it below 1 and adds one above, up to the
// navigator's divisor. The button that reached its end is disabled, the
// view stays centred and the frame follows it, drawn except at 1:1.
TEST(DialogView, ZoomStepsKeepTheViewCentredAndStopAtTheirLimits) {
    DialogRun run;
    SetUpImage(run, 1400, 800, RECT{200, 300, 1201, 601});
    std::vector<DialogStep> steps;
    const std::pair<int, std::vector<float>> zooms[] = {
        {IDC_ZOOM_IN, {2, 1, 0.5f, 0.25f, 0.2f}}, {IDC_ZOOM_OUT, {0.4f, 0.8f, 1.6f, 2, 3, 4}}};
    for (const auto& [itemId, scales] : zooms) {
        for (size_t i = 0; i < scales.size(); ++i) {
            const bool last = i + 1 == scales.size();
            steps.push_back([&run, itemId = itemId, scale = scales[i], last](HWND dialog) {
                SCOPED_TRACE(scale);
                const PanePoint shown = PaneOf(dialog, IDC_DETAIL_PANE)->shownSize;
                const FilterParameters before = run.Record();
                SendCommand(dialog, itemId);
                const FilterParameters& after = run.Record();
                EXPECT_EQ(after.viewScale, scale);
                EXPECT_EQ(Enabled(dialog, itemId), !last);
                EXPECT_EQ(Enabled(dialog, itemId == IDC_ZOOM_IN ? IDC_ZOOM_OUT : IDC_ZOOM_IN),
                          true);
                EXPECT_FLOAT_EQ(after.viewX,
                                before.viewX + shown.x * (before.viewScale - scale) / 2);
                EXPECT_FLOAT_EQ(after.viewY,
                                before.viewY + shown.y * (before.viewScale - scale) / 2);
                ExpectFrameAtTheView(dialog, after, 1400, 800);
                if (itemId == IDC_ZOOM_IN) ExpectFrameDrawn(dialog, scale != 1);
            });
        }
    }
    steps.push_back([](HWND dialog) { SendCommand(dialog, IDOK); });
    run.Run(steps);
}

// Dragging the picture moves the view the other way and the picture with
// the mouse; dragging the frame moves the view with it, the frame kept
// inside the navigator's picture. A right click on the picture is OK. Panes
// of 280 x 200 on a portrait whose eyes are selected open at zoom 2 (its
// pictures, and one a step in, are the manual's).
TEST(PreviewPanes, DraggingThePictureOrTheFrameMovesTheViewAndRightClickConfirms) {
    DialogRun run;
    run.SizePane(IDC_DETAIL_PANE, SIZE{280, 200});
    run.SizePane(IDC_NAVIGATOR_PANE, SIZE{280, 200});
    Portrait portrait = MakePortrait(1400, 800);
    SelectEyes(portrait);
    run.host.image() = portrait.image;
    run.Run({
        [&run](HWND dialog) {
            const PreviewPaneRecord* detail = PaneOf(dialog, IDC_DETAIL_PANE);
            ASSERT_EQ(run.Record().viewScale, 2.0f);
            SaveDialogPicture(dialog, "dialog-open");
            SendCommand(dialog, IDC_ZOOM_IN);
            SaveDialogPicture(dialog, "dialog-zoomed-in");
            SendCommand(dialog, IDC_ZOOM_OUT);
            const FilterParameters before = run.Record();
            ASSERT_EQ(before.viewScale, 2.0f);
            const Capture picture = CaptureClient(GetDlgItem(dialog, IDC_DETAIL_PANE));
            DragPane(dialog, IDC_DETAIL_PANE, POINT{100, 100}, POINT{130, 120});
            EXPECT_EQ(run.Record().viewX, before.viewX - 30 * 2);
            EXPECT_EQ(run.Record().viewY, before.viewY - 20 * 2);
            ExpectFrameAtTheView(dialog, run.Record(), 1400, 800);
            const Capture moved = CaptureClient(GetDlgItem(dialog, IDC_DETAIL_PANE));
            int differences = 0;
            for (int y = 0; y + 20 < detail->shownSize.y; y += 7) {
                for (int x = 0; x + 30 < detail->shownSize.x; ++x) {
                    differences += moved.At(x + 30, y + 20) != picture.At(x, y);
                }
            }
            EXPECT_EQ(differences, 0);
            SaveDialogPicture(dialog, "dialog-dragged");
        },
        [&run](HWND dialog) {
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            const PanePoint frame = navigator->framePos;
            const POINT grip{navigator->imageOrigin.x + frame.x + 3,
                             navigator->imageOrigin.y + frame.y + 3};
            DragPane(dialog, IDC_NAVIGATOR_PANE, grip, POINT{grip.x + 20, grip.y + 10});
            EXPECT_EQ(navigator->framePos.x, frame.x + 20);
            EXPECT_EQ(navigator->framePos.y, frame.y + 10);
            // Frame pixels scaled up to the image, rounded.
            EXPECT_EQ(run.Record().viewX,
                      std::floor(navigator->framePos.x * 1400.0f / navigator->shownSize.x + 0.5f));
            EXPECT_EQ(run.Record().viewY,
                      std::floor(navigator->framePos.y * 800.0f / navigator->shownSize.y + 0.5f));

            DragPane(dialog, IDC_NAVIGATOR_PANE, POINT{100, 100}, POINT{-400, -400});
            EXPECT_EQ(navigator->framePos.x, 0);
            EXPECT_EQ(navigator->framePos.y, 0);
            DragPane(dialog, IDC_NAVIGATOR_PANE, POINT{10, 10}, POINT{900, 900});
            const PanePoint frameSize = navigator->imageSize;  // refreshed by the paint
            EXPECT_EQ(navigator->framePos.x, navigator->shownSize.x - frameSize.x - 1);
            EXPECT_EQ(navigator->framePos.y, navigator->shownSize.y - frameSize.y - 1);
        },
        [](HWND dialog) {
            SendMessageA(GetDlgItem(dialog, IDC_DETAIL_PANE), WM_RBUTTONDOWN, MK_RBUTTON,
                         MAKELPARAM(40, 40));
        },
    });
    EXPECT_GT(testhost::CountDifferentSamples(run.host.image(), run.host.output()), 0u);
}

}  // namespace
