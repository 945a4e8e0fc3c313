// The switches of the test host: which services it offers and how it behaves.
// The record and service switches take effect when the next run begins
// (TestHost::BeginRun); the others whenever they are used.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hostapi/HostApi.h"
#include "testhost/Descriptor.h"

namespace testhost {

enum class HandleSuiteMode {
    kVersion1,  // version 1 with numHandleProcs procedures
    kVersion2,  // the same procedures, version field 2
    kAbsent,    // handleProcs is null
};

enum class DescriptorSuiteMode {
    kFull,         // both suites, 18 read and 16 write procedures
    kShortSuites,  // all procedures present, counts 17 and 15
    kNullSuites,   // the parameters block with null suite pointers
    kAbsent,       // descriptorParameters is null
};

enum class ColorServicesMode {
    kAnswering,    // converts between RGB, gray, CMYK, HSB and HSL
    kUnsupported,  // answers every call with -30900
    kAbsent,       // colorServices is null
};

enum class LoopEnd {
    kWhileRightNonZero,  // continue while inRect/outRect/(mask) right is non-zero
    kUntilEmpty,         // stop as soon as the rectangles are empty
};

enum class ParametersCall {
    kEveryRun,       // before every run, with the stored parameters handle
    kEveryRunFresh,  // before every run, after discarding the stored handle
    kFirstRunOnly,   // only while there is no parameters handle yet
    kNever,          // the test calls it itself
};

struct HostSettings {
    // ---- The filter record ----
    size_t recordSize = sizeof(FilterRecord);  // kMinimumFilterRecordSize plays an older host
    OSType hostSig = kPhotoshopSignature;
    int32_t maxSpace = 64 * 1024 * 1024;
    std::optional<int16_t> imageMode;       // default: gray/RGB by planes and depth
    std::optional<int32_t> depth;           // the record's depth field; default: the image's
    std::optional<int16_t> filterCase;      // default: 1, or 2 with a mask
    std::optional<VRect> filterRect;        // default: the whole image
    bool bigDocument = false;               // offer bigDocumentData
    bool hostSets32BitCoordinates = false;  // preset PluginUsing32BitCoordinates
    bool hostWindow = true;                 // platformData->hwnd: a hidden window, or null

    // ---- Callbacks ----
    bool advanceState = true;
    // Non-zero: advanceState delivers nothing and answers this error.
    OSErr advanceStateError = noErr;
    bool displayPixels = true;
    ColorServicesMode colorServices = ColorServicesMode::kAnswering;
    int abortFromPoll = 0;  // abortProc answers true from this poll on (1-based); 0 never

    // ---- Handle services ----
    HandleSuiteMode handleSuite = HandleSuiteMode::kVersion1;
    int16_t handleProcCount = 8;
    // getSizeProc answers 0, and setSizeProc reports success without resizing.
    bool handleSizeQuirk = false;
    uint8_t newHandleFill = 0;  // byte written into every new handle
    // newProc answers null, as an exhausted heap does, for a request of more
    // bytes than this. Read at every call; the host's own handles are not limited.
    int32_t newHandleLimit = INT32_MAX;

    // ---- Scripting ----
    DescriptorSuiteMode descriptorSuite = DescriptorSuiteMode::kFull;
    int16_t playInfo = plugInDialogDontDisplay;
    // The descriptor handed to the module at start; none gives a null handle.
    std::optional<std::vector<DescriptorItem>> playDescriptor;
    OSErr readerCloseError = noErr;  // what closeReadDescriptorProc answers

    // ---- Pixel data ----
    int32_t extraRowBytes = 0;  // padding after every row of in/out/mask data
    bool nullInData = false;    // hand out null buffers even for non-empty rectangles
    bool nullOutData = false;
    bool nullMaskData = false;
    // Hand out a stale pointer with row bytes 0 instead of null for an empty
    // rectangle, and leave the same in the record when the band loop ends,
    // as hosts that keep their last buffers do. The pointers lead to guarded
    // memory: a module that reads or writes through one is a fault.
    bool staleDataForEmptyRects = false;
    // Commit outData through the selection, (out*m + in*(255-m)) / 255, as
    // hosts that mask a filter's output themselves do (sets autoMask).
    bool blendThroughMask = false;

    // ---- Protocol ----
    LoopEnd loopEnd = LoopEnd::kWhileRightNonZero;
    int maxContinueCalls = 100000;  // a band loop longer than this is a fault
    ParametersCall parameters = ParametersCall::kEveryRun;
    bool callAbout = false;  // Run() starts with the about selector

    // ---- Dialogs ----
    bool dismissDialogs = true;  // false: dialogs stay up for a person to use
    int watchdogSeconds = 20;    // after this, a call's windows are closed; 0 off

    std::string entryPointName = "ENTRYPOINT";
};

}  // namespace testhost
