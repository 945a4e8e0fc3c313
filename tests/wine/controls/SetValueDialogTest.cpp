// "Set value" driven inside its own modal loop: what its fields show after
// the user types and leaves them, and what OK, Enter and Cancel do to the
// spin edit and its parent.
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

#include "GuiTestSupport.h"
#include "controls/SetValueDialog.h"
#include "controls/SetValueDialogIds.h"
#include "controls/SpinEdit.h"

namespace {

constexpr int kFieldId = 1076;

class SetValueDialogTest : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        CreateSpinEdit(Parent(), kFieldId, 10, 10, 90, 48, &field);
        ASSERT_NE(field, nullptr);
        std::strcpy(field->valueName, "Red Tolerance");
        SpinEditSetRange(field, 0.0f, 100.0f);
        SpinEditSetValue(field, 50.0f);
    }

    INT_PTR Run(std::vector<DialogStep> steps) {
        return RunModal([&] { return RunSetValueDialog(field); }, std::move(steps));
    }

    // Types into one field and moves the focus to another, as a user does
    // with the mouse or the Tab key.
    static DialogStep TypeAndLeave(int item, const char* text) {
        const int next = item == IDC_NEW_VALUE_1 ? IDC_NEW_MINIMUM : IDC_NEW_VALUE_1;
        return [=](HWND dialog) {
            ::TypeAndLeave(GetDlgItem(dialog, item), text, GetDlgItem(dialog, next));
        };
    }
    static DialogStep TypeAndLeave(int item, const std::string& text) {
        return TypeAndLeave(item, text.c_str());
    }
    static DialogStep Expect(int item, const char* text) {
        return [=](HWND dialog) { EXPECT_EQ(ItemText(dialog, item), text) << "item " << item; };
    }
    static DialogStep Click(int item) {
        return [=](HWND dialog) { ClickButton(dialog, item); };
    }

    void ExpectField(float value, float minimum, float maximum, const char* text) {
        EXPECT_EQ(field->value, value);
        EXPECT_EQ(field->minimum, minimum);
        EXPECT_EQ(field->maximum, maximum);
        EXPECT_EQ(WindowText(field->editBox), text);
    }

    SpinEditRecord* field = nullptr;
};

TEST_F(SetValueDialogTest, DescribesTheFieldItEdits) {
    const INT_PTR result =
        Run({[](HWND dialog) {
                 EXPECT_EQ(WindowText(dialog), "Set value");
                 EXPECT_EQ(ItemText(dialog, IDC_VALUE_NAME), "Red Tolerance");
                 EXPECT_EQ(ItemText(dialog, IDC_CURRENT_VALUE_1), "50.00");
                 EXPECT_EQ(ItemText(dialog, IDC_CURRENT_VALUE_2), "Not used");
                 EXPECT_EQ(ItemText(dialog, IDC_VALUE_TYPE), "Float slider");
                 EXPECT_EQ(ItemText(dialog, IDC_RECOMMENDED_RANGE), "0.00 ... 100.00");
                 EXPECT_EQ(ItemText(dialog, IDC_NEW_VALUE_1), "50.00");
                 EXPECT_EQ(ItemText(dialog, IDC_NEW_MINIMUM), "0.00");
                 EXPECT_EQ(ItemText(dialog, IDC_NEW_MAXIMUM), "100.00");
                 EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDC_NEW_VALUE_2)));
                 EXPECT_TRUE(SaveScreenshot(dialog, "set_value_dialog"));
             },
             Click(IDCANCEL)});
    EXPECT_EQ(result, IDCANCEL);

    field->integerMode = 1;
    field->recommendedMaximum = 99.9f;
    Run({Expect(IDC_VALUE_TYPE, "Integer slider"), Expect(IDC_RECOMMENDED_RANGE, "0 ... 99"),
         Expect(IDC_NEW_MAXIMUM, "100"), Click(IDCANCEL)});
}

TEST_F(SetValueDialogTest, RangeEndThatWouldEmptyTheRangeIsRefused) {
    Run({TypeAndLeave(IDC_NEW_MINIMUM, "100"), Expect(IDC_NEW_MINIMUM, "0.00"),
         TypeAndLeave(IDC_NEW_MAXIMUM, "0"), Expect(IDC_NEW_MAXIMUM, "100.00"),
         TypeAndLeave(IDC_NEW_MINIMUM, "20"), TypeAndLeave(IDC_NEW_MAXIMUM, "20"),
         Expect(IDC_NEW_MAXIMUM, "100.00"), TypeAndLeave(IDC_NEW_MAXIMUM, "abc"),
         Expect(IDC_NEW_MAXIMUM, "100.00"), TypeAndLeave(IDC_NEW_MINIMUM, "abc"),
         Expect(IDC_NEW_MINIMUM, "0.00"), Click(IDCANCEL)});
}

TEST_F(SetValueDialogTest, NewValueOutsideTheRangeIsClampedSilently) {
    Run({TypeAndLeave(IDC_NEW_VALUE_1, "250"), Expect(IDC_NEW_VALUE_1, "100.00"),
         TypeAndLeave(IDC_NEW_VALUE_1, "-3"), Expect(IDC_NEW_VALUE_1, "0.00"),
         TypeAndLeave(IDC_NEW_VALUE_1, "none"), Expect(IDC_NEW_VALUE_1, "0.00"),
         TypeAndLeave(IDC_NEW_VALUE_1, "33.3"), Expect(IDC_NEW_VALUE_1, "33.3"), Click(IDCANCEL)});
}

TEST_F(SetValueDialogTest, IntegerModeCutsFractionsInEveryField) {
    field->integerMode = 1;
    const INT_PTR result =
        Run({TypeAndLeave(IDC_NEW_MINIMUM, "12.7"), Expect(IDC_NEW_MINIMUM, "12"),
             TypeAndLeave(IDC_NEW_MAXIMUM, "40.7"), Expect(IDC_NEW_MAXIMUM, "40"),
             TypeAndLeave(IDC_NEW_VALUE_1, "20.9"), Expect(IDC_NEW_VALUE_1, "20"), Click(IDOK)});
    EXPECT_EQ(result, IDOK);
    ExpectField(20.0f, 12.0f, 40.0f, "20");
}

TEST_F(SetValueDialogTest, OkAppliesTheNewRangeAndValueAndPostsToTheParent) {
    const INT_PTR result =
        Run({TypeAndLeave(IDC_NEW_MAXIMUM, "60"), TypeAndLeave(IDC_NEW_MINIMUM, "10"),
             TypeAndLeave(IDC_NEW_VALUE_1, "30"), Click(IDOK)});
    EXPECT_EQ(result, IDOK);
    PumpMessages();
    ExpectField(30.0f, 10.0f, 60.0f, "30.00");
    const LRESULT range = SendMessageA(field->arrows, UDM_GETRANGE, 0, 0);
    EXPECT_EQ(LOWORD(range), 60);
    EXPECT_EQ(HIWORD(range), 10);
    EXPECT_EQ(field->sliderRecord->value, 30.0f);
    ASSERT_EQ(Commands().size(), 1u);
    EXPECT_EQ(Commands()[0].wParam, static_cast<WPARAM>(kFieldId));
    EXPECT_EQ(Commands()[0].lParam, 0);
}

TEST_F(SetValueDialogTest, UnchangedOkKeepsTheFieldButStillNotifies) {
    EXPECT_EQ(Run({Click(IDOK)}), IDOK);
    PumpMessages();
    ExpectField(50.0f, 0.0f, 100.0f, "50.00");
    EXPECT_EQ(Commands().size(), 1u);
}

TEST_F(SetValueDialogTest, EnterAppliesTheTextAsTypedWithoutTheFieldCheck) {
    const INT_PTR result = Run({[](HWND dialog) {
                                    HWND minimum = GetDlgItem(dialog, IDC_NEW_MINIMUM);
                                    SetFocus(minimum);
                                    SetWindowTextA(minimum, "150");
                                },
                                [](HWND dialog) { PostKey(dialog, VK_RETURN); }});
    EXPECT_EQ(result, IDOK);
    // The unchecked minimum 150 reached the range; setting the value 50
    // again then widened the range down to it. A checked field would have
    // been put back to 0.
    ExpectField(50.0f, 50.0f, 100.0f, "50.00");
}

TEST_F(SetValueDialogTest, CancelLeavesTheFieldExactlyAsItWas) {
    field->integerMode = 1;
    SpinEditSetValue(field, 37.0f);
    const INT_PTR result =
        Run({TypeAndLeave(IDC_NEW_MINIMUM, "5"), TypeAndLeave(IDC_NEW_MAXIMUM, "45"),
             TypeAndLeave(IDC_NEW_VALUE_1, "9"), Click(IDCANCEL)});
    EXPECT_EQ(result, IDCANCEL);
    PumpMessages();
    ExpectField(37.0f, 0.0f, 100.0f, "37");
    EXPECT_TRUE(Commands().empty());
}

TEST_F(SetValueDialogTest, ExtremeTextInEveryFieldIsSurvived) {
    const std::string longText(400, '9');
    for (int integerMode = 0; integerMode <= 1; ++integerMode) {
        field->integerMode = static_cast<uint8_t>(integerMode);
        std::vector<DialogStep> steps;
        for (const char* text : {"1e30", "-1e30", "nan", "inf", "1e999", longText.c_str()}) {
            for (int item : {IDC_NEW_MINIMUM, IDC_NEW_MAXIMUM, IDC_NEW_VALUE_1}) {
                steps.push_back(TypeAndLeave(item, text));
            }
        }
        steps.push_back(TypeAndLeave(IDC_NEW_MAXIMUM, "-1e30"));
        steps.push_back([](HWND dialog) {
            HWND value = GetDlgItem(dialog, IDC_NEW_VALUE_1);
            SetFocus(value);
            SetWindowTextA(value, "nan");
            PostKey(dialog, VK_RETURN);
        });
        EXPECT_EQ(Run(std::move(steps)), IDOK);
        EXPECT_FALSE(std::isnan(field->value));
        EXPECT_FALSE(WindowText(field->editBox).empty());
        SpinEditSetRange(field, 0.0f, 100.0f);
        SpinEditSetValue(field, 50.0f);
    }
}

// Text a user reads as a number: no "nan", no "inf", nothing after it.
bool ShowsANumber(const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0' && std::isfinite(value);
}

// Ranges too narrow for the slider's scale, and range ends beyond a float;
// afterwards the slider is painted, clicked and dragged all over, and a
// value is typed.
TEST_F(SetValueDialogTest, ExtremeRangesLeaveTheSliderAndTheFieldWorking) {
    const std::string nines(400, '9');
    const std::pair<std::string, std::string> ranges[] = {
        {"-1e-38", "1e-38"}, {"-1e999", "1e999"}, {"-" + nines, nines},
        {"0", "1e999"},      {"-1e999", "0"},
    };
    for (const auto& [low, high] : ranges) {
        SCOPED_TRACE(low.substr(0, 8) + " ... " + high.substr(0, 8));
        SpinEditSetRange(field, 0.0f, 100.0f);
        SpinEditSetValue(field, 50.0f);
        EXPECT_EQ(Run({TypeAndLeave(IDC_NEW_MINIMUM, low), TypeAndLeave(IDC_NEW_MAXIMUM, high),
                       TypeAndLeave(IDC_NEW_VALUE_1, "0"), Click(IDOK)}),
                  IDOK);
        PumpMessages();
        EXPECT_TRUE(ShowsANumber(WindowText(field->editBox))) << WindowText(field->editBox);

        HWND slider = field->slider;
        const int width = field->sliderRecord->head.width;
        for (int x : {-30, 0, 5, width / 2, width - 5, width + 40}) {
            SendMessageA(slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 5));
            SendMessageA(slider, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x + 7, 5));
            SendMessageA(slider, WM_LBUTTONUP, 0, MAKELPARAM(width - x, 5));
            EXPECT_TRUE(ShowsANumber(WindowText(field->editBox)))
                << "after a drag from " << x << ": " << WindowText(field->editBox);
        }
        ::TypeAndLeave(field->editBox, "0.5", Parent());
        EXPECT_TRUE(ShowsANumber(WindowText(field->editBox))) << WindowText(field->editBox);
        EXPECT_TRUE(std::isfinite(field->minimum));
        EXPECT_TRUE(std::isfinite(field->maximum));
        EXPECT_TRUE(field->minimum <= field->value && field->value <= field->maximum);
    }
}

}  // namespace
