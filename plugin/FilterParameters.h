// The persistent parameters record, kept by the host in its parameters
// handle between calls and between runs.
#pragma once

#include "plugin/FilterGlobals.h"

// How the working region of the last run was found.
enum ViewState : int8_t {
    kViewSelectionBox = 1,  // bounding box of the selection
    kViewNoSelection = 0,   // real run without a selection
    kViewEmptySelection = -1,
    kViewStoredRect = -2,  // the stored view rectangle
};

struct FilterParameters {
    float viewX;
    float viewY;
    float viewScale;
    int32_t viewLeft;
    int32_t viewTop;
    int32_t viewBottom;
    int32_t viewRight;
    float tolerance;
    float darkening;
    Boolean previewOn;
    int8_t viewState;
    Boolean showDialog;
    int16_t rowsPerTile;
    Boolean imageTouched;
    Boolean useAdvanceState;
    Boolean hostIsPremiere;
    Boolean hostIsAfterEffects;
};

static_assert(offsetof(FilterParameters, tolerance) == 28, "record layout");
static_assert(offsetof(FilterParameters, rowsPerTile) == 40, "record layout");
static_assert(sizeof(FilterParameters) == 48, "record layout");

// The record behind the host's parameters handle (null when there is none).
FilterParameters* Parameters(const FilterGlobals* globals);

void EnsureParameters(FilterGlobals* globals);
void SetParameterDefaults(FilterGlobals* globals);
OSErr ReadScriptParams(FilterGlobals* globals);
OSErr WriteScriptParams(FilterGlobals* globals);
