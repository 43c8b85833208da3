// Long drags and many panes.
#include <gtest/gtest.h>

#include "tests/rig/gui_objects.h"
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
        const int steps = kind == &kx::test::kQrsPane ? 5000 : 200;
        const std::vector<int> before = pane.Stored();
        const int row = pane.Row();
        const int start = pane.ColumnOf(before[0]);
        const int end = pane.ColumnOf(before[0] - 60);
        const int left = pane.MsAt(end);
        ASSERT_TRUE(pane.IsMarkerAt(start));
        PostMessageA(pane.View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(start, row));
        for (int step = 1; step <= steps; ++step) {
            const int span = start - end;
            const int at = step % (2 * span);
            const int column = step == steps ? end : start - (at < span ? at : 2 * span - at);
            ASSERT_TRUE(PostMessageA(pane.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(column, row)));
        }
        PostMessageA(pane.View(), WM_LBUTTONUP, 0, MAKELPARAM(end, row));
        kx::test::Pump();
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

// The library's controls, those of its manifest, for what the test creates itself.
class LibraryControls {
  public:
    explicit LibraryControls(HMODULE library) {
        char path[MAX_PATH] = {};
        GetModuleFileNameA(library, path, MAX_PATH);
        ACTCTXA description{};
        description.cbSize = sizeof description;
        description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        description.lpSource = path;
        description.hModule = library;
        description.lpResourceName = MAKEINTRESOURCEA(2);
        context_ = CreateActCtxA(&description);
        EXPECT_TRUE(ActivateActCtx(context_, &cookie_));
    }
    ~LibraryControls() {
        DeactivateActCtx(0, cookie_);
        ReleaseActCtx(context_);
    }
    LibraryControls(const LibraryControls&) = delete;
    LibraryControls& operator=(const LibraryControls&) = delete;

  private:
    HANDLE context_ = nullptr;
    ULONG_PTR cookie_ = 0;
};

INT_PTR CALLBACK IdleProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// How many bytes of the heap each of so many calls leaves busy.
template <class Call>
double HeapGrowth(int calls, Call&& call) {
    const std::size_t before = BusyHeap();
    for (int i = 0; i < calls; ++i) {
        call();
    }
    return (static_cast<double>(BusyHeap()) - static_cast<double>(before)) / calls;
}

// 1000 times in all. The system's own edit controls may leave a few bytes each; a pane must not leave more
// than its bare template does.
TEST(MorphologyEndurance, OpeningAndClosingLeavesNothingBehind) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest first(*kind);
        KxHostWindow host{nullptr, first.Host()};
        const auto pane = [&] {
            const std::uint32_t handle = ((*first.Library()).*kind->open)(&host, &first.Record());
            ASSERT_NE(handle, 0u);
            const auto window = static_cast<HWND>(reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle))->handle);
            SendMessageA(window, 1345, 190, KX_LEAD_V6);
            ASSERT_TRUE(DestroyWindow(window));
            kx::test::Pump();
        };
        const auto bareTemplate = [&] {
            const LibraryControls controls(first.Library().Module());
            const HWND window = CreateDialogParamA(first.Library().Module(), MAKEINTRESOURCEA(kind->templateId), first.Host(), IdleProc, 0);
            ASSERT_TRUE(DestroyWindow(window));
            kx::test::Pump();
        };
        HeapGrowth(20, pane);
        HeapGrowth(20, bareTemplate);
        const double bare = HeapGrowth(50, bareTemplate);
        const kx::test::GuiObjects before = kx::test::CountGuiObjects();
        const double growth = HeapGrowth(230, pane);
        const kx::test::GuiObjects after = kx::test::CountGuiObjects();
        EXPECT_LE(after.gdi, before.gdi + 4) << kind->name;
        EXPECT_LE(after.user, before.user + 4) << kind->name;
        EXPECT_LE(growth, bare + 16) << kind->name;
    }
}

}  // namespace
