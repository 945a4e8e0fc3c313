#include "tests/wine/robust/ChangeMap.h"

#include <algorithm>

namespace robust {

namespace {

int32_t Width(const VRect& r) { return r.right - r.left; }
int32_t Height(const VRect& r) { return r.bottom - r.top; }
bool Empty(const VRect& r) { return Width(r) <= 0 || Height(r) <= 0; }

}  // namespace

ChangeMap::ChangeMap(const testhost::Image& document)
    : document_(document),
      pixelBytes_(document.Planes() * document.BytesPerSample()),
      allowed_(static_cast<size_t>(document.Width()) * static_cast<size_t>(document.Height()), 0) {}

// The bounding box of the non-zero mask bytes the host delivered, scanned
// over the area, the mask rectangle and the mask's row bytes, whichever is
// smallest; outside the document the host delivered its padding.
ChangeMap::Region ChangeMap::SelectionRegion(const testhost::ServeRecord& served, int32_t width,
                                             int32_t height) const {
    const VRect& maskRect = served.request.maskRect;
    int32_t scanWidth = width;
    int32_t scanHeight = height;
    if (!Empty(maskRect)) {
        scanWidth = std::min(scanWidth, Width(maskRect));
        scanHeight = std::min(scanHeight, Height(maskRect));
    }
    if (served.maskRowBytes >= 0) scanWidth = std::min(scanWidth, served.maskRowBytes);
    Region box{scanWidth, scanHeight, 0, 0};
    if (!served.maskData) return box;
    const int16_t padding = served.request.maskPadding;
    for (int32_t y = 0; y < scanHeight; ++y) {
        for (int32_t x = 0; x < scanWidth; ++x) {
            int32_t dx = maskRect.left + x;
            int32_t dy = maskRect.top + y;
            uint8_t value;
            if (document_.Contains(dx, dy)) {
                value = document_.MaskAt(dx, dy);
            } else if (padding == -1) {
                dx = std::clamp(dx, 0, document_.Width() - 1);
                dy = std::clamp(dy, 0, document_.Height() - 1);
                value = document_.MaskAt(dx, dy);
            } else {
                value = padding >= 0 && padding <= 255 ? static_cast<uint8_t>(padding) : 0;
            }
            if (value == 0) continue;
            box.left = std::min(box.left, x);
            box.right = std::max(box.right, x);
            box.top = std::min(box.top, y);
            box.bottom = std::max(box.bottom, y);
        }
    }
    return box;
}

void ChangeMap::AddDelivery(const testhost::ServeRecord& served, const StoredRect& stored) {
    const VRect& area = served.request.outRect;
    const int32_t width = Width(area);
    const int32_t height = Height(area);
    if (width <= 0 || height <= 0) return;
    Region region{stored.left, stored.top, stored.right, stored.bottom};
    if (document_.HasMask()) {
        region = SelectionRegion(served, width, height);
        // A selection without extent is not processed.
        if (region.right <= region.left || region.bottom <= region.top) return;
    }
    region.left = std::max(region.left, 0);
    region.top = std::max(region.top, 0);
    if (region.right >= width) region.right = width - 1;
    if (region.bottom >= height) region.bottom = height - 1;
    Allow(area, region);
}

void ChangeMap::Allow(const VRect& area, const Region& region) {
    if (region.right <= region.left || region.bottom <= region.top) return;
    const int planes = document_.Planes();
    const int colourBytes = std::min(planes, 3);
    for (int32_t y = region.top; y < region.bottom; ++y) {
        const int32_t docY = area.top + y;
        if (docY < 0 || docY >= document_.Height()) continue;
        for (int32_t x = region.left; x < region.right; ++x) {
            for (int k = 0; k < colourBytes; ++k) {
                const int64_t offset = int64_t{x} * planes + k;
                const int64_t docX = area.left + offset / pixelBytes_;
                if (docX < 0 || docX >= document_.Width()) continue;
                AllowedAt(static_cast<int32_t>(docX), docY) |= SampleBits(offset % pixelBytes_);
            }
        }
    }
}

void ChangeMap::AddWholeArea(const testhost::ServeRecord& served) {
    const VRect& area = served.request.outRect;
    const auto allBytes = static_cast<uint16_t>((1u << pixelBytes_) - 1);
    for (int32_t y = std::max(area.top, 0); y < std::min(area.bottom, document_.Height()); ++y) {
        for (int32_t x = std::max(area.left, 0); x < std::min(area.right, document_.Width()); ++x) {
            AllowedAt(x, y) = allBytes;
        }
    }
}

// The host commits whole samples, and blending through the mask changes
// every byte of a sample of which the module changed one.
uint16_t ChangeMap::SampleBits(int64_t byteInPixel) const {
    const int sampleBytes = document_.BytesPerSample();
    const int64_t first = byteInPixel - byteInPixel % sampleBytes;
    return static_cast<uint16_t>(((1u << sampleBytes) - 1) << first);
}

uint16_t& ChangeMap::AllowedAt(int32_t x, int32_t y) {
    return allowed_[static_cast<size_t>(y) * static_cast<size_t>(document_.Width()) +
                    static_cast<size_t>(x)];
}

std::string ChangeMap::ForbiddenChanges(const testhost::Image& before,
                                        const testhost::Image& after) const {
    const size_t rowBytes = before.RowBytes();
    size_t forbidden = 0;
    std::string first;
    for (int y = 0; y < before.Height(); ++y) {
        const uint8_t* a = before.Data() + static_cast<size_t>(y) * rowBytes;
        const uint8_t* b = after.Data() + static_cast<size_t>(y) * rowBytes;
        if (std::equal(a, a + rowBytes, b)) continue;
        for (size_t i = 0; i < rowBytes; ++i) {
            if (a[i] == b[i]) continue;
            const size_t x = i / static_cast<size_t>(pixelBytes_);
            const auto bit = static_cast<uint16_t>(1u << (i % static_cast<size_t>(pixelBytes_)));
            if (allowed_[static_cast<size_t>(y) * static_cast<size_t>(before.Width()) + x] & bit) {
                continue;
            }
            if (forbidden++ == 0) {
                first = "pixel (" + std::to_string(x) + ", " + std::to_string(y) + ") byte " +
                        std::to_string(i % static_cast<size_t>(pixelBytes_)) + ": " +
                        std::to_string(a[i]) + " -> " + std::to_string(b[i]);
            }
        }
    }
    if (forbidden == 0) return "";
    return std::to_string(forbidden) + " bytes changed outside the processed region, first at " +
           first;
}

}  // namespace robust
