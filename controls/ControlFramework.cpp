#include "controls/ControlFramework.h"

#include <cstring>

#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

namespace {

ControlRecord* RecordOfWindow(HWND window) {
    return reinterpret_cast<ControlRecord*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

void AttachRecord(ControlRecord* record, HWND window) {
    RECT client;
    GetClientRect(window, &client);
    record->width = client.right - client.left;
    record->height = client.bottom - client.top;
    record->controlId = static_cast<int32_t>(GetWindowLongPtrA(window, GWLP_ID));
    record->window = window;
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(record));
}

}  // namespace

LRESULT ControlWindowProc(const ControlKind& kind, HWND window, UINT message, WPARAM wParam,
                          LPARAM lParam) {
    ControlRecord* record = RecordOfWindow(window);
    if (message == WM_CREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        record = static_cast<ControlRecord*>(create->lpCreateParams);
        if (record == nullptr) {
            record = kind.create();
        }
        if (record == nullptr) {
            return 0;
        }
        AttachRecord(record, window);
    } else if (message == WM_NCDESTROY) {
        if (record != nullptr) {
            SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            kind.destroy(record);
        }
        DefWindowProcA(window, message, wParam, lParam);
        return 0;
    }
    if (record == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    return kind.handle(record, window, message, wParam, lParam);
}

ControlRecord* FindControl(HWND window, const char* className) {
    char actual[64];
    if (GetClassNameA(window, actual, sizeof actual) == 0 || std::strcmp(actual, className) != 0) {
        return nullptr;
    }
    return RecordOfWindow(window);
}

int RegisterControlClass(HINSTANCE instance, const char* className, LPCSTR cursor,
                         WNDPROC windowProc) {
    WNDCLASSA windowClass = {};
    windowClass.style = 0;
    windowClass.lpfnWndProc = windowProc;
    windowClass.cbClsExtra = 0;
    windowClass.cbWndExtra = 4;
    windowClass.hInstance = instance;
    windowClass.hIcon = nullptr;
    windowClass.hCursor = LoadCursorA(nullptr, cursor);
    windowClass.hbrBackground = FaceBrush;
    windowClass.lpszMenuName = nullptr;
    windowClass.lpszClassName = className;
    RegisterClassA(&windowClass);
    return 1;
}

HWND CreateControlWindow(DWORD exStyle, const char* className, int x, int y, int width, int height,
                         HWND parent, int id, ControlRecord** record) {
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    HWND window = CreateWindowExA(exStyle, className, "", style, x, y, width, height, parent,
                                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                  static_cast<HINSTANCE>(gModuleInstance), nullptr);
    *record = window != nullptr ? RecordOfWindow(window) : nullptr;
    return window;
}
