// What both host benchmarks print: medians, the floor's plain copies and the
// process's peak memory.
#pragma once

#include <cstddef>
#include <vector>

namespace bench {

double Median(std::vector<double> values);
// Seconds to copy `bytes` once from one buffer into another.
double CopySeconds(const std::vector<char>& from, std::vector<char>& to);
// The process's peak working set and peak committed memory, in MB.
struct PeakMemory {
    double workingSetMB;
    double committedMB;
};
PeakMemory ProcessPeakMemory();

}  // namespace bench
