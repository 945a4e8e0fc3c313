#include <gtest/gtest.h>

#include <vector>

#include "redeye/Growing.h"
#include "tests/native/Grid.h"

namespace {

std::string GrowWeak(const std::string& rows, int rounds) {
    ClassGrid grid(rows);
    GrowIntoWeak(grid.work.data(), grid.width, grid.height, 3 * grid.width, rounds);
    return grid.Classes();
}

TEST(GrowIntoWeak, OneRoundReachesSixOfTheEightNeighbours) {
    // Forward: weak pixels up and to the left of red; backward: down and to
    // the right. The up-right and down-left diagonals are not neighbours.
    EXPECT_EQ(GrowWeak("www|wRw|www", 1), "RRw|RRR|wRR");
}

TEST(GrowIntoWeak, RoundsLimitTheReach) {
    EXPECT_EQ(GrowWeak("wwwwR|.....", 0), "wwwwR|.....");
    EXPECT_EQ(GrowWeak("wwwwR|.....", 1), "wwwRR|.....");
    EXPECT_EQ(GrowWeak("wwwwR|.....", 3), "wRRRR|.....");
    EXPECT_EQ(GrowWeak("wwwwR|.....", 2147483647), "RRRRR|.....");
    EXPECT_EQ(GrowWeak("ww.wR|.....", 9), "ww.RR|.....");  // other pixels stop it
    // A single row is outside both sweeps.
    EXPECT_EQ(GrowWeak("wwwwR", 9), "wwwwR");
}

TEST(GrowIntoWeak, CornersOutsideBothSweepsStayWeak) {
    // Bottom-left: the forward sweep skips the last row, the backward sweep
    // column 0. Top-right: the forward sweep skips the last column, the
    // backward sweep row 0.
    EXPECT_EQ(GrowWeak("...|wR.", 5), "...|wR.");
    EXPECT_EQ(GrowWeak(".Rw|...", 5), ".Rw|...");
    EXPECT_EQ(GrowWeak("...|.Rw", 1), "...|.RR");
}

struct RowCase {
    std::string classes;
    std::vector<uint16_t> hues;
};

std::string GrowRow(const RowCase& row, int rounds) {
    ClassGrid grid(row.classes);
    std::vector<uint16_t> hls;
    for (const uint16_t hue : row.hues) hls.insert(hls.end(), {hue, 100, 100});
    GrowAlongRows(hls.data(), grid.work.data(), grid.width, grid.height, 3 * grid.width, rounds);
    return grid.Classes();
}

TEST(GrowAlongRows, SpreadsOnePixelARoundThroughReddishHues) {
    // Hues 201..240 and 0..10 are reddish; 100 and 11 are not.
    const RowCase row{"..w..R.w.", {230, 5, 10, 210, 0, 100, 239, 3, 11}};
    EXPECT_EQ(GrowRow(row, 0), "..w..R.w.");
    EXPECT_EQ(GrowRow(row, 1), "..w.RRRw.");
    EXPECT_EQ(GrowRow(row, 2), "..wRRRRR.");
    EXPECT_EQ(GrowRow(row, 3), "..RRRRRR.");
    EXPECT_EQ(GrowRow(row, 4), ".RRRRRRR.");
    EXPECT_EQ(GrowRow(row, 2147483647), "RRRRRRRR.");
}

TEST(GrowAlongRows, NonReddishPixelStopsTheRun) {
    const RowCase row{"R....R", {0, 0, 60, 0, 0, 0}};
    EXPECT_EQ(GrowRow(row, 9), "RR.RRR");
}

TEST(GrowAlongRows, RowsGrowIndependently) {
    const RowCase rows{"R..|...", {0, 0, 0, 0, 0, 0}};
    EXPECT_EQ(GrowRow(rows, 1), "RR.|...");
}

}  // namespace
