#include "controls/SpinEdit.h"

#include <commctrl.h>

#include <cmath>
#include <cstring>

#include "controls/SetValueDialog.h"
#include "controls/ToolTip.h"
#include "controls/Toolkit.h"
#include "controls/ValueText.h"
#include "plugin/FilterGlobals.h"

namespace {

constexpr int kReadTextLength = 32;
constexpr DWORD kChildStyle = WS_CHILD | WS_VISIBLE | WS_BORDER;

HMENU ChildId(int id) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)); }

// The slider's record while the slider window exists.
SliderRecord* KnownSlider(const SpinEditRecord* field) {
    return field->sliderRecord != nullptr && IsWindow(field->slider) ? field->sliderRecord
                                                                     : nullptr;
}

void NotifyParent(const SpinEditRecord* field, LPARAM lParam) {
    SendMessageA(GetParent(field->head.window), WM_COMMAND, field->head.controlId, lParam);
}

void FocusEditBox(const SpinEditRecord* field) {
    SetFocus(field->editBox);
    SendMessageA(field->editBox, EM_SETSEL, 0, -1);
}

void CreateChildren(SpinEditRecord* field, HWND window) {
    const int width = field->head.width;
    const int height = field->head.height;
    const HINSTANCE instance = static_cast<HINSTANCE>(gModuleInstance);
    field->editBox = CreateWindowExA(
        WS_EX_CLIENTEDGE, "EDIT", "", kChildStyle | ES_WANTRETURN | ES_AUTOHSCROLL, 0, 0,
        width - 20, height - 20, window, ChildId(kSpinEditBoxId), instance, nullptr);
    SendMessageA(field->editBox, WM_SETFONT, reinterpret_cast<WPARAM>(ControlFont), 0);
    field->arrows =
        CreateUpDownControl(kChildStyle, width - 19, 0, 20, height - 20, window, kSpinEditArrowsId,
                            instance, field->editBox, TruncateToInt32(field->maximum),
                            TruncateToInt32(field->minimum), TruncateToInt32(field->value));
    field->slider =
        CreateWindowExA(WS_EX_STATICEDGE, kSliderClassName, "", kChildStyle, 0, height - 20, width,
                        20, window, ChildId(kSpinEditSliderId), instance, nullptr);
    field->sliderRecord = RecordOf<SliderRecord>(FindControl(field->slider, kSliderClassName));
    if (field->sliderRecord != nullptr) {
        field->sliderRecord->forwardRightClick = 1;
    }
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(field));
}

// The up-down control reports each step with SB_THUMBPOSITION and the
// release of its button with SB_ENDSCROLL, the position in the high word.
void OnArrows(SpinEditRecord* field, WPARAM wParam) {
    const int code = LOWORD(wParam);
    const float position = static_cast<short>(HIWORD(wParam));
    if (code == SB_THUMBPOSITION) {
        SpinEditSetValue(field, position);
        if (field->notifyEveryStep != 0) {
            NotifyParent(field, 0);
        }
    } else if (code == SB_ENDSCROLL && field->notifyEveryStep == 0) {
        SpinEditSetValue(field, position);
        NotifyParent(field, 0);
    }
}

void OnSliderMoved(SpinEditRecord* field) {
    const SliderRecord* slider = KnownSlider(field);
    if (slider != nullptr && slider->value != field->value) {
        const float value = field->integerMode != 0 ? std::trunc(slider->value) : slider->value;
        SpinEditSetValue(field, value);
    }
    NotifyParent(field, 0);
    FocusEditBox(field);
}

// A typed value is committed when the edit box loses the focus (or is full):
// it is held within the range, never widening it.
void OnEditBoxLeft(SpinEditRecord* field, LPARAM editBox) {
    char text[kReadTextLength];
    GetWindowTextA(field->editBox, text, kReadTextLength);
    float value = ReadValueText(text);
    if (field->maximum <= value) {
        value = field->maximum;
    }
    if (!(field->minimum < value)) {
        value = field->minimum;
    }
    field->value = value;
    SpinEditSetValue(field, value);
    NotifyParent(field, editBox);
}

void OnCommand(SpinEditRecord* field, WPARAM wParam, LPARAM lParam) {
    const int child = LOWORD(wParam);
    const int code = HIWORD(wParam);
    if (child == kSpinEditBoxId && (code == EN_KILLFOCUS || code == EN_MAXTEXT)) {
        OnEditBoxLeft(field, lParam);
    } else if (child == kSpinEditSliderId) {
        NotifyParent(field, lParam);
    }
}

LRESULT HandleSpinEdit(ControlRecord* head, HWND window, UINT message, WPARAM wParam,
                       LPARAM lParam) {
    SpinEditRecord* field = RecordOf<SpinEditRecord>(head);
    switch (message) {
        case WM_CREATE:
            CreateChildren(field, window);
            return DefWindowProcA(window, message, wParam, lParam);
        case WM_VSCROLL:
            OnArrows(field, wParam);
            return 0;
        case WM_HSCROLL:
            OnSliderMoved(field);
            return 0;
        case WM_COMMAND:
            OnCommand(field, wParam, lParam);
            return 0;
        case WM_SETFOCUS:
            FocusEditBox(field);
            return 0;
        case WM_ENABLE:
            // Only the edit box greys; arrows and slider stay usable.
            EnableWindow(field->editBox, wParam != 0);
            return 0;
        case WM_RBUTTONDOWN:
            RunSetValueDialog(field);
            return 0;
        default:
            return DefWindowProcA(window, message, wParam, lParam);
    }
}

}  // namespace

const ControlKind kSpinEditKind = {NewControlRecord<SpinEditRecord>,
                                   DeleteControlRecord<SpinEditRecord>, HandleSpinEdit};

void SpinEditSetRange(SpinEditRecord* field, float minimum, float maximum) {
    field->minimum = minimum;
    field->maximum = maximum;
    SliderRecord* slider = KnownSlider(field);
    if (slider != nullptr) {
        slider->minimum = minimum;
        slider->maximum = maximum;
    }
    const WORD upper = static_cast<uint16_t>(LowWord16(maximum));
    const WORD lower = static_cast<uint16_t>(LowWord16(minimum));
    SendMessageA(field->arrows, UDM_SETRANGE, 0, MAKELPARAM(upper, lower));
}

void SpinEditSetValue(SpinEditRecord* field, float value) {
    field->value = value;
    const WORD position = static_cast<uint16_t>(LowWord16(value));
    SendMessageA(field->arrows, UDM_SETPOS, 0, MAKELPARAM(position, 0));
    char text[64];
    FormatValueText(value, field->integerMode != 0, text, sizeof text);
    SendMessageA(field->editBox, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));

    bool widened = false;
    if (field->maximum < value) {
        field->maximum = value;
        widened = true;
    }
    if (!(field->minimum < value) && field->minimum != value) {
        field->minimum = value;
        widened = true;
    }
    if (widened) {
        SpinEditSetRange(field, field->minimum, field->maximum);
    }
    SliderRecord* slider = KnownSlider(field);
    if (slider != nullptr) {
        SliderSetValue(slider, value);
    }
}

void SpinEditSetHint(SpinEditRecord* field, const char* text) {
    AddToolTip(field->editBox, text, nullptr);
    AddToolTip(field->arrows, text, nullptr);
    AddToolTip(field->slider, text, nullptr);
}

SpinEditRecord* SpinEditBind(HWND dialog, int itemId, float minimum, float maximum,
                             const char* hint, const char* name) {
    ControlRecord* head = FindControl(GetDlgItem(dialog, itemId), kSpinEditClassName);
    if (head == nullptr) {
        return nullptr;
    }
    SpinEditRecord* field = RecordOf<SpinEditRecord>(head);
    if (name != nullptr) {
        std::strncpy(field->valueName, name, sizeof field->valueName - 1);
    }
    field->recommendedMaximum = maximum;
    field->recommendedMinimum = minimum;
    SpinEditSetRange(field, minimum, maximum);
    SpinEditSetHint(field, hint);
    return field;
}

LRESULT CALLBACK SpinEditWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kSpinEditKind, window, message, wParam, lParam);
}

HWND CreateSpinEdit(HWND parent, int id, int x, int y, int width, int height,
                    SpinEditRecord** record) {
    return CreateControl(WS_EX_CLIENTEDGE, kSpinEditClassName, x, y, width, height, parent, id,
                         record);
}
