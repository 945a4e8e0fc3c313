// The control framework: the toolkit's classes and drawing objects around
// its set-up and tear-down, and the hints on a field's parts.
#include "GuiTestSupport.h"
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
