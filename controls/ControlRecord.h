// The common head of every toolkit control's state record, and the part of
// its destruction that all control kinds share.
#pragma once

#include <windows.h>

#include <cstdint>

// A control's record belongs to its window: it is made at WM_CREATE and
// freed at WM_NCDESTROY. Each control kind puts this head first in its own
// record. The spare words serve the skinned controls; the classes here leave
// them at their initial values.
struct ControlRecord {
    void* pixelBuffer = nullptr;  // VirtualAlloc'ed; released with the record
    HWND window = nullptr;
    int32_t spare1 = 0;
    int32_t controlId = 0;  // GWL_ID of the window, i.e. the dialog item id
    int32_t spare2 = 0;
    int32_t originX = 0;  // position in the parent, where the creator knows it
    int32_t originY = 0;
    int32_t width = 0;  // client size at creation
    int32_t height = 0;
    HGDIOBJ ownedObject = nullptr;  // deleted with the record when ownsObject is set
    uint8_t spareFlags[3] = {0, 0, 0};
    int32_t spare3 = 1;
    int32_t ownsObject = 0;
    int32_t spare4 = -1;
    int32_t spare5 = 0;
};

// Releases the pixel buffer and, when owned, the GDI object. Every control
// kind runs this last, after freeing its own resources.
void ReleaseControlRecord(ControlRecord* record);
