// Scripting: the descriptor the host hands at start is read and ignored (the
// filter has no scriptable value); an empty one is recorded at finish.
#include "plugin/FilterParameters.h"
#include "plugin/HostServices.h"

namespace {

// A host that never ends its key list must not hang the filter.
constexpr int kMaxDescriptorKeys = 4096;

}  // namespace

OSErr ReadScriptParams(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    FilterParameters* parameters = Parameters(globals);
    if (parameters == nullptr) return noErr;
    Boolean showDialog = parameters->showDialog;
    OSErr closeError = noErr;

    PIDescriptorParameters* descriptorParameters = filterRecord->descriptorParameters;
    if (!DescriptorAvailable(descriptorParameters)) {
        parameters->showDialog = showDialog;
        return noErr;
    }
    DescriptorKeyID keys[] = {
        FourCC("ClSt"),
        FourCC("Geom"),
        FourCC("InvI"),
        FourCC("AntA"),
        FourCC("Invr"),
        FourCC("NoBr"),
        FourCC("UsBg"),
        FourCC("Angl"),
        FourCC("Spac"),
        FourCC("Wdth"),
        FourCC("BRel"),
        FourCC("Ampl"),
        FourCC("Shif"),
        FourCC("Usil"),
        FourCC("CntX"),
        FourCC("CntY"),
        0,
    };
    ReadDescriptorProcs* reader = descriptorParameters->readDescriptorProcs;
    PIReadDescriptor token = reader->openReadDescriptorProc(descriptorParameters->descriptor, keys);
    if (token != nullptr) {
        DescriptorKeyID key = 0;
        DescriptorTypeID type = 0;
        int32_t flags = 0;
        for (int n = 0; n < kMaxDescriptorKeys && reader->getKeyProc(token, &key, &type, &flags);
             ++n) {
            // Every key is skipped: no value of the filter is scripted.
        }
        closeError = reader->closeReadDescriptorProc(token);
        PIDisposeHandle(filterRecord->handleProcs, descriptorParameters->descriptor);
        descriptorParameters->descriptor = nullptr;
        if (closeError != noErr && closeError != errMissingParameter) {
            *globals->result = closeError;
        }
    }
    showDialog = PlayDialog(descriptorParameters);
    parameters->showDialog = showDialog;
    return closeError;
}

OSErr WriteScriptParams(FilterGlobals* globals) {
    FilterRecord* filterRecord = globals->filterRecord;
    PIDescriptorParameters* descriptorParameters = filterRecord->descriptorParameters;
    if (!DescriptorAvailable(descriptorParameters)) return noErr;
    WriteDescriptorProcs* writer = descriptorParameters->writeDescriptorProcs;
    if (writer->openWriteDescriptorProc == nullptr || writer->closeWriteDescriptorProc == nullptr) {
        return noErr;
    }
    PIWriteDescriptor token = writer->openWriteDescriptorProc();
    if (token != nullptr) {
        if (descriptorParameters->descriptor != nullptr) {
            PIDisposeHandle(filterRecord->handleProcs, descriptorParameters->descriptor);
        }
        Handle recorded = nullptr;
        writer->closeWriteDescriptorProc(token, &recorded);
        descriptorParameters->descriptor = recorded;
        descriptorParameters->recordInfo = plugInDialogOptional;
    }
    return noErr;
}
