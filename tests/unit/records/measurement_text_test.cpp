#include "lib/measurement_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace kx {
namespace {

std::string Text(const KxMeasurementSet& set, int code, AmplitudeUnit unit = AmplitudeUnit::kMicrovolts, std::int32_t stTimeMs = 80) {
    char text[40] = "before";
    return MeasurementFieldText(set, code, text, sizeof text, unit, stTimeMs) ? text : "(no field)";
}

KxMeasurementSet Measured() {
    KxMeasurementSet set{};
    set.measured = 0xFFFFFFFFu;
    return set;
}

TEST(MeasurementText, WritesTheWholeBeat) {
    KxMeasurementSet set = Measured();
    set.pDuration = 98;
    set.prInterval = 160;
    set.qtInterval = 380;
    set.qtc = 412;
    set.qtcBazett = 65535;
    set.qrsDuration = 92;
    set.rrInterval = 1000;
    set.pAxis = 45;
    set.qrsAxis = -30;
    set.tAxis = -180;
    const std::pair<int, const char*> rows[] = {
        {20, "160 ms"}, {21, "92 ms"},   {22, "380 ms / 412"}, {34, "60"},     {105, "45 \xBA"}, {106, "-30 \xBA"}, {107, "-180 \xBA"},
        {135, "98 ms"}, {136, "380 ms"}, {137, "412"},         {138, "65535"}, {139, "1000 ms"}, {368, ""},
    };
    for (const auto& [code, text] : rows) {
        EXPECT_EQ(Text(set, code), text) << code;
    }
    set.rrInterval = 0;
    EXPECT_EQ(Text(set, 34), "0");
}

TEST(MeasurementText, WritesEachLead) {
    using Lead = KxLeadMeasurements;
    const struct {
        int code;
        std::int16_t Lead::*signedField;
        std::uint16_t Lead::*unsignedField;
    } rows[] = {
        {143, &Lead::aP1, nullptr},
        {155, &Lead::aP2, nullptr},
        {167, &Lead::aR, nullptr},
        {179, &Lead::aR1, nullptr},
        {191, &Lead::aQ, nullptr},
        {215, &Lead::aT1, nullptr},
        {227, &Lead::aT2, nullptr},
        {239, &Lead::aS, nullptr},
        {251, &Lead::fieldValue251, nullptr},
        {263, nullptr, &Lead::fieldValue263},
        {275, nullptr, &Lead::fieldValue275},
        {347, nullptr, &Lead::intrinsicoidDeflection},
    };
    for (const auto& row : rows) {
        KxMeasurementSet set = Measured();
        for (int lead = 0; lead < 12; ++lead) {
            if (row.signedField != nullptr) {
                set.leads[lead].*row.signedField = static_cast<std::int16_t>(-1000 - lead);
            } else {
                set.leads[lead].*row.unsignedField = static_cast<std::uint16_t>(65000 + lead);
            }
        }
        for (int lead = 0; lead < 12; ++lead) {
            const int expected = row.signedField != nullptr ? -1000 - lead : 65000 + lead;
            EXPECT_EQ(Text(set, row.code + lead), std::to_string(expected)) << row.code + lead;
        }
    }
}

TEST(MeasurementText, WritesStLevelsInEachUnit) {
    const struct {
        int level;
        const char* microvolts;
        const char* millimetres;
        const char* millivolts;
    } rows[] = {
        {-150, "-150", "-1.5", "-0.15"}, {0, "0", "0.0", "0.00"},     {99, "99", "0.9", "0.09"},
        {1234, "1234", "12.3", "1.23"},  {-9, "-9", "-0.0", "-0.00"}, {-32768, "-32768", "-327.6", "-32.76"},
    };
    for (const auto& row : rows) {
        KxMeasurementSet set = Measured();
        set.leads[11].stLevel[8] = static_cast<std::int16_t>(row.level);
        EXPECT_EQ(Text(set, 59), row.microvolts);
        EXPECT_EQ(Text(set, 59, AmplitudeUnit::kMillimetres), row.millimetres);
        EXPECT_EQ(Text(set, 59, AmplitudeUnit::kMillivolts), row.millivolts);
        EXPECT_EQ(Text(set, 59, AmplitudeUnit::kMicrovolts, 100), "0");
    }
}

TEST(MeasurementText, WritesStSlopes) {
    const struct {
        int from;
        int to;
        int ms;
        const char* text;
    } rows[] = {
        {0, 100, 80, "1.25"}, {100, 0, 80, "-1.25"},          {0, 1, 60, "0.02"},  // 17 microvolts per second
        {0, 1, 80, "0.01"},   {-32768, 32767, 10, "6553.50"}, {0, 0, 80, "0.00"}, {50, 60, 0, ""}, {50, 60, -80, ""}, {0, 5, 5, "1.00"},
    };
    for (const auto& row : rows) {
        KxMeasurementSet set = Measured();
        set.leads[0].stLevel[0] = static_cast<std::int16_t>(row.from);
        if (row.ms >= 5) {
            set.leads[0].stLevel[(row.ms + 5) / 10] = static_cast<std::int16_t>(row.to);
        }
        EXPECT_EQ(Text(set, 335, AmplitudeUnit::kMillimetres, row.ms), row.text) << row.to << " in " << row.ms;
    }
}

TEST(MeasurementText, IsCutAtItsBuffer) {
    KxMeasurementSet set = Measured();
    set.qtInterval = 380;
    char text[4];
    EXPECT_TRUE(MeasurementFieldText(set, 22, text, sizeof text, AmplitudeUnit::kMicrovolts, 0));
    EXPECT_STREQ(text, "380");
    EXPECT_TRUE(MeasurementFieldText(set, 22, text, 1, AmplitudeUnit::kMicrovolts, 0));
    EXPECT_STREQ(text, "");
    EXPECT_TRUE(MeasurementFieldText(set, 22, text, 0, AmplitudeUnit::kMicrovolts, 0));
    EXPECT_TRUE(MeasurementFieldText(set, 22, nullptr, 4, AmplitudeUnit::kMicrovolts, 0));
}

TEST(MeasurementText, WritesTheIntervalsOfARhythmStrip) {
    KxMeasurementSet set{};
    set.prInterval = 160;
    set.qrsDuration = 92;
    set.qtInterval = 380;
    set.qtc = 412;
    const struct {
        int code;
        const char* measured;
        const char* notMeasured;
    } rows[] = {
        {17, "160 ms", "... ms"},
        {18, "92 ms", "... ms"},
        {19, "380 ms / 412", "... ms / ..."},
    };
    for (const auto& row : rows) {
        char text[40];
        set.measured = 1;
        EXPECT_TRUE(RhythmFieldText(set, row.code, text, sizeof text));
        EXPECT_STREQ(text, row.measured);
        set.measured = 0;
        EXPECT_TRUE(RhythmFieldText(set, row.code, text, sizeof text));
        EXPECT_STREQ(text, row.notMeasured);
    }
    EXPECT_FALSE(RhythmFieldText(set, 16, nullptr, 0));
    EXPECT_FALSE(RhythmFieldText(set, 20, nullptr, 0));
}

TEST(MeasurementScores, SumVoltages) {
    KxMeasurementSet set = Measured();
    set.leads[KX_LEAD_V1].aS = -1200;
    set.leads[KX_LEAD_V1].aS1 = -1300;
    set.leads[KX_LEAD_V5].aR = 1000;
    set.leads[KX_LEAD_V6].aR = 900;
    set.leads[KX_LEAD_V6].aR1 = 1100;
    set.leads[KX_LEAD_AVL].aR1 = 700;
    set.leads[KX_LEAD_V3].aS = -800;
    EXPECT_EQ(Text(set, 371), "2400");
    EXPECT_EQ(Text(set, 372), "1500");
    set.leads[KX_LEAD_V1].aS = set.leads[KX_LEAD_V1].aS1 = -32768;
    set.leads[KX_LEAD_V5].aR = 32767;
    EXPECT_EQ(Text(set, 371), "65535");
}

// The P wave of V1 and the duration of P.
void SetP(KxMeasurementSet& set, std::int16_t first, std::int16_t second, std::uint16_t duration) {
    set.leads[KX_LEAD_V1].aP1 = first;
    set.leads[KX_LEAD_V1].aP2 = second;
    set.pDuration = duration;
}

TEST(MeasurementScores, CountPoints) {
    const struct {
        const char* what;
        void (*change)(KxMeasurementSet&);
        int points;
    } rows[] = {
        {"nothing", [](KxMeasurementSet&) {}, 0},
        {"limb R of 2000", [](auto& s) { s.leads[5].aR1 = 2000; }, 3},
        {"limb R of 1999", [](auto& s) { s.leads[5].aR1 = 1999; }, 0},
        {"limb Q", [](auto& s) { s.leads[0].aQ = -2000; }, 3},
        {"limb S'", [](auto& s) { s.leads[2].aS1 = -2000; }, 3},
        {"R of V1 is no limb wave", [](auto& s) { s.leads[6].aR = 2500; }, 0},
        {"S of V2", [](auto& s) { s.leads[7].aS = -3000; }, 3},
        {"S of V3 does not count", [](auto& s) { s.leads[8].aS = -3000; }, 0},
        {"R of V6", [](auto& s) { s.leads[11].aR = 3000; }, 3},
        {"T axis opposed", [](auto& s) { s.tAxis = 91; }, 3},
        {"T axis at a right angle", [](auto& s) { s.tAxis = -90; }, 0},
        {"axes folded by half turns", [](auto& s) { s.qrsAxis = 100, s.tAxis = -100; }, 0},
        {"axis of -30", [](auto& s) { s.qrsAxis = -30; }, 2},
        {"axis of -29", [](auto& s) { s.qrsAxis = -29; }, 0},
        {"axis of -90", [](auto& s) { s.qrsAxis = -90; }, 2},
        {"axis of -91", [](auto& s) { s.qrsAxis = -91; }, 3},  // opposed to the T axis at 0
        {"QRS of 90 ms", [](auto& s) { s.qrsDuration = 90; }, 1},
        {"QRS of 89 ms", [](auto& s) { s.qrsDuration = 89; }, 0},
        {"late in V3", [](auto& s) { s.leads[8].intrinsicoidDeflection = 50; }, 1},
        {"late in V6", [](auto& s) { s.leads[11].intrinsicoidDeflection = 50; }, 1},
        {"late in V5 does not count", [](auto& s) { s.leads[10].intrinsicoidDeflection = 99; }, 0},
        {"atrium", [](auto& s) { SetP(s, -2101, 1, 40); }, 3},
        {"atrium at the limit", [](auto& s) { SetP(s, -2100, 1, 40); }, 0},
        {"short P", [](auto& s) { SetP(s, -2101, 1, 39); }, 0},
        {"one P component alone", [](auto& s) { SetP(s, -2101, 0, 40); }, 0},
        {"the second component's depth", [](auto& s) { SetP(s, 0, -3000, 40); }, 0},
    };
    for (const auto& row : rows) {
        KxMeasurementSet set = Measured();
        row.change(set);
        EXPECT_EQ(Text(set, 373), std::to_string(row.points)) << row.what;
    }
}

}  // namespace
}  // namespace kx
