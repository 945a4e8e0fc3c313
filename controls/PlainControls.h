// Toolkit classes that are registered with the others but not placed in the
// filter dialog: their windows keep a plain record and default behaviour.
#pragma once

#include <windows.h>

#include "controls/ControlRecord.h"

constexpr char kRotorClassName[] = "Rotor CPP";
constexpr char kColorContainerClassName[] = "Contaner Color CPP";

struct PlainControlRecord {
    ControlRecord head;
};

// Window procedure of "Rotor CPP" and "Contaner Color CPP".
LRESULT CALLBACK PlainControlWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Creation helpers; *record receives the new control's record.
HWND CreateRotor(HWND parent, int id, int x, int y, int width, int height,
                 PlainControlRecord** record);
HWND CreateColorContainer(HWND parent, int id, int x, int y, int width, int height,
                          PlainControlRecord** record);
