#include "testhost/HostClock.h"

#include <windows.h>

namespace testhost {

namespace {

int64_t gHostTicks = 0;
int gDepth = 0;  // callbacks can call each other: only the outermost counts

}  // namespace

int64_t Ticks() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

double TicksToSeconds(int64_t ticks) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks) / static_cast<double>(frequency.QuadPart);
}

int64_t HostTicks() { return gHostTicks; }

HostTimeScope::HostTimeScope() : start_(gDepth++ == 0 ? Ticks() : 0) {}

HostTimeScope::~HostTimeScope() {
    if (--gDepth == 0) gHostTicks += Ticks() - start_;
}

}  // namespace testhost
