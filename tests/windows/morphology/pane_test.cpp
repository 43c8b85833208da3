// What a morphology pane shows, and what its toolbar, its boxes and its Reset do.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/windows/morphology/pane_under_test.h"

namespace {

using kx::test::IsItemChecked;
using kx::test::Item;
using kx::test::ItemText;
using kx::test::kAllPanes;
using kx::test::kGeneralPane;
using kx::test::kPPane;
using kx::test::kQrsPane;
using kx::test::kTPane;
using kx::test::NewRecord;
using kx::test::PaneKind;
using kx::test::PaneUnderTest;

using Values = std::vector<int>;

struct Figure {
    UINT edit;
    const char* text;  // of lead V6
    const char* ofIii;
};

struct Contents {
    const PaneKind& kind;
    std::vector<Figure> figures;
};

const Contents kContents[] = {
    {kGeneralPane,
     {{31308, "160", "160"},
      {31312, "110", "110"},
      {31310, "98", "98"},
      {31307, "390", "390"},
      {31313, "75", "75"},
      {31314, "-35", "-35"},
      {31309, "411", "411"},
      {31317, "423", "423"}}},
    {kQrsPane,
     {{31291, "350", "350"},
      {31278, "450", "450"},
      {31296, "-1103", "-203"},
      {31297, "1104", "204"},
      {31298, "-1105", "-205"},
      {31299, "1106", "206"},
      {31301, "-1107", "-207"},
      {31310, "98", "98"}}},
    {kPPane,
     {{31291, "350", "350"},
      {31279, "750", "750"},
      {31292, "150", "150"},
      {31293, "250", "250"},
      {31287, "1101", "201"},
      {31289, "-1102", "-202"},
      {31308, "160", "160"},
      {31314, "801", "801"}}},
    {kTPane,
     {{31278, "450", "450"},
      {31279, "750", "750"},
      {31280, "1108", "208"},
      {31281, "-1109", "-209"},
      {31307, "390", "390"},
      {31314, "801", "801"},
      {31309, "411", "411"},
      {31317, "423", "423"}}},
};

LRESULT SelectedCode(HWND pane, UINT combo) {
    const HWND box = Item(pane, combo);
    return SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(SendMessageA(box, CB_GETCURSEL, 0, 0)), 0);
}

TEST(MorphologyPane, ShowsTheRecord) {
    for (const Contents& row : kContents) {
        PaneUnderTest pane(row.kind);
        SCOPED_TRACE(row.kind.name);
        for (const Figure& figure : row.figures) {
            EXPECT_EQ(ItemText(pane.Pane(), figure.edit), figure.text) << figure.edit;
        }
        EXPECT_EQ(pane.Shown(), pane.Stored());
        pane.SelectLead(KX_LEAD_III);
        for (const Figure& figure : row.figures) {
            EXPECT_EQ(ItemText(pane.Pane(), figure.edit), figure.ofIii) << figure.edit;
        }
        EXPECT_EQ(pane.Shown(), pane.Stored(KX_LEAD_III));
        EXPECT_FALSE(pane.CanReset());
        for (std::size_t slot = 0; slot < row.kind.markers.size(); ++slot) {
            EXPECT_FALSE(pane.IsManualShown(slot)) << slot;
        }
        EXPECT_EQ(pane.Spy().calls(), 0u);
    }
}

TEST(MorphologyPane, StartsWithItsSettings) {
    const struct {
        const PaneKind& kind;
        LRESULT gain;
        LRESULT high;
    } rows[] = {
        {kGeneralPane, 50, 16000}, {kQrsPane, 100, 16000}, {kPPane, 100, 40000}, {kTPane, 100, 16000}};
    for (const auto& row : rows) {
        PaneUnderTest pane(row.kind);
        SCOPED_TRACE(row.kind.name);
        EXPECT_EQ(SelectedCode(pane.Pane(), 31254), KX_LEAD_V6);
        EXPECT_EQ(SelectedCode(pane.Pane(), 31242), row.gain);
        EXPECT_EQ(SelectedCode(pane.Pane(), 31282), 0);
        EXPECT_EQ(SelectedCode(pane.Pane(), 31256), 10);
        EXPECT_EQ(SelectedCode(pane.Pane(), 31257), row.high);
        EXPECT_TRUE(IsItemChecked(pane.Pane(), 31262));
        for (const UINT box : {31275u, 31274u}) {
            EXPECT_FALSE(IsItemChecked(pane.Pane(), box)) << box;
        }
        for (const UINT hidden : {31282u, 31275u, 31256u, 31257u, 31274u}) {
            EXPECT_FALSE(IsWindowVisible(Item(pane.Pane(), hidden))) << hidden;
        }
        for (const UINT shown : {31254u, 31242u, 31240u, 31262u, 31264u, 31283u}) {
            EXPECT_TRUE(IsWindowVisible(Item(pane.Pane(), shown))) << shown;
        }
    }
}

TEST(MorphologyPane, StoredManualMarkersAreShownAsManual) {
    for (const PaneKind* kind : kAllPanes) {
        auto record = NewRecord();
        KxLeadMeasurements& block = record->Episode(0)->measurements.leads[kind->isGlobal ? 0 : KX_LEAD_V6];
        (kind->isGlobal ? block.globalManualFlags : block.markerFlags) = kind->markers[1].flag;
        PaneUnderTest pane(*kind, kx::test::Engine::kSpy, std::move(record));
        EXPECT_TRUE(pane.IsManualShown(1)) << kind->name;
        EXPECT_FALSE(pane.IsManualShown(0)) << kind->name;
        EXPECT_TRUE(pane.CanReset()) << kind->name;
    }
}

// The second marker's manual value stands beside the automatic one of the lead shown before; the first one's
// starts anew.
TEST(MorphologyPane, ManualBoxesAfterALeadChange) {
    for (const PaneKind* kind : {&kQrsPane, &kPPane, &kTPane}) {
        PaneUnderTest pane(*kind);
        KxLeadMeasurements& v1 = pane.Block(KX_LEAD_V1);
        v1.markerFlags = static_cast<std::uint16_t>(kind->markers[0].flag | kind->markers[1].flag);
        for (const std::size_t slot : {0u, 1u}) {
            v1.*kind->markers[slot].value = static_cast<std::uint16_t>(pane.Stored()[slot]);
        }
        pane.SelectLead(KX_LEAD_V1);
        EXPECT_TRUE(pane.IsManualShown(0)) << kind->name;
        EXPECT_FALSE(pane.IsManualShown(1)) << kind->name;
        EXPECT_TRUE(pane.CanReset()) << kind->name;
    }
}

TEST(MorphologyPane, ResetGivesItsMarkersBackToTheAnalysis) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        pane.Spy().automatic(&pane.Set());
        const Values automatic = pane.Stored();
        ASSERT_GE(pane.Drag(automatic[0], automatic[0] - 40), 0);
        // Flags of others must survive.
        const auto foreign = static_cast<std::uint16_t>(kind->isGlobal ? 0xFFE0 : 0xF000);
        std::uint16_t& flags = kind->isGlobal ? pane.Block().globalManualFlags : pane.Block().markerFlags;
        flags = static_cast<std::uint16_t>(flags | foreign);
        ASSERT_TRUE(pane.CanReset());
        SetFocus(Item(pane.Pane(), 31264));
        pane.Click(31264);
        EXPECT_EQ(pane.Stored(), automatic) << kind->name;
        EXPECT_EQ(pane.Shown(), automatic) << kind->name;
        EXPECT_EQ(flags, foreign) << kind->name;
        EXPECT_FALSE(pane.CanReset()) << kind->name;
        EXPECT_FALSE(pane.IsManualShown(0)) << kind->name;
        EXPECT_TRUE(IsWindowEnabled(GetFocus())) << kind->name << ": a disabled button keeps the keyboard";
    }
}

struct BoxRow {
    const PaneKind& kind;
    UINT box;
    Values stored;  // put there before the pane is opened
    bool absent;    // the box's state at the end
    Values expected;
    std::uint16_t flags;
    std::uint32_t calls;
};

const BoxRow kBoxRows[] = {
    {kGeneralPane, 33242, {150, 250, 350, 450, 750}, true, {0, 0, 350, 450, 750}, 3, 1},
    {kGeneralPane, 33242, {0, 250, 350, 450, 750}, true, {0, 0, 350, 450, 750}, 3, 0},
    // Given back to an engine that finds none.
    {kGeneralPane, 33242, {0, 0, 350, 450, 750}, true, {0, 0, 350, 450, 750}, 0, 1},
    {kQrsPane, 33244, {300, 340, 380, 420, 460, 520}, true, {0, 340, 380, 420, 460, 520}, 0xF8, 1},
    {kQrsPane, 33244, {300, 0, 0, 0, 0, 520}, false, {300, 0, 0, 0, 0, 520}, 0, 0},
    {kQrsPane, 33244, {0, 340, 0, 0, 0, 520}, false, {335, 340, 0, 0, 0, 520}, 0xF8, 1},
    {kQrsPane, 33244, {0, 10, 0, 0, 0, 520}, true, {0, 10, 0, 0, 0, 520}, 0, 0},
    {kQrsPane, 33245, {300, 0, 0, 0, 0, 520}, false, {300, 310, 0, 0, 0, 520}, 0xF8, 1},
    {kQrsPane, 33246, {300, 340, 0, 0, 0, 520}, false, {300, 340, 350, 0, 0, 520}, 0xF8, 1},
    {kQrsPane, 33246, {300, 340, 380, 420, 0, 520}, false, {300, 340, 380, 420, 0, 520}, 0, 0},
    {kQrsPane, 33247, {300, 340, 380, 420, 0, 520}, true, {300, 340, 380, 0, 0, 520}, 0xF8, 1},
    {kQrsPane, 33248, {300, 340, 380, 0, 0, 520}, true, {300, 340, 380, 0, 0, 520}, 0, 0},
    {kPPane, 33242, {200, 260, 330}, true, {0, 0, 0}, 7, 1},
    {kPPane, 33242, {0, 0, 0}, false, {50, 0, 100}, 7, 1},
    {kPPane, 33243, {200, 260, 330}, true, {200, 0, 330}, 2, 1},
    {kPPane, 33243, {200, 0, 330}, false, {200, 265, 330}, 2, 1},
    {kPPane, 33243, {200, 0, 209}, true, {200, 0, 209}, 0, 0},
    {kTPane, 33249, {500, 560, 630}, true, {0, 0, 0}, 0xE00, 1},
    {kTPane, 33249, {0, 0, 0}, false, {450, 0, 500}, 0xE00, 1},
    {kTPane, 33289, {500, 0, 630}, false, {500, 565, 630}, 0x400, 1},
    {kTPane, 33289, {500, 0, 509}, true, {500, 0, 509}, 0, 0},
};

TEST(MorphologyPane, WaveBoxes) {
    for (const BoxRow& row : kBoxRows) {
        auto record = NewRecord();
        KxLeadMeasurements& block =
            record->Episode(0)->measurements.leads[row.kind.isGlobal ? 0 : KX_LEAD_V6];
        for (std::size_t slot = 0; slot < row.stored.size(); ++slot) {
            block.*row.kind.markers[slot].value = static_cast<std::uint16_t>(row.stored[slot]);
        }
        PaneUnderTest pane(row.kind, kx::test::Engine::kSpy, std::move(record));
        SCOPED_TRACE(std::string(row.kind.name) + " box " + std::to_string(row.box) +
                     (row.absent ? " checked" : ""));
        pane.Click(row.box);
        EXPECT_EQ(IsItemChecked(pane.Pane(), row.box), row.absent);
        EXPECT_EQ(pane.Stored(), row.expected);
        EXPECT_EQ(pane.Shown(), row.expected);
        EXPECT_EQ(pane.Flags(), row.flags);
        EXPECT_EQ(pane.Spy().calls(), row.calls);
        EXPECT_EQ(pane.CanReset(), row.flags != 0);
        for (const int ms : row.expected) {
            if (ms != 0) {
                EXPECT_TRUE(pane.IsMarkerAt(pane.ColumnOf(ms))) << ms;
            }
        }
    }
}

TEST(MorphologyPane, WaveBoxesSayWhichMarkersAreAbsent) {
    auto record = NewRecord();
    KxLeadMeasurements& block = record->Episode(0)->measurements.leads[KX_LEAD_V6];
    block.rPrimeOnMarker = block.sPrimeOnMarker = 0;
    PaneUnderTest pane(kQrsPane, kx::test::Engine::kSpy, std::move(record));
    EXPECT_FALSE(IsItemChecked(pane.Pane(), 33246));
    EXPECT_TRUE(IsItemChecked(pane.Pane(), 33247));
    EXPECT_TRUE(IsItemChecked(pane.Pane(), 33248));
    pane.SelectLead(KX_LEAD_I);
    EXPECT_FALSE(IsItemChecked(pane.Pane(), 33247));
    EXPECT_FALSE(IsItemChecked(pane.Pane(), 33248));
}

TEST(MorphologyPane, VisualizzaShowsAndHidesTheMarkers) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        const int column = pane.ColumnOf(pane.Stored()[0]);
        ASSERT_TRUE(pane.IsMarkerAt(column));
        pane.Click(31262);
        EXPECT_FALSE(pane.IsMarkerAt(column)) << kind->name;
        pane.Click(31262);
        EXPECT_TRUE(pane.IsMarkerAt(column)) << kind->name;
    }
}

TEST(MorphologyPane, SpeedWidensTheBeat) {
    PaneUnderTest pane(kQrsPane);
    const int narrow = pane.ColumnOf(400) - pane.ColumnOf(300);
    pane.Choose(31240, 250);
    const int wide = pane.ColumnOf(400) - pane.ColumnOf(300);
    EXPECT_NEAR(wide, narrow * 2.5, 3);
}

TEST(MorphologyPane, NothingHappensWithoutALead) {
    for (const PaneKind* kind : {&kQrsPane, &kPPane, &kTPane}) {
        PaneUnderTest pane(*kind);
        SendMessageA(Item(pane.Pane(), 31254), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        const KxMeasurementSet before = pane.Set();
        SendMessageA(pane.Pane(), WM_COMMAND, MAKEWPARAM(31254, CBN_SELENDOK), 0);
        SendMessageA(pane.Pane(), 1345, 100, KX_LEAD_V6);
        SendMessageA(pane.Pane(), WM_COMMAND, MAKEWPARAM(31264, BN_CLICKED), 0);
        pane.Click(kind == &kTPane ? 33289 : kind == &kPPane ? 33243 : 33248);
        EXPECT_EQ(std::memcmp(&before, &pane.Set(), sizeof before), 0) << kind->name;
        EXPECT_EQ(pane.Spy().calls(), 0u) << kind->name;
    }
}

TEST(MorphologyPane, TheViewFillsThePane) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        RECT margin{0, 0, 7, 7};
        MapDialogRect(pane.Pane(), &margin);
        for (const SIZE size :
             {SIZE{1400, 900}, SIZE{1000, 640}, SIZE{40, 30}, SIZE{0, 0}, SIZE{1200, 700}}) {
            SetWindowPos(pane.Pane(), nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOMOVE);
            RECT view{};
            GetWindowRect(pane.View(), &view);
            MapWindowPoints(nullptr, pane.Pane(), reinterpret_cast<POINT*>(&view), 2);
            if (size.cx > 600) {
                EXPECT_EQ(view.right, size.cx - margin.right) << kind->name;
                EXPECT_EQ(view.bottom, size.cy - margin.bottom) << kind->name;
            } else {
                EXPECT_GT(view.right - view.left, 300) << kind->name << ": keeps its first size";
                EXPECT_GT(view.bottom - view.top, 200) << kind->name;
            }
        }
        // What it draws follows: the markers can be taken where they stand now.
        kx::test::Pump();
        EXPECT_TRUE(pane.IsMarkerAt(pane.ColumnOf(pane.Stored()[0]))) << kind->name;
    }
}

TEST(MorphologyPane, EnterAndEscLeaveItOpen) {
    PaneUnderTest pane(kTPane);
    SendMessageA(pane.Pane(), WM_COMMAND, IDOK, 0);
    SendMessageA(pane.Pane(), WM_COMMAND, IDCANCEL, 0);
    SendMessageA(pane.Pane(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindowVisible(pane.Pane()));
}

}  // namespace
