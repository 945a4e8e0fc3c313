// A plain, slow red-eye pipeline written straight from the algorithm's
// description: full sweeps over the whole region, one per step, divisions
// where the text divides. The fast pipeline must give the same bytes.
#pragma once

#include <cstdint>

#include "redeye/Pipeline.h"

namespace literal {

void RgbToHls(const uint8_t* rgb, uint16_t* hls);
uint8_t ClassifyPixel(uint8_t h, uint8_t s, uint8_t l, float t);

// Steps 1-8 on zero-filled buffers, like RunRedEyePipeline.
void RunPipeline(const PipelineBuffers& buffers, int32_t width, int32_t height, float tolerance,
                 float darkening);

}  // namespace literal
