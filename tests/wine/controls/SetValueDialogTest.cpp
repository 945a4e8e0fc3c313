// "Set value" driven inside its own modal loop: what its fields show after
// the user types and leaves them, and what OK, Enter and Cancel do to the
// spin edit and its parent.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "GuiTestSupport.h"
#include "ScreenCapture.h"
#include "controls/SetValueDialog.h"
#include "controls/SetValueDialogIds.h"
#include "controls/SpinEdit.h"

namespace {

class SetValueDialogTest : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        CreateSpinEdit(Parent(), 1076, 10, 10, 90, 48, &field);
        ASSERT_NE(field, nullptr);
        std::strcpy(field->valueName, "Red Tolerance");
        SpinEditSetRange(field, 0.0f, 100.0f);
        SpinEditSetValue(field, 50.0f);
    }

    INT_PTR Run(std::vector<DialogStep> steps) {
        return RunModal([&] { return RunSetValueDialog(field); }, std::move(steps));
    }
    // Types into a field, leaves it for another and expects what it shows then.
    static DialogStep Type(int item, std::string text, const char* shown = nullptr) {
        return [=](HWND dialog) {
            const int next = item == IDC_NEW_VALUE_1 ? IDC_NEW_MINIMUM : IDC_NEW_VALUE_1;
            TypeAndLeave(GetDlgItem(dialog, item), text.c_str(), GetDlgItem(dialog, next));
            if (shown != nullptr) {
                EXPECT_EQ(ItemText(dialog, item), shown) << text;
            }
        };
    }
    static DialogStep Expect(int item, const char* text) {
        return [=](HWND dialog) { EXPECT_EQ(ItemText(dialog, item), text) << item; };
    }
    static DialogStep Click(int item) {
        return [=](HWND dialog) { ClickButton(dialog, item); };
    }
    static DialogStep Enter(int item, const char* text) {  // typed, not left
        return [=](HWND dialog) {
            SetFocus(GetDlgItem(dialog, item));
            SetWindowTextA(GetDlgItem(dialog, item), text);
            PostKey(dialog, VK_RETURN);
        };
    }
    std::string Field() const {  // value, range and text of the spin edit
        char text[96];
        std::snprintf(text, sizeof text, "%g in %g ... %g, \"%s\"", field->value, field->minimum,
                      field->maximum, WindowText(field->editBox).c_str());
        return text;
    }

    SpinEditRecord* field = nullptr;
};

TEST_F(SetValueDialogTest, DescribesTheFieldItEdits) {
    const INT_PTR result =
        Run({Expect(IDC_VALUE_NAME, "Red Tolerance"), Expect(IDC_CURRENT_VALUE_1, "50.00"),
             Expect(IDC_CURRENT_VALUE_2, "Not used"), Expect(IDC_VALUE_TYPE, "Float slider"),
             Expect(IDC_RECOMMENDED_RANGE, "0.00 ... 100.00"), Expect(IDC_NEW_VALUE_1, "50.00"),
             Expect(IDC_NEW_MINIMUM, "0.00"), Expect(IDC_NEW_MAXIMUM, "100.00"),
             [](HWND dialog) {
                 EXPECT_EQ(WindowText(dialog), "Set value");
                 EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_NEW_VALUE_2)));
                 EXPECT_TRUE(SaveCapture(CaptureWindow(dialog), "set_value_dialog"));
             },
             Click(IDCANCEL)});
    EXPECT_EQ(result, IDCANCEL);
}

TEST_F(SetValueDialogTest, RangeEndsThatWouldEmptyTheRangeAreRefusedAndTheValueIsClamped) {
    Run({Type(IDC_NEW_MINIMUM, "100", "0.00"), Type(IDC_NEW_MAXIMUM, "0", "100.00"),
         Type(IDC_NEW_MINIMUM, "20", "20"), Type(IDC_NEW_MAXIMUM, "20", "100.00"),
         Type(IDC_NEW_MAXIMUM, "abc", "100.00"), Type(IDC_NEW_VALUE_1, "250", "100.00"),
         Type(IDC_NEW_VALUE_1, "10", "20.00"), Type(IDC_NEW_MINIMUM, "abc", "0.00"),
         Type(IDC_NEW_VALUE_1, "none", "0.00"), Type(IDC_NEW_VALUE_1, "33.3", "33.3"),
         Click(IDCANCEL)});
}

TEST_F(SetValueDialogTest, OkAppliesTheNewRangeAndValueAndNotifiesTheParent) {
    EXPECT_EQ(Run({Type(IDC_NEW_MAXIMUM, "60"), Type(IDC_NEW_MINIMUM, "10"),
                   Type(IDC_NEW_VALUE_1, "30"), Click(IDOK)}),
              IDOK);
    PumpMessages();
    EXPECT_EQ(Field(), "30 in 10 ... 60, \"30.00\"");
    const LRESULT arrows = SendMessageA(field->arrows, UDM_GETRANGE, 0, 0);
    EXPECT_EQ(std::make_pair(HIWORD(arrows), LOWORD(arrows)), std::make_pair(WORD{10}, WORD{60}));
    EXPECT_EQ(field->sliderRecord->value, 30.0f);
    ASSERT_EQ(Commands().size(), 1u);
    EXPECT_EQ(Commands()[0].wParam, 1076u);
    EXPECT_EQ(Commands()[0].lParam, 0);
}

// Enter takes the text as typed, without the check on leaving a field: the
// unchecked minimum 150 reaches the range, and setting the value 50 again
// then widens the range down to it.
TEST_F(SetValueDialogTest, CancelChangesNothingUnchangedOkNotifiesAndEnterSkipsTheFieldCheck) {
    EXPECT_EQ(Run({Type(IDC_NEW_MINIMUM, "5"), Type(IDC_NEW_MAXIMUM, "45"),
                   Type(IDC_NEW_VALUE_1, "9"), Click(IDCANCEL)}),
              IDCANCEL);
    EXPECT_EQ(Run({Click(IDOK)}), IDOK);
    PumpMessages();
    EXPECT_EQ(Field(), "50 in 0 ... 100, \"50.00\"");
    EXPECT_EQ(Commands().size(), 1u);
    EXPECT_EQ(Run({Enter(IDC_NEW_MINIMUM, "150")}), IDOK);
    EXPECT_EQ(Field(), "50 in 50 ... 100, \"50.00\"");
}

// Text a user reads as a number: no "nan", no "inf", nothing after it.
bool ShowsANumber(const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && std::isfinite(value);
}

// Range ends too close for the slider's scale or beyond a float;
// afterwards the slider is dragged all over and a value is typed.
TEST_F(SetValueDialogTest, ExtremeTextLeavesTheFieldAndTheSliderShowingNumbers) {
    const std::string nines(400, '9');
    const std::pair<std::string, std::string> ranges[] = {
        {"-1e-38", "1e-38"}, {"-1e999", "1e999"}, {"-" + nines, nines}, {"0", "1e999"},
        {"-1e999", "0"},     {"nan", "inf"},      {"1e30", "-1e30"}};
    for (const auto& [low, high] : ranges) {
        SCOPED_TRACE(low.substr(0, 8) + " ... " + high.substr(0, 8));
        SpinEditSetRange(field, 0.0f, 100.0f);
        SpinEditSetValue(field, 50.0f);
        EXPECT_EQ(Run({Type(IDC_NEW_MINIMUM, low), Type(IDC_NEW_MAXIMUM, high),
                       Type(IDC_NEW_VALUE_1, nines), Enter(IDC_NEW_VALUE_1, "nan")}),
                  IDOK);
        PumpMessages();
        EXPECT_TRUE(ShowsANumber(WindowText(field->editBox))) << WindowText(field->editBox);
        const int width = field->sliderRecord->head.width;
        for (int x : {-30, 0, 5, width / 2, width - 5, width + 40}) {
            SendMessageA(field->slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 5));
            SendMessageA(field->slider, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x + 7, 5));
            SendMessageA(field->slider, WM_LBUTTONUP, 0, MAKELPARAM(width - x, 5));
            EXPECT_TRUE(ShowsANumber(WindowText(field->editBox))) << x;
        }
        TypeAndLeave(field->editBox, "0.5", Parent());
        EXPECT_TRUE(ShowsANumber(WindowText(field->editBox))) << WindowText(field->editBox);
        EXPECT_TRUE(field->minimum <= field->value && field->value <= field->maximum);
    }
}

}  // namespace
