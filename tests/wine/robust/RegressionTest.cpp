// Hosts the campaign found faults with, kept as tests.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/FilterParameters.h"
#include "testhost/TestHost.h"

namespace {

using testhost::Image;

TEST(HostileHost, DepthFieldOfSixteenOverEightBitRowsStaysInsideTheBuffers) {
    // An image mode the filter passes through, a depth field that says 16
    // bits and rows of 8-bit samples: the copy must stop at the row's end.
    for (int planes : {1, 3, 5}) {
        SCOPED_TRACE(std::to_string(planes) + " planes");
        testhost::TestHost run;
        ASSERT_TRUE(run.Load(QUORVEX_MODULE_PATH)) << run.LoadError();
        run.image() = Image(1685, 3, planes);
        run.image().FillNoise(5);
        run.image().SelectRect(10, 0, 40, 2);
        run.settings.imageMode = plugInModeLabColor;
        run.settings.depth = 16;
        EXPECT_TRUE(run.Run().Ok());
        EXPECT_EQ(run.log().faults, std::vector<std::string>{});
        EXPECT_EQ(testhost::DescribeDifference(run.output(), run.image()), "");
    }
}

}  // namespace

TEST(HostileHost, GarbageViewRectangleInTheStoredRecordChangesNothing) {
    // Without a selection the module works on the stored view rectangle;
    // edges a host kept as garbage (the extreme ones made the region's width
    // overflow) give an empty region, also through the dialog's preview.
    struct Case {
        int32_t left, top, right, bottom;
        float viewX;
        int16_t playInfo;
    };
    const Case cases[] = {
        {5, 2, INT32_MIN, 10, 0.0f, plugInDialogDontDisplay},
        {2, 5, 10, INT32_MIN, 0.0f, plugInDialogDontDisplay},
        {INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN, 0.0f, plugInDialogDontDisplay},
        {0, 0, 0, 0, 1e30f, plugInDialogDisplay},
        {0, 0, 0, 0, -1e30f, plugInDialogDisplay},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.left) + "," + std::to_string(c.top) + "," +
                     std::to_string(c.right) + "," + std::to_string(c.bottom) + " viewX " +
                     std::to_string(c.viewX));
        testhost::TestHost run;
        ASSERT_TRUE(run.Load(QUORVEX_MODULE_PATH)) << run.LoadError();
        run.image() = Image(40, 30, 3);
        run.image().FillNoise(9);
        run.settings.parameters = testhost::ParametersCall::kNever;
        run.settings.playInfo = c.playInfo;
        ASSERT_EQ(run.Call(filterSelectorParameters), noErr);
        FilterParameters* stored = run.ParametersAs<FilterParameters>();
        ASSERT_NE(stored, nullptr);
        stored->viewLeft = c.left;
        stored->viewTop = c.top;
        stored->viewRight = c.right;
        stored->viewBottom = c.bottom;
        stored->viewX = stored->viewY = c.viewX;
        stored->viewState = kViewStoredRect;
        const testhost::RunReport report = run.RunFromPrepare();
        EXPECT_TRUE(report.result == noErr || report.result == userCanceledErr) << report.result;
        EXPECT_EQ(run.log().faults, std::vector<std::string>{});
        if (report.result == noErr && c.playInfo == plugInDialogDontDisplay) {
            EXPECT_EQ(testhost::DescribeDifference(run.output(), run.image()), "");
        }
    }
}
