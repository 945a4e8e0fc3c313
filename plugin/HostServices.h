// A thin, checked layer over the host's services: handles (with a Windows
// fallback), scripting suites, host identity, rectangles and colour.
#pragma once

#include "hostapi/HostApi.h"

struct FilterGlobals;

// ---- Handles ----
bool HandleProcsAvailable(const HandleProcs* procs);
Handle PINewHandle(const HandleProcs* procs, int32_t size);
void PIDisposeHandle(const HandleProcs* procs, Handle h);
int32_t PIGetHandleSize(const HandleProcs* procs, Handle h);
Ptr PILockHandle(const HandleProcs* procs, Handle h, Boolean moveHigh);
void PIUnlockHandle(const HandleProcs* procs, Handle h);
// Set to memFullErr when a fallback allocation fails.
extern OSErr gHandleError;

// ---- Scripting and callbacks ----
bool DescriptorAvailable(const PIDescriptorParameters* descriptorParameters);
bool PlayDialog(const PIDescriptorParameters* descriptorParameters);
bool AdvanceStateAvailable(const FilterRecord* filterRecord);
bool DisplayPixelsAvailable(const FilterRecord* filterRecord);

// ---- Host identity ----
// Platform code in the low byte (10..12 Windows, 1..3 Mac OS) and the host's
// version above it when the running host belongs to the signature's group;
// 0 otherwise.
uint32_t HostIs(OSType signature);

// ---- Rectangles (16-bit, or the host's 32-bit ones when in use) ----
Rect16 GetFilterRect();
Rect16 GetInRect();
Rect16 GetOutRect();
void SetInRect(Rect16 r);
void SetOutRect(Rect16 r);
void SetMaskRect(Rect16 r);
bool SetRect(Rect16* r, int16_t left, int16_t top, int16_t right, int16_t bottom);

// ---- Colour ----
OSErr ColorToPlanes(FilterGlobals* globals, uint8_t* planeBytes, uint16_t c1, uint16_t c2,
                    uint16_t c3, uint16_t c4, int16_t* planeCount);
