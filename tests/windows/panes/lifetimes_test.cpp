// A pane may end at any moment: nothing of it runs, reads or writes afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/rig/library_memory.h"
#include "tests/rig/pane.h"

namespace {

using kx::test::HostWindow;
using kx::test::LibraryMemory;
using kx::test::LibraryUse;
using kx::test::NewRecord;
using kx::test::Pane;
using kx::test::PaneKind;
using kx::test::PaneKinds;
using kx::test::SpyingSuite;
using testing::IsEmpty;

TEST(Lifetimes, OpenedAndClosed) {
    for (const PaneKind& kind : PaneKinds()) {
        SpyingSuite suite;
        LibraryMemory memory(LibraryMemory::Kind::kFenced);
        LibraryUse library;
        HostWindow host;
        const auto record = NewRecord();
        suite.TakeReports();
        {
            Pane pane(kind, host, *record);
            EXPECT_TRUE(pane.IsAttached()) << kind;
            kx::test::Pump();
        }
        EXPECT_THAT(suite.TakeReports(), IsEmpty()) << kind;
    }
}

}  // namespace
