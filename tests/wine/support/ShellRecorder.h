// Records the module's shell "open" calls instead of letting them open a
// viewer or a browser: the module's import of ShellExecuteA points at a
// recorder for as long as the ShellRecorder lives.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

struct ShellCall {
    HWND window;
    std::string verb;
    std::string file;
    int show;
};

class ShellRecorder {
  public:
    explicit ShellRecorder(HMODULE module);
    ~ShellRecorder();
    ShellRecorder(const ShellRecorder&) = delete;
    ShellRecorder& operator=(const ShellRecorder&) = delete;
    bool Active() const { return slot_ != nullptr; }  // the module imports ShellExecuteA
    const std::vector<ShellCall>& Calls() const;

  private:
    void** slot_ = nullptr;
    void* original_ = nullptr;
};

// The module the test host loaded from QUORVEX_MODULE_PATH.
HMODULE LoadedModule();
