#include <gtest/gtest.h>

#include <vector>

#include "redeye/Distance.h"
#include "tests/native/Grid.h"

namespace {

std::vector<uint32_t> Chamfer(const ClassGrid& grid) {
    std::vector<uint32_t> distance(grid.width * grid.height);
    ChamferDistance(grid.work.data(), grid.width, grid.height, distance.data());
    return distance;
}

TEST(Distance, MinOfSignedValues) {
    EXPECT_EQ(Min4(7, -3, 5, 9), -3);
    EXPECT_EQ(Min5(7, 3, 5, 9, 2), 2);
    EXPECT_EQ(Min5(-2147483647 - 1, 0, 1, 2, 3), -2147483647 - 1);
}

TEST(Distance, IsolatedPixelAndOtherPixels) {
    const ClassGrid grid("...|.w.|...");
    EXPECT_EQ(Chamfer(grid), (std::vector<uint32_t>{0, 0, 0, 0, 3, 0, 0, 0, 0}));
}

// The first pass runs right to left, so it sees its left neighbours still at
// the far value: the block comes out lopsided, 7 beside the centre but 6
// above and below it, not the symmetric map of a left-to-right pass. The
// bottom row is 3 because its lower-left neighbour lies outside.
TEST(Distance, FullBlockKeepsTheRightToLeftFirstPass) {
    const ClassGrid grid("RRRRR|RRRRR|RRwRR|RRRRR|RRRRR");
    EXPECT_EQ(Chamfer(grid), (std::vector<uint32_t>{3, 3, 3, 3, 3,  //
                                                    3, 6, 6, 6, 3,  //
                                                    3, 7, 9, 7, 3,  //
                                                    3, 6, 6, 6, 3,  //
                                                    3, 3, 3, 3, 3}));
}

std::vector<uint8_t> Smooth(const std::vector<uint32_t>& distance, int width, int height) {
    std::vector<uint8_t> depth(width * height);
    SmoothDistance(depth.data(), distance.data(), width, height);
    return depth;
}

TEST(Distance, DepthIsTheTruncatedMeanLimitedTo255) {
    std::vector<uint32_t> distance(5 * 5);
    distance[2 * 5 + 2] = 9 * 3 + 8;  // 35 / 9 = 3 around the centre
    std::vector<uint8_t> depth = Smooth(distance, 5, 5);
    EXPECT_EQ(depth, (std::vector<uint8_t>{0, 0, 0, 0, 0,  //
                                           0, 3, 3, 3, 0,  //
                                           0, 3, 3, 3, 0,  //
                                           0, 3, 3, 3, 0,  //
                                           0, 0, 0, 0, 0}));
    distance[2 * 5 + 2] = 9 * 1000;
    depth = Smooth(distance, 5, 5);
    EXPECT_EQ(depth[1 * 5 + 1], 255);
    EXPECT_EQ(depth[0], 0);
}

TEST(Distance, ShallowPointsVanishUnlessNextToDeeperOnes) {
    std::vector<uint32_t> distance(7 * 5);
    distance[2 * 7 + 1] = 18;  // depth 2 around (1, 2): all neighbours shallow
    std::vector<uint8_t> depth = Smooth(distance, 7, 5);
    EXPECT_EQ(depth, std::vector<uint8_t>(7 * 5, 0));
    distance[2 * 7 + 4] = 27;  // depth 3 around (4, 2): (2, y) touch it and stay
    depth = Smooth(distance, 7, 5);
    EXPECT_EQ(depth, (std::vector<uint8_t>{0, 0, 0, 0, 0, 0, 0,  //
                                           0, 0, 2, 3, 3, 3, 0,  //
                                           0, 0, 2, 3, 3, 3, 0,  //
                                           0, 0, 2, 3, 3, 3, 0,  //
                                           0, 0, 0, 0, 0, 0, 0}));
}

}  // namespace
