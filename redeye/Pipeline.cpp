#include "redeye/Pipeline.h"

#include <algorithm>
#include <cstddef>

#include "redeye/Classify.h"
#include "redeye/Color.h"
#include "redeye/Correction.h"
#include "redeye/Coverage.h"
#include "redeye/Distance.h"
#include "redeye/Growing.h"
#include "redeye/RowSpan.h"
#include "redeye/Truncate.h"

// Red and weak red are rare in a photo. Classification runs down the region
// and gathers the rows that hold any into bands; the steps after it run on
// each band, widened by the rows their neighbourhoods reach (at most 3),
// and the rows outside keep the zero maps they arrived with. The widening
// makes every band edge a row of class other (or the region's edge), and
// bands closer than twice that are merged, so each step gives the bytes it
// would give on the whole region; the one difference, the chamfer's far
// value W*H taken from the band's height, never wins a minimum (a
// first-pass distance is at most 3 + 3y and 3 + 4x, below W*H + 3).
//
// A band is measured and corrected once classification has gone far enough
// past it that no later row can join it, and a row goes back to RGB as soon
// as no band can reach it, while it is still in the cache.

namespace {

constexpr int32_t kWidestReach = 3;
constexpr int32_t kJoiningGap = 2 * kWidestReach + 1;

struct Region {
    const PipelineBuffers& buffers;
    int32_t width, height;

    ptrdiff_t RowStep() const { return 3 * static_cast<ptrdiff_t>(width); }
    ptrdiff_t Pixel(int32_t y) const { return static_cast<ptrdiff_t>(y) * width; }
};

// Rows top..bottom.
struct RowBand {
    int32_t top, bottom;

    int32_t Height() const { return bottom - top + 1; }
    RowBand Widen(int32_t rows, int32_t height) const {
        return {std::max(top - rows, 0), std::min(bottom + rows, height - 1)};
    }
};

// Steps 2 to 7 on one band.
void CorrectBand(const Region& region, RowBand coloured, float tolerance,
                 const DarkeningTerms& darkening) {
    const PipelineBuffers& b = region.buffers;
    const int32_t width = region.width;
    const ptrdiff_t rowStep = region.RowStep();
    // Distance and depth see the classes before any growing.
    ChamferDistance(b.work + 3 * region.Pixel(coloured.top), width, coloured.Height(),
                    b.distance + region.Pixel(coloured.top));
    const RowBand depth = coloured.Widen(2, region.height);
    SmoothDistance(b.depth + region.Pixel(depth.top), b.distance + region.Pixel(depth.top), width,
                   depth.Height());
    const RowBand weak = coloured.Widen(1, region.height);
    GrowIntoWeak(b.work + 3 * region.Pixel(weak.top), width, weak.Height(), rowStep,
                 TruncateToInt32(tolerance / 40.0));
    GrowAlongRows(b.hls + 3 * region.Pixel(coloured.top), b.work + 3 * region.Pixel(coloured.top),
                  width, coloured.Height(), rowStep, TruncateToInt32(tolerance / 30.0 + 1.0));
    const RowBand covered = coloured.Widen(kWidestReach, region.height);
    CoverageMaps(b.weight + region.Pixel(covered.top), b.coverage + region.Pixel(covered.top),
                 b.work + 3 * region.Pixel(covered.top), width, covered.Height(), rowStep);
    // Weight reaches two rows beyond the band.
    const RowBand weighted = coloured.Widen(2, region.height);
    for (int32_t y = weighted.top; y <= weighted.bottom; ++y) {
        const ptrdiff_t start = region.Pixel(y);
        const uint8_t* weight = b.weight + start;
        const ColumnSpan span = FindNonZeroSpan(weight, width, 1);
        for (int32_t x = span.first; x <= span.last; ++x) {
            CorrectPixel(b.hls + 3 * (start + x), weight[x], b.depth[start + x], darkening);
        }
    }
}

}  // namespace

void RunRedEyePipeline(const PipelineBuffers& buffers, int32_t width, int32_t height,
                       float tolerance, float darkening) {
    if (width <= 0 || height <= 0) return;
    const Region region{buffers, width, height};
    ClassThresholds thresholds;
    PrepareClassThresholds(tolerance, &thresholds);
    const DarkeningTerms darkeningTerms = MakeDarkeningTerms(darkening);
    const auto toRgb = [&region](int32_t y) {
        HlsRowToRgb(region.buffers.hls + 3 * region.Pixel(y),
                    region.buffers.work + 3 * region.Pixel(y), region.width);
    };

    RowBand open{0, -1};  // the band that later rows may still join; none when empty
    const auto hasOpen = [&open] { return open.top <= open.bottom; };
    int32_t converted = 0;  // rows above it are RGB again
    for (int32_t y = 0; y < height; ++y) {
        const bool coloured = ClassifyRow(buffers.work + 3 * region.Pixel(y),
                                          buffers.hls + 3 * region.Pixel(y), width, thresholds);
        if (hasOpen() && y - open.bottom > kJoiningGap) {
            CorrectBand(region, open, tolerance, darkeningTerms);
            open = {0, -1};
        }
        if (coloured) open = hasOpen() ? RowBand{open.top, y} : RowBand{y, y};
        // No band reaches more than kWidestReach rows beyond its own.
        for (const int32_t reached = (hasOpen() ? open.top : y + 1) - kWidestReach;
             converted < reached; ++converted) {
            toRgb(converted);
        }
    }
    if (hasOpen()) CorrectBand(region, open, tolerance, darkeningTerms);
    for (; converted < height; ++converted) toRgb(converted);
}
