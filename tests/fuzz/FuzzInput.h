// Reads a fuzzer's bytes as the values a target needs; past the end every
// read gives zero, so any input is a complete case.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/HostileFloats.h"
#include "tests/native/TestImages.h"

namespace fuzz {

class FuzzInput {
  public:
    FuzzInput(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    uint8_t Byte() { return position_ < size_ ? data_[position_++] : 0; }
    // Little-endian, one byte a statement: reads inside one expression would
    // come in no fixed order.
    uint32_t Bits32() {
        uint32_t bits = Byte();
        for (int shift = 8; shift < 32; shift += 8) bits |= static_cast<uint32_t>(Byte()) << shift;
        return bits;
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
        if (kind == 13) return static_cast<float>(static_cast<int16_t>(Bits32())) / 64.0f;
        return static_cast<float>(Byte() % 101);
    }
    // Fills a buffer from a generator seeded by the next four bytes: a
    // short input still gives buffers full of values.
    template <typename Bytes>
    void Fill(Bytes& bytes) {
        Random random(Bits32());
        for (auto& b : bytes) b = static_cast<uint8_t>(random.Next());
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
