// Who owns what of the hypertrophy pane, counted: all memory of a pane is given back once, also when memory
// runs out at any step of its opening.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "dialogs/dialog_library.h"
#include "lib/dbclient/test_record.h"
#include "lib/windows/window.h"
#include "tests/windows/dialogs/library_under_test.h"

namespace {

// How many allocations still succeed; below 0: all of them.
int g_allocationsLeft = -1;
// Allocations that were not freed yet.
int g_live = 0;

}  // namespace

// Not inlined: the compiler would see a new of its own freed by free.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (g_allocationsLeft == 0) {
        throw std::bad_alloc();
    }
    if (g_allocationsLeft > 0) {
        --g_allocationsLeft;
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        ++g_live;
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    g_live -= memory == nullptr ? 0 : 1;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    g_live -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(HypertrophyMemory, ComesBackWhereverItRunsOut) {
    kx::test::LibraryUnderTest dll(kx::test::SystemModule::kCurrent);
    kx::DialogLibrary library(dll.Module());
    const auto test = std::make_unique<kx::TestRecord>();
    test->AddEpisode(kx::kTwelveLeadConfiguration, 12, 600, 1000, 1000);
    const HWND parentWindow = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 900, 500, nullptr, nullptr,
                                              GetModuleHandleA(nullptr), nullptr);
    kx::Window parent(parentWindow, nullptr, 0);
    dll.TakeLog();
    int opened = 0;
    int refused = 0;
    int failed = 0;
    for (int allocations = 0; allocations < 60; ++allocations) {
        const int before = g_live;
        g_allocationsLeft = allocations;
        const std::uint32_t handle = library.HYPERTROPHYDIALOG(&parent, test.get());
        g_allocationsLeft = -1;
        const HWND pane = handle == 0
                              ? nullptr
                              : reinterpret_cast<kx::Window*>(static_cast<std::uintptr_t>(handle))->Handle();
        const bool attached = pane != nullptr && kx::Window::FromHandle(pane) != nullptr;
        if (pane != nullptr) {
            DestroyWindow(pane);
        }
        const int kept = g_live - before;
        const std::vector<std::string> log = dll.TakeLog();
        if (handle == 0) {
            ++refused;
            EXPECT_EQ(kept, 0) << allocations << " allocations";
            EXPECT_THAT(log, IsEmpty()) << allocations << " allocations";
        } else if (!attached) {
            // The object itself stays: the host holds its address.
            ++failed;
            EXPECT_EQ(kept, 1) << allocations << " allocations";
            EXPECT_THAT(log, ElementsAre("LOGMEMORYERROR \"hyptrphy\" 273")) << allocations << " allocations";
        } else {
            ++opened;
            EXPECT_EQ(kept, 0) << allocations << " allocations";
            EXPECT_THAT(log, IsEmpty()) << allocations << " allocations";
        }
    }
    EXPECT_EQ(refused, 1);
    EXPECT_GE(failed, 23);  // one for each wrapper
    EXPECT_GT(opened, 10);
    DestroyWindow(parentWindow);
}

}  // namespace
