#include "ShellRecorder.h"

namespace {

std::vector<ShellCall> g_calls;

std::string Text(LPCSTR text) { return text != nullptr ? text : ""; }

HINSTANCE WINAPI RecordShellExecute(HWND window, LPCSTR verb, LPCSTR file, LPCSTR, LPCSTR,
                                    INT show) {
    g_calls.push_back(ShellCall{window, Text(verb), Text(file), show});
    // Above 32 is success.
    return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(42));
}

}  // namespace

ShellRecorder::ShellRecorder(HMODULE module)
    : patch_(module, "shell32.dll", "ShellExecuteA", reinterpret_cast<void*>(RecordShellExecute)) {
    g_calls.clear();
}

ShellRecorder::~ShellRecorder() { g_calls.clear(); }

const std::vector<ShellCall>& ShellRecorder::Calls() const { return g_calls; }
