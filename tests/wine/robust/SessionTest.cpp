// A long session of runs of every kind in one host process leaves no GDI
// objects, windows, kernel handles, memory or host handles behind. (The
// dialog opened and closed many times is the dialog tests' DialogLifecycle.)
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Portrait.h"
#include "ResourceCounts.h"
#include "testhost/TestHost.h"

namespace {

TEST(LongSession, RunsOfEveryKindLeaveNothingBehind) {
    testhost::TestHost host;
    ASSERT_TRUE(host.Load(QUORVEX_MODULE_PATH)) << host.LoadError();
    // Selection in whole-image mode, selection in bands, no selection (the
    // notice), grey (two message boxes), and a run the user aborts.
    Portrait portrait = MakePortrait(64, 48);
    testhost::Image plain = portrait.image, grey(64, 48, 1);
    SelectEyes(portrait);
    grey.FillNoise(3);
    auto run = [&](int i) {
        const int kind = i % 5;
        host.image() = kind == 2 ? plain : kind == 3 ? grey : portrait.image;
        host.settings.advanceState = kind != 1;
        host.settings.maxSpace = kind == 1 ? 4000 : 1 << 24;
        host.settings.abortFromPoll = kind == 4 ? 1 : 0;
        EXPECT_EQ(host.Run().result, kind == 4 ? userCanceledErr : noErr) << "run " << i;
        EXPECT_EQ(host.log().faults, std::vector<std::string>{}) << "run " << i;
        host.ClearLog();  // it grows with every call
    };
    // The first runs fill the caches Wine fills on first use; what a run may
    // keep after that (heap pages kept for reuse) is far below one object or
    // working buffer per run.
    for (int i = 0; i < 5; ++i) run(i);
    const robust::ResourceCounts before = robust::CountResources();
    for (int i = 0; i < 60; ++i) run(i);
    const robust::ResourceCounts after = robust::CountResources();
    SCOPED_TRACE("60 runs: before " + Describe(before) + "; after " + Describe(after));
    ASSERT_GT(before.gdiObjects * before.kernelHandles * before.privateBytes, 0u)
        << "a count of zero would pass every comparison";
    EXPECT_LE(after.gdiObjects, before.gdiObjects + 4);
    EXPECT_LE(after.windows, before.windows + 1);
    EXPECT_LE(after.kernelHandles, before.kernelHandles + 4);
    EXPECT_LE(after.privateBytes, before.privateBytes + 256 * 1024);
    EXPECT_TRUE(host.LeakedHandles().empty());
}

}  // namespace
