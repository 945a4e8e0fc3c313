// The filtering driver.
#include "redeye/FilterDriver.h"

#include <cstring>

#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"

void RunFilter(FilterGlobals* globals, int flag) {
    (void)flag;
    FilterRecord* filterRecord = globals->filterRecord;
    const Rect16 out = GetOutRect();
    const int width = out.right - out.left;
    const int height = out.bottom - out.top;
    if (filterRecord->inData == nullptr || filterRecord->outData == nullptr || width <= 0) return;
    for (int y = 0; y < height; ++y) {
        std::memcpy(static_cast<char*>(filterRecord->outData) + y * filterRecord->outRowBytes,
                    static_cast<const char*>(filterRecord->inData) + y * filterRecord->inRowBytes,
                    static_cast<size_t>(width) * filterRecord->planes);
    }
}

void RunPreviewFilter(FilterGlobals* globals, int flag) {
    FilterParameters* parameters = Parameters(globals);
    if (parameters != nullptr && parameters->useAdvanceState) RunFilter(globals, flag);
}
