// The preview pane class that the toolkit registers with its own classes.
#pragma once

#include <windows.h>

constexpr char kPreviewPaneClassName[] = "Preview Contaner CPP";

// Window procedure of "Preview Contaner CPP", defined with the pane in
// dialog/PreviewPane.cpp.
LRESULT CALLBACK PreviewPaneWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
