#include "lib/hypertrophy_score.h"

#include "dialogs/hypertrophy/value_range.h"

namespace kx::test {
namespace {

using Lead = KxLeadMeasurements;

// The points of the five groups: amplitude, ST, axis, durations, atrium.
std::string Points(const KxMeasurementSet& set) {
    const HypertrophyScore s = ScoreHypertrophy(set);
    EXPECT_EQ(s.totalPoints, s.amplitudePoints + s.stPoints + s.axisPoints + s.durationPoints + s.atriumPoints);
    std::string points;
    for (const int group : {s.amplitudePoints, s.stPoints, s.axisPoints, s.durationPoints, s.atriumPoints}) {
        points += std::to_string(group);
    }
    return points;
}

std::string PointsOf(int lead, std::int16_t Lead::*field, int value) {
    KxMeasurementSet set{};
    set.leads[lead].*field = static_cast<std::int16_t>(value);
    return Points(set);
}

TEST(HypertrophyVoltages, TakeTheLargerOfBothWavesAndTheDepthOfS) {
    KxMeasurementSet set{};
    set.leads[KX_LEAD_V5].aR = 700, set.leads[KX_LEAD_V5].aR1 = 900, set.leads[KX_LEAD_V6].aR = 400;
    set.leads[KX_LEAD_V1].aS = -300, set.leads[KX_LEAD_V1].aS1 = -1100;
    set.leads[KX_LEAD_AVL].aR = 1200, set.leads[KX_LEAD_AVL].aR1 = 200;
    set.leads[KX_LEAD_V3].aS = -1300, set.leads[KX_LEAD_V3].aS1 = -4;
    const HypertrophyScore both = ScoreHypertrophy(set);
    EXPECT_TRUE(both.rV5 == 900 && both.rV6 == 400 && both.sV1 == 1100 && both.rAvl == 1200 && both.sV3 == 1300);
    EXPECT_TRUE(both.sokolowLyon == 2000 && both.cornell == 2500);
    set.leads[KX_LEAD_V1].aS = INT16_MIN, set.leads[KX_LEAD_V6].aR1 = INT16_MAX;
    set.leads[KX_LEAD_V3].aS = 50, set.leads[KX_LEAD_V3].aS1 = 80;
    EXPECT_EQ(ScoreHypertrophy(set).sokolowLyon, 65535);
    EXPECT_EQ(ScoreHypertrophy(set).sV3, -50) << "a stored S above the line";
}

TEST(HypertrophyPoints, AreGivenForAmplitudesAtTheirLimits) {
    const auto expectLimit = [](int lead, std::int16_t Lead::*field, int limit) {
        EXPECT_EQ(PointsOf(lead, field, limit), "30000") << lead << ": " << limit;
        EXPECT_EQ(PointsOf(lead, field, limit - limit / std::abs(limit)), "00000") << lead << ": " << limit;
    };
    for (int lead = KX_LEAD_I; lead <= KX_LEAD_AVF; ++lead) {
        expectLimit(lead, &Lead::aR, 2000), expectLimit(lead, &Lead::aR1, 2000);
        expectLimit(lead, &Lead::aQ, -2000), expectLimit(lead, &Lead::aS, -2000), expectLimit(lead, &Lead::aS1, -2000);
    }
    expectLimit(KX_LEAD_V1, &Lead::aS, -3000), expectLimit(KX_LEAD_V2, &Lead::aS1, -3000);
    expectLimit(KX_LEAD_V5, &Lead::aR, 3000), expectLimit(KX_LEAD_V6, &Lead::aR1, 3000);
    EXPECT_EQ(PointsOf(KX_LEAD_V1, &Lead::aR, 4000) + PointsOf(KX_LEAD_II, &Lead::aQ, 4000), "0000000000") << "no limb lead, no depth";
    EXPECT_EQ(PointsOf(KX_LEAD_V3, &Lead::aS, -4000) + PointsOf(KX_LEAD_V4, &Lead::aR, 4000), "0000000000") << "not asked";
}

TEST(HypertrophyPoints, AreGivenForAxesDurationsAndTheAtriumAtTheirLimits) {
    // A half turn is not folded: 180 stays; but -181 becomes -1, 360 becomes 180, 361 becomes 1, and 65535 - 364 * 180 is 15.
    const struct {
        std::int16_t qrs, t;
        const char* points;
    } axes[] = {{-29, 0, "00000"},  {-30, 0, "00200"},    {-90, 0, "00200"},    {-91, -90, "00000"},
                {90, 0, "00000"},   {0, 91, "03000"},     {180, 0, "03000"},    {-180, 0, "03000"},
                {-1, 180, "00000"}, {180, -180, "03000"}, {181, -180, "00000"}, {INT16_MAX, INT16_MIN, "00000"}};
    for (const auto& row : axes) {
        KxMeasurementSet set{};
        set.qrsAxis = row.qrs, set.tAxis = row.t;
        EXPECT_EQ(Points(set), row.points) << row.qrs << " and " << row.t;
    }
    const auto durations = [](std::uint16_t qrs, std::uint16_t v3, std::uint16_t v5, std::uint16_t v6) {
        KxMeasurementSet set{};
        set.qrsDuration = qrs;
        set.leads[KX_LEAD_V3].intrinsicoidDeflection = v3;
        set.leads[KX_LEAD_V5].intrinsicoidDeflection = v5;
        set.leads[KX_LEAD_V6].intrinsicoidDeflection = v6;
        return Points(set);
    };
    EXPECT_TRUE(durations(89, 49, 80, 49) == "00000" && durations(90, 0, 0, 0) == "00010" && durations(0, 50, 0, 0) == "00010");
    EXPECT_TRUE(durations(90, 0, 0, 50) == "00020" && durations(90, 0, 0, 0xFFFF) == "00020");
    const auto atrium = [](std::int16_t first, std::int16_t second, std::uint16_t duration) {
        KxMeasurementSet set{};
        set.leads[KX_LEAD_V1].aP1 = first, set.leads[KX_LEAD_V1].aP2 = second, set.pDuration = duration;
        return Points(set);
    };
    EXPECT_TRUE(atrium(-2101, 0, 40) == "00003" && atrium(-2101, 0, 39) == "00000" && atrium(-2100, 0, 40) == "00000");
    EXPECT_TRUE(atrium(100, -2101, 40) == "00003" && atrium(-2200, -100, 40) == "00000") << "a second part decides";
}

TEST(ValueRange, ColoursEveryBound) {
    const auto expectBounds = [](const ValueRange& range, std::int32_t green, std::int32_t olive) {
        EXPECT_TRUE(range.ColorOf(0) == 0x008000 && range.ColorOf(green) == 0x008000) << green;
        EXPECT_TRUE(range.ColorOf(green + 1) == 0x008080 && range.ColorOf(olive) == 0x008080) << green;
        EXPECT_TRUE(range.ColorOf(-1) == 0x0000FF && range.ColorOf(olive + 1) == 0x0000FF) << green;
    };
    expectBounds(kSokolowLyonRange, 2000, 3500);
    expectBounds(CornellRange(KX_SEX_FEMALE), 1500, 2000);
    expectBounds(CornellRange(7), 1500, 2800);
    expectBounds(kTotalPointsRange, 4, 5);
}

}  // namespace
}  // namespace kx::test
