#include "testhost/GuardedMemory.h"

#include <windows.h>

#include <algorithm>
#include <vector>

namespace testhost {

namespace {

// Every live GuardedMemory; the handler is installed while there is one.
std::vector<const GuardedMemory*>& Registry() {
    static std::vector<const GuardedMemory*> registry;
    return registry;
}
void* gHandler = nullptr;

// The system has already taken the guard off the page: running the faulting
// instruction again lets the access through.
LONG CALLBACK LetGuardedTouchesThrough(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD* record = exception->ExceptionRecord;
    if (record->ExceptionCode != STATUS_GUARD_PAGE_VIOLATION || record->NumberParameters < 2) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    const uintptr_t address = record->ExceptionInformation[1];
    for (const GuardedMemory* memory : Registry()) {
        if (memory->Holds(address)) return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

GuardedMemory::GuardedMemory() {
    base_ = static_cast<char*>(
        VirtualAlloc(nullptr, kBytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE | PAGE_GUARD));
    if (gHandler == nullptr) gHandler = AddVectoredExceptionHandler(1, LetGuardedTouchesThrough);
    Registry().push_back(this);
}

GuardedMemory::~GuardedMemory() {
    auto& registry = Registry();
    registry.erase(std::remove(registry.begin(), registry.end(), this), registry.end());
    if (registry.empty() && gHandler != nullptr) {
        RemoveVectoredExceptionHandler(gHandler);
        gHandler = nullptr;
    }
    if (base_ != nullptr) VirtualFree(base_, 0, MEM_RELEASE);
}

bool GuardedMemory::TakeTouched() {
    if (base_ == nullptr) return false;
    bool touched = false;
    for (size_t offset = 0; offset < kBytes;) {
        MEMORY_BASIC_INFORMATION page = {};
        if (VirtualQuery(base_ + offset, &page, sizeof page) == 0) break;
        touched |= (page.Protect & PAGE_GUARD) == 0;
        offset += std::max<SIZE_T>(page.RegionSize, 1);
    }
    if (touched) {
        DWORD previous = 0;
        VirtualProtect(base_, kBytes, PAGE_READWRITE | PAGE_GUARD, &previous);
    }
    return touched;
}

}  // namespace testhost
