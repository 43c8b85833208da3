// Long drags and many panes.
#include <gtest/gtest.h>

#include "tests/support/gui_objects.h"
#include "tests/windows/morphology/pane_under_test.h"

namespace {

using kx::test::kAllPanes;
using kx::test::PaneKind;
using kx::test::PaneUnderTest;

// Busy bytes of the process's heap.
std::size_t BusyHeap() {
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    const HANDLE heap = GetProcessHeap();
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    HeapUnlock(heap);
    return bytes;
}

// The pointer goes to and fro between two places and ends at the second; all of it waits in the queue at
// once.
TEST(MorphologyEndurance, DragOfFiveThousandSteps) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        const std::vector<int> before = pane.Stored();
        const int row = pane.Row();
        const int start = pane.ColumnOf(before[0]);
        const int end = pane.ColumnOf(before[0] - 60);
        const int left = pane.MsAt(end);
        ASSERT_TRUE(pane.IsMarkerAt(start));
        PostMessageA(pane.View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start, row));
        for (int step = 1; step <= 5000; ++step) {
            const int span = start - end;
            const int at = step % (2 * span);
            const int column = step == 5000 ? end : start - (at < span ? at : 2 * span - at);
            ASSERT_TRUE(PostMessageA(pane.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(column, row)));
        }
        PostMessageA(pane.View(), WM_LBUTTONUP, 0, MAKELPARAM(end, row));
        const DWORD begin = GetTickCount();
        kx::test::Pump();
        RecordProperty(std::string("ms_") + kind->name, static_cast<int>(GetTickCount() - begin));
        std::vector<int> expected = before;
        expected[0] = left;
        EXPECT_EQ(pane.Stored(), expected) << kind->name;
        EXPECT_EQ(pane.Shown(), expected) << kind->name;
        EXPECT_EQ(pane.Number(kind->figure), kx::test::FigureOfCall(pane.Spy().calls())) << kind->name;
        EXPECT_TRUE(pane.IsMarkerAt(end)) << kind->name;
        pane.Undo();
        EXPECT_EQ(pane.Stored(), before) << kind->name << ": one drag is one step";
    }
}

TEST(MorphologyEndurance, OpenedAndClosedAThousandTimes) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest first(*kind);
        KxHostWindow host{nullptr, first.Host()};
        const auto openAndClose = [&] {
            const std::uint32_t handle = ((*first.Library()).*kind->open)(&host, &first.Record());
            ASSERT_NE(handle, 0u);
            const auto pane = static_cast<HWND>(
                reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle))->handle);
            ASSERT_TRUE(IsWindow(pane));
            SendMessageA(pane, 1345, 190, KX_LEAD_V6);
            ASSERT_TRUE(DestroyWindow(pane));
        };
        kx::test::GuiObjects before{};
        std::size_t heapBefore = 0;
        for (int i = 0; i < 1000; ++i) {
            openAndClose();
            if (HasFatalFailure()) {
                return;
            }
            kx::test::Pump();
            if (i == 50) {
                before = kx::test::CountGuiObjects();
                heapBefore = BusyHeap();
            }
        }
        const kx::test::GuiObjects after = kx::test::CountGuiObjects();
        EXPECT_LE(after.gdi, before.gdi + 4) << kind->name;
        EXPECT_LE(after.user, before.user + 4) << kind->name;
        EXPECT_LE(BusyHeap(), heapBefore + 16384) << kind->name;
    }
}

}  // namespace
