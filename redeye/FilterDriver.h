// The filtering driver: the one routine that changes the host's pixels.
#pragma once

#include "plugin/FilterGlobals.h"

// Filters the area the host delivered (a real run) or the visible part of
// the preview (while the main dialog is open). The flag is not used.
void RunFilter(FilterGlobals* globals, int flag);
// Runs RunFilter for the dialog's preview when whole-image mode is on.
void RunPreviewFilter(FilterGlobals* globals, int flag);
// Gives back the buffers the preview runs keep while the dialog is open.
void ReleasePreviewBuffers();
