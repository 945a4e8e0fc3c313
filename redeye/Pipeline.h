// The red-eye correction of one W x H region held in caller-owned buffers.
#pragma once

#include <cstdint>

// All six buffers cover the region row by row, top row first, and must arrive
// zero-filled (the page allocator's memory does); the pipeline allocates
// nothing. On return work holds the corrected RGB; the other five hold
// working data of no further use.
struct PipelineBuffers {
    uint8_t* work;       // W*H*3 bytes: RGB in, corrected RGB out
    uint16_t* hls;       // W*H*3 values
    uint32_t* distance;  // W*H
    uint8_t* weight;     // W*H
    uint8_t* coverage;   // W*H
    uint8_t* depth;      // W*H
};

// Classifies the pixels, measures and grows the red patches, desaturates and
// darkens them. tolerance and darkening are the user's 0-100 values; any
// other float, NaN and infinities included, is processed without fault.
void RunRedEyePipeline(const PipelineBuffers& buffers, int32_t width, int32_t height,
                       float tolerance, float darkening);
