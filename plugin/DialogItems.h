// One-line helpers over the items of a dialog, each taking the dialog window
// and an item id.
#pragma once

#include <windows.h>

#include "hostapi/HostTypes.h"

// Id of the first checked button in first..last, or 0.
int GetRadioGroupState(HWND dialog, int first, int last);
// Makes the item the default push button and gives it the focus.
void PerformControlClick(HWND dialog, int item);
// Selects all text of an edit item and gives it the focus.
void SelectTextItem(HWND dialog, int item);

void ShowDialogItem(HWND dialog, int item);
void HideDialogItem(HWND dialog, int item);
void ShowHideItem(HWND dialog, int item, bool show);

void EnableControl(HWND dialog, int item);
void DisableControl(HWND dialog, int item);
void SetControlEnabled(HWND dialog, int item, bool enabled);

// Inverts a check box; returns the new state (true: checked).
bool ToggleCheckBoxState(HWND dialog, int item);

// The item's text (at most 255 characters) as a Pascal string.
void FetchText(HWND dialog, int item, Str255 text);
// Sets the item's text from a Pascal string, cut to 254 characters.
void StuffText(HWND dialog, int item, const uint8_t* text);

// Centres a window over its parent's client area, or over the desktop when
// it has no parent.
void CenterDialog(HWND window);
