#include "plugin/DialogItems.h"

#include <cstring>

#include "plugin/Messages.h"

namespace {

constexpr int kMaxStuffedLength = 254;

}  // namespace

int GetRadioGroupState(HWND dialog, int first, int last) {
    for (int item = first; item <= last; ++item) {
        if (IsDlgButtonChecked(dialog, item) == BST_CHECKED) {
            return item;
        }
    }
    return 0;
}

void PerformControlClick(HWND dialog, int item) {
    SendDlgItemMessageA(dialog, item, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    SetFocus(GetDlgItem(dialog, item));
}

void SelectTextItem(HWND dialog, int item) {
    SendDlgItemMessageA(dialog, item, EM_SETSEL, 0, -1);
    SetFocus(GetDlgItem(dialog, item));
}

void ShowDialogItem(HWND dialog, int item) { ShowHideItem(dialog, item, true); }

void HideDialogItem(HWND dialog, int item) { ShowHideItem(dialog, item, false); }

void ShowHideItem(HWND dialog, int item, bool show) {
    ShowWindow(GetDlgItem(dialog, item), show ? SW_SHOW : SW_HIDE);
}

void EnableControl(HWND dialog, int item) { SetControlEnabled(dialog, item, true); }

void DisableControl(HWND dialog, int item) { SetControlEnabled(dialog, item, false); }

void SetControlEnabled(HWND dialog, int item, bool enabled) {
    EnableWindow(GetDlgItem(dialog, item), enabled ? TRUE : FALSE);
}

bool ToggleCheckBoxState(HWND dialog, int item) {
    const bool checked = IsDlgButtonChecked(dialog, item) != BST_CHECKED;
    CheckDlgButton(dialog, item, checked ? BST_CHECKED : BST_UNCHECKED);
    return checked;
}

void FetchText(HWND dialog, int item, Str255 text) {
    char buffer[256] = "";
    GetDlgItemTextA(dialog, item, buffer, sizeof buffer);
    CToPString(buffer, text);
}

void StuffText(HWND dialog, int item, const uint8_t* text) {
    char buffer[256];
    const int length = text[0] < kMaxStuffedLength ? text[0] : kMaxStuffedLength;
    std::memcpy(buffer, text + 1, static_cast<size_t>(length));
    buffer[length] = '\0';
    SetDlgItemTextA(dialog, item, buffer);
}

void CenterDialog(HWND window) {
    HWND parent = GetParent(window);
    const bool child = (GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0;
    RECT area;
    GetClientRect(parent != nullptr ? parent : GetDesktopWindow(), &area);
    if (parent != nullptr && !child) {
        MapWindowPoints(parent, nullptr, reinterpret_cast<POINT*>(&area), 2);
    }
    RECT frame;
    GetWindowRect(window, &frame);
    const int width = frame.right - frame.left;
    const int height = frame.bottom - frame.top;
    const int x = area.left + (area.right - area.left - width) / 2;
    const int y = area.top + (area.bottom - area.top - height) / 2;
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
