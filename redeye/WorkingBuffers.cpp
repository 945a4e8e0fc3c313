#include "redeye/WorkingBuffers.h"

#include <windows.h>

#include <cstddef>
#include <cstring>

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

void Zero(void* block, uint64_t pixels, uint64_t bytesPerPixel) {
    std::memset(block, 0, static_cast<size_t>(pixels * bytesPerPixel));
}

}  // namespace

bool WorkingBuffers::Prepare(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0) return false;
    const uint64_t pixels = static_cast<uint64_t>(width) * static_cast<uint64_t>(height);
    if (capacity_ != 0 && pixels <= capacity_) {
        Zero(buffers_.work, pixels, 3);
        Zero(buffers_.hls, pixels, 3 * sizeof(uint16_t));
        Zero(buffers_.distance, pixels, sizeof(uint32_t));
        Zero(buffers_.weight, pixels, 1);
        Zero(buffers_.coverage, pixels, 1);
        Zero(buffers_.depth, pixels, 1);
        return true;
    }
    Release();
    buffers_.work = static_cast<uint8_t*>(PageAllocate(pixels, 3));
    buffers_.hls = static_cast<uint16_t*>(PageAllocate(pixels, 3 * sizeof(uint16_t)));
    buffers_.distance = static_cast<uint32_t*>(PageAllocate(pixels, sizeof(uint32_t)));
    buffers_.weight = static_cast<uint8_t*>(PageAllocate(pixels, 1));
    buffers_.coverage = static_cast<uint8_t*>(PageAllocate(pixels, 1));
    buffers_.depth = static_cast<uint8_t*>(PageAllocate(pixels, 1));
    const bool allocated = buffers_.work != nullptr && buffers_.hls != nullptr &&
                           buffers_.distance != nullptr && buffers_.weight != nullptr &&
                           buffers_.coverage != nullptr && buffers_.depth != nullptr;
    if (!allocated) {
        Release();
        return false;
    }
    capacity_ = pixels;
    return true;
}

void WorkingBuffers::Release() {
    PageFree(buffers_.work);
    PageFree(buffers_.hls);
    PageFree(buffers_.distance);
    PageFree(buffers_.weight);
    PageFree(buffers_.coverage);
    PageFree(buffers_.depth);
    buffers_ = PipelineBuffers{};
    capacity_ = 0;
}
