#include "dialogs/morphology/rules/general_rules.h"

#include <gtest/gtest.h>

#include "tests/unit/morphology/rule_rig.h"

namespace {

using kx::test::Numbers;
using kx::test::RuleRig;
using kx::test::Values;

constexpr Values::value_type kUntouched = -1;

struct Row {
    const char* name;
    Values stored;   // P on, P off, QRS on, QRS off, T off
    Values dragged;  // kUntouched: not dragged
    bool noPWave;
    Values expected;
    int flags;
    int calls;
};

const Row kRows[] = {
    {"free move", {100, 200, 300, 400, 700}, {110, -1, -1, -1, -1}, false, {110, 200, 300, 400, 700}, 1, 1},
    {"P on across P off", {100, 200, 300, 400, 700}, {250, -1, -1, -1, -1}, false, {200, 200, 300, 400, 700}, 1, 1},
    {"P off before P on", {100, 200, 300, 400, 700}, {-1, 50, -1, -1, -1}, false, {100, 100, 300, 400, 700}, 2, 1},
    {"P off across QRS on", {100, 200, 300, 400, 700}, {-1, 350, -1, -1, -1}, false, {100, 300, 300, 400, 700}, 2, 1},
    {"P off: QRS on wins over P on", {310, 320, 300, 400, 700}, {-1, 305, -1, -1, -1}, false, {310, 300, 300, 400, 700}, 2, 1},
    {"QRS on too early", {0, 10, 300, 400, 700}, {-1, -1, 5, -1, -1}, false, {0, 10, 20, 400, 700}, 4, 1},
    {"QRS on before P off", {100, 200, 300, 400, 700}, {-1, -1, 5, -1, -1}, false, {100, 200, 200, 400, 700}, 4, 1},
    {"QRS on one before QRS off", {100, 200, 300, 400, 700}, {-1, -1, 399, -1, -1}, false, {100, 200, 399, 400, 700}, 4, 1},
    {"QRS on onto QRS off", {100, 200, 300, 400, 700}, {-1, -1, 400, -1, -1}, false, {100, 200, 380, 400, 700}, 4, 1},
    {"QRS on: QRS off wins over P off", {100, 390, 395, 400, 700}, {-1, -1, 600, -1, -1}, false, {100, 390, 380, 400, 700}, 4, 1},
    {"QRS on with the offset in the first 20 ms", {0, 5, 8, 10, 700}, {-1, -1, 9, -1, -1}, false, {0, 5, 0, 10, 700}, 4, 1},
    {"QRS off onto QRS on", {100, 200, 300, 400, 700}, {-1, -1, -1, 300, -1}, false, {100, 200, 300, 320, 700}, 8, 1},
    {"QRS off one behind QRS on", {100, 200, 300, 400, 700}, {-1, -1, -1, 301, -1}, false, {100, 200, 300, 301, 700}, 8, 1},
    {"QRS off across T off", {100, 200, 300, 400, 700}, {-1, -1, -1, 900, -1}, false, {100, 200, 300, 700, 700}, 8, 1},
    {"QRS off: T off wins over the gap", {100, 200, 300, 400, 310}, {-1, -1, -1, 200, -1}, false, {100, 200, 300, 310, 310}, 8, 1},
    {"T off across QRS off", {100, 200, 300, 400, 700}, {-1, -1, -1, -1, 10}, false, {100, 200, 300, 400, 400}, 16, 1},
    {"two moves, one measurement", {100, 200, 300, 400, 700}, {150, -1, -1, -1, 650}, false, {150, 200, 300, 400, 650}, 17, 1},
    {"nothing moved", {100, 200, 300, 400, 700}, {-1, -1, -1, -1, -1}, false, {100, 200, 300, 400, 700}, 0, 0},
    {"P removed", {100, 200, 300, 400, 700}, {-1, -1, -1, -1, -1}, true, {0, 0, 300, 400, 700}, 3, 1},
    {"P removed where only its offset is", {0, 200, 300, 400, 700}, {-1, -1, -1, -1, -1}, true, {0, 0, 300, 400, 700}, 3, 0},
    {"a move while P is removed", {0, 0, 300, 400, 700}, {-1, -1, 310, -1, -1}, true, {0, 0, 310, 400, 700}, 7, 1},
    {"P given back", {0, 0, 300, 400, 700}, {-1, -1, -1, -1, -1}, false, {0, 0, 300, 400, 700}, 0, 1},
    {"P given back, P on is not taken", {0, 0, 300, 400, 700}, {50, -1, -1, -1, -1}, false, {0, 0, 300, 400, 700}, 0, 1},
    {"past the largest word", {100, 200, 300, 400, 65535}, {-1, -1, -1, -1, 70000}, false, {100, 200, 300, 400, 65535}, 0, 0},
};

TEST(GeneralRules, Rows) {
    for (const Row& row : kRows) {
        RuleRig rig(kx::kGeneralLayout, row.stored);
        for (std::size_t slot = 0; slot < row.dragged.size(); ++slot) {
            if (row.dragged[slot] != kUntouched) {
                rig.Drag(slot, row.dragged[slot]);
            }
        }
        kx::ApplyGeneralMarkers(rig.Edit(), row.noPWave);
        EXPECT_EQ(rig.Stored(), row.expected) << row.name;
        EXPECT_EQ(rig.Flags(), row.flags) << row.name;
        EXPECT_EQ(rig.calls, row.calls) << row.name;
        EXPECT_TRUE(rig.AreForeignFlagsKept()) << row.name;
        if (rig.calls > 0) {
            EXPECT_EQ(rig.Shown(), row.expected) << row.name;
        }
    }
}

TEST(GeneralRules, GivesBothPMarkersBackToTheAnalysis) {
    RuleRig rig(kx::kGeneralLayout, {0, 0, 300, 400, 700}, KX_MANUAL_P_ON | KX_MANUAL_P_OFF | KX_MANUAL_T_OFF);
    rig.found = {120, 210, 299, 399, 699};
    kx::ApplyGeneralMarkers(rig.Edit(), false);
    EXPECT_EQ(rig.Flags(), KX_MANUAL_T_OFF);
    EXPECT_EQ(rig.Shown(), (Values{120, 210, 299, 399, 700}));
}

TEST(GeneralRules, LimitedMoveStaysShownWhenTheEngineFails) {
    RuleRig rig(kx::kGeneralLayout, {100, 200, 300, 400, 700});
    rig.succeeds = false;
    rig.Drag(kx::kGlobalQrsOn, 500);
    kx::ApplyGeneralMarkers(rig.Edit(), false);
    EXPECT_EQ(rig.Shown(), (Values{100, 200, 380, 400, 700}));
    EXPECT_EQ(rig.Stored(), rig.Shown());
}

// From any beat in order, any drag keeps the order where the rules promise it, moves one marker only, and
// flags it.
TEST(GeneralRules, KeepOrderAndLeaveUntouchedMarkersAlone) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        Numbers numbers(seed);
        Values start = {60 + numbers.Below(100)};
        for (int i = 1; i < 5; ++i) {
            start.push_back(start.back() + 20 + numbers.Below(200));
        }
        RuleRig rig(kx::kGeneralLayout, start);
        std::uint16_t flags = 0;
        for (int step = 0; step < 100; ++step) {
            const Values before = rig.Stored();
            const auto slot = static_cast<std::size_t>(numbers.Below(5));
            const std::int32_t to = numbers.Below(1200);
            const bool moved = to != before[slot];
            rig.Drag(slot, to);
            kx::ApplyGeneralMarkers(rig.Edit(), false);
            const Values after = rig.Stored();
            if (before[kx::kGlobalPOff] == 0) {
                break;  // a P wave dragged to 0 is absent from then on
            }
            for (std::size_t other = 0; other < 5; ++other) {
                if (other != slot) {
                    ASSERT_EQ(after[other], before[other]) << seed << " " << step;
                }
            }
            flags = static_cast<std::uint16_t>(flags | (moved ? 1 << slot : 0));
            ASSERT_EQ(rig.Flags() & ~flags, 0) << seed << " " << step;
            ASSERT_LT(after[2], after[3]) << seed << " " << step;
            ASSERT_LE(after[3], after[4]) << seed << " " << step;
            // A QRS onset dragged across the offset goes 20 ms before it, even before a P offset that stands
            // there.
            if (before[0] <= before[1] && before[1] <= before[2] && before[3] - before[1] >= 20) {
                ASSERT_LE(after[0], after[1]) << seed << " " << step;
                ASSERT_LE(after[1], after[2]) << seed << " " << step;
            }
            ASSERT_EQ(rig.Shown(), after) << seed << " " << step;
        }
    }
}

}  // namespace
