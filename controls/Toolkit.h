// The toolkit's shared drawing objects and its set-up and tear-down around
// a dialog that uses the " CPP" controls.
#pragma once

#include <windows.h>

#include <cstdint>

struct RGBBytes {
    uint8_t red;
    uint8_t green;
    uint8_t blue;
};

// Bold 12-pixel Arial given to the edit boxes of spin edits.
extern HFONT ControlFont;
// The button-face colour, read at set-up.
extern RGBBytes FaceColor;
// Background brush of every toolkit class, in FaceColor.
extern HBRUSH FaceBrush;

// Creates ControlFont, FaceColor and FaceBrush, initialises the common
// controls and registers "Rotor CPP", "Mac Slider CPP", "Preview Contaner
// CPP", "Contaner Color CPP" and "Spin Edit CPP" with gModuleInstance.
void SetUpControlToolkit();

// Deletes FaceBrush, unregisters the five classes in the same order and
// deletes ControlFont. Every window of these classes must be gone by then.
void TearDownControlToolkit();
