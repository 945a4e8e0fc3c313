// The pane's record, its mouse handling and its point picking.
#include "dialog/PreviewPane.h"

#include <cmath>

#include "controls/ControlFramework.h"
#include "controls/PreviewPaneClass.h"
#include "controls/Slider.h"
#include "controls/SpinEdit.h"
#include "dialog/PageMemory.h"
#include "dialog/PreviewState.h"
#include "plugin/HostServices.h"

namespace {

bool DetailMode(const PreviewPaneRecord* pane) { return pane->mode != kPaneNavigator; }

PanePoint MousePosition(LPARAM lParam) {
    PanePoint point;
    point.x = static_cast<int16_t>(LOWORD(lParam));
    point.y = static_cast<int16_t>(HIWORD(lParam));
    return point;
}

void NotifyParent(const PreviewPaneRecord* pane, WPARAM wParam, LPARAM lParam) {
    SendMessageA(GetParent(pane->head.window), WM_COMMAND, wParam, lParam);
}

// The pane tells its dialog of a click by toggling the dialog's button 0.
void ToggleParentButtonZero(const PreviewPaneRecord* pane) {
    HWND parent = GetParent(pane->head.window);
    CheckDlgButton(parent, 0, BST_UNCHECKED);
    CheckDlgButton(parent, 0, BST_CHECKED);
}

void SetLinkedValue(ControlRecord* control, bool isSlider, float value) {
    if (control == nullptr) return;
    if (isSlider) {
        SliderSetValue(RecordOf<SliderRecord>(control), value);
    } else {
        SpinEditSetValue(RecordOf<SpinEditRecord>(control), value);
    }
    RedrawWindow(control->window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

// Turns the point under the mouse into two values, the image's centre 0 and
// its edges +-1000 with y growing upwards, and hands them to the linked
// controls. The report arrives at the dialog as its OK command. False when
// the filter rectangle gives no size to measure against.
bool PickPoint(const PreviewPaneRecord* pane, LPARAM lParam) {
    PanePoint mouse = MousePosition(lParam);
    if (mouse.x < 0) mouse.x = 0;
    if (mouse.y < 0) mouse.y = 0;
    const Rect16 filterRect = GetFilterRect();
    const float width = (filterRect.right - filterRect.left) / sharedPreviewScale;
    const float height = (filterRect.bottom - filterRect.top) / sharedPreviewScale;
    if (width == 0.0f || height == 0.0f || std::isnan(width) || std::isnan(height)) return false;

    const float valueX =
        (pane->viewShift.x + mouse.x - pane->imageOrigin.x - width / 2) * 2000 / width;
    const float valueY =
        (-(pane->viewShift.y + mouse.y - pane->imageOrigin.y) + height / 2) * 2000 / height;
    if (pane->linkedX != nullptr && pane->linkedY != nullptr) {
        SetLinkedValue(pane->linkedX, pane->linkedAreSliders != 0, valueX);
        SetLinkedValue(pane->linkedY, pane->linkedAreSliders != 0, valueY);
    }
    NotifyParent(pane, 1, pane->head.controlId);
    return true;
}

void OnLeftButtonDown(PreviewPaneRecord* pane, LPARAM lParam) {
    if (pane->mode == kPaneDetail) ToggleParentButtonZero(pane);
    SetCapture(pane->head.window);
    pane->dragStart = MousePosition(lParam);
    pane->dragOffset = PanePoint{};
}

void OnLeftDrag(PreviewPaneRecord* pane, LPARAM lParam) {
    pane->dragCurrent = MousePosition(lParam);
    const int32_t dx = pane->dragCurrent.x - pane->dragStart.x;
    const int32_t dy = pane->dragCurrent.y - pane->dragStart.y;
    PanePoint& moved = DetailMode(pane) ? pane->dragOffset : pane->framePos;
    moved.x += dx;
    moved.y += dy;
    pane->dragStart = pane->dragCurrent;
    RedrawPane(pane);
}

void OnLeftButtonUp(PreviewPaneRecord* pane) {
    ReleaseCapture();
    if (DetailMode(pane)) {
        pane->viewShift.x -= pane->dragOffset.x;
        pane->viewShift.y -= pane->dragOffset.y;
    }
    pane->dragOffset = PanePoint{};
    NotifyParent(pane, pane->head.controlId, 0);
}

void OnRightButtonDown(PreviewPaneRecord* pane, LPARAM lParam) {
    if (pane->mode == kPaneDetail) {
        ToggleParentButtonZero(pane);
        if (!PickPoint(pane, lParam)) return;
    }
    SetCapture(pane->head.window);
}

LRESULT HandlePane(ControlRecord* head, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    PreviewPaneRecord* pane = RecordOf<PreviewPaneRecord>(head);
    switch (message) {
        case WM_PAINT:
            PaintPreviewPane(pane, window);
            return 0;
        case WM_LBUTTONDOWN:
            OnLeftButtonDown(pane, lParam);
            return 0;
        case WM_MOUSEMOVE:
            if ((wParam & MK_LBUTTON) != 0) {
                OnLeftDrag(pane, lParam);
            } else if ((wParam & MK_RBUTTON) != 0 && pane->mode == kPaneDetail) {
                PickPoint(pane, lParam);
            }
            return 0;
        case WM_LBUTTONUP:
            OnLeftButtonUp(pane);
            return 0;
        case WM_RBUTTONDOWN:
            OnRightButtonDown(pane, lParam);
            return 0;
        case WM_RBUTTONUP:
            ReleaseCapture();
            return 0;
        default:
            return DefWindowProcA(window, message, wParam, lParam);
    }
}

void DestroyPane(ControlRecord* head) {
    PreviewPaneRecord* pane = RecordOf<PreviewPaneRecord>(head);
    ReleasePages(pane->overlayMap);
    ReleasePages(pane->sourceBuffers[0]);
    ReleasePages(pane->sourceBuffers[1]);
    ReleasePages(pane->pixels);
    if (pane->bitmap != nullptr) DeleteObject(pane->bitmap);
    pane->bitmap = nullptr;
    ReleaseControlRecord(head);
    delete pane;
}

const ControlKind kPreviewPaneKind = {NewControlRecord<PreviewPaneRecord>, DestroyPane, HandlePane};

}  // namespace

void RedrawPane(const PreviewPaneRecord* pane) {
    RedrawWindow(pane->head.window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

PreviewPaneRecord* FindPreviewPane(HWND window) {
    ControlRecord* head = FindControl(window, kPreviewPaneClassName);
    return head != nullptr ? RecordOf<PreviewPaneRecord>(head) : nullptr;
}

LRESULT CALLBACK PreviewPaneWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kPreviewPaneKind, window, message, wParam, lParam);
}
