#include "ResourceCounts.h"

#include <windows.h>

#include <psapi.h>

namespace robust {

namespace {

// Highest handle value probed; far above what a test process opens.
constexpr ULONG_PTR kLastHandle = 0xFFFF;

size_t GdiObjects() {
    const DWORD reported = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (reported != 0) return reported;
    size_t live = 0;
    for (ULONG_PTR index = 1; index <= kLastHandle; ++index) {
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0) ++live;
    }
    return live;
}

BOOL CALLBACK CountChild(HWND, LPARAM count) {
    ++*reinterpret_cast<size_t*>(count);
    return TRUE;
}

BOOL CALLBACK CountOwnWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) return TRUE;
    ++*reinterpret_cast<size_t*>(count);
    EnumChildWindows(window, CountChild, count);
    return TRUE;
}

size_t Windows() {
    size_t count = 0;
    EnumWindows(CountOwnWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

size_t KernelHandles() {
    DWORD reported = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &reported) && reported != 0) return reported;
    size_t open = 0;
    for (ULONG_PTR value = 4; value <= kLastHandle; value += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++open;
    }
    return open;
}

size_t PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters = {};
    counters.cb = sizeof counters;
    if (GetProcessMemoryInfo(GetCurrentProcess(),
                             reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                             sizeof counters) &&
        counters.PrivateUsage != 0) {
        return counters.PrivateUsage;
    }
    size_t total = 0;
    MEMORY_BASIC_INFORMATION region;
    const char* address = nullptr;
    while (VirtualQuery(address, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) total += region.RegionSize;
        const char* next = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
        if (next <= address) break;
        address = next;
    }
    return total;
}

}  // namespace

ResourceCounts CountResources() {
    return ResourceCounts{GdiObjects(), Windows(), KernelHandles(), PrivateBytes()};
}

std::string Describe(const ResourceCounts& c) {
    return std::to_string(c.gdiObjects) + " GDI objects, " + std::to_string(c.windows) +
           " windows, " + std::to_string(c.kernelHandles) + " kernel handles, " +
           std::to_string(c.privateBytes / 1024) + " KB private";
}

}  // namespace robust
