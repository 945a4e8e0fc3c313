// Fuzz target: the red-eye pipeline on a region of any size up to 48 x 48,
// any pixels and any tolerance and darkening, NaN and infinities included.
// For ordinary values the result must equal the literal reference pipeline.
#include <cmath>
#include <cstdint>

#include "redeye/Pipeline.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/native/LiteralPipeline.h"
#include "tests/native/RegionBuffers.h"

// The reference sweeps once per growing round: compare where the rounds
// stay few.
static bool Ordinary(float value) { return std::isfinite(value) && std::fabs(value) <= 1000.0f; }

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::FuzzInput input(data, size);
    const int32_t width = 1 + input.Byte() % 48, height = 1 + input.Byte() % 48;
    const float tolerance = input.UserValue(), darkening = input.UserValue();
    RegionBuffers buffers(width, height);
    for (uint8_t& b : buffers.work) b = input.Byte();
    RegionBuffers reference = buffers;
    RunRedEyePipeline(buffers.View(), width, height, tolerance, darkening);
    if (Ordinary(tolerance) && Ordinary(darkening)) {
        literal::RunPipeline(reference.View(), width, height, tolerance, darkening);
        fuzz::Require(buffers.work == reference.work, "pipeline differs from the reference");
    }
    return 0;
}
