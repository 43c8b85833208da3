// Episodes of a random host, as many and by the seed that the environment says (KX_SOAK_SEED, KX_SOAK_EPISODES): prints each
// step, and at the end what was done. A failure is the seed's: the same seed fails again.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
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

// Handles in use, but for those that the system's own loader keeps of each load of a module (two, in some).
class Handles {
  public:
    Handles() {
        using Observer = void(CALLBACK*)(ULONG reason, const void* module, void* context);
        using Register = LONG(NTAPI*)(ULONG flags, Observer, void* context, void** cookie);
        void* cookie = nullptr;
        const auto watch = reinterpret_cast<Register>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "LdrRegisterDllNotification")));
        watch(
            0, [](ULONG reason, const void*, void*) CALLBACK { loads_ += reason == 1 ? 1 : 0; }, nullptr, &cookie);
        const long before = Highest();
        for (int i = 0; i < 8; ++i) {
            FreeLibrary(LoadLibraryA(kSiblings[0]));
        }
        keptOfALoad_ = (Highest() - before) / loads_;
    }

    long InUse() const { return Highest() - loads_ * keptOfALoad_; }

  private:
    // Of so many new ones that none stands empty below it: the system's own count is not kept everywhere.
    static long Highest() {
        std::array<HANDLE, 256> events{};
        std::intptr_t highest = 0;
        for (HANDLE& event : events) {
            event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
            highest = std::max(highest, reinterpret_cast<std::intptr_t>(event) / 4);
        }
        std::for_each(events.begin(), events.end(), CloseHandle);
        return highest;
    }

    static inline long loads_ = 0;
    long keptOfALoad_ = 0;
};

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
    const Handles handles;
    long mostHandles = 0;
    long leastHandles = LONG_MAX;
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
            mostHandles = std::max(mostHandles, handles.InUse());
        } else {
            least = {std::min(least.gdi, now.gdi), std::min(least.user, now.user)};
            leastHandles = std::min(leastHandles, handles.InUse());
        }
    }
    if (episodes > 1 && !HasFailure()) {
        EXPECT_LE(least.gdi, most.gdi + 1);
        EXPECT_LE(least.user, most.user + 2);
        EXPECT_LE(leastHandles, mostHandles + 4);
    }
    std::printf("counts: %u %ld %ld %ld %ld %ld\n", episodes, counts.steps, counts.panes, counts.modalDialogs, counts.endsInside,
                counts.statements);
}

}  // namespace
}  // namespace kx::test
