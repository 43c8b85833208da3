#include "dialogs/morphology/rules/marker_history.h"

#include "dialogs/morphology/rules/wave_rules.h"

namespace kx::test {
namespace {

MarkerSnapshot State(std::uint16_t first, std::int32_t lead = 11) {
    MarkerSnapshot state;
    state.lead = lead;
    state.values[0] = first;
    return state;
}

TEST(MarkerField, KnowsWhetherItsValueIsTheReviewers) {
    MarkerField field;
    field.Bind(2, nullptr);
    field.SetManual(0);
    EXPECT_TRUE(field.IsManual());  // no automatic value, not even 0
    field.SetAutomatic(100);
    EXPECT_FALSE(field.IsManual());
    EXPECT_FALSE(field.OnMarkerMoved(1346, 150));
    EXPECT_EQ(field.Current(), 100);
    EXPECT_TRUE(field.OnMarkerMoved(1347, 150));
    EXPECT_FALSE(field.OnMarkerMoved(1347, 100));  // back on the automatic value
    EXPECT_TRUE(field.OnMarkerMoved(1347, -1));
    EXPECT_EQ(field.Current(), 0);
    field.OnMarkerMoved(1347, 0x7FFFFFFF);
    EXPECT_EQ(field.Current(), 0xFFFF);
}

TEST(MarkerHistory, GoesBackAndForthAgainAndAgain) {
    MarkerHistory history;
    history.Record(State(1), 1345);
    history.EndStep();
    history.Record(State(2, 5), 1345);
    for (int again = 0; again < 3; ++again) {
        EXPECT_EQ(history.UndoLead(), 5);
        EXPECT_EQ(history.Undo(State(3, 5)), State(2, 5));
        EXPECT_EQ(history.Undo(State(2)), State(1));
        EXPECT_FALSE(history.UndoLead());
        EXPECT_EQ(history.RedoLead(), 11);
        EXPECT_EQ(history.Redo(State(1)), State(2));
        EXPECT_EQ(history.Redo(State(2, 5)), State(3, 5));
        EXPECT_FALSE(history.RedoLead());
    }
    history.Undo(State(3, 5));
    history.Record(State(4), 1345);  // ends what could be done again
    EXPECT_FALSE(history.RedoLead());
    EXPECT_FALSE(history.IsEmpty());
    history.Clear();
    EXPECT_TRUE(history.IsEmpty());
}

TEST(MarkerHistory, OneDragIsOneStepAndTheOldestStepsAreForgotten) {
    MarkerHistory history;
    for (std::uint16_t i = 0; i < 500; ++i) {
        history.Record(State(i), 1345);
        history.EndStep();
    }
    for (std::uint16_t at = 1000; at < 1050; ++at) {
        history.Record(State(at), 1345);
    }
    history.Record(State(7), 1346);     // another marker
    history.Record(State(8, 3), 1346);  // another lead
    history.EndStep();
    history.Record(State(9, 3), 1346);  // another drag
    std::vector<int> undone;
    while (history.UndoLead()) {
        undone.push_back(history.Undo(State(0)).values[0]);
    }
    ASSERT_EQ(undone.size(), MarkerHistory::kCapacity);
    EXPECT_EQ(std::vector<int>(undone.begin(), undone.begin() + 5), (std::vector<int>{9, 8, 7, 1000, 499}));
    EXPECT_EQ(undone.back(), 499 - (static_cast<int>(MarkerHistory::kCapacity) - 5));
}

// A snapshot holds the dialog's own markers and flags, and gives nothing else back.
TEST(MarkerSnapshot, RestoresAndComparesTheDialogsMarkersOnly) {
    KxMeasurementSet set{};
    KxLeadMeasurements& block = set.leads[3];
    block.pOnMarker = 10;
    block.pOffMarker = 20;
    block.markerFlags = 0xF009;
    MarkerStore store(kPLayout, block);
    const MarkerSnapshot before = MarkerSnapshot::Take(3, store);
    SeenMarkers seen;
    seen.Take(kPLayout, set, false);
    block.qOnMarker = 7;
    block.markerFlags = 0x8001;
    SeenMarkers now;
    now.Take(kPLayout, set, false);
    EXPECT_EQ(now, seen);
    block.pOnMarker = 30;
    block.markerFlags = 0x0006;
    now.Take(kPLayout, set, false);
    EXPECT_NE(now, seen);
    before.Restore(store);
    EXPECT_EQ(block.pOnMarker, 10);
    EXPECT_EQ(block.pOffMarker, 20);
    EXPECT_EQ(block.qOnMarker, 7);
    EXPECT_EQ(block.markerFlags, 0x0001);
    SeenMarkers global;
    global.Take(kPLayout, set, true);  // block 0 alone
    EXPECT_EQ(global.Of(3), MarkerSnapshot{});
}

}  // namespace
}  // namespace kx::test
