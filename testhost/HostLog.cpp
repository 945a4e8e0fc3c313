#include "testhost/HostLog.h"

#include <algorithm>

namespace testhost {

std::vector<int16_t> HostLog::Selectors() const {
    std::vector<int16_t> selectors;
    for (const CallRecord& call : calls) selectors.push_back(call.selector);
    return selectors;
}

int HostLog::CountCalls(int16_t selector) const {
    return static_cast<int>(
        std::count_if(calls.begin(), calls.end(),
                      [selector](const CallRecord& c) { return c.selector == selector; }));
}

}  // namespace testhost
