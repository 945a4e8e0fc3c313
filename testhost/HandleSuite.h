// The host's handle services: every handle it makes is tracked with its size
// and lock count, and carries guard bytes after its block.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hostapi/HostApi.h"
#include "testhost/HostSettings.h"

namespace testhost {

struct HandleInfo {
    Handle handle = nullptr;
    int32_t size = 0;
    int locks = 0;
};

class HandleSuite {
  public:
    explicit HandleSuite(std::vector<std::string>* faults);
    ~HandleSuite();
    HandleSuite(const HandleSuite&) = delete;
    HandleSuite& operator=(const HandleSuite&) = delete;

    void Configure(const HostSettings& settings);
    // The table for FilterRecord.handleProcs; null when the suite is absent.
    HandleProcs* Procs();
    // Routes the C procedures to this suite.
    void MakeCurrent() { current_ = this; }
    // Counts the recoverSpaceProc calls here.
    void CountRecoverSpaceIn(int* counter) { recoverSpaceCalls_ = counter; }
    // newProc refuses requests of more bytes than this.
    void LimitNewHandles(int32_t bytes) { newHandleLimit_ = bytes; }

    // Host-side allocation and disposal (descriptors, texts).
    Handle Allocate(int32_t size);
    void Dispose(Handle h);

    bool IsLive(Handle h) const;
    // -1 for a handle that is not live.
    int LockCount(Handle h) const;
    std::vector<HandleInfo> Live() const;
    // The bytes of a live handle; empty for any other.
    std::string Contents(Handle h) const;
    // Records a fault for every handle whose guard bytes were overwritten.
    void CheckGuards();

  private:
    struct Block;
    Block* Find(Handle h, const char* operation);
    void Fault(const std::string& text);

    static Handle NewProc(int32_t size);
    static void DisposeProc(Handle h);
    static int32_t GetSizeProc(Handle h);
    static OSErr SetSizeProc(Handle h, int32_t newSize);
    static Ptr LockProc(Handle h, Boolean moveHigh);
    static void UnlockProc(Handle h);
    static void RecoverSpaceProc(int32_t size);

    static HandleSuite* current_;
    std::vector<std::string>* faults_;
    int* recoverSpaceCalls_ = nullptr;
    HandleProcs procs_{};
    bool present_ = true;
    bool sizeQuirk_ = false;
    uint8_t fill_ = 0;
    int32_t newHandleLimit_ = INT32_MAX;
    std::map<Handle, std::unique_ptr<Block>> blocks_;
};

}  // namespace testhost
