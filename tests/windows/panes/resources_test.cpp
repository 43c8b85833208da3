// What a pane takes it gives back: memory, also when it runs out at any step of its opening or its use, windows, and the
// system's objects.
#include <gmock/gmock.h>

#include "tests/rig/gui_objects.h"
#include "tests/rig/library_memory.h"
#include "tests/windows/panes/pane_steps.h"

namespace kx::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

int TopLevelWindows() {
    int count = 0;
    for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, nullptr, nullptr)) != nullptr;) {
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() ? 1 : 0;
    }
    return count;
}

class Resources : public testing::TestWithParam<PaneKind> {
  protected:
    // A pane opened and used once on a stage; the memory that runs out at one of them; and the end.
    template <class Use>
    bool RunOut(int allocations, const Step* step, Use&& use) {
        memory_.Rewind();
        const int before = memory_.Held();
        bool ranOut = false;
        {
            Stage stage;
            if (step == nullptr) {
                memory_.Limit(allocations);
            }
            suite_.TakeReports();
            Pane pane(GetParam(), stage.parent, stage.record.Record());
            if (step != nullptr && pane.IsAttached()) {
                Pump();
                memory_.Limit(allocations);
                step->act(pane);
                Pump();
            }
            ranOut = memory_.RanOut();
            memory_.Limit(-1);
            use(pane, ranOut);
            Pump();
            if (allocations / stride_ % 2 == 0) {
                stage.grandparent.Destroy();
            }
        }
        Pump();
        EXPECT_EQ(memory_.Held(), before);
        EXPECT_EQ(TopLevelWindows(), windows_);
        return ranOut;
    }

    SpyingSuite suite_;
    LibraryMemory memory_;
    LibraryUse library_;
    HostWindow host_;
    int windows_ = TopLevelWindows();
    // The table needs little memory to open.
    const int stride_ = GetParam().templateId == 0 ? 1 : 2;
};

// A failure that costs the pane its window or its contents is reported once; without memory for the object, for which
// there is no handle then, it is not. Some allocations can be done without.
TEST_P(Resources, MemoryComesBackWhereverItRunsOutInTheOpening) {
    int opened = 0;
    int failed = 0;
    for (int allocations = 0; opened < 3 && allocations < 400; allocations += stride_) {
        SCOPED_TRACE(allocations);
        RunOut(allocations, nullptr, [&](const Pane& pane, bool ranOut) {
            const std::vector<std::string> reports = suite_.TakeReports();
            if (pane.Handle() == 0) {
                EXPECT_TRUE(ranOut);
            } else if (!pane.IsAttached()) {
                ++failed;
                EXPECT_THAT(reports, testing::Contains(HasSubstr("LOGMEMORYERROR \"" + std::string(GetParam().source))));
            } else if (!ranOut) {
                ++opened;
                EXPECT_THAT(reports, IsEmpty());
            }
        });
    }
    EXPECT_EQ(opened, 3);
    EXPECT_GT(failed, 0);
}

TEST_P(Resources, MemoryComesBackWhereverItRunsOutInAStep) {
    for (const Step& step : StepsOf(GetParam())) {
        for (int allocations = 0; allocations < 40; allocations += stride_) {
            SCOPED_TRACE(std::string(step.name) + ' ' + std::to_string(allocations));
            const bool ranOut = RunOut(allocations, &step, [&](const Pane& pane, bool) {
                if (std::strcmp(step.name, "code typed") == 0) {
                    EXPECT_THAT(pane.Text(33831), testing::AnyOf("Testo di prima.", HasSubstr("rs"), HasSubstr("Ritmo sinusale.")));
                }
            });
            if (!ranOut) {
                break;
            }
        }
    }
}

class ResourcesOfEveryPane : public Resources {};

TEST_P(ResourcesOfEveryPane, OpenedAndClosedLeavesNothing) {
    const auto record = NewRecord();
    const auto openAndClose = [&](int i) {
        HostWindow inner(host_.Handle());
        Pane pane(GetParam(), inner, *record);
        ASSERT_TRUE(pane.IsAttached());
        if (i % 2 == 0) {
            inner.Destroy();
        }
    };
    int held = 0;
    GuiObjects before{};
    for (int i = 0; i < 9; ++i) {
        if (i == 3) {
            Pump();
            held = memory_.Held();
            before = CountGuiObjects();
        }
        openAndClose(i);
    }
    Pump();
    const GuiObjects after = CountGuiObjects();
    EXPECT_EQ(memory_.Held(), held);
    EXPECT_LE(after.gdi, before.gdi + 4);
    EXPECT_LE(after.user, before.user + 4);
    EXPECT_EQ(suite_.Uses("kxanalyze.dll") + suite_.Uses("kxdb.dll") + suite_.Uses("kxinterp.dll"), 0);
}

INSTANTIATE_TEST_SUITE_P(Panes, Resources, testing::ValuesIn(KindsOfFrames()), [](const auto& row) { return row.param.name; });
INSTANTIATE_TEST_SUITE_P(Panes, ResourcesOfEveryPane, testing::ValuesIn(PaneKinds()), [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace kx::test
