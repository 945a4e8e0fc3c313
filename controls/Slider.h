// "Mac Slider CPP": a horizontal or vertical value slider with a triangular
// thumb. Dragging it reports to the parent with WM_HSCROLL and WM_COMMAND.
#pragma once

#include <windows.h>

#include <cstdint>

#include "controls/ControlRecord.h"

constexpr char kSliderClassName[] = "Mac Slider CPP";

struct SliderRecord {
    ControlRecord head;
    float value = 0.0f;
    float minimum = 0.0f;  // at the left (or top) end
    float maximum = 100.0f;
    float increment = 1.0f;
    float lowerLimit = 0.0f;  // used only while limiting is on
    float upperLimit = 0.0f;
    uint8_t vertical = 0;  // a vertical slider grows downward
    uint8_t limiting = 0;
    uint8_t notifyWhileDragging = 0;  // WM_COMMAND(id, 1) on every drag move
    uint8_t forwardRightClick = 0;    // WM_RBUTTONDOWN(0, 0) to the parent
};

// Stores the value, held within the limits when limiting is on (not within
// the range), and repaints.
void SliderSetValue(SliderRecord* slider, float value);
void SliderSetRange(SliderRecord* slider, float minimum, float maximum);
// Turns limiting on or off; the limits are stored, and the slider
// repainted, only when it is turned on.
void SliderSetLimits(SliderRecord* slider, float lowerLimit, float upperLimit, bool on);

// The value under a client point (x and y as in a mouse message's lParam),
// within the range and, when limiting is on, within the limits.
float SliderValueAtPoint(const SliderRecord* slider, LPARAM point);

// Pixel position of a value along the track: 5 pixels of margin at each end.
int SliderPixelPosition(const SliderRecord* slider, float value);

// RedrawWindow of the whole slider, painted at once.
void RepaintSlider(const SliderRecord* slider);
// WM_PAINT: the double-buffered drawing of limit marks, track and thumb.
void PaintSlider(const SliderRecord* slider);

LRESULT CALLBACK SliderWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

HWND CreateSlider(HWND parent, int id, int x, int y, int width, int height, SliderRecord** record);
