// The main filter dialog: its run around the control toolkit, its dialog
// procedure, and the steps its handlers share.
#include "dialog/MainDialog.h"

#include <windows.h>

#include "controls/Toolkit.h"
#include "dialog/MainDialogIds.h"
#include "dialog/MainDialogState.h"
#include "dialog/PageMemory.h"
#include "dialog/PreviewPicture.h"
#include "dialog/PreviewState.h"
#include "dialog/ViewGeometry.h"
#include "redeye/FilterDriver.h"

MainDialogState gMainDialog;

namespace {

// The first paint builds both pictures: the panes are on screen by then.
void OnPaint() {
    if (!PreviewPossible() || !gMainDialog.firstPaintPending) return;
    if (gMainDialog.detailPane != nullptr) BuildDetailImage(gMainDialog.detailPane);
    if (gMainDialog.navigatorPane != nullptr) BuildNavigatorImage(gMainDialog.navigatorPane);
    gMainDialog.firstPaintPending = false;
}

// The zoom buttons do not own the pictures they were given.
void DeleteButtonPicture(HWND dialog, int itemId) {
    const LRESULT picture = SendDlgItemMessageA(dialog, itemId, BM_GETIMAGE, IMAGE_BITMAP, 0);
    if (picture != 0) DeleteObject(reinterpret_cast<HGDIOBJ>(picture));
}

// The product picture's control loaded its bitmap from the template; taking
// the bitmap out of the control makes it ours to delete, on every system.
BOOL CALLBACK DeleteStaticPicture(HWND child, LPARAM) {
    char className[16] = {};
    GetClassNameA(child, className, sizeof className);
    const LONG style = GetWindowLongA(child, GWL_STYLE);
    if (_stricmp(className, "Static") != 0 || (style & SS_TYPEMASK) != SS_BITMAP) return TRUE;
    const LRESULT picture = SendMessageA(child, STM_SETIMAGE, IMAGE_BITMAP, 0);
    if (picture != 0) DeleteObject(reinterpret_cast<HGDIOBJ>(picture));
    return TRUE;
}

void OnDestroy(HWND dialog) {
    dialogOpen = false;
    ReleasePreviewBuffers();
    activeDetailPane = nullptr;
    gMainDialog.lifeState = 2;
    ReleasePages(gMainDialog.savedParameters);
    DeleteButtonPicture(dialog, IDC_ZOOM_IN);
    DeleteButtonPicture(dialog, IDC_ZOOM_OUT);
    EnumChildWindows(dialog, DeleteStaticPicture, 0);
}

}  // namespace

FilterParameters* DialogParameters() {
    return gMainDialog.globals != nullptr ? Parameters(gMainDialog.globals) : nullptr;
}

bool PreviewPossible() {
    const FilterParameters* parameters = DialogParameters();
    return parameters != nullptr && parameters->useAdvanceState != 0;
}

void EnableItem(HWND dialog, int itemId, bool enable) {
    EnableWindow(GetDlgItem(dialog, itemId), enable ? TRUE : FALSE);
}

void RedrawItemArea(HWND dialog, int itemId, bool erase) {
    HWND item = GetDlgItem(dialog, itemId);
    if (item == nullptr) return;
    RECT area;
    GetWindowRect(item, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    InvalidateRect(dialog, &area, erase);
    UpdateWindow(dialog);
}

void PlaceNavigatorFrame() {
    PreviewPaneRecord* navigator = gMainDialog.navigatorPane;
    const PreviewPaneRecord* detail = gMainDialog.detailPane;
    const FilterParameters* parameters = DialogParameters();
    if (navigator == nullptr || detail == nullptr || parameters == nullptr) return;
    navigator->framePos.x =
        ImageToNavigator(parameters->viewX, navigator->shownSize.x, detail->imageSize.x);
    navigator->framePos.y =
        ImageToNavigator(parameters->viewY, navigator->shownSize.y, detail->imageSize.y);
}

void RebuildPreview() {
    RunPreviewFilter(gMainDialog.globals, 0);
    if (gMainDialog.detailPane != nullptr) BuildDetailImage(gMainDialog.detailPane);
}

void RefreshDetailPane(HWND dialog) {
    RebuildPreview();
    RedrawItemArea(dialog, IDC_DETAIL_PANE, true);
}

bool RunFilterDialog(FilterGlobals* globals) {
    const PlatformData* platform = globals->filterRecord->platformData;
    HWND owner = platform != nullptr ? static_cast<HWND>(platform->hwnd) : nullptr;
    SetUpControlToolkit();
    const INT_PTR result = DialogBoxParamA(static_cast<HINSTANCE>(gModuleInstance), IDD_MAIN_DIALOG,
                                           owner, DissolveProc, reinterpret_cast<LPARAM>(globals));
    TearDownControlToolkit();
    return result == IDOK;
}

extern "C" INT_PTR CALLBACK DissolveProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            InitializeMainDialog(dialog, reinterpret_cast<FilterGlobals*>(lParam));
            return TRUE;
        case WM_COMMAND:
            OnMainDialogCommand(dialog, wParam);
            return TRUE;
        case WM_PAINT:
            OnPaint();
            return FALSE;  // the dialog itself is painted as usual
        case WM_KEYDOWN:
            if (wParam != VK_F1) return FALSE;
            OpenWithShell(dialog, gMainDialog.documentationPath);
            return TRUE;
        case WM_HELP:
            // F1 goes to the control that has the focus (the dialog hands
            // the focus on to a control); the system turns it into this
            // request, which travels up to the dialog, and from the boxes
            // that the dialog owns, such as About, to it too.
            OpenWithShell(dialog, gMainDialog.documentationPath);
            return TRUE;
        case WM_DESTROY:
            OnDestroy(dialog);
            return TRUE;
        default:
            return FALSE;
    }
}
