// The main filter dialog.
#include "dialog/MainDialog.h"

#include <windows.h>

bool RunFilterDialog(FilterGlobals* globals) {
    (void)globals;
    return false;
}

// Dialog procedure of the main filter dialog, exported for the host.
extern "C" INT_PTR CALLBACK DissolveProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    (void)window;
    (void)message;
    (void)wParam;
    (void)lParam;
    return FALSE;
}
