#include "lib/hypertrophy_score.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "dialogs/hypertrophy/value_range.h"

namespace {

using kx::HypertrophyScore;

KxMeasurementSet EmptySet() {
    KxMeasurementSet set{};
    set.size = sizeof set;
    return set;
}

using Fill = std::function<void(KxMeasurementSet&)>;
using Number = std::function<std::int32_t(const HypertrophyScore&)>;

struct Row {
    const char* name;
    Fill fill;
    Number number;
    std::int32_t expected;
};

Fill WithAxes(std::int16_t qrs, std::int16_t t) {
    return [=](KxMeasurementSet& set) {
        set.qrsAxis = qrs;
        set.tAxis = t;
    };
}

Fill WithP(std::int16_t aP1, std::int16_t aP2, std::uint16_t duration) {
    return [=](KxMeasurementSet& set) {
        set.leads[KX_LEAD_V1].aP1 = aP1;
        set.leads[KX_LEAD_V1].aP2 = aP2;
        set.pDuration = duration;
    };
}

Fill WithLead(int lead, std::int16_t KxLeadMeasurements::*field, std::int16_t value) {
    return [=](KxMeasurementSet& set) { set.leads[lead].*field = value; };
}

Fill WithTimes(std::uint16_t qrs, std::uint16_t v3, std::uint16_t v5, std::uint16_t v6) {
    return [=](KxMeasurementSet& set) {
        set.qrsDuration = qrs;
        set.leads[KX_LEAD_V3].intrinsicoidDeflection = v3;
        set.leads[KX_LEAD_V5].intrinsicoidDeflection = v5;
        set.leads[KX_LEAD_V6].intrinsicoidDeflection = v6;
    };
}

void CheckRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        KxMeasurementSet set = EmptySet();
        row.fill(set);
        EXPECT_EQ(row.number(kx::ScoreHypertrophy(set)), row.expected) << row.name;
    }
}

void FillSokolowExample(KxMeasurementSet& set) {
    set.leads[KX_LEAD_V5].aR = 1800;
    set.leads[KX_LEAD_V6].aR = 2100;
    set.leads[KX_LEAD_V1].aS = -1500;
}

TEST(HypertrophyVoltages, TakeTheLargerOfBothWavesAndTheDepthOfS) {
    const auto rV5 = [](const HypertrophyScore& s) { return s.rV5; };
    const auto rAvl = [](const HypertrophyScore& s) { return s.rAvl; };
    const auto sV1 = [](const HypertrophyScore& s) { return s.sV1; };
    const auto sV3 = [](const HypertrophyScore& s) { return s.sV3; };
    const auto sokolow = [](const HypertrophyScore& s) { return s.sokolowLyon; };
    const auto cornell = [](const HypertrophyScore& s) { return s.cornell; };
    const Fill twoWaves = [](KxMeasurementSet& set) {
        set.leads[KX_LEAD_V5].aR = 700;
        set.leads[KX_LEAD_V5].aR1 = 900;
        set.leads[KX_LEAD_V1].aS = -300;
        set.leads[KX_LEAD_V1].aS1 = -1100;
        set.leads[KX_LEAD_AVL].aR = 1200;
        set.leads[KX_LEAD_AVL].aR1 = 200;
        set.leads[KX_LEAD_V3].aS = -1300;
        set.leads[KX_LEAD_V3].aS1 = -4;
    };
    const Fill upwardS = [](KxMeasurementSet& set) {
        set.leads[KX_LEAD_V1].aS = 50;
        set.leads[KX_LEAD_V1].aS1 = 80;
        set.leads[KX_LEAD_V5].aR = -20;
        set.leads[KX_LEAD_V5].aR1 = -10;
    };
    const Fill extremes = [](KxMeasurementSet& set) {
        set.leads[KX_LEAD_V1].aS = INT16_MIN;
        set.leads[KX_LEAD_V6].aR1 = INT16_MAX;
    };
    CheckRows({
        {"V5 R", FillSokolowExample, rV5, 1800},
        {"V6 R", FillSokolowExample, [](const HypertrophyScore& s) { return s.rV6; }, 2100},
        {"V1 S", FillSokolowExample, sV1, 1500},
        {"Sokolow-Lyon takes V6 when it is larger", FillSokolowExample, sokolow, 3600},
        {"R' larger than R", twoWaves, rV5, 900},
        {"S' deeper than S", twoWaves, sV1, 1100},
        {"R larger than R'", twoWaves, rAvl, 1200},
        {"S deeper than S'", twoWaves, sV3, 1300},
        {"Sokolow-Lyon takes V5 when it is larger", twoWaves, sokolow, 2000},
        {"Cornell", twoWaves, cornell, 2500},
        {"stored S above the line", upwardS, sV1, -50},
        {"stored R below the line", upwardS, rV5, -10},
        {"deepest S the record can hold", extremes, sV1, 32768},
        {"largest sum the record can hold", extremes, sokolow, 65535},
        {"an empty set", [](KxMeasurementSet&) {}, sokolow, 0},
    });
}

TEST(HypertrophyGroups, AmplitudeCountsThreeOnceAtItsLimits) {
    const auto points = [](const HypertrophyScore& s) { return s.amplitudePoints; };
    const auto limb = [](const HypertrophyScore& s) { return std::int32_t{s.limbAmplitude}; };
    const auto precordialS = [](const HypertrophyScore& s) { return std::int32_t{s.precordialS}; };
    const auto precordialR = [](const HypertrophyScore& s) { return std::int32_t{s.precordialR}; };
    std::vector<Row> rows;
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_AVF; ++lead) {
        rows.push_back({"limb R 2000", WithLead(lead, &KxLeadMeasurements::aR, 2000), limb, 1});
        rows.push_back({"limb R 1999", WithLead(lead, &KxLeadMeasurements::aR, 1999), limb, 0});
        rows.push_back({"limb R' 2000", WithLead(lead, &KxLeadMeasurements::aR1, 2000), limb, 1});
        rows.push_back({"limb Q -2000", WithLead(lead, &KxLeadMeasurements::aQ, -2000), limb, 1});
        rows.push_back({"limb Q -1999", WithLead(lead, &KxLeadMeasurements::aQ, -1999), limb, 0});
        rows.push_back({"limb S -2000", WithLead(lead, &KxLeadMeasurements::aS, -2000), limb, 1});
        rows.push_back({"limb S' -2000", WithLead(lead, &KxLeadMeasurements::aS1, -2000), limb, 1});
    }
    const Fill all = [](KxMeasurementSet& set) {
        set.leads[KX_LEAD_II].aR = 2500;
        set.leads[KX_LEAD_V2].aS = -3500;
        set.leads[KX_LEAD_V5].aR = 3500;
    };
    const std::vector<Row> more = {
        {"limb Q +2000 is no depth", WithLead(KX_LEAD_II, &KxLeadMeasurements::aQ, 2000), limb, 0},
        {"limb S' points", WithLead(KX_LEAD_II, &KxLeadMeasurements::aS1, -2000), points, 3},
        {"V1 is no limb lead", WithLead(KX_LEAD_V1, &KxLeadMeasurements::aR, 2900), limb, 0},
        {"V1 S -3000", WithLead(KX_LEAD_V1, &KxLeadMeasurements::aS, -3000), precordialS, 1},
        {"V1 S -2999", WithLead(KX_LEAD_V1, &KxLeadMeasurements::aS, -2999), precordialS, 0},
        {"V2 S' -3000", WithLead(KX_LEAD_V2, &KxLeadMeasurements::aS1, -3000), precordialS, 1},
        {"V3 S is not asked", WithLead(KX_LEAD_V3, &KxLeadMeasurements::aS, -4000), precordialS, 0},
        {"V5 R 3000", WithLead(KX_LEAD_V5, &KxLeadMeasurements::aR, 3000), precordialR, 1},
        {"V5 R 2999", WithLead(KX_LEAD_V5, &KxLeadMeasurements::aR, 2999), precordialR, 0},
        {"V6 R' 3000", WithLead(KX_LEAD_V6, &KxLeadMeasurements::aR1, 3000), precordialR, 1},
        {"V4 R is not asked", WithLead(KX_LEAD_V4, &KxLeadMeasurements::aR, 4000), precordialR, 0},
        {"S in V1 alone", WithLead(KX_LEAD_V1, &KxLeadMeasurements::aS, -3000), points, 3},
        {"R in V6 alone", WithLead(KX_LEAD_V6, &KxLeadMeasurements::aR, 3000), points, 3},
        {"all three items", all, points, 3},
        {"none", [](KxMeasurementSet&) {}, points, 0},
    };
    rows.insert(rows.end(), more.begin(), more.end());
    CheckRows(rows);
}

TEST(HypertrophyGroups, StComparesAxesFoldedByHalfTurns) {
    const auto points = [](const HypertrophyScore& s) { return s.stPoints; };
    CheckRows({
        {"90 apart", WithAxes(90, 0), points, 0},
        {"91 apart", WithAxes(91, 0), points, 3},
        {"-90 apart", WithAxes(0, 90), points, 0},
        {"-91 apart", WithAxes(0, 91), points, 3},
        {"180 is not folded", WithAxes(180, 0), points, 3},
        {"-181 becomes -1", WithAxes(-1, 180), points, 0},
        {"250 becomes 70", WithAxes(100, -150), points, 0},
        {"360 becomes 180", WithAxes(180, -180), points, 3},
        {"361 becomes 1", WithAxes(181, -180), points, 0},
        {"far off axes end too", WithAxes(INT16_MAX, INT16_MIN), points, 0},  // 65535 - 364 * 180 = 15
        {"far off the other way", WithAxes(INT16_MIN, INT16_MAX), points, 0},
    });
}

TEST(HypertrophyGroups, AxisDurationsAndAtriumAtTheirLimits) {
    const auto axis = [](const HypertrophyScore& s) { return s.axisPoints; };
    const auto durations = [](const HypertrophyScore& s) { return s.durationPoints; };
    const auto atrium = [](const HypertrophyScore& s) { return s.atriumPoints; };
    CheckRows({
        {"axis -29", WithAxes(-29, 0), axis, 0},
        {"axis -30", WithAxes(-30, 0), axis, 2},
        {"axis -90", WithAxes(-90, 0), axis, 2},
        {"axis -91", WithAxes(-91, 0), axis, 0},
        {"axis -180", WithAxes(-180, 0), axis, 0},
        {"QRS 89", WithTimes(89, 0, 0, 0), durations, 0},
        {"QRS 90", WithTimes(90, 0, 0, 0), durations, 1},
        {"V3 49, V6 49", WithTimes(0, 49, 0, 49), durations, 0},
        {"V3 50", WithTimes(0, 50, 0, 0), durations, 1},
        {"V6 50", WithTimes(0, 0, 0, 50), durations, 1},
        {"V5 is not asked", WithTimes(0, 0, 80, 0), durations, 0},
        {"QRS and deflection", WithTimes(90, 50, 0, 0), durations, 2},
        {"durations are unsigned", WithTimes(0xFFFF, 0xFFFF, 0, 0), durations, 2},
        {"single P -2200, 40 ms", WithP(-2200, 0, 40), atrium, 3},
        {"single P -2200, 39 ms", WithP(-2200, 0, 39), atrium, 0},
        {"single P -2100", WithP(-2100, 0, 40), atrium, 0},
        {"single P -2101", WithP(-2101, 0, 40), atrium, 3},
        {"second part decides", WithP(100, -2101, 40), atrium, 3},
        {"a shallow second part hides the first", WithP(-2200, -100, 40), atrium, 0},
    });
}

TEST(HypertrophyTotal, SumsTheGroups) {
    KxMeasurementSet set = EmptySet();
    set.leads[KX_LEAD_I].aR = 2000;                     // 3
    set.qrsAxis = -60;                                  // 2
    set.tAxis = 60;                                     // 3: 120 apart
    set.qrsDuration = 90;                               // 1
    set.leads[KX_LEAD_V6].intrinsicoidDeflection = 50;  // 1
    set.leads[KX_LEAD_V1].aP2 = -2101;                  // 3
    set.pDuration = 40;
    EXPECT_EQ(kx::ScoreHypertrophy(set).totalPoints, 13);
    EXPECT_EQ(kx::ScoreHypertrophy(EmptySet()).totalPoints, 0);
}

TEST(ValueRange, ColoursEveryBound) {
    constexpr kx::PackedColor red = 0x0000FF;
    constexpr kx::PackedColor olive = 0x008080;
    constexpr kx::PackedColor green = 0x008000;
    const kx::ValueRange male = kx::CornellRange(KX_SEX_MALE);
    const kx::ValueRange female = kx::CornellRange(KX_SEX_FEMALE);
    const struct {
        const char* name;
        kx::ValueRange range;
        std::int32_t value;
        kx::PackedColor expected;
    } rows[] = {
        {"amplitude", kx::kSingleAmplitudeRange, -1, red},
        {"amplitude", kx::kSingleAmplitudeRange, 0, green},
        {"amplitude", kx::kSingleAmplitudeRange, 1000, green},
        {"amplitude", kx::kSingleAmplitudeRange, 1001, olive},
        {"amplitude", kx::kSingleAmplitudeRange, 2000, olive},
        {"amplitude", kx::kSingleAmplitudeRange, 2001, red},
        {"Sokolow-Lyon", kx::kSokolowLyonRange, 2000, green},
        {"Sokolow-Lyon", kx::kSokolowLyonRange, 2001, olive},
        {"Sokolow-Lyon", kx::kSokolowLyonRange, 3500, olive},
        {"Sokolow-Lyon", kx::kSokolowLyonRange, 3501, red},
        {"Cornell male", male, 1500, green},
        {"Cornell male", male, 1501, olive},
        {"Cornell male", male, 2800, olive},
        {"Cornell male", male, 2801, red},
        {"Cornell female", female, 2000, olive},
        {"Cornell female", female, 2001, red},
        {"Cornell unknown", kx::CornellRange(KX_SEX_UNKNOWN), 2500, olive},
        {"Cornell other code", kx::CornellRange(7), 2500, olive},
        {"Cornell female", female, 2500, red},
        {"points", kx::kCriterionPointsRange, 0, green},
        {"points", kx::kCriterionPointsRange, 1, olive},
        {"points", kx::kCriterionPointsRange, 2, red},
        {"total", kx::kTotalPointsRange, 4, green},
        {"total", kx::kTotalPointsRange, 5, olive},
        {"total", kx::kTotalPointsRange, 6, red},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.range.ColorOf(row.value), row.expected) << row.name << " " << row.value;
    }
}

}  // namespace
