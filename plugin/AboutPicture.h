// The picture of the About box, drawn in code: a close-up of an eye whose
// pupil glows red on the "Before" half and is dark on the "After" half.
#pragma once

#include <windows.h>

// A new bitmap of the given size (owned by the caller), or null.
HBITMAP CreateAboutPicture(int width, int height);
