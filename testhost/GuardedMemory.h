// Memory that notices being touched: every page is a guard page, and the
// first read or write of a page is let through and remembered. The test host
// points stale data pointers here.
#pragma once

#include <cstddef>
#include <cstdint>

namespace testhost {

class GuardedMemory {
  public:
    GuardedMemory();
    ~GuardedMemory();
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    // An address in the middle, so that a step back or forward from it is
    // still caught.
    void* Middle() const { return base_ + kBytes / 2; }
    // True when a page was touched since the last call; guards every page again.
    bool TakeTouched();
    bool Holds(uintptr_t address) const {
        const auto base = reinterpret_cast<uintptr_t>(base_);
        return base_ != nullptr && address >= base && address < base + kBytes;
    }

  private:
    static constexpr size_t kBytes = 64 * 1024;

    char* base_ = nullptr;
};

}  // namespace testhost
