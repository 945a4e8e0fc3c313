// A small reproducible random source for the host campaign: the same seed
// gives the same configuration on every machine.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace robust {

class Random {
  public:
    explicit Random(uint64_t seed) : state_(seed) {}

    // splitmix64
    uint64_t Next() {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // A value in [lo, hi], both included.
    int64_t Between(int64_t lo, int64_t hi) {
        const uint64_t span = static_cast<uint64_t>(hi - lo) + 1;
        return lo + static_cast<int64_t>(span == 0 ? Next() : Next() % span);
    }
    // True in `percent` cases out of 100.
    bool Percent(int percent) { return Between(1, 100) <= percent; }
    template <typename T>
    T Pick(std::initializer_list<T> values) {
        return values.begin()[Between(0, static_cast<int64_t>(values.size()) - 1)];
    }

  private:
    uint64_t state_;
};

// The seed of configuration `index` of the campaign started with `seed`.
inline uint64_t ConfigurationSeed(uint64_t seed, uint64_t index) {
    Random mix(seed ^ (index * 0xD1B54A32D192ED03ull));
    return mix.Next();
}

}  // namespace robust
