// The dialog's commands: Cancel and OK, the two fields, reset, the
// documentation, the web site and About, and a dialog without preview.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "DialogRun.h"
#include "Portrait.h"
#include "ShellRecorder.h"
#include "ScreenCapture.h"

namespace {

testhost::Image PortraitWithEyesSelected() {
    Portrait portrait = MakePortrait(900, 600);
    SelectEyes(portrait);
    return portrait.image;
}

class DialogCommands : public ::testing::Test {
  protected:
    DialogCommands() { run.host.image() = PortraitWithEyesSelected(); }
    DialogRun run;
};

// Types a value into a field's edit box and leaves it, as a user does.
void TypeValue(HWND dialog, int itemId, const char* text) {
    const SpinEditRecord* field = FieldOf(dialog, itemId);
    SetWindowTextA(field->editBox, text);
    SendMessageA(GetDlgItem(dialog, itemId), WM_COMMAND, MAKEWPARAM(kSpinEditBoxId, EN_KILLFOCUS),
                 reinterpret_cast<LPARAM>(field->editBox));
}

std::string ModuleFileName(HMODULE module) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(module, path, MAX_PATH);
    return path;
}

// The folder is the module's path less as many characters as
// "Korvanthe.8bf" has, whatever the file is called.
std::string DocumentationPathOf(HMODULE module) {
    const std::string path = ModuleFileName(module);
    return path.substr(0, path.size() - 13) + "KorvanthePhoto.pdf";
}

TEST_F(DialogCommands, CancelPutsTheRecordBackByteForByte) {
    const testhost::RunReport report = run.Run({
        [](HWND dialog) {
            SendCommand(dialog, IDC_ZOOM_IN);
            SendCommand(dialog, IDC_ZOOM_IN);
        },
        [](HWND dialog) {
            DragPane(dialog, IDC_DETAIL_PANE, POINT{50, 50}, POINT{80, 70});
            TypeValue(dialog, IDC_TOLERANCE, "12");
            TypeValue(dialog, IDC_DARKENING, "88");
            SendCommand(dialog, IDC_ZOOM_OUT);
        },
        [this](HWND dialog) {
            EXPECT_NE(std::memcmp(&run.Record(), &run.RecordAtOpen(), sizeof(FilterParameters)), 0);
            // Typed but not yet taken when Cancel comes: the field takes it
            // as it loses the focus to the closing dialog.
            const SpinEditRecord* field = FieldOf(dialog, IDC_TOLERANCE);
            SetFocus(field->editBox);
            SetWindowTextA(field->editBox, "99");
            SendCommand(dialog, IDCANCEL);
        },
    });
    EXPECT_EQ(report.result, userCanceledErr);
    FilterParameters expected = run.RecordAtOpen();
    expected.showDialog = 0;  // cleared by the start call once the dialog is gone
    const auto* restored = run.host.ParametersAs<FilterParameters>();
    ASSERT_NE(restored, nullptr);
    EXPECT_EQ(std::memcmp(restored, &expected, sizeof expected), 0);
    EXPECT_TRUE(run.host.LeakedHandles().empty());
    EXPECT_EQ(testhost::CountDifferentSamples(run.host.image(), run.host.output()), 0u);
}

TEST_F(DialogCommands, OkKeepsTheTypedValues) {
    const testhost::RunReport report = run.Run({
        [](HWND dialog) {
            TypeValue(dialog, IDC_TOLERANCE, "70");
            TypeValue(dialog, IDC_DARKENING, "20");
            SendCommand(dialog, IDOK);
        },
    });
    EXPECT_TRUE(report.Ok());
    EXPECT_EQ(run.host.ParametersAs<FilterParameters>()->tolerance, 70.0f);
    EXPECT_EQ(run.host.ParametersAs<FilterParameters>()->darkening, 20.0f);
}

TEST_F(DialogCommands, ChangingAValueRepaintsTheCorrectedPicture) {
    run.Run({
        [this](HWND dialog) {
            const Capture detail = CaptureClient(GetDlgItem(dialog, IDC_DETAIL_PANE));
            const Capture navigator = CaptureClient(GetDlgItem(dialog, IDC_NAVIGATOR_PANE));
            TypeValue(dialog, IDC_DARKENING, "0");
            EXPECT_EQ(run.Record().darkening, 0.0f);
            EXPECT_NE(CaptureClient(GetDlgItem(dialog, IDC_DETAIL_PANE)).pixels, detail.pixels);
            // The navigator shows the image as it was.
            EXPECT_EQ(CaptureClient(GetDlgItem(dialog, IDC_NAVIGATOR_PANE)).pixels,
                      navigator.pixels);
            SendCommand(dialog, IDOK);
        },
    });
}

TEST_F(DialogCommands, ResetPutsBackTheDefaults) {
    run.Record().tolerance = 80.0f;
    run.Record().darkening = 10.0f;
    run.Run({
        [this](HWND dialog) {
            EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 80.0f);
            SendCommand(dialog, IDC_RESET_DEFAULTS);
            EXPECT_EQ(run.Record().tolerance, 50.0f);
            EXPECT_EQ(run.Record().darkening, 50.0f);
            EXPECT_EQ(run.Record().viewScale, 1.0f);
            EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 50.0f);
            EXPECT_EQ(FieldOf(dialog, IDC_DARKENING)->value, 50.0f);
            SendCommand(dialog, IDOK);
        },
    });
}

TEST_F(DialogCommands, F1AndTheLinksOpenWithTheShell) {
    ShellRecorder shell(LoadedModule());
    ASSERT_TRUE(shell.Active());
    HWND shown = nullptr;
    run.Run({
        [&shown](HWND dialog) {
            shown = dialog;
            SendMessageA(dialog, WM_KEYDOWN, VK_F1, 0);
            SendCommand(dialog, IDC_DOCUMENTATION);
            SendCommand(dialog, IDC_WEB_SITE);
            SendCommand(dialog, IDOK);
        },
    });
    const std::string documentation = DocumentationPathOf(LoadedModule());
    ASSERT_EQ(shell.Calls().size(), 3u);
    for (const ShellCall& call : shell.Calls()) {
        EXPECT_EQ(call.window, shown);
        EXPECT_EQ(call.verb, "open");
        EXPECT_EQ(call.show, SW_SHOWNORMAL);
    }
    EXPECT_EQ(shell.Calls()[0].file, documentation);
    EXPECT_EQ(shell.Calls()[1].file, documentation);
    EXPECT_EQ(shell.Calls()[2].file, "https://www.velmora-imaging.com/");
}

// F1 as the keyboard delivers it: to the window that has the focus.
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

// The key reaches the dialog's loop once the step is over; the next step
// sees what it did.
TEST_F(DialogCommands, F1OpensTheDocumentationWhereverTheFocusIs) {
    ShellRecorder shell(LoadedModule());
    ASSERT_TRUE(shell.Active());
    const std::vector<std::pair<const char*, HWND (*)(HWND)>> targets = {
        {"Tolerance field", [](HWND dialog) { return FieldOf(dialog, IDC_TOLERANCE)->editBox; }},
        {"Darkening field", [](HWND dialog) { return FieldOf(dialog, IDC_DARKENING)->editBox; }},
        {"OK button", [](HWND dialog) { return GetDlgItem(dialog, IDOK); }},
    };
    std::vector<DialogStep> steps;
    for (size_t i = 0; i < targets.size(); ++i) {
        const auto& [name, target] = targets[i];
        steps.push_back([target = target](HWND dialog) { PressF1(dialog, target(dialog)); });
        steps.push_back([&shell, name = name, calls = i + 1](HWND) {
            EXPECT_EQ(shell.Calls().size(), calls) << "after F1 in the " << name;
        });
    }
    HWND shown = nullptr;
    steps.push_back([&shown](HWND dialog) {
        shown = dialog;
        SendCommand(dialog, IDOK);
    });
    run.Run(steps);
    ASSERT_EQ(shell.Calls().size(), targets.size());
    for (const ShellCall& call : shell.Calls()) {
        EXPECT_EQ(call.window, shown);
        EXPECT_EQ(call.verb, "open");
        EXPECT_EQ(call.file, DocumentationPathOf(LoadedModule()));
        EXPECT_EQ(call.show, SW_SHOWNORMAL);
    }
}

void CALLBACK CloseBox(HWND box, UINT, UINT_PTR timer, DWORD) {
    KillTimer(box, timer);
    EndDialog(box, IDOK);
}

// The About box passes F1 on to the dialog that owns it.
TEST_F(DialogCommands, F1InTheAboutBoxOpensTheDocumentation) {
    ShellRecorder shell(LoadedModule());
    bool aboutShown = false;
    run.host.OnDialog(IDOK, [&aboutShown](HWND about) {
        aboutShown = true;
        PressF1(about, GetDlgItem(about, IDOK));
        // Closed after the key: timers come after keyboard input.
        SetTimer(about, 1, 1, CloseBox);
    });
    HWND shown = nullptr;
    run.Run({
        [&shown](HWND dialog) {
            shown = dialog;
            SendCommand(dialog, IDC_ABOUT);
            SendCommand(dialog, IDOK);
        },
    });
    EXPECT_TRUE(aboutShown);
    ASSERT_EQ(shell.Calls().size(), 1u);
    EXPECT_EQ(shell.Calls()[0].window, shown);
    EXPECT_EQ(shell.Calls()[0].file, DocumentationPathOf(LoadedModule()));
}

TEST(DocumentationPath, FolderIsFoundByLengthNotBySeparator) {
    char folder[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, folder);
    const std::string renamed = std::string(folder) + "Qv.8bf";
    ASSERT_TRUE(CopyFileA(QUORVEX_MODULE_PATH, renamed.c_str(), FALSE));
    {
        DialogRun run(renamed.c_str());
        run.host.image() = PortraitWithEyesSelected();
        HMODULE module = GetModuleHandleA(renamed.c_str());
        ShellRecorder shell(module);
        run.Run({
            [](HWND dialog) {
                SendMessageA(dialog, WM_KEYDOWN, VK_F1, 0);
                SendCommand(dialog, IDOK);
            },
        });
        ASSERT_EQ(shell.Calls().size(), 1u);
        const std::string path = ModuleFileName(module);
        EXPECT_EQ(shell.Calls()[0].file, path.substr(0, path.size() - 13) + "KorvanthePhoto.pdf");
        EXPECT_NE(shell.Calls()[0].file, std::string(folder) + "KorvanthePhoto.pdf");
    }
    DeleteFileA(renamed.c_str());
}

TEST_F(DialogCommands, AboutOpensOverTheDialog) {
    run.Run({
        [this](HWND dialog) {
            SendCommand(dialog, IDC_ABOUT);
            const std::vector<testhost::ShownDialog>& shown = run.host.log().dialogs;
            ASSERT_EQ(shown.size(), 2u);
            EXPECT_EQ(shown[1].caption, "About Quorvex");
            EXPECT_TRUE(shown[1].hasOwner);
            SendCommand(dialog, IDOK);
        },
    });
}

// Without the host's whole-image services the dialog is a plain value
// dialog: the fields are not loaded, the panes stay empty and the zoom
// buttons do nothing, but a value the user types is kept.
TEST_F(DialogCommands, WithoutPreviewOnlyTypedValuesCount) {
    run.host.settings.displayPixels = false;
    run.Run({
        [this](HWND dialog) {
            EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 0.0f);
            EXPECT_EQ(run.Record().tolerance, 50.0f);
            SendCommand(dialog, IDC_ZOOM_IN);
            EXPECT_EQ(run.Record().viewScale, 1.0f);
            EXPECT_EQ(PaneOf(dialog, IDC_DETAIL_PANE)->imageSize.x, 0);
            TypeValue(dialog, IDC_TOLERANCE, "33");
            EXPECT_EQ(run.Record().tolerance, 33.0f);
            SendCommand(dialog, IDOK);
        },
    });
}

TEST_F(DialogCommands, HostErrorWhileOpeningSwitchesThePreviewOff) {
    run.host.settings.advanceStateError = memFullErr;
    const testhost::RunReport report = run.Run({
        [this](HWND dialog) {
            EXPECT_EQ(run.Record().useAdvanceState, 0);
            EXPECT_EQ(FieldOf(dialog, IDC_TOLERANCE)->value, 50.0f);
            EXPECT_EQ(PaneOf(dialog, IDC_DETAIL_PANE)->bitmap, nullptr);
            EXPECT_EQ(PaneOf(dialog, IDC_NAVIGATOR_PANE)->bitmap, nullptr);
            SendCommand(dialog, IDC_ZOOM_IN);
            EXPECT_EQ(run.Record().viewScale, 1.0f);
            SendCommand(dialog, IDOK);
        },
    });
    // The run goes on band by band, without the failing service.
    EXPECT_TRUE(report.Ok());
    EXPECT_GT(report.continueCalls, 0);
}

}  // namespace
