// What a host cannot provoke: a start before the module is known, and memory that runs out at any step.
#include "dialogs/dialog_library.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "dialogs/library_state.h"
#include "tests/windows/dialogs/library_under_test.h"

namespace {

// How many allocations still succeed; below 0: all of them.
int g_allocationsLeft = -1;

}  // namespace

void* operator new(std::size_t size) {
    if (g_allocationsLeft == 0) {
        throw std::bad_alloc();
    }
    if (g_allocationsLeft > 0) {
        --g_allocationsLeft;
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using kx::test::LibraryUnderTest;
using kx::test::SystemModule;

// Opened services less closed ones, and started modules less stopped ones.
struct Balance {
    int services = 0;
    int modules = 0;
};

Balance Count(const std::vector<std::string>& log) {
    Balance balance;
    for (const std::string& line : log) {
        balance.services += line.rfind("LOGSERVICESTART", 0) == 0;
        balance.services -= line.rfind("LOGSERVICESTOP", 0) == 0;
        balance.modules += line == "LIBSTART";
        balance.modules -= line == "LIBSTOP";
    }
    return balance;
}

TEST(LibraryState, UndoesWhatItDidWhereverMemoryRunsOut) {
    LibraryUnderTest dll(SystemModule::kCurrent);
    int created = 0;
    int refused = 0;
    for (int allocations = 0; allocations < 40; ++allocations) {
        kx::LibraryState state;
        state.Attach(dll.Module());
        g_allocationsLeft = allocations;
        state.Start();
        g_allocationsLeft = -1;
        const bool exists = state.Library() != nullptr;
        const Balance started = Count(dll.TakeLog());
        EXPECT_LE(started.services, exists ? 1 : 0) << allocations << " allocations";
        EXPECT_LE(started.modules, exists ? 1 : 0) << allocations << " allocations";
        EXPECT_EQ(started.services, started.modules) << allocations << " allocations";
        state.Stop();
        const Balance stopped = Count(dll.TakeLog());
        EXPECT_EQ(started.services + stopped.services, 0) << allocations << " allocations";
        EXPECT_EQ(started.modules + stopped.modules, 0) << allocations << " allocations";
        EXPECT_EQ(state.Library(), nullptr);
        (exists ? created : refused) += 1;
    }
    EXPECT_GT(created, 0);
    EXPECT_GT(refused, 0);
}

}  // namespace
