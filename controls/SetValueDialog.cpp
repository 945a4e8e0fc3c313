#include "controls/SetValueDialog.h"

#include <cmath>
#include <cstdio>

#include "controls/SetValueDialogIds.h"
#include "controls/SpinEdit.h"
#include "controls/ValueText.h"
#include "plugin/FilterGlobals.h"

namespace {

// One "Set value" dialog at a time: the field it edits and the range that
// the checks of the minimum and maximum fields work against.
SpinEditRecord* gEditedField = nullptr;
float gWorkingMinimum = 0.0f;
float gWorkingMaximum = 0.0f;

constexpr int kReadLength = 64;

bool IntegerMode() { return gEditedField->integerMode != 0; }

float ReadNumber(HWND dialog, int id) {
    char text[kReadLength + 1];
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return ReadValueText(text);
}

void WriteNumber(HWND dialog, int id, float value) {
    char text[64];
    FormatValueText(value, IntegerMode(), text, sizeof text);
    SetDlgItemTextA(dialog, id, text);
}

// In integer mode a number with a fraction is cut and shown cut.
float KeepWhole(HWND dialog, int id, float value) {
    if (!IntegerMode()) {
        return value;
    }
    const float whole = std::trunc(value);
    if (whole != value) {
        WriteNumber(dialog, id, whole);
    }
    return whole;
}

void ShowField(HWND dialog, const SpinEditRecord* field) {
    char text[96];
    std::snprintf(text, sizeof text, "%.*s", static_cast<int>(sizeof field->valueName),
                  field->valueName);
    SetDlgItemTextA(dialog, IDC_VALUE_NAME, text);
    std::snprintf(text, sizeof text, "%sslider", IntegerMode() ? "Integer " : "Float ");
    SetDlgItemTextA(dialog, IDC_VALUE_TYPE, text);
    WriteNumber(dialog, IDC_CURRENT_VALUE_1, field->value);
    WriteNumber(dialog, IDC_NEW_VALUE_1, field->value);
    SetDlgItemTextA(dialog, IDC_CURRENT_VALUE_2, "Not used");
    EnableWindow(GetDlgItem(dialog, IDC_NEW_VALUE_2), FALSE);

    gWorkingMinimum = field->minimum;
    gWorkingMaximum = field->maximum;
    if (IntegerMode()) {
        std::snprintf(text, sizeof text, "%d ... %d", TruncateToInt32(field->recommendedMinimum),
                      TruncateToInt32(field->recommendedMaximum));
    } else {
        std::snprintf(text, sizeof text, "%0.2f ... %0.2f", field->recommendedMinimum,
                      field->recommendedMaximum);
    }
    SetDlgItemTextA(dialog, IDC_RECOMMENDED_RANGE, text);
    EnableWindow(GetDlgItem(dialog, IDC_NEW_MINIMUM), TRUE);
    EnableWindow(GetDlgItem(dialog, IDC_NEW_MAXIMUM), TRUE);
    WriteNumber(dialog, IDC_NEW_MINIMUM, gWorkingMinimum);
    WriteNumber(dialog, IDC_NEW_MAXIMUM, gWorkingMaximum);
}

// The minimum must stay below the working maximum and the maximum above the
// working minimum; a refused number beeps and the field gets its old one back.
void CheckRangeEnd(HWND dialog, int id, float* workingEnd, bool isMinimum) {
    float value = ReadNumber(dialog, id);
    const bool valid = isMinimum ? value < gWorkingMaximum : value > gWorkingMinimum;
    if (!valid) {
        value = *workingEnd;
        MessageBeep(0xFFFFFFFF);
        WriteNumber(dialog, id, value);
    } else if (value == 0.0f) {
        WriteNumber(dialog, id, value);
    }
    *workingEnd = KeepWhole(dialog, id, value);
}

// The new value is held within the working range without a beep; nothing
// is stored until OK.
void CheckNewValue(HWND dialog) {
    const float value = ReadNumber(dialog, IDC_NEW_VALUE_1);
    if (value < gWorkingMinimum) {
        WriteNumber(dialog, IDC_NEW_VALUE_1, gWorkingMinimum);
    } else if (value > gWorkingMaximum) {
        WriteNumber(dialog, IDC_NEW_VALUE_1, gWorkingMaximum);
    } else {
        if (value == 0.0f) {
            WriteNumber(dialog, IDC_NEW_VALUE_1, value);
        }
        KeepWhole(dialog, IDC_NEW_VALUE_1, value);
    }
}

float ReadRangeEnd(HWND dialog, int id) {
    const float value = ReadNumber(dialog, id);
    return IntegerMode() ? std::trunc(value) : value;
}

// OK applies the three fields as their text stands.
void Apply(HWND dialog) {
    SpinEditRecord* field = gEditedField;
    SpinEditSetValue(field, ReadNumber(dialog, IDC_NEW_VALUE_1));
    field->minimum = ReadRangeEnd(dialog, IDC_NEW_MINIMUM);
    field->maximum = ReadRangeEnd(dialog, IDC_NEW_MAXIMUM);
    SpinEditSetRange(field, field->minimum, field->maximum);
    SpinEditSetValue(field, field->value);
    RedrawWindow(field->head.window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    PostMessageA(GetParent(field->head.window), WM_COMMAND, field->head.controlId, 0);
    EndDialog(dialog, IDOK);
}

void OnCommand(HWND dialog, int id, int code) {
    if (code == EN_KILLFOCUS) {
        if (id == IDC_NEW_MINIMUM) {
            CheckRangeEnd(dialog, id, &gWorkingMinimum, true);
        } else if (id == IDC_NEW_MAXIMUM) {
            CheckRangeEnd(dialog, id, &gWorkingMaximum, false);
        } else if (id == IDC_NEW_VALUE_1) {
            CheckNewValue(dialog);
        }
    } else if (code == BN_CLICKED && id == IDOK) {
        Apply(dialog);
    } else if (code == BN_CLICKED && id == IDCANCEL) {
        EndDialog(dialog, IDCANCEL);
    }
}

}  // namespace

INT_PTR CALLBACK SetValueDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        gEditedField = reinterpret_cast<SpinEditRecord*>(lParam);
        if (gEditedField == nullptr) {
            EndDialog(dialog, IDCANCEL);
        } else {
            ShowField(dialog, gEditedField);
        }
    } else if (message == WM_COMMAND && gEditedField != nullptr) {
        OnCommand(dialog, LOWORD(wParam), HIWORD(wParam));
    }
    return 0;
}

INT_PTR RunSetValueDialog(SpinEditRecord* field) {
    const INT_PTR result =
        DialogBoxParamA(static_cast<HINSTANCE>(gModuleInstance), MAKEINTRESOURCEA(IDD_SET_VALUE),
                        field->head.window, SetValueDialogProc, reinterpret_cast<LPARAM>(field));
    gEditedField = nullptr;
    return result;
}
