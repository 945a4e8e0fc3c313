// Presence tests of the host's callbacks and scripting suites.
#include "plugin/HostServices.h"

namespace {

bool AllPresent(void* const* procs, int count) {
    for (int i = 0; i < count; ++i) {
        if (procs[i] == nullptr) return false;
    }
    return true;
}

}  // namespace

bool DescriptorAvailable(const PIDescriptorParameters* descriptorParameters) {
    if (descriptorParameters == nullptr ||
        descriptorParameters->descriptorParametersVersion != kCurrentDescriptorParametersVersion) {
        return false;
    }
    const ReadDescriptorProcs* reader = descriptorParameters->readDescriptorProcs;
    if (reader == nullptr ||
        reader->readDescriptorProcsVersion != kCurrentReadDescriptorProcsVersion ||
        reader->numReadDescriptorProcs < kCurrentReadDescriptorProcsCount ||
        !AllPresent(reinterpret_cast<void* const*>(&reader->openReadDescriptorProc),
                    kCurrentReadDescriptorProcsCount)) {
        return false;
    }
    // The writer only needs the right version and length; its routines are
    // checked where they are called.
    const WriteDescriptorProcs* writer = descriptorParameters->writeDescriptorProcs;
    return writer != nullptr &&
           writer->writeDescriptorProcsVersion == kCurrentWriteDescriptorProcsVersion &&
           writer->numWriteDescriptorProcs >= kCurrentWriteDescriptorProcsCount;
}

bool PlayDialog(const PIDescriptorParameters* descriptorParameters) {
    return descriptorParameters != nullptr && descriptorParameters->playInfo == plugInDialogDisplay;
}

bool AdvanceStateAvailable(const FilterRecord* filterRecord) {
    return filterRecord->advanceState != nullptr;
}

bool DisplayPixelsAvailable(const FilterRecord* filterRecord) {
    return filterRecord->displayPixels != nullptr;
}
