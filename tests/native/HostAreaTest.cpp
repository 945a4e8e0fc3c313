// The driver's copies between the host's buffers and the working region,
// checked on exactly sized buffers so that AddressSanitizer catches any
// access past them.
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "redeye/HostArea.h"

namespace {

std::vector<uint8_t> Ramp(size_t size, uint8_t start = 1) {
    std::vector<uint8_t> bytes(size);
    std::iota(bytes.begin(), bytes.end(), start);
    return bytes;
}

HostArea AreaOf(const std::vector<uint8_t>& in, std::vector<uint8_t>& out, int width, int height,
                int planes, int bytesPerSample = 1) {
    const int rowBytes = width * planes * bytesPerSample;
    return HostArea{in.data(), rowBytes, out.data(), rowBytes, width, height, planes};
}

TEST(UnsupportedModeCopy, CopiesEveryPlaneOfOneAndTwoPlaneImagesWithoutOverrun) {
    for (int planes : {1, 2}) {
        const auto in = Ramp(7 * 5 * planes);
        std::vector<uint8_t> out(in.size(), 0);
        CopyUnsupportedArea(AreaOf(in, out, 7, 5, planes), 8);
        EXPECT_EQ(out, in) << planes << " planes";
    }
}

TEST(UnsupportedModeCopy, CopiesThreeFourOrFiveSamplesByPlaneCount) {
    // Six planes: three samples, and a fourth; the fifth only with exactly five.
    const auto in = Ramp(2 * 1 * 6);
    std::vector<uint8_t> out(in.size(), 0);
    CopyUnsupportedArea(AreaOf(in, out, 2, 1, 6), 8);
    EXPECT_EQ(out, (std::vector<uint8_t>{1, 2, 3, 4, 0, 0, 7, 8, 9, 10, 0, 0}));
}

TEST(UnsupportedModeCopy, SixteenBitSamplesAndUnknownDepths) {
    const auto in = Ramp(3 * 2 * 4 * 2);
    std::vector<uint8_t> out(in.size(), 0);
    CopyUnsupportedArea(AreaOf(in, out, 3, 2, 4, 2), 16);
    EXPECT_EQ(out, in);

    std::vector<uint8_t> untouched(in.size(), 0);
    CopyUnsupportedArea(AreaOf(in, untouched, 3, 2, 4, 2), 32);
    EXPECT_EQ(untouched, std::vector<uint8_t>(in.size(), 0));
}

TEST(ViewCopy, CopiesFromTheOriginToTheOutputCornerAndStopsAtTheEdges) {
    const auto in = Ramp(4 * 3 * 3);
    std::vector<uint8_t> out(in.size(), 0);
    CopyView(AreaOf(in, out, 4, 3, 3), 2, 1, 10, 10);
    // Columns 2..3 of rows 1..2 land at columns 0..1 of rows 0..1.
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) {
            for (int s = 0; s < 3; ++s) {
                const uint8_t expected = (x < 2 && y < 2) ? in[((y + 1) * 4 + (x + 2)) * 3 + s] : 0;
                EXPECT_EQ(out[(y * 4 + x) * 3 + s], expected) << x << "," << y;
            }
        }
    }
}

TEST(WorkImage, FillsOnlyPixelsInsideTheAreaAndWritesBackThreeBytes) {
    // A 3 x 2 region hanging one column off the right of a 4 x 2 area.
    const auto in = Ramp(4 * 2 * 4);
    std::vector<uint8_t> out(in.size(), 0xEE);
    const HostArea area = AreaOf(in, out, 4, 2, 4);
    const RegionPlacement region{2, 0, 3, 2};
    std::vector<uint8_t> work(3 * 2 * 3, 0);
    FillWorkImage(area, region, work.data());
    EXPECT_EQ(work[0], in[2 * 4]);
    EXPECT_EQ(work[2 * 3], 0);  // column 4 is outside the area

    for (auto& b : work) b = 0x55;
    WriteBackWorkImage(area, region, 0, 0, work.data());
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 4; ++x) {
            const uint8_t* px = &out[(y * 4 + x) * 4];
            const uint8_t colour = x >= 2 ? 0x55 : 0xEE;
            EXPECT_EQ(px[0], colour);
            EXPECT_EQ(px[2], colour);
            EXPECT_EQ(px[3], 0xEE) << "alpha must stay";
        }
    }
}

TEST(SelectionBounds, EmptyMaskKeepsTheStartValues) {
    const std::vector<uint8_t> mask(6 * 4, 0);
    const SelectionBounds b = FindSelectionBounds(mask.data(), 6, 6, 4);
    EXPECT_EQ(b.minX, 6);
    EXPECT_EQ(b.minY, 4);
    EXPECT_EQ(b.maxX, 0);
    EXPECT_EQ(b.maxY, 0);
    const SelectionBounds none = FindSelectionBounds(nullptr, 6, 6, 4);
    EXPECT_EQ(none.minX, 6);
}

TEST(SelectionBounds, SpansEveryNonZeroByteWithTheRowStep) {
    std::vector<uint8_t> mask(8 * 5, 0);
    mask[1 * 8 + 5] = 1;
    mask[3 * 8 + 2] = 255;
    mask[4 * 8 + 7] = 9;  // past the width of 6: not part of the area
    const SelectionBounds b = FindSelectionBounds(mask.data(), 8, 6, 5);
    EXPECT_EQ(b.minX, 2);
    EXPECT_EQ(b.maxX, 5);
    EXPECT_EQ(b.minY, 1);
    EXPECT_EQ(b.maxY, 3);
}

}  // namespace
