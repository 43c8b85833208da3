#include "lib/hypertrophy_score.h"

#include "dialogs/hypertrophy/value_range.h"

namespace kx::test {
namespace {

using Set = KxMeasurementSet;
using Fill = std::function<void(Set&)>;

HypertrophyScore Score(const Fill& fill) {
    Set set{};
    fill(set);
    return ScoreHypertrophy(set);
}

Fill Wave(int lead, std::int16_t KxLeadMeasurements::*field, std::int16_t value) {
    return [=](Set& set) { set.leads[lead].*field = value; };
}
Fill Axes(std::int16_t qrs, std::int16_t t) {
    return [=](Set& set) { set.qrsAxis = qrs, set.tAxis = t; };
}
Fill Late(int lead, std::uint16_t ms) {
    return [=](Set& set) { set.leads[lead].intrinsicoidDeflection = ms; };
}
Fill Qrs(std::uint16_t ms) {
    return [=](Set& set) { set.qrsDuration = ms; };
}
Fill P(std::int16_t aP1, std::int16_t aP2, std::uint16_t duration) {
    return [=](Set& set) { set.leads[KX_LEAD_V1].aP1 = aP1, set.leads[KX_LEAD_V1].aP2 = aP2, set.pDuration = duration; };
}

TEST(HypertrophyVoltages, TakeTheLargerOfBothWavesAndTheDepthOfS) {
    const HypertrophyScore both = Score([](Set& set) {
        set.leads[KX_LEAD_V5].aR = 700, set.leads[KX_LEAD_V5].aR1 = 900, set.leads[KX_LEAD_V6].aR = 400;
        set.leads[KX_LEAD_V1].aS = -300, set.leads[KX_LEAD_V1].aS1 = -1100;
        set.leads[KX_LEAD_AVL].aR = 1200, set.leads[KX_LEAD_AVL].aR1 = 200;
        set.leads[KX_LEAD_V3].aS = -1300, set.leads[KX_LEAD_V3].aS1 = -4;
    });
    EXPECT_TRUE(both.rV5 == 900 && both.rV6 == 400 && both.sV1 == 1100 && both.rAvl == 1200 && both.sV3 == 1300);
    EXPECT_EQ(both.sokolowLyon, 2000);
    EXPECT_EQ(both.cornell, 2500);
    const HypertrophyScore extreme = Score([](Set& set) {
        set.leads[KX_LEAD_V1].aS = INT16_MIN;
        set.leads[KX_LEAD_V6].aR1 = INT16_MAX;
        set.leads[KX_LEAD_V3].aS = 50, set.leads[KX_LEAD_V3].aS1 = 80;
    });
    EXPECT_EQ(extreme.sokolowLyon, 65535);
    EXPECT_EQ(extreme.sV3, -50) << "a stored S above the line";
}

// The points of the five groups: amplitude, ST, axis, durations, atrium.
TEST(HypertrophyPoints, AreGivenAtTheirLimits) {
    const struct {
        const char* name;
        Fill fill;
        const char* points;
    } rows[] = {{"V1 is no limb lead", Wave(KX_LEAD_V1, &KxLeadMeasurements::aR, 2900), "00000"},
                {"limb Q +2000 is no depth", Wave(KX_LEAD_II, &KxLeadMeasurements::aQ, 2000), "00000"},
                {"V1 S -3000", Wave(KX_LEAD_V1, &KxLeadMeasurements::aS, -3000), "30000"},
                {"V1 S -2999", Wave(KX_LEAD_V1, &KxLeadMeasurements::aS, -2999), "00000"},
                {"V2 S' -3000", Wave(KX_LEAD_V2, &KxLeadMeasurements::aS1, -3000), "30000"},
                {"V3 S is not asked", Wave(KX_LEAD_V3, &KxLeadMeasurements::aS, -4000), "00000"},
                {"V5 R 3000", Wave(KX_LEAD_V5, &KxLeadMeasurements::aR, 3000), "30000"},
                {"V5 R 2999", Wave(KX_LEAD_V5, &KxLeadMeasurements::aR, 2999), "00000"},
                {"V6 R' 3000", Wave(KX_LEAD_V6, &KxLeadMeasurements::aR1, 3000), "30000"},
                {"V4 R is not asked", Wave(KX_LEAD_V4, &KxLeadMeasurements::aR, 4000), "00000"},
                {"axis -29", Axes(-29, 0), "00000"},
                {"axis -30", Axes(-30, 0), "00200"},
                {"axis -90", Axes(-90, 0), "00200"},
                {"axis -180", Axes(-180, -180), "00000"},
                {"axis -91", Axes(-91, -90), "00000"},
                {"90 apart", Axes(90, 0), "00000"},
                {"91 apart", Axes(0, 91), "03000"},
                {"180 is not folded", Axes(180, 0), "03000"},
                {"-181 becomes -1", Axes(-1, 180), "00000"},
                {"360 becomes 180", Axes(180, -180), "03000"},
                {"361 becomes 1", Axes(181, -180), "00000"},
                {"-180 is not folded", Axes(-180, 0), "03000"},
                {"far off axes end too", Axes(INT16_MAX, INT16_MIN), "00000"},  // 65535 - 364 * 180 = 15
                {"QRS 89", Qrs(89), "00000"},
                {"QRS 90", Qrs(90), "00010"},
                {"V3 49", Late(KX_LEAD_V3, 49), "00000"},
                {"V3 50", Late(KX_LEAD_V3, 50), "00010"},
                {"V6 49", Late(KX_LEAD_V6, 49), "00000"},
                {"V6 50, unsigned", Late(KX_LEAD_V6, 0xFFFF), "00010"},
                {"V5 is not asked", Late(KX_LEAD_V5, 80), "00000"},
                {"single P -2101, 40 ms", P(-2101, 0, 40), "00003"},
                {"single P -2101, 39 ms", P(-2101, 0, 39), "00000"},
                {"single P -2100", P(-2100, 0, 40), "00000"},
                {"the second part decides", P(100, -2101, 40), "00003"},
                {"a shallow second part hides the first", P(-2200, -100, 40), "00000"}};
    for (const auto& row : rows) {
        const HypertrophyScore s = Score(row.fill);
        std::string points;
        for (const int group : {s.amplitudePoints, s.stPoints, s.axisPoints, s.durationPoints, s.atriumPoints}) {
            points += std::to_string(group);
        }
        EXPECT_EQ(points, row.points) << row.name;
        EXPECT_EQ(s.totalPoints, s.amplitudePoints + s.stPoints + s.axisPoints + s.durationPoints + s.atriumPoints) << row.name;
    }
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_AVF; ++lead) {
        EXPECT_TRUE(Score(Wave(lead, &KxLeadMeasurements::aR, 2000)).limbAmplitude &&
                    Score(Wave(lead, &KxLeadMeasurements::aR1, 2000)).limbAmplitude);
        EXPECT_FALSE(Score(Wave(lead, &KxLeadMeasurements::aR, 1999)).limbAmplitude ||
                     Score(Wave(lead, &KxLeadMeasurements::aQ, -1999)).limbAmplitude);
        EXPECT_TRUE(Score(Wave(lead, &KxLeadMeasurements::aQ, -2000)).limbAmplitude &&
                    Score(Wave(lead, &KxLeadMeasurements::aS1, -2000)).limbAmplitude);
    }
}

TEST(ValueRange, ColoursEveryBound) {
    const struct {
        const char* name;
        ValueRange range;
        std::int32_t green, olive;  // the largest values
    } rows[] = {{"amplitude", kSingleAmplitudeRange, 1000, 2000},
                {"Sokolow-Lyon", kSokolowLyonRange, 2000, 3500},
                {"Cornell, male", CornellRange(KX_SEX_MALE), 1500, 2800},
                {"Cornell, female", CornellRange(KX_SEX_FEMALE), 1500, 2000},
                {"Cornell, other code", CornellRange(7), 1500, 2800},
                {"points", kCriterionPointsRange, 0, 1},
                {"total", kTotalPointsRange, 4, 5}};
    constexpr PackedColor kRed = 0x0000FF, kOlive = 0x008080, kGreen = 0x008000;
    for (const auto& row : rows) {
        const PackedColor colors[] = {row.range.ColorOf(-1),        row.range.ColorOf(0),
                                      row.range.ColorOf(row.green), row.range.ColorOf(row.green + 1),
                                      row.range.ColorOf(row.olive), row.range.ColorOf(row.olive + 1)};
        const PackedColor expected[] = {kRed, kGreen, kGreen, kOlive, kOlive, kRed};
        EXPECT_TRUE(std::equal(std::begin(colors), std::end(colors), std::begin(expected))) << row.name;
    }
}

}  // namespace
}  // namespace kx::test
