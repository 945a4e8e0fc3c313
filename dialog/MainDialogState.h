// What the main dialog keeps while it exists, and the steps its handlers
// share: running the preview and redrawing the panes.
#pragma once

#include <windows.h>

#include <cstdint>

#include "controls/SpinEdit.h"
#include "dialog/PreviewPane.h"
#include "plugin/FilterParameters.h"

constexpr size_t kDialogPathLength = 1100;

struct MainDialogState {
    FilterGlobals* globals = nullptr;
    PreviewPaneRecord* detailPane = nullptr;
    PreviewPaneRecord* navigatorPane = nullptr;
    SpinEditRecord* toleranceField = nullptr;
    SpinEditRecord* darkeningField = nullptr;
    // The parameters record as it was when the dialog opened, for Cancel.
    void* savedParameters = nullptr;
    int32_t savedSize = 0;
    bool firstPaintPending = false;
    int32_t lifeState = 0;  // 1 from initialisation, 2 after destruction
    char documentationPath[kDialogPathLength] = {};
    char savesFolderPath[kDialogPathLength] = {};
};

extern MainDialogState gMainDialog;

FilterParameters* DialogParameters();
// The host offers what a whole-image preview needs.
bool PreviewPossible();

void EnableItem(HWND dialog, int itemId, bool enable);
// Invalidates the part of the dialog that the item covers and paints it at once.
void RedrawItemArea(HWND dialog, int itemId, bool erase);
// Puts the navigator's frame where the view is.
void PlaceNavigatorFrame();
// Runs the preview (when possible) and rebuilds the detail picture.
void RebuildPreview();
// RebuildPreview, then repaints the detail pane.
void RefreshDetailPane(HWND dialog);

// WM_INITDIALOG: fetches the image, fits the zoom to the selection and runs
// the first preview.
void InitializeMainDialog(HWND dialog, FilterGlobals* globals);
// WM_COMMAND.
void OnMainDialogCommand(HWND dialog, WPARAM wParam);
// Commands 1103 and 1104.
void ZoomPreview(HWND dialog, int itemId);
// Opens a file or web page with the shell's "open" verb.
void OpenWithShell(HWND dialog, const char* target);
