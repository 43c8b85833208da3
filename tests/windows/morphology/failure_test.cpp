// Morphology panes without engine, with one that refuses, and with records that hold no beat or an absurd
// one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/windows/morphology/pane_under_test.h"

namespace {

using kx::test::Engine;
using kx::test::Item;
using kx::test::ItemText;
using kx::test::kAllPanes;
using kx::test::NewRecord;
using kx::test::PaneKind;
using kx::test::PaneUnderTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Also where the limit that the rules set is not where the marker was dropped.
void ExpectStoredAndReported(PaneUnderTest& pane, const PaneKind& kind) {
    const std::string figure = ItemText(pane.Pane(), kind.figure);
    std::vector<int> expected = pane.Stored();
    pane.Library().TakeLog();
    SendMessageA(pane.Pane(), 1345, 900, KX_LEAD_V6);
    expected[0] = kind.isGlobal ? 250 : &kind == &kx::test::kQrsPane ? 335 : expected[1] - 5;
    EXPECT_EQ(pane.Stored(), expected) << kind.name;
    EXPECT_EQ(pane.Shown(), expected) << kind.name;
    EXPECT_NE(pane.Flags(), 0) << kind.name;
    EXPECT_EQ(ItemText(pane.Pane(), kind.figure), figure) << kind.name;
    EXPECT_FALSE(pane.CanReset()) << kind.name << ": nothing else changes on the screen";
    EXPECT_TRUE(pane.IsMarkerAt(pane.ColumnOf(expected[0]))) << kind.name;
    const std::vector<std::string> log = pane.Library().TakeLog();
    ASSERT_FALSE(log.empty()) << kind.name;
    EXPECT_THAT(log.back(), testing::AllOf(HasSubstr("LOGOEMERROR \"" + std::string(kind.source) + "\""), HasSubstr("\"UpdateDetection\"")))
        << kind.name;
}

TEST(MorphologyFailure, EngineRefuses) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        pane.Spy().fail(1);
        ExpectStoredAndReported(pane, *kind);
        EXPECT_EQ(pane.Spy().calls(), 1u);
        pane.Spy().fail(0);
    }
}

TEST(MorphologyFailure, EngineIsMissing) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind, Engine::kMissing);
        ASSERT_NE(pane.Pane(), nullptr);
        ExpectStoredAndReported(pane, *kind);
    }
}

TEST(MorphologyFailure, RecordWithoutEpisode) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind, Engine::kSpy, std::make_unique<kx::TestRecord>());
        EXPECT_NE(pane.Handle(), 0u) << kind->name;
        EXPECT_EQ(pane.Pane(), nullptr) << kind->name;
        EXPECT_EQ(GetWindow(pane.Host(), GW_CHILD), nullptr) << kind->name;
        const std::vector<std::string> log = pane.Library().TakeLog();
        EXPECT_THAT(log, ElementsAre(HasSubstr("LOGMEMORYERROR \"" + std::string(kind->source) + "\"")));
    }
}

TEST(MorphologyFailure, BeatWithoutSamples) {
    for (const PaneKind* kind : kAllPanes) {
        auto record = NewRecord();
        record->Episode(0)->samplesPerLead = 0;
        record->Episode(0)->sampleRate = 0;
        PaneUnderTest pane(*kind, Engine::kSpy, std::move(record));
        ASSERT_NE(pane.Pane(), nullptr) << kind->name;
        EXPECT_EQ(pane.Shown(), pane.Stored()) << kind->name;
        SendMessageA(pane.View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 100));
        SendMessageA(pane.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, 100));
        SendMessageA(pane.View(), WM_LBUTTONUP, 0, MAKELPARAM(200, 100));
        kx::test::Pump();
        EXPECT_EQ(pane.Spy().calls(), 0u) << kind->name;
    }
}

// No value that a message can carry leaves the record with a time that is none.
TEST(MorphologyFailure, AbsurdNotifications) {
    for (const PaneKind* kind : kAllPanes) {
        auto record = NewRecord();
        for (KxLeadMeasurements& lead : record->Episode(0)->measurements.leads) {
            for (const auto& marker : kind->markers) {
                lead.*marker.value = 2;
            }
        }
        PaneUnderTest pane(*kind, Engine::kSpy, std::move(record));
        for (const std::uint32_t value : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 65535u, 65536u}) {
            for (UINT id = 1345; id <= 1350; ++id) {
                SendMessageA(pane.Pane(), id, value, KX_LEAD_V6);
                ASSERT_EQ(pane.Shown(), pane.Stored()) << kind->name << " " << value << " " << id;
                for (const int ms : pane.Stored()) {
                    ASSERT_TRUE(ms < 100 || ms > 65400) << kind->name << " " << ms;
                }
            }
        }
    }
}

TEST(MorphologyFailure, RealEngineKeepsTheMarkerAndMeasures) {
    PaneUnderTest pane(kx::test::kGeneralPane, Engine::kReal);
    SendMessageA(pane.Pane(), 1347, 340, KX_LEAD_V6);
    SendMessageA(pane.Pane(), 1348, 400, KX_LEAD_V6);
    EXPECT_EQ(pane.Set().leads[0].qrsOn, 340);
    EXPECT_EQ(pane.Set().leads[0].qrsOff, 400);
    EXPECT_EQ(ItemText(pane.Pane(), 31310), "60");
    EXPECT_TRUE(pane.CanReset());
    pane.Click(31264);
    EXPECT_EQ(pane.Flags(), 0);
    EXPECT_EQ(pane.Shown(), pane.Stored());
    EXPECT_THAT(pane.Library().TakeLog(), IsEmpty());
}

}  // namespace
