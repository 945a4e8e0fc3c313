#include "ShellRecorder.h"

namespace {

std::vector<ShellCall> g_calls;

HINSTANCE WINAPI RecordShellExecute(HWND window, LPCSTR verb, LPCSTR file, LPCSTR, LPCSTR,
                                    INT show) {
    g_calls.push_back(ShellCall{window, verb ? verb : "", file ? file : "", show});
    return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(42));  // above 32: success
}

}  // namespace

ShellRecorder::ShellRecorder(HMODULE module)
    : patch_(module, "shell32.dll", "ShellExecuteA", reinterpret_cast<void*>(RecordShellExecute)) {
    g_calls.clear();
}

const std::vector<ShellCall>& ShellRecorder::Calls() const { return g_calls; }
