// Helpers for tests that drive real windows in-process under Wine: the
// toolkit around each test, a parent window that records what it hears,
// scripts run inside modal loops, and screenshots.
#pragma once

#include <gtest/gtest.h>

// commctrl.h needs windows.h first.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct Command {
    WPARAM wParam;
    LPARAM lParam;
};

// A visible top-level window at (0, 0) that records every WM_COMMAND it gets.
class TestParent {
  public:
    TestParent(int width = 320, int height = 200);
    ~TestParent();
    HWND window() const { return window_; }
    std::vector<Command> commands;
    TestParent(const TestParent&) = delete;
    TestParent& operator=(const TestParent&) = delete;

  private:
    HWND window_;
};

// Module instance = this test program (its resources are linked in). Each
// test gets the control toolkit and a parent window; the parent and every
// control in it are gone before the toolkit is torn down.
class ToolkitTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
    HWND Parent() const { return parent_->window(); }
    std::vector<Command>& Commands() { return parent_->commands; }

  private:
    std::unique_ptr<TestParent> parent_;
};

// Delivers the messages posted so far.
void PumpMessages();

// Types text into an edit window and moves the focus away from it, as a user
// who types and then clicks elsewhere.
void TypeAndLeave(HWND edit, const char* text, HWND nextFocus);

std::string WindowText(HWND window);
std::string ItemText(HWND dialog, int item);

// Text of a message box (its longest static text).
std::string MessageBoxText(HWND box);

using DialogStep = std::function<void(HWND dialog)>;

// Calls `open`, which shows a modal dialog or message box on this thread,
// and runs the steps one per timer tick inside that window's own message
// loop. A window still open well after the last step is ended with -2 and
// the test fails. Returns what `open` returned.
INT_PTR RunModal(const std::function<INT_PTR()>& open, std::vector<DialogStep> steps);

// Clicks a push button the way the mouse does (the button takes the focus first).
void ClickButton(HWND dialog, int item);
// Presses and releases a key in the dialog's focused item (or the dialog),
// through the message queue, so that the dialog's keyboard handling sees it.
void PostKey(HWND dialog, WPARAM virtualKey);

// The tooltip window that has `tool` as its tool, or null.
HWND ToolTipOf(HWND tool);

// Saves the whole window, painted now, as QUORVEX_ARTIFACT_DIR\<name>.png.
bool SaveScreenshot(HWND window, const char* name);
