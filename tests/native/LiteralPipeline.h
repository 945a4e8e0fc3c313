// A plain, slow red-eye pipeline: one full sweep over the whole region per
// step, and the float rules and divisions themselves where the fast code
// uses prepared thresholds, tables and spans. The fast pipeline must give
// the same bytes.
#pragma once

#include <cstdint>

#include "redeye/Pipeline.h"

namespace literal {

void RgbToHls(const uint8_t* rgb, uint16_t* hls);

// Steps 1-8 on zero-filled buffers, like RunRedEyePipeline.
void RunPipeline(const PipelineBuffers& buffers, int32_t width, int32_t height, float tolerance,
                 float darkening);

}  // namespace literal
