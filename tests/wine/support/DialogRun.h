// Runs the module's main dialog through the test host and drives it from
// inside its own modal loop: each step is one timer tick, and the last step
// must end the dialog (OK, Cancel, or a right click on the detail pane).
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "GuiTestSupport.h"
#include "controls/SpinEdit.h"
#include "dialog/MainDialogIds.h"
#include "dialog/PreviewPane.h"
#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"

class DialogRun {
  public:
    explicit DialogRun(const char* modulePath = QUORVEX_MODULE_PATH);
    ~DialogRun();
    DialogRun(const DialogRun&) = delete;
    DialogRun& operator=(const DialogRun&) = delete;

    testhost::TestHost host;

    // Gives the pane made for `itemId` this client size instead of the
    // template's.
    void SizePane(int itemId, SIZE size) { paneSizes_.push_back({itemId, size}); }

    // Calls the parameters selector (once) and returns the record, for the
    // test to set before the dialog opens. Set the host's image before.
    FilterParameters& Record();

    // Runs prepare, start (with the dialog and the steps), continue and
    // finish.
    testhost::RunReport Run(std::vector<DialogStep> steps);

    // The parameters record as it was when the dialog's controls were made.
    const FilterParameters& RecordAtOpen() const { return *recordAtOpen_; }

  private:
    static LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK Tick(HWND dialog, UINT message, UINT_PTR timer, DWORD time);
    void OnCreate(HWND window);

    std::vector<std::pair<int, SIZE>> paneSizes_;
    std::vector<DialogStep> steps_;
    size_t nextStep_ = 0;
    bool stepRunning_ = false;
    bool parametersCalled_ = false;
    std::optional<FilterParameters> recordAtOpen_;
    HHOOK hook_ = nullptr;
};

// The dialog's parts as the module keeps them.
PreviewPaneRecord* PaneOf(HWND dialog, int itemId);
SpinEditRecord* FieldOf(HWND dialog, int itemId);

// A command as the dialog's controls send it (notification code 0).
void SendCommand(HWND dialog, int itemId);
// Types a value into a field's edit box and leaves it, as a user does.
void TypeValue(HWND dialog, int itemId, const char* text);
// Ends a box opened over the dialog with OK from its own message loop.
void PressOkSoon(HWND box);
// A left drag on a pane from one client point to another, in one move.
void DragPane(HWND dialog, int itemId, POINT from, POINT to);
