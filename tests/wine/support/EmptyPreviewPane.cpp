// A stand-in for the preview pane in the toolkit tests (the real pane lives
// with the filter dialog): a record with the framework's defaults and the two
// diagonals that mark a pane without a picture.
#include "controls/ControlFramework.h"
#include "controls/PlainControls.h"
#include "controls/PreviewPaneClass.h"

namespace {

void PaintDiagonals(const ControlRecord* record, HWND window) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(window, &paint);
    MoveToEx(dc, 0, 0, nullptr);
    LineTo(dc, record->width, record->height);
    MoveToEx(dc, record->width, 0, nullptr);
    LineTo(dc, 0, record->height);
    EndPaint(window, &paint);
}

LRESULT HandleEmptyPane(ControlRecord* record, HWND window, UINT message, WPARAM wParam,
                        LPARAM lParam) {
    if (message == WM_PAINT) {
        PaintDiagonals(record, window);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

const ControlKind kEmptyPaneKind = {NewControlRecord<PlainControlRecord>,
                                    DeleteControlRecord<PlainControlRecord>, HandleEmptyPane};

}  // namespace

LRESULT CALLBACK PreviewPaneWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kEmptyPaneKind, window, message, wParam, lParam);
}
