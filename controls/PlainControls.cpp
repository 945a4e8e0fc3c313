#include "controls/PlainControls.h"

#include "controls/ControlFramework.h"

namespace {

LRESULT HandlePlainControl(ControlRecord*, HWND window, UINT message, WPARAM wParam,
                           LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}

const ControlKind kPlainControlKind = {NewControlRecord<PlainControlRecord>,
                                       DeleteControlRecord<PlainControlRecord>, HandlePlainControl};

}  // namespace

LRESULT CALLBACK PlainControlWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ControlWindowProc(kPlainControlKind, window, message, wParam, lParam);
}

HWND CreateRotor(HWND parent, int id, int x, int y, int width, int height,
                 PlainControlRecord** record) {
    return CreateControl(0, kRotorClassName, x, y, width, height, parent, id, record);
}

HWND CreateColorContainer(HWND parent, int id, int x, int y, int width, int height,
                          PlainControlRecord** record) {
    return CreateControl(0, kColorContainerClassName, x, y, width, height, parent, id, record);
}
