// Long sessions in one host process: a thousand runs of the filter, and a
// hundred openings of the main dialog, must leave no GDI objects, windows,
// kernel handles or memory behind.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "dialog/MainDialogIds.h"
#include "testhost/TestHost.h"
#include "ResourceCounts.h"

namespace {

using robust::CountResources;
using robust::ResourceCounts;
using testhost::Image;
using testhost::TestHost;

// What a run may leave once: caches Wine fills on first use, heap pages
// kept for reuse. A leak of one object or one working buffer per run is far
// above these.
constexpr size_t kGdiSlack = 4;
constexpr size_t kWindowSlack = 1;
constexpr size_t kHandleSlack = 4;
constexpr size_t kMemorySlack = 512 * 1024;

Image Portrait(int planes) {
    Image image(64, 48, planes);
    image.FillNoise(3);
    const std::vector<uint16_t> red(static_cast<size_t>(planes), 40);
    std::vector<uint16_t> pupil = red;
    pupil[0] = 210;
    image.FillRect(20, 18, 8, 8, pupil);
    image.FillRect(40, 18, 8, 8, pupil);
    return image;
}

class LongSession : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError(); }
    void TearDown() override { EXPECT_TRUE(host.LeakedHandles().empty()); }

    // Runs `cycles` times after a warm-up and compares the counts. The
    // host's log is checked and emptied after every cycle: it grows with
    // every call.
    void ExpectNoGrowth(int cycles, const std::function<void(int)>& cycle) {
        auto checked = [&](int i) {
            cycle(i);
            EXPECT_EQ(host.log().faults, std::vector<std::string>{}) << "cycle " << i;
            host.ClearLog();
        };
        for (int i = 0; i < 10; ++i) checked(i);
        const ResourceCounts before = CountResources();
        for (int i = 0; i < cycles; ++i) checked(i);
        const ResourceCounts after = CountResources();
        std::printf("%d cycles: before %s; after %s\n", cycles, Describe(before).c_str(),
                    Describe(after).c_str());
        // Counts of zero would make every comparison below pass.
        ASSERT_GT(before.gdiObjects, 0u);
        ASSERT_GT(before.kernelHandles, 0u);
        ASSERT_GT(before.privateBytes, 0u);
        EXPECT_LE(after.gdiObjects, before.gdiObjects + kGdiSlack);
        EXPECT_LE(after.windows, before.windows + kWindowSlack);
        EXPECT_LE(after.kernelHandles, before.kernelHandles + kHandleSlack);
        EXPECT_LE(after.privateBytes, before.privateBytes + kMemorySlack);
    }

    TestHost host;
};

TEST_F(LongSession, AThousandRunsOfEveryKindLeaveNothingBehind) {
    // Selection in whole-image mode, selection in bands, no selection (the
    // notice), grey (two message boxes), and a run the user aborts.
    const Image colour = Portrait(3);
    Image selected = colour;
    selected.SelectRect(16, 14, 36, 16);
    const Image grey = Portrait(1);
    ExpectNoGrowth(1000, [&](int run) {
        const int kind = run % 5;
        host.image() = kind == 2 ? colour : kind == 3 ? grey : selected;
        host.settings.advanceState = kind != 1;
        host.settings.maxSpace = kind == 1 ? 4000 : 1 << 24;
        host.settings.abortFromPoll = kind == 4 ? 1 : 0;
        const testhost::RunReport report = host.Run();
        EXPECT_EQ(report.result, kind == 4 ? userCanceledErr : noErr) << "run " << run;
    });
}

TEST_F(LongSession, AHundredDialogsOpenedAndClosedLeaveNothingBehind) {
    host.image() = Portrait(3);
    host.image().SelectRect(16, 14, 36, 16);
    host.settings.playInfo = plugInDialogDisplay;
    // Every other dialog is cancelled, the others confirmed.
    int shown = 0;
    host.OnDialog(IDC_DETAIL_PANE, [&shown](HWND dialog) {
        PostMessageA(dialog, WM_COMMAND, ++shown % 2 == 0 ? IDCANCEL : IDOK, 0);
    });
    ExpectNoGrowth(100, [&](int run) {
        const testhost::RunReport report = host.Run();
        EXPECT_TRUE(report.result == noErr || report.result == userCanceledErr)
            << "run " << run << ": " << report.result;
    });
    EXPECT_EQ(shown, 110);
}

}  // namespace
