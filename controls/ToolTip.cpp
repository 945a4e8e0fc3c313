#include "controls/ToolTip.h"

#include <commctrl.h>

#include "plugin/FilterGlobals.h"

void AddToolTip(HWND window, const char* text, const char* title) {
    if (window == nullptr || text == nullptr) {
        return;
    }
    HWND tip = CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, TOOLTIPS_CLASSA, nullptr,
                               WS_POPUP | WS_CAPTION | TTS_BALLOON | TTS_NOPREFIX, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr,
                               static_cast<HINSTANCE>(gModuleInstance), nullptr);
    if (tip == nullptr) {
        return;
    }
    SetWindowPos(tip, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);

    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;  // 44 bytes, understood by every comctl32
    tool.uFlags = TTF_SUBCLASS | TTF_TRANSPARENT | TTF_CENTERTIP;
    tool.hwnd = window;
    tool.uId = 0;
    tool.hinst = nullptr;
    tool.lpszText = const_cast<char*>(text);
    GetClientRect(window, &tool.rect);
    SendMessageA(tip, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    if (title != nullptr) {
        SendMessageA(tip, TTM_SETTITLEA, TTI_INFO, reinterpret_cast<LPARAM>(title));
    }
    SendMessageA(tip, TTM_SETMAXTIPWIDTH, 0, 100);
}
