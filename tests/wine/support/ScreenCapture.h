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

Capture CaptureClient(HWND window);  // the client area, painted now
Capture CaptureWindow(HWND window);  // the whole window with frame and controls, painted now
Capture BitmapPixels(HBITMAP bitmap);
// Saves the capture as QUORVEX_ARTIFACT_DIR\<name>.png.
bool SaveCapture(const Capture& capture, const char* name);
// Saves a picture of the dialog, drawn as the active window, after checking
// that each visible control in it shows more than the dialog's plain face:
// every control of the module's dialogs draws a frame, a text or a picture.
void SaveDialogPicture(HWND dialog, const char* name);
