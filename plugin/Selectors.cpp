// The host selectors: parameters, prepare, start, continue, finish and about.
#include "plugin/Selectors.h"

#include <windows.h>

#include <cstdint>

#include "dialog/MainDialog.h"
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"
#include "plugin/Messages.h"
#include "redeye/FilterDriver.h"

bool previewDirty = false;

namespace {

// The about template the host's about call asks for. The module's About box
// is 16103 and there is no 16104, so the about call shows nothing; the main
// dialog's About button opens the real one.
constexpr int kAboutSelectorTemplate = 16104;

bool AbortRequested(const FilterRecord* filterRecord) {
    return filterRecord->abortProc != nullptr && filterRecord->abortProc() != 0;
}

void RequestAllPlanes(FilterRecord* filterRecord) {
    filterRecord->inLoPlane = filterRecord->outLoPlane = 0;
    filterRecord->outHiPlane = filterRecord->inHiPlane =
        static_cast<int16_t>(filterRecord->planes - 1);
}

void RequestRect(Rect16 r) {
    SetInRect(r);
    SetOutRect(r);
    SetMaskRect(r);
}

// Tells the host that no more data is wanted.
void RequestNothing() {
    Rect16 empty;
    SetRect(&empty, 0, 0, 0, 0);
    RequestRect(empty);
}

}  // namespace

void DoAbout(AboutRecord* aboutRecord) {
    HWND owner = nullptr;
    if (aboutRecord != nullptr && aboutRecord->platformData != nullptr) {
        owner = static_cast<HWND>(aboutRecord->platformData->hwnd);
    }
    DialogBoxParamA(static_cast<HINSTANCE>(gModuleInstance),
                    MAKEINTRESOURCEA(kAboutSelectorTemplate), owner, AboutDialogProc, 0);
}

void DoParameters(FilterGlobals* globals) {
    EnsureParameters(globals);
    FilterParameters* parameters = Parameters(globals);
    if (parameters != nullptr) parameters->showDialog = 1;
}

void DoPrepare(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    filterRecord->bufferSpace = 0;
    EnsureParameters(globals);
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr) return;

    const Rect16 filterRect = GetFilterRect();
    const int16_t height = static_cast<int16_t>(filterRect.bottom - filterRect.top);
    const int16_t width = static_cast<int16_t>(filterRect.right - filterRect.left);
    // One input and one output row of `planes` bytes per pixel, one mask byte.
    const int64_t rowCost = width + 2 * (width * filterRecord->planes);

    int16_t rowsPerTile = 1;
    while (rowsPerTile * rowCost < filterRecord->maxSpace && rowsPerTile < height) {
        ++rowsPerTile;
    }
    parameters->rowsPerTile = rowsPerTile;
    const int64_t space = rowsPerTile * rowCost;
    filterRecord->maxSpace = static_cast<int32_t>(
        space > INT32_MAX ? INT32_MAX : (space < INT32_MIN ? INT32_MIN : space));
}

void DoStart(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    EnsureParameters(globals);
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr) return;

    parameters->useAdvanceState = AdvanceStateAvailable(filterRecord) &&
                                  DisplayPixelsAvailable(filterRecord) &&
                                  !parameters->hostIsPremiere && !parameters->hostIsAfterEffects;
    ReadScriptParams(globals);
    if (parameters->showDialog) {
        RunFilterDialog(globals);
        // Cancel puts a fresh copy of the record into the host's handle.
        parameters = Parameters(globals);
        if (parameters == nullptr) return;
        parameters->showDialog = 0;
    }
    if (*globals->result != noErr) return;
    if (parameters->useAdvanceState) {
        FilterWithAdvanceState(globals);
    } else {
        StartBands(globals);
    }
}

void StartBands(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    RequestAllPlanes(filterRecord);
    filterRecord->inputRate = filterRecord->maskRate = kFixedOne;
    filterRecord->inputPadding = filterRecord->outputPadding = filterRecord->maskPadding = 255;

    // The first band starts rowsPerTile rows below the filter's top and runs
    // to its bottom, deliberately: in band mode the rows above it are never
    // requested.
    Rect16 band = GetFilterRect();
    band.top = static_cast<int16_t>(band.top + Parameters(globals)->rowsPerTile);
    RequestRect(band);
}

void FilterWithAdvanceState(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    RequestAllPlanes(filterRecord);
    const Rect16 filterRect = GetFilterRect();
    RequestRect(filterRect);
    filterRecord->inputRate = filterRecord->maskRate = kFixedOne;

    const int16_t rowsPerTile = Parameters(globals)->rowsPerTile;
    Rect16 band = filterRect;
    int16_t row = band.top;
    // The end test reads the band's bottom, which each pass moves to
    // row + rowsPerTile: the loop filters one band from the top, and the
    // driver works on everything the host delivered for it.
    while (row < band.bottom) {
        if (AbortRequested(filterRecord) || *globals->result != noErr) {
            *globals->result = userCanceledErr;
            break;
        }
        band.top = row;
        band.bottom = static_cast<int16_t>(row + rowsPerTile);
        RequestRect(band);
        *globals->result = filterRecord->advanceState();
        if (*globals->result != noErr) break;
        previewDirty = true;
        RunFilter(globals, 1);
        row = static_cast<int16_t>(row + rowsPerTile);
    }
    RequestNothing();
}

void DoContinue(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    if (AbortRequested(filterRecord) || *globals->result != noErr) {
        *globals->result = userCanceledErr;
        return;
    }
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr || parameters->useAdvanceState) {
        RequestNothing();
        return;
    }
    RunFilter(globals, 1);

    const int16_t rowsPerTile = parameters->rowsPerTile;
    filterRecord->inRect.top = static_cast<int16_t>(filterRecord->inRect.top + rowsPerTile);
    filterRecord->inRect.bottom = static_cast<int16_t>(filterRecord->inRect.bottom + rowsPerTile);
    filterRecord->maskRect = filterRecord->inRect;
    filterRecord->outRect = filterRecord->maskRect;
    if (filterRecord->inRect.top >= GetFilterRect().bottom) RequestNothing();
}

void DoFinish(FilterGlobals* globals) { WriteScriptParams(globals); }
