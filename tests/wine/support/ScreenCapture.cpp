#include "ScreenCapture.h"

#include <string>

#include "PngWriter.h"

namespace {

// width x height pixels of `source` from `origin` on.
Capture CaptureFrom(HDC source, POINT origin, int width, int height) {
    Capture capture;
    capture.width = width;
    capture.height = height;
    // 32 bits a pixel, top row first.
    BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0},
                       {}};
    void* bits = nullptr;
    HBITMAP target = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (target == nullptr) return capture;
    HDC memory = CreateCompatibleDC(source);
    HGDIOBJ previous = SelectObject(memory, target);
    BitBlt(memory, 0, 0, width, height, source, origin.x, origin.y, SRCCOPY);
    GdiFlush();
    const auto* pixels = static_cast<const uint32_t*>(bits);
    capture.pixels.assign(pixels, pixels + static_cast<size_t>(width) * height);
    for (uint32_t& pixel : capture.pixels) pixel &= 0x00FFFFFF;
    SelectObject(memory, previous);
    DeleteDC(memory);
    DeleteObject(target);
    return capture;
}

}  // namespace

Capture CaptureClient(HWND window) {
    UpdateWindow(window);
    RECT client;
    GetClientRect(window, &client);
    HDC dc = GetDC(window);
    Capture capture = CaptureFrom(dc, POINT{0, 0}, client.right, client.bottom);
    ReleaseDC(window, dc);
    return capture;
}

// Read from the window's own device context rather than from the screen:
// Wine copies a window's drawing to the screen only from time to time, so
// the screen may still show the dialog half drawn; the window's surface
// holds everything that was painted.
Capture CaptureWindow(HWND window) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT frame;
    GetWindowRect(window, &frame);
    HDC dc = GetWindowDC(window);
    Capture capture =
        CaptureFrom(dc, POINT{0, 0}, frame.right - frame.left, frame.bottom - frame.top);
    ReleaseDC(window, dc);
    return capture;
}

Capture BitmapPixels(HBITMAP bitmap) {
    BITMAP size = {};
    GetObjectA(bitmap, sizeof size, &size);
    HDC screen = GetDC(nullptr);
    HDC source = CreateCompatibleDC(screen);
    HGDIOBJ previous = SelectObject(source, bitmap);
    Capture capture = CaptureFrom(source, POINT{0, 0}, size.bmWidth, size.bmHeight);
    SelectObject(source, previous);
    DeleteDC(source);
    ReleaseDC(nullptr, screen);
    return capture;
}

bool SaveCapture(const Capture& capture, const char* name) {
    return WritePng(std::string(QUORVEX_ARTIFACT_DIR) + "\\" + name + ".png", capture.width,
                    capture.height, capture.pixels);
}

uint32_t Rgb(COLORREF color) {
    return (static_cast<uint32_t>(GetRValue(color)) << 16) |
           (static_cast<uint32_t>(GetGValue(color)) << 8) | GetBValue(color);
}
