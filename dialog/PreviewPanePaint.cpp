// Painting of the preview pane: the navigator with its inverted frame, and
// the detail pane with its flicker-free drag and its overlay veil.
#include <algorithm>

#include "controls/Toolkit.h"
#include "dialog/PreviewPane.h"
#include "dialog/PreviewState.h"
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"
#include "redeye/Truncate.h"

namespace {

constexpr int kVeilGrey = 192;
constexpr uint8_t kSolidVeil = 255;

// The sign of a pane without a picture.
void DrawDiagonals(HDC dc, int width, int height, PanePoint shift) {
    MoveToEx(dc, shift.x, shift.y, nullptr);
    LineTo(dc, shift.x + width, shift.y + height);
    MoveToEx(dc, shift.x + width, shift.y, nullptr);
    LineTo(dc, shift.x, shift.y + height);
}

void BlitPicture(HDC dc, HBITMAP picture, PanePoint at, PanePoint size) {
    HDC source = CreateCompatibleDC(dc);
    HGDIOBJ previous = SelectObject(source, picture);
    BitBlt(dc, at.x, at.y, size.x, size.y, source, 0, 0, SRCCOPY);
    SelectObject(source, previous);
    DeleteDC(source);
}

void InvertPixel(HDC dc, int x, int y) {
    const COLORREF color = GetPixel(dc, x, y);
    SetPixelV(dc, x, y,
              RGB(255 - GetRValue(color), 255 - GetGValue(color), 255 - GetBValue(color)));
}

// Edges one at a time, each with both of its ends: the corners are inverted
// twice and keep their colour.
void InvertFrame(HDC dc, PanePoint origin, PanePoint at, PanePoint size) {
    const int left = origin.x + at.x;
    const int top = origin.y + at.y;
    for (int x = left; x <= left + size.x; ++x) InvertPixel(dc, x, top);
    for (int x = left; x <= left + size.x; ++x) InvertPixel(dc, x, top + size.y);
    for (int y = top; y <= top + size.y; ++y) InvertPixel(dc, left, y);
    for (int y = top; y <= top + size.y; ++y) InvertPixel(dc, left + size.x, y);
}

int32_t RoundedFrameSide(double side) { return TruncateToInt32(side + 0.5); }

// The navigator's frame size for the detail pane's zoom s; 1.0 without a
// detail pane to follow.
float SizeFrame(PreviewPaneRecord* navigator) {
    const PreviewPaneRecord* detail = activeDetailPane;
    const FilterParameters* parameters =
        detail != nullptr && detail->globals != nullptr ? Parameters(detail->globals) : nullptr;
    if (parameters == nullptr) {
        navigator->imageSize.x = RoundedFrameSide(navigator->shownSize.x / navigator->maxScale);
        navigator->imageSize.y = RoundedFrameSide(navigator->shownSize.y / navigator->maxScale);
        return 1.0f;
    }
    const float scale = parameters->viewScale;
    const Rect16 outRect = GetOutRect();
    const int32_t shownWidth =
        std::min(TruncateToInt32((outRect.right - outRect.left) / scale), detail->head.width);
    const int32_t shownHeight =
        std::min(TruncateToInt32((outRect.bottom - outRect.top) / scale), detail->head.height);
    navigator->imageSize.x = RoundedFrameSide(shownWidth / navigator->maxScale * scale);
    navigator->imageSize.y = RoundedFrameSide(shownHeight / navigator->maxScale * scale);
    return scale;
}

// The frame starts inside the picture and ends before its last column and row.
void ClampFrame(PreviewPaneRecord* navigator) {
    PanePoint& at = navigator->framePos;
    if (at.x < 0) at.x = 0;
    if (at.y < 0) at.y = 0;
    const PanePoint limit{navigator->shownSize.x - navigator->imageSize.x,
                          navigator->shownSize.y - navigator->imageSize.y};
    if (at.x >= limit.x) at.x = limit.x - 1;
    if (at.y >= limit.y) at.y = limit.y - 1;
}

void PaintNavigator(PreviewPaneRecord* navigator, HDC dc) {
    const float scale = SizeFrame(navigator);
    ClampFrame(navigator);
    const PanePoint client{navigator->head.width, navigator->head.height};
    if (navigator->bitmap != nullptr) {
        BlitPicture(dc, navigator->bitmap, navigator->imageOrigin, client);
    } else {
        DrawDiagonals(dc, client.x, client.y, PanePoint{});
    }
    // At 1:1 the frame is left out.
    if (scale != 1.0f) {
        InvertFrame(dc, navigator->imageOrigin, navigator->framePos, navigator->imageSize);
    }
}

void BlendPixel(HDC dc, int x, int y, uint8_t strength) {
    if (strength == kSolidVeil) {
        SetPixelV(dc, x, y, RGB(kVeilGrey, kVeilGrey, kVeilGrey));
        return;
    }
    const float a = strength / 255.0f;
    const COLORREF color = GetPixel(dc, x, y);
    auto blend = [a](int channel) {
        return static_cast<BYTE>(TruncateToInt32(kVeilGrey * a + (1 - a) * channel));
    };
    SetPixelV(dc, x, y,
              RGB(blend(GetRValue(color)), blend(GetGValue(color)), blend(GetBValue(color))));
}

void PaintOverlay(const PreviewPaneRecord* pane, HDC dc) {
    for (int y = 0; y < pane->head.height; ++y) {
        const uint8_t* row = pane->overlayMap + static_cast<size_t>(y) * pane->head.width;
        for (int x = 0; x < pane->head.width; ++x) {
            if (row[x] != 0) BlendPixel(dc, x, y, row[x]);
        }
    }
}

PanePoint BlitSize(const PreviewPaneRecord* pane) {
    if (pane->mode == kPaneDetail) return PanePoint{pane->head.width, pane->head.height};
    return pane->bitmapSize;
}

// While a drag is in progress the picture is composed off screen, on the
// face colour, shifted by the drag.
void PaintDragged(const PreviewPaneRecord* pane, HDC dc) {
    const int width = pane->head.width;
    const int height = pane->head.height;
    HDC canvas = CreateCompatibleDC(dc);
    HBITMAP canvasBitmap = CreateCompatibleBitmap(dc, width, height);
    HGDIOBJ previous = SelectObject(canvas, canvasBitmap);
    const RECT client{0, 0, width, height};
    FillRect(canvas, &client, FaceBrush);
    if (pane->bitmap != nullptr) {
        const PanePoint at{pane->imageOrigin.x + pane->dragOffset.x,
                           pane->imageOrigin.y + pane->dragOffset.y};
        BlitPicture(canvas, pane->bitmap, at, BlitSize(pane));
    } else {
        DrawDiagonals(canvas, width, height, pane->dragOffset);
    }
    BitBlt(dc, 0, 0, width, height, canvas, 0, 0, SRCCOPY);
    SelectObject(canvas, previous);
    DeleteObject(canvasBitmap);
    DeleteDC(canvas);
}

void PaintDetail(const PreviewPaneRecord* pane, HDC dc) {
    if (pane->dragOffset.x != 0 || pane->dragOffset.y != 0) {
        PaintDragged(pane, dc);
    } else if (pane->bitmap != nullptr) {
        BlitPicture(dc, pane->bitmap, pane->imageOrigin, BlitSize(pane));
        if (pane->overlayOn == 1 && pane->overlayMap != nullptr) PaintOverlay(pane, dc);
    } else {
        DrawDiagonals(dc, pane->head.width, pane->head.height, PanePoint{});
    }
}

}  // namespace

void PaintPreviewPane(PreviewPaneRecord* pane, HWND window) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    if (pane->mode == kPaneNavigator) {
        PaintNavigator(pane, dc);
    } else {
        PaintDetail(pane, dc);
    }
    EndPaint(window, &paint);
}
