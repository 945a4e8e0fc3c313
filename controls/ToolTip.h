// Balloon hints for windows of the toolkit and its dialogs.
#pragma once

#include <windows.h>

// Gives the window a tooltip of its own with the text (and, when `title` is
// not null, a title with the information icon). Tips wider than 100 pixels
// wrap. The tooltip window goes with its owner; a null window or text does
// nothing.
void AddToolTip(HWND window, const char* text, const char* title);
