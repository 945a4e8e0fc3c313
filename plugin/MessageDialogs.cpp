// The About box and the "Notice" dialog.
// shellapi.h needs windows.h first.
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on

#include "controls/ToolTip.h"
#include "plugin/AboutPicture.h"
#include "plugin/FilterGlobals.h"
#include "plugin/MessageIds.h"
#include "plugin/Messages.h"

const char kMakerWebSite[] = "https://www.velmora-imaging.com/";

namespace {

HINSTANCE ModuleInstance() { return static_cast<HINSTANCE>(gModuleInstance); }

// Puts a freshly drawn picture into the picture control; the dialog keeps
// the bitmap in DWLP_USER and deletes it when it goes.
void ShowAboutPicture(HWND dialog) {
    HWND pictureControl = GetDlgItem(dialog, IDC_ABOUT_PICTURE);
    RECT area;
    GetClientRect(pictureControl, &area);
    HBITMAP picture = CreateAboutPicture(area.right, area.bottom);
    SendMessageA(pictureControl, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(picture));
    SetWindowLongPtrA(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(picture));
}

bool IsCloseCommand(WPARAM wParam) {
    return HIWORD(wParam) == 0 && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL);
}

}  // namespace

INT_PTR CALLBACK AboutDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            AddToolTip(GetDlgItem(dialog, IDC_ABOUT_WEB_SITE),
                       "Go to our web site and get freshest versions of plug-ins", nullptr);
            ShowAboutPicture(dialog);
            return FALSE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_ABOUT_WEB_SITE) {
                ShellExecuteA(dialog, "open", kMakerWebSite, nullptr, nullptr, SW_SHOWNORMAL);
                return TRUE;
            }
            if (IsCloseCommand(wParam)) {
                EndDialog(dialog, LOWORD(wParam));
                return TRUE;
            }
            return FALSE;
        case WM_DESTROY:
            DeleteObject(reinterpret_cast<HGDIOBJ>(GetWindowLongPtrA(dialog, DWLP_USER)));
            return FALSE;
        default:
            return FALSE;
    }
}

void ShowAboutBox(HWND owner) {
    DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(IDD_ABOUT), owner, AboutDialogProc, 0);
}

INT_PTR CALLBACK NoticeDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_COMMAND && IsCloseCommand(wParam)) {
        EndDialog(dialog, LOWORD(wParam));
    }
    return FALSE;
}

void ShowNotice(HWND owner) {
    DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(IDD_NOTICE), owner, NoticeDialogProc, 0);
}
