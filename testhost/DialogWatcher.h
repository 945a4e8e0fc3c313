// Watches the windows a module opens during a call: records every dialog and
// message box, dismisses it (or hands it to a handler the test registered),
// and closes whatever is still open when a call runs too long.
#pragma once

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "testhost/HostLog.h"

namespace testhost {

// Runs inside the dialog's own message loop when the dialog is activated; it
// usually starts a timer that drives the dialog and ends it.
using DialogHandler = std::function<void(HWND dialog)>;

class DialogWatcher {
  public:
    explicit DialogWatcher(HostLog* log) : log_(log) {}
    ~DialogWatcher();
    DialogWatcher(const DialogWatcher&) = delete;
    DialogWatcher& operator=(const DialogWatcher&) = delete;

    void SetDismiss(bool dismiss) { dismiss_ = dismiss; }
    void SetWatchdog(int seconds, HWND spare) {
        watchdogSeconds_ = seconds;
        spareWindow_ = spare;
    }
    // A dialog that has an item with this id goes to the handler instead of
    // being dismissed.
    void OnDialog(int itemId, DialogHandler handler);

    // Around every call into the module, on the calling thread.
    void BeginCall();
    void EndCall();

  private:
    struct Registration {
        int itemId;
        DialogHandler handler;
    };
    static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
    void Activated(HWND window);
    void WatchdogLoop();

    HostLog* log_;
    bool dismiss_ = true;
    int watchdogSeconds_ = 20;
    HWND spareWindow_ = nullptr;  // the host's own window, never closed
    std::vector<Registration> handlers_;
    std::set<HWND> seen_;
    HHOOK hook_ = nullptr;

    std::thread watchdog_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool stopping_ = false;
    bool inCall_ = false;
    unsigned callNumber_ = 0;
    DWORD callThread_ = 0;
    std::atomic<bool> fired_{false};
};

}  // namespace testhost
