// Redirects one function that a loaded module imports (its import address
// table entry) to a replacement in the test, for as long as the patch lives:
// to record the shell calls the dialog makes without opening anything, or
// to count the pages the module takes and gives back.
#pragma once

#include <windows.h>

class ImportPatch {
  public:
    // `dll` and `function` as the module's import table names them (the
    // DLL name compared without regard to case). Patched() tells whether
    // the module imports it.
    ImportPatch(HMODULE module, const char* dll, const char* function, void* replacement);
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    bool Patched() const { return slot_ != nullptr; }
    // The function the module called before.
    void* Original() const { return original_; }

  private:
    void** slot_ = nullptr;
    void* original_ = nullptr;
};

// The module the test host loaded from QUORVEX_MODULE_PATH.
HMODULE LoadedModule();
