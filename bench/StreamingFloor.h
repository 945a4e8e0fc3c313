// The memory traffic of the red-eye pipeline as its algorithm sweeps the
// working buffers, with no per-pixel work: each sweep streams through the
// buffers it reads and writes, once. Rounds as at tolerance 50: one sweep
// pair of weak-red growing, two of row growing.
#pragma once

#include <cstdint>

#include "redeye/Pipeline.h"

// Returns a checksum of what it read, so that no sweep can be left out.
uint64_t StreamWorkingBuffers(const PipelineBuffers& buffers, int32_t width, int32_t height);
