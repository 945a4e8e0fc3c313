#include "ShellRecorder.h"

#include <cstring>

namespace {

std::vector<ShellCall> g_calls;

HINSTANCE WINAPI RecordShellExecute(HWND window, LPCSTR verb, LPCSTR file, LPCSTR, LPCSTR,
                                    INT show) {
    g_calls.push_back(ShellCall{window, verb ? verb : "", file ? file : "", show});
    return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(42));  // above 32: success
}

template <typename T>
T* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

// The module's import address table entry for shell32's ShellExecuteA.
void** ShellExecuteSlot(HMODULE module) {
    const auto* nt = At<IMAGE_NT_HEADERS>(module, At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    const DWORD imports =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* entry = At<IMAGE_IMPORT_DESCRIPTOR>(module, imports); imports != 0 && entry->Name;
         ++entry) {
        if (_stricmp(At<char>(module, entry->Name), "shell32.dll") != 0) continue;
        auto* names = At<IMAGE_THUNK_DATA>(module, entry->OriginalFirstThunk);
        auto* slots = At<IMAGE_THUNK_DATA>(module, entry->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (!IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) &&
                std::strcmp(At<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData)->Name,
                            "ShellExecuteA") == 0) {
                return reinterpret_cast<void**>(&slots->u1.Function);
            }
        }
    }
    return nullptr;
}

void Write(void** slot, void* value) {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    *slot = value;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace

ShellRecorder::ShellRecorder(HMODULE module)
    : slot_(module != nullptr ? ShellExecuteSlot(module) : nullptr) {
    g_calls.clear();
    if (slot_ == nullptr) return;
    original_ = *slot_;
    Write(slot_, reinterpret_cast<void*>(RecordShellExecute));
}

ShellRecorder::~ShellRecorder() {
    if (slot_ != nullptr) Write(slot_, original_);
}

const std::vector<ShellCall>& ShellRecorder::Calls() const { return g_calls; }

HMODULE LoadedModule() { return GetModuleHandleA(QUORVEX_MODULE_PATH); }
