#include "dialogs/morphology/rules/qrs_rules.h"

#include <gtest/gtest.h>

#include "tests/unit/morphology/rule_rig.h"

namespace {

using kx::test::Numbers;
using kx::test::RuleRig;
using kx::test::Values;

constexpr std::uint16_t kFive = 0x0F8;
constexpr std::uint16_t kOffset = 0x100;

struct Drag {
    const char* name;
    Values stored;  // Q, R, S, R', S', offset
    std::size_t slot;
    std::int32_t to;
    std::int32_t expected;  // of that marker; the others stay
};

const Values kAll = {200, 220, 240, 260, 280, 320};

const Drag kDrags[] = {
    {"Q free", kAll, 0, 205, 205},
    {"Q 5 before R", kAll, 0, 215, 215},  // 215 + 5 >= 220 sets it to what it is
    {"Q 4 before R", kAll, 0, 216, 215},
    {"Q across R", kAll, 0, 500, 215},
    {"Q with R in the first 5 ms", {2, 4, 0, 0, 0, 320}, 0, 100, 0},
    {"Q without R passes S", {200, 0, 240, 0, 0, 320}, 0, 300, 300},
    {"Q without R onto the offset", {200, 0, 240, 0, 0, 320}, 0, 318, 315},
    {"R onto Q", kAll, 1, 200, 205},
    {"R across Q", kAll, 1, 10, 205},
    {"R across S", kAll, 1, 300, 235},
    {"R between Q and S that are too close: S wins", {200, 206, 208, 0, 0, 320}, 1, 204, 203},
    {"R without S onto the offset", {200, 220, 0, 260, 0, 320}, 1, 400, 315},
    {"R without Q", {0, 220, 240, 0, 0, 320}, 1, 3, 3},
    {"S across R", kAll, 2, 200, 225},
    {"S across R'", kAll, 2, 290, 255},
    {"S without R in the first 5 ms", {200, 0, 240, 0, 0, 320}, 2, 3, 5},
    {"S without R'", {200, 220, 240, 0, 0, 320}, 2, 330, 315},
    {"R' across S", kAll, 3, 100, 245},
    {"R' across S'", kAll, 3, 300, 275},
    {"R' without S'", {200, 220, 240, 260, 0, 320}, 3, 330, 315},
    {"S' across R'", kAll, 4, 100, 265},
    {"S' onto the offset", kAll, 4, 320, 315},
    {"S' with R' 5 before the offset", {200, 220, 240, 315, 318, 320}, 4, 100, 315},
    {"offset before S'", kAll, 5, 250, 285},
    {"offset 5 behind S'", kAll, 5, 285, 285},
    {"offset 6 behind S'", kAll, 5, 286, 286},
    {"offset without S' before R'", {200, 220, 240, 260, 0, 320}, 5, 250, 265},
    {"offset without R' before S", {200, 220, 240, 0, 0, 320}, 5, 100, 245},
    {"offset with Q and R only", {200, 220, 0, 0, 0, 320}, 5, 210, 225},
    {"offset with Q only", {200, 0, 0, 0, 0, 320}, 5, 210, 210},
    {"offset with Q only, before it", {200, 0, 0, 0, 0, 320}, 5, 100, 205},
    {"offset without any component", {0, 0, 0, 0, 0, 320}, 5, 3, 5},
    {"offset: S' pushes, then R lies behind it", {0, 300, 0, 0, 200, 320}, 5, 100, 305},
    {"offset: R' pushes, then S lies behind it", {0, 0, 300, 200, 0, 320}, 5, 100, 305},
    {"offset: S pushes and R behind it is not asked", {0, 300, 200, 0, 0, 320}, 5, 100, 205},
    {"offset: S' pushes and R' behind it is not asked", {0, 0, 0, 300, 200, 320}, 5, 100, 205},
    {"component in the last ms of a word", {65000, 65530, 0, 0, 0, 65535}, 1, 65535, 65530},
};

TEST(QrsRules, Drags) {
    for (const Drag& row : kDrags) {
        RuleRig rig(kx::kQrsLayout, row.stored);
        rig.Drag(row.slot, row.to);
        kx::ApplyQrsMarkers(rig.Edit());
        Values expected = row.stored;
        expected[row.slot] = row.expected;
        EXPECT_EQ(rig.Stored(), expected) << row.name;
        EXPECT_EQ(rig.Shown(), expected) << row.name;
        EXPECT_EQ(rig.Flags(), kFive) << row.name;
        EXPECT_EQ(rig.calls, 1) << row.name;
        EXPECT_TRUE(rig.AreForeignFlagsKept()) << row.name;
    }
}

struct Box {
    const char* name;
    Values stored;
    kx::QrsMarker component;
    bool absent;
    bool accepted;
    Values expected;
    std::int32_t shownOffset;  // the offset's field when the record is measured
};

const Box kBoxes[] = {
    {"Q removed", kAll, kx::kQOn, true, true, {0, 220, 240, 260, 280, 320}, 320},
    {"Q removed without R", {200, 0, 0, 0, 0, 320}, kx::kQOn, true, false, {200, 0, 0, 0, 0, 320}, 320},
    {"Q with room", {0, 11, 0, 0, 0, 320}, kx::kQOn, false, true, {6, 11, 0, 0, 0, 320}, 320},
    {"Q without room", {0, 10, 0, 0, 0, 320}, kx::kQOn, false, false, {0, 10, 0, 0, 0, 320}, 320},
    {"Q with R at 1", {0, 1, 0, 0, 0, 320}, kx::kQOn, false, false, {0, 1, 0, 0, 0, 320}, 320},
    {"Q alone", {0, 0, 0, 0, 0, 320}, kx::kQOn, false, true, {200, 0, 0, 0, 0, 320}, 320},
    {"Q alone behind the offset", {0, 0, 0, 0, 0, 150}, kx::kQOn, false, true, {200, 0, 0, 0, 0, 150}, 150},
    {"Q at the offset", {0, 220, 0, 0, 0, 215}, kx::kQOn, false, true, {215, 220, 0, 0, 0, 215}, 225},
    {"R removed", kAll, kx::kROn, true, true, {200, 0, 240, 260, 280, 320}, 320},
    {"R removed without Q", {0, 220, 0, 0, 0, 320}, kx::kROn, true, false, {0, 220, 0, 0, 0, 320}, 320},
    {"R behind Q", {200, 0, 0, 0, 0, 320}, kx::kROn, false, true, {200, 210, 0, 0, 0, 320}, 320},
    {"R alone", {0, 0, 0, 0, 0, 320}, kx::kROn, false, true, {0, 200, 0, 0, 0, 320}, 320},
    {"R at the offset", {200, 0, 0, 0, 0, 210}, kx::kROn, false, true, {200, 210, 0, 0, 0, 210}, 220},
    {"S removed", {200, 220, 240, 0, 0, 320}, kx::kSOn, true, true, {200, 220, 0, 0, 0, 320}, 320},
    {"S removed before R'", kAll, kx::kSOn, true, false, kAll, 320},
    {"S behind R", {200, 220, 0, 0, 0, 320}, kx::kSOn, false, true, {200, 220, 230, 0, 0, 320}, 320},
    {"S without R", {200, 0, 0, 0, 0, 320}, kx::kSOn, false, false, {200, 0, 0, 0, 0, 320}, 320},
    {"S past the offset", {200, 220, 0, 0, 0, 225}, kx::kSOn, false, true, {200, 220, 230, 0, 0, 225}, 225},
    {"R' removed", {200, 220, 240, 260, 0, 320}, kx::kRPrimeOn, true, true, {200, 220, 240, 0, 0, 320}, 320},
    {"R' removed before S'", kAll, kx::kRPrimeOn, true, false, kAll, 320},
    {"R' behind S", {200, 220, 240, 0, 0, 320}, kx::kRPrimeOn, false, true, {200, 220, 240, 250, 0, 320}, 320},
    {"R' without S", {200, 220, 0, 0, 0, 320}, kx::kRPrimeOn, false, false, {200, 220, 0, 0, 0, 320}, 320},
    {"S' removed", kAll, kx::kSPrimeOn, true, true, {200, 220, 240, 260, 0, 320}, 320},
    {"S' behind R'", {200, 220, 240, 260, 0, 320}, kx::kSPrimeOn, false, true, {200, 220, 240, 260, 270, 320}, 320},
    {"S' without R'", {200, 220, 240, 0, 0, 320}, kx::kSPrimeOn, false, false, {200, 220, 240, 0, 0, 320}, 320},
};

TEST(QrsRules, Boxes) {
    for (const Box& row : kBoxes) {
        RuleRig rig(kx::kQrsLayout, row.stored);
        rig.succeeds = false;  // so that the offset's field is seen before the record takes it back
        EXPECT_EQ(kx::ApplyQrsWaveBox(rig.Edit(), row.component, row.absent), row.accepted) << row.name;
        EXPECT_EQ(rig.Stored(), row.expected) << row.name;
        Values shown = row.expected;
        shown[kx::kQrsOff] = row.shownOffset;
        EXPECT_EQ(rig.Shown(), shown) << row.name;
        EXPECT_EQ(rig.Flags(), row.accepted ? kFive : 0) << row.name;
        EXPECT_EQ(rig.calls, row.accepted ? 1 : 0) << row.name;
    }
}

TEST(QrsRules, OffsetThatAnInsertionMovedComesBackFromTheRecordWhileItsFlagIsClear) {
    for (const bool manual : {false, true}) {
        RuleRig rig(kx::kQrsLayout, {0, 220, 0, 0, 0, 215}, manual ? kOffset : 0);
        kx::ApplyQrsWaveBox(rig.Edit(), kx::kQOn, false);
        EXPECT_EQ(rig.Shown()[kx::kQrsOff], manual ? 225 : 215);
        EXPECT_EQ(rig.Stored()[kx::kQrsOff], 215);
    }
}

TEST(QrsRules, MovedOffsetKeepsNoFlagAndIsTheAnalysissAgain) {
    RuleRig rig(kx::kQrsLayout, kAll);
    rig.found = {1, 2, 3, 4, 5, 333};
    rig.Drag(kx::kQrsOff, 400);
    kx::ApplyQrsMarkers(rig.Edit());
    EXPECT_EQ(rig.measured, (std::vector<Values>{{200, 220, 240, 260, 280, 400}}));
    EXPECT_EQ(rig.Shown(), (Values{200, 220, 240, 260, 280, 333}));
    EXPECT_EQ(rig.Flags(), kFive);
}

// Each moved marker has a measurement of its own, and the later ones see what the earlier ones became.
TEST(QrsRules, SeveralMovesAreMeasuredOneByOne) {
    RuleRig rig(kx::kQrsLayout, kAll);
    rig.Drag(kx::kQOn, 230);
    rig.Drag(kx::kROn, 100);
    kx::ApplyQrsMarkers(rig.Edit());
    // Q + 5 >= R (100): Q = 95. Then Q + 5 >= R: R = 100.
    EXPECT_EQ(rig.measured, (std::vector<Values>{{95, 220, 240, 260, 280, 320}, {95, 100, 240, 260, 280, 320}}));
}

// From any complex whose present components follow one another without a gap, 5 ms apart, any drag keeps them
// so and moves one marker only.
TEST(QrsRules, KeepOrderAndDistanceAndLeaveUntouchedMarkersAlone) {
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        Numbers numbers(seed);
        const int present = 1 + numbers.Below(5);
        Values start(6, 0);
        std::int32_t at = 20 + numbers.Below(200);
        for (int i = 0; i < present; ++i) {
            start[static_cast<std::size_t>(i)] = at;
            at += 5 + numbers.Below(40);
        }
        start[kx::kQrsOff] = at;
        RuleRig rig(kx::kQrsLayout, start);
        for (int step = 0; step < 100; ++step) {
            const Values before = rig.Stored();
            const int pick = numbers.Below(present + 1);
            const std::size_t slot = pick == present ? kx::kQrsOff : static_cast<std::size_t>(pick);
            rig.Drag(slot, 1 + numbers.Below(600));
            kx::ApplyQrsMarkers(rig.Edit());
            const Values after = rig.Stored();
            for (std::size_t other = 0; other < 6; ++other) {
                if (other != slot) {
                    ASSERT_EQ(after[other], before[other]) << seed << " " << step;
                }
            }
            for (std::size_t i = 0; i < static_cast<std::size_t>(present); ++i) {
                const std::size_t next = i + 1 == static_cast<std::size_t>(present) ? kx::kQrsOff : i + 1;
                ASSERT_LE(after[i] + 5, after[next]) << seed << " " << step << " component " << i;
            }
            ASSERT_EQ(rig.Shown(), after) << seed << " " << step;
            ASSERT_TRUE(rig.Flags() == 0 || rig.Flags() == kFive) << seed << " " << step;
        }
    }
}

}  // namespace
