// Two hundred rounds of toolkit set-up, a spin edit made, painted, given
// hints, opened in "Set value" now and then and destroyed with its parent
// window, and toolkit tear-down leave the process with the GDI objects,
// windows, handles and memory it had before.
#include "GuiTestSupport.h"
#include "ResourceCounts.h"
#include "controls/SetValueDialog.h"
#include "controls/SpinEdit.h"
#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

namespace {

void Round(bool openSetValue) {
    SetUpControlToolkit();
    HWND parent = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 320, 200,
                                  nullptr, nullptr, nullptr, nullptr);
    SpinEditRecord* field = nullptr;
    CreateSpinEdit(parent, 1076, 10, 10, 90, 48, &field);
    ASSERT_NE(field, nullptr);
    SpinEditSetRange(field, 0.0f, 100.0f);
    SpinEditSetHint(field, "Red Tolerance");
    SpinEditSetValue(field, 33.0f);
    UpdateWindow(parent);
    if (openSetValue) {
        RunModal([&] { return RunSetValueDialog(field); },
                 {[](HWND dialog) { ClickButton(dialog, IDOK); }});
    }
    // The field goes with its parent, as in the filter dialog: the hints'
    // tooltips, owned by the top-level window, go first.
    DestroyWindow(parent);
    PumpMessages();
    TearDownControlToolkit();
}

TEST(ToolkitLeaks, TwoHundredRoundsLeaveObjectsWindowsHandlesAndMemoryAsTheyWere) {
    gModuleInstance = GetModuleHandleA(nullptr);
    for (int i = 0; i < 10; ++i) Round(true);
    const robust::ResourceCounts before = robust::CountResources();
    for (int i = 0; i < 200; ++i) Round(i % 10 == 0);
    const robust::ResourceCounts after = robust::CountResources();
    std::cout << robust::Describe(before) << " -> " << robust::Describe(after) << "\n";
    EXPECT_GT(before.gdiObjects, 0u) << "the GDI count must see the stock objects";
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.kernelHandles, before.kernelHandles);
    EXPECT_LE(after.privateBytes, before.privateBytes + 16 * 1024);
}

}  // namespace
