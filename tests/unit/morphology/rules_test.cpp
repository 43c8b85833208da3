// The ordering rules of the four morphology dialogs, over fields and a record without a window.
#include <random>

#include "dialogs/morphology/rules/general_rules.h"
#include "dialogs/morphology/rules/qrs_rules.h"
#include "dialogs/morphology/rules/wave_rules.h"
#include "tests/unit/morphology/rule_rig.h"

namespace kx::test {
namespace {

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
                       {"P off before P on", kGeneral, kBeat, 1, 50, 100},
                       {"P off across QRS on", kGeneral, kBeat, 1, 350, 300},
                       {"P off: QRS on wins over P on", kGeneral, {310, 320, 300, 400, 700}, 1, 305, 300},
                       {"QRS on too early", kGeneral, {0, 10, 300, 400, 700}, 2, 5, 20},
                       {"QRS on before P off", kGeneral, kBeat, 2, 5, 200},
                       {"QRS on one before QRS off", kGeneral, kBeat, 2, 399, 399},
                       {"QRS on onto QRS off", kGeneral, kBeat, 2, 400, 380},
                       {"QRS on: QRS off wins over P off", kGeneral, {100, 390, 395, 400, 700}, 2, 600, 380},
                       {"QRS on with the offset in the first 20 ms", kGeneral, {0, 5, 8, 10, 700}, 2, 9, 0},
                       {"QRS off onto QRS on", kGeneral, kBeat, 3, 300, 320},
                       {"QRS off one behind QRS on", kGeneral, kBeat, 3, 301, 301},
                       {"QRS off across T off", kGeneral, kBeat, 3, 900, 700},
                       {"QRS off: T off wins over the gap", kGeneral, {100, 200, 300, 400, 310}, 3, 200, 310},
                       {"T off across QRS off", kGeneral, kBeat, 4, 10, 400},

                       {"Q 4 before R", kQrs, kComplex, 0, 216, 215},
                       {"Q with R in the first 5 ms", kQrs, {2, 4, 0, 0, 0, 320}, 0, 100, 0},
                       {"Q without R passes S", kQrs, {200, 0, 240, 0, 0, 320}, 0, 300, 300},
                       {"Q without R onto the offset", kQrs, {200, 0, 240, 0, 0, 320}, 0, 318, 315},
                       {"R onto Q", kQrs, kComplex, 1, 200, 205},
                       {"R across S", kQrs, kComplex, 1, 300, 235},
                       {"R between Q and S that are too close: S wins", kQrs, {200, 206, 208, 0, 0, 320}, 1, 204, 203},
                       {"R without S onto the offset", kQrs, {200, 220, 0, 260, 0, 320}, 1, 400, 315},
                       {"R without Q", kQrs, {0, 220, 240, 0, 0, 320}, 1, 3, 3},
                       {"S without R in the first 5 ms", kQrs, {200, 0, 240, 0, 0, 320}, 2, 3, 5},
                       {"S without R'", kQrs, {200, 220, 240, 0, 0, 320}, 2, 330, 315},
                       {"R' across S'", kQrs, kComplex, 3, 300, 275},
                       {"S' across R'", kQrs, kComplex, 4, 100, 265},
                       {"S' with R' 5 before the offset", kQrs, {200, 220, 240, 315, 318, 320}, 4, 100, 315},
                       {"offset before S'", kQrs, kComplex, 5, 250, 285},
                       {"offset 6 behind S'", kQrs, kComplex, 5, 286, 286},
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
                       {"onset onto the second onset", kP, kWave, 0, 150, 145},
                       {"onset across the offset", kP, {100, 0, 200}, 0, 300, 195},
                       {"onset of an absent wave", kP, {0, 0, 0}, 0, 80, 0},
                       {"second onset onto the onset", kP, kWave, 1, 100, 105},
                       {"second onset onto the offset", kP, kWave, 1, 200, 195},
                       {"second onset: the onset wins in a short wave", kP, {100, 101, 103}, 1, 200, 105},
                       {"offset onto the second onset", kP, kWave, 2, 150, 155},
                       {"offset one behind the second onset", kP, kWave, 2, 151, 151},
                       {"offset onto the onset", kP, {100, 0, 200}, 2, 100, 105},
                       {"offset past the largest word", kP, {65534, 0, 65535}, 2, 100, 65535}};

TEST(MorphologyRules, LimitOneMarkerByItsNeighbours) {
    for (const Drag& row : kDrags) {
        for (const Kind kind : {row.kind, row.kind == kP ? kT : row.kind}) {
            RuleRig rig(kRules[kind].layout, row.stored);
            rig.Drag(row.slot, row.to);
            kRules[kind].apply(rig.Edit());
            Values expected = row.stored;
            expected[row.slot] = row.expected;
            EXPECT_EQ(rig.Stored(), expected) << kRules[kind].name << ": " << row.name;
            EXPECT_EQ(rig.Shown(), expected) << kRules[kind].name << ": " << row.name;
            EXPECT_EQ(rig.Flags(), FlagsOf(kind, row.slot)) << kRules[kind].name << ": " << row.name;
            EXPECT_EQ(rig.Calls(), 1u) << kRules[kind].name << ": " << row.name;
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
    {"P removed where only its offset is", kGeneral, kNoP, {0, 200, 300, 400, 700}, true, true, {0, 0, 300, 400, 700}, 3, 0},
    {"P given back", kGeneral, kNoP, {0, 0, 300, 400, 700}, false, true, {0, 0, 300, 400, 700}, 0, 1},
    {"P there already", kGeneral, kNoP, kBeat, false, true, kBeat, 0, 0},
    {"Q removed", kQrs, ClickQrs<kQOn>, kComplex, true, true, {0, 220, 240, 260, 280, 320}, kFive, 1},
    {"Q removed without R", kQrs, ClickQrs<kQOn>, {200, 0, 0, 0, 0, 320}, true, false, {200, 0, 0, 0, 0, 320}, 0, 0},
    {"Q with room", kQrs, ClickQrs<kQOn>, {0, 11, 0, 0, 0, 320}, false, true, {6, 11, 0, 0, 0, 320}, kFive, 1},
    {"Q without room", kQrs, ClickQrs<kQOn>, {0, 10, 0, 0, 0, 320}, false, false, {0, 10, 0, 0, 0, 320}, 0, 0},
    {"Q with R at 1", kQrs, ClickQrs<kQOn>, {0, 1, 0, 0, 0, 320}, false, false, {0, 1, 0, 0, 0, 320}, 0, 0},
    {"Q alone behind the offset", kQrs, ClickQrs<kQOn>, {0, 0, 0, 0, 0, 150}, false, true, {200, 0, 0, 0, 0, 150}, kFive, 1},
    {"R removed", kQrs, ClickQrs<kROn>, kComplex, true, true, {200, 0, 240, 260, 280, 320}, kFive, 1},
    {"R removed without Q", kQrs, ClickQrs<kROn>, {0, 220, 0, 0, 0, 320}, true, false, {0, 220, 0, 0, 0, 320}, 0, 0},
    {"R behind Q", kQrs, ClickQrs<kROn>, {200, 0, 0, 0, 0, 320}, false, true, {200, 210, 0, 0, 0, 320}, kFive, 1},
    {"R alone", kQrs, ClickQrs<kROn>, {0, 0, 0, 0, 0, 320}, false, true, {0, 200, 0, 0, 0, 320}, kFive, 1},
    {"S removed", kQrs, ClickQrs<kSOn>, {200, 220, 240, 0, 0, 320}, true, true, {200, 220, 0, 0, 0, 320}, kFive, 1},
    {"S removed before R'", kQrs, ClickQrs<kSOn>, kComplex, true, false, kComplex, 0, 0},
    {"S behind R", kQrs, ClickQrs<kSOn>, {200, 220, 0, 0, 0, 225}, false, true, {200, 220, 230, 0, 0, 225}, kFive, 1},
    {"S without R", kQrs, ClickQrs<kSOn>, {200, 0, 0, 0, 0, 320}, false, false, {200, 0, 0, 0, 0, 320}, 0, 0},
    {"R' removed before S'", kQrs, ClickQrs<kRPrimeOn>, kComplex, true, false, kComplex, 0, 0},
    {"S' removed", kQrs, ClickQrs<kSPrimeOn>, kComplex, true, true, {200, 220, 240, 260, 0, 320}, kFive, 1},
    {"P wave removed", kP, Click<ApplyPWaveBox>, kWave, true, true, {0, 0, 0}, 7, 1},
    {"P wave restored", kP, Click<ApplyPWaveBox>, {0, 0, 0}, false, true, {50, 0, 100}, 7, 1},
    {"T wave removed", kT, Click<ApplyTWaveBox>, kWave, true, true, {0, 0, 0}, 0xE00, 1},
    {"T wave restored", kT, Click<ApplyTWaveBox>, {0, 0, 0}, false, true, {450, 0, 500}, 0xE00, 1},
    {"P' removed", kP, kSecond, kWave, true, true, {100, 0, 200}, 2, 1},
    {"P' in the middle", kP, kSecond, {100, 0, 201}, false, true, {100, 150, 201}, 2, 1},
    {"T' in a wave of 10 ms", kT, kSecond, {100, 0, 110}, false, true, {100, 105, 110}, 0x400, 1},
    {"T' in a wave of 9 ms", kT, kSecond, {100, 0, 109}, false, false, {100, 0, 109}, 0, 0}};

TEST(MorphologyRules, WaveBoxesRemoveInsertOrRefuse) {
    for (const Box& row : kBoxes) {
        RuleRig rig(kRules[row.kind].layout, row.stored);
        EXPECT_EQ(row.click(rig.Edit(), row.absent), row.accepted) << row.name;
        EXPECT_EQ(rig.Stored(), row.expected) << row.name;
        EXPECT_EQ(rig.Shown(), row.expected) << row.name;
        EXPECT_EQ(rig.Flags(), row.flags) << row.name;
        EXPECT_EQ(rig.Calls(), row.calls) << row.name;
    }
}

// The field of the offset goes behind a component inserted at it; the record's is the analysis's.
TEST(MorphologyRules, AnInsertedComponentPushesTheOffsetsFieldAlone) {
    for (const auto& [component, shown] : {std::pair{kQOn, 225}, {kROn, 220}}) {
        RuleRig rig(kQrsLayout, component == kQOn ? Values{0, 220, 0, 0, 0, 215} : Values{200, 0, 0, 0, 0, 210});
        const std::int32_t stored = rig.Stored()[kQrsOff];
        rig.succeeds = false;
        ApplyQrsWaveBox(rig.Edit(), component, false);
        EXPECT_EQ(rig.Shown()[kQrsOff], shown);
        EXPECT_EQ(rig.Stored()[kQrsOff], stored);
    }
}

TEST(MorphologyRules, AnAbsentPWaveStaysAbsentWhileOthersMove) {
    RuleRig rig(kGeneralLayout, {0, 0, 300, 400, 700});
    rig.Drag(kGlobalQrsOn, 310);
    ApplyGeneralMarkers(rig.Edit(), true);
    EXPECT_EQ(rig.Stored(), (Values{0, 0, 310, 400, 700}));
    EXPECT_EQ(rig.Flags(), 7);
    RuleRig given(kGeneralLayout, {0, 0, 300, 400, 700}, KX_MANUAL_P_ON | KX_MANUAL_P_OFF | KX_MANUAL_T_OFF);
    given.found = {120, 210, 299, 399, 699};
    ApplyGeneralMarkers(given.Edit(), false);
    EXPECT_EQ(given.Flags(), KX_MANUAL_T_OFF);
    EXPECT_EQ(given.Shown(), (Values{120, 210, 299, 399, 700}));
}

// QRS and P measure after each moved marker, so that the later ones see what the earlier ones became; the others once.
TEST(MorphologyRules, SeveralMoves) {
    const struct {
        Kind kind;
        Values stored;
        std::size_t first, second;
        std::int32_t firstTo, secondTo;
        std::vector<Values> measured;
    } rows[] = {{kGeneral, kBeat, 0, 4, 150, 650, {{150, 200, 300, 400, 650}}},
                {kQrs, kComplex, 0, 1, 230, 100, {{95, 220, 240, 260, 280, 320}, {95, 100, 240, 260, 280, 320}}},
                {kP, kWave, 0, 2, 120, 180, {{120, 150, 200}}},  // the second is not flagged yet, and the analysis's again
                {kT, kWave, 0, 2, 120, 180, {{120, 150, 180}}}};
    for (const auto& row : rows) {
        RuleRig rig(kRules[row.kind].layout, row.stored);
        rig.Drag(row.first, row.firstTo);
        rig.Drag(row.second, row.secondTo);
        kRules[row.kind].apply(rig.Edit());
        kRules[row.kind].apply(rig.Edit());
        EXPECT_EQ(rig.measured, row.measured) << kRules[row.kind].name;
        EXPECT_EQ(rig.Shown(), rig.Stored()) << kRules[row.kind].name;
    }
    RuleRig rig(kQrsLayout, kComplex);
    rig.found = {1, 2, 3, 4, 5, 333};  // of them only the offset is not manual
    rig.Drag(kQrsOff, 400);
    ApplyQrsMarkers(rig.Edit());
    EXPECT_EQ(rig.Shown(), (Values{200, 220, 240, 260, 280, 333}));
}

// What a beat in order keeps, whatever is dragged. Where the neighbours leave no room a rule may break it.
bool IsInOrder(Kind kind, const Values& values) {
    const std::int32_t gap = kind == kQrs ? 5 : 1;
    for (std::size_t i = 0, last = 0; i < values.size(); ++i) {
        const bool present = values[i] != 0;
        const std::int32_t least = kind == kGeneral && i != kGlobalQrsOff ? 0 : gap;
        if (i > 0 && present && values[i] < values[last] + least) {
            return false;
        }
        last = present ? i : last;
    }
    return true;
}

// In any order, from any beat in order: a drag moves one marker and flags no other, keeps the order, and what is shown
// is what is stored.
TEST(MorphologyRules, AnyDragsInAnyOrderKeepTheOrder) {
    std::mt19937 random(11);
    const auto below = [&random](int bound) { return static_cast<std::int32_t>(random() % static_cast<unsigned>(bound)); };
    for (int run = 0; run < 1200; ++run) {
        const auto kind = static_cast<Kind>(run % 4);
        Values values(kRules[kind].layout.markers.size());
        values[0] = 60 + below(200);
        // Later components may be missing, the offset never.
        const std::size_t present = kind == kQrs ? 1 + static_cast<std::size_t>(below(5)) : kind == kGeneral ? 4 : below(2) + 1u;
        for (std::size_t i = 1, last = 0; i < values.size(); ++i) {
            if (i < present || i + 1 == values.size()) {
                values[i] = values[last] + (kind == kQrs ? 5 : 20) + below(60);
                last = i;
            }
        }
        RuleRig rig(kRules[kind].layout, values);
        std::uint16_t flags = 0;
        for (int step = 0; step < 60 && IsInOrder(kind, rig.Stored()); ++step) {
            const Values before = rig.Stored();
            auto slot = static_cast<std::size_t>(below(static_cast<int>(values.size())));
            const bool hasRoom =
                kind == kGeneral ? before[3] - before[1] >= 20 && before[1] > 0 : before[values.size() - 1] - before[0] > 10;
            if (before[slot] == 0 || !hasRoom) {
                continue;
            }
            rig.Drag(slot, 1 + below(1200));
            kRules[kind].apply(rig.Edit());
            const Values after = rig.Stored();
            Values expected = before;
            expected[slot] = after[slot];
            ASSERT_EQ(after, expected) << run << ' ' << step;
            ASSERT_EQ(rig.Shown(), after) << run << ' ' << step;
            flags = static_cast<std::uint16_t>(flags | FlagsOf(kind, slot));
            ASSERT_EQ(rig.Flags() & ~flags, 0) << run << ' ' << step;
            ASSERT_TRUE(IsInOrder(kind, after)) << kRules[kind].name << ' ' << run << ' ' << step << ": " << testing::PrintToString(before)
                                                << " to " << testing::PrintToString(after);
        }
    }
}

}  // namespace
}  // namespace kx::test
