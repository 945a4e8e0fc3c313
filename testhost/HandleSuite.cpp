#include "testhost/HandleSuite.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#include "testhost/HostClock.h"

namespace testhost {

namespace {

constexpr size_t kGuardBytes = 16;
constexpr char kGuardByte = static_cast<char>(0xFD);
// Larger requests fail like an exhausted heap instead of exhausting ours.
constexpr int32_t kLargestHandle = 256 * 1024 * 1024;

std::string Describe(Handle h) {
    std::ostringstream text;
    text << static_cast<const void*>(h);
    return text.str();
}

}  // namespace

// The master pointer comes first: a Handle is the address of `master`.
struct HandleSuite::Block {
    char* master = nullptr;
    int32_t size = 0;
    int locks = 0;
    std::vector<char> storage;  // size bytes, then the guard

    void Resize(int32_t newSize, uint8_t fill) {
        std::vector<char> grown(static_cast<size_t>(newSize) + kGuardBytes, kGuardByte);
        std::fill_n(grown.begin(), newSize, static_cast<char>(fill));
        std::copy_n(storage.begin(), std::min(size, newSize), grown.begin());
        storage.swap(grown);
        size = newSize;
        master = storage.data();
    }
    bool GuardIntact() const {
        return std::all_of(storage.end() - kGuardBytes, storage.end(),
                           [](char c) { return c == kGuardByte; });
    }
};

HandleSuite* HandleSuite::current_ = nullptr;

HandleSuite::HandleSuite(std::vector<std::string>* faults) : faults_(faults) {}

HandleSuite::~HandleSuite() {
    if (current_ == this) current_ = nullptr;
}

void HandleSuite::Configure(const HostSettings& settings) {
    present_ = settings.handleSuite != HandleSuiteMode::kAbsent;
    sizeQuirk_ = settings.handleSizeQuirk;
    fill_ = settings.newHandleFill;
    procs_.handleProcsVersion = settings.handleSuite == HandleSuiteMode::kVersion2 ? 2 : 1;
    procs_.numHandleProcs = settings.handleProcCount;
    procs_.newProc = NewProc;
    procs_.disposeProc = DisposeProc;
    procs_.getSizeProc = GetSizeProc;
    procs_.setSizeProc = SetSizeProc;
    procs_.lockProc = LockProc;
    procs_.unlockProc = UnlockProc;
    procs_.recoverSpaceProc = RecoverSpaceProc;
    procs_.disposeRegularHandleProc = DisposeProc;
}

HandleProcs* HandleSuite::Procs() { return present_ ? &procs_ : nullptr; }

Handle HandleSuite::Allocate(int32_t size) {
    if (size < 0 || size > kLargestHandle) return nullptr;
    auto block = std::make_unique<Block>();
    block->Resize(size, fill_);
    Handle h = &block->master;
    blocks_[h] = std::move(block);
    return h;
}

void HandleSuite::Dispose(Handle h) {
    auto it = blocks_.find(h);
    if (it == blocks_.end()) return;
    if (!it->second->GuardIntact()) Fault("handle " + Describe(h) + " was written past its end");
    blocks_.erase(it);
}

bool HandleSuite::IsLive(Handle h) const { return blocks_.count(h) != 0; }

int HandleSuite::LockCount(Handle h) const {
    auto it = blocks_.find(h);
    return it == blocks_.end() ? -1 : it->second->locks;
}

std::vector<HandleInfo> HandleSuite::Live() const {
    std::vector<HandleInfo> live;
    for (const auto& entry : blocks_) {
        live.push_back({entry.first, entry.second->size, entry.second->locks});
    }
    return live;
}

std::string HandleSuite::Contents(Handle h) const {
    auto it = blocks_.find(h);
    if (it == blocks_.end()) return {};
    return std::string(it->second->master, static_cast<size_t>(it->second->size));
}

void HandleSuite::CheckGuards() {
    for (const auto& entry : blocks_) {
        if (!entry.second->GuardIntact()) {
            Fault("handle " + Describe(entry.first) + " was written past its end");
            std::fill(entry.second->storage.end() - kGuardBytes, entry.second->storage.end(),
                      kGuardByte);
        }
    }
}

HandleSuite::Block* HandleSuite::Find(Handle h, const char* operation) {
    auto it = blocks_.find(h);
    if (it != blocks_.end()) return it->second.get();
    Fault(std::string(operation) + " on a handle the host does not know: " + Describe(h));
    return nullptr;
}

void HandleSuite::Fault(const std::string& text) {
    if (faults_ != nullptr) faults_->push_back(text);
}

Handle HandleSuite::NewProc(int32_t size) {
    const HostTimeScope hostTime;
    if (current_ == nullptr || size > current_->newHandleLimit_) return nullptr;
    return current_->Allocate(size);
}

void HandleSuite::DisposeProc(Handle h) {
    const HostTimeScope hostTime;
    if (current_ == nullptr || h == nullptr) return;
    if (current_->Find(h, "disposeProc") != nullptr) current_->Dispose(h);
}

int32_t HandleSuite::GetSizeProc(Handle h) {
    const HostTimeScope hostTime;
    if (current_ == nullptr) return 0;
    Block* block = current_->Find(h, "getSizeProc");
    if (block == nullptr || current_->sizeQuirk_) return 0;
    return block->size;
}

OSErr HandleSuite::SetSizeProc(Handle h, int32_t newSize) {
    const HostTimeScope hostTime;
    if (current_ == nullptr) return nilHandleErr;
    Block* block = current_->Find(h, "setSizeProc");
    if (block == nullptr) return nilHandleErr;
    if (current_->sizeQuirk_) return noErr;
    if (newSize < 0 || newSize > kLargestHandle) return memFullErr;
    block->Resize(newSize, current_->fill_);
    return noErr;
}

Ptr HandleSuite::LockProc(Handle h, Boolean) {
    const HostTimeScope hostTime;
    if (current_ == nullptr) return nullptr;
    Block* block = current_->Find(h, "lockProc");
    if (block == nullptr) return nullptr;
    ++block->locks;
    return block->master;
}

void HandleSuite::UnlockProc(Handle h) {
    const HostTimeScope hostTime;
    if (current_ == nullptr) return;
    Block* block = current_->Find(h, "unlockProc");
    if (block == nullptr) return;
    if (block->locks == 0) {
        current_->Fault("unlockProc on handle " + Describe(h) + " that is not locked");
        return;
    }
    --block->locks;
}

void HandleSuite::RecoverSpaceProc(int32_t) {
    const HostTimeScope hostTime;
    if (current_ != nullptr && current_->recoverSpaceCalls_ != nullptr) {
        ++*current_->recoverSpaceCalls_;
    }
}

}  // namespace testhost
