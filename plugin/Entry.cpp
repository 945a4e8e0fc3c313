// The module's entry point: routes each host selector to its routine around
// the per-call globals block.
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"
#include "plugin/Selectors.h"

FilterRecord* gFilterRecord = nullptr;
intptr_t* gData = nullptr;
void* gModuleInstance = nullptr;

namespace {

typedef void (*SelectorRoutine)(FilterGlobals*);

// Indexed by selector; about is answered before the globals exist.
const SelectorRoutine kSelectorRoutines[] = {
    nullptr, DoParameters, DoPrepare, DoStart, DoContinue, DoFinish,
};

}  // namespace

FilterGlobals* AllocateGlobals(int16_t* result, FilterRecord* filterRecord,
                               HandleProcs* handleProcs, int32_t size, intptr_t* data,
                               void (*init)(FilterGlobals*)) {
    if (*data != 0) {
        auto* globals = reinterpret_cast<FilterGlobals*>(
            PILockHandle(handleProcs, reinterpret_cast<Handle>(*data), true));
        if (globals == nullptr) return nullptr;
        globals->result = result;
        globals->filterRecord = filterRecord;
        *result = noErr;
        return globals;
    }
    Handle h = PINewHandle(handleProcs, size);
    if (h == nullptr) return nullptr;
    auto* globals = reinterpret_cast<FilterGlobals*>(PILockHandle(handleProcs, h, true));
    if (globals == nullptr) {
        PIDisposeHandle(handleProcs, h);
        return nullptr;
    }
    globals->result = result;
    *result = noErr;
    globals->filterRecord = filterRecord;
    init(globals);
    *data = reinterpret_cast<intptr_t>(h);
    return globals;
}

extern "C" __declspec(dllexport) int32_t
    ENTRYPOINT(int16_t selector, FilterRecord* filterRecord, intptr_t* data, int16_t* result) {
    gFilterRecord = filterRecord;
    gData = data;
    if (selector == filterSelectorAbout) {
        DoAbout(reinterpret_cast<AboutRecord*>(filterRecord));
        return 0;
    }
    if (result == nullptr) return 0;  // nowhere to report anything
    if (filterRecord == nullptr || data == nullptr) {
        *result = filterBadParameters;
        return 0;
    }
    HandleProcs* handleProcs = filterRecord->handleProcs;
    FilterGlobals* globals = AllocateGlobals(result, filterRecord, handleProcs,
                                             sizeof(FilterGlobals), data, EnsureParameters);
    if (globals == nullptr) {
        *result = memFullErr;
        return 0;
    }
    if (selector >= filterSelectorParameters && selector <= filterSelectorFinish) {
        kSelectorRoutines[selector](globals);
    } else {
        *result = filterBadParameters;
    }
    if (*data != 0) PIUnlockHandle(handleProcs, reinterpret_cast<Handle>(*data));
    return 0;
}
