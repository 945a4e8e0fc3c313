// The control framework: the toolkit's classes around its set-up and
// tear-down, records of template items and their lifetime, and hints.
#include "GuiTestSupport.h"
#include "controls/ControlFramework.h"
#include "controls/SpinEdit.h"
#include "controls/ToolTip.h"
#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

namespace {

using FrameworkTest = ToolkitTest;

TEST_F(FrameworkTest, ClassesAndDrawingObjectsLiveFromSetUpToTearDown) {
    auto registered = [] {
        int count = 0;
        for (const char* name : {"Rotor CPP", "Mac Slider CPP", "Preview Contaner CPP",
                                 "Contaner Color CPP", "Spin Edit CPP"}) {
            WNDCLASSA info;
            count += GetClassInfoA(static_cast<HINSTANCE>(gModuleInstance), name, &info) ? 1 : 0;
        }
        return count;
    };
    HGDIOBJ font = ControlFont;
    HGDIOBJ brush = FaceBrush;
    EXPECT_EQ(registered(), 5);
    EXPECT_EQ(GetObjectType(font), DWORD{OBJ_FONT});
    EXPECT_EQ(GetObjectType(brush), DWORD{OBJ_BRUSH});
    TearDownControlToolkit();
    EXPECT_EQ(registered(), 0);
    EXPECT_EQ(GetObjectType(font), 0u);
    EXPECT_EQ(GetObjectType(brush), 0u);
    SetUpControlToolkit();
    EXPECT_EQ(registered(), 5);
}

INT_PTR CALLBACK PlainDialogProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

TEST_F(FrameworkTest, TemplateSpinEditGetsARecordThatBindFindsByItsExactClass) {
    HWND dialog = CreateDialogParamA(static_cast<HINSTANCE>(gModuleInstance),
                                     MAKEINTRESOURCEA(1000), Parent(), PlainDialogProc, 0);
    ASSERT_NE(dialog, nullptr);
    SpinEditRecord* field = SpinEditBind(dialog, 1076, 0.0f, 100.0f, "Tolerance hint", "Tolerance");
    ASSERT_NE(field, nullptr);
    HWND item = GetDlgItem(dialog, 1076);
    EXPECT_EQ(field->head.window, item);
    EXPECT_EQ(field->head.controlId, 1076);
    EXPECT_STREQ(field->valueName, "Tolerance");
    EXPECT_EQ(field->maximum, 100.0f);
    EXPECT_EQ(WindowText(field->editBox), "") << "a fresh field shows no text until given a value";
    EXPECT_EQ(SpinEditBind(dialog, 1, 0.0f, 100.0f, "hint", "name"), nullptr);
    EXPECT_EQ(SpinEditBind(dialog, 999, 0.0f, 100.0f, "hint", "name"), nullptr);
    EXPECT_EQ(FindControl(item, "Spin edit CPP"), nullptr);
    EXPECT_EQ(FindControl(item, "Mac Slider CPP"), nullptr);
    DestroyWindow(dialog);
}

TEST_F(FrameworkTest, RecordGoesWithItsWindowAndReleasesItsBufferAndObject) {
    SpinEditRecord* field = nullptr;
    HWND window = CreateSpinEdit(Parent(), 7, 10, 10, 90, 48, &field);
    ASSERT_NE(field, nullptr);
    void* buffer = VirtualAlloc(nullptr, 4096, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    HGDIOBJ brush = CreateSolidBrush(RGB(1, 2, 3));
    field->head.pixelBuffer = buffer;
    field->head.ownedObject = brush;
    field->head.ownsObject = 1;
    DestroyWindow(field->slider);
    DestroyWindow(field->editBox);
    SpinEditSetValue(field, 30.0f);  // must not reach the slider's freed record
    DestroyWindow(window);
    MEMORY_BASIC_INFORMATION memory;
    VirtualQuery(buffer, &memory, sizeof memory);
    EXPECT_EQ(memory.State, DWORD{MEM_FREE});
    EXPECT_EQ(GetObjectType(brush), 0u);
}

TEST_F(FrameworkTest, HintIsAWrappingBalloonOnEachPartOfTheField) {
    SpinEditRecord* field = nullptr;
    CreateSpinEdit(Parent(), 7, 10, 10, 90, 48, &field);
    SpinEditSetHint(field, "How widely red is taken");
    for (HWND part : {field->editBox, field->arrows, field->slider}) {
        HWND tip = ToolTipOf(part);
        ASSERT_NE(tip, nullptr);
        EXPECT_EQ(SendMessageA(tip, TTM_GETMAXTIPWIDTH, 0, 0), 100);
        EXPECT_TRUE(GetWindowLongA(tip, GWL_STYLE) & TTS_BALLOON);
        char text[80] = "";
        TOOLINFOA tool = {};
        tool.cbSize = TTTOOLINFOA_V2_SIZE;
        tool.hwnd = part;
        tool.lpszText = text;
        SendMessageA(tip, TTM_GETTEXTA, sizeof text, reinterpret_cast<LPARAM>(&tool));
        EXPECT_STREQ(text, "How widely red is taken");
    }
    AddToolTip(Parent(), nullptr, nullptr);
    AddToolTip(nullptr, "no window", nullptr);
    EXPECT_EQ(ToolTipOf(Parent()), nullptr);
    EXPECT_EQ(ToolTipOf(nullptr), nullptr);
}

}  // namespace
