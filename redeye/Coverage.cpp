#include "redeye/Coverage.h"

#include <algorithm>

#include "redeye/Classify.h"
#include "redeye/RowSpan.h"

namespace {

constexpr uint8_t kRedBit = 0x01;
constexpr int kMaxScore = 12;

struct CoverageTable {
    uint8_t byScore[kMaxScore + 1];
};

CoverageTable MakeCoverageTable() {
    CoverageTable table;
    for (int score = 0; score <= kMaxScore; ++score) {
        table.byScore[score] = static_cast<uint8_t>(std::min(score / 12.0, 1.0) * 255.0);
    }
    return table;
}

inline int IsRed(const uint8_t* row, int32_t x) {
    return row[3 * static_cast<ptrdiff_t>(x)] == kClassRed ? 1 : 0;
}

void CoverRow(uint8_t* coverage, const uint8_t* classes, ptrdiff_t rowStep, ColumnSpan span,
              const CoverageTable& table) {
    const uint8_t* above = classes - rowStep;
    const uint8_t* below = classes + rowStep;
    for (int32_t x = span.first; x <= span.last; ++x) {
        int score = 4 * IsRed(classes, x) + IsRed(classes, x - 1) + IsRed(classes, x + 1);
        for (int32_t dx = -1; dx <= 1; ++dx) score += IsRed(above, x + dx) + IsRed(below, x + dx);
        coverage[x] = table.byScore[score];
    }
}

// The weights are whole sums below 2^24 divided by 12: accumulated in single
// precision they would be exact, and truncating the double quotient is the
// integer quotient.
void WeighRow(uint8_t* weight, const uint8_t* coverage, ptrdiff_t mapStep, ColumnSpan span) {
    const uint8_t* above = coverage - mapStep;
    const uint8_t* below = coverage + mapStep;
    for (int32_t x = span.first; x <= span.last; ++x) {
        int sum = 4 * coverage[x] + coverage[x - 1] + coverage[x + 1];
        for (int32_t dx = -1; dx <= 1; ++dx) sum += above[x + dx] + below[x + dx];
        weight[x] = static_cast<uint8_t>(sum / 12);
    }
}

}  // namespace

void CoverageMaps(uint8_t* weight, uint8_t* coverage, const uint8_t* work, int32_t width,
                  int32_t height, ptrdiff_t rowStep) {
    if (width < 3 || height < 3) return;
    const CoverageTable table = MakeCoverageTable();
    const ptrdiff_t mapStep = rowStep / 3;

    ColumnSpan above = FindClassSpan(work, width, kRedBit);
    ColumnSpan here = FindClassSpan(work + rowStep, width, kRedBit);
    for (int32_t y = 1; y < height - 1; ++y) {
        const ColumnSpan below = FindClassSpan(work + (y + 1) * rowStep, width, kRedBit);
        const ColumnSpan span = Widen(Union(Union(above, here), below), 1, 1, width - 2);
        if (!span.Empty())
            CoverRow(coverage + y * mapStep, work + y * rowStep, rowStep, span, table);
        above = here;
        here = below;
    }

    above = FindNonZeroSpan(coverage, width, 1);
    here = FindNonZeroSpan(coverage + mapStep, width, 1);
    for (int32_t y = 1; y < height - 1; ++y) {
        const ColumnSpan below = FindNonZeroSpan(coverage + (y + 1) * mapStep, width, 1);
        const ColumnSpan span = Widen(Union(Union(above, here), below), 1, 1, width - 2);
        if (!span.Empty()) WeighRow(weight + y * mapStep, coverage + y * mapStep, mapStep, span);
        above = here;
        here = below;
    }
}
