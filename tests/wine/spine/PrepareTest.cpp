// The band height and the memory the module asks for at prepare.
#include "SpineFixture.h"

namespace {

class Prepare : public SpineTest {
  protected:
    // Runs parameters and prepare on a width x height RGB image.
    void PrepareImage(int width, int height, int32_t maxSpace) {
        host.image() = testhost::Image(width, height, 3);
        host.settings.maxSpace = maxSpace;
        ASSERT_EQ(host.Call(filterSelectorParameters), noErr);
        ASSERT_EQ(host.Call(filterSelectorPrepare), noErr);
    }
};

// A row costs width input bytes per plane, as many output bytes, and a mask
// byte: 10 + 2 * 30 = 70 for a 10-pixel RGB row.
TEST_F(Prepare, RowsGrowUntilTheirCostReachesMaxSpace) {
    PrepareImage(10, 50, 700);
    EXPECT_EQ(Parameters()->rowsPerTile, 10);
    EXPECT_EQ(host.record().maxSpace, 700);
    EXPECT_EQ(host.record().bufferSpace, 0);
}

TEST_F(Prepare, TheLastRowMayPassMaxSpace) {
    PrepareImage(10, 50, 701);
    EXPECT_EQ(Parameters()->rowsPerTile, 11);
    EXPECT_EQ(host.record().maxSpace, 770);
}

TEST_F(Prepare, LessThanOneRowOfSpaceStillGivesOneRow) {
    PrepareImage(10, 50, 5);
    EXPECT_EQ(Parameters()->rowsPerTile, 1);
    EXPECT_EQ(host.record().maxSpace, 70);
}

TEST_F(Prepare, BandsNeverExceedTheImage) {
    PrepareImage(10, 50, 1 << 30);
    EXPECT_EQ(Parameters()->rowsPerTile, 50);
    EXPECT_EQ(host.record().maxSpace, 50 * 70);
}

TEST_F(Prepare, AnImageOneRowHighHasBandsOfOneRow) {
    PrepareImage(10, 1, 1 << 30);
    EXPECT_EQ(Parameters()->rowsPerTile, 1);
    EXPECT_EQ(host.record().maxSpace, 70);
}

}  // namespace
