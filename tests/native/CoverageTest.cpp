#include <gtest/gtest.h>

#include <vector>

#include "redeye/Coverage.h"
#include "tests/native/Grid.h"

namespace {

struct Maps {
    std::vector<uint8_t> weight, coverage;
};

Maps Cover(const std::string& rows) {
    const ClassGrid grid(rows);
    Maps maps{std::vector<uint8_t>(grid.width * grid.height),
              std::vector<uint8_t>(grid.width * grid.height)};
    CoverageMaps(maps.weight.data(), maps.coverage.data(), grid.work.data(), grid.width,
                 grid.height, 3 * grid.width);
    return maps;
}

TEST(CoverageMaps, SingleRedPixel) {
    const Maps maps = Cover(".....|.....|..R..|.....|.....");
    // Own red counts 4 of 12 (85), a red neighbour 1 of 12 (21).
    EXPECT_EQ(maps.coverage, (std::vector<uint8_t>{0, 0,  0,  0,  0,  //
                                                   0, 21, 21, 21, 0,  //
                                                   0, 21, 85, 21, 0,  //
                                                   0, 21, 21, 21, 0,  //
                                                   0, 0,  0,  0,  0}));
    // Centre (4*85 + 8*21) / 12 = 42; corner (4*21 + 2*21 + 85) / 12 = 17.
    EXPECT_EQ(maps.weight, (std::vector<uint8_t>{0, 0,  0,  0,  0,  //
                                                 0, 17, 21, 17, 0,  //
                                                 0, 21, 42, 21, 0,  //
                                                 0, 17, 21, 17, 0,  //
                                                 0, 0,  0,  0,  0}));
}

TEST(CoverageMaps, WeakRedDoesNotCountAndBorderStaysZero) {
    const Maps weak = Cover("www|www|www");
    EXPECT_EQ(weak.coverage, std::vector<uint8_t>(9, 0));
    const Maps red = Cover("RRR|RRR|RRR");
    EXPECT_EQ(red.coverage, (std::vector<uint8_t>{0, 0, 0, 0, 255, 0, 0, 0, 0}));
    EXPECT_EQ(red.weight, (std::vector<uint8_t>{0, 0, 0, 0, 85, 0, 0, 0, 0}));
    // Red on the border still counts for its interior neighbours.
    const Maps edge = Cover("..R..|.....|.....");
    EXPECT_EQ(edge.coverage,
              (std::vector<uint8_t>{0, 0, 0, 0, 0, 0, 21, 21, 21, 0, 0, 0, 0, 0, 0}));
}

}  // namespace
