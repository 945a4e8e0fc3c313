#include "redeye/Distance.h"

#include <algorithm>
#include <cstddef>

#include "redeye/RowSpan.h"

namespace {

constexpr uint8_t kAnyClass = 0x03;

// Distances are unsigned entries compared as signed 32-bit values; the sums
// are taken unsigned and reinterpreted, so they wrap instead of overflowing.
inline int32_t Plus(uint32_t value, uint32_t step) { return static_cast<int32_t>(value + step); }

// A row of the distance map, or of class bytes, with the region's outside
// reading as 0.
struct DistanceRow {
    const uint32_t* values;  // null outside the region
    int32_t width;

    uint32_t At(int32_t x) const { return values && x >= 0 && x < width ? values[x] : 0; }
};

struct ClassRow {
    const uint8_t* pixels;  // null outside the region
    int32_t width;

    bool Coloured(int32_t x) const {
        return pixels && x >= 0 && x < width && pixels[3 * static_cast<ptrdiff_t>(x)] != 0;
    }
};

}  // namespace

int32_t Min4(int32_t a, int32_t b, int32_t c, int32_t d) {
    return std::min(std::min(a, b), std::min(c, d));
}

int32_t Min5(int32_t a, int32_t b, int32_t c, int32_t d, int32_t e) {
    return std::min(Min4(a, b, c, d), e);
}

// The first pass runs right to left although it reads the left-hand
// neighbours, which therefore still hold their starting value (0, or the far
// value W*H for red and weak red). This direction is intended and kept: it
// decides the distances the depth map and the darkening are built from.
// Starting values are not stored; they follow from the class bytes.
void ChamferDistance(const uint8_t* work, int32_t width, int32_t height, uint32_t* distance) {
    if (width <= 0 || height <= 0) return;
    const ptrdiff_t pixelRow = 3 * static_cast<ptrdiff_t>(width);
    const uint32_t far = static_cast<uint32_t>(width) * static_cast<uint32_t>(height);
    const auto start = [far](const ClassRow& row, int32_t x) { return row.Coloured(x) ? far : 0; };

    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* classes = work + y * pixelRow;
        const ColumnSpan span = FindClassSpan(classes, width, kAnyClass);
        if (span.Empty()) continue;
        uint32_t* own = distance + static_cast<ptrdiff_t>(y) * width;
        const DistanceRow up{y > 0 ? own - width : nullptr, width};
        const ClassRow here{classes, width};
        const ClassRow down{y + 1 < height ? classes + pixelRow : nullptr, width};
        for (int32_t x = span.last; x >= span.first; --x) {
            if (!here.Coloured(x)) continue;
            own[x] = static_cast<uint32_t>(Min4(Plus(up.At(x), 3), Plus(up.At(x - 1), 4),
                                                Plus(start(here, x - 1), 3),
                                                Plus(start(down, x - 1), 4)));
        }
    }

    for (int32_t y = height - 1; y >= 0; --y) {
        const uint8_t* classes = work + y * pixelRow;
        const ColumnSpan span = FindClassSpan(classes, width, kAnyClass);
        if (span.Empty()) continue;
        uint32_t* own = distance + static_cast<ptrdiff_t>(y) * width;
        const DistanceRow here{own, width};
        const DistanceRow down{y + 1 < height ? own + width : nullptr, width};
        const DistanceRow up{y > 0 ? own - width : nullptr, width};
        for (int32_t x = span.first; x <= span.last; ++x) {
            if (classes[3 * static_cast<ptrdiff_t>(x)] == 0) continue;
            own[x] = static_cast<uint32_t>(Min5(static_cast<int32_t>(own[x]), Plus(down.At(x), 3),
                                                Plus(down.At(x + 1), 4), Plus(here.At(x + 1), 3),
                                                Plus(up.At(x + 1), 4)));
        }
    }
}

namespace {

// Depth of the interior pixels x in span of row y (rows y-1..y+1 exist).
void AverageRow(uint8_t* depth, const uint32_t* distance, int32_t width, ColumnSpan span) {
    const uint32_t* above = distance - width;
    const uint32_t* below = distance + width;
    for (int32_t x = span.first; x <= span.last; ++x) {
        uint32_t total = 0;
        for (int32_t dx = -1; dx <= 1; ++dx)
            total += above[x + dx] + distance[x + dx] + below[x + dx];
        const int32_t mean = static_cast<int32_t>(total) / 9;
        depth[x] = static_cast<uint8_t>(std::min(mean, 255));
    }
}

bool AllNeighboursShallow(const uint8_t* depth, int32_t width, int32_t x) {
    for (int32_t dy = -1; dy <= 1; ++dy) {
        const uint8_t* row = depth + static_cast<ptrdiff_t>(dy) * width;
        for (int32_t dx = -1; dx <= 1; ++dx) {
            if ((dx != 0 || dy != 0) && row[x + dx] >= 3) return false;
        }
    }
    return true;
}

void RemoveShallowPoints(uint8_t* depth, int32_t width, ColumnSpan span) {
    for (int32_t x = span.first; x <= span.last; ++x) {
        if ((depth[x] == 1 || depth[x] == 2) && AllNeighboursShallow(depth, width, x)) depth[x] = 0;
    }
}

}  // namespace

// Removing a shallow point turns a 1 or 2 into 0, which leaves every other
// point's test (own depth 1 or 2, neighbours below 3) as it was, so the
// removal of row y can follow as soon as row y+1 has its depths.
void SmoothDistance(uint8_t* depth, const uint32_t* distance, int32_t width, int32_t height) {
    if (width < 3 || height < 3) return;
    const auto rowOf = [width](auto* map, int32_t y) {
        return map + static_cast<ptrdiff_t>(y) * width;
    };
    const auto distanceSpan = [&](int32_t y) {
        return FindNonZeroSpan(rowOf(distance, y), width, sizeof(uint32_t));
    };
    ColumnSpan above = distanceSpan(0), here = distanceSpan(1);
    ColumnSpan previousDepth = kEmptySpan;
    for (int32_t y = 1; y < height - 1; ++y) {
        const ColumnSpan below = distanceSpan(y + 1);
        const ColumnSpan span = Widen(Union(Union(above, here), below), 1, 1, width - 2);
        if (!span.Empty()) AverageRow(rowOf(depth, y), rowOf(distance, y), width, span);
        if (!previousDepth.Empty()) RemoveShallowPoints(rowOf(depth, y - 1), width, previousDepth);
        previousDepth = span;
        above = here;
        here = below;
    }
    if (!previousDepth.Empty()) RemoveShallowPoints(rowOf(depth, height - 2), width, previousDepth);
}
