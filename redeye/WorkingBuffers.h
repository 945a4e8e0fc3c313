// The six working buffers of a run, taken from the page allocator (pages
// arrive zero-filled, which the pipeline relies on). A real run releases
// them at its end; the preview keeps one set while the dialog is open and
// zeroes the part a region uses, which is much cheaper than fresh pages.
#pragma once

#include <cstdint>

#include "redeye/Pipeline.h"

class WorkingBuffers {
  public:
    WorkingBuffers() = default;
    ~WorkingBuffers() { Release(); }
    WorkingBuffers(const WorkingBuffers&) = delete;
    WorkingBuffers& operator=(const WorkingBuffers&) = delete;

    // Makes the buffers hold a zeroed region of width x height, keeping the
    // pages already held when they are enough. False when any buffer could
    // not be had (a region too large for the address space, or no memory).
    bool Prepare(int32_t width, int32_t height);
    void Release();
    const PipelineBuffers& Get() const { return buffers_; }

  private:
    PipelineBuffers buffers_{};
    uint64_t capacity_ = 0;  // pixels the held buffers have room for
};
