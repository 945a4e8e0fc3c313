// The spin edit as its user and its parent window see it: the text in its
// edit box, the arrows, the slider's thumb and marks, and the WM_COMMAND
// messages that reach the parent.
#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "GuiTestSupport.h"
#include "ScreenCapture.h"
#include "controls/SpinEdit.h"

namespace {

constexpr int kFieldId = 1076;

class SpinEditTest : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        window = CreateSpinEdit(Parent(), kFieldId, 10, 10, 118, 48, &field);
        ASSERT_NE(field, nullptr);
        // A track of 100 pixels between the slider's 5-pixel margins.
        ASSERT_EQ(field->sliderRecord->head.width, 110);
        SpinEditSetRange(field, 0.0f, 100.0f);
    }

    std::string Shown() const { return WindowText(field->editBox); }
    int ArrowPosition() const {
        return static_cast<short>(LOWORD(SendMessageA(field->arrows, UDM_GETPOS, 0, 0)));
    }
    std::pair<int, int> ArrowRange() const {  // (lower, upper)
        const LRESULT range = SendMessageA(field->arrows, UDM_GETRANGE, 0, 0);
        return {static_cast<short>(HIWORD(range)), static_cast<short>(LOWORD(range))};
    }
    void Arrow(UINT message, bool up) {
        RECT area;
        GetClientRect(field->arrows, &area);
        const int y = up ? area.bottom / 4 : area.bottom * 3 / 4;
        SendMessageA(field->arrows, message, MK_LBUTTON, MAKELPARAM(area.right / 2, y));
    }
    void Mouse(UINT message, int x, WPARAM keys = MK_LBUTTON) {
        SendMessageA(field->slider, message, keys, MAKELPARAM(x, 5));
    }
    int CountCommands(LPARAM lParam) {  // notifications of the field with this lParam
        return std::count_if(Commands().begin(), Commands().end(), [&](const Command& command) {
            return command.wParam == kFieldId && command.lParam == lParam;
        });
    }
    // Columns of the slider's last row but one, where the thumb and the limit
    // marks stand, that show this colour.
    std::vector<int> Columns(uint32_t colour) {
        const Capture slider = CaptureClient(field->slider);
        std::vector<int> columns;
        for (int x = 0; x < slider.width; ++x) {
            if (slider.At(x, slider.height - 2) == colour) columns.push_back(x);
        }
        return columns;
    }
    int Thumb() {  // the middle of the thumb's black base, or -1
        const std::vector<int> black = Columns(0);
        return black.empty() ? -1 : (black.front() + black.back()) / 2;
    }

    HWND window = nullptr;
    SpinEditRecord* field = nullptr;
};

// The leading decimal number of the text, held within a float (no
// hexadecimal, "nan" or "inf") and then within the range.
TEST_F(SpinEditTest, TypedTextIsReadAsItsLeadingNumberHeldWithinTheRangeWhenTheFieldIsLeft) {
    const float largest = std::numeric_limits<float>::max();
    const std::string big = "340282346638528859811704183484516925440.00";
    // clang-format off
    const std::pair<std::string, std::string> typed[] = {
        {"42.5xyz", "42.50"}, {"letters", "0.00"}, {"  -7", "-7.00"}, {".5", "0.50"},
        {"5.", "5.00"}, {"2e3x", "2000.00"}, {"2e", "2.00"}, {"1e-999", "0.00"}, {"0x1A", "0.00"},
        {"nan", "0.00"}, {"inf", "0.00"}, {"-", "0.00"}, {"", "0.00"}, {"1e999", big},
        {"-1e999", "-" + big}, {"1e39", big}, {"150", "100.00"}, {"-5", "0.00"}};
    // clang-format on
    SpinEditSetRange(field, -largest, largest);
    for (const auto& [text, shown] : typed) {
        if (text == "150") SpinEditSetRange(field, 0.0f, 100.0f);
        TypeAndLeave(field->editBox, text.c_str(), Parent());
        EXPECT_EQ(Shown(), shown) << text;
    }
    EXPECT_EQ(field->maximum, 100.0f) << "typing never widens the range";
    EXPECT_EQ(CountCommands(reinterpret_cast<LPARAM>(field->editBox)), 18);
}

TEST_F(SpinEditTest, ValueIsShownRoundedAndFromOutsideWidensTheRangeAndTheArrowsLowSixteenBits) {
    SpinEditSetValue(field, 12.345f);
    EXPECT_EQ(Shown(), "12.35");
    EXPECT_EQ(ArrowPosition(), 12);
    SpinEditSetValue(field, 150.0f);
    EXPECT_EQ(ArrowRange(), std::make_pair(0, 150));
    SpinEditSetValue(field, -20.0f);
    EXPECT_EQ(ArrowRange(), std::make_pair(-20, 150));
    EXPECT_EQ(Shown(), "-20.00");
    SpinEditSetValue(field, 1e30f);
    EXPECT_EQ(Shown(), "1000000015047466219876688855040.00");
    // The arrows get the low 16 bits of huge numbers.
    SpinEditSetRange(field, -70000.0f, 70000.0f);
    EXPECT_EQ(ArrowRange(), std::make_pair(-4464, 4464));
    SpinEditSetValue(field, 65537.9f);
    EXPECT_EQ(ArrowPosition(), 1);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (float extreme : {1e30f, -1e30f, nan, std::numeric_limits<float>::infinity()}) {
        SpinEditSetValue(field, extreme);
        EXPECT_EQ(ArrowPosition(), 0) << extreme;
    }
}

TEST_F(SpinEditTest, ArrowsStepByWholeNumbersAndNotifyEachStepOrOnceOnRelease) {
    for (uint8_t everyStep : {1, 0}) {
        field->notifyEveryStep = everyStep;
        Commands().clear();
        SpinEditSetValue(field, 12.35f);
        Arrow(WM_LBUTTONDOWN, true);
        EXPECT_EQ(field->value, 13.0f);
        EXPECT_EQ(Shown(), "13.00");
        EXPECT_EQ(Commands().size(), everyStep);
        Arrow(WM_LBUTTONUP, true);
        SpinEditSetValue(field, 12.35f);
        Arrow(WM_LBUTTONDOWN, false);
        Arrow(WM_LBUTTONUP, false);
        EXPECT_EQ(field->value, 11.0f);
        EXPECT_EQ(CountCommands(0), 2) << "every step " << int{everyStep};
    }
}

TEST_F(SpinEditTest, FocusGoesToTheEditBoxWithItsTextSelected) {
    SpinEditSetValue(field, 25.0f);
    SetFocus(window);
    EXPECT_EQ(GetFocus(), field->editBox);
    EXPECT_EQ(SendMessageA(field->editBox, EM_GETSEL, 0, 0), MAKELONG(0, 5)) << "all selected";
}

TEST_F(SpinEditTest, SliderDragNotifiesEachMoveAndTwiceOnRelease) {
    Mouse(WM_LBUTTONDOWN, 5);
    EXPECT_TRUE(Commands().empty()) << "the press itself says nothing";
    Mouse(WM_MOUSEMOVE, 30);
    EXPECT_EQ(field->value, 25.0f);
    Mouse(WM_MOUSEMOVE, 90, MK_LBUTTON | MK_SHIFT);
    EXPECT_EQ(field->value, 25.0f) << "a move with another key held changes nothing";
    Mouse(WM_MOUSEMOVE, 150);
    EXPECT_EQ(Shown(), "100.00");
    Mouse(WM_LBUTTONUP, -30, 0);
    EXPECT_EQ(field->value, 0.0f);
    EXPECT_EQ(CountCommands(0), 4);
    EXPECT_EQ(Commands().size(), 4u);
    EXPECT_EQ(GetFocus(), field->editBox);
}

TEST_F(SpinEditTest, ThumbStandsAtTheValueRoundedToThePixel) {
    const std::pair<float, int> thumbs[] = {{0.0f, 5}, {10.4f, 15}, {10.6f, 16}, {95.0f, 100}};
    for (const auto& [value, x] : thumbs) {
        SpinEditSetValue(field, value);
        EXPECT_EQ(Thumb(), x) << value;
    }
    SpinEditSetRange(field, 50.0f, 50.0f);
    SpinEditSetValue(field, 50.0f);
    EXPECT_EQ(Thumb(), 5) << "an empty range shows its value at the start";
}

TEST_F(SpinEditTest, HintIsAWrappingBalloonOnEachPartOfTheField) {
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
}

}  // namespace
