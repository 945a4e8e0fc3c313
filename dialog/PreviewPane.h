// "Preview Contaner CPP": the image pane of the main dialog. As the
// navigator it shows the whole image reduced with a frame round the part in
// view, which the user drags; as the detail pane it shows the corrected
// preview, which the user drags to scroll. The pane only draws and reports
// (WM_COMMAND with its id); the dialog turns the report into a new view.
#pragma once

#include <windows.h>

#include <cstdint>

#include "controls/ControlRecord.h"
#include "plugin/FilterGlobals.h"

enum PaneMode : uint8_t {
    kPaneNavigator = 0,
    kPaneDetail = 1,              // the picture is blitted at client size
    kPaneDetailAtBitmapSize = 2,  // the picture is blitted at its own size
};

struct PanePoint {
    int32_t x = 0;
    int32_t y = 0;
};

// Header of the pane's 24-bit picture: the information header and room for
// a full colour table, 1064 bytes in all.
struct PictureHeader {
    BITMAPINFOHEADER info;
    RGBQUAD colors[256];
};

struct PreviewPaneRecord {
    ControlRecord head;
    int32_t overlayOn = 0;  // 1: paint overlayMap over the picture (detail modes)
    FilterGlobals* globals = nullptr;
    // Value controls (spin edits, or sliders with linkedAreSliders) that
    // receive a point picked with the right button.
    ControlRecord* linkedX = nullptr;
    ControlRecord* linkedY = nullptr;
    PanePoint dragStart;    // last mouse position of a left drag
    PanePoint dragOffset;   // offset of the drag in progress
    PanePoint dragCurrent;  // mouse position of the drag in progress
    PanePoint viewShift;    // left by finished drags; read and reset by the dialog
    PanePoint imageOrigin;  // where the picture's top-left corner is drawn
    // The full image in image pixels; in the navigator, the frame's size,
    // refreshed at every paint.
    PanePoint imageSize;
    PanePoint framePos;     // navigator: the frame's top-left corner
    PanePoint bitmapSize;   // size of the built picture
    PanePoint shownSize;    // size of the picture shown
    float maxScale = 1.0f;  // navigator: the largest zoom divisor
    // Client width x height bytes: 0 none, 1..254 veil strength, 255 solid.
    uint8_t* overlayMap = nullptr;
    uint8_t* sourceBuffers[2] = {nullptr, nullptr};
    uint8_t linkedAreSliders = 0;
    HBITMAP bitmap = nullptr;
    uint8_t mode = kPaneDetail;
    uint8_t* pixels = nullptr;  // the picture's rows, bottom-up, blue-green-red
    PictureHeader header = {};
};

// Invalidates the whole pane and paints it at once.
void RedrawPane(const PreviewPaneRecord* pane);

// The pane's record when `window` is a preview pane, otherwise null.
PreviewPaneRecord* FindPreviewPane(HWND window);

// WM_PAINT of the pane.
void PaintPreviewPane(PreviewPaneRecord* pane, HWND window);
