#include "GuiTestSupport.h"

#include <utility>

#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

void* gModuleInstance = nullptr;

namespace {

LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* commands =
        reinterpret_cast<std::vector<Command>*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message != WM_COMMAND || commands == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    commands->push_back({wParam, lParam});
    return 0;
}

// The script of the modal window being driven.
struct ModalRun {
    std::vector<DialogStep> steps;
    size_t next = 0;
    int idleTicks = 0;
    bool seen = false;
};
ModalRun* gRun = nullptr;

// A thread timer: it ticks inside whatever message loop runs, the modal
// window's own included, and acts on the active dialog or message box.
void CALLBACK StepTimer(HWND, UINT, UINT_PTR, DWORD) {
    HWND dialog = GetActiveWindow();
    char className[16] = "";
    if (GetClassNameA(dialog, className, sizeof className) == 0 ||
        std::string(className) != "#32770") {
        return;
    }
    gRun->seen = true;
    if (gRun->next < gRun->steps.size()) {
        gRun->steps[gRun->next++](dialog);
    } else if (++gRun->idleTicks > 200) {
        ADD_FAILURE() << "modal window still open after its script";
        EndDialog(dialog, -2);
    }
}

}  // namespace

void ToolkitTest::SetUp() {
    gModuleInstance = GetModuleHandleA(nullptr);
    SetUpControlToolkit();
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = ParentProc;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = "Quorvex Test Parent";
    RegisterClassA(&windowClass);  // fails harmlessly when already registered
    parent_ = CreateWindowExA(0, windowClass.lpszClassName, "Test parent",
                              WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 320, 200,
                              nullptr, nullptr, windowClass.hInstance, nullptr);
    SetWindowLongPtrA(parent_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&commands_));
}

void ToolkitTest::TearDown() {
    DestroyWindow(parent_);
    PumpMessages();
    TearDownControlToolkit();
}

void PumpMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void TypeAndLeave(HWND edit, const char* text, HWND nextFocus) {
    SetFocus(edit);
    SetWindowTextA(edit, text);
    SetFocus(nextFocus);
}

std::string WindowText(HWND window) {
    char text[1024] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

std::string ItemText(HWND dialog, int item) { return WindowText(GetDlgItem(dialog, item)); }

HWND ToolTipOf(HWND tool) {
    HWND tip = nullptr;
    TOOLINFOA info = {};
    info.cbSize = TTTOOLINFOA_V2_SIZE;
    while ((tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr &&
           !(SendMessageA(tip, TTM_ENUMTOOLSA, 0, reinterpret_cast<LPARAM>(&info)) &&
             info.hwnd == tool)) {
    }
    return tip;
}

INT_PTR RunModal(const std::function<INT_PTR()>& open, std::vector<DialogStep> steps) {
    ModalRun run;
    run.steps = std::move(steps);
    ModalRun* outer = std::exchange(gRun, &run);
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, StepTimer);
    const INT_PTR result = open();
    KillTimer(nullptr, timer);
    gRun = outer;
    EXPECT_TRUE(run.seen) << "no modal window appeared";
    EXPECT_EQ(run.next, run.steps.size()) << "the window closed before its script ended";
    return result;
}

void ClickButton(HWND dialog, int item) { SendDlgItemMessageA(dialog, item, BM_CLICK, 0, 0); }

void PostKey(HWND dialog, WPARAM virtualKey) {
    HWND focus = GetFocus();
    HWND target = focus == dialog || IsChild(dialog, focus) ? focus : dialog;
    PostMessageA(target, WM_KEYDOWN, virtualKey, 1);
    PostMessageA(target, WM_KEYUP, virtualKey, 0xC0000001);
}
