// Long sessions in one host process leave no GDI objects, windows, kernel
// handles or memory behind.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "Portrait.h"
#include "ResourceCounts.h"
#include "dialog/MainDialogIds.h"
#include "testhost/TestHost.h"

namespace {

class LongSession : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
        SelectEyes(portrait);
    }
    void TearDown() override { EXPECT_TRUE(host.LeakedHandles().empty()); }

    // Runs `cycles` times after a warm-up and compares the counts. What a
    // run may leave once (caches Wine fills on first use, heap pages kept
    // for reuse) is far below one object or working buffer per cycle.
    void ExpectNoGrowth(int cycles, const std::function<void(int)>& cycle) {
        auto checked = [&](int i) {
            cycle(i);
            EXPECT_EQ(host.log().faults, std::vector<std::string>{}) << "cycle " << i;
            host.ClearLog();  // it grows with every call
        };
        for (int i = 0; i < 5; ++i) checked(i);
        const robust::ResourceCounts before = robust::CountResources();
        for (int i = 0; i < cycles; ++i) checked(i);
        const robust::ResourceCounts after = robust::CountResources();
        std::printf("%d cycles: before %s; after %s\n", cycles, Describe(before).c_str(),
                    Describe(after).c_str());
        ASSERT_GT(before.gdiObjects * before.kernelHandles * before.privateBytes, 0u)
            << "a count of zero would pass every comparison";
        EXPECT_LE(after.gdiObjects, before.gdiObjects + 4);
        EXPECT_LE(after.windows, before.windows + 1);
        EXPECT_LE(after.kernelHandles, before.kernelHandles + 4);
        EXPECT_LE(after.privateBytes, before.privateBytes + 256 * 1024);
    }

    Portrait portrait = MakePortrait(64, 48);
    testhost::TestHost host;
};

TEST_F(LongSession, RunsOfEveryKindLeaveNothingBehind) {
    // Selection in whole-image mode, selection in bands, no selection (the
    // notice), grey (two message boxes), and a run the user aborts.
    testhost::Image plain = portrait.image, grey(64, 48, 1);
    plain.ClearMask();
    grey.FillNoise(3);
    ExpectNoGrowth(60, [&](int run) {
        const int kind = run % 5;
        host.image() = kind == 2 ? plain : kind == 3 ? grey : portrait.image;
        host.settings.advanceState = kind != 1;
        host.settings.maxSpace = kind == 1 ? 4000 : 1 << 24;
        host.settings.abortFromPoll = kind == 4 ? 1 : 0;
        EXPECT_EQ(host.Run().result, kind == 4 ? userCanceledErr : noErr) << "run " << run;
    });
}

TEST_F(LongSession, DialogsOpenedAndClosedLeaveNothingBehind) {
    host.image() = portrait.image;
    host.settings.playInfo = plugInDialogDisplay;
    int shown = 0;  // every other dialog is cancelled, the others confirmed
    host.OnDialog(IDC_DETAIL_PANE, [&shown](HWND dialog) {
        PostMessageA(dialog, WM_COMMAND, ++shown % 2 == 0 ? IDCANCEL : IDOK, 0);
    });
    ExpectNoGrowth(20, [&](int run) {
        const OSErr result = host.Run().result;
        EXPECT_TRUE(result == noErr || result == userCanceledErr) << run << ": " << result;
    });
    EXPECT_EQ(shown, 25);
}

}  // namespace
