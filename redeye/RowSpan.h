// Finding where a row holds anything: most rows of a photo hold no red at
// all, and the later steps of the pipeline skip them after a fast scan.
#pragma once

#include <cstddef>
#include <cstdint>

// Columns first..last (inclusive); empty when first > last.
struct ColumnSpan {
    int32_t first;
    int32_t last;

    bool Empty() const { return first > last; }
};

constexpr ColumnSpan kEmptySpan{1, 0};

ColumnSpan Union(ColumnSpan a, ColumnSpan b);

// The span grown by margin columns on each side, then limited to low..high.
ColumnSpan Widen(ColumnSpan span, int32_t margin, int32_t low, int32_t high);

// Pixels whose class byte (the first of each 3-byte pixel) has any of bits.
ColumnSpan FindClassSpan(const uint8_t* row, int32_t width, uint8_t bits);

// Columns holding a non-zero value of valueSize bytes.
ColumnSpan FindNonZeroSpan(const void* row, int32_t width, size_t valueSize);
