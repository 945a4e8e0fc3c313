#include "DialogRun.h"

#include <gtest/gtest.h>

#include <cstring>

#include "controls/PreviewPaneClass.h"

namespace {

constexpr UINT_PTR kStepTimer = 0x5157;
DialogRun* t_currentRun = nullptr;

void CALLBACK PressOk(HWND box, UINT, UINT_PTR timer, DWORD) {
    KillTimer(box, timer);
    EndDialog(box, IDOK);
}

}  // namespace

DialogRun::DialogRun(const char* modulePath) {
    if (!host.Load(modulePath)) ADD_FAILURE() << host.LoadError();
    host.settings.parameters = testhost::ParametersCall::kNever;
    host.settings.playInfo = plugInDialogDisplay;
    host.settings.playDescriptor = std::vector<testhost::DescriptorItem>{};
    host.OnDialog(IDC_TOLERANCE,
                  [](HWND dialog) { SetTimer(dialog, kStepTimer, 1, &DialogRun::Tick); });
}

DialogRun::~DialogRun() {
    if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
    if (t_currentRun == this) t_currentRun = nullptr;
}

FilterParameters& DialogRun::Record() {
    if (!parametersCalled_) {
        parametersCalled_ = true;
        EXPECT_EQ(host.Call(filterSelectorParameters), noErr);
    }
    static FilterParameters none{};
    FilterParameters* record = host.ParametersAs<FilterParameters>();
    EXPECT_NE(record, nullptr) << "the module made no parameters record";
    return record != nullptr ? *record : none;
}

testhost::RunReport DialogRun::Run(std::vector<DialogStep> steps) {
    Record();
    steps_ = std::move(steps);
    nextStep_ = 0;
    t_currentRun = this;
    hook_ = SetWindowsHookExA(WH_CALLWNDPROC, CreationHook, nullptr, GetCurrentThreadId());
    const testhost::RunReport report = host.RunFromPrepare();
    UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
    t_currentRun = nullptr;
    EXPECT_TRUE(recordAtOpen_.has_value()) << "the main dialog did not open";
    EXPECT_EQ(nextStep_, steps_.size()) << "the dialog closed before its last step";
    return report;
}

LRESULT CALLBACK DialogRun::CreationHook(int code, WPARAM wParam, LPARAM lParam) {
    const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && call->message == WM_CREATE && t_currentRun != nullptr) {
        t_currentRun->OnCreate(call->hwnd);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Runs before the window's own WM_CREATE, where a pane takes its size.
void DialogRun::OnCreate(HWND window) {
    char className[64] = {};
    GetClassNameA(window, className, sizeof className);
    if (std::strcmp(className, kPreviewPaneClassName) != 0) return;
    const int itemId = GetDlgCtrlID(window);
    // The detail pane is the dialog's first control.
    if (itemId == IDC_DETAIL_PANE && !recordAtOpen_) {
        if (const FilterParameters* record = host.ParametersAs<FilterParameters>()) {
            recordAtOpen_ = *record;
        }
    }
    for (const auto& [paneId, size] : paneSizes_) {
        if (paneId != itemId) continue;
        RECT frame{0, 0, size.cx, size.cy};
        AdjustWindowRectEx(&frame, GetWindowLongA(window, GWL_STYLE), FALSE,
                           GetWindowLongA(window, GWL_EXSTYLE));
        SetWindowPos(window, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void CALLBACK DialogRun::Tick(HWND dialog, UINT, UINT_PTR timer, DWORD) {
    DialogRun* run = t_currentRun;
    // Steps start once the dialog is on screen (a dialog box is shown when
    // its loop first runs idle); a step that opens a modal window lets
    // ticks through, and they wait.
    if (run == nullptr || run->stepRunning_ || !IsWindowVisible(dialog)) return;
    if (run->nextStep_ >= run->steps_.size()) {
        KillTimer(dialog, timer);
        ADD_FAILURE() << "the dialog was still open after its last step";
        EndDialog(dialog, -2);
        return;
    }
    run->stepRunning_ = true;
    const DialogStep step = run->steps_[run->nextStep_++];
    step(dialog);
    run->stepRunning_ = false;
}

PreviewPaneRecord* PaneOf(HWND dialog, int itemId) {
    return reinterpret_cast<PreviewPaneRecord*>(
        GetWindowLongPtrA(GetDlgItem(dialog, itemId), GWLP_USERDATA));
}

SpinEditRecord* FieldOf(HWND dialog, int itemId) {
    return reinterpret_cast<SpinEditRecord*>(
        GetWindowLongPtrA(GetDlgItem(dialog, itemId), GWLP_USERDATA));
}

void SendCommand(HWND dialog, int itemId) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(itemId, 0),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, itemId)));
}

void TypeValue(HWND dialog, int itemId, const char* text) {
    const SpinEditRecord* field = FieldOf(dialog, itemId);
    SetWindowTextA(field->editBox, text);
    SendMessageA(GetDlgItem(dialog, itemId), WM_COMMAND, MAKEWPARAM(kSpinEditBoxId, EN_KILLFOCUS),
                 reinterpret_cast<LPARAM>(field->editBox));
}

void PressOkSoon(HWND box) { SetTimer(box, 1, 1, PressOk); }

void DragPane(HWND dialog, int itemId, POINT from, POINT to) {
    HWND pane = GetDlgItem(dialog, itemId);
    SendMessageA(pane, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    SendMessageA(pane, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to.x, to.y));
    SendMessageA(pane, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
}
