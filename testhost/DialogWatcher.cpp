#include "testhost/DialogWatcher.h"

#include <chrono>
#include <cstring>

#include "testhost/HostClock.h"

namespace testhost {

namespace {

thread_local DialogWatcher* t_watcher = nullptr;

std::string ClassOf(HWND window) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    return name;
}

std::string TextOf(HWND window) {
    char text[1024] = {};
    GetWindowTextA(window, text, sizeof text);
    return text;
}

BOOL CALLBACK CollectChild(HWND child, LPARAM param) {
    auto* shown = reinterpret_cast<ShownDialog*>(param);
    const std::string text = TextOf(child);
    if (text.empty()) return TRUE;
    const std::string cls = ClassOf(child);
    if (_stricmp(cls.c_str(), "Static") == 0) shown->texts.push_back(text);
    if (_stricmp(cls.c_str(), "Button") == 0) shown->buttons.push_back(text);
    return TRUE;
}

struct CloseRound {
    HWND spare;
    int round;
};

// Asks ever more firmly: cancel, then close, then end the dialog outright.
BOOL CALLBACK CloseOne(HWND window, LPARAM param) {
    const auto* close = reinterpret_cast<const CloseRound*>(param);
    if (window == close->spare || !IsWindowVisible(window)) return TRUE;
    const bool dialog = ClassOf(window) == "#32770";
    if (dialog && close->round == 0) {
        PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
    } else if (dialog && close->round >= 2) {
        EndDialog(window, IDCANCEL);
    } else {
        PostMessageA(window, WM_CLOSE, 0, 0);
    }
    return TRUE;
}

}  // namespace

DialogWatcher::~DialogWatcher() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (watchdog_.joinable()) watchdog_.join();
    if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
    if (t_watcher == this) t_watcher = nullptr;
}

void DialogWatcher::OnDialog(int itemId, DialogHandler handler) {
    handlers_.push_back({itemId, std::move(handler)});
}

void DialogWatcher::BeginCall() {
    t_watcher = this;
    if (hook_ == nullptr) hook_ = SetWindowsHookExA(WH_CBT, CbtProc, nullptr, GetCurrentThreadId());
    if (watchdogSeconds_ <= 0) return;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        inCall_ = true;
        ++callNumber_;
        callThread_ = GetCurrentThreadId();
        fired_ = false;
    }
    if (!watchdog_.joinable()) watchdog_ = std::thread(&DialogWatcher::WatchdogLoop, this);
    wake_.notify_all();
}

void DialogWatcher::EndCall() {
    if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
    hook_ = nullptr;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        inCall_ = false;
    }
    wake_.notify_all();
    if (fired_) {
        log_->faults.push_back("watchdog: the call was still running after " +
                               std::to_string(watchdogSeconds_) + " s; its windows were closed");
        fired_ = false;
    }
}

LRESULT CALLBACK DialogWatcher::CbtProc(int code, WPARAM wParam, LPARAM lParam) {
    if (t_watcher != nullptr) {
        const HWND window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_ACTIVATE) t_watcher->Activated(window);
        if (code == HCBT_DESTROYWND) t_watcher->seen_.erase(window);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void DialogWatcher::Activated(HWND window) {
    // Activation also arrives for windows already gone (after a message box
    // closes) and again when a dialog regains focus: take each one once.
    if (!IsWindow(window) || ClassOf(window) != "#32770") return;
    if (!seen_.insert(window).second) return;
    ShownDialog shown;
    shown.caption = TextOf(window);
    EnumChildWindows(window, CollectChild, reinterpret_cast<LPARAM>(&shown));
    shown.hasOwner = GetWindow(window, GW_OWNER) != nullptr;
    for (const Registration& registration : handlers_) {
        if (GetDlgItem(window, registration.itemId) == nullptr) continue;
        shown.handledByTest = true;
        log_->dialogs.push_back(shown);
        const HostTimeScope hostTime;  // the test's own work inside the module's call
        registration.handler(window);
        return;
    }
    log_->dialogs.push_back(shown);
    if (dismiss_) PostMessageA(window, WM_COMMAND, IDOK, 0);
}

void DialogWatcher::WatchdogLoop() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stopping_) {
        wake_.wait(lock, [this] { return stopping_ || inCall_; });
        const unsigned call = callNumber_;
        auto callOver = [this, call] { return stopping_ || !inCall_ || callNumber_ != call; };
        if (wake_.wait_for(lock, std::chrono::seconds(watchdogSeconds_), callOver)) continue;
        fired_ = true;
        for (int round = 0; !callOver(); ++round) {
            CloseRound close{spareWindow_, round};
            const DWORD thread = callThread_;
            lock.unlock();
            EnumThreadWindows(thread, CloseOne, reinterpret_cast<LPARAM>(&close));
            lock.lock();
            wake_.wait_for(lock, std::chrono::milliseconds(250), callOver);
        }
    }
}

}  // namespace testhost
