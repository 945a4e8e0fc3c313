// The dialog's commands as the host and the user see them: Cancel puts the
// record back, OK keeps the values typed, set in "Set value" or reset, F1
// and the links open with the shell, About opens over the dialog, and hosts
// that give no preview get a plain value dialog.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "DialogRun.h"
#include "Portrait.h"
#include "ScreenCapture.h"
#include "ShellRecorder.h"
#include "controls/SetValueDialogIds.h"

namespace {

// The dialog on a portrait with both eyes selected.
void ShowPortrait(DialogRun& run) {
    Portrait portrait = MakePortrait(900, 600);
    SelectEyes(portrait);
    run.host.image() = portrait.image;
}

void CALLBACK SetValueTo35(HWND box, UINT, UINT_PTR timer, DWORD) {
    KillTimer(box, timer);
    SetDlgItemTextA(box, IDC_NEW_VALUE_1, "35");
    SendMessageA(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, IDOK)));
}

// A typed value, reset and "Set value" (a right click on a field) each reach
// the record; a new value repaints the corrected picture, not the
// navigator's. A value typed but not yet taken when the dialog closes is
// taken as the field loses the focus. OK keeps the values and the run
// corrects the image; Cancel puts the record back byte for byte.
TEST(DialogCommands, ValuesReachTheRecordOkKeepsThemCancelPutsItBack) {
    for (const int close : {IDOK, IDCANCEL}) {
        SCOPED_TRACE(close == IDOK ? "OK" : "Cancel");
        DialogRun run;
        ShowPortrait(run);
        run.Record().tolerance = 80.0f;
        run.Record().darkening = 10.0f;
        run.host.OnDialog(IDC_NEW_VALUE_1, [](HWND box) { SetTimer(box, 1, 1, SetValueTo35); });
        const testhost::RunReport report = run.Run({
            [&run](HWND dialog) {
                EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 80.0f);
                const Capture detail = CaptureClient(GetDlgItem(dialog, IDC_DETAIL_PANE));
                const Capture navigator = CaptureClient(GetDlgItem(dialog, IDC_NAVIGATOR_PANE));
                TypeValue(dialog, IDC_DARKENING, "0");
                EXPECT_EQ(run.Record().darkening, 0.0f);
                EXPECT_EQ(run.Record().tolerance, 80.0f);
                EXPECT_NE(CaptureClient(GetDlgItem(dialog, IDC_DETAIL_PANE)).pixels, detail.pixels);
                EXPECT_EQ(CaptureClient(GetDlgItem(dialog, IDC_NAVIGATOR_PANE)).pixels,
                          navigator.pixels);
                SendCommand(dialog, IDC_RESET_DEFAULTS);
                EXPECT_EQ(run.Record().tolerance, 50.0f);
                EXPECT_EQ(run.Record().darkening, 50.0f);
                EXPECT_EQ(run.Record().viewScale, 1.0f);
                EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 50.0f);
                EXPECT_EQ(FieldOf(dialog, IDC_DARKENING)->value, 50.0f);
                SendCommand(dialog, IDC_ZOOM_IN);
                DragPane(dialog, IDC_DETAIL_PANE, POINT{50, 50}, POINT{80, 70});
                SendMessageA(GetDlgItem(dialog, IDC_TOLERANCE), WM_RBUTTONDOWN, MK_RBUTTON, 0);
            },
            [&run, close](HWND dialog) {
                EXPECT_EQ(run.host.log().dialogs.back().caption, "Set value");
                EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 35.0f);
                EXPECT_EQ(run.Record().tolerance, 35.0f);
                TypeValue(dialog, IDC_DARKENING, "20");
                const SpinEditRecord* field = FieldOf(dialog, IDC_TOLERANCE);
                SetFocus(field->editBox);
                SetWindowTextA(field->editBox, "99");
                SendCommand(dialog, close);
            },
        });
        const auto* record = run.host.ParametersAs<FilterParameters>();
        ASSERT_NE(record, nullptr);
        const size_t changed = testhost::CountDifferentSamples(run.host.image(), run.host.output());
        if (close == IDOK) {
            EXPECT_TRUE(report.Ok());
            EXPECT_EQ(record->tolerance, 99.0f);
            EXPECT_EQ(record->darkening, 20.0f);
            EXPECT_NE(changed, 0u);
        } else {
            EXPECT_EQ(report.result, userCanceledErr);
            FilterParameters expected = run.RecordAtOpen();
            expected.showDialog = 0;  // cleared by the start call once the dialog is gone
            EXPECT_EQ(std::memcmp(record, &expected, sizeof expected), 0);
            EXPECT_EQ(changed, 0u);
        }
        EXPECT_TRUE(run.host.LeakedHandles().empty());
    }
}

// F1 as the keyboard delivers it, to the window that has the focus; it
// reaches the dialog's loop once the step is over.
void PressF1(HWND dialog, HWND focus) {
    SetForegroundWindow(dialog);
    SetFocus(focus);
    INPUT keys[2] = {};
    keys[0].type = INPUT_KEYBOARD;
    keys[0].ki.wVk = VK_F1;
    keys[1] = keys[0];
    keys[1].ki.dwFlags = KEYEVENTF_KEYUP;
    EXPECT_EQ(SendInput(2, keys, sizeof(INPUT)), 2u);
}

// F1 wherever the focus is, in the About box too, and the documentation
// button open the manual beside the module; the web site link opens the
// maker's site. About opens over the dialog.
TEST(DialogCommands, F1AndTheLinksOpenTheManualAndTheSite) {
    DialogRun run;
    ShowPortrait(run);
    ShellRecorder shell(LoadedModule());
    ASSERT_TRUE(shell.Active());
    run.host.OnDialog(IDOK, [](HWND about) {
        PressF1(about, GetDlgItem(about, IDOK));
        PressOkSoon(about);  // timers come after keyboard input
    });
    HWND shown = nullptr;
    std::vector<DialogStep> steps = {[&shown](HWND dialog) {
        shown = dialog;
        SendMessageA(dialog, WM_KEYDOWN, VK_F1, 0);
        SendCommand(dialog, IDC_DOCUMENTATION);
        SendCommand(dialog, IDC_WEB_SITE);
    }};
    for (const int itemId : {IDC_TOLERANCE, IDC_DARKENING, IDOK}) {
        steps.push_back([itemId](HWND dialog) {
            const bool field = itemId != IDOK;
            PressF1(dialog, field ? FieldOf(dialog, itemId)->editBox : GetDlgItem(dialog, itemId));
        });
    }
    steps.push_back([&run](HWND dialog) {
        SendCommand(dialog, IDC_ABOUT);
        const std::vector<testhost::ShownDialog>& boxes = run.host.log().dialogs;
        ASSERT_EQ(boxes.size(), 2u);
        EXPECT_EQ(boxes[1].caption, "About Quorvex");
        EXPECT_TRUE(boxes[1].hasOwner);
        SendCommand(dialog, IDOK);
    });
    run.Run(steps);

    char path[MAX_PATH] = {};
    GetModuleFileNameA(LoadedModule(), path, MAX_PATH);
    const std::string module = path;
    const std::string manual = module.substr(0, module.rfind('\\') + 1) + "KorvanthePhoto.pdf";
    std::vector<std::string> files(7, manual);
    files[2] = "https://www.velmora-imaging.com/";
    std::vector<std::string> opened;
    for (const ShellCall& call : shell.Calls()) {
        opened.push_back(call.file);
        EXPECT_EQ(call.window, shown);
        EXPECT_EQ(call.verb, "open");
        EXPECT_EQ(call.show, SW_SHOWNORMAL);
    }
    EXPECT_EQ(opened, files);
}

// Hosts that give no preview: without the whole-image services, without
// advance state, or failing it while the dialog opens. The panes show their
// diagonals and the zoom buttons do nothing, but a value the user types is
// kept and the run goes on.
struct NoPreviewHost {
    const char* name;
    void (*set)(testhost::HostSettings&);
    float fieldAtOpen;
};

const NoPreviewHost kNoPreviewHosts[] = {
    {"NoWholeImageServices", [](testhost::HostSettings& s) { s.displayPixels = false; }, 0.0f},
    {"NoAdvanceState", [](testhost::HostSettings& s) { s.advanceState = false; }, 0.0f},
    {"AdvanceStateFails", [](testhost::HostSettings& s) { s.advanceStateError = memFullErr; },
     50.0f},
};

TEST(DialogWithoutPreview, PanesShowDiagonalsAndTypedValuesCount) {
    for (const NoPreviewHost& host : kNoPreviewHosts) {
        SCOPED_TRACE(host.name);
        DialogRun run;
        run.SizePane(IDC_DETAIL_PANE, SIZE{280, 200});
        run.SizePane(IDC_NAVIGATOR_PANE, SIZE{280, 200});
        ShowPortrait(run);
        host.set(run.host.settings);
        const testhost::RunReport report = run.Run({
            [&run, &host](HWND dialog) {
                EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, host.fieldAtOpen);
                for (const int itemId : {IDC_DETAIL_PANE, IDC_NAVIGATOR_PANE}) {
                    EXPECT_EQ(PaneOf(dialog, itemId)->bitmap, nullptr);
                    const Capture shown = CaptureClient(GetDlgItem(dialog, itemId));
                    EXPECT_EQ(shown.At(0, 0), 0u);
                    EXPECT_EQ(shown.At(140, 100), 0u);  // where the diagonals cross
                    EXPECT_NE(shown.At(140, 20), 0u);
                }
                SendCommand(dialog, IDC_ZOOM_IN);
                EXPECT_EQ(run.Record().viewScale, 1.0f);
                TypeValue(dialog, IDC_TOLERANCE, "33");
                EXPECT_EQ(run.Record().tolerance, 33.0f);
                SendCommand(dialog, IDOK);
            },
        });
        EXPECT_TRUE(report.Ok());
        EXPECT_GT(report.continueCalls, 0);
        EXPECT_EQ(run.host.ParametersAs<FilterParameters>()->tolerance, 33.0f);
    }
}

}  // namespace
