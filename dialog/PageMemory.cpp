#include "dialog/PageMemory.h"

#include <windows.h>

#include <limits>

void* AllocatePages(uint64_t size) {
    if (size == 0 || size > std::numeric_limits<SIZE_T>::max()) return nullptr;
    return VirtualAlloc(nullptr, static_cast<SIZE_T>(size), MEM_COMMIT | MEM_RESERVE,
                        PAGE_READWRITE);
}

void ReleasePageBlock(void* block) {
    if (block != nullptr) VirtualFree(block, 0, MEM_RELEASE);
}
