// Blocks from the operating system's page allocator: committed, read-write
// and zero-filled. The panes keep their pictures and the dialog its saved
// parameters in them.
#pragma once

#include <cstdint>

// A zero-filled block of `size` bytes, or null when the size is 0, does not
// fit the address space, or the pages cannot be had.
void* AllocatePages(uint64_t size);
// Releases a block of AllocatePages; null does nothing.
void ReleasePageBlock(void* block);

// Releases the block and clears the pointer.
template <typename T>
void ReleasePages(T*& block) {
    ReleasePageBlock(block);
    block = nullptr;
}
