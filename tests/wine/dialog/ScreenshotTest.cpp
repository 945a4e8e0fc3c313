// Pictures of the dialog on a portrait with red eyes, left as artefacts: at
// open, after zooming in twice, and after dragging the detail pane; every
// control in them drawn.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "DialogRun.h"
#include "Portrait.h"
#include "ScreenCapture.h"

namespace {

// A band across both eyes, 900 pixels wide, in a portrait 1600 wide: the
// dialog opens showing the whole face, and two steps in show both eyes large.
void SelectEyeBand(Portrait& portrait) {
    const RECT& left = portrait.leftEye;
    const RECT& right = portrait.rightEye;
    const int middle = (left.left + right.right) / 2;
    portrait.image.SelectRect(middle - 450, left.top, 900, left.bottom - left.top);
}

// A control left unpainted shows only the dialog's plain face in its area;
// every control of this dialog draws a frame, a text or a picture.
void ExpectEveryControlDrawn(HWND dialog, const Capture& picture, const char* name) {
    RECT window;
    GetWindowRect(dialog, &window);
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) continue;
        RECT area;
        GetWindowRect(child, &area);
        std::set<uint32_t> colours;
        for (int y = area.top - window.top; y < area.bottom - window.top; ++y) {
            for (int x = area.left - window.left; x < area.right - window.left; ++x) {
                colours.insert(picture.At(x, y));
            }
        }
        char text[64] = {};
        GetWindowTextA(child, text, sizeof text);
        EXPECT_GT(colours.size(), 1u)
            << name << ": control " << GetDlgCtrlID(child) << " \"" << text << "\" is not drawn";
    }
}

void Save(HWND dialog, const char* name) {
    // Wine's virtual desktop leaves the dialog drawn inactive; draw it as
    // the window the user works in.
    SendMessageA(dialog, WM_NCACTIVATE, TRUE, 0);
    const Capture picture = CaptureWindow(dialog);
    ExpectEveryControlDrawn(dialog, picture, name);
    EXPECT_TRUE(SaveCapture(picture, name));
}

TEST(DialogPictures, OpenZoomedAndDragged) {
    DialogRun run;
    Portrait portrait = MakePortrait(1600, 1000);
    SelectEyeBand(portrait);
    run.host.image() = portrait.image;
    const testhost::RunReport report = run.Run({
        [&run](HWND dialog) {
            EXPECT_EQ(run.Record().viewScale, 4.0f);
            Save(dialog, "dialog-open");
        },
        [&run](HWND dialog) {
            SendCommand(dialog, IDC_ZOOM_IN);
            SendCommand(dialog, IDC_ZOOM_IN);
            EXPECT_EQ(run.Record().viewScale, 2.0f);
            Save(dialog, "dialog-zoomed-in");
        },
        [](HWND dialog) {
            DragPane(dialog, IDC_DETAIL_PANE, POINT{60, 100}, POINT{130, 90});
            Save(dialog, "dialog-dragged");
        },
        [](HWND dialog) { SendCommand(dialog, IDOK); },
    });
    EXPECT_TRUE(report.Ok());
}

}  // namespace
