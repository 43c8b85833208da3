#include "tests/rig/library_memory.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "tests/rig/pane.h"

namespace kx::test {
namespace {

// Nothing here may ask the C++ run-time for memory while it is asked for some.
constexpr std::size_t kPage = 4096;
constexpr std::size_t kArena = std::size_t{512} << 20;
constexpr std::size_t kMostBlocks = std::size_t{1} << 17;

struct Block {
    void* address;
    std::size_t size;
};

bool g_fenced = false;
int g_left = -1;
bool g_ranOut = false;
int g_held = 0;
Block* g_blocks = nullptr;  // open hashing by address; a freed one keeps its place with size 0
char* g_arena = nullptr;
std::size_t g_arenaUsed = 0;
std::size_t g_firstUsed = 0;
std::size_t g_markUsed = 0;
int g_markHeld = -1;  // below 0: there is no mark

bool IsFenced(const void* address) { return g_arena != nullptr && address >= g_arena && address < g_arena + kArena; }

Block& PlaceOf(void* address) {
    if (IsFenced(address)) {
        // By its first page, so that the table has room for all that the arena has.
        address = reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(address) / kPage * kPage);
    }
    std::size_t at = (reinterpret_cast<std::uintptr_t>(address) >> 3) * 2654435761u % kMostBlocks;
    while (g_blocks[at].address != nullptr && g_blocks[at].address != address) {
        at = (at + 1) % kMostBlocks;
    }
    return g_blocks[at];
}

// The block ends, to the alignment of a block, where the page that is missing begins.
void* AllocateFenced(std::size_t size) {
    const std::size_t room = (size + kPage - 1) / kPage * kPage;
    if (g_arenaUsed + room + kPage > kArena) {
        return nullptr;
    }
    char* const pages = g_arena + g_arenaUsed;
    g_arenaUsed += room + kPage;
    if (VirtualAlloc(pages, room, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        return nullptr;
    }
    std::memset(pages, 0xCD, room);
    return pages + room - (size + 7) / 8 * 8;
}

void* Allocate(std::size_t size) {
    if (g_left == 0) {
        g_ranOut = true;
        return nullptr;
    }
    g_left -= g_left > 0 ? 1 : 0;
    size = std::max<std::size_t>(size, 1);
    void* const memory = g_fenced ? AllocateFenced(size) : std::malloc(size);
    if (memory != nullptr) {
        Block& block = PlaceOf(memory);
        block = {g_fenced ? reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(memory) / kPage * kPage) : memory, size};
        ++g_held;
    }
    return memory;
}

void Free(void* memory) {
    if (memory == nullptr) {
        return;
    }
    Block& block = PlaceOf(memory);
    if (block.address == nullptr) {
        std::free(memory);  // from before
        return;
    }
    if (block.size == 0) {
        RaiseException(STATUS_HEAP_CORRUPTION, 0, 0, nullptr);  // freed twice
    }
    --g_held;
    if (IsFenced(memory)) {
        VirtualFree(reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(memory) / kPage * kPage),
                    (block.size + kPage - 1) / kPage * kPage, MEM_DECOMMIT);
    } else {
        std::memset(memory, 0xDD, block.size);
        std::free(memory);
    }
    block.size = 0;
}

void* Calloc(std::size_t count, std::size_t size) {
    void* const memory = Allocate(count * size);
    return memory == nullptr ? nullptr : std::memset(memory, 0, count * size);
}

void* Realloc(void* memory, std::size_t size) {
    if (memory != nullptr && PlaceOf(memory).address == nullptr) {
        return std::realloc(memory, size);  // from before
    }
    void* const moved = Allocate(size);
    if (moved != nullptr && memory != nullptr) {
        std::memcpy(moved, memory, std::min(size, PlaceOf(memory).size));
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
        g_blocks = static_cast<Block*>(VirtualAlloc(nullptr, kMostBlocks * sizeof(Block), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
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
