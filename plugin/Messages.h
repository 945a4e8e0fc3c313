// Messages to the user: string-table alerts with "^0", "^1", "^2"
// placeholders, the About box and the "Notice" dialog. Texts travel as
// length-prefixed (Pascal) strings of at most 255 characters.
#pragma once

#include <windows.h>

#include "hostapi/HostTypes.h"

// The maker's web site, opened from the About box.
extern const char kMakerWebSite[];

// Pascal string from a C string, cut to 255 characters (null gives "").
void CToPString(const char* text, Str255 pstring);
// C string (up to 256 bytes with the terminator) from a Pascal string.
void PToCString(const uint8_t* pstring, char* text);

// Replaces each "^0", "^1", "^2" in the message by the first, second and
// third text (a null text counts as empty); the result is cut at 255.
void SubstitutePlaceholders(Str255 message, const uint8_t* text0, const uint8_t* text1,
                            const uint8_t* text2);

// Shows string `stringId` of the module (placeholders ^1 and ^2 filled with
// text1 and text2) in a message box with the exclamation icon and OK.
// Returns the message box result; does nothing and returns 0 when not
// enabled. A missing string shows an empty message.
int ShowAlert(HWND owner, bool enabled, int stringId, const uint8_t* text1, const uint8_t* text2);
// The same with the stop icon when `icon` is 1.
int ShowAlertIcon(HWND owner, bool enabled, int stringId, const uint8_t* text1,
                  const uint8_t* text2, int icon);

// Modal About box (template 16103).
void ShowAboutBox(HWND owner);
INT_PTR CALLBACK AboutDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Modal "Notice" that a selection is needed (template 122); the owner may be null.
void ShowNotice(HWND owner);
INT_PTR CALLBACK NoticeDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
