// Episodes of a random host, as many and by the seed that the environment says (KX_SOAK_SEED, KX_SOAK_EPISODES): prints each
// step, and at the end what was done. A failure is the seed's: the same seed fails again.
#include <gtest/gtest.h>

#include <algorithm>
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
    const unsigned episodes = Setting("KX_SOAK_EPISODES", 8);
    SpyingSuite suite;
    LibraryMemory memory;
    UseEverythingOnce();
    SoakCounts counts;
    GuiObjects most{};
    GuiObjects least{~0ul, ~0ul};
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
        // A leak is more in every one of the later episodes than in any of the first.
        const GuiObjects now = CountGuiObjects();
        if (episode < episodes / 2) {
            most = {std::max(most.gdi, now.gdi), std::max(most.user, now.user)};
        } else {
            least = {std::min(least.gdi, now.gdi), std::min(least.user, now.user)};
        }
    }
    if (episodes > 1 && !HasFailure()) {
        EXPECT_LE(least.gdi, most.gdi + 1);
        EXPECT_LE(least.user, most.user + 2);
    }
    std::printf("counts: %u %ld %ld %ld %ld %ld\n", episodes, counts.steps, counts.panes, counts.modalDialogs, counts.endsInside,
                counts.statements);
}

}  // namespace
}  // namespace kx::test
