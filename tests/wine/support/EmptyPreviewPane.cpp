// The preview pane's class for the toolkit tests, which show no preview (the
// real pane lives with the filter dialog).
#include "controls/PreviewPaneClass.h"

LRESULT CALLBACK PreviewPaneWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}
