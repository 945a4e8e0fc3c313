#include "ImportPatch.h"

#include <cstring>

namespace {

template <typename T>
T* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

void** FindSlot(HMODULE module, const char* dll, const char* function) {
    const auto* nt = At<IMAGE_NT_HEADERS>(module, At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew);
    const DWORD imports =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* entry = At<IMAGE_IMPORT_DESCRIPTOR>(module, imports); imports != 0 && entry->Name;
         ++entry) {
        if (_stricmp(At<char>(module, entry->Name), dll) != 0) continue;
        auto* names = At<IMAGE_THUNK_DATA>(module, entry->OriginalFirstThunk);
        auto* slots = At<IMAGE_THUNK_DATA>(module, entry->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* byName = At<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(byName->Name), function) == 0) {
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

ImportPatch::ImportPatch(HMODULE module, const char* dll, const char* function, void* replacement)
    : slot_(module != nullptr ? FindSlot(module, dll, function) : nullptr) {
    if (slot_ == nullptr) return;
    original_ = *slot_;
    Write(slot_, replacement);
}

ImportPatch::~ImportPatch() {
    if (slot_ != nullptr) Write(slot_, original_);
}

HMODULE LoadedModule() { return GetModuleHandleA(QUORVEX_MODULE_PATH); }
