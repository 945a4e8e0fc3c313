// Many openings of the dialog, each setting the control toolkit up and
// tearing it down, leave nothing behind: no GDI object, no window, no
// memory, and no handle of the host.
#include <gtest/gtest.h>

#include <cstdio>

#include "DialogRun.h"
#include "Portrait.h"
#include "ResourceCounts.h"
#include "controls/SetValueDialogIds.h"

namespace {

TEST(DialogLifecycle, FiftyOpeningsLeaveNothingBehind) {
    DialogRun run;
    Portrait portrait = MakePortrait(320, 200);
    SelectEyes(portrait);
    run.host.image() = portrait.image;
    run.host.OnDialog(IDC_NEW_VALUE_1, PressOkSoon);
    // Every other opening zooms, drags and cancels, the others press OK;
    // every fifth opens "Set value" with a right click on a field's slider.
    auto cycle = [&run](int i) {
        run.host.ClearLog();
        const bool cancel = i % 2 == 1;
        const testhost::RunReport report = run.Run({[&run, i, cancel](HWND dialog) {
            if (i % 5 == 0) {
                SendMessageA(FieldOf(dialog, IDC_TOLERANCE)->slider, WM_RBUTTONDOWN, MK_RBUTTON, 0);
                EXPECT_EQ(run.host.log().dialogs.back().caption, "Set value");
            }
            if (cancel) {
                SendCommand(dialog, IDC_ZOOM_IN);
                DragPane(dialog, IDC_DETAIL_PANE, POINT{40, 40}, POINT{60, 50});
            }
            SendCommand(dialog, cancel ? IDCANCEL : IDOK);
        }});
        EXPECT_EQ(report.result, cancel ? userCanceledErr : noErr) << "opening " << i;
    };
    // The first openings fill the system's caches and the module's
    // one-time tables.
    for (int i = 0; i < 4; ++i) cycle(i);
    const robust::ResourceCounts before = robust::CountResources();
    for (int i = 0; i < 50; ++i) cycle(i);
    const robust::ResourceCounts after = robust::CountResources();
    std::printf("50 openings: before %s; after %s\n", robust::Describe(before).c_str(),
                robust::Describe(after).c_str());
    ASSERT_GT(before.gdiObjects, 0u);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LE(after.kernelHandles, before.kernelHandles + 4);  // Wine opens some of its own
    // The panes' pictures alone take some hundred kilobytes an opening.
    EXPECT_LE(after.privateBytes, before.privateBytes + 256 * 1024);
    EXPECT_TRUE(run.host.LeakedHandles().empty());
}

}  // namespace
