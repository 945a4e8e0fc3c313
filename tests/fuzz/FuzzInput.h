// Reads a fuzzer's bytes as the values a target needs; past the end every
// read gives zero, so any input is a complete case.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/HostileFloats.h"

namespace fuzz {

class FuzzInput {
  public:
    FuzzInput(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    uint8_t Byte() { return position_ < size_ ? data_[position_++] : 0; }
    // Little-endian, low byte first (the two reads of one expression would
    // come in no fixed order).
    uint16_t Word() {
        const uint8_t low = Byte();
        return static_cast<uint16_t>(low | (Byte() << 8));
    }
    uint32_t Bits32() {
        const uint32_t low = Word();
        return low | (static_cast<uint32_t>(Word()) << 16);
    }
    // A value in [lo, hi].
    int32_t Between(int32_t lo, int32_t hi) {
        return lo + static_cast<int32_t>(Bits32() % (static_cast<uint32_t>(hi - lo) + 1));
    }
    // The floats a host may keep in the stored record: the special values
    // often, any bit pattern sometimes, ordinary user values otherwise.
    float UserValue() {
        const uint8_t kind = Byte() % 16;
        if (kind < hostile::kSpecialFloatCount) return hostile::kSpecialFloats[kind];
        if (kind == 12) return hostile::FloatFromBits(Bits32());
        if (kind == 13) return static_cast<float>(static_cast<int16_t>(Word())) / 64.0f;
        return static_cast<float>(Byte() % 101);
    }
    // Fills a buffer of any size from a generator seeded by the next four
    // bytes, so that a short input still gives buffers full of values.
    template <typename Bytes>
    void Fill(Bytes& bytes) {
        uint32_t state = Bits32() | 1;
        for (auto& b : bytes) {
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            b = static_cast<uint8_t>(state);
        }
    }

  private:
    const uint8_t* data_;
    size_t size_;
    size_t position_ = 0;
};

// Stops the run with a message: a check of the target failed.
inline void Require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "check failed: %s\n", what);
    std::abort();
}

}  // namespace fuzz
