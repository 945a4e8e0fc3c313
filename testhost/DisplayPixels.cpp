#include "testhost/DisplayPixels.h"

#include <vector>

namespace testhost {

OSErr DrawPixelMap(const PSPixelMap* source, const VRect* srcRect, int32_t dstRow, int32_t dstCol,
                   HDC dc) {
    if (source == nullptr || srcRect == nullptr || source->baseAddr == nullptr || dc == nullptr) {
        return paramErr;
    }
    const VRect& r = *srcRect;
    const VRect& b = source->bounds;
    if (r.left < b.left || r.top < b.top || r.right > b.right || r.bottom > b.bottom ||
        r.right <= r.left || r.bottom <= r.top) {
        return paramErr;
    }
    const bool rgb = source->imageMode == plugInModeRGBColor;
    if (!rgb && source->imageMode != plugInModeGrayScale) return errPlugInHostInsufficient;

    const int width = r.right - r.left;
    const int height = r.bottom - r.top;
    std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
    const auto* base = static_cast<const uint8_t*>(source->baseAddr);
    for (int y = 0; y < height; ++y) {
        const uint8_t* row = base + static_cast<ptrdiff_t>(r.top - b.top + y) * source->rowBytes;
        for (int x = 0; x < width; ++x) {
            const uint8_t* p = row + static_cast<ptrdiff_t>(r.left - b.left + x) * source->colBytes;
            const uint32_t red = p[0];
            const uint32_t green = rgb ? p[source->planeBytes] : red;
            const uint32_t blue = rgb ? p[2 * source->planeBytes] : red;
            pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)] =
                (red << 16) | (green << 8) | blue;
        }
    }
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    const int drawn =
        SetDIBitsToDevice(dc, dstCol, dstRow, static_cast<DWORD>(width), static_cast<DWORD>(height),
                          0, 0, 0, static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS);
    return drawn == 0 ? paramErr : noErr;
}

}  // namespace testhost
