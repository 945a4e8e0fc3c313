// Real windows driven in-process under Wine: the toolkit around each test, a
// parent window that records what it hears, scripts run inside modal loops.
#pragma once

#include <gtest/gtest.h>

// commctrl.h needs windows.h first.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <functional>
#include <string>
#include <vector>

struct Command {
    WPARAM wParam;
    LPARAM lParam;
};

// The toolkit set up for this test program (its resources are linked in)
// and a visible top-level parent window at (0, 0) that records every
// WM_COMMAND it gets; the parent and its controls go before the toolkit.
class ToolkitTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
    HWND Parent() const { return parent_; }
    std::vector<Command>& Commands() { return commands_; }

  private:
    HWND parent_ = nullptr;
    std::vector<Command> commands_;
};

void PumpMessages();  // delivers the messages posted so far
void TypeAndLeave(HWND edit, const char* text, HWND nextFocus);
std::string WindowText(HWND window);
std::string ItemText(HWND dialog, int item);
HWND ToolTipOf(HWND tool);  // the tooltip window owned by `tool`, or null

using DialogStep = std::function<void(HWND dialog)>;
// Calls `open`, which shows a modal dialog or message box, and runs the
// steps one per timer tick inside its message loop. A window still open well
// after the last step is ended with -2 and fails the test.
INT_PTR RunModal(const std::function<INT_PTR()>& open, std::vector<DialogStep> steps);
void ClickButton(HWND dialog, int item);
// A key pressed and released in the focused item, through the message queue,
// so that the dialog's keyboard handling sees it.
void PostKey(HWND dialog, WPARAM virtualKey);
