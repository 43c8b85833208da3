// The ordering rules of the four morphology dialogs, over fields and a record without a window.
#include "dialogs/morphology/rules/general_rules.h"
#include "dialogs/morphology/rules/marker_history.h"
#include "dialogs/morphology/rules/qrs_rules.h"
#include "dialogs/morphology/rules/wave_rules.h"

namespace kx::test {
namespace {

using Values = std::vector<std::int32_t>;

// The engine keeps the record as it is, but for markers that a test makes it find anew.
class RuleRig final : public Redetection {
  public:
    // stored: the record's values in slot order; flags: its manual flags.
    RuleRig(const MarkerLayout& layout, const Values& stored, std::uint16_t flags = 0)
        : layout_(layout), edit_{std::span(fields_).first(layout.markers.size()), MarkerStore(layout, block_), *this} {
        for (std::size_t slot = 0; slot < stored.size(); ++slot) {
            edit_.store.SetValue(slot, static_cast<std::uint16_t>(stored[slot]));
            fields_[slot].Bind(static_cast<std::uint32_t>(slot), nullptr);
            fields_[slot].SetAutomatic(stored[slot]);
        }
        block_.*layout.flags = static_cast<std::uint16_t>(kForeignFlags | flags);
    }

    void Redetect() override {
        measured.push_back(Stored());
        for (std::size_t slot = 0; slot < edit_.fields.size(); ++slot) {
            if (!edit_.store.IsManual(slot)) {
                edit_.store.SetValue(slot, static_cast<std::uint16_t>(found.empty() ? Stored()[slot] : found[slot]));
                edit_.fields[slot].SetAutomatic(edit_.store.Value(slot));
            }
        }
    }

    // As the view's notification does it.
    void Drag(std::size_t slot, std::int32_t ms) {
        fields_[slot].OnMarkerMoved(kFirstMarkerNotification + static_cast<std::uint32_t>(slot), ms);
    }
    Values Stored() const {
        Values values;
        for (const FiducialMarker& marker : layout_.markers) {
            values.push_back(block_.*marker.ms);
        }
        return values;
    }
    Values Shown() const {
        Values values;
        for (const MarkerField& field : edit_.fields) {
            values.push_back(field.Current());
        }
        return values;
    }
    // 0xFFFF: bits of the flag word that belong to nobody were changed.
    std::uint16_t Flags() const {
        const std::uint16_t flags = block_.*layout_.flags;
        return (flags & kForeignFlags) == kForeignFlags ? static_cast<std::uint16_t>(flags & ~kForeignFlags) : std::uint16_t{0xFFFF};
    }
    MarkerEdit& Edit() { return edit_; }

    Values found;                  // what the engine finds for markers without flag; empty: what is there
    std::vector<Values> measured;  // what the record held at each call

  private:
    static constexpr std::uint16_t kForeignFlags = 0xF000;

    const MarkerLayout& layout_;
    KxLeadMeasurements block_{};
    std::array<MarkerField, 6> fields_;
    MarkerEdit edit_;
};

enum Kind : std::size_t { kGeneral, kQrs, kP, kT };

struct Rules {
    const char* name;
    const MarkerLayout& layout;
    void (*apply)(MarkerEdit&);
};

const Rules kRules[] = {{"general", kGeneralLayout, [](MarkerEdit& edit) { ApplyGeneralMarkers(edit, false); }},
                        {"QRS", kQrsLayout, ApplyQrsMarkers},
                        {"P", kPLayout, ApplyPMarkers},
                        {"T", kTLayout, ApplyTMarkers}};

constexpr std::uint16_t kFive = 0x0F8;

std::uint16_t FlagsOf(Kind kind, std::size_t slot) { return kind == kQrs ? kFive : kRules[kind].layout.markers[slot].flag; }

struct Drag {
    const char* name;
    Kind kind;  // the rows of P are those of T as well
    Values stored;
    std::size_t slot;
    std::int32_t to;
    std::int32_t expected;  // of that marker; the others stay
};

const Values kBeat = {100, 200, 300, 400, 700};          // P on, P off, QRS on, QRS off, T off
const Values kComplex = {200, 220, 240, 260, 280, 320};  // Q, R, S, R', S', offset
const Values kWave = {100, 150, 200};                    // onset, second onset, offset

const Drag kDrags[] = {{"P on across P off", kGeneral, kBeat, 0, 250, 200},
                       {"P off: QRS on wins over P on", kGeneral, {310, 320, 300, 400, 700}, 1, 305, 300},
                       {"QRS on too early", kGeneral, {0, 10, 300, 400, 700}, 2, 5, 20},
                       {"QRS on before P off", kGeneral, kBeat, 2, 5, 200},
                       {"QRS on one before QRS off", kGeneral, kBeat, 2, 399, 399},
                       {"QRS on: QRS off wins over P off", kGeneral, {100, 390, 395, 400, 700}, 2, 600, 380},
                       {"QRS on with the offset in the first 20 ms", kGeneral, {0, 5, 8, 10, 700}, 2, 9, 0},
                       {"QRS off onto QRS on", kGeneral, kBeat, 3, 300, 320},
                       {"QRS off: T off wins over the gap", kGeneral, {100, 200, 300, 400, 310}, 3, 200, 310},
                       {"T off across QRS off", kGeneral, kBeat, 4, 10, 400},

                       {"Q 4 before R", kQrs, kComplex, 0, 216, 215},
                       {"Q with R in the first 5 ms", kQrs, {2, 4, 0, 0, 0, 320}, 0, 100, 0},
                       {"Q without R passes S", kQrs, {200, 0, 240, 0, 0, 320}, 0, 300, 300},
                       {"Q without R onto the offset", kQrs, {200, 0, 240, 0, 0, 320}, 0, 318, 315},
                       {"R onto Q", kQrs, kComplex, 1, 200, 205},
                       {"R between Q and S that are too close: S wins", kQrs, {200, 206, 208, 0, 0, 320}, 1, 204, 203},
                       {"R without S onto the offset", kQrs, {200, 220, 0, 260, 0, 320}, 1, 400, 315},
                       {"R without Q", kQrs, {0, 220, 240, 0, 0, 320}, 1, 3, 3},
                       {"S' with R' 5 before the offset", kQrs, {200, 220, 240, 315, 318, 320}, 4, 100, 315},
                       {"offset before S'", kQrs, kComplex, 5, 250, 285},
                       {"offset without S' before R'", kQrs, {200, 220, 240, 260, 0, 320}, 5, 250, 265},
                       {"offset without R' before S", kQrs, {200, 220, 240, 0, 0, 320}, 5, 100, 245},
                       {"offset with Q and R only", kQrs, {200, 220, 0, 0, 0, 320}, 5, 210, 225},
                       {"offset with Q only, before it", kQrs, {200, 0, 0, 0, 0, 320}, 5, 100, 205},
                       {"offset without any component", kQrs, {0, 0, 0, 0, 0, 320}, 5, 3, 5},
                       {"offset: S' pushes, then R lies behind it", kQrs, {0, 300, 0, 0, 200, 320}, 5, 100, 305},
                       {"offset: R' pushes, then S lies behind it", kQrs, {0, 0, 300, 200, 0, 320}, 5, 100, 305},
                       {"offset: S pushes and R behind it is not asked", kQrs, {0, 300, 200, 0, 0, 320}, 5, 100, 205},
                       {"offset: S' pushes and R' behind it is not asked", kQrs, {0, 0, 0, 300, 200, 320}, 5, 100, 205},

                       {"onset across both", kP, kWave, 0, 300, 145},
                       {"onset across the offset", kP, {100, 0, 200}, 0, 300, 195},
                       {"onset of an absent wave", kP, {0, 0, 0}, 0, 80, 0},
                       {"second onset onto the onset", kP, kWave, 1, 100, 105},
                       {"second onset onto the offset", kP, kWave, 1, 200, 195},
                       {"second onset: the onset wins in a short wave", kP, {100, 101, 103}, 1, 200, 105},
                       {"offset onto the second onset", kP, kWave, 2, 150, 155},
                       {"offset onto the onset", kP, {100, 0, 200}, 2, 100, 105}};

TEST(MorphologyRules, LimitOneMarkerByItsNeighbours) {
    for (const Drag& row : kDrags) {
        for (const Kind kind : {row.kind, row.kind == kP ? kT : row.kind}) {
            RuleRig rig(kRules[kind].layout, row.stored);
            rig.Drag(row.slot, row.to);
            kRules[kind].apply(rig.Edit());
            Values expected = row.stored;
            expected[row.slot] = row.expected;
            EXPECT_EQ(rig.Stored(), expected) << kRules[kind].name << ": " << row.name;
            EXPECT_TRUE(rig.Shown() == expected && rig.Flags() == FlagsOf(kind, row.slot)) << kRules[kind].name << ": " << row.name;
            EXPECT_EQ(rig.measured.size(), 1u) << kRules[kind].name << ": " << row.name;
        }
    }
}

struct Box {
    const char* name;
    Kind kind;
    bool (*click)(MarkerEdit&, bool absent);
    Values stored;
    bool absent;  // the box is checked now
    bool accepted;
    Values expected;
    std::uint16_t flags;
    std::size_t calls;
};

template <QrsMarker kComponent>
bool ClickQrs(MarkerEdit& edit, bool absent) {
    return ApplyQrsWaveBox(edit, kComponent, absent);
}
template <void (*kApply)(MarkerEdit&, bool)>
bool Click(MarkerEdit& edit, bool absent) {
    kApply(edit, absent);
    return true;
}
constexpr auto kNoP = Click<ApplyGeneralWaveBox>;
constexpr auto kSecond = ApplySecondComponentBox;

const Box kBoxes[] = {
    {"P removed", kGeneral, kNoP, kBeat, true, true, {0, 0, 300, 400, 700}, 3, 1},
    {"P given back", kGeneral, kNoP, {0, 0, 300, 400, 700}, false, true, {0, 0, 300, 400, 700}, 0, 1},
    {"P there already", kGeneral, kNoP, kBeat, false, true, kBeat, 0, 0},
    {"Q removed", kQrs, ClickQrs<kQOn>, kComplex, true, true, {0, 220, 240, 260, 280, 320}, kFive, 1},
    {"Q removed without R", kQrs, ClickQrs<kQOn>, {200, 0, 0, 0, 0, 320}, true, false, {200, 0, 0, 0, 0, 320}, 0, 0},
    {"Q with room", kQrs, ClickQrs<kQOn>, {0, 11, 0, 0, 0, 320}, false, true, {6, 11, 0, 0, 0, 320}, kFive, 1},
    {"Q without room", kQrs, ClickQrs<kQOn>, {0, 10, 0, 0, 0, 320}, false, false, {0, 10, 0, 0, 0, 320}, 0, 0},
    {"Q alone behind the offset", kQrs, ClickQrs<kQOn>, {0, 0, 0, 0, 0, 150}, false, true, {200, 0, 0, 0, 0, 150}, kFive, 1},
    {"R removed", kQrs, ClickQrs<kROn>, kComplex, true, true, {200, 0, 240, 260, 280, 320}, kFive, 1},
    {"R behind Q", kQrs, ClickQrs<kROn>, {200, 0, 0, 0, 0, 320}, false, true, {200, 210, 0, 0, 0, 320}, kFive, 1},
    {"S removed before R'", kQrs, ClickQrs<kSOn>, kComplex, true, false, kComplex, 0, 0},
    {"S behind R", kQrs, ClickQrs<kSOn>, {200, 220, 0, 0, 0, 225}, false, true, {200, 220, 230, 0, 0, 225}, kFive, 1},
    {"S without R", kQrs, ClickQrs<kSOn>, {200, 0, 0, 0, 0, 320}, false, false, {200, 0, 0, 0, 0, 320}, 0, 0},
    {"P wave removed", kP, Click<ApplyPWaveBox>, kWave, true, true, {0, 0, 0}, 7, 1},
    {"P wave restored", kP, Click<ApplyPWaveBox>, {0, 0, 0}, false, true, {50, 0, 100}, 7, 1},
    {"T wave restored", kT, Click<ApplyTWaveBox>, {0, 0, 0}, false, true, {450, 0, 500}, 0xE00, 1},
    {"P' in the middle", kP, kSecond, {100, 0, 201}, false, true, {100, 150, 201}, 2, 1},
    {"T' in a wave of 10 ms", kT, kSecond, {100, 0, 110}, false, true, {100, 105, 110}, 0x400, 1},
    {"T' in a wave of 9 ms", kT, kSecond, {100, 0, 109}, false, false, {100, 0, 109}, 0, 0}};

TEST(MorphologyRules, WaveBoxesRemoveInsertOrRefuse) {
    for (const Box& row : kBoxes) {
        RuleRig rig(kRules[row.kind].layout, row.stored);
        EXPECT_EQ(row.click(rig.Edit(), row.absent), row.accepted) << row.name;
        EXPECT_EQ(rig.Stored(), row.expected) << row.name;
        EXPECT_TRUE(rig.Shown() == row.expected && rig.Flags() == row.flags && rig.measured.size() == row.calls) << row.name;
    }
}

TEST(MorphologyRules, AnAbsentPWaveStaysAbsentWhileOthersMove) {
    RuleRig rig(kGeneralLayout, {0, 0, 300, 400, 700});
    rig.Drag(kGlobalQrsOn, 310);
    ApplyGeneralMarkers(rig.Edit(), true);
    EXPECT_TRUE(rig.Stored() == (Values{0, 0, 310, 400, 700}) && rig.Flags() == 7);
    RuleRig given(kGeneralLayout, {0, 0, 300, 400, 700}, KX_MANUAL_P_ON | KX_MANUAL_P_OFF | KX_MANUAL_T_OFF);
    given.found = {120, 210, 299, 399, 699};
    ApplyGeneralMarkers(given.Edit(), false);
    EXPECT_TRUE(given.Flags() == KX_MANUAL_T_OFF && given.Shown() == (Values{120, 210, 299, 399, 700}));
}

// QRS and P measure after each moved marker, so that the later ones see what the earlier ones became; the others once.
TEST(MorphologyRules, SeveralMoves) {
    const auto measured = [](Kind kind, const Values& stored, std::size_t first, std::int32_t firstTo, std::size_t second,
                             std::int32_t secondTo) {
        RuleRig rig(kRules[kind].layout, stored);
        rig.Drag(first, firstTo);
        rig.Drag(second, secondTo);
        kRules[kind].apply(rig.Edit());
        kRules[kind].apply(rig.Edit());
        EXPECT_EQ(rig.Shown(), rig.Stored()) << kRules[kind].name;
        return rig.measured;
    };
    using Calls = std::vector<Values>;
    EXPECT_EQ(measured(kGeneral, kBeat, 0, 150, 4, 650), (Calls{{150, 200, 300, 400, 650}}));
    EXPECT_EQ(measured(kQrs, kComplex, 0, 230, 1, 100), (Calls{{95, 220, 240, 260, 280, 320}, {95, 100, 240, 260, 280, 320}}));
    EXPECT_EQ(measured(kP, kWave, 0, 120, 2, 180), (Calls{{120, 150, 200}})) << "the second is not flagged yet, and the analysis's again";
    EXPECT_EQ(measured(kT, kWave, 0, 120, 2, 180), (Calls{{120, 150, 180}}));
}

// A drag to any place moves one marker, keeps the order, and what is shown is what is stored.
TEST(MorphologyRules, ADragToAnyPlaceKeepsTheOrder) {
    const std::pair<Kind, Values> beats[] = {
        {kGeneral, kBeat}, {kQrs, kComplex},   {kQrs, {200, 220, 0, 0, 0, 320}}, {kQrs, {0, 220, 240, 260, 0, 320}},
        {kP, kWave},       {kT, {100, 0, 200}}};
    for (const auto& [kind, values] : beats) {
        for (std::size_t slot = 0; slot < values.size(); ++slot) {
            for (std::int32_t to = 1; to < 1200 && values[slot] != 0; ++to) {
                RuleRig rig(kRules[kind].layout, values);
                rig.Drag(slot, to);
                kRules[kind].apply(rig.Edit());
                Values expected = values;
                expected[slot] = rig.Stored()[slot];
                ASSERT_TRUE(rig.Stored() == expected && rig.Shown() == expected) << kRules[kind].name << ' ' << slot << ' ' << to;
                std::erase(expected, 0);
                ASSERT_TRUE(std::ranges::is_sorted(expected)) << kRules[kind].name << ' ' << slot << ' ' << to;
            }
        }
    }
}

// ---- what a reviewer has done, and takes back

MarkerSnapshot State(std::uint16_t first, std::int32_t lead = 11) { return {lead, 0, {first}}; }

TEST(MarkerField, KnowsWhetherItsValueIsTheReviewers) {
    MarkerField field;
    field.Bind(2, nullptr);
    field.SetManual(0);
    EXPECT_TRUE(field.IsManual());  // no automatic value, not even 0
    field.SetAutomatic(100);
    EXPECT_TRUE(!field.OnMarkerMoved(1346, 150) && field.Current() == 100);
    EXPECT_TRUE(field.OnMarkerMoved(1347, 150) && !field.OnMarkerMoved(1347, 100)) << "back on the automatic value";
    EXPECT_TRUE(field.OnMarkerMoved(1347, -1) && field.Current() == 0);
    EXPECT_TRUE(field.OnMarkerMoved(1347, 0x7FFFFFFF) && field.Current() == 0xFFFF);
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
        EXPECT_TRUE(!history.UndoLead() && history.RedoLead() == 11);
        EXPECT_EQ(history.Redo(State(1)), State(2));
        EXPECT_EQ(history.Redo(State(2, 5)), State(3, 5));
    }
    history.Undo(State(3, 5));
    history.Record(State(4), 1345);
    EXPECT_FALSE(history.RedoLead()) << "it ends what could be done again";
    history.Clear();
    EXPECT_TRUE(history.IsEmpty());
}

TEST(MarkerHistory, OneDragIsOneStepAndTheOldestStepsAreForgotten) {
    MarkerHistory history;
    for (std::uint16_t i = 0; i < 500; ++i) {
        history.Record(State(i), 1345);
        history.EndStep();
    }
    history.Record(State(1000), 1345);
    history.Record(State(1001), 1345);  // the same drag
    history.Record(State(7), 1346);     // another marker
    history.Record(State(8, 3), 1346);  // another lead
    history.EndStep();
    history.Record(State(9, 3), 1346);  // another drag
    std::vector<int> undone;
    while (history.UndoLead()) {
        undone.push_back(history.Undo(State(0)).values[0]);
    }
    ASSERT_EQ(undone.size(), 128u);
    EXPECT_EQ(std::vector<int>(undone.begin(), undone.begin() + 5), (std::vector<int>{9, 8, 7, 1000, 499}));
    EXPECT_EQ(undone.back(), 376);
}

}  // namespace
}  // namespace kx::test
