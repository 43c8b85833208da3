// Ctrl+Z and Ctrl+Y: the marker changes of a pane, taken back and done again.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/windows/morphology/pane_under_test.h"

namespace {

using kx::test::FigureOfCall;
using kx::test::kGeneralPane;
using kx::test::kPPane;
using kx::test::kQrsPane;
using kx::test::PaneKind;
using kx::test::PaneUnderTest;

// Everything that a change of the markers may alter.
struct State {
    explicit State(PaneUnderTest& pane) : set(pane.Set()), shown(pane.Shown()) {
        // Figures, which every re-measurement makes anew.
        set.pDuration = set.prInterval = set.qrsDuration = set.qtInterval = set.qtc = 0;
        set.qtcBazett = set.rrInterval = 0;
        set.qrsAxis = 0;
        for (KxLeadMeasurements& lead : set.leads) {
            lead.aP1 = lead.aP2 = lead.aQ = lead.aR = lead.aS = lead.aR1 = lead.aS1 = lead.aT1 = lead.aT2 = 0;
        }
    }
    bool operator==(const State& other) const {
        return std::memcmp(&set, &other.set, sizeof set) == 0 && shown == other.shown;
    }

    KxMeasurementSet set;
    std::vector<int> shown;
};

TEST(MorphologyHistory, EveryKindOfChangeComesBackAndGoesAgain) {
    const struct {
        const PaneKind& kind;
        std::vector<UINT> boxes;
    } rows[] = {{kGeneralPane, {33242}},
                {kQrsPane, {33248, 33247, 33244}},
                {kPPane, {33243, 33242}},
                {kx::test::kTPane, {33289, 33249}}};
    for (const auto& row : rows) {
        PaneUnderTest pane(row.kind);
        pane.Spy().automatic(&pane.Set());
        SCOPED_TRACE(row.kind.name);
        std::vector<State> states = {State(pane)};
        ASSERT_GE(pane.Drag(pane.Stored()[0], pane.Stored()[0] - 30), 0);
        states.emplace_back(pane);
        ASSERT_GE(pane.Drag(pane.Stored()[0], pane.Stored()[0] - 30), 0);
        states.emplace_back(pane);
        for (const UINT box : row.boxes) {
            pane.Click(box);
            states.emplace_back(pane);
        }
        pane.Click(31264);
        states.emplace_back(pane);
        for (int again = 0; again < 3; ++again) {
            for (std::size_t i = states.size() - 1; i-- > 0;) {
                const std::uint32_t calls = pane.Spy().calls();
                pane.Undo();
                ASSERT_TRUE(State(pane) == states[i]) << "back to state " << i;
                ASSERT_EQ(pane.Spy().calls(), calls + 1);
                ASSERT_EQ(pane.Number(row.kind.figure), FigureOfCall(calls + 1));
                ASSERT_EQ(pane.CanReset(), pane.Flags() != 0);
            }
            const std::uint32_t calls = pane.Spy().calls();
            pane.Undo();  // nothing is left
            ASSERT_EQ(pane.Spy().calls(), calls);
            for (std::size_t i = 1; i < states.size(); ++i) {
                pane.Redo();
                ASSERT_TRUE(State(pane) == states[i]) << "again to state " << i;
            }
            pane.Redo();
            ASSERT_TRUE(State(pane) == states.back());
        }
    }
}

TEST(MorphologyHistory, OneDragIsOneStepAndManualBoxesComeBack) {
    PaneUnderTest pane(kGeneralPane);
    pane.Spy().automatic(&pane.Set());
    const std::vector<int> before = pane.Stored();
    ASSERT_GE(pane.Drag(before[4], 900, 40), 0);
    EXPECT_GT(pane.Spy().calls(), 10u);
    EXPECT_TRUE(pane.IsManualShown(4));
    pane.Undo();
    EXPECT_EQ(pane.Stored(), before);
    EXPECT_EQ(pane.Flags(), 0);
    EXPECT_FALSE(pane.IsManualShown(4));
    pane.Redo();
    EXPECT_TRUE(pane.IsManualShown(4));
    EXPECT_EQ(pane.Flags(), 16);
}

TEST(MorphologyHistory, WorksInWhicheverControlTheKeyIsPressed) {
    PaneUnderTest pane(kQrsPane);
    const std::vector<int> before = pane.Stored();
    int controls = 0;
    for (HWND control = GetWindow(pane.Pane(), GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control) || !IsWindowEnabled(control)) {
            continue;
        }
        SendMessageA(pane.Pane(), WM_APP + 1, 0, 0);
        SendMessageA(pane.Pane(), 1345, 280, KX_LEAD_V6);
        ASSERT_NE(pane.Stored(), before);
        pane.PressControl(control, 'Z');
        ASSERT_EQ(pane.Stored(), before) << GetDlgCtrlID(control);
        ++controls;
    }
    EXPECT_GT(controls, 20);
}

TEST(MorphologyHistory, ShowsTheLeadWhoseMarkersItChanges) {
    PaneUnderTest pane(kQrsPane);
    pane.Spy().automatic(&pane.Set());
    const std::vector<int> ofV6 = pane.Stored();
    const std::vector<int> ofII = pane.Stored(KX_LEAD_II);
    ASSERT_GE(pane.Drag(ofV6[0], 260), 0);
    pane.SelectLead(KX_LEAD_II);
    ASSERT_GE(pane.Drag(ofII[0], 280), 0);
    const std::vector<int> movedII = pane.Stored(KX_LEAD_II);
    pane.SelectLead(KX_LEAD_V1);
    const auto selected = [&pane] {
        const HWND combo = kx::test::Item(pane.Pane(), 31254);
        return SendMessageA(combo, CB_GETITEMDATA,
                            static_cast<WPARAM>(SendMessageA(combo, CB_GETCURSEL, 0, 0)), 0);
    };
    pane.Undo();
    EXPECT_EQ(selected(), KX_LEAD_II);
    EXPECT_EQ(pane.Stored(KX_LEAD_II), ofII);
    EXPECT_EQ(pane.Shown(), ofII);
    pane.Undo();
    EXPECT_EQ(selected(), KX_LEAD_V6);
    EXPECT_EQ(pane.Shown(), ofV6);
    EXPECT_EQ(pane.Flags(KX_LEAD_V6), 0);
    pane.Redo();
    pane.Redo();
    EXPECT_EQ(selected(), KX_LEAD_II);
    EXPECT_EQ(pane.Stored(KX_LEAD_II), movedII);
    EXPECT_EQ(pane.Shown(), movedII);
}

// The markers that another pane changes meanwhile are not this pane's.
TEST(MorphologyHistory, LeavesWhatIsNotItsOwn) {
    PaneUnderTest pane(kPPane);
    ASSERT_GE(pane.Drag(200, 170), 0);
    pane.Set().leads[0].globalManualFlags = 4;
    pane.Set().leads[0].qrsOn = 361;
    pane.Block().markerFlags = static_cast<std::uint16_t>(pane.Block().markerFlags | 0xF0F8);
    pane.Block().qOnMarker = 299;
    pane.Undo();
    EXPECT_EQ(pane.Set().leads[0].globalManualFlags, 4);
    EXPECT_EQ(pane.Set().leads[0].qrsOn, 361);
    EXPECT_EQ(pane.Block().markerFlags, 0xF0F8);
    EXPECT_EQ(pane.Block().qOnMarker, 299);
    EXPECT_EQ(pane.Stored(), (std::vector<int>{200, 260, 330}));
}

TEST(MorphologyHistory, TakesBackWithoutAnEngine) {
    PaneUnderTest pane(kGeneralPane);
    const std::vector<int> before = pane.Stored();
    ASSERT_GE(pane.Drag(before[4], 800), 0);
    pane.Spy().fail(1);
    pane.Library().TakeLog();
    pane.Undo();
    EXPECT_EQ(pane.Stored(), before);
    EXPECT_EQ(pane.Shown(), before);
    EXPECT_FALSE(pane.CanReset());
    EXPECT_EQ(pane.Library().TakeLog().size(), 1u);
    pane.Spy().fail(0);
}

}  // namespace
