// Redirects one function that a loaded module imports (its import address
// table entry) to a replacement in the test, for as long as the patch lives.
#pragma once

#include <windows.h>

class ImportPatch {
  public:
    // `dll` compared without regard to case; Patched() tells whether the
    // module imports the function.
    ImportPatch(HMODULE module, const char* dll, const char* function, void* replacement);
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;
    bool Patched() const { return slot_ != nullptr; }

  private:
    void** slot_ = nullptr;
    void* original_ = nullptr;
};

// The module the test host loaded from QUORVEX_MODULE_PATH.
HMODULE LoadedModule();
