// Handle services: the host's own when it offers a usable suite, otherwise
// handles made from Windows global memory in the host's shape (a master
// record whose first word points at the block).
#include <windows.h>

#include <cstring>

#include "plugin/HostServices.h"

OSErr gHandleError = noErr;

namespace {

// Our fallback handles carry this tag right after the master pointer, so that
// a handle the host made is never given to the Windows allocator. The master
// record is the pointer and the tag: 8 bytes in the 32-bit module, 12 in the
// 64-bit one.
constexpr char kFallbackTag[4] = {'O', 'T', 'O', 'F'};
constexpr SIZE_T kTagOffset = sizeof(Ptr);
constexpr SIZE_T kMasterRecordSize = kTagOffset + sizeof kFallbackTag;

bool IsFallbackHandle(Handle h) {
    return h != nullptr && GlobalHandle(h) != nullptr &&
           GlobalSize(GlobalHandle(h)) >= kMasterRecordSize &&
           std::memcmp(reinterpret_cast<char*>(h) + kTagOffset, kFallbackTag,
                       sizeof kFallbackTag) == 0;
}

HGLOBAL BlockOf(Handle h) { return GlobalHandle(*h); }

void FreeLocked(HGLOBAL memory) {
    if (memory == nullptr) return;
    GlobalUnlock(memory);
    GlobalFree(memory);
}

Handle NewFallbackHandle(int32_t size) {
    if (size < 0) return nullptr;
    HGLOBAL master = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, kMasterRecordSize);
    if (master == nullptr) return nullptr;
    auto* record = static_cast<char**>(GlobalLock(master));
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(size));
    char* data = block != nullptr ? static_cast<char*>(GlobalLock(block)) : nullptr;
    if (record == nullptr || data == nullptr) {
        FreeLocked(block);
        FreeLocked(master);
        return nullptr;
    }
    record[0] = data;
    std::memcpy(reinterpret_cast<char*>(record) + kTagOffset, kFallbackTag, sizeof kFallbackTag);
    return record;
}

}  // namespace

bool HandleProcsAvailable(const HandleProcs* procs) {
    if (procs == nullptr || procs->handleProcsVersion != kCurrentHandleProcsVersion) return false;
    // A negative count passes as well: only a known short table is refused.
    if (procs->numHandleProcs >= 0 && procs->numHandleProcs < 8) return false;
    return procs->newProc != nullptr && procs->disposeProc != nullptr &&
           procs->getSizeProc != nullptr && procs->setSizeProc != nullptr;
}

Handle PINewHandle(const HandleProcs* procs, int32_t size) {
    if (HandleProcsAvailable(procs)) return procs->newProc(size);
    Handle h = NewFallbackHandle(size);
    if (h == nullptr) gHandleError = memFullErr;
    return h;
}

void PIDisposeHandle(const HandleProcs* procs, Handle h) {
    if (h == nullptr) return;
    if (HandleProcsAvailable(procs)) {
        procs->disposeProc(h);
    } else if (IsFallbackHandle(h)) {
        FreeLocked(BlockOf(h));
        FreeLocked(GlobalHandle(h));
    }
}

int32_t PIGetHandleSize(const HandleProcs* procs, Handle h) {
    if (h == nullptr) return 0;
    if (HandleProcsAvailable(procs)) return procs->getSizeProc(h);
    if (!IsFallbackHandle(h)) return 0;
    return static_cast<int32_t>(GlobalSize(BlockOf(h)));
}

Ptr PILockHandle(const HandleProcs* procs, Handle h, Boolean moveHigh) {
    if (h == nullptr) return nullptr;
    if (HandleProcsAvailable(procs)) {
        return procs->lockProc != nullptr ? procs->lockProc(h, moveHigh) : *h;
    }
    if (!IsFallbackHandle(h)) return nullptr;
    // h is the master record, not the data: lock the block its master
    // pointer leads to, so that callers get the data as from the host's lockProc.
    return static_cast<Ptr>(GlobalLock(BlockOf(h)));
}

void PIUnlockHandle(const HandleProcs* procs, Handle h) {
    if (h == nullptr) return;
    if (HandleProcsAvailable(procs)) {
        if (procs->unlockProc != nullptr) procs->unlockProc(h);
    } else if (IsFallbackHandle(h)) {
        GlobalUnlock(BlockOf(h));  // the block PILockHandle locked, not the master record
    }
}
