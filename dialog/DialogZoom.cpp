// The zoom buttons: one step in or out, the view kept centred.
#include "dialog/MainDialogIds.h"
#include "dialog/MainDialogState.h"
#include "dialog/ViewGeometry.h"
#include "plugin/Selectors.h"

namespace {

float StepZoom(HWND dialog, int itemId, float viewScale, float maxScale) {
    if (itemId == IDC_ZOOM_IN) {
        EnableItem(dialog, IDC_ZOOM_OUT, true);
        const float zoomed = ZoomedIn(viewScale);
        if (zoomed >= kSmallestViewScale) return zoomed;
        EnableItem(dialog, IDC_ZOOM_IN, false);
        return kSmallestViewScale;
    }
    EnableItem(dialog, IDC_ZOOM_IN, true);
    const float zoomed = ZoomedOut(viewScale);
    if (zoomed < maxScale) return zoomed;
    EnableItem(dialog, IDC_ZOOM_OUT, false);
    return maxScale;
}

void RedrawPaneNow(const PreviewPaneRecord* pane, bool erase) {
    InvalidateRect(pane->head.window, nullptr, erase ? TRUE : FALSE);
    UpdateWindow(pane->head.window);
}

}  // namespace

void ZoomPreview(HWND dialog, int itemId) {
    FilterParameters* parameters = DialogParameters();
    PreviewPaneRecord* detail = gMainDialog.detailPane;
    PreviewPaneRecord* navigator = gMainDialog.navigatorPane;
    if (!PreviewPossible() || detail == nullptr || navigator == nullptr) return;
    const float before = parameters->viewScale;
    const float after = StepZoom(dialog, itemId, before, navigator->maxScale);
    parameters->viewScale = after;
    if (after != before) {
        const PanePoint shown = detail->shownSize;
        parameters->viewX -= (shown.x * after - shown.x * before) / 2;
        parameters->viewY -= (shown.y * after - shown.y * before) / 2;
    }
    PlaceNavigatorFrame();
    previewDirty = true;
    RebuildPreview();
    RedrawPaneNow(detail, false);
    RedrawPaneNow(navigator, true);
}
