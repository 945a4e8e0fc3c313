#include "redeye/WorkingBuffers.h"

#include <windows.h>

#include <cstddef>

namespace {

void* PageAllocate(uint64_t pixels, uint64_t bytesPerPixel) {
    const uint64_t size = pixels * bytesPerPixel;
    if (size == 0 || size > SIZE_MAX) return nullptr;
    return VirtualAlloc(nullptr, static_cast<SIZE_T>(size), MEM_COMMIT | MEM_RESERVE,
                        PAGE_READWRITE);
}

void PageFree(void* block) {
    if (block != nullptr) VirtualFree(block, 0, MEM_RELEASE);
}

}  // namespace

WorkingBuffers::WorkingBuffers(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0) return;
    const uint64_t pixels = static_cast<uint64_t>(width) * static_cast<uint64_t>(height);
    buffers_.work = static_cast<uint8_t*>(PageAllocate(pixels, 3));
    buffers_.hls = static_cast<uint16_t*>(PageAllocate(pixels, 3 * sizeof(uint16_t)));
    buffers_.distance = static_cast<uint32_t*>(PageAllocate(pixels, sizeof(uint32_t)));
    buffers_.weight = static_cast<uint8_t*>(PageAllocate(pixels, 1));
    buffers_.coverage = static_cast<uint8_t*>(PageAllocate(pixels, 1));
    buffers_.depth = static_cast<uint8_t*>(PageAllocate(pixels, 1));
}

WorkingBuffers::~WorkingBuffers() {
    PageFree(buffers_.work);
    PageFree(buffers_.hls);
    PageFree(buffers_.distance);
    PageFree(buffers_.weight);
    PageFree(buffers_.coverage);
    PageFree(buffers_.depth);
}

bool WorkingBuffers::Allocated() const {
    return buffers_.work != nullptr && buffers_.hls != nullptr && buffers_.distance != nullptr &&
           buffers_.weight != nullptr && buffers_.coverage != nullptr && buffers_.depth != nullptr;
}
