// What a pane takes it gives back: memory, also when it runs out at any step of its opening, and the system's objects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/rig/gui_objects.h"
#include "tests/rig/library_memory.h"
#include "tests/rig/pane.h"

namespace {

using kx::test::HostWindow;
using kx::test::KindOf;
using kx::test::LibraryMemory;
using kx::test::LibraryUse;
using kx::test::NewRecord;
using kx::test::Pane;
using kx::test::PaneKind;
using kx::test::SpyingSuite;
using testing::HasSubstr;
using testing::IsEmpty;

class Resources : public testing::TestWithParam<PaneKind> {
  protected:
    SpyingSuite suite_;
    LibraryMemory memory_{LibraryMemory::Kind::kFenced};
    LibraryUse library_;
    HostWindow host_;
    std::unique_ptr<kx::TestRecord> record_ = NewRecord();
};

// A failure that costs the pane its window or its contents is reported once; without memory for the object, for which
// there is no handle then, it is not. Some allocations can be done without.
TEST_P(Resources, MemoryComesBackWhereverItRunsOut) {
    { Pane warm(GetParam(), host_, *record_); }
    kx::test::Pump();
    int opened = 0;
    int failed = 0;
    for (int allocations = 0; opened < 3 && allocations < 400; ++allocations) {
        SCOPED_TRACE(allocations);
        suite_.TakeReports();
        const int before = memory_.Held();
        memory_.Limit(allocations);
        {
            Pane pane(GetParam(), host_, *record_);
            const bool ranOut = memory_.RanOut();
            memory_.Limit(-1);
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
        }
        kx::test::Pump();
        EXPECT_EQ(memory_.Held(), before);
    }
    EXPECT_EQ(opened, 3);
    EXPECT_GT(failed, 0);
}

TEST_P(Resources, OpenedAndClosedLeavesNothing) {
    const auto openAndClose = [this](int i) {
        HostWindow inner(host_.Handle());
        Pane pane(GetParam(), inner, *record_);
        ASSERT_TRUE(pane.IsAttached());
        if (i % 2 == 0) {
            inner.Destroy();
        }
    };
    for (int i = 0; i < 5; ++i) {
        openAndClose(i);
    }
    kx::test::Pump();
    const int held = memory_.Held();
    const kx::test::GuiObjects before = kx::test::CountGuiObjects();
    for (int i = 0; i < 40; ++i) {
        openAndClose(i);
    }
    kx::test::Pump();
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_EQ(memory_.Held(), held);
    EXPECT_LE(after.gdi, before.gdi + 4);
    EXPECT_LE(after.user, before.user + 4);
    EXPECT_EQ(suite_.Uses("kxanalyze.dll") + suite_.Uses("kxdb.dll") + suite_.Uses("kxinterp.dll"), 0);
}

BOOL CALLBACK CountPopup(HWND window, LPARAM found) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof name);
    *reinterpret_cast<int*>(found) += std::string(name) == "CompletionPopup";
    return TRUE;
}

// The windows of the library's completion that this thread still has.
int CountPopups() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountPopup, reinterpret_cast<LPARAM>(&count));
    return count;
}

TEST(ResourcesOfTyping, AKeystrokeThatRunsOutIsTyped) {
    SpyingSuite suite;
    LibraryMemory memory(LibraryMemory::Kind::kFenced);
    LibraryUse library;
    HostWindow host;
    const auto record = NewRecord();
    for (int allocations = 0; allocations < 24; ++allocations) {
        record->SetOriginalInterpretation(nullptr, "");
        const int before = memory.Held();
        {
            Pane pane(KindOf("Interpretation"), host, *record);
            memory.Limit(allocations);
            pane.Type(33831, "rs");
            memory.Limit(-1);
            kx::test::Pump();
            const std::string text = pane.Text(33831);
            EXPECT_TRUE(text == "rs" || text == "Ritmo sinusale.") << allocations << ": " << text;
        }
        kx::test::Pump();
        EXPECT_EQ(memory.Held(), before) << allocations;
        EXPECT_EQ(CountPopups(), 0) << allocations;
    }
}

INSTANTIATE_TEST_SUITE_P(Panes, Resources, testing::ValuesIn(kx::test::PaneKinds()), [](const auto& row) { return row.param.name; });

}  // namespace
