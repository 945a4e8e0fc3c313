#include "controls/ControlRecord.h"

void ReleaseControlRecord(ControlRecord* record) {
    if (record->pixelBuffer != nullptr) {
        VirtualFree(record->pixelBuffer, 0, MEM_RELEASE);
        record->pixelBuffer = nullptr;
    }
    if (record->ownsObject != 0) {
        DeleteObject(record->ownedObject);
        record->ownedObject = nullptr;
    }
}
