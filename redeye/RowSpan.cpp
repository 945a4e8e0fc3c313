#include "redeye/RowSpan.h"

#include <algorithm>
#include <cstring>

namespace {

inline uint64_t Load64(const uint8_t* bytes) {
    uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

// Eight 3-byte pixels are 24 bytes, three words; the masks pick out the
// class bytes in them.
struct ClassMasks {
    uint64_t word[3];
};

ClassMasks MakeClassMasks(uint8_t bits) {
    uint8_t pattern[24] = {};
    for (int pixel = 0; pixel < 8; ++pixel) pattern[3 * pixel] = bits;
    ClassMasks masks;
    std::memcpy(masks.word, pattern, sizeof pattern);
    return masks;
}

inline bool AnyClassBits(const uint8_t* eightPixels, const ClassMasks& masks) {
    return ((Load64(eightPixels) & masks.word[0]) | (Load64(eightPixels + 8) & masks.word[1]) |
            (Load64(eightPixels + 16) & masks.word[2])) != 0;
}

}  // namespace

ColumnSpan Union(ColumnSpan a, ColumnSpan b) {
    if (a.Empty()) return b;
    if (b.Empty()) return a;
    return {std::min(a.first, b.first), std::max(a.last, b.last)};
}

ColumnSpan Widen(ColumnSpan span, int32_t margin, int32_t low, int32_t high) {
    if (span.Empty()) return span;
    const int64_t first = std::max<int64_t>(int64_t{span.first} - margin, low);
    const int64_t last = std::min<int64_t>(int64_t{span.last} + margin, high);
    if (first > last) return kEmptySpan;
    return {static_cast<int32_t>(first), static_cast<int32_t>(last)};
}

ColumnSpan FindClassSpan(const uint8_t* row, int32_t width, uint8_t bits) {
    const ClassMasks masks = MakeClassMasks(bits);
    int32_t first = 0;
    while (first + 8 <= width && !AnyClassBits(row + 3 * first, masks)) first += 8;
    while (first < width && (row[3 * first] & bits) == 0) ++first;
    if (first == width) return kEmptySpan;
    int32_t end = width;  // one past the last candidate
    while (end > first + 8 && !AnyClassBits(row + 3 * (end - 8), masks)) end -= 8;
    while ((row[3 * (end - 1)] & bits) == 0) --end;
    return {first, end - 1};
}

ColumnSpan FindNonZeroSpan(const void* row, int32_t width, size_t valueSize) {
    const auto* bytes = static_cast<const uint8_t*>(row);
    const size_t count = static_cast<size_t>(width) * valueSize;
    size_t first = 0;
    while (first + 8 <= count && Load64(bytes + first) == 0) first += 8;
    while (first < count && bytes[first] == 0) ++first;
    if (first == count) return kEmptySpan;
    size_t end = count;
    while (end > first + 8 && Load64(bytes + end - 8) == 0) end -= 8;
    while (bytes[end - 1] == 0) --end;
    return {static_cast<int32_t>(first / valueSize), static_cast<int32_t>((end - 1) / valueSize)};
}
