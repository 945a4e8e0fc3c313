// Seeded synthetic pictures for the pipeline's tests, digests and benchmark.
// Only integer arithmetic: a seed gives the same bytes on every platform.
#pragma once

#include <cstdint>

// Deterministic 32-bit generator (xorshift).
struct Random {
    uint32_t state;

    explicit Random(uint32_t seed) : state(seed * 2654435761u + 1) {}
    uint32_t Next();
    int32_t Below(int32_t bound);                // 0..bound-1
    int32_t Between(int32_t low, int32_t high);  // low..high
};

// Noisy blobs of strong red, weak red, pink, skin, magenta, greys and other
// colours on a random background: every class and every growing rule
// shows up in regions of a few dozen pixels.
void PaintScene(uint8_t* rgb, int32_t width, int32_t height, uint32_t seed);

// A face with two red pupils, lips and background, scaled to the region: the
// kind of picture the filter corrects.
void PaintPortrait(uint8_t* rgb, int32_t width, int32_t height, uint32_t seed);

// A scene cut by plain green stripes of random heights, at gaps of every
// height: the rows of colour fall into the pipeline's separate row bands.
void PaintStripes(uint8_t* rgb, int32_t width, int32_t height, uint32_t seed);
