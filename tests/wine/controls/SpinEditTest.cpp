// The spin edit as its user and its parent window see it: the text in its
// edit box, the arrows' position and range, the slider, and the WM_COMMAND
// messages that reach the parent.
#include <cmath>
#include <limits>

#include "GuiTestSupport.h"
#include "controls/SetValueDialogIds.h"
#include "controls/SpinEdit.h"
#include "controls/Toolkit.h"

namespace {

constexpr int kFieldId = 1076;

class SpinEditTest : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        window = CreateSpinEdit(Parent(), kFieldId, 10, 10, 90, 48, &field);
        ASSERT_NE(field, nullptr);
        SpinEditSetRange(field, 0.0f, 100.0f);
    }

    std::string Shown() const { return WindowText(field->editBox); }
    void Type(const char* text) { TypeAndLeave(field->editBox, text, Parent()); }
    int ArrowPosition() const {
        return static_cast<short>(LOWORD(SendMessageA(field->arrows, UDM_GETPOS, 0, 0)));
    }
    // The arrows' range as (lower, upper).
    std::pair<int, int> ArrowRange() const {
        const LRESULT range = SendMessageA(field->arrows, UDM_GETRANGE, 0, 0);
        return {static_cast<short>(HIWORD(range)), static_cast<short>(LOWORD(range))};
    }
    void ClickArrow(bool up) {
        RECT area;
        GetClientRect(field->arrows, &area);
        const LPARAM point = MAKELPARAM(area.right / 2, up ? area.bottom / 4 : area.bottom * 3 / 4);
        SendMessageA(field->arrows, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageA(field->arrows, WM_LBUTTONUP, 0, point);
    }
    HWND Slider() const { return field->slider; }
    int SliderWidth() const { return field->sliderRecord->head.width; }
    int CountCommands(LPARAM lParam) {
        int count = 0;
        for (const Command& command : Commands()) {
            EXPECT_EQ(command.wParam, static_cast<WPARAM>(kFieldId));
            count += command.lParam == lParam ? 1 : 0;
        }
        return count;
    }

    HWND window = nullptr;
    SpinEditRecord* field = nullptr;
};

TEST_F(SpinEditTest, TypedValueIsHeldWithinTheRangeWhenTheFieldIsLeft) {
    Type("150");
    EXPECT_EQ(Shown(), "100.00");
    EXPECT_EQ(field->value, 100.0f);
    Type("-5");
    EXPECT_EQ(Shown(), "0.00");
    Type("42.5xyz");
    EXPECT_EQ(Shown(), "42.50");
    Type("letters");
    EXPECT_EQ(Shown(), "0.00");
    EXPECT_EQ(field->value, 0.0f);
    EXPECT_EQ(field->maximum, 100.0f) << "typing never widens the range";
    EXPECT_EQ(CountCommands(reinterpret_cast<LPARAM>(field->editBox)), 4);

    field->integerMode = 1;
    Type("150");
    EXPECT_EQ(Shown(), "100");
}

TEST_F(SpinEditTest, FloatModeRoundsTheTextOnlyAndIntegerModeCutsIt) {
    SpinEditSetValue(field, 12.345f);
    EXPECT_EQ(Shown(), "12.35");
    EXPECT_EQ(field->value, 12.345f);
    EXPECT_EQ(ArrowPosition(), 12);

    field->integerMode = 1;
    SpinEditSetValue(field, 12.7f);
    EXPECT_EQ(Shown(), "12");
    EXPECT_EQ(field->value, 12.7f);
    SpinEditSetValue(field, -0.5f);
    EXPECT_EQ(Shown(), "0");
}

TEST_F(SpinEditTest, ValueFromOutsideWidensTheRangeAndTheArrowsFollow) {
    SpinEditSetValue(field, 150.0f);
    EXPECT_EQ(field->minimum, 0.0f);
    EXPECT_EQ(field->maximum, 150.0f);
    EXPECT_EQ(ArrowRange(), std::make_pair(0, 150));
    EXPECT_EQ(field->sliderRecord->maximum, 150.0f);
    SpinEditSetValue(field, -20.0f);
    EXPECT_EQ(field->minimum, -20.0f);
    EXPECT_EQ(ArrowRange(), std::make_pair(-20, 150));
    EXPECT_EQ(Shown(), "-20.00");
}

TEST_F(SpinEditTest, ArrowsGetTheLowSixteenBitsOfHugeNumbers) {
    SpinEditSetRange(field, -70000.0f, 70000.0f);
    EXPECT_EQ(ArrowRange(), std::make_pair(-4464, 4464));
    SpinEditSetValue(field, 65537.9f);
    EXPECT_EQ(ArrowPosition(), 1);
    for (float extreme : {1e30f, -1e30f, std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::infinity()}) {
        SpinEditSetValue(field, extreme);
        EXPECT_EQ(ArrowPosition(), 0) << extreme;
    }
    field->integerMode = 1;
    SpinEditSetValue(field, 1e30f);
    EXPECT_EQ(Shown(), "1000000015047466219876688855040");
}

TEST_F(SpinEditTest, ArrowsStepByWholeNumbersAndNotifyEachStep) {
    SpinEditSetValue(field, 12.35f);
    ClickArrow(true);
    EXPECT_EQ(field->value, 13.0f);
    EXPECT_EQ(Shown(), "13.00");
    SpinEditSetValue(field, 12.35f);
    ClickArrow(false);
    EXPECT_EQ(field->value, 11.0f);
    EXPECT_EQ(CountCommands(0), 2);
}

TEST_F(SpinEditTest, SilentArrowsNotifyOnceWhenTheButtonIsReleased) {
    field->notifyEveryStep = 0;
    SpinEditSetValue(field, 40.0f);
    RECT area;
    GetClientRect(field->arrows, &area);
    const LPARAM up = MAKELPARAM(area.right / 2, area.bottom / 4);
    SendMessageA(field->arrows, WM_LBUTTONDOWN, MK_LBUTTON, up);
    EXPECT_EQ(field->value, 41.0f);
    EXPECT_TRUE(Commands().empty());
    SendMessageA(field->arrows, WM_LBUTTONUP, 0, up);
    EXPECT_EQ(field->value, 41.0f);
    EXPECT_EQ(CountCommands(0), 1);
}

TEST_F(SpinEditTest, DisablingGreysOnlyTheEditBox) {
    EnableWindow(window, FALSE);
    EXPECT_FALSE(IsWindowEnabled(field->editBox));
    EXPECT_TRUE(IsWindowEnabled(field->arrows));
    EXPECT_TRUE(IsWindowEnabled(Slider()));
    EnableWindow(window, TRUE);
    EXPECT_TRUE(IsWindowEnabled(field->editBox));
}

TEST_F(SpinEditTest, FocusGoesToTheEditBoxWithItsTextSelected) {
    SpinEditSetValue(field, 25.0f);
    SetFocus(window);
    EXPECT_EQ(GetFocus(), field->editBox);
    DWORD start = 1;
    DWORD end = 0;
    SendMessageA(field->editBox, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(end, 5u);
}

TEST_F(SpinEditTest, SliderDragNotifiesEachMoveAndTwiceOnRelease) {
    const int width = SliderWidth();
    SendMessageA(Slider(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_TRUE(Commands().empty()) << "the press itself says nothing";
    SendMessageA(Slider(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5 + (width - 10) / 4, 5));
    EXPECT_NEAR(field->value, 25.0f, 1.0f);
    SendMessageA(Slider(), WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(width, 5));
    EXPECT_NEAR(field->value, 25.0f, 1.0f) << "a move with another key held changes nothing";
    SendMessageA(Slider(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(width + 40, 5));
    EXPECT_EQ(field->value, 100.0f);
    EXPECT_EQ(Shown(), "100.00");
    SendMessageA(Slider(), WM_LBUTTONUP, 0, MAKELPARAM(-30, 5));
    EXPECT_EQ(field->value, 0.0f);
    EXPECT_EQ(Commands().size(), 4u);
    EXPECT_EQ(CountCommands(0), 4);
    EXPECT_EQ(GetFocus(), field->editBox);
}

TEST_F(SpinEditTest, SliderReportsEveryDragStepWhenAskedTo) {
    field->sliderRecord->notifyWhileDragging = 1;
    field->integerMode = 1;
    const int width = SliderWidth();
    SendMessageA(Slider(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageA(Slider(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5 + (width - 10) / 3, 5));
    EXPECT_EQ(field->value, std::trunc(field->value)) << "integer mode keeps whole numbers";
    EXPECT_EQ(Shown(), std::to_string(static_cast<int>(field->value)));
    SendMessageA(Slider(), WM_LBUTTONUP, 0, MAKELPARAM(5 + (width - 10) / 3, 5));
    EXPECT_EQ(CountCommands(1), 1);
    EXPECT_EQ(CountCommands(0), 3);
}

TEST_F(SpinEditTest, SliderLimitsHoldTheValueAndShowAsMarks) {
    SliderRecord* slider = field->sliderRecord;
    SliderSetLimits(slider, 20.0f, 80.0f, true);
    SliderSetValue(slider, 10.0f);
    EXPECT_EQ(slider->value, 20.0f);
    SliderSetValue(slider, 95.0f);
    EXPECT_EQ(slider->value, 80.0f);
    SendMessageA(Slider(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 5));
    EXPECT_EQ(slider->value, 20.0f);
    SendMessageA(Slider(), WM_LBUTTONUP, 0, MAKELPARAM(1, 5));

    UpdateWindow(Slider());
    HDC dc = GetDC(Slider());
    const int markX = SliderPixelPosition(slider, 80.0f);
    bool red = false;
    for (int y = 0; y < slider->head.height; ++y) {
        red = red || GetPixel(dc, markX, y) == RGB(155, 0, 0);
    }
    ReleaseDC(Slider(), dc);
    EXPECT_TRUE(red) << "upper limit mark at x = " << markX;

    SliderSetLimits(slider, 0.0f, 0.0f, false);
    SliderSetValue(slider, 95.0f);
    EXPECT_EQ(slider->value, 95.0f);
    EXPECT_EQ(slider->upperLimit, 80.0f) << "turning limits off keeps them";
}

TEST_F(SpinEditTest, ThumbStandsAtTheValue) {
    SliderRecord* slider = field->sliderRecord;
    const int bottom = slider->head.height - 3;
    auto thumbAt = [&](int x) {
        UpdateWindow(Slider());
        HDC dc = GetDC(Slider());
        const COLORREF colour = GetPixel(dc, x, bottom);
        ReleaseDC(Slider(), dc);
        return colour == RGB(128, 128, 128);
    };
    SpinEditSetValue(field, 0.0f);
    EXPECT_TRUE(thumbAt(SliderPixelPosition(slider, 0.0f)));
    EXPECT_FALSE(thumbAt(SliderPixelPosition(slider, 100.0f)));
    SpinEditSetValue(field, 100.0f);
    EXPECT_FALSE(thumbAt(SliderPixelPosition(slider, 0.0f)));
    EXPECT_TRUE(thumbAt(SliderPixelPosition(slider, 100.0f)));
}

TEST_F(SpinEditTest, MarksFarOutsideTheRangeStayOffTheSliderAndAnEmptyRangeShowsItsStart) {
    SliderRecord* slider = field->sliderRecord;
    const int bottom = slider->head.height - 3;
    const COLORREF limitRed = RGB(155, 0, 0);
    const COLORREF thumbGrey = RGB(128, 128, 128);
    // Whether a pixel from row `top` down to the thumb's row has the colour.
    auto shows = [&](COLORREF colour, int top) {
        UpdateWindow(Slider());
        HDC dc = GetDC(Slider());
        bool found = false;
        for (int y = top; y <= bottom; ++y) {
            for (int x = 0; x < slider->head.width; ++x) {
                found = found || GetPixel(dc, x, y) == colour;
            }
        }
        ReleaseDC(Slider(), dc);
        return found;
    };
    SliderSetLimits(slider, -1e30f, 1e30f, true);
    SliderSetValue(slider, 3e38f);
    EXPECT_FALSE(shows(limitRed, 0));
    EXPECT_FALSE(shows(thumbGrey, bottom));

    SliderSetLimits(slider, 0.0f, 0.0f, false);
    SpinEditSetRange(field, 50.0f, 50.0f);
    SpinEditSetValue(field, 50.0f);
    UpdateWindow(Slider());
    HDC dc = GetDC(Slider());
    EXPECT_EQ(GetPixel(dc, 5, bottom), thumbGrey);
    ReleaseDC(Slider(), dc);
}

TEST_F(SpinEditTest, RightClickOnTheFieldOrItsSliderOpensSetValue) {
    for (HWND clicked : {window, Slider()}) {
        std::string caption;
        RunModal(
            [&] { return SendMessageA(clicked, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 3)); },
            {[&](HWND dialog) {
                caption = WindowText(dialog);
                ClickButton(dialog, IDCANCEL);
            }});
        EXPECT_EQ(caption, "Set value");
    }
}

TEST_F(SpinEditTest, ScreenshotOfTwoFields) {
    SetWindowTextA(Parent(), "Spin edits");
    SpinEditRecord* second = nullptr;
    CreateSpinEdit(Parent(), 1077, 110, 10, 90, 48, &second);
    SpinEditSetRange(second, 0.0f, 100.0f);
    second->integerMode = 1;
    SpinEditSetValue(second, 75.0f);
    SpinEditSetValue(field, 50.0f);
    EnableWindow(second->head.window, FALSE);
    EXPECT_TRUE(SaveScreenshot(Parent(), "spin_edit"));
}

}  // namespace
