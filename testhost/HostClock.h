// Time the test host spends in its own callbacks while the module runs, so
// that a benchmark can tell the module's share of a call from the host's
// (delivering pixels through advanceState, handle services, drawing).
#pragma once

#include <cstdint>

namespace testhost {

// Monotonic ticks and their length.
int64_t Ticks();
double TicksToSeconds(int64_t ticks);

// Ticks spent inside host callbacks since the program started.
int64_t HostTicks();

// Counts the time from construction to destruction as the host's; nested
// scopes count once.
class HostTimeScope {
  public:
    HostTimeScope();
    ~HostTimeScope();
    HostTimeScope(const HostTimeScope&) = delete;
    HostTimeScope& operator=(const HostTimeScope&) = delete;

  private:
    int64_t start_;
};

}  // namespace testhost
