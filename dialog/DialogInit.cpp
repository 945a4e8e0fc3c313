// Opening the main dialog: the module's folder, the controls, the saved
// parameters, the image for both panes, the zoom that fits the selection,
// the navigator's frame and the first preview.
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "controls/ToolTip.h"
#include "controls/Toolkit.h"
#include "dialog/MainDialogIds.h"
#include "dialog/MainDialogState.h"
#include "dialog/PageMemory.h"
#include "dialog/PreviewPicture.h"
#include "dialog/PreviewState.h"
#include "dialog/ViewGeometry.h"
#include "plugin/HostServices.h"
#include "plugin/Messages.h"
#include "redeye/FilterDriver.h"
#include "redeye/HostArea.h"
#include "redeye/Truncate.h"

namespace {

constexpr DWORD kModulePathLength = 1024;
// The folder is what remains of the module's path without as many
// characters as the module's own file name has.
constexpr size_t kModuleFileNameLength = sizeof "Korvanthe.8bf" - 1;

HINSTANCE ModuleInstance() { return static_cast<HINSTANCE>(gModuleInstance); }

void BuildFolderPaths() {
    char modulePath[kModulePathLength + 1] = {};
    GetModuleFileNameA(ModuleInstance(), modulePath, kModulePathLength);
    const size_t length = std::strlen(modulePath);
    const int folderLength =
        static_cast<int>(length > kModuleFileNameLength ? length - kModuleFileNameLength : 0);
    std::snprintf(gMainDialog.savesFolderPath, kDialogPathLength, "%.*sKorvanthe Saves",
                  folderLength, modulePath);
    std::snprintf(gMainDialog.documentationPath, kDialogPathLength, "%.*sKorvanthePhoto.pdf",
                  folderLength, modulePath);
}

SpinEditRecord* SetUpField(HWND dialog, int itemId, const char* hint) {
    SpinEditRecord* field =
        RecordOf<SpinEditRecord>(FindControl(GetDlgItem(dialog, itemId), kSpinEditClassName));
    if (field == nullptr) return nullptr;
    SpinEditSetHint(field, hint);
    std::snprintf(field->valueName, sizeof field->valueName, "%s", hint);
    SendMessageA(field->editBox, WM_SETFONT, reinterpret_cast<WPARAM>(ControlFont), 0);
    return field;
}

void FindControls(HWND dialog) {
    gMainDialog.detailPane = FindPreviewPane(GetDlgItem(dialog, IDC_DETAIL_PANE));
    gMainDialog.navigatorPane = FindPreviewPane(GetDlgItem(dialog, IDC_NAVIGATOR_PANE));
    activeDetailPane = gMainDialog.detailPane;
    gMainDialog.toleranceField = SetUpField(dialog, IDC_TOLERANCE, "Red Tolerance");
    gMainDialog.darkeningField = SetUpField(dialog, IDC_DARKENING, "Darkness");
}

void SaveParameters() {
    const FilterRecord* filterRecord = gMainDialog.globals->filterRecord;
    const FilterParameters* parameters = DialogParameters();
    if (parameters == nullptr) return;
    const int32_t handleSize = PIGetHandleSize(filterRecord->handleProcs, filterRecord->parameters);
    // A host that cannot tell the size still holds a whole record.
    gMainDialog.savedSize = std::max<int32_t>(handleSize, sizeof(FilterParameters));
    gMainDialog.savedParameters = AllocatePages(static_cast<uint64_t>(gMainDialog.savedSize));
    if (gMainDialog.savedParameters != nullptr) {
        std::memcpy(gMainDialog.savedParameters, parameters, gMainDialog.savedSize);
    }
}

void AddItemHint(HWND dialog, int itemId, const char* hint) {
    AddToolTip(GetDlgItem(dialog, itemId), hint, nullptr);
}

void SetButtonPicture(HWND dialog, int itemId, int bitmapId) {
    // The pictures' light grey becomes the button face colour.
    HANDLE picture = LoadImageA(ModuleInstance(), MAKEINTRESOURCEA(bitmapId), IMAGE_BITMAP, 0, 0,
                                LR_LOADMAP3DCOLORS);
    SendDlgItemMessageA(dialog, itemId, BM_SETIMAGE, IMAGE_BITMAP,
                        reinterpret_cast<LPARAM>(picture));
}

void AddHintsAndPictures(HWND dialog) {
    AddItemHint(dialog, IDC_RESET_DEFAULTS, "Set parameters as default");
    AddItemHint(dialog, IDC_WEB_SITE, "Go to our site and get new versions of our plug-ins");
    AddItemHint(dialog, IDC_ABOUT, "About this product");
    AddItemHint(dialog, IDC_DOCUMENTATION, "Read PDF documentation about this product");
    SetButtonPicture(dialog, IDC_ZOOM_IN, IDB_ZOOM_IN);
    SetButtonPicture(dialog, IDC_ZOOM_OUT, IDB_ZOOM_OUT);
    AddItemHint(dialog, IDC_ZOOM_IN, "Increase Preview");
    AddItemHint(dialog, IDC_ZOOM_OUT, "Decrease Preview");
}

void LoadField(SpinEditRecord* field, float value) {
    if (field == nullptr) return;
    SpinEditSetRange(field, 0.0f, 100.0f);
    SpinEditSetValue(field, value);
}

void LoadPanes(FilterGlobals* globals) {
    PreviewPaneRecord* navigator = gMainDialog.navigatorPane;
    PreviewPaneRecord* detail = gMainDialog.detailPane;
    if (navigator != nullptr) {
        navigator->globals = globals;
        navigator->mode = kPaneNavigator;
        LoadSourceImage(navigator);
        const int32_t divisor =
            navigator->head.width > 0 ? navigator->imageSize.x / navigator->head.width : 0;
        navigator->maxScale = divisor == 0 ? 1.0f : static_cast<float>(divisor);
    }
    gMainDialog.firstPaintPending = true;
    if (detail != nullptr) {
        detail->globals = globals;
        LoadSourceImage(detail);
    }
}

float NotNegative(float coordinate) {
    return std::isnan(coordinate) || coordinate < 0 ? 0.0f : coordinate;
}

// Shows the selection's bounding box as large as the detail pane allows,
// centred, within the zoom's limits.
void FitViewToBox(HWND dialog, FilterParameters* parameters, const SelectionBounds& box) {
    const PreviewPaneRecord* detail = gMainDialog.detailPane;
    const PreviewPaneRecord* navigator = gMainDialog.navigatorPane;
    if (detail == nullptr || navigator == nullptr) return;
    parameters->viewState = kViewSelectionBox;
    parameters->viewLeft = box.minX;
    parameters->viewRight = box.maxX;
    parameters->viewTop = box.minY;
    parameters->viewBottom = box.maxY;
    parameters->viewX = static_cast<float>(box.minX);
    parameters->viewY = static_cast<float>(box.minY);

    const PictureExtent boxExtent{box.maxX - box.minX, box.maxY - box.minY};
    const PictureExtent pane{detail->head.width, detail->head.height};
    float scale = FitViewScale(boxExtent, pane);
    if (scale >= navigator->maxScale) {
        scale = navigator->maxScale;
        EnableItem(dialog, IDC_ZOOM_OUT, false);
        EnableItem(dialog, IDC_ZOOM_IN, true);
    }
    if (scale <= kSmallestViewScale) {
        scale = kSmallestViewScale;
        EnableItem(dialog, IDC_ZOOM_IN, false);
        EnableItem(dialog, IDC_ZOOM_OUT, true);
    }
    parameters->viewScale = scale;
    const int32_t shownWidth = TruncateToInt32(boxExtent.width / scale);
    const int32_t shownHeight = TruncateToInt32(boxExtent.height / scale);
    parameters->viewX = NotNegative(box.minX - ((pane.width - shownWidth) / 2) * scale);
    parameters->viewY = NotNegative(box.minY - ((pane.height - shownHeight) / 2) * scale);
}

void FitViewToSelection(HWND dialog, PictureExtent image) {
    const FilterRecord* filterRecord = gMainDialog.globals->filterRecord;
    FilterParameters* parameters = DialogParameters();
    // Rows shorter than the image are scanned only as far as they go.
    const int32_t rowBytes = filterRecord->maskRowBytes;
    const int32_t width = rowBytes >= 0 ? std::min(image.width, rowBytes) : image.width;
    const SelectionBounds box = FindSelectionBounds(
        static_cast<const uint8_t*>(filterRecord->maskData), rowBytes, width, image.height);
    if (box.maxX > box.minX && box.maxY > box.minY) {
        FitViewToBox(dialog, parameters, box);
    } else {
        parameters->viewState = kViewEmptySelection;
    }
}

void PreparePreview(HWND dialog, FilterGlobals* globals) {
    PreviewPaneRecord* detail = gMainDialog.detailPane;
    if (detail != nullptr) {
        SetRect(&globals->previewRect, 0, 0, static_cast<int16_t>(detail->head.width),
                static_cast<int16_t>(detail->head.height));
        previewPaneWidth = detail->head.width;
        previewPaneHeight = detail->head.height;
    }
    FilterParameters* parameters = DialogParameters();
    LoadField(gMainDialog.toleranceField, parameters->tolerance);
    LoadField(gMainDialog.darkeningField, parameters->darkening);
    LoadPanes(globals);

    const FilterRecord* filterRecord = globals->filterRecord;
    const PictureExtent image = RectExtent(GetOutRect());
    parameters->viewState = static_cast<int8_t>(filterRecord->haveMask);
    if (filterRecord->haveMask) {
        FitViewToSelection(dialog, image);
    } else {
        ShowNotice(dialog);
    }
    PreviewPaneRecord* navigator = gMainDialog.navigatorPane;
    if (navigator != nullptr) {
        const PictureExtent shown =
            NavigatorExtent(PictureExtent{navigator->head.width, navigator->head.height}, image);
        navigator->shownSize = PanePoint{shown.width, shown.height};
        PlaceNavigatorFrame();
    }
    // A host that failed to deliver the image leaves a dialog without preview.
    if (*globals->result != noErr) {
        parameters->useAdvanceState = 0;
        *globals->result = noErr;
    } else {
        RunPreviewFilter(globals, 0);
    }
}

}  // namespace

void InitializeMainDialog(HWND dialog, FilterGlobals* globals) {
    previewProgressWindow = GetDlgItem(dialog, IDC_PROGRESS);
    dialogOpen = true;
    gMainDialog = MainDialogState{};
    gMainDialog.lifeState = 1;
    BuildFolderPaths();
    if (globals == nullptr || globals->filterRecord == nullptr) return;
    gMainDialog.globals = globals;
    FindControls(dialog);
    SaveParameters();
    RedrawItemArea(dialog, IDC_DETAIL_PANE, true);
    AddHintsAndPictures(dialog);
    // Without preview the fields keep their own initial state and the
    // panes stay empty; a value the user sets is still taken.
    if (!PreviewPossible()) return;
    PreparePreview(dialog, globals);
}
