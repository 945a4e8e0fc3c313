// The six working buffers of one run, taken from the page allocator (pages
// arrive zero-filled, which the pipeline relies on) and released at the end
// of the run.
#pragma once

#include <cstdint>

#include "redeye/Pipeline.h"

class WorkingBuffers {
  public:
    WorkingBuffers(int32_t width, int32_t height);
    ~WorkingBuffers();
    WorkingBuffers(const WorkingBuffers&) = delete;
    WorkingBuffers& operator=(const WorkingBuffers&) = delete;

    // False when any buffer could not be had (a region too large for the
    // address space, or no memory).
    bool Allocated() const;
    const PipelineBuffers& Get() const { return buffers_; }

  private:
    PipelineBuffers buffers_{};
};
