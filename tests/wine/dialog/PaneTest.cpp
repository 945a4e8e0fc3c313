// What the two panes show and report: dragging the picture and the frame,
// the frame's inversion and its limits, the overlay veil, empty panes, and
// the right click that confirms the dialog.
#include <gtest/gtest.h>

#include <algorithm>

#include "DialogRun.h"
#include "Portrait.h"
#include "ScreenCapture.h"

namespace {

// Smaller than the template's panes, so that no other control overlaps them.
constexpr ClientSize kPaneSize{280, 200};

// Panes of kPaneSize on a portrait whose eyes are selected.
class PreviewPanes : public ::testing::Test {
  protected:
    PreviewPanes() {
        run.SizePane(IDC_DETAIL_PANE, kPaneSize);
        run.SizePane(IDC_NAVIGATOR_PANE, kPaneSize);
        Portrait portrait = MakePortrait(1400, 800);
        SelectEyes(portrait);
        run.host.image() = portrait.image;
    }

    DialogRun run;
};

HWND Pane(HWND dialog, int itemId) { return GetDlgItem(dialog, itemId); }

uint32_t Inverted(uint32_t rgb) { return ~rgb & 0x00FFFFFF; }

TEST_F(PreviewPanes, DraggingThePictureRightMovesTheViewLeft) {
    run.Run({
        [this](HWND dialog) {
            const PreviewPaneRecord* detail = PaneOf(dialog, IDC_DETAIL_PANE);
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            const float scale = run.Record().viewScale;
            ASSERT_EQ(scale, 2.0f);
            const float x = run.Record().viewX;
            const float y = run.Record().viewY;
            const PanePoint frame = navigator->framePos;
            const Capture before = CaptureClient(Pane(dialog, IDC_DETAIL_PANE));

            DragPane(dialog, IDC_DETAIL_PANE, POINT{100, 100}, POINT{130, 100});
            EXPECT_EQ(run.Record().viewX, x - 30 * scale);
            EXPECT_EQ(run.Record().viewY, y);
            EXPECT_EQ(detail->viewShift.x, 0);  // taken over by the dialog
            EXPECT_LT(navigator->framePos.x, frame.x);
            EXPECT_EQ(navigator->framePos.y, frame.y);

            // What was at x is now at x + 30.
            const Capture after = CaptureClient(Pane(dialog, IDC_DETAIL_PANE));
            int differences = 0;
            for (int py = 0; py < detail->shownSize.y; py += 7) {
                for (int px = 0; px + 30 < detail->shownSize.x; ++px) {
                    differences += after.At(px + 30, py) != before.At(px, py);
                }
            }
            EXPECT_EQ(differences, 0);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST_F(PreviewPanes, MovingTheFrameMovesTheView) {
    run.Run({
        [this](HWND dialog) {
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            const PanePoint frame = navigator->framePos;
            const POINT grip{navigator->imageOrigin.x + frame.x + 3,
                             navigator->imageOrigin.y + frame.y + 3};
            DragPane(dialog, IDC_NAVIGATOR_PANE, grip, POINT{grip.x + 20, grip.y + 10});
            EXPECT_EQ(navigator->framePos.x, frame.x + 20);
            EXPECT_EQ(navigator->framePos.y, frame.y + 10);
            // Frame pixels scaled up to the image (1400 x 800), rounded.
            const float toImage = 1400.0f / navigator->shownSize.x;
            EXPECT_EQ(run.Record().viewX, static_cast<int>(navigator->framePos.x * toImage + 0.5));
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST_F(PreviewPanes, FrameStaysInsideTheReducedPicture) {
    run.Run({
        [](HWND dialog) {
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            DragPane(dialog, IDC_NAVIGATOR_PANE, POINT{100, 100}, POINT{-400, -400});
            EXPECT_EQ(navigator->framePos.x, 0);
            EXPECT_EQ(navigator->framePos.y, 0);
            DragPane(dialog, IDC_NAVIGATOR_PANE, POINT{10, 10}, POINT{900, 900});
            const PanePoint frameSize = navigator->imageSize;  // refreshed by the paint
            EXPECT_EQ(navigator->framePos.x, navigator->shownSize.x - frameSize.x - 1);
            EXPECT_EQ(navigator->framePos.y, navigator->shownSize.y - frameSize.y - 1);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

// The navigator as shown, against its own picture: the same outside the
// frame; on the frame's edges inverted, its corners inverted twice.
TEST_F(PreviewPanes, FrameIsInvertedExceptAtOneToOne) {
    run.host.image().ClearMask();
    run.host.image().SelectRect(500, 300, 281, 101);  // exactly as wide as the pane
    auto compare = [](HWND dialog, bool frameExpected) {
        const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
        const Capture shown = CaptureClient(Pane(dialog, IDC_NAVIGATOR_PANE));
        const Capture picture = BitmapPixels(navigator->bitmap);
        const PanePoint origin = navigator->imageOrigin;
        const PanePoint frame = navigator->framePos;
        const PanePoint size = navigator->imageSize;
        auto onScreen = [&](int x, int y) { return shown.At(origin.x + x, origin.y + y); };
        const uint32_t edge = picture.At(frame.x + 2, frame.y);
        const uint32_t corner = picture.At(frame.x, frame.y);
        EXPECT_EQ(onScreen(frame.x + 2, frame.y), frameExpected ? Inverted(edge) : edge);
        EXPECT_EQ(onScreen(frame.x, frame.y + size.y / 2),
                  frameExpected ? Inverted(picture.At(frame.x, frame.y + size.y / 2))
                                : picture.At(frame.x, frame.y + size.y / 2));
        EXPECT_EQ(onScreen(frame.x, frame.y), corner);
        EXPECT_EQ(onScreen(frame.x + 2, frame.y + 2), picture.At(frame.x + 2, frame.y + 2));
    };
    run.Run({
        [this, compare](HWND dialog) {
            ASSERT_EQ(run.Record().viewScale, 1.0f);
            compare(dialog, false);
        },
        [this, compare](HWND dialog) {
            SendCommand(dialog, IDC_ZOOM_IN);
            ASSERT_EQ(run.Record().viewScale, 0.5f);
            compare(dialog, true);
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST_F(PreviewPanes, OverlayVeilsThePictureTowardsGrey) {
    run.Run({
        [](HWND dialog) {
            PreviewPaneRecord* detail = PaneOf(dialog, IDC_DETAIL_PANE);
            const Capture plain = CaptureClient(Pane(dialog, IDC_DETAIL_PANE));
            const int width = detail->head.width;
            // Rows 0-9 solid, 10-19 at half strength, the rest clear. The
            // pane frees the map with its other page blocks.
            auto* map = static_cast<uint8_t*>(
                VirtualAlloc(nullptr, static_cast<SIZE_T>(width) * detail->head.height,
                             MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
            ASSERT_NE(map, nullptr);
            std::fill(map, map + 10 * width, uint8_t{255});
            std::fill(map + 10 * width, map + 20 * width, uint8_t{128});
            detail->overlayMap = map;
            detail->overlayOn = 1;
            InvalidateRect(Pane(dialog, IDC_DETAIL_PANE), nullptr, FALSE);
            const Capture veiled = CaptureClient(Pane(dialog, IDC_DETAIL_PANE));

            const float a = 128 / 255.0f;
            auto half = [a](uint32_t rgb, int shift) {
                const int channel = (rgb >> shift) & 0xFF;
                return static_cast<uint32_t>(static_cast<int>(192 * a + (1 - a) * channel))
                       << shift;
            };
            for (int x = 0; x < width; x += 5) {
                EXPECT_EQ(veiled.At(x, 5), 0xC0C0C0u);
                const uint32_t under = plain.At(x, 15);
                EXPECT_EQ(veiled.At(x, 15), half(under, 16) | half(under, 8) | half(under, 0));
                EXPECT_EQ(veiled.At(x, 30), plain.At(x, 30));
            }
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST_F(PreviewPanes, WithoutPreviewThePanesShowTheirDiagonals) {
    run.host.settings.advanceState = false;
    run.Run({
        [this](HWND dialog) {
            EXPECT_EQ(run.Record().useAdvanceState, 0);
            for (int itemId : {IDC_DETAIL_PANE, IDC_NAVIGATOR_PANE}) {
                const PreviewPaneRecord* pane = PaneOf(dialog, itemId);
                EXPECT_EQ(pane->bitmap, nullptr);
                EXPECT_EQ(pane->sourceBuffers[0], nullptr);
                const Capture shown = CaptureClient(Pane(dialog, itemId));
                EXPECT_EQ(shown.At(0, 0), 0u);
                EXPECT_EQ(shown.At(140, 100), 0u);  // where the diagonals cross
                EXPECT_NE(shown.At(140, 20), 0u);
            }
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
}

TEST_F(PreviewPanes, RightClickOnThePictureConfirmsTheDialog) {
    run.Record().tolerance = 64.0f;
    const testhost::RunReport report = run.Run({
        [](HWND dialog) {
            SendMessageA(Pane(dialog, IDC_DETAIL_PANE), WM_RBUTTONDOWN, MK_RBUTTON,
                         MAKELPARAM(40, 40));
        },
    });
    EXPECT_TRUE(report.Ok());
    EXPECT_EQ(run.host.ParametersAs<FilterParameters>()->tolerance, 64.0f);
    EXPECT_GT(testhost::CountDifferentSamples(run.host.image(), run.host.output()), 0u);
}

}  // namespace
