// "Set value": the modal dialog a right click on a spin edit opens, where
// the user types a new value, minimum and maximum for the field.
#pragma once

#include <windows.h>

struct SpinEditRecord;

// Runs the dialog over the field's window; returns 1 (OK) or 2 (Cancel), or
// -1 when the dialog could not be made. On OK the field takes the new range
// and value and its parent gets a posted WM_COMMAND(field id, 0).
INT_PTR RunSetValueDialog(SpinEditRecord* field);

// The dialog procedure; lParam of WM_INITDIALOG is the field's record.
INT_PTR CALLBACK SetValueDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
