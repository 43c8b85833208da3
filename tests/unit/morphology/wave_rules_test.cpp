#include "dialogs/morphology/rules/wave_rules.h"

#include <gtest/gtest.h>

#include "dialogs/morphology/rules/wave_rules.h"
#include "tests/unit/morphology/rule_rig.h"

namespace {

using kx::test::Numbers;
using kx::test::RuleRig;
using kx::test::Values;

struct Wave {
    const char* name;
    const kx::MarkerLayout& layout;
    void (*apply)(kx::MarkerEdit&);
    void (*waveBox)(kx::MarkerEdit&, bool);
    std::uint16_t flags[3];
    Values restored;
    bool oneMeasurement;  // for all moved markers together
};

const Wave kWaves[] = {
    {"P", kx::kPLayout, kx::ApplyPMarkers, kx::ApplyPWaveBox, {0x001, 0x002, 0x004}, {50, 0, 100}, false},
    {"T", kx::kTLayout, kx::ApplyTMarkers, kx::ApplyTWaveBox, {0x200, 0x400, 0x800}, {450, 0, 500}, true},
};

struct Drag {
    const char* name;
    Values stored;  // onset, second onset, offset
    std::size_t slot;
    std::int32_t to;
    std::int32_t expected;
};

const Drag kDrags[] = {
    {"onset free", {100, 150, 200}, 0, 149, 149},
    {"onset onto the second onset", {100, 150, 200}, 0, 150, 145},
    {"onset across the second onset", {100, 150, 200}, 0, 190, 145},
    {"onset across both", {100, 150, 200}, 0, 300, 145},
    {"onset across the offset", {100, 0, 200}, 0, 300, 195},
    {"onset of an absent wave", {0, 0, 0}, 0, 80, 0},
    {"second onset before the onset", {100, 150, 200}, 1, 20, 105},
    {"second onset onto the onset", {100, 150, 200}, 1, 100, 105},
    {"second onset onto the offset", {100, 150, 200}, 1, 200, 195},
    {"second onset: the onset wins in a short wave", {100, 101, 103}, 1, 200, 105},
    {"second onset placed where there was none", {100, 0, 200}, 1, 150, 150},
    {"offset before the second onset", {100, 150, 200}, 2, 120, 155},
    {"offset onto the second onset", {100, 150, 200}, 2, 150, 155},
    {"offset one behind the second onset", {100, 150, 200}, 2, 151, 151},
    {"offset before the onset", {100, 0, 200}, 2, 60, 105},
    {"offset onto the onset", {100, 0, 200}, 2, 100, 105},
    {"offset past the largest word", {65534, 0, 65535}, 2, 100, 65535},
};

TEST(WaveRules, Drags) {
    for (const Wave& wave : kWaves) {
        for (const Drag& row : kDrags) {
            RuleRig rig(wave.layout, row.stored);
            rig.Drag(row.slot, row.to);
            wave.apply(rig.Edit());
            Values expected = row.stored;
            expected[row.slot] = row.expected;
            EXPECT_EQ(rig.Stored(), expected) << wave.name << ": " << row.name;
            EXPECT_EQ(rig.Shown(), expected) << wave.name << ": " << row.name;
            EXPECT_EQ(rig.Flags(), wave.flags[row.slot]) << wave.name << ": " << row.name;
            EXPECT_EQ(rig.calls, 1) << wave.name << ": " << row.name;
            EXPECT_TRUE(rig.AreForeignFlagsKept()) << wave.name << ": " << row.name;
        }
    }
}

// The P wave is measured after its first moved marker, which gives the other one, not flagged yet, back to
// the analysis; the T wave is measured when both are stored.
TEST(WaveRules, SeveralMoves) {
    for (const Wave& wave : kWaves) {
        RuleRig rig(wave.layout, {100, 150, 200});
        rig.Drag(kx::kWaveOn, 120);
        rig.Drag(kx::kWaveOff, 180);
        wave.apply(rig.Edit());
        wave.apply(rig.Edit());
        EXPECT_EQ(rig.Stored(), (Values{120, 150, wave.oneMeasurement ? 180 : 200})) << wave.name;
        EXPECT_EQ(rig.Flags(), wave.oneMeasurement ? wave.flags[0] | wave.flags[2] : wave.flags[0]) << wave.name;
        EXPECT_EQ(rig.calls, 1) << wave.name;
    }
}

TEST(WaveRules, WaveBoxRemovesAndRestoresAllThreeByHand) {
    for (const Wave& wave : kWaves) {
        const std::uint16_t all = wave.flags[0] | wave.flags[1] | wave.flags[2];
        RuleRig rig(wave.layout, {100, 150, 200});
        wave.waveBox(rig.Edit(), true);
        EXPECT_EQ(rig.Stored(), (Values{0, 0, 0})) << wave.name;
        EXPECT_EQ(rig.Flags(), all) << wave.name;
        wave.waveBox(rig.Edit(), false);
        EXPECT_EQ(rig.Stored(), wave.restored) << wave.name;
        EXPECT_EQ(rig.Shown(), wave.restored) << wave.name;
        EXPECT_EQ(rig.Flags(), all) << wave.name;
        EXPECT_EQ(rig.calls, 2) << wave.name;
    }
}

TEST(WaveRules, SecondComponentBox) {
    const struct {
        const char* name;
        Values stored;
        bool absent;
        bool accepted;
        std::int32_t second;
    } rows[] = {
        {"removed", {100, 150, 200}, true, true, 0},          {"inserted in the middle", {100, 0, 201}, false, true, 150},
        {"a wave of 10 ms", {100, 0, 110}, false, true, 105}, {"a wave of 9 ms", {100, 0, 109}, false, false, 0},
        {"an absent wave", {0, 0, 0}, false, false, 0},
    };
    for (const Wave& wave : kWaves) {
        for (const auto& row : rows) {
            RuleRig rig(wave.layout, row.stored);
            EXPECT_EQ(kx::ApplySecondComponentBox(rig.Edit(), row.absent), row.accepted) << row.name;
            EXPECT_EQ(rig.Stored(), (Values{row.stored[0], row.second, row.stored[2]})) << row.name;
            EXPECT_EQ(rig.Flags(), row.accepted ? wave.flags[1] : 0) << row.name;
            EXPECT_EQ(rig.calls, row.accepted ? 1 : 0) << row.name;
        }
    }
}

// From any wave in order and more than 5 ms long, any drag moves one marker only and keeps the order.
TEST(WaveRules, KeepOrderAndLeaveUntouchedMarkersAlone) {
    for (const Wave& wave : kWaves) {
        for (std::uint32_t seed = 1; seed <= 200; ++seed) {
            Numbers numbers(seed);
            const std::int32_t onset = 50 + numbers.Below(300);
            const bool two = numbers.Below(2) == 1;
            RuleRig rig(wave.layout, {onset, two ? onset + 20 : 0, onset + 40});
            for (int step = 0; step < 100; ++step) {
                const Values before = rig.Stored();
                if (before[2] - before[0] <= 5) {
                    break;
                }
                const auto slot = static_cast<std::size_t>(two ? numbers.Below(3) : 2 * numbers.Below(2));
                rig.Drag(slot, 10 + numbers.Below(700));
                wave.apply(rig.Edit());
                const Values after = rig.Stored();
                for (std::size_t other = 0; other < 3; ++other) {
                    if (other != slot) {
                        ASSERT_EQ(after[other], before[other]) << seed << " " << step;
                    }
                }
                ASSERT_LT(after[0], two ? after[1] : after[2]) << seed << " " << step;
                ASSERT_LT(two ? after[1] : after[0], after[2]) << seed << " " << step;
                ASSERT_EQ(rig.Shown(), after) << seed << " " << step;
            }
        }
    }
}

}  // namespace
