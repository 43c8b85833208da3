// Episodes of a random host, as many and by the seed that the environment says (KX_SOAK_SEED, KX_SOAK_EPISODES): prints each
// step, and at the end what was done. A failure is the seed's: the same seed fails again.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "tests/rig/gui_objects.h"
#include "tests/rig/library_memory.h"
#include "tests/soak/random_host.h"

namespace kx::test {
namespace {

constexpr int kSteps = 60;

unsigned Setting(const char* name, unsigned otherwise) {
    const char* const value = std::getenv(name);
    return value != nullptr ? static_cast<unsigned>(std::strtoul(value, nullptr, 10)) : otherwise;
}

DWORD Handles() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

// What the library makes once and keeps: a list, a lock, a window class.
void UseEverythingOnce() {
    const LibraryUse library;
    HostWindow host;
    const auto record = NewRecord();
    for (const PaneKind& kind : PaneKinds()) {
        const Pane pane(kind, host, *record);
        Pump();
    }
    const KxRect area{0, 0, 300, 100};
    const auto escape = [](HWND editor) { SendMessageA(editor, WM_COMMAND, IDCANCEL, 0); };
    DriveModal([&] { library->editInterpretation(host.Object(), record.get(), &area, 0); }, escape);
}

TEST(Soak, ARandomHostBreaksNothing) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const unsigned seed = Setting("KX_SOAK_SEED", 1);
    const unsigned episodes = Setting("KX_SOAK_EPISODES", 6);
    SpyingSuite suite;
    LibraryMemory memory(LibraryMemory::Kind::kFenced);
    UseEverythingOnce();
    SoakCounts counts;
    GuiObjects objects{};
    DWORD handles = 0;
    for (unsigned episode = 0; episode < episodes && !HasFailure(); ++episode) {
        std::printf("seed %u episode %u\n", seed, episode);
        SCOPED_TRACE("seed " + std::to_string(seed) + " episode " + std::to_string(episode));
        const int before = memory.Held();
        {
            RandomHost host(seed * 1000 + episode, suite, counts);
            host.Run(kSteps);
        }
        Pump();
        for (const char* const module : kSiblings) {
            EXPECT_EQ(suite.Uses(module), 0) << module;
            suite.Lay(module, Sibling::kSpying);
        }
        EXPECT_LE(memory.Held(), before) << "blocks that nobody gave back";
        if (episode == 2) {
            objects = CountGuiObjects();
            handles = Handles();
        }
    }
    if (episodes > 4 && !HasFailure()) {
        const GuiObjects left = CountGuiObjects();
        EXPECT_LE(left.gdi, objects.gdi + 8);
        EXPECT_LE(left.user, objects.user + 8);
        EXPECT_LE(Handles(), handles + 8);
    }
    std::printf("counts: %u %ld %ld %ld %ld %ld\n", episodes, counts.steps, counts.panes, counts.modalDialogs, counts.endsInside,
                counts.statements);
}

}  // namespace
}  // namespace kx::test
