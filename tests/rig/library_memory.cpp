#include "tests/rig/library_memory.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "tests/rig/pane.h"

namespace kx::test {
namespace {

// Nothing here may ask the C++ run-time for memory while it is asked for some.
constexpr std::size_t kPage = 4096;
constexpr std::size_t kArena = std::size_t{512} << 20;

bool g_fenced = false;
int g_left = -1;
bool g_ranOut = false;
int g_held = 0;
char* g_arena = nullptr;
std::size_t g_arenaUsed = 0;
std::size_t g_firstUsed = 0;
std::size_t g_markUsed = 0;
int g_markHeld = -1;  // below 0: there is no mark

// Of the block that begins in a page of the arena; 0: none does, or it was freed.
std::array<std::size_t, kArena / kPage> g_sizes;

bool IsFenced(const void* address) { return g_arena != nullptr && address >= g_arena && address < g_arena + kArena; }

std::size_t PageOf(const void* address) { return static_cast<std::size_t>(static_cast<const char*>(address) - g_arena) / kPage; }

std::size_t RoomFor(std::size_t size) { return (size + kPage - 1) / kPage * kPage; }

// The block ends, to the alignment of a block, where the page that is missing begins.
void* AllocateFenced(std::size_t size) {
    const std::size_t room = RoomFor(size);
    char* const pages = g_arena + g_arenaUsed;
    if (g_arenaUsed + room + kPage > kArena || VirtualAlloc(pages, room, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        return nullptr;
    }
    g_arenaUsed += room + kPage;
    std::memset(pages, 0xCD, room);
    g_sizes[PageOf(pages)] = size;
    ++g_held;
    return pages + room - (size + 7) / 8 * 8;
}

void* Allocate(std::size_t size) {
    if (g_left == 0) {
        g_ranOut = true;
        return nullptr;
    }
    g_left -= g_left > 0 ? 1 : 0;
    return g_fenced ? AllocateFenced(std::max<std::size_t>(size, 1)) : std::malloc(size);
}

void Free(void* memory) {
    if (!IsFenced(memory)) {
        std::free(memory);  // from before
        return;
    }
    const std::size_t page = PageOf(memory);
    if (g_sizes[page] == 0) {
        RaiseException(STATUS_HEAP_CORRUPTION, 0, 0, nullptr);  // freed twice
    }
    VirtualFree(g_arena + page * kPage, RoomFor(g_sizes[page]), MEM_DECOMMIT);
    g_sizes[page] = 0;
    --g_held;
}

void* Calloc(std::size_t count, std::size_t size) {
    void* const memory = Allocate(count * size);
    return memory == nullptr ? nullptr : std::memset(memory, 0, count * size);
}

void* Realloc(void* memory, std::size_t size) {
    if (memory != nullptr && !IsFenced(memory)) {
        return std::realloc(memory, size);  // from before
    }
    void* const moved = Allocate(size);
    if (moved != nullptr && memory != nullptr) {
        std::memcpy(moved, memory, std::min(size, g_sizes[PageOf(memory)]));
        Free(memory);
    }
    return moved;
}

template <class T>
T* At(DWORD address) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(LibraryModuleHandle()) + address);
}

// Replaces an address that the library imports from the C run-time.
void Import(const char* name, void* function) {
    const auto& headers = *At<IMAGE_NT_HEADERS32>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    const DWORD table = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* entry = At<IMAGE_IMPORT_DESCRIPTOR>(table); entry->Name != 0; ++entry) {
        if (lstrcmpiA(At<char>(entry->Name), "msvcrt.dll") != 0) {
            continue;
        }
        auto* address = At<void*>(entry->FirstThunk);
        for (const auto* named = At<DWORD>(entry->OriginalFirstThunk); *named != 0; ++named, ++address) {
            if (std::strcmp(At<char>(*named + sizeof(WORD)), name) == 0) {
                DWORD before = 0;
                VirtualProtect(address, sizeof *address, PAGE_READWRITE, &before);
                *address = function;
            }
        }
    }
}

template <class Function>
void* AsAddress(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

LibraryMemory::LibraryMemory() {
    static const bool imported = [] {
        Import("malloc", AsAddress(Allocate));
        Import("calloc", AsAddress(Calloc));
        Import("realloc", AsAddress(Realloc));
        Import("free", AsAddress(Free));
        return true;
    }();
    EXPECT_TRUE(imported);
    if (g_arena == nullptr) {
        g_arena = static_cast<char*>(VirtualAlloc(nullptr, kArena, MEM_RESERVE, PAGE_NOACCESS));
        EXPECT_NE(g_arena, nullptr);
    }
    g_fenced = true;
    g_held = 0;
    g_left = -1;
    g_markHeld = -1;
    g_firstUsed = g_arenaUsed;
}

LibraryMemory::~LibraryMemory() {
    g_left = -1;
    g_fenced = false;
    if (g_held <= 0) {
        g_arenaUsed = g_firstUsed;
    }
}

void LibraryMemory::Rewind() {
    if (g_markHeld >= 0 && g_held <= g_markHeld) {
        g_arenaUsed = g_markUsed;
    }
    g_markUsed = g_arenaUsed;
    g_markHeld = g_held;
}

void LibraryMemory::Limit(int allocations) {
    g_left = allocations;
    g_ranOut = false;
}

bool LibraryMemory::RanOut() const { return g_ranOut; }

int LibraryMemory::Held() const { return g_held; }

}  // namespace kx::test
