// Records the module's shell "open" calls instead of letting them open a
// viewer or a browser.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ImportPatch.h"

struct ShellCall {
    HWND window;
    std::string verb;
    std::string file;
    int show;
};

class ShellRecorder {
  public:
    explicit ShellRecorder(HMODULE module);
    bool Active() const { return patch_.Patched(); }
    const std::vector<ShellCall>& Calls() const;

  private:
    ImportPatch patch_;
};
