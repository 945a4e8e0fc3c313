// Windows the module opens during a call: message boxes are recorded and
// dismissed, registered dialogs go to the test, and nothing can hang.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "FakeModule.h"

namespace {

using testhost::Image;
using testhost::TestHost;

constexpr int kProbeItem = 1076;

// An in-memory dialog template: caption "Probe", one button with kProbeItem.
std::vector<WORD> ProbeTemplate() {
    std::vector<WORD> t;
    auto dword = [&t](DWORD v) {
        t.push_back(LOWORD(v));
        t.push_back(HIWORD(v));
    };
    auto text = [&t](const wchar_t* s) {
        do t.push_back(static_cast<WORD>(*s));
        while (*s++ != 0);
    };
    dword(WS_POPUP | WS_CAPTION | DS_MODALFRAME);
    dword(0);
    t.insert(t.end(), {1, 0, 0, 120, 60, 0, 0});  // 1 item, position and size, no menu or class
    text(L"Probe");
    if (t.size() % 2 != 0) t.push_back(0);  // items start on a DWORD boundary
    dword(WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON);
    dword(0);
    t.insert(t.end(), {10, 10, 50, 14, static_cast<WORD>(kProbeItem), 0xFFFF, 0x0080});
    text(L"Go");
    t.push_back(0);  // no creation data
    return t;
}

// Ignores every command, so only the watchdog can end it.
INT_PTR CALLBACK StubbornProc(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG || message == WM_COMMAND;
}

INT_PTR ShowProbeDialog(HWND owner, DLGPROC proc) {
    static const std::vector<WORD> dialog = ProbeTemplate();
    return DialogBoxIndirectParamA(GetModuleHandleA(nullptr),
                                   reinterpret_cast<const DLGTEMPLATE*>(dialog.data()), owner, proc,
                                   0);
}

void CALLBACK EndWith42(HWND dialog, UINT, UINT_PTR timer, DWORD) {
    KillTimer(dialog, timer);
    EndDialog(dialog, 42);
}

TEST(HostDialogs, RecordsAndDismissesMessageBoxes) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    std::vector<int> answers;
    UseFakeModule(host, [&answers](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector != filterSelectorStart) return;
        answers.push_back(MessageBoxA(nullptr, "Color mode should be RGB!", "WARNING",
                                      MB_OK | MB_ICONEXCLAMATION));
        answers.push_back(
            MessageBoxA(static_cast<HWND>(r->platformData->hwnd), "Second", "Two", MB_OK));
    });
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_NE(host.window(), nullptr) << "needs a display";
    EXPECT_EQ(answers, (std::vector<int>{IDOK, IDOK}));
    const std::vector<testhost::ShownDialog>& shown = host.log().dialogs;
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].caption, "WARNING");
    EXPECT_EQ(shown[0].texts, std::vector<std::string>{"Color mode should be RGB!"});
    EXPECT_FALSE(shown[0].hasOwner);
    EXPECT_EQ(shown[1].caption, "Two");
    EXPECT_TRUE(shown[1].hasOwner);
}

TEST(HostDialogs, HandsRegisteredDialogsToTheTest) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.OnDialog(kProbeItem, [](HWND dialog) { SetTimer(dialog, 1, 10, EndWith42); });
    INT_PTR answer = 0;
    UseFakeModule(host, [&answer](int16_t selector, FilterRecord*, intptr_t*, int16_t*) {
        if (selector == filterSelectorStart) answer = ShowProbeDialog(nullptr, StubbornProc);
    });
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(answer, 42);
    ASSERT_EQ(host.log().dialogs.size(), 1u);
    EXPECT_TRUE(host.log().dialogs[0].handledByTest);
    EXPECT_EQ(host.log().dialogs[0].buttons, std::vector<std::string>{"Go"});
    EXPECT_TRUE(host.log().faults.empty());
}

TEST(HostDialogs, WatchdogEndsADialogThatIgnoresEveryCommand) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.settings.watchdogSeconds = 1;
    INT_PTR answer = 0;
    UseFakeModule(host, [&answer](int16_t selector, FilterRecord*, intptr_t*, int16_t*) {
        if (selector == filterSelectorStart) answer = ShowProbeDialog(nullptr, StubbornProc);
    });
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(answer, IDCANCEL);
    ASSERT_EQ(host.log().faults.size(), 1u);
    EXPECT_NE(host.log().faults[0].find("watchdog"), std::string::npos);
}

}  // namespace
