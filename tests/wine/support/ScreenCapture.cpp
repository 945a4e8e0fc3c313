#include "ScreenCapture.h"

// gdiplus.h needs windows.h first.
// clang-format off
#include <windows.h>
#include <gdiplus.h>
// clang-format on

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

// width x height pixels of `source` from its corner.
Capture CaptureFrom(HDC source, int width, int height) {
    Capture capture{width, height, {}};
    BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0},
                       {}};
    void* bits = nullptr;
    HBITMAP target = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (target == nullptr) return capture;
    HDC memory = CreateCompatibleDC(source);
    HGDIOBJ previous = SelectObject(memory, target);
    BitBlt(memory, 0, 0, width, height, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* pixels = static_cast<const uint32_t*>(bits);
    for (int i = 0; i < width * height; ++i) capture.pixels.push_back(pixels[i] & 0xFFFFFF);
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
    Capture capture = CaptureFrom(dc, client.right, client.bottom);
    ReleaseDC(window, dc);
    return capture;
}

// Read from the window's own device context: Wine updates the screen from it
// only from time to time.
Capture CaptureWindow(HWND window) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT frame;
    GetWindowRect(window, &frame);
    HDC dc = GetWindowDC(window);
    Capture capture = CaptureFrom(dc, frame.right - frame.left, frame.bottom - frame.top);
    ReleaseDC(window, dc);
    return capture;
}

Capture BitmapPixels(HBITMAP bitmap) {
    BITMAP size = {};
    GetObjectA(bitmap, sizeof size, &size);
    HDC source = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(source, bitmap);
    Capture capture = CaptureFrom(source, size.bmWidth, size.bmHeight);
    SelectObject(source, previous);
    DeleteDC(source);
    return capture;
}

bool SaveCapture(const Capture& capture, const char* name) {
    static ULONG_PTR token = 0;  // GDI+ stays up for the rest of the test program
    Gdiplus::GdiplusStartupInput input;
    if (token == 0 && Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return false;
    auto* pixels = reinterpret_cast<BYTE*>(const_cast<uint32_t*>(capture.pixels.data()));
    Gdiplus::Bitmap bitmap(capture.width, capture.height, capture.width * 4, PixelFormat32bppRGB,
                           pixels);
    const CLSID png = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};
    const std::string path = std::string(QUORVEX_ARTIFACT_DIR) + "\\" + name + ".png";
    return bitmap.Save(std::wstring(path.begin(), path.end()).c_str(), &png, nullptr) ==
           Gdiplus::Ok;
}

void SaveDialogPicture(HWND dialog, const char* name) {
    // Wine's virtual desktop leaves the dialog drawn inactive.
    SendMessageA(dialog, WM_NCACTIVATE, TRUE, 0);
    const Capture picture = CaptureWindow(dialog);
    RECT window;
    GetWindowRect(dialog, &window);
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        RECT area;
        GetWindowRect(child, &area);
        std::set<uint32_t> colours;
        for (int y = area.top; y < area.bottom && IsWindowVisible(child); ++y) {
            for (int x = area.left; x < area.right; ++x) {
                colours.insert(picture.At(x - window.left, y - window.top));
            }
        }
        EXPECT_NE(colours.size(), 1u)
            << name << ": control " << GetDlgCtrlID(child) << " is not drawn";
    }
    EXPECT_TRUE(SaveCapture(picture, name));
}
