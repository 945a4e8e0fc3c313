#include "BenchFigures.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstring>

#include "testhost/HostClock.h"

namespace bench {

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double CopySeconds(const std::vector<char>& from, std::vector<char>& to) {
    const int64_t start = testhost::Ticks();
    std::memcpy(to.data(), from.data(), std::min(from.size(), to.size()));
    return testhost::TicksToSeconds(testhost::Ticks() - start);
}

PeakMemory ProcessPeakMemory() {
    PROCESS_MEMORY_COUNTERS memory{};
    memory.cb = sizeof(memory);
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    return {memory.PeakWorkingSetSize / 1e6, memory.PeakPagefileUsage / 1e6};
}

}  // namespace bench
