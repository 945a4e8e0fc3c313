// "Spin Edit CPP": a numeric field made of an edit box (child id 1), up-down
// arrows (id 2) and a "Mac Slider CPP" strip underneath (id 3). It keeps its
// value as a float within a range and tells its parent of every change with
// WM_COMMAND(control id, ...). A right click opens the "Set value" dialog.
#pragma once

#include <windows.h>

#include <cstdint>

#include "controls/ControlFramework.h"
#include "controls/ControlRecord.h"
#include "controls/Slider.h"

constexpr char kSpinEditClassName[] = "Spin Edit CPP";

enum SpinEditChild {
    kSpinEditBoxId = 1,
    kSpinEditArrowsId = 2,
    kSpinEditSliderId = 3,
};

struct SpinEditRecord {
    ControlRecord head;
    char valueName[64] = {};  // shown by "Set value"
    uint8_t integerMode = 0;  // 0: text "%0.2f"; 1: whole numbers
    HWND editBox = nullptr;
    HWND arrows = nullptr;
    HWND slider = nullptr;
    float value = 0.0f;
    float minimum = 0.0f;
    float maximum = 100.0f;
    float increment = 1.0f;
    float recommendedMaximum = 100.0f;  // shown by "Set value"
    float recommendedMinimum = 0.0f;
    SliderRecord* sliderRecord = nullptr;
    // Set: each arrow step commits and notifies. Clear: arrow steps are
    // silent and the value is committed when the arrow button is released.
    uint8_t notifyEveryStep = 1;
};

// Stores the range in the record and the slider and passes it to the arrows
// (as 16-bit numbers, cut to their low 16 bits).
void SpinEditSetRange(SpinEditRecord* field, float minimum, float maximum);
// Shows the value in the edit box, the arrows and the slider. A value
// outside the range widens the range rather than being refused.
void SpinEditSetValue(SpinEditRecord* field, float value);
// The same hint on the edit box, the arrows and the slider.
void SpinEditSetHint(SpinEditRecord* field, const char* text);
// Finds the spin edit that is item `itemId` of the dialog and gives it its
// value name, recommended range (= the range), range and hint. Null when
// the item is not a spin edit.
SpinEditRecord* SpinEditBind(HWND dialog, int itemId, float minimum, float maximum,
                             const char* hint, const char* name);

extern const ControlKind kSpinEditKind;
LRESULT CALLBACK SpinEditWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

HWND CreateSpinEdit(HWND parent, int id, int x, int y, int width, int height,
                    SpinEditRecord** record);
