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

// Red and weak red are rare in a photo. Classification finds the bands of
// rows that hold any; the steps after it run on each band, widened by the
// rows their neighbourhoods reach (at most 3), and the rows outside keep
// the zero maps they arrived with. The widening makes every band edge a
// row of class other (or the region's edge), and bands closer than that
// are merged, so each step gives the bytes it would give on the whole
// region; the one difference, the chamfer's far value W*H taken from the
// band's height, never wins a minimum (a first-pass distance is at most
// 3 + 3y and 3 + 4x, below W*H + 3).

namespace {

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

// The coloured bands in top-down order. Bands are merged when their
// widened ranges would meet, or when there is no room for another.
constexpr int32_t kWidestReach = 3;
constexpr int kMaxBands = 32;

struct ColouredBands {
    RowBand band[kMaxBands];
    int count = 0;

    void AddRow(int32_t y) {
        if (count > 0 &&
            (y - band[count - 1].bottom <= 2 * kWidestReach + 1 || count == kMaxBands)) {
            band[count - 1].bottom = y;
        } else {
            band[count++] = {y, y};
        }
    }
};

ColouredBands ClassifyRegion(const Region& region, float tolerance) {
    ClassThresholds thresholds;
    PrepareClassThresholds(tolerance, &thresholds);
    ColouredBands coloured;
    for (int32_t y = 0; y < region.height; ++y) {
        if (ClassifyRow(region.buffers.work + 3 * region.Pixel(y),
                        region.buffers.hls + 3 * region.Pixel(y), region.width, thresholds)) {
            coloured.AddRow(y);
        }
    }
    return coloured;
}

void MeasureAndGrow(const Region& region, RowBand coloured, float tolerance) {
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
}

// Corrects the pixels that carry weight (at most two rows round a coloured
// band), then turns every pixel back to RGB.
void CorrectRegion(const Region& region, const ColouredBands& coloured, float darkening) {
    const PipelineBuffers& b = region.buffers;
    const DarkeningTerms terms = MakeDarkeningTerms(darkening);
    int next = 0;  // the first band whose weighted rows are not behind y
    for (int32_t y = 0; y < region.height; ++y) {
        const ptrdiff_t start = region.Pixel(y);
        uint16_t* hls = b.hls + 3 * start;
        while (next < coloured.count && coloured.band[next].Widen(2, region.height).bottom < y)
            ++next;
        if (next < coloured.count && coloured.band[next].Widen(2, region.height).top <= y) {
            const uint8_t* weight = b.weight + start;
            const ColumnSpan span = FindNonZeroSpan(weight, region.width, 1);
            for (int32_t x = span.first; x <= span.last; ++x) {
                CorrectPixel(hls + 3 * static_cast<ptrdiff_t>(x), weight[x], b.depth[start + x],
                             terms);
            }
        }
        HlsRowToRgb(hls, b.work + 3 * start, region.width);
    }
}

}  // namespace

void RunRedEyePipeline(const PipelineBuffers& buffers, int32_t width, int32_t height,
                       float tolerance, float darkening) {
    if (width <= 0 || height <= 0) return;
    const Region region{buffers, width, height};
    const ColouredBands coloured = ClassifyRegion(region, tolerance);
    for (int i = 0; i < coloured.count; ++i) MeasureAndGrow(region, coloured.band[i], tolerance);
    CorrectRegion(region, coloured, darkening);
}
