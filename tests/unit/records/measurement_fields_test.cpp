// The measurements of a beat as the texts of report fields.
#include "lib/measurement_text.h"

#include "lib/dbclient/sub_records.h"
#include "tests/unit/records/field_texts.h"

namespace kx::test {
namespace {

TEST_F(FieldTexts, TheMeasurementsOfTheEpisodeAtTheTime) {
    Expect("20=..|21=..|22=..|34=..|105=..|106=..|107=..|135=..|136=..|137=..|138=..|139=..|368=..|371=..|372=..|373=..");
    Expect("17=!..|48=!..|143=!..|9999=!..");
    KxMeasurementSet& set = Measured();
    set.pDuration = 98, set.prInterval = 160, set.qrsDuration = 92, set.qtInterval = 380, set.qtc = 412, set.qtcBazett = 65535;
    set.rrInterval = 1000, set.pAxis = 45, set.qrsAxis = -30, set.tAxis = -180;
    Expect("20=160 ms|21=92 ms|22=380 ms / 412|34=60|105=45 \xBA|106=-30 \xBA|107=-180 \xBA|135=98 ms|136=380 ms|137=412|138=65535");
    Expect("139=1000 ms|368=|17=!|9999=!");
    EXPECT_EQ(Text(22, 4), "380");
    const std::pair<int, int> rates[] = {{800, 75}, {0, 0}, {7, 8571}, {65535, 1}, {1, 60000}, {16000, 4}};
    for (const auto& [rr, rate] : rates) {
        set.rrInterval = static_cast<std::uint16_t>(rr);
        EXPECT_EQ(Text(34), std::to_string(rate)) << rr;
    }
    auto data = NewSubRecord<KxHolterData>();
    data->hasCurrentEvent = 1;
    data->eventStartMs = 34000;
    data->eventEndMs = 36000;
    test.SetHolterData(std::move(data));
    request.timeMs = 30000;  // behind the episode, but the event's search begins 5 s before it
    Expect("17=160 ms|18=92 ms|19=380 ms / 412|20=..|9999=!..");
    set.measured = 0;
    Expect("17=... ms|18=... ms|19=... ms / ...");
    test.HolterData()->eventStartMs = 35000;
    Expect("17=!..");
    test.HolterData()->eventStartMs = test.HolterData()->hasCurrentEvent = 0;
    Expect("17=!..");
    request.timeMs = 0;
    Expect("20=..");  // not measured
}

TEST_F(FieldTexts, TheMeasurementsOfEachLead) {
    using Lead = KxLeadMeasurements;
    const std::pair<int, std::int16_t Lead::*> amplitudes[] = {{143, &Lead::aP1}, {155, &Lead::aP2}, {167, &Lead::aR},
                                                               {179, &Lead::aR1}, {191, &Lead::aQ},  {215, &Lead::aT1},
                                                               {227, &Lead::aT2}, {239, &Lead::aS},  {251, &Lead::fieldValue251}};
    const std::pair<int, std::uint16_t Lead::*> values[] = {
        {263, &Lead::fieldValue263}, {275, &Lead::fieldValue275}, {347, &Lead::intrinsicoidDeflection}};
    KxMeasurementSet& set = Measured();
    for (int lead = 0; lead < 12; ++lead) {
        for (const auto& [code, field] : amplitudes) {
            set.leads[lead].*field = static_cast<std::int16_t>(-lead - code);
        }
        for (const auto& [code, field] : values) {
            set.leads[lead].*field = static_cast<std::uint16_t>(65000 + lead + code);
        }
        for (const auto& [code, field] : amplitudes) {
            EXPECT_EQ(Text(code + lead), std::to_string(-lead - code));
        }
        for (const auto& [code, field] : values) {
            EXPECT_EQ(Text(code + lead), std::to_string(65000 + lead + code));
        }
    }
}

TEST_F(FieldTexts, StLevelsAndSlopes) {
    KxMeasurementSet& set = Measured();
    for (int k = 0; k < KX_ST_LEVELS; ++k) {
        set.leads[11].stLevel[k] = static_cast<std::int16_t>(-100 * (k + 1));
    }
    request.amplitudeUnit = AmplitudeUnit::kMicrovolts;
    const std::pair<std::int32_t, std::int32_t> nearest[] = {{0, -100}, {4, -100},  {5, -200}, {14, -200}, {15, -300},     {94, -1000},
                                                             {95, 0},   {-4, -100}, {-5, 0},   {100, 0},   {INT32_MAX, 0}, {INT32_MIN, 0}};
    for (const auto& [ms, level] : nearest) {
        request.stTimeMs = ms;
        EXPECT_EQ(Text(59), std::to_string(level)) << ms;
    }
    const struct {
        std::int16_t level;
        const char* texts[3];
    } levels[] = {{-150, {"-150", "-1.5", "-0.15"}}, {0, {"0", "0.0", "0.00"}},     {99, {"99", "0.9", "0.09"}},
                  {1234, {"1234", "12.3", "1.23"}},  {-9, {"-9", "-0.0", "-0.00"}}, {-32768, {"-32768", "-327.6", "-32.76"}}};
    request.stTimeMs = 80;
    for (const auto& row : levels) {
        set.leads[11].stLevel[8] = row.level;
        for (const auto unit : {AmplitudeUnit::kMicrovolts, AmplitudeUnit::kMillimetres, AmplitudeUnit::kMillivolts}) {
            request.amplitudeUnit = unit;
            EXPECT_EQ(Text(59), row.texts[static_cast<int>(unit)]);
        }
    }
    const struct {
        std::int16_t from, to;
        int ms;
        const char* text;
    } slopes[] = {{0, 100, 80, "1.25"}, {100, 0, 80, "-1.25"},          {0, 1, 60, "0.02"},  // 17 microvolts per second
                  {0, 1, 80, "0.01"},   {-32768, 32767, 10, "6553.50"}, {0, 0, 80, "0.00"}, {50, 60, 0, ""}, {50, 60, -80, ""},
                  {0, 5, 5, "1.00"}};
    for (const auto& row : slopes) {
        set.leads[0].stLevel[(std::max(row.ms, 0) + 5) / 10] = row.to;
        set.leads[0].stLevel[0] = row.from;
        request.stTimeMs = row.ms;
        EXPECT_EQ(Text(335), row.text) << row.to << " in " << row.ms;
    }
}

// The P wave of V1 and the duration of P.
void SetP(KxMeasurementSet& set, std::int16_t first, std::int16_t second, std::uint16_t duration) {
    set.leads[KX_LEAD_V1].aP1 = first;
    set.leads[KX_LEAD_V1].aP2 = second;
    set.pDuration = duration;
}

TEST_F(FieldTexts, ScoresCountPoints) {
    KxMeasurementSet& set = Measured();
    const KxMeasurementSet none = set;
    const struct {
        const char* what;
        void (*change)(KxMeasurementSet&);
        const char* scores;
    } rows[] = {{"nothing", [](KxMeasurementSet&) {}, "373=0|371=0|372=0"},
                {"limb R, S of V2, opposed T axis, QRS, V3",
                 [](auto& s) { s.leads[5].aR1 = 2000, s.leads[7].aS = -3000, s.tAxis = 91, s.qrsDuration = 90; }, "373=7"},
                {"S of V3 and R of V6", [](auto& s) { s.leads[8].aS = -3000, s.leads[11].aR = 3000; }, "373=3|371=3000|372=3000"},
                {"atrium", [](auto& s) { SetP(s, -2101, 1, 40); }, "373=3"},
                {"atrium at the limit", [](auto& s) { SetP(s, -2100, 1, 40); }, "373=0"},
                {"short P", [](auto& s) { SetP(s, -2101, 1, 39); }, "373=0"},
                {"one P component alone", [](auto& s) { SetP(s, -2101, 0, 40); }, "373=0"},
                {"the second component's depth", [](auto& s) { SetP(s, 0, -3000, 40); }, "373=0"},
                {"the deeper S and the higher R", [](auto& s) { s.leads[6].aS = -1200, s.leads[6].aS1 = -1300, s.leads[11].aR1 = 1100; },
                 "371=2400"},
                {"as high as they go", [](auto& s) { s.leads[6].aS = -32768, s.leads[10].aR = 32767; }, "371=65535"},
                {"R' of aVL, S of V3", [](auto& s) { s.leads[4].aR1 = 700, s.leads[8].aS = -800; }, "372=1500"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        set = none;
        row.change(set);
        Expect(row.scores);
    }
}

}  // namespace
}  // namespace kx::test
