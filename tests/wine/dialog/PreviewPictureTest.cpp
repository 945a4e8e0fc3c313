// The pictures in the two panes, pixel by pixel as the panes show them:
// layers with transparency, an image smaller than the navigator, and a
// picture zoomed in to half a pixel per pane pixel.
#include <gtest/gtest.h>

#include <functional>
#include <ios>
#include <vector>

#include "DialogRun.h"
#include "ScreenCapture.h"

namespace {

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

// Every pixel of a pane's picture, as the pane shows it, against the colour
// `expected` gives for it; reports the first difference and a count.
void ExpectPicture(HWND dialog, int itemId, const std::function<uint32_t(int x, int y)>& expected) {
    const PreviewPaneRecord* pane = PaneOf(dialog, itemId);
    const Capture shown = CaptureClient(GetDlgItem(dialog, itemId));
    int differences = 0;
    for (int y = 0; y < pane->shownSize.y; ++y) {
        for (int x = 0; x < pane->shownSize.x; ++x) {
            const uint32_t on = shown.At(pane->imageOrigin.x + x, pane->imageOrigin.y + y);
            if (on != expected(x, y) && differences++ == 0) {
                ADD_FAILURE() << "pane " << itemId << " at picture pixel " << x << ", " << y
                              << ": shows " << std::hex << on << " instead of " << expected(x, y);
            }
        }
    }
    EXPECT_EQ(differences, 0) << "pixels that differ in pane " << itemId;
}

// Panes of 280 x 200 on an image of noise whose mask selects nothing: the
// dialog keeps the view as stored and the preview passes the pixels through.
// With alpha, three bands of 0, 128 and 255: black, each channel times
// 128/255 truncated, and the colour as it is. A navigator never enlarges: a
// small image shows 1:1, its width cut to a multiple of four so that its
// rows need no padding, in the middle of the pane. Zoomed in to 0.5, each
// image pixel of the view fills 2 x 2 pane pixels from the view's corner on.
struct PictureCase {
    const char* name;
    int width, height, planes;
    PanePoint viewCorner;  // at zoom 1, before the step in when zoomed
    bool zoomed;           // one step in, to 0.5
    std::vector<int> panes;
    PanePoint shown;  // size of the panes' pictures
};

const PictureCase kCases[] = {
    {"Transparency", 120, 80, 4, {0, 0}, false, {IDC_NAVIGATOR_PANE, IDC_DETAIL_PANE}, {120, 80}},
    {"SmallImage", 150, 90, 3, {0, 0}, false, {IDC_NAVIGATOR_PANE}, {148, 90}},
    {"HalfZoom", 600, 400, 3, {150, 100}, true, {IDC_DETAIL_PANE}, {280, 200}},
};

TEST(PreviewPictures, PanesShowTheImagesPixels) {
    for (const PictureCase& c : kCases) {
        SCOPED_TRACE(c.name);
        testhost::Image image(c.width, c.height, c.planes);
        image.FillNoise(c.width);
        for (int y = 0; y < c.height && c.planes == 4; ++y) {
            for (int x = 0; x < c.width; ++x)
                image.SetSample(x, y, 3, x < 40 ? 0 : x < 80 ? 128 : 255);
        }
        DialogRun run;
        run.SizePane(IDC_DETAIL_PANE, SIZE{280, 200});
        run.SizePane(IDC_NAVIGATOR_PANE, SIZE{280, 200});
        run.host.image() = image;
        run.host.image().SelectRect(0, 0, 0, 0);
        run.Record().viewScale = 1.0f;
        run.Record().viewX = static_cast<float>(c.viewCorner.x);
        run.Record().viewY = static_cast<float>(c.viewCorner.y);
        run.Run({[&run, &c, &image](HWND dialog) {
            if (c.zoomed) SendCommand(dialog, IDC_ZOOM_IN);
            for (const int itemId : c.panes) {
                const PreviewPaneRecord* pane = PaneOf(dialog, itemId);
                EXPECT_EQ(pane->shownSize.x, c.shown.x);
                EXPECT_EQ(pane->shownSize.y, c.shown.y);
                const bool detail = itemId == IDC_DETAIL_PANE;
                if (!detail) {
                    EXPECT_EQ(pane->imageOrigin.x, (280 - c.shown.x) / 2);
                    EXPECT_EQ(pane->imageOrigin.y, (200 - c.shown.y) / 2);
                }
                const int left = detail ? static_cast<int>(run.Record().viewX) : 0;
                const int top = detail ? static_cast<int>(run.Record().viewY) : 0;
                const int zoom = c.zoomed ? 2 : 1;
                ExpectPicture(dialog, itemId, [&](int x, int y) {
                    return ShownColour(image, left + x / zoom, top + y / zoom);
                });
            }
            SendCommand(dialog, IDOK);
        }});
    }
}

}  // namespace
