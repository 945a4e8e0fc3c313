// Many openings of the dialog leave nothing behind: no GDI object, no
// window, no page block of the panes or of the saved parameters, and no
// handle of the host.
#include <gtest/gtest.h>
#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "DialogRun.h"
#include "ImportPatch.h"
#include "Portrait.h"

namespace {

// Wine's GetGuiResources answers 0. The table of GDI handles that Windows
// and Wine share into every process (the PEB's GdiSharedHandleTable, at
// 0x94 in a 32-bit PEB) lists each live object with a non-zero type.
struct GdiHandleEntry {
    uint64_t kernelObject;
    uint32_t owner;
    uint16_t unique;
    uint8_t type;
    uint8_t flags;
    uint64_t user;
};
constexpr size_t kSharedHandleTableOffset = 0x94;
constexpr int kGdiHandleSlots = 65536;

int LiveGdiObjects() {
    PROCESS_BASIC_INFORMATION process = {};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                              sizeof process, nullptr);
    const auto* peb = reinterpret_cast<const BYTE*>(process.PebBaseAddress);
    const auto* table =
        *reinterpret_cast<const GdiHandleEntry* const*>(peb + kSharedHandleTableOffset);
    if (table == nullptr) return -1;
    int live = 0;
    for (int i = 0; i < kGdiHandleSlots; ++i) live += table[i].type != 0;
    return live;
}

struct HeapUse {
    size_t blocks = 0;
    size_t bytes = 0;
};

// Blocks in use in all the process's heaps (the module's C runtime
// allocates from one of them).
HeapUse BusyHeapBlocks() {
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    HeapUse use;
    for (DWORD i = 0; i < count; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps[i], &entry)) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
            ++use.blocks;
            use.bytes += entry.cbData;
        }
        HeapUnlock(heaps[i]);
    }
    return use;
}

BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    EnumChildWindows(window, CountWindow, count);
    return TRUE;
}

int ThreadWindows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

// Page blocks the module takes and gives back, through its imports.
std::set<void*> g_blocks;
int g_blocksTaken = 0;
ImportPatch* g_allocPatch = nullptr;
ImportPatch* g_freePatch = nullptr;

LPVOID WINAPI TakePages(LPVOID address, SIZE_T size, DWORD type, DWORD protection) {
    using Alloc = LPVOID(WINAPI*)(LPVOID, SIZE_T, DWORD, DWORD);
    LPVOID block =
        reinterpret_cast<Alloc>(g_allocPatch->Original())(address, size, type, protection);
    if (block != nullptr && address == nullptr) {
        g_blocks.insert(block);
        ++g_blocksTaken;
    }
    return block;
}

BOOL WINAPI GivePages(LPVOID address, SIZE_T size, DWORD type) {
    using Free = BOOL(WINAPI*)(LPVOID, SIZE_T, DWORD);
    if (type == MEM_RELEASE) g_blocks.erase(address);
    return reinterpret_cast<Free>(g_freePatch->Original())(address, size, type);
}

constexpr int kHeapSettlingOpenings = 40;
constexpr long kHeapNoiseBlocks = 5;

std::vector<DialogStep> OkSteps() {
    return {[](HWND dialog) { SendCommand(dialog, IDOK); }};
}

std::vector<DialogStep> ZoomAndCancelSteps() {
    return {[](HWND dialog) {
        SendCommand(dialog, IDC_ZOOM_IN);
        DragPane(dialog, IDC_DETAIL_PANE, POINT{40, 40}, POINT{60, 50});
        SendCommand(dialog, IDCANCEL);
    }};
}

TEST(DialogLifecycle, HundredOpeningsLeaveNothingBehind) {
    DialogRun run;
    Portrait portrait = MakePortrait(320, 200);
    SelectEyes(portrait);
    run.host.image() = portrait.image;
    ImportPatch alloc(LoadedModule(), "kernel32.dll", "VirtualAlloc",
                      reinterpret_cast<void*>(TakePages));
    ImportPatch release(LoadedModule(), "kernel32.dll", "VirtualFree",
                        reinterpret_cast<void*>(GivePages));
    g_allocPatch = &alloc;
    g_freePatch = &release;
    ASSERT_TRUE(alloc.Patched() && release.Patched());

    auto cycle = [&run](int i) {
        run.host.ClearLog();
        const testhost::RunReport report = run.Run(i % 2 == 0 ? OkSteps() : ZoomAndCancelSteps());
        EXPECT_EQ(report.result, i % 2 == 0 ? noErr : userCanceledErr);
        EXPECT_TRUE(g_blocks.empty()) << g_blocks.size() << " page blocks kept after opening " << i;
    };
    cycle(0);
    cycle(1);
    const int gdiBefore = LiveGdiObjects();
    const int windowsBefore = ThreadWindows();
    const int takenBefore = g_blocksTaken;
    // The system's own caches fill during the first few dozen openings.
    HeapUse heapSettled;
    for (int i = 0; i < 100; ++i) {
        if (i == kHeapSettlingOpenings) heapSettled = BusyHeapBlocks();
        cycle(i);
    }
    const HeapUse heapAfter = BusyHeapBlocks();
    const int gdiAfter = LiveGdiObjects();
    std::printf(
        "100 openings: GDI objects %d -> %d, windows %d -> %d, %d page blocks taken "
        "and all released, heap blocks in use after %d openings %u (%u bytes), at the "
        "end %u (%u bytes)\n",
        gdiBefore, gdiAfter, windowsBefore, ThreadWindows(), g_blocksTaken - takenBefore,
        kHeapSettlingOpenings, static_cast<unsigned>(heapSettled.blocks),
        static_cast<unsigned>(heapSettled.bytes), static_cast<unsigned>(heapAfter.blocks),
        static_cast<unsigned>(heapAfter.bytes));
    ASSERT_GT(gdiBefore, 0);
    EXPECT_EQ(gdiAfter, gdiBefore);
    // Wine's own bookkeeping moves by a block now and then; a leak of the
    // dialog grows by at least one block every other opening.
    EXPECT_LE(static_cast<long>(heapAfter.blocks) - static_cast<long>(heapSettled.blocks),
              kHeapNoiseBlocks);
    EXPECT_EQ(ThreadWindows(), windowsBefore);
    EXPECT_GE(g_blocksTaken - takenBefore, 100 * 5);  // panes, saved record, working buffers
    EXPECT_TRUE(run.host.LeakedHandles().empty());
    g_allocPatch = g_freePatch = nullptr;
}

}  // namespace
