// Result codes and globals of each selector, as the host sees them.
#include "SpineFixture.h"

namespace {

using SelectorResults = SpineTest;

TEST_F(SelectorResults, AWholeRunAnswersNoErrorAndUnlocksTheGlobalsAfterEveryCall) {
    const testhost::RunReport report = host.Run();
    EXPECT_TRUE(report.Ok()) << report.result;
    EXPECT_EQ(host.log().Selectors(), (std::vector<int16_t>{1, 2, 3, 5}));
    for (const auto& call : host.log().calls) {
        EXPECT_EQ(call.result, noErr) << "selector " << call.selector;
        EXPECT_EQ(call.globalsLocksAfter, 0) << "selector " << call.selector;
    }
    EXPECT_NE(host.data(), 0);
    EXPECT_TRUE(host.LeakedHandles().empty());
}

TEST_F(SelectorResults, UnknownSelectorsAreRefusedAndRunNothing) {
    for (int16_t selector : {int16_t{6}, int16_t{-1}, int16_t{100}}) {
        EXPECT_EQ(host.Call(selector), filterBadParameters) << selector;
        EXPECT_EQ(host.GlobalsLocks(), 0) << selector;
    }
    // The globals were made (and with them the parameters record), but no
    // selector routine ran: the band request is untouched.
    EXPECT_NE(host.data(), 0);
    const FilterRecord& record = host.record();
    EXPECT_EQ(record.inRect.right, 0);
    EXPECT_EQ(host.log().serves.size(), 0u);
}

TEST_F(SelectorResults, AboutMakesNoGlobalsAndShowsNothing) {
    EXPECT_EQ(host.Call(filterSelectorAbout), noErr);
    EXPECT_EQ(host.data(), 0);
    EXPECT_TRUE(host.log().dialogs.empty());
    EXPECT_TRUE(host.handles().Live().empty());
}

TEST_F(SelectorResults, ParametersCreatesTheRecordWithItsDefaults) {
    ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
    const FilterParameters* p = Parameters();
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->viewScale, 1.0f);
    EXPECT_EQ(p->tolerance, 50.0f);
    EXPECT_EQ(p->darkening, 50.0f);
    EXPECT_EQ(p->previewOn, 1);
    EXPECT_EQ(p->viewState, 0);
    EXPECT_EQ(p->showDialog, 1);
    EXPECT_EQ(p->rowsPerTile, 1);
    EXPECT_EQ(p->hostIsPremiere, 0);
    EXPECT_EQ(p->hostIsAfterEffects, 0);
}

TEST_F(SelectorResults, TheRecordAndItsValuesSurviveFromRunToRun) {
    ASSERT_TRUE(host.Run().Ok());
    Parameters()->tolerance = 73.0f;
    Parameters()->darkening = 12.5f;
    ASSERT_TRUE(host.Run().Ok());
    EXPECT_EQ(Parameters()->tolerance, 73.0f);
    EXPECT_EQ(Parameters()->darkening, 12.5f);
}

}  // namespace
