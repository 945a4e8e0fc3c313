// Drawing of "Mac Slider CPP": limit marks, track and thumb, composed off
// screen and copied to the window in one piece.
#include "controls/Slider.h"
#include "controls/Toolkit.h"

namespace {

// A triangle pointing up from the bottom edge (horizontal slider) or left
// from the right edge (vertical slider), `depth` pixels deep, at `position`.
void DrawMark(HDC dc, const SliderRecord* slider, int position, int depth) {
    const int width = slider->head.width;
    const int height = slider->head.height;
    POINT corners[3];
    if (slider->vertical != 0) {
        corners[0] = {width - 2 - depth, position};
        corners[1] = {width - 2, position - 5};
        corners[2] = {width - 2, position + 5};
    } else {
        corners[0] = {position, height - 2 - depth};
        corners[1] = {position - 5, height - 2};
        corners[2] = {position + 5, height - 2};
    }
    Polygon(dc, corners, 3);
}

int MarkDepth(const SliderRecord* slider) {
    return (slider->vertical != 0 ? slider->head.width : slider->head.height) / 4;
}

// Limit marks in dark red; a vertical slider shows only the lower one.
void DrawLimitMarks(HDC dc, const SliderRecord* slider) {
    HPEN pen = CreatePen(PS_SOLID, 2, RGB(155, 0, 0));
    HGDIOBJ previousPen = SelectObject(dc, pen);
    const int depth = MarkDepth(slider);
    DrawMark(dc, slider, SliderPixelPosition(slider, slider->lowerLimit), depth);
    if (slider->vertical == 0) {
        DrawMark(dc, slider, SliderPixelPosition(slider, slider->upperLimit), depth);
    }
    SelectObject(dc, previousPen);
    DeleteObject(pen);
}

// The groove: inset by a quarter of the slider's depth on the near side and
// by half of it on the far side.
void DrawTrack(HDC dc, const SliderRecord* slider) {
    const int width = slider->head.width;
    const int height = slider->head.height;
    if (slider->vertical != 0) {
        const int inset = width / 4 > 1 ? width / 4 : 1;
        Rectangle(dc, inset, 5, width - 2 * inset, height - 5);
    } else {
        const int inset = height / 4 > 1 ? height / 4 : 1;
        Rectangle(dc, 5, inset, width - 5, height - 2 * inset);
    }
}

}  // namespace

void PaintSlider(const SliderRecord* slider) {
    const int width = slider->head.width;
    const int height = slider->head.height;
    PAINTSTRUCT paint;
    HDC windowDc = BeginPaint(slider->head.window, &paint);
    HDC dc = CreateCompatibleDC(windowDc);
    HBITMAP bitmap = CreateCompatibleBitmap(windowDc, width, height);
    HGDIOBJ previousBitmap = SelectObject(dc, bitmap);
    HGDIOBJ previousBrush = SelectObject(dc, GetStockObject(GRAY_BRUSH));

    const RECT whole = {0, 0, width, height};
    FillRect(dc, &whole, FaceBrush);
    if (slider->limiting != 0) {
        DrawLimitMarks(dc, slider);
    }
    DrawTrack(dc, slider);
    DrawMark(dc, slider, SliderPixelPosition(slider, slider->value), MarkDepth(slider));

    BitBlt(windowDc, 0, 0, width, height, dc, 0, 0, SRCCOPY);
    SelectObject(dc, previousBrush);
    SelectObject(dc, previousBitmap);
    DeleteObject(bitmap);
    DeleteDC(dc);
    EndPaint(slider->head.window, &paint);
}
