#include "redeye/HostArea.h"

#include <algorithm>
#include <cstring>

namespace {

// Bytes of a pixel that carry colour; an image of fewer planes than three
// has fewer, and nothing past its own pixel is ever touched.
int32_t ColourBytes(int32_t planes) { return std::min<int32_t>(3, planes); }

// The pixels of one region row that lie inside the area once the row's
// first pixel is placed at area column `left`, row `areaY`: from the
// region column `first`, `count` of them (none when the row is outside).
struct InsidePart {
    int32_t first;
    int32_t count;
};

InsidePart PartInside(const HostArea& area, int64_t left, int64_t areaY, int32_t regionWidth) {
    if (areaY < 0 || areaY >= area.height) return {0, 0};
    const int64_t first = std::max<int64_t>(0, -left);
    const int64_t end = std::min<int64_t>(regionWidth, area.width - left);
    return {static_cast<int32_t>(std::min<int64_t>(first, regionWidth)),
            static_cast<int32_t>(std::max<int64_t>(0, end - first))};
}

// Copies the first `bytes` bytes of `count` pixels that lie `srcStep` bytes
// apart into pixels `dstStep` bytes apart; rows of three-byte pixels on both
// sides are one copy.
void CopyPixels(uint8_t* dst, int32_t dstStep, const uint8_t* src, int32_t srcStep, int32_t count,
                int32_t bytes) {
    if (dstStep == 3 && srcStep == 3) {
        std::memcpy(dst, src, static_cast<size_t>(count) * 3);
        return;
    }
    for (int32_t i = 0; i < count; ++i) {
        for (int32_t b = 0; b < bytes; ++b) dst[i * dstStep + b] = src[i * srcStep + b];
    }
}

template <typename Sample>
void CopySamples(const HostArea& area, int32_t inRowStep, int32_t outRowStep) {
    const auto* in = reinterpret_cast<const Sample*>(area.in);
    auto* out = reinterpret_cast<Sample*>(area.out);
    int32_t samples = 3 + (area.planes >= 4 ? 1 : 0) + (area.planes == 5 ? 1 : 0);
    samples = std::min(samples, area.planes);
    // The depth field is the host's word, the row bytes are its buffers: a
    // host that says 16 bits and hands 8-bit rows gets no more pixels per
    // row than the rows hold.
    const int32_t pixelBytes = area.planes * static_cast<int32_t>(sizeof(Sample));
    const int32_t columns =
        std::min({area.width, area.inRowBytes / pixelBytes, area.outRowBytes / pixelBytes});
    for (int32_t y = 0; y < area.height; ++y) {
        const Sample* src = in + static_cast<intptr_t>(y) * inRowStep;
        Sample* dst = out + static_cast<intptr_t>(y) * outRowStep;
        for (int32_t x = 0; x < columns; ++x) {
            const intptr_t pixel = static_cast<intptr_t>(x) * area.planes;
            for (int32_t s = 0; s < samples; ++s) dst[pixel + s] = src[pixel + s];
        }
    }
}

// The mask is mostly zero: it is skipped eight bytes at a time.
bool ZeroWord(const uint8_t* bytes) {
    uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word == 0;
}

// The first selected column of a row, or `width` when there is none.
int32_t FirstSelected(const uint8_t* row, int32_t width) {
    int32_t x = 0;
    while (x + 8 <= width && ZeroWord(row + x)) x += 8;
    while (x < width && row[x] == 0) ++x;
    return x;
}

// The last selected column of a row that has one.
int32_t LastSelected(const uint8_t* row, int32_t width) {
    int32_t end = width;
    while (end >= 8 && ZeroWord(row + end - 8)) end -= 8;
    while (row[end - 1] == 0) --end;
    return end - 1;
}

}  // namespace

void CopyUnsupportedArea(const HostArea& area, int32_t depth) {
    if (area.in == nullptr || area.out == nullptr || area.planes <= 0) return;
    if (depth == 8) {
        CopySamples<uint8_t>(area, area.inRowBytes, area.outRowBytes);
    } else if (depth == 16) {
        CopySamples<uint16_t>(area, area.inRowBytes / 2, area.outRowBytes / 2);
    }
}

void CopyView(const HostArea& area, int32_t originX, int32_t originY, int32_t columns,
              int32_t rows) {
    if (area.in == nullptr || area.out == nullptr || area.planes <= 0) return;
    const int32_t lastColumn = std::min(columns, area.width - originX);
    const int32_t lastRow = std::min(rows, area.height - originY);
    if (lastColumn <= 0) return;
    for (int32_t y = 0; y < lastRow; ++y) {
        std::memcpy(area.out + static_cast<intptr_t>(y) * area.outRowBytes,
                    area.in + static_cast<intptr_t>(originY + y) * area.inRowBytes +
                        static_cast<intptr_t>(originX) * area.planes,
                    static_cast<size_t>(lastColumn) * static_cast<size_t>(area.planes));
    }
}

void FillWorkImage(const HostArea& area, const RegionPlacement& region, uint8_t* work) {
    if (area.in == nullptr) return;
    for (int32_t y = 0; y < region.height; ++y) {
        const int64_t areaY = static_cast<int64_t>(region.top) + y;
        const InsidePart part = PartInside(area, region.left, areaY, region.width);
        if (part.count == 0) continue;
        const int64_t areaX = static_cast<int64_t>(region.left) + part.first;
        CopyPixels(work + (static_cast<intptr_t>(y) * region.width + part.first) * 3, 3,
                   area.in + areaY * area.inRowBytes + areaX * area.planes, area.planes, part.count,
                   ColourBytes(area.planes));
    }
}

void WriteBackWorkImage(const HostArea& area, const RegionPlacement& region, int32_t originX,
                        int32_t originY, const uint8_t* work) {
    if (area.out == nullptr) return;
    const int64_t left = static_cast<int64_t>(region.left) - originX;
    for (int32_t y = 0; y < region.height; ++y) {
        const int64_t areaY = static_cast<int64_t>(region.top) + y - originY;
        const InsidePart part = PartInside(area, left, areaY, region.width);
        if (part.count == 0) continue;
        CopyPixels(area.out + areaY * area.outRowBytes + (left + part.first) * area.planes,
                   area.planes, work + (static_cast<intptr_t>(y) * region.width + part.first) * 3,
                   3, part.count, ColourBytes(area.planes));
    }
}

SelectionBounds FindSelectionBounds(const uint8_t* mask, int32_t maskRowBytes, int32_t width,
                                    int32_t height) {
    SelectionBounds bounds{width, height, 0, 0};
    if (mask == nullptr) return bounds;
    for (int32_t y = 0; y < height; ++y) {
        const uint8_t* row = mask + static_cast<intptr_t>(y) * maskRowBytes;
        const int32_t first = FirstSelected(row, width);
        if (first >= width) continue;
        bounds.minX = std::min(bounds.minX, first);
        bounds.maxX = std::max(bounds.maxX, LastSelected(row, width));
        bounds.minY = std::min(bounds.minY, y);
        bounds.maxY = std::max(bounds.maxY, y);
    }
    return bounds;
}
