// What the module does for each host selector.
#pragma once

#include "plugin/FilterGlobals.h"

void DoAbout(AboutRecord* aboutRecord);
void DoParameters(FilterGlobals* globals);
void DoPrepare(FilterGlobals* globals);
void DoStart(FilterGlobals* globals);
void DoContinue(FilterGlobals* globals);
void DoFinish(FilterGlobals* globals);

// Band protocol: asks the host for the first band.
void StartBands(FilterGlobals* globals);
// Whole-image protocol: fetches the data through advanceState and filters it.
void FilterWithAdvanceState(FilterGlobals* globals);

// Set whenever the view or its data changes; kept for the dialog.
extern bool previewDirty;
