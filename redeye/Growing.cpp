#include "redeye/Growing.h"

#include <algorithm>

#include "redeye/Classify.h"
#include "redeye/RowSpan.h"

namespace {

constexpr uint8_t kAnyClass = 0x03;
constexpr uint8_t kRedBit = 0x01;  // set in red, clear in weak red and other

inline uint8_t& ClassAt(uint8_t* row, int32_t x) { return row[3 * static_cast<ptrdiff_t>(x)]; }

// Neither sweep cascades: each reads only neighbours it has not visited yet.
bool GrowForward(uint8_t* work, int32_t width, int32_t height, ptrdiff_t rowStep) {
    bool grown = false;
    for (int32_t y = 0; y < height - 1; ++y) {
        uint8_t* row = work + y * rowStep;
        uint8_t* below = row + rowStep;
        const ColumnSpan span = FindClassSpan(row, width, kAnyClass);
        for (int32_t x = span.first; x <= std::min(span.last, width - 2); ++x) {
            if (ClassAt(row, x) == kClassWeakRed &&
                (ClassAt(row, x + 1) == kClassRed || ClassAt(below, x) == kClassRed ||
                 ClassAt(below, x + 1) == kClassRed)) {
                ClassAt(row, x) = kClassRed;
                grown = true;
            }
        }
    }
    return grown;
}

bool GrowBackward(uint8_t* work, int32_t width, int32_t height, ptrdiff_t rowStep) {
    bool grown = false;
    for (int32_t y = height - 1; y >= 1; --y) {
        uint8_t* row = work + y * rowStep;
        uint8_t* above = row - rowStep;
        const ColumnSpan span = FindClassSpan(row, width, kAnyClass);
        for (int32_t x = span.last; x >= std::max(span.first, 1); --x) {
            if (ClassAt(row, x) == kClassWeakRed &&
                (ClassAt(row, x - 1) == kClassRed || ClassAt(above, x) == kClassRed ||
                 ClassAt(above, x - 1) == kClassRed)) {
                ClassAt(row, x) = kClassRed;
                grown = true;
            }
        }
    }
    return grown;
}

}  // namespace

// A round that grows nothing leaves the classes as they were, so every
// later round would too: stopping there gives the same classes for any
// number of rounds, even a saturated one.
void GrowIntoWeak(uint8_t* work, int32_t width, int32_t height, ptrdiff_t rowStep, int32_t rounds) {
    for (int32_t round = 0; round < rounds; ++round) {
        const bool forward = GrowForward(work, width, height, rowStep);
        const bool backward = GrowBackward(work, width, height, rowStep);
        if (!forward && !backward) return;
    }
}

namespace {

// Marks pixels reached from the left with this value until the right-to-left
// sweep makes them red, so that they are not taken for red seeds meanwhile.
constexpr uint8_t kReachedFromLeft = 3;

// Rounds r of the row growth turn a pixel red exactly when it is reddish and
// a red pixel lies at most r columns away with only reddish pixels between:
// each round moves the front one reddish pixel further. Both sweeps count
// the reddish run since the last red pixel.
struct ReddishRun {
    int32_t rounds;
    int32_t length = -1;  // -1: no red pixel within reach

    // Returns whether the pixel is reached.
    bool Step(uint8_t cls, bool reddish) {
        if (cls == kClassRed) {
            length = 0;
            return false;
        }
        if (reddish && length >= 0 && length < rounds) {
            ++length;
            return true;
        }
        length = -1;
        return false;
    }
};

void GrowRow(const uint16_t* hls, uint8_t* row, int32_t width, int32_t rounds, ColumnSpan seeds) {
    const auto reddish = [hls](int32_t x) {
        return IsReddishHue(hls + 3 * static_cast<ptrdiff_t>(x)) == 2;
    };
    const int32_t reach =
        static_cast<int32_t>(std::min<int64_t>(int64_t{seeds.last} + rounds, width - 1));
    int32_t lastReached = seeds.last;
    ReddishRun rightward{rounds};
    for (int32_t x = seeds.first; x <= reach; ++x) {
        if (rightward.Step(ClassAt(row, x), reddish(x))) {
            ClassAt(row, x) = kReachedFromLeft;
            lastReached = std::max(lastReached, x);
        }
    }
    const int32_t leftReach =
        static_cast<int32_t>(std::max<int64_t>(int64_t{seeds.first} - rounds, 0));
    ReddishRun leftward{rounds};
    for (int32_t x = lastReached; x >= leftReach; --x) {
        uint8_t& cls = ClassAt(row, x);
        if (leftward.Step(cls, reddish(x)) || cls == kReachedFromLeft) cls = kClassRed;
    }
}

}  // namespace

void GrowAlongRows(const uint16_t* hls, uint8_t* work, int32_t width, int32_t height,
                   ptrdiff_t rowStep, int32_t rounds) {
    if (rounds <= 0) return;
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* row = work + y * rowStep;
        const ColumnSpan seeds = FindClassSpan(row, width, kRedBit);
        if (!seeds.Empty()) GrowRow(hls + y * rowStep, row, width, rounds, seeds);
    }
}
