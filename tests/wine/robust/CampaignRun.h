// Runs one configuration of the campaign through the test host and lists
// what went wrong: results outside the host's codes, faults the host saw,
// locks and handles left behind, pixels changed outside the processed region.
#pragma once

#include <string>
#include <vector>

#include "tests/wine/robust/HostConfig.h"

namespace robust {

struct ConfigurationOutcome {
    std::vector<std::string> problems;
    int runs = 0;
    int completedRuns = 0;  // ended with finish and result 0
    size_t dialogs = 0;     // dialogs and message boxes the module showed
};

ConfigurationOutcome RunConfiguration(const HostConfig& config, const std::string& modulePath);

}  // namespace robust
