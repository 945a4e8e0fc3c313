// The callbacks the test host hands the module in the filter record. They
// reach the host through the one active TestHost.
#include "testhost/ColorServices.h"
#include "testhost/DisplayPixels.h"
#include "testhost/HostClock.h"
#include "testhost/TestHost.h"

namespace testhost {

TestHost* TestHost::active_ = nullptr;

Boolean TestHost::AbortProc() {
    const HostTimeScope hostTime;
    if (active_ == nullptr) return false;
    ++active_->log_.abortPolls;
    ++active_->runAbortPolls_;
    const int from = active_->settings.abortFromPoll;
    return from > 0 && active_->runAbortPolls_ >= from;
}

void TestHost::ProgressProc(int32_t done, int32_t total) {
    const HostTimeScope hostTime;
    if (active_ != nullptr) active_->log_.progress.push_back({done, total});
}

OSErr TestHost::AdvanceStateProc() {
    const HostTimeScope hostTime;
    if (active_ == nullptr || active_->recordBytes_.empty()) return paramErr;
    if (active_->settings.advanceStateError != noErr) return active_->settings.advanceStateError;
    return active_->Serve(ServeRecord::kAdvanceState);
}

OSErr TestHost::DisplayPixelsProc(const PSPixelMap* source, const VRect* srcRect, int32_t dstRow,
                                  int32_t dstCol, void* platformContext) {
    const HostTimeScope hostTime;
    const OSErr result =
        DrawPixelMap(source, srcRect, dstRow, dstCol, static_cast<HDC>(platformContext));
    if (active_ != nullptr) {
        DisplayPixelsRecord drawn;
        if (source != nullptr) {
            drawn.bounds = source->bounds;
            drawn.imageMode = source->imageMode;
        }
        if (srcRect != nullptr) drawn.srcRect = *srcRect;
        drawn.dstRow = dstRow;
        drawn.dstCol = dstCol;
        drawn.hasDeviceContext = platformContext != nullptr;
        drawn.result = result;
        active_->log_.displayPixels.push_back(drawn);
    }
    return result;
}

OSErr TestHost::ColorServicesProc(ColorServicesInfo* info) {
    const HostTimeScope hostTime;
    if (active_ == nullptr || active_->recordBytes_.empty()) return errPlugInHostInsufficient;
    ColorServicesRecord call;
    if (info != nullptr) {
        call.selector = info->selector;
        call.sourceSpace = info->sourceSpace;
        call.resultSpace = info->resultSpace;
        std::copy(info->colorComponents, info->colorComponents + 4, call.componentsIn);
    }
    call.result = active_->settings.colorServices == ColorServicesMode::kUnsupported
                      ? errPlugInHostInsufficient
                      : AnswerColorServices(info, active_->record(), active_->image_);
    if (info != nullptr) {
        std::copy(info->colorComponents, info->colorComponents + 4, call.componentsOut);
    }
    active_->log_.colorServices.push_back(call);
    return call.result;
}

void TestHost::ProcessEventProc(void*) {
    const HostTimeScope hostTime;
    if (active_ != nullptr) ++active_->log_.processEventCalls;
}

void TestHost::HostProcDummy(int16_t selector, intptr_t*) {
    const HostTimeScope hostTime;
    if (active_ != nullptr) active_->log_.hostProcSelectors.push_back(selector);
}

}  // namespace testhost
