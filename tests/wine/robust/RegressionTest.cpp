// Hosts the campaign found faults with, kept as tests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

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
