#include "dialogs/morphology/rules/marker_history.h"

#include <gtest/gtest.h>

namespace {

using kx::MarkerHistory;
using kx::MarkerSnapshot;

MarkerSnapshot State(std::uint16_t first, std::int32_t lead = 11) {
    MarkerSnapshot state;
    state.lead = lead;
    state.values[0] = first;
    return state;
}

TEST(MarkerField, KnowsWhetherItsValueIsTheReviewers) {
    kx::MarkerField field;
    field.Bind(2, nullptr);
    field.SetManual(0);
    EXPECT_TRUE(field.IsManual());  // no automatic value, not even 0
    field.SetAutomatic(100);
    EXPECT_FALSE(field.IsManual());
    EXPECT_FALSE(field.OnMarkerMoved(1346, 150));
    EXPECT_EQ(field.Current(), 100);
    EXPECT_TRUE(field.OnMarkerMoved(1347, 150));
    EXPECT_EQ(field.Current(), 150);
    EXPECT_FALSE(field.OnMarkerMoved(1347, 100));  // back on the automatic value
    EXPECT_TRUE(field.OnMarkerMoved(1347, -1));
    EXPECT_EQ(field.Current(), 0);
    field.OnMarkerMoved(1347, 0x7FFFFFFF);
    EXPECT_EQ(field.Current(), 0xFFFF);
}

TEST(MarkerHistory, GoesBackAndForthAgainAndAgain) {
    MarkerHistory history;
    EXPECT_FALSE(history.UndoLead());
    history.Record(State(1), 1345);
    history.EndStep();
    history.Record(State(2, 5), 1345);
    EXPECT_EQ(history.UndoLead(), 5);
    for (int again = 0; again < 3; ++again) {
        EXPECT_EQ(history.Undo(State(3, 5)), State(2, 5));
        EXPECT_EQ(history.Undo(State(2)), State(1));
        EXPECT_FALSE(history.UndoLead());
        EXPECT_EQ(history.RedoLead(), 11);
        EXPECT_EQ(history.Redo(State(1)), State(2));
        EXPECT_EQ(history.Redo(State(2, 5)), State(3, 5));
        EXPECT_FALSE(history.RedoLead());
    }
}

TEST(MarkerHistory, OneDragIsOneStep) {
    MarkerHistory history;
    for (std::uint16_t at = 100; at < 5100; ++at) {
        history.Record(State(at), 1345);
    }
    history.Record(State(7), 1346);     // another marker
    history.Record(State(8, 3), 1346);  // another lead
    history.EndStep();
    history.Record(State(9, 3), 1346);  // another drag
    for (const int expected : {9, 8, 7, 100}) {
        ASSERT_TRUE(history.UndoLead());
        EXPECT_EQ(history.Undo(State(0)).values[0], expected);
    }
    EXPECT_FALSE(history.UndoLead());
}

TEST(MarkerHistory, NewChangeEndsWhatCouldBeDoneAgain) {
    MarkerHistory history;
    history.Record(State(1), 1345);
    history.Undo(State(2));
    history.Record(State(1), 1345);
    EXPECT_FALSE(history.RedoLead());
    EXPECT_EQ(history.Undo(State(4)), State(1));
}

TEST(MarkerHistory, ForgetsTheOldestSteps) {
    MarkerHistory history;
    for (std::uint16_t i = 0; i < 500; ++i) {
        history.Record(State(i), 1345);
        history.EndStep();
    }
    std::size_t steps = 0;
    std::uint16_t oldest = 0;
    while (history.UndoLead()) {
        oldest = history.Undo(State(0)).values[0];
        ++steps;
    }
    EXPECT_EQ(steps, MarkerHistory::kCapacity);
    EXPECT_EQ(oldest, 500 - MarkerHistory::kCapacity);
}

TEST(MarkerSnapshot, RestoresValuesAndTheDialogsFlagsOnly) {
    const kx::StoredMarker markers[] = {{&KxLeadMeasurements::pOn, 0x01}, {&KxLeadMeasurements::pOff, 0x04}};
    const kx::MarkerLayout layout{markers, &KxLeadMeasurements::markerFlags};
    KxLeadMeasurements block{};
    block.pOn = 10;
    block.pOff = 20;
    block.markerFlags = 0xF009;
    kx::MarkerStore store(layout, block);
    const MarkerSnapshot before = MarkerSnapshot::Take(3, store);
    block.pOn = 30;
    block.pOff = 40;
    block.markerFlags = 0x0006;
    before.Restore(store);
    EXPECT_EQ(block.pOn, 10);
    EXPECT_EQ(block.pOff, 20);
    EXPECT_EQ(block.markerFlags, 0x0003);
    EXPECT_EQ(MarkerSnapshot::Take(3, store), before);
}

}  // namespace
