// The commands of the main dialog: OK and Cancel, the reports of the two
// panes and the two fields, reset, documentation, About and the web site.
#include <windows.h>

#include <shellapi.h>

#include <cstring>

#include "dialog/MainDialogIds.h"
#include "dialog/MainDialogState.h"
#include "dialog/ViewGeometry.h"
#include "plugin/HostServices.h"
#include "plugin/Messages.h"
#include "plugin/Selectors.h"

namespace {

// Puts back the parameters record as the dialog found it, in a new handle.
// Ending the dialog takes the focus from a field, which then commits what
// was typed into it: the record is put back after that.
void CancelDialog(HWND dialog) {
    EndDialog(dialog, IDCANCEL);
    FilterGlobals* globals = gMainDialog.globals;
    if (globals == nullptr) return;
    FilterRecord* filterRecord = globals->filterRecord;
    if (gMainDialog.savedParameters != nullptr) {
        Handle restored = PINewHandle(filterRecord->handleProcs, gMainDialog.savedSize);
        if (restored != nullptr && *restored != nullptr) {
            PIDisposeHandle(filterRecord->handleProcs, filterRecord->parameters);
            filterRecord->parameters = restored;
            std::memcpy(*restored, gMainDialog.savedParameters, gMainDialog.savedSize);
        }
    }
    *globals->result = userCanceledErr;
}

// The user moved the navigator's frame: the view follows it.
void OnFramePlaced(HWND dialog) {
    RedrawItemArea(dialog, IDC_NAVIGATOR_PANE, true);
    FilterParameters* parameters = DialogParameters();
    const PreviewPaneRecord* navigator = gMainDialog.navigatorPane;
    const PreviewPaneRecord* detail = gMainDialog.detailPane;
    if (parameters == nullptr || navigator == nullptr || detail == nullptr) return;
    parameters->viewX = static_cast<float>(
        NavigatorToImage(navigator->framePos.x, navigator->shownSize.x, detail->imageSize.x));
    parameters->viewY = static_cast<float>(
        NavigatorToImage(navigator->framePos.y, navigator->shownSize.y, detail->imageSize.y));
    RefreshDetailPane(dialog);
}

// The user dragged the detail picture: the view moves the other way.
void OnViewDragged(HWND dialog) {
    FilterParameters* parameters = DialogParameters();
    PreviewPaneRecord* detail = gMainDialog.detailPane;
    if (parameters == nullptr || detail == nullptr) return;
    parameters->viewX = detail->viewShift.x * parameters->viewScale + parameters->viewX;
    parameters->viewY = detail->viewShift.y * parameters->viewScale + parameters->viewY;
    PlaceNavigatorFrame();
    if (gMainDialog.navigatorPane != nullptr) RedrawPane(gMainDialog.navigatorPane);
    detail->viewShift = PanePoint{};
    previewDirty = true;
    RefreshDetailPane(dialog);
}

void OnValueChanged(HWND dialog) {
    FilterParameters* parameters = DialogParameters();
    if (parameters == nullptr) return;
    if (gMainDialog.toleranceField != nullptr) {
        parameters->tolerance = gMainDialog.toleranceField->value;
    }
    if (gMainDialog.darkeningField != nullptr) {
        parameters->darkening = gMainDialog.darkeningField->value;
    }
    if (parameters->previewOn && PreviewPossible()) RefreshDetailPane(dialog);
}

void ResetToDefaults(HWND dialog) {
    SetParameterDefaults(gMainDialog.globals);
    const FilterParameters* parameters = DialogParameters();
    if (parameters == nullptr) return;
    if (gMainDialog.toleranceField != nullptr) {
        SpinEditSetValue(gMainDialog.toleranceField, parameters->tolerance);
    }
    if (gMainDialog.darkeningField != nullptr) {
        SpinEditSetValue(gMainDialog.darkeningField, parameters->darkening);
    }
    if (parameters->previewOn && PreviewPossible()) {
        RebuildPreview();
        InvalidateRect(dialog, nullptr, TRUE);
        UpdateWindow(dialog);
    }
    RedrawItemArea(dialog, IDC_NAVIGATOR_PANE, true);
}

}  // namespace

void OpenWithShell(HWND dialog, const char* target) {
    ShellExecuteA(dialog, "open", target, nullptr, nullptr, SW_SHOWNORMAL);
}

void OnMainDialogCommand(HWND dialog, WPARAM wParam) {
    const int itemId = LOWORD(wParam);
    const int notification = HIWORD(wParam);
    switch (itemId) {
        case IDOK:
            if (notification == 0) EndDialog(dialog, IDOK);
            break;
        case IDCANCEL:
            if (notification == 0) CancelDialog(dialog);
            break;
        case IDC_NAVIGATOR_PANE:
            OnFramePlaced(dialog);
            break;
        case IDC_TOLERANCE:
        case IDC_DARKENING:
            OnValueChanged(dialog);
            break;
        case IDC_DETAIL_PANE:
            OnViewDragged(dialog);
            break;
        case IDC_ZOOM_IN:
        case IDC_ZOOM_OUT:
            ZoomPreview(dialog, itemId);
            break;
        case IDC_RESET_DEFAULTS:
            ResetToDefaults(dialog);
            break;
        case IDC_DOCUMENTATION:
            OpenWithShell(dialog, gMainDialog.documentationPath);
            break;
        case IDC_ABOUT:
            ShowAboutBox(dialog);
            break;
        case IDC_WEB_SITE:
            OpenWithShell(dialog, kMakerWebSite);
            break;
        default:
            break;
    }
}
