#include <gtest/gtest.h>

#include <vector>

#include "redeye/RowSpan.h"

namespace {

// Around the 8-pixel blocks of the scans: every width to 40, marks at every
// pair of positions.
TEST(RowSpan, ClassSpanFindsFirstAndLastMarkedPixel) {
    for (int width = 1; width <= 40; ++width) {
        std::vector<uint8_t> row(3 * width, 0xFC);  // hue and saturation bytes set
        for (int x = 0; x < width; ++x) row[3 * x] = 0;
        const ColumnSpan none = FindClassSpan(row.data(), width, 0x03);
        ASSERT_TRUE(none.Empty()) << width;
        for (int a = 0; a < width; ++a) {
            for (int b = a; b < width; ++b) {
                row[3 * a] = 2;
                row[3 * b] = 2;
                const ColumnSpan span = FindClassSpan(row.data(), width, 0x03);
                ASSERT_EQ(span.first, a) << width << " " << a << " " << b;
                ASSERT_EQ(span.last, b) << width << " " << a << " " << b;
                ASSERT_TRUE(FindClassSpan(row.data(), width, 0x01).Empty());
                row[3 * a] = 0;
                row[3 * b] = 0;
            }
        }
    }
}

TEST(RowSpan, NonZeroSpanCountsWholeValues) {
    for (int width = 1; width <= 24; ++width) {
        std::vector<uint32_t> row(width, 0);
        ASSERT_TRUE(FindNonZeroSpan(row.data(), width, 4).Empty());
        for (int a = 0; a < width; ++a) {
            for (int b = a; b < width; ++b) {
                row[a] = 1u << 24;  // high byte only
                row[b] = 1;
                const ColumnSpan span = FindNonZeroSpan(row.data(), width, 4);
                ASSERT_EQ(span.first, a);
                ASSERT_EQ(span.last, b);
                row[a] = row[b] = 0;
            }
        }
    }
}

TEST(RowSpan, WidenAndUnion) {
    EXPECT_EQ(Widen({3, 5}, 2, 0, 6).first, 1);
    EXPECT_EQ(Widen({3, 5}, 2, 0, 6).last, 6);
    EXPECT_TRUE(Widen({0, 0}, 1, 1, 0).Empty());  // nothing inside 1..0
    EXPECT_TRUE(Widen(kEmptySpan, 1, 0, 9).Empty());
    EXPECT_EQ(Widen({5, 5}, 2147483647, 0, 9).last, 9);
    EXPECT_EQ(Union(kEmptySpan, {4, 6}).first, 4);
    EXPECT_EQ(Union({1, 2}, {4, 6}).last, 6);
}

}  // namespace
