// The rectangles the module asks the host for, in the whole-image protocol
// (advanceState) and in the band protocol (continue).
#include <optional>

#include "SpineFixture.h"

namespace {

class Protocol : public SpineTest {
  protected:
    // A 40 x 10 image in bands of 3 rows (3 * (40 + 2 * 120) = 840 bytes).
    void SetUp() override {
        SpineTest::SetUp();
        host.image() = testhost::Image(40, 10, 3);
        host.settings.maxSpace = 3 * 280;
    }
};

TEST_F(Protocol, WholeImageModeFetchesOneBandThroughAdvanceState) {
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(host.log().Selectors(), (std::vector<int16_t>{1, 2, 3, 5}));
    EXPECT_EQ(ServedRects(), std::vector<std::string>{"0,0,3,40 0,0,3,40 0,0,3,40"});
    const testhost::DataRequest& request = host.log().serves[0].request;
    EXPECT_EQ(request.inLoPlane, 0);
    EXPECT_EQ(request.inHiPlane, 2);
    EXPECT_EQ(request.outHiPlane, 2);
    EXPECT_EQ(request.inputRate, 0x10000);
    EXPECT_EQ(request.maskRate, 0x10000);
    // Start leaves the three rectangles empty: no continue follows.
    EXPECT_EQ(Text(host.log().calls[2].requestAfter.inRect), "0,0,0,0");
    EXPECT_EQ(Text(host.log().calls[2].requestAfter.maskRect), "0,0,0,0");
}

TEST_F(Protocol, WithoutAdvanceStateOrDisplayPixelsTheHostDrivesBands) {
    for (bool advanceState : {false, true}) {
        host.settings.advanceState = advanceState;
        host.settings.displayPixels = !advanceState;
        host.ClearLog();
        ASSERT_TRUE(host.Run().Ok());
        EXPECT_EQ(host.log().Selectors(), (std::vector<int16_t>{1, 2, 3, 4, 4, 4, 5}));
        // The first band starts one band below the top and runs to the
        // bottom; each continue moves both edges down by a band.
        EXPECT_EQ(ServedRects(), (std::vector<std::string>{"3,0,10,40 3,0,10,40 3,0,10,40",
                                                           "6,0,13,40 6,0,13,40 6,0,13,40",
                                                           "9,0,16,40 9,0,16,40 9,0,16,40"}));
        const testhost::DataRequest& request = host.log().serves[0].request;
        EXPECT_EQ(request.inputPadding, 255);
        EXPECT_EQ(request.outputPadding, 255);
        EXPECT_EQ(request.maskPadding, 255);
        EXPECT_EQ(Text(host.log().calls.back().requestAfter.outRect), "0,0,0,0");
    }
}

TEST_F(Protocol, AHostThatStopsAtEmptyRectanglesSeesTheSameBands) {
    host.settings.advanceState = false;
    host.settings.loopEnd = testhost::LoopEnd::kUntilEmpty;
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(host.log().CountCalls(filterSelectorContinue), 3);
}

TEST_F(Protocol, AbortBetweenBandsCancelsAtTheNextContinue) {
    host.settings.advanceState = false;
    host.settings.abortFromPoll = 2;  // the first continue polls once
    const testhost::RunReport report = host.Run();
    EXPECT_EQ(report.result, userCanceledErr);
    EXPECT_EQ(report.lastSelector, filterSelectorContinue);
    EXPECT_EQ(host.log().CountCalls(filterSelectorContinue), 2);
    EXPECT_EQ(host.log().CountCalls(filterSelectorFinish), 0);
}

TEST_F(Protocol, AbortBeforeTheWholeImageCancelsStart) {
    host.settings.abortFromPoll = 1;
    const testhost::RunReport report = host.Run();
    EXPECT_EQ(report.result, userCanceledErr);
    EXPECT_EQ(report.lastSelector, filterSelectorStart);
    EXPECT_TRUE(host.log().serves.empty());
}

TEST_F(Protocol, BigDocumentRectanglesAreUsedOnlyWhenSwitchedOn) {
    host.settings.bigDocument = true;
    host.settings.hostSets32BitCoordinates = true;
    ASSERT_TRUE(host.Run().Ok());
    ASSERT_EQ(host.log().serves.size(), 1u);
    EXPECT_TRUE(host.log().serves[0].request.uses32Bit);
    EXPECT_EQ(ServedRects(), std::vector<std::string>{"0,0,3,40 0,0,3,40 0,0,3,40"});
    EXPECT_EQ(host.record().inRect.right, 0) << "16-bit fields untouched";

    host.settings.hostSets32BitCoordinates = false;
    host.ClearLog();
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_FALSE(host.log().serves[0].request.uses32Bit);
    ASSERT_NE(host.record().bigDocumentData, nullptr);
    EXPECT_EQ(host.record().bigDocumentData->inRect32.right, 0) << "32-bit fields untouched";
}

// Hosts that keep their last buffers hand out a stale pointer with row bytes
// 0 for an empty rectangle, and leave one in the record once the band loop
// has ended. The module must never touch it, and must make the same image as
// with a host that hands out null.
TEST_F(Protocol, StalePointersOfEmptyRectanglesAreNeverTouched) {
    host.image().FillNoise(3);
    host.image().FillRect(8, 2, 6, 4, {210, 30, 40});
    host.image().SelectRect(6, 1, 12, 7);
    host.settings.parameters = testhost::ParametersCall::kEveryRunFresh;
    const VRect empty{5, 5, 5, 5};
    const struct {
        const char* what;
        bool advanceState;
        int32_t maxSpace;
        std::optional<VRect> filterRect;
        bool changesImage;
    } cases[] = {
        {"whole image in one band", true, 1 << 20, {}, true},
        {"bands of 3 rows", false, 3 * 280, {}, true},
        {"one band: the first request is empty", false, 1 << 20, {}, false},
        {"empty filter rectangle, whole image", true, 3 * 280, empty, false},
        {"empty filter rectangle, bands", false, 3 * 280, empty, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        host.settings.advanceState = c.advanceState;
        host.settings.maxSpace = c.maxSpace;
        host.settings.filterRect = c.filterRect;
        host.settings.staleDataForEmptyRects = false;
        ASSERT_TRUE(host.Run().Ok());
        const testhost::Image withNull = host.output();
        EXPECT_EQ(testhost::CountDifferentSamples(withNull, host.image()) != 0, c.changesImage);

        host.settings.staleDataForEmptyRects = true;
        host.ClearLog();
        const testhost::RunReport report = host.Run();
        EXPECT_TRUE(report.Ok()) << report.result;
        EXPECT_EQ(testhost::DescribeDifference(host.output(), withNull), "");
        EXPECT_EQ(host.log().faults, std::vector<std::string>{});
    }
}

}  // namespace
