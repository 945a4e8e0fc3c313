// What the test host saw during its calls into a module, for tests to assert
// on. Every list grows in the order the events happened.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hostapi/HostApi.h"
#include "testhost/Descriptor.h"

namespace testhost {

// The data request in the record at one moment. Rectangles are the ones the
// module uses: the 32-bit ones when the host offers big-document data and
// PluginUsing32BitCoordinates is set, the 16-bit ones otherwise.
struct DataRequest {
    bool uses32Bit = false;
    VRect inRect{};
    VRect outRect{};
    VRect maskRect{};
    int16_t inLoPlane = 0, inHiPlane = 0;
    int16_t outLoPlane = 0, outHiPlane = 0;
    int16_t inputPadding = 0, outputPadding = 0, maskPadding = 0;
    Fixed inputRate = 0, maskRate = 0;
};

// One call of the entry point.
struct CallRecord {
    int16_t selector = 0;
    OSErr result = 0;
    DataRequest requestAfter;  // the request as the call left it
    // Lock count of the globals handle (*data) after the call; -1 when
    // *data is zero or not a handle of this host.
    int globalsLocksAfter = -1;
    // Wall time of the call, and the part of it spent in host callbacks.
    double seconds = 0;
    double hostSeconds = 0;
};

// One delivery of data to the module.
struct ServeRecord {
    enum Trigger { kAdvanceState, kBeforeContinue } trigger = kAdvanceState;
    DataRequest request;
    OSErr result = 0;
    int32_t inRowBytes = 0, outRowBytes = 0, maskRowBytes = 0;
    bool inData = false, outData = false, maskData = false;  // non-null pointers handed out
};

struct ProgressRecord {
    int32_t done = 0;
    int32_t total = 0;
};

// A dialog or message box (window class #32770) that appeared during a call.
struct ShownDialog {
    std::string caption;
    std::vector<std::string> texts;    // static texts, in window order
    std::vector<std::string> buttons;  // button texts, in window order
    bool hasOwner = false;
    bool handledByTest = false;  // a registered handler took it
};

struct DescriptorRead {
    bool opened = false;                      // false: the reader got a null descriptor
    std::vector<DescriptorKeyID> keyArray;    // the module's key list, as passed
    std::vector<DescriptorKeyID> delivered;   // keys handed out by getKey
    std::vector<DescriptorKeyID> valuesRead;  // keys whose value the module fetched
    bool closed = false;
    OSErr closeResult = 0;
};

struct DescriptorWrite {
    std::vector<DescriptorItem> items;
    bool closed = false;
    Handle descriptor = nullptr;  // the handle given back on close
};

struct ColorServicesRecord {
    int16_t selector = 0;
    int16_t sourceSpace = 0;
    int16_t resultSpace = 0;
    int16_t componentsIn[4] = {};
    int16_t componentsOut[4] = {};
    OSErr result = 0;
};

struct DisplayPixelsRecord {
    VRect bounds{};
    VRect srcRect{};
    int32_t dstRow = 0, dstCol = 0;
    int32_t imageMode = 0;
    bool hasDeviceContext = false;
    OSErr result = 0;
};

struct HostLog {
    std::vector<CallRecord> calls;
    std::vector<ServeRecord> serves;
    std::vector<ProgressRecord> progress;
    int abortPolls = 0;
    int processEventCalls = 0;
    std::vector<int16_t> hostProcSelectors;
    std::vector<ShownDialog> dialogs;  // needs a display: without one boxes fail at once
    std::vector<DescriptorRead> descriptorReads;
    std::vector<DescriptorWrite> descriptorWrites;
    std::vector<ColorServicesRecord> colorServices;
    std::vector<DisplayPixelsRecord> displayPixels;
    int recoverSpaceCalls = 0;
    // Faults of the module seen by the host: unknown or over-unlocked
    // handles, writes past a buffer or the record, requests outside the
    // image without padding, a band loop that did not end, a watchdog.
    std::vector<std::string> faults;

    // Selectors of all calls, in order.
    std::vector<int16_t> Selectors() const;
    // Number of calls with this selector.
    int CountCalls(int16_t selector) const;
};

}  // namespace testhost
