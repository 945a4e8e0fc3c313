#include "controls/Toolkit.h"

#include <commctrl.h>

#include <cstring>

#include "controls/ControlFramework.h"
#include "controls/PlainControls.h"
#include "controls/PreviewPaneClass.h"
#include "controls/Slider.h"
#include "controls/SpinEdit.h"
#include "plugin/FilterGlobals.h"

HFONT ControlFont = nullptr;
RGBBytes FaceColor = {0, 0, 0};
HBRUSH FaceBrush = nullptr;

namespace {

struct ToolkitClass {
    const char* name;
    LPCSTR cursor;
    WNDPROC windowProc;
};

// Registration order, which is also the order of unregistration.
const ToolkitClass kToolkitClasses[] = {
    {kRotorClassName, IDC_ARROW, PlainControlWindowProc},
    {kSliderClassName, IDC_ARROW, SliderWindowProc},
    {kPreviewPaneClassName, IDC_SIZEALL, PreviewPaneWindowProc},
    {kColorContainerClassName, IDC_ARROW, PlainControlWindowProc},
    {kSpinEditClassName, IDC_ARROW, SpinEditWindowProc},
};

HINSTANCE ModuleInstance() { return static_cast<HINSTANCE>(gModuleInstance); }

HFONT CreateControlFont() {
    LOGFONTA font = {};
    font.lfHeight = 12;
    font.lfWeight = FW_BOLD;
    font.lfCharSet = ANSI_CHARSET;
    font.lfOutPrecision = OUT_DEFAULT_PRECIS;
    font.lfClipPrecision = CLIP_DEFAULT_PRECIS;
    font.lfQuality = PROOF_QUALITY;
    font.lfPitchAndFamily = DEFAULT_PITCH | FF_DONTCARE;
    std::strcpy(font.lfFaceName, "Arial");
    return CreateFontIndirectA(&font);
}

}  // namespace

void SetUpControlToolkit() {
    ControlFont = CreateControlFont();
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    FaceColor = {GetRValue(face), GetGValue(face), GetBValue(face)};
    FaceBrush = CreateSolidBrush(RGB(FaceColor.red, FaceColor.green, FaceColor.blue));
    INITCOMMONCONTROLSEX commonControls = {sizeof commonControls, 0xFF};
    InitCommonControlsEx(&commonControls);
    for (const ToolkitClass& toolkitClass : kToolkitClasses) {
        RegisterControlClass(ModuleInstance(), toolkitClass.name, toolkitClass.cursor,
                             toolkitClass.windowProc);
    }
}

void TearDownControlToolkit() {
    // The brush goes before the classes that name it as their background.
    // Unregistering a class also deletes its background brush; by then the
    // handle is already invalid, so that second deletion does nothing.
    DeleteObject(FaceBrush);
    FaceBrush = nullptr;
    for (const ToolkitClass& toolkitClass : kToolkitClasses) {
        UnregisterClassA(toolkitClass.name, ModuleInstance());
    }
    DeleteObject(ControlFont);
    ControlFont = nullptr;
}
