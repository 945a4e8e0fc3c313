// What a window shows, read back from its device context.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

struct Capture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;  // 0x00RRGGBB, top row first

    uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// The client area, painted now.
Capture CaptureClient(HWND window);
// The whole window with its frame, caption and controls, all painted now.
Capture CaptureWindow(HWND window);

// Saves the capture as QUORVEX_ARTIFACT_DIR\<name>.png.
bool SaveCapture(const Capture& capture, const char* name);

// 0x00RRGGBB of a COLORREF.
uint32_t Rgb(COLORREF color);

// The pixels of a device bitmap, as it would be shown.
Capture BitmapPixels(HBITMAP bitmap);
