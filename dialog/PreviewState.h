// Module-wide state of the main dialog that the filtering driver and the
// preview panes share while the dialog is open.
#pragma once

#include <cstdint>

struct PreviewPaneRecord;

// True exactly while the main dialog exists: every run then is a preview run.
extern bool dialogOpen;
// Full-scale previews are not offered: this stays false, so a preview run
// always works on the detail pane's visible size.
extern bool previewFullScale;
// Visible size of the detail pane, in pane pixels.
extern int32_t previewPaneWidth;
extern int32_t previewPaneHeight;
// The window a preview run reports completion to (a progress bar's
// set-position message). The dialog has no such item, so it stays null.
extern void* previewProgressWindow;
// Sampling scale of the preview pictures; a real run resets it to 1.
extern float sharedPreviewScale;
// The main dialog's detail pane while the dialog exists; the navigator
// sizes its frame from it.
extern PreviewPaneRecord* activeDetailPane;
