#include "bench/import_watch.h"

#include <cstddef>
#include <cstring>

namespace kx::bench {
namespace {

SystemCalls g_calls;

// A function in between, for any count of arguments: it counts and jumps on with registers and stack as they
// were. One for each kind and import, because the address to jump to is its own.
template <std::size_t Row>
struct Counter {
    static long* count;
    static void* original;
    [[gnu::naked]] static void Enter() {
        asm volatile(
            "pushl %%eax\n\t"
            "movl %0, %%eax\n\t"
            "incl (%%eax)\n\t"
            "popl %%eax\n\t"
            "jmp *%1\n\t"
            :
            : "m"(count), "m"(original)
            : "memory");
    }
};
template <std::size_t Row>
long* Counter<Row>::count = nullptr;
template <std::size_t Row>
void* Counter<Row>::original = nullptr;

struct WatchedImport {
    const char* name;
    long SystemCalls::*count;
};
constexpr WatchedImport kWatched[] = {
    {"malloc", &SystemCalls::allocations},
    {"calloc", &SystemCalls::allocations},
    {"realloc", &SystemCalls::allocations},
    {"_aligned_malloc", &SystemCalls::allocations},
    {"_strdup", &SystemCalls::allocations},
    {"HeapAlloc", &SystemCalls::allocations},
    {"HeapReAlloc", &SystemCalls::allocations},
    {"LocalAlloc", &SystemCalls::allocations},
    {"GlobalAlloc", &SystemCalls::allocations},
    {"VirtualAlloc", &SystemCalls::allocations},
    {"CreateFileA", &SystemCalls::files},
    {"CreateFileW", &SystemCalls::files},
    {"ReadFile", &SystemCalls::files},
    {"FindFirstFileA", &SystemCalls::files},
    {"GetFileAttributesA", &SystemCalls::files},
    {"LoadLibraryA", &SystemCalls::files},
    {"LoadLibraryW", &SystemCalls::files},
    {"fopen", &SystemCalls::files},
    {"fread", &SystemCalls::files},
    {"_open", &SystemCalls::files},
};
constexpr std::size_t kWatchedCount = sizeof kWatched / sizeof kWatched[0];

// Puts the counter of the watched import `Row` into a slot of an import table.
template <std::size_t Row>
void Replace(void** slot) {
    using Own = Counter<Row>;
    Own::count = &(g_calls.*kWatched[Row].count);
    if (*slot == reinterpret_cast<void*>(&Own::Enter)) {
        return;
    }
    Own::original = *slot;
    DWORD before = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
    *slot = reinterpret_cast<void*>(&Own::Enter);
    VirtualProtect(slot, sizeof *slot, before, &before);
}

template <std::size_t Row = 0>
bool ReplaceNamed(const char* name, void** slot) {
    if constexpr (Row < kWatchedCount) {
        if (std::strcmp(name, kWatched[Row].name) == 0) {
            Replace<Row>(slot);
            return true;
        }
        return ReplaceNamed<Row + 1>(name, slot);
    } else {
        return false;
    }
}

}  // namespace

SystemCalls& ImportWatch::Calls() {
    return g_calls;
}

int ImportWatch::Watch(HMODULE module) {
    auto* const base = reinterpret_cast<std::byte*>(module);
    if (base == nullptr) {
        return 0;
    }
    const auto at = [base](DWORD address) { return base + address; };
    const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos.e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    int replaced = 0;
    for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(at(imports.VirtualAddress));
         imports.VirtualAddress != 0 && library->Name != 0; ++library) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA32*>(at(library->OriginalFirstThunk));
        auto* slot = reinterpret_cast<void**>(at(library->FirstThunk));
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (!IMAGE_SNAP_BY_ORDINAL32(name->u1.Ordinal)) {
                const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(at(name->u1.AddressOfData));
                replaced += ReplaceNamed(reinterpret_cast<const char*>(entry->Name), slot) ? 1 : 0;
            }
        }
    }
    return replaced;
}

}  // namespace kx::bench
