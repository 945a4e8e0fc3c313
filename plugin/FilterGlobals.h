// The per-call globals block kept in the host's data handle, and the values
// the module publishes for the duration of one host call.
#pragma once

#include "hostapi/HostApi.h"

struct FilterGlobals {
    int16_t* result;             // the host's result code for the current call
    FilterRecord* filterRecord;  // the host's parameter block for the current call
    Rect16 previewRect;          // detail pane size while the main dialog is open
};

// Set at the start of every host call.
extern FilterRecord* gFilterRecord;
extern intptr_t* gData;
// Module instance handle (an HMODULE), set when the library is loaded.
extern void* gModuleInstance;

// Host entry point: one call per protocol step.
extern "C" __declspec(dllexport) int32_t
    ENTRYPOINT(int16_t selector, FilterRecord* filterRecord, intptr_t* data, int16_t* result);

FilterGlobals* AllocateGlobals(int16_t* result, FilterRecord* filterRecord,
                               HandleProcs* handleProcs, int32_t size, intptr_t* data,
                               void (*init)(FilterGlobals*));
