// The main filter dialog.
#pragma once

#include <windows.h>

#include "plugin/FilterGlobals.h"

// Runs the modal dialog over the host's window; true when the user chose OK.
bool RunFilterDialog(FilterGlobals* globals);

// Dialog procedure of the main filter dialog, exported undecorated.
extern "C" INT_PTR CALLBACK DissolveProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
