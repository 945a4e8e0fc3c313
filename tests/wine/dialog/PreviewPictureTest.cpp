// The pictures in the two panes, pixel by pixel as the panes show them:
// layers with transparency, a picture zoomed in to half a pixel per pane
// pixel, and an image smaller than the navigator.
#include <gtest/gtest.h>

#include <functional>

#include "DialogRun.h"
#include "ScreenCapture.h"

namespace {

// Smaller than the template's panes, so that no other control overlaps them.
constexpr ClientSize kPaneSize{280, 200};

// Colour of one image pixel as 0x00RRGGBB; with a fourth plane the colour is
// scaled by it as an alpha, truncated.
uint32_t ShownColour(const testhost::Image& image, int x, int y) {
    const uint32_t alpha = image.Planes() > 3 ? image.Sample(x, y, 3) : 255;
    uint32_t colour = 0;
    for (int plane = 0; plane < 3; ++plane) {
        colour = (colour << 8) | (image.Sample(x, y, plane) * alpha / 255);
    }
    return colour;
}

// Compares every pixel of a pane's picture, as the pane shows it, with the
// colour `expected` gives for it; reports the first difference and a count.
void ExpectPicture(HWND dialog, int itemId, const std::function<uint32_t(int x, int y)>& expected) {
    const PreviewPaneRecord* pane = PaneOf(dialog, itemId);
    const Capture shown = CaptureClient(GetDlgItem(dialog, itemId));
    int differences = 0;
    for (int y = 0; y < pane->shownSize.y; ++y) {
        for (int x = 0; x < pane->shownSize.x; ++x) {
            const uint32_t on = shown.At(pane->imageOrigin.x + x, pane->imageOrigin.y + y);
            if (on == expected(x, y)) continue;
            if (differences++ == 0) {
                ADD_FAILURE() << "pane " << itemId << " at picture pixel " << x << ", " << y
                              << ": shows " << std::hex << on << " instead of " << expected(x, y);
            }
        }
    }
    EXPECT_EQ(differences, 0) << "pixels that differ in pane " << itemId;
}

// Panes of kPaneSize on `image`, whose mask selects nothing: the dialog keeps
// the view as stored and the preview passes the pixels through unchanged.
class PreviewPictures : public ::testing::Test {
  protected:
    void SetUpImage(const testhost::Image& image) {
        run.SizePane(IDC_DETAIL_PANE, kPaneSize);
        run.SizePane(IDC_NAVIGATOR_PANE, kPaneSize);
        run.host.image() = image;
        run.host.image().SelectRect(0, 0, 0, 0);
        run.Record().viewScale = 1.0f;
        run.Record().viewX = 0.0f;
        run.Record().viewY = 0.0f;
    }

    DialogRun run;
};

// Three bands, alpha 0, 128 and 255, over noise: black, each channel times
// 128/255 truncated, and the colour as it is, in both panes.
TEST_F(PreviewPictures, TransparencyDarkensTowardsBlack) {
    testhost::Image layer(120, 80, 4);
    layer.FillNoise(7);
    for (int y = 0; y < layer.Height(); ++y) {
        for (int x = 0; x < layer.Width(); ++x) {
            layer.SetSample(x, y, 3, x < 40 ? 0 : x < 80 ? 128 : 255);
        }
    }
    SetUpImage(layer);
    run.Run({
        [&layer](HWND dialog) {
            auto colour = [&layer](int x, int y) { return ShownColour(layer, x, y); };
            for (int itemId : {IDC_NAVIGATOR_PANE, IDC_DETAIL_PANE}) {
                EXPECT_EQ(PaneOf(dialog, itemId)->shownSize.x, 120);
                ExpectPicture(dialog, itemId, colour);
            }
            SendCommand(dialog, IDOK);
        },
    });
}

// A navigator never enlarges: 150 x 90 pixels show 1:1, cut to 148 columns
// so that its rows need no padding, in the middle of the pane.
TEST_F(PreviewPictures, SmallImageShowsOneToOneInTheNavigatorsMiddle) {
    testhost::Image image(150, 90, 3);
    image.FillNoise(11);
    SetUpImage(image);
    run.Run({
        [&image](HWND dialog) {
            const PreviewPaneRecord* navigator = PaneOf(dialog, IDC_NAVIGATOR_PANE);
            EXPECT_EQ(navigator->shownSize.x, 148);
            EXPECT_EQ(navigator->shownSize.y, 90);
            EXPECT_EQ(navigator->imageOrigin.x, (280 - 148) / 2);
            EXPECT_EQ(navigator->imageOrigin.y, (200 - 90) / 2);
            ExpectPicture(dialog, IDC_NAVIGATOR_PANE,
                          [&image](int x, int y) { return ShownColour(image, x, y); });
            SendCommand(dialog, IDOK);
        },
    });
}

// Zoomed in from 1:1 to 0.5, each image pixel of the view fills 2 x 2 pane
// pixels, from the view's corner on.
TEST_F(PreviewPictures, HalfZoomShowsEachPixelAsTwoByTwo) {
    testhost::Image image(600, 400, 3);
    image.FillNoise(23);
    SetUpImage(image);
    run.Record().viewX = 150.0f;
    run.Record().viewY = 100.0f;
    run.Run({
        [this, &image](HWND dialog) {
            SendCommand(dialog, IDC_ZOOM_IN);
            ASSERT_EQ(run.Record().viewScale, 0.5f);
            const int left = static_cast<int>(run.Record().viewX);
            const int top = static_cast<int>(run.Record().viewY);
            EXPECT_EQ(PaneOf(dialog, IDC_DETAIL_PANE)->shownSize.x, kPaneSize.width);
            EXPECT_EQ(PaneOf(dialog, IDC_DETAIL_PANE)->shownSize.y, kPaneSize.height);
            ExpectPicture(dialog, IDC_DETAIL_PANE, [&image, left, top](int x, int y) {
                return ShownColour(image, left + x / 2, top + y / 2);
            });
            SendCommand(dialog, IDOK);
        },
    });
}

}  // namespace
