// Two hundred rounds of toolkit set-up, a spin edit made, painted, given
// hints, opened in "Set value" now and then and destroyed with its parent
// window, and toolkit tear-down must leave the process with the GDI
// objects, windows and heap memory it had before.
#include <cstdint>
#include <iostream>

#include "GuiTestSupport.h"
#include "controls/SetValueDialog.h"
#include "controls/SpinEdit.h"
#include "controls/Toolkit.h"
#include "plugin/FilterGlobals.h"

namespace {

// Wine answers GetGuiResources with 0 (a stub). Its GDI handle table takes
// a handle whose high word is 0 as "whatever object lives at this index",
// so probing every index with GetObjectType counts the process's objects.
size_t CountGdiObjects() {
    const DWORD reported = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (reported != 0) {
        return reported;
    }
    size_t count = 0;
    for (uintptr_t index = 1; index < 0x10000; ++index) {
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0 ? 1 : 0;
    }
    return count;
}

// Bytes in use in all heaps of the process (the C runtime's included).
size_t HeapBytesInUse() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    size_t total = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry)) {
            total += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
        }
        HeapUnlock(heaps[i]);
    }
    return total;
}

// Committed private pages of the address space (page allocations included).
size_t CommittedPrivateBytes() {
    size_t total = 0;
    MEMORY_BASIC_INFORMATION region;
    const char* address = nullptr;
    while (VirtualQuery(address, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) {
            total += region.RegionSize;
        }
        address = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return total;
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<size_t*>(count);
    return TRUE;
}

size_t CountThreadWindows() {
    size_t count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

struct Usage {
    size_t gdiObjects;
    size_t windows;
    size_t heapBytes;
    size_t privateBytes;
};

Usage Measure() {
    PumpMessages();
    return {CountGdiObjects(), CountThreadWindows(), HeapBytesInUse(), CommittedPrivateBytes()};
}

void Cycle(bool openSetValue) {
    SetUpControlToolkit();
    {
        TestParent parent;
        SpinEditRecord* field = nullptr;
        CreateSpinEdit(parent.window(), 1076, 10, 10, 90, 48, &field);
        ASSERT_NE(field, nullptr);
        SpinEditSetRange(field, 0.0f, 100.0f);
        SpinEditSetHint(field, "Red Tolerance");
        SpinEditSetValue(field, 33.0f);
        UpdateWindow(parent.window());
        if (openSetValue) {
            RunModal([&] { return RunSetValueDialog(field); },
                     {[](HWND dialog) { ClickButton(dialog, IDOK); }});
        }
        // The field goes with its parent, as with the filter dialog: the
        // hints' tooltips are owned by the top-level window and go first.
        // (Destroying the field alone first would leave Wine's comctl32
        // with 32 bytes of subclass data per hint.)
    }
    PumpMessages();
    TearDownControlToolkit();
}

TEST(ToolkitLeaks, TwoHundredCyclesLeaveObjectsWindowsAndMemoryAsTheyWere) {
    gModuleInstance = GetModuleHandleA(nullptr);
    for (int i = 0; i < 10; ++i) {
        Cycle(true);
    }
    const Usage before = Measure();
    for (int i = 0; i < 200; ++i) {
        Cycle(i % 10 == 0);
    }
    const Usage after = Measure();
    std::cout << "GetGuiResources: " << GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)
              << "; GDI objects " << before.gdiObjects << " -> " << after.gdiObjects << ", windows "
              << before.windows << " -> " << after.windows << ", heap bytes " << before.heapBytes
              << " -> " << after.heapBytes << ", private bytes " << before.privateBytes << " -> "
              << after.privateBytes << "\n";
    EXPECT_GT(before.gdiObjects, 0u) << "the GDI count must see the stock objects";
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.windows, before.windows);
    // A record lost per round would be 200 * ~150 bytes; allow for heap noise.
    EXPECT_LT(static_cast<long>(after.heapBytes) - static_cast<long>(before.heapBytes), 4096L);
    EXPECT_LE(after.privateBytes, before.privateBytes + 64 * 1024);
}

}  // namespace
