// The host's run of the selectors: how the band loop ends, when parameters
// is called, and what an error or an abort does to the run.
#include <gtest/gtest.h>

#include <vector>

#include "FakeModule.h"

namespace {

using testhost::Image;
using testhost::LoopEnd;
using testhost::ParametersCall;
using testhost::TestHost;

const std::vector<int16_t> kFullRun = {filterSelectorParameters, filterSelectorPrepare,
                                       filterSelectorStart, filterSelectorContinue,
                                       filterSelectorFinish};

// Start asks for one band; continue leaves `leftOver` as every rectangle.
void UseOneBandModule(TestHost& host, Rect16 leftOver) {
    UseFakeModule(host, [leftOver](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector == filterSelectorStart) RequestRect16(r, {0, 0, 1, 1});
        if (selector == filterSelectorContinue) RequestRect16(r, leftOver);
    });
}

TEST(HostRun, HostThatLoopsWhileRightIsNonZeroNeedsZeroedRectangles) {
    TestHost host;
    host.image() = Image(8, 8, 3);
    host.settings.maxContinueCalls = 10;
    UseOneBandModule(host, {5, 5, 5, 5});
    const testhost::RunReport looping = host.Run();
    EXPECT_TRUE(looping.loopCapped);
    EXPECT_EQ(looping.continueCalls, 10);
    EXPECT_EQ(host.log().CountCalls(filterSelectorFinish), 0);
    EXPECT_EQ(host.log().faults.size(), 1u);

    host.ClearLog();
    host.settings.loopEnd = LoopEnd::kUntilEmpty;
    EXPECT_TRUE(host.Run().Ok());
    EXPECT_EQ(host.log().Selectors(), kFullRun);

    host.ClearLog();
    host.settings.loopEnd = LoopEnd::kWhileRightNonZero;
    UseOneBandModule(host, {0, 0, 0, 0});
    EXPECT_TRUE(host.Run().Ok());
    EXPECT_EQ(host.log().Selectors(), kFullRun);
}

// Parameters makes the parameters handle when there is none and records
// whether it found one.
void UseParametersModule(TestHost& host, std::vector<bool>* foundHandle) {
    UseFakeModule(host, [foundHandle](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector != filterSelectorParameters) return;
        foundHandle->push_back(r->parameters != nullptr);
        if (r->parameters == nullptr) r->parameters = r->handleProcs->newProc(16);
    });
}

TEST(HostRun, ParametersCallFollowsTheHostKind) {
    const struct {
        ParametersCall call;
        std::vector<bool> foundHandle;
    } cases[] = {
        {ParametersCall::kEveryRun, {false, true, true}},
        {ParametersCall::kEveryRunFresh, {false, false, false}},
        {ParametersCall::kFirstRunOnly, {false}},
        {ParametersCall::kNever, {}},
    };
    for (const auto& c : cases) {
        TestHost host;
        host.image() = Image(2, 2, 3);
        host.settings.parameters = c.call;
        std::vector<bool> foundHandle;
        UseParametersModule(host, &foundHandle);
        for (int run = 0; run < 3; ++run) EXPECT_TRUE(host.Run().Ok());
        EXPECT_EQ(foundHandle, c.foundHandle) << static_cast<int>(c.call);
        EXPECT_TRUE(host.LeakedHandles().empty());
    }
}

TEST(HostRun, ErrorEndsTheRunWithoutFinishAndRestoresTheDocument) {
    TestHost host;
    host.image() = Image(3, 3, 3);
    UseFakeModule(host, [](int16_t selector, FilterRecord* r, intptr_t*, int16_t* result) {
        if (selector != filterSelectorStart) return;
        RequestRect16(r, {0, 0, 3, 3});
        r->advanceState();
        static_cast<uint8_t*>(r->outData)[0] = 99;
        RequestRect16(r, {0, 0, 1, 1});
        r->advanceState();  // commits the 99
        *result = userCanceledErr;
    });
    const testhost::RunReport report = host.Run();
    EXPECT_EQ(report.result, userCanceledErr);
    EXPECT_EQ(report.lastSelector, filterSelectorStart);
    EXPECT_EQ(host.log().CountCalls(filterSelectorFinish), 0);
    EXPECT_EQ(host.output().Sample(0, 0, 0), 0);
}

TEST(HostRun, AbortAnswersTrueFromTheChosenPollOnEachRun) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.settings.abortFromPoll = 3;
    std::vector<bool> answers;
    UseFakeModule(host, [&answers](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector == filterSelectorStart) {
            for (int i = 0; i < 4; ++i) answers.push_back(r->abortProc() != 0);
        }
    });
    host.Run();
    host.Run();
    EXPECT_EQ(answers, (std::vector<bool>{false, false, true, true, false, false, true, true}));
    EXPECT_EQ(host.log().abortPolls, 8);
}

TEST(HostRun, OlderRecordSizeCatchesWritesPastItsEnd) {
    TestHost host;
    host.image() = Image(2, 2, 3);
    host.settings.recordSize = kMinimumFilterRecordSize;
    UseFakeModule(host, [](int16_t selector, FilterRecord* r, intptr_t*, int16_t*) {
        if (selector == filterSelectorPrepare) r->hasImageScrap = 1;  // inside
        if (selector == filterSelectorStart)
            reinterpret_cast<char*>(r)[kMinimumFilterRecordSize + 8] = 1;
    });
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_EQ(host.log().faults.size(), 1u);
    EXPECT_NE(host.log().faults[0].find(std::to_string(kMinimumFilterRecordSize)),
              std::string::npos);
}

}  // namespace
