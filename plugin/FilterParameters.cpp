// The parameters record: creation in the host's parameters handle, defaults
// and the two host-identity flags.
#include "plugin/FilterParameters.h"

#include <cstring>

#include "plugin/HostServices.h"

namespace {

bool OnWindows(uint32_t hostIdentity) {
    const uint32_t platform = hostIdentity & 0xFF;
    return platform >= 10 && platform <= 12;
}

bool OnMacOS(uint32_t hostIdentity) {
    const uint32_t platform = hostIdentity & 0xFF;
    return platform >= 1 && platform <= 3;
}

}  // namespace

FilterParameters* Parameters(const FilterGlobals* globals) {
    Handle parameters = globals->filterRecord->parameters;
    if (parameters == nullptr) return nullptr;
    return reinterpret_cast<FilterParameters*>(*parameters);
}

void EnsureParameters(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    if (filterRecord->parameters != nullptr) return;
    filterRecord->parameters = PINewHandle(filterRecord->handleProcs, sizeof(FilterParameters));
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr) {
        filterRecord->parameters = nullptr;
        *globals->result = memFullErr;
        return;
    }
    // A host's new handle is not necessarily cleared.
    std::memset(parameters, 0, sizeof(FilterParameters));
    SetParameterDefaults(globals);
    parameters->imageTouched = 0;
    parameters->useAdvanceState = 0;
    parameters->rowsPerTile = 1;
    parameters->hostIsPremiere = OnWindows(HostIs(FourCC("PrMr")));
    // The Windows identity reading only yields Windows platform codes, so
    // this stays 0 here; the test is kept as it is on every platform.
    parameters->hostIsAfterEffects = OnMacOS(HostIs(FourCC("FXTC")));
}

void SetParameterDefaults(FilterGlobals* globals) {
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr) return;
    parameters->previewOn = 1;
    parameters->viewY = 0.0f;
    parameters->viewX = 0.0f;
    parameters->viewScale = 1.0f;
    parameters->viewState = kViewNoSelection;
    parameters->viewBottom = 0;
    parameters->viewTop = 0;
    parameters->viewRight = 0;
    parameters->viewLeft = 0;
    parameters->tolerance = 50.0f;
    parameters->darkening = 50.0f;
}
