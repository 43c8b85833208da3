// What a morphology pane shows, and what its markers, its boxes and its Reset do.
#include <gmock/gmock.h>

#include "tests/windows/morphology/morph_pane.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Figures = std::vector<std::pair<UINT, int>>;  // edits and what they show

struct Contents {
    const MorphKind& kind;
    Figures ofV6, ofIii;
};

const Contents kContents[] = {
    {kGeneralPane, {{31308, 160}, {31312, 110}, {31310, 98}, {31307, 390}, {31313, 75}, {31314, -35}, {31309, 411}, {31317, 423}}, {}},
    {kQrsPane,
     {{31291, 350}, {31278, 450}, {31296, -1103}, {31297, 1104}, {31298, -1105}, {31299, 1106}, {31301, -1107}, {31310, 98}},
     {{31296, -203}, {31297, 204}}},
    {kPPane,
     {{31291, 350}, {31279, 750}, {31292, 150}, {31293, 250}, {31287, 1101}, {31289, -1102}, {31308, 160}, {31314, 801}},
     {{31287, 201}, {31289, -202}}},
    {kTPane,
     {{31278, 450}, {31279, 750}, {31280, 1108}, {31281, -1109}, {31307, 390}, {31314, 801}, {31309, 411}, {31317, 423}},
     {{31280, 208}, {31281, -209}}},
};

TEST(MorphologyPane, ShowsTheRecordOfTheChosenLeadAndChangesNothing) {
    for (const auto& [kind, ofV6, ofIii] : kContents) {
        SCOPED_TRACE(kind.name);
        MorphPane morph(kind);
        const KxMeasurementSet before = morph.Set();
        EXPECT_EQ(morph.Chosen(31254), KX_LEAD_V6);
        for (const auto& [edit, figure] : ofV6) {
            EXPECT_EQ(morph.Number(edit), figure) << edit;
        }
        EXPECT_EQ(morph.Shown(), morph.Stored());
        morph.SelectLead(KX_LEAD_III);
        for (const auto& [edit, figure] : ofIii) {
            EXPECT_EQ(morph.Number(edit), figure) << edit;
        }
        EXPECT_EQ(morph.Shown(), morph.Stored(KX_LEAD_III));
        EXPECT_FALSE(morph.CanReset());
        for (const bool shown : {false, true}) {
            morph.pane.Click(31262);
            EXPECT_EQ(morph.IsMarkerAtMs(morph.Stored(KX_LEAD_III)[1]), shown);
        }
        morph.pane.Notify(IDOK, 0);
        morph.pane.Notify(IDCANCEL, 0);
        EXPECT_TRUE(IsWindowVisible(morph.pane));
        EXPECT_TRUE(morph.IsAsBefore(before));
        EXPECT_EQ(morph.Calls(), 0);
    }
}

// The second marker's manual value stands beside the automatic one of the lead shown before; the first one's starts anew.
TEST(MorphologyPane, ManualBoxes) {
    for (const MorphKind* kind : kMorphPanes) {
        auto record = NewRecord();
        KxLeadMeasurements& first = record->Episode(0)->measurements.leads[kind->isGlobal ? 0 : KX_LEAD_V6];
        (kind->isGlobal ? first.globalManualFlags : first.markerFlags) = kind->markers[2].flag;
        MorphPane morph(*kind, std::move(record));
        EXPECT_TRUE(!morph.IsManualShown(0) && !morph.IsManualShown(1) && morph.IsManualShown(2) && morph.CanReset()) << *kind;
        if (!kind->isGlobal) {
            KxLeadMeasurements& v1 = morph.Block(KX_LEAD_V1);
            v1.markerFlags = static_cast<std::uint16_t>(kind->markers[0].flag | kind->markers[1].flag);
            for (const std::size_t slot : {0u, 1u}) {
                v1.*kind->markers[slot].ms = static_cast<std::uint16_t>(morph.Stored()[slot]);
            }
            morph.SelectLead(KX_LEAD_V1);
            EXPECT_TRUE(morph.IsManualShown(0) && !morph.IsManualShown(1)) << *kind;
        }
    }
}

// One free and one limited drag a pane; the limits themselves are the rules'. Nothing else of the record changes. A reversed
// aVR still moves the markers of lead 3; the general pane shows the global ones on whichever lead.
TEST(MorphologyPane, ADragIsStoredShownAndMeasuredWhereTheRulesLeaveTheMarker) {
    const struct {
        const MorphKind& kind;
        int lead;
        std::size_t slot;
        int to, expected;  // 0: where it was left
    } rows[] = {{kGeneralPane, KX_LEAD_AVR, 4, 800, 0}, {kGeneralPane, KX_LEAD_V6, 2, 800, 430}, {kQrsPane, KX_LEAD_AVR, 0, 250, 0},
                {kQrsPane, KX_LEAD_V6, 5, 100, 465},    {kPPane, KX_LEAD_V6, 2, 400, 0},         {kPPane, KX_LEAD_V6, 1, 50, 205},
                {kTPane, KX_LEAD_V6, 0, 450, 0},        {kTPane, KX_LEAD_V6, 1, 900, 625}};
    for (const auto& row : rows) {
        MorphPane morph(row.kind);
        SCOPED_TRACE(std::string(row.kind.name) + " marker " + std::to_string(row.slot));
        morph.SelectLead(row.lead);
        KxMeasurementSet expected = morph.Set();
        const int before = morph.Stored(row.lead)[row.slot];
        const int left = morph.Drag(before, row.to);
        ASSERT_GE(left, 0);
        const int at = row.expected == 0 ? left : row.expected;
        KxLeadMeasurements& block = expected.leads[row.kind.isGlobal ? 0 : row.lead];
        block.*row.kind.markers[row.slot].ms = static_cast<std::uint16_t>(at);
        (row.kind.isGlobal ? block.globalManualFlags : block.markerFlags) =
            &row.kind == &kQrsPane ? std::uint16_t{0x0F8} : row.kind.markers[row.slot].flag;
        EXPECT_EQ(std::memcmp(expected.leads, morph.Set().leads, sizeof expected.leads), 0);
        EXPECT_EQ(morph.Shown(), morph.Stored(row.lead));
        EXPECT_TRUE(morph.ShowsLastCall() && morph.CanReset());
        EXPECT_EQ(morph.IsManualShown(row.slot), !(&row.kind == &kQrsPane && row.slot == 5)) << "the QRS offset is the analysis's again";
        EXPECT_TRUE(morph.IsMarkerAtMs(at) && !morph.IsMarkerAtMs(before));
    }
}

// Every box is its component's: from a complete wave each can be checked, once the components behind it are gone.
TEST(MorphologyPane, WaveBoxesRemoveAndGiveBack) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind);
        int calls = 0;
        for (const UINT box : kind->waveBoxes) {
            EXPECT_FALSE(morph.pane.IsChecked(box)) << box;
            const Values before = morph.Stored();
            morph.pane.Click(box);
            EXPECT_TRUE(morph.pane.IsChecked(box)) << box;
            EXPECT_NE(morph.Stored(), before) << box;
            EXPECT_EQ(morph.Shown(), morph.Stored()) << box;
            EXPECT_EQ(morph.Calls(), ++calls) << box;
        }
        morph.SelectLead(KX_LEAD_I);
        EXPECT_EQ(morph.pane.IsChecked(kind->waveBoxes[0]), kind->isGlobal) << *kind;
    }
    for (const auto& [kind, restored] : {std::pair{&kPPane, Values{50, 0, 100}}, {&kTPane, Values{450, 0, 500}}}) {
        MorphPane morph(*kind);
        morph.pane.Click(kind->waveBoxes[1]);
        morph.pane.Click(kind->waveBoxes[1]);
        EXPECT_EQ(morph.Stored(), restored);
        EXPECT_TRUE(morph.IsMarkerAtMs(restored[0]));
    }
}

// The markers are stored; the screen stays, but for a marker that the rules have limited.
TEST(MorphologyPane, AnEngineThatRefusesIsReported) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind);
        morph.refuses = true;
        Values expected = morph.Stored();
        const std::string figure = morph.pane.Text(kind->figure);
        morph.Notify(0, 900);
        expected[0] = kind->isGlobal ? 250 : expected[1] - 5;
        EXPECT_EQ(morph.Stored(), expected) << *kind;
        EXPECT_EQ(morph.Shown(), expected) << *kind;
        EXPECT_NE(morph.FlagWord(), 0) << *kind;
        EXPECT_EQ(morph.pane.Text(kind->figure), figure) << *kind;
        EXPECT_FALSE(morph.CanReset()) << *kind;
        EXPECT_TRUE(morph.IsMarkerAtMs(expected[0])) << *kind;
        EXPECT_THAT(morph.suite.TakeReports(), ElementsAre(HasSubstr("\"UpdateDetection\""))) << *kind;
        morph.Undo();
        EXPECT_EQ(morph.Shown(), morph.Stored()) << *kind;
        EXPECT_EQ(morph.FlagWord(), 0) << *kind;
    }
}

// The binding says why; it is made anew, so that it works when the module has come right.
TEST(MorphologyPane, AnEngineThatIsMissingComesBack) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind, NewRecord(), Sibling::kMissing);
        morph.Notify(0, 100);
        EXPECT_THAT(morph.suite.TakeReports(), ElementsAre(HasSubstr("(kxanalyze.dll)"), HasSubstr("\"UpdateDetection\""))) << *kind;
        morph.suite.Lay("kxanalyze.dll", Sibling::kSpying);
        morph.Notify(0, 110);
        EXPECT_THAT(morph.suite.TakeReports(), ElementsAre()) << *kind;
        EXPECT_TRUE(morph.ShowsLastCall()) << *kind;
    }
}

// No value that a message can carry leaves the record with a time that is none, and no beat is asked for what it has not.
TEST(MorphologyPane, AbsurdNotificationsAndBeats) {
    for (const MorphKind* kind : kMorphPanes) {
        auto record = NewRecord();
        for (KxLeadMeasurements& lead : record->Episode(0)->measurements.leads) {
            for (const FiducialMarker& marker : kind->markers) {
                lead.*marker.ms = 2;
            }
        }
        record->Episode(0)->samplesPerLead = record->Episode(0)->sampleRate = 0;
        MorphPane morph(*kind, std::move(record));
        morph.Mouse(WM_LBUTTONDOWN, 100);
        morph.Mouse(WM_MOUSEMOVE, 200);
        morph.Mouse(WM_LBUTTONUP, 200);
        EXPECT_EQ(morph.Calls(), 0) << *kind;
        for (const std::uint32_t value : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 65535u, 65536u}) {
            for (UINT slot = 0; slot < 6; ++slot) {
                morph.Notify(slot, static_cast<int>(value));
                ASSERT_EQ(morph.Shown(), morph.Stored()) << *kind << ' ' << value << ' ' << slot;
                for (const int ms : morph.Stored()) {
                    ASSERT_TRUE(ms < 100 || ms > 65400) << *kind << ' ' << ms;
                }
            }
        }
    }
}

}  // namespace
}  // namespace kx::test
