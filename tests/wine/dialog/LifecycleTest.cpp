// Many openings of the dialog leave nothing behind: no GDI object, no
// window, no memory block of the module's, and no handle of the host.
#include <gtest/gtest.h>
#include <windows.h>

#include <winternl.h>

#include <cstdio>
#include <set>

#include "DialogRun.h"
#include "ImportPatch.h"
#include "Portrait.h"

namespace {

// Wine's GetGuiResources answers 0. The table of GDI handles that Windows
// and Wine share into every process (the PEB's GdiSharedHandleTable, at
// 0x94 in a 32-bit PEB and at 0xF8 in a 64-bit one) lists each live object
// with a non-zero type.
struct GdiHandleEntry {
    uint64_t kernelObject;
    uint32_t owner;
    uint16_t unique;
    uint8_t type;
    uint8_t flags;
    uint64_t user;
};
constexpr size_t kSharedHandleTableOffset = sizeof(void*) == 8 ? 0xF8 : 0x94;
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

// Every block the module takes through its imports and has not given back:
// page blocks, the C runtime's heap blocks and global memory. Counting the
// module's own calls keeps the system's caches, which grow and shrink on
// their own, out of the count.
std::set<void*> g_blocks;
int g_blocksTaken = 0;
int g_pageBlocksTaken = 0;

void Took(void* block) {
    if (block == nullptr) return;
    g_blocks.insert(block);
    ++g_blocksTaken;
}

struct Patches;
Patches* g_patches = nullptr;  // the patches in place

template <typename Function>
Function Original(const ImportPatch& patch) {
    return reinterpret_cast<Function>(patch.Original());
}

template <typename Function>
void* Address(Function function) {
    return reinterpret_cast<void*>(function);
}

struct Patches {
    explicit Patches(HMODULE module)
        : virtualAlloc(module, "kernel32.dll", "VirtualAlloc", Address(TakePages)),
          virtualFree(module, "kernel32.dll", "VirtualFree", Address(GivePages)),
          malloc(module, "msvcrt.dll", "malloc", Address(TakeHeap)),
          calloc(module, "msvcrt.dll", "calloc", Address(TakeCleared)),
          realloc(module, "msvcrt.dll", "realloc", Address(Resize)),
          strdup(module, "msvcrt.dll", "_strdup", Address(Duplicate)),
          free(module, "msvcrt.dll", "free", Address(GiveHeap)),
          globalAlloc(module, "kernel32.dll", "GlobalAlloc", Address(TakeGlobal)),
          globalFree(module, "kernel32.dll", "GlobalFree", Address(GiveGlobal)) {
        g_patches = this;
    }
    ~Patches() { g_patches = nullptr; }
    bool All() const {
        for (const ImportPatch* patch : {&virtualAlloc, &virtualFree, &malloc, &calloc, &realloc,
                                         &strdup, &free, &globalAlloc, &globalFree})
            if (!patch->Patched()) return false;
        return true;
    }

    ImportPatch virtualAlloc, virtualFree, malloc, calloc, realloc, strdup, free, globalAlloc,
        globalFree;

    // The module's calls land here.
    static LPVOID WINAPI TakePages(LPVOID address, SIZE_T size, DWORD type, DWORD protection) {
        using Alloc = LPVOID(WINAPI*)(LPVOID, SIZE_T, DWORD, DWORD);
        LPVOID block = Original<Alloc>(g_patches->virtualAlloc)(address, size, type, protection);
        if (block != nullptr && address == nullptr) {
            Took(block);
            ++g_pageBlocksTaken;
        }
        return block;
    }

    static BOOL WINAPI GivePages(LPVOID address, SIZE_T size, DWORD type) {
        using Free = BOOL(WINAPI*)(LPVOID, SIZE_T, DWORD);
        if (type == MEM_RELEASE) g_blocks.erase(address);
        return Original<Free>(g_patches->virtualFree)(address, size, type);
    }

    static void* __cdecl TakeHeap(size_t size) {
        void* block = Original<void*(__cdecl*)(size_t)>(g_patches->malloc)(size);
        Took(block);
        return block;
    }

    static void* __cdecl TakeCleared(size_t count, size_t size) {
        void* block = Original<void*(__cdecl*)(size_t, size_t)>(g_patches->calloc)(count, size);
        Took(block);
        return block;
    }

    static void* __cdecl Resize(void* block, size_t size) {
        void* moved = Original<void*(__cdecl*)(void*, size_t)>(g_patches->realloc)(block, size);
        if (moved != nullptr || size == 0) g_blocks.erase(block);
        Took(moved);
        return moved;
    }

    static char* __cdecl Duplicate(const char* text) {
        char* copy = Original<char*(__cdecl*)(const char*)>(g_patches->strdup)(text);
        Took(copy);
        return copy;
    }

    static void __cdecl GiveHeap(void* block) {
        g_blocks.erase(block);
        Original<void(__cdecl*)(void*)>(g_patches->free)(block);
    }

    static HGLOBAL WINAPI TakeGlobal(UINT flags, SIZE_T size) {
        HGLOBAL block =
            Original<HGLOBAL(WINAPI*)(UINT, SIZE_T)>(g_patches->globalAlloc)(flags, size);
        Took(block);
        return block;
    }

    static HGLOBAL WINAPI GiveGlobal(HGLOBAL block) {
        g_blocks.erase(block);
        return Original<HGLOBAL(WINAPI*)(HGLOBAL)>(g_patches->globalFree)(block);
    }
};

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
    const Patches patches(LoadedModule());
    ASSERT_TRUE(patches.All());

    auto cycle = [&run](int i) {
        run.host.ClearLog();
        const testhost::RunReport report = run.Run(i % 2 == 0 ? OkSteps() : ZoomAndCancelSteps());
        EXPECT_EQ(report.result, i % 2 == 0 ? noErr : userCanceledErr);
    };
    // The first openings fill the system's caches and the module's
    // one-time tables.
    cycle(0);
    cycle(1);
    g_blocks.clear();
    const int gdiBefore = LiveGdiObjects();
    const int windowsBefore = ThreadWindows();
    const int pagesBefore = g_pageBlocksTaken;
    const int blocksBefore = g_blocksTaken;
    for (int i = 0; i < 100; ++i) {
        cycle(i);
        EXPECT_TRUE(g_blocks.empty()) << g_blocks.size() << " blocks kept after opening " << i;
    }
    const int gdiAfter = LiveGdiObjects();
    std::printf(
        "100 openings: GDI objects %d -> %d, windows %d -> %d, %d blocks taken (%d of them "
        "page blocks) and all given back\n",
        gdiBefore, gdiAfter, windowsBefore, ThreadWindows(), g_blocksTaken - blocksBefore,
        g_pageBlocksTaken - pagesBefore);
    ASSERT_GT(gdiBefore, 0);
    EXPECT_EQ(gdiAfter, gdiBefore);
    EXPECT_EQ(ThreadWindows(), windowsBefore);
    EXPECT_GE(g_pageBlocksTaken - pagesBefore, 100 * 5);  // panes, saved record, working buffers
    EXPECT_TRUE(run.host.LeakedHandles().empty());
}

}  // namespace
