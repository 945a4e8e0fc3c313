#include "GuiTestSupport.h"

#include <utility>

#include "ScreenCapture.h"
#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

void* gModuleInstance = nullptr;

void ToolkitTest::SetUp() {
    gModuleInstance = GetModuleHandleA(nullptr);
    SetUpControlToolkit();
    parent_ = std::make_unique<TestParent>();
}

void ToolkitTest::TearDown() {
    parent_.reset();
    PumpMessages();
    TearDownControlToolkit();
}

namespace {

constexpr char kParentClassName[] = "Quorvex Test Parent";

LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* parent = reinterpret_cast<TestParent*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_COMMAND && parent != nullptr) {
        parent->commands.push_back({wParam, lParam});
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void RegisterParentClass() {
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = ParentProc;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kParentClassName;
    RegisterClassA(&windowClass);  // fails harmlessly when already registered
}

// The script of the modal window being driven.
struct ModalRun {
    std::vector<DialogStep> steps;
    size_t next = 0;
    int idleTicks = 0;
    bool inStep = false;  // a step that pumps messages must not start the next one
    HWND dialog = nullptr;
    HHOOK hook = nullptr;
};
ModalRun* gRun = nullptr;

constexpr UINT_PTR kStepTimer = 0x5157;
constexpr int kMaxIdleTicks = 200;

void CALLBACK StepTimer(HWND dialog, UINT, UINT_PTR, DWORD) {
    if (gRun->inStep) {
        return;
    }
    if (gRun->next < gRun->steps.size()) {
        gRun->inStep = true;
        gRun->steps[gRun->next++](dialog);
        gRun->inStep = false;
    } else if (++gRun->idleTicks > kMaxIdleTicks) {
        ADD_FAILURE() << "modal window still open after its script";
        EndDialog(dialog, -2);
    }
}

bool IsDialogWindow(HWND window) {
    char className[16] = "";
    return IsWindow(window) && GetClassNameA(window, className, sizeof className) > 0 &&
           std::string(className) == "#32770";
}

LRESULT CALLBACK CbtHook(int code, WPARAM wParam, LPARAM lParam) {
    HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && gRun->dialog == nullptr && IsDialogWindow(window)) {
        gRun->dialog = window;
        SetTimer(window, kStepTimer, 10, StepTimer);
    }
    return CallNextHookEx(gRun->hook, code, wParam, lParam);
}

BOOL CALLBACK CollectLongestStatic(HWND child, LPARAM longest) {
    char className[16] = "";
    GetClassNameA(child, className, sizeof className);
    const std::string text = WindowText(child);
    auto* best = reinterpret_cast<std::string*>(longest);
    if (lstrcmpiA(className, "Static") == 0 && text.size() > best->size()) {
        *best = text;
    }
    return TRUE;
}

struct ToolTipSearch {
    HWND tool;
    HWND tip;
};

BOOL CALLBACK MatchToolTip(HWND window, LPARAM search) {
    auto* found = reinterpret_cast<ToolTipSearch*>(search);
    char className[32] = "";
    GetClassNameA(window, className, sizeof className);
    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    if (std::string(className) == TOOLTIPS_CLASSA &&
        SendMessageA(window, TTM_ENUMTOOLSA, 0, reinterpret_cast<LPARAM>(&tool)) &&
        tool.hwnd == found->tool) {
        found->tip = window;
        return FALSE;
    }
    return TRUE;
}

}  // namespace

HWND ToolTipOf(HWND tool) {
    ToolTipSearch search = {tool, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), MatchToolTip, reinterpret_cast<LPARAM>(&search));
    return search.tip;
}

TestParent::TestParent(int width, int height) {
    RegisterParentClass();
    window_ = CreateWindowExA(0, kParentClassName, "Test parent",
                              WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, width,
                              height, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

TestParent::~TestParent() { DestroyWindow(window_); }

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

std::string MessageBoxText(HWND box) {
    std::string longest;
    EnumChildWindows(box, CollectLongestStatic, reinterpret_cast<LPARAM>(&longest));
    return longest;
}

INT_PTR RunModal(const std::function<INT_PTR()>& open, std::vector<DialogStep> steps) {
    ModalRun run;
    run.steps = std::move(steps);
    ModalRun* outer = std::exchange(gRun, &run);
    run.hook = SetWindowsHookExA(WH_CBT, CbtHook, nullptr, GetCurrentThreadId());
    const INT_PTR result = open();
    UnhookWindowsHookEx(run.hook);
    gRun = outer;
    EXPECT_NE(run.dialog, nullptr) << "no modal window appeared";
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

bool SaveScreenshot(HWND window, const char* name) {
    return SaveCapture(CaptureWindow(window), name);
}
