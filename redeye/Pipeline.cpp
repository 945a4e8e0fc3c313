#include "redeye/Pipeline.h"

#include <cstddef>

#include "redeye/Classify.h"
#include "redeye/Color.h"
#include "redeye/Correction.h"
#include "redeye/Coverage.h"
#include "redeye/Distance.h"
#include "redeye/Growing.h"
#include "redeye/RowSpan.h"
#include "redeye/Truncate.h"

namespace {

// Converts every pixel to HLS and puts class, hue and saturation bytes in
// place of its RGB.
void ClassifyRegion(uint8_t* work, uint16_t* hls, size_t pixelCount, float tolerance) {
    ClassThresholds thresholds;
    PrepareClassThresholds(tolerance, &thresholds);
    for (size_t i = 0; i < 3 * pixelCount; i += 3) {
        RgbToHls(work + i, hls + i);
        const auto hue = static_cast<uint8_t>(hls[i]);
        const auto saturation = static_cast<uint8_t>(hls[i + 2]);
        work[i] =
            ClassifyWithThresholds(thresholds, hue, saturation, static_cast<uint8_t>(hls[i + 1]));
        work[i + 1] = hue;
        work[i + 2] = saturation;
    }
}

// Corrects the pixels that carry weight, then turns every pixel back to RGB.
void CorrectRegion(const PipelineBuffers& buffers, int32_t width, int32_t height, float darkening) {
    const DarkeningTerms terms = MakeDarkeningTerms(darkening);
    for (int32_t y = 0; y < height; ++y) {
        const ptrdiff_t rowStart = static_cast<ptrdiff_t>(y) * width;
        const uint8_t* weight = buffers.weight + rowStart;
        const uint8_t* depth = buffers.depth + rowStart;
        uint16_t* hls = buffers.hls + 3 * rowStart;
        const ColumnSpan span = FindNonZeroSpan(weight, width, 1);
        for (int32_t x = span.first; x <= span.last; ++x) {
            CorrectPixel(hls + 3 * static_cast<ptrdiff_t>(x), weight[x], depth[x], terms);
        }
        uint8_t* rgb = buffers.work + 3 * rowStart;
        for (ptrdiff_t i = 0; i < 3 * static_cast<ptrdiff_t>(width); i += 3) {
            HlsToRgb(hls + i, rgb + i);
        }
    }
}

}  // namespace

void RunRedEyePipeline(const PipelineBuffers& buffers, int32_t width, int32_t height,
                       float tolerance, float darkening) {
    if (width <= 0 || height <= 0) return;
    const ptrdiff_t rowStep = 3 * static_cast<ptrdiff_t>(width);
    ClassifyRegion(buffers.work, buffers.hls, static_cast<size_t>(width) * height, tolerance);
    // Distance and depth see the classes before any growing.
    ChamferDistance(buffers.work, width, height, buffers.distance);
    SmoothDistance(buffers.depth, buffers.distance, width, height);
    GrowIntoWeak(buffers.work, width, height, rowStep, TruncateToInt32(tolerance / 40.0));
    GrowAlongRows(buffers.hls, buffers.work, width, height, rowStep,
                  TruncateToInt32(tolerance / 30.0 + 1.0));
    CoverageMaps(buffers.weight, buffers.coverage, buffers.work, width, height, rowStep);
    CorrectRegion(buffers, width, height, darkening);
}
