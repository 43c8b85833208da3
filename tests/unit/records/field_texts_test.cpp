// The fields of a report as texts: of the patient, the report, the other examinations and the measurements.
#include <limits>
#include <sstream>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_record.h"
#include "lib/measurement_text.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx::test {
namespace {

// A row holds "code=text" of several fields between bars; "!" stands before a text that was written although no field knows the
// code.
struct FieldTexts : testing::Test {
    FieldTexts() {
        texts.texts = {{913, "0^...^1^Uomo^2^Donna"}, {914, "Original^Overread^Confirmed"}, {963, "0^...^4^R"}};
        texts.texts[959] = texts.texts[964] = "0^No^1^S\xEC";
        request.gradeName = "slope";
    }

    std::string Text(int code, std::size_t size = 600) const {
        std::string buffer(size, '#');
        const bool known = FieldText(test, code, buffer.data(), size, request);
        EXPECT_NE(buffer.find('\0'), std::string::npos) << code;
        return (known ? "" : "!") + std::string(buffer.c_str());
    }

    void Expect(const std::string& expected) const {
        std::string actual, field;
        for (std::istringstream fields(expected); std::getline(fields, field, '|');) {
            const std::string code = field.substr(0, field.find('='));
            actual += (actual.empty() ? "" : "|") + code + "=" + Text(std::stoi(code));
        }
        EXPECT_EQ(actual, expected);
    }

    KxMeasurementSet& Measured() {
        EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
        episode->SetEndTimeMs(30000);
        episode->durationSeconds = 10;
        episode->measurements.measured = ~0u;
        return episode->measurements;
    }

    TestRecord test;
    TextTable texts;
    PictureLocale locale = Italian();
    SummaryRequest request{texts, locale};
};

TEST_F(FieldTexts, ThePatient) {
    Expect("1=  |2=|3=...|4=NG|5=NG|6=NG|15=...|35=...|42=NG|45=The|75=the|76=the patient|63=No|64=*|78=The patient|206=\r\n,  |640=NG");
    test.SetPatientId("4711");
    test.SetPatientName("Anna", "Maria", "Rossi");
    test.SetSex(2);
    test.SetRace(4);
    test.SetMetricUnits(true);
    test.SetWeightText("70");
    test.SetHeightText("175");
    test.SetBirthDate({1970, 7, 3});
    test.ageDays = 15706;
    test.bloodPressure = 120u << 16 | 80;
    test.SetClinicalFlag(0, 1);
    test.SetClinicalFlag(4, 1);
    test.SetClinicalDate({2013, 5, 3});
    std::strcpy(test.street, "Via Roma 1");
    std::strcpy(test.city, "Udine");
    std::strcpy(test.state, "UD");
    std::strcpy(test.postalCode, "33100");
    std::memset(test.text844, 'x', sizeof test.text844);
    Expect("2=4711|3=Donna|4=43 y|5=70 kg|6=175 cm|15=R|35=120/80|42=07/03/1970|43=Anna|44=Rossi|126=Maria|640=05/03/2013");
    Expect("45=Her|75=her|76=she|77=She|78=Ms.|63=S\xEC|131=S\xEC|127=Via Roma 1|128=Udine|129=UD|130=33100");
    Expect("1=Anna Maria Rossi|206=Via Roma 1\r\nUdine, UD 33100|67=" + std::string(511, 'x'));
    EXPECT_EQ(Text(206, 20), "Via Roma 1\r\nUdine, ") << "ends at the first part that does not fit";
    test.SetSex(1);
    Expect("45=His|75=his|76=he|77=He|78=Mr.");
    char none = 'x';
    EXPECT_TRUE(!FieldText(test, 2, nullptr, 10, request) && !FieldText(test, 2, &none, 0, request) && none == 'x');
}

TEST_F(FieldTexts, TheReport) {
    test.acquisitionTime = DateTime(2013, 11, 5, 23, 30);
    test.SetOriginalBy("engine");
    test.SetOverreadBy("Dr. Rossi");
    test.SetConfirmedBy("Dr. Verdi");
    test.SetDevice("ECG 12", "A-17", "2.1");
    Expect("649=|33=None|213=Dr. Rossi|7=Dr. Verdi|214=engine|452= 0:00|9=05/11/2013, 23:30|125=05/11/2013, 23:30");
    Expect("71=Original|142=Original - <engine>|68=ECG 12 (SN: A-17) rev 2.1|498=23:30:00 (1)");
    const DateTime time(2014, 1, 2);
    test.SetOverreadInterpretation(&time, "Sinus rhythm.");
    Expect("71=Overread|142=Overread - <Dr. Rossi>");
    const std::string banner = "\r\n*** ECG Interpretation review performed in Word or an EMR program ***";
    test.externalReview = 1;
    EXPECT_EQ(Text(70, 13 + banner.size() + 1), "Sinus rhythm." + banner);
    EXPECT_EQ(Text(70, 13 + banner.size()), "Sinus rhythm.");
    test.externalReview = 0;
    test.SetConfirmedInterpretation(&time, "Sinus rhythm.");
    request.timeMs = 3599999;
    Expect("70=Sinus rhythm.|71=Confirmed|142=Confirmed (Dr. Verdi)|649=02/01/2014|452=59:59|498=00:29:59 (2)");
    Expect("125=05/11/2013, 23:30 (+3599s)");
    EXPECT_EQ(Text(125, 12), "05/11/2013,") << "date and offset are cut as one text";
    for (const auto& [ms, text] : {std::pair{3600000, "452=1:00:00"}, {-61000, "452=-0:01:01"}, {INT32_MIN, "452=-596:31:23"}}) {
        request.timeMs = ms;
        Expect(text);
    }
    test.recordingDurationMs = 3600000;
    test.reportState = 3;
    Expect("71=|142=|493=1:00");
}

TEST_F(FieldTexts, Events) {
    const std::tuple<int, int, int, const char*> rows[] = {{0, 48, 7, "453=Normal Beats|499=HR: 48"},
                                                           {4, 48, 7, "453=Bradycardia|499=HR: 48 (7)"},
                                                           {11, 48, 7, "453=VEB Pair|499=HR: 48 (7%)"},
                                                           {14, 48, 2350, "453=Pause|499=HR: 48 (2.3 s)"},
                                                           {15, 48, 0x0F0D, "453=STe Change|499=HR: 48 (+1.5 mm (3))"},
                                                           {15, 48, 0xFB00, "499=HR: 48 (-0.5 mm (-10))"},
                                                           {22, 48, 7, "453=?|499=..."},
                                                           {14, 0, 2350, "499=HR: ? (2.3 s)"}};
    for (const auto& [eventClass, heartRate, value, expected] : rows) {
        request.eventClass = eventClass;
        request.eventHeartRate = heartRate;
        request.eventValue = value;
        Expect(expected);
    }
    request.eventText = "Dizzy";
    Expect("453=Dizzy");
    EXPECT_EQ(Text(499, 32), "");
}

TEST_F(FieldTexts, TheOtherExaminations) {
    Expect("374=...|377=|700=...|702=...|720=...|721=...|722=...|579=...");
    test.acquisitionTime = DateTime(2013, 11, 5, 20, 0);
    test.SetHolterSummary(NewSubRecord<KxHolterSummary>());
    KxHolterGroup* groups = test.HolterSummary()->groups;
    groups[0].first = 0.5, groups[0].second = 3.4, groups[1].first = std::nan(""), groups[11].first = 110.5, groups[11].second = 113.4;
    test.SetHolterData(NewSubRecord<KxHolterData>());
    test.HolterData()->meanHeartRate = 71, test.HolterData()->minHeartRate = 44, test.HolterData()->minHeartRateMs = 8 * 3600000;
    for (std::uint32_t i = 0; i < 3; ++i) {
        auto reading = NewSubRecord<KxPressureReading>();
        reading->time = DateTime(2013, 11, 5, 20, static_cast<int>(10 * i));
        reading->systolic = 120 + i, reading->diastolic = 80, reading->heartRate = 60 + i;
        test.AddPressure(std::move(reading));
    }
    request.timeMs = 1199999;
    test.SetSpirometry(NewSubRecord<KxSpirometry>());
    test.Spirometry()->values[0] = 3.456, test.Spirometry()->values[1] = std::numeric_limits<double>::infinity();
    Expect("374=1|375=3|376=1 - 3|377=|378=...|418=111|419=113|421=|700=71|701=44|702=04:00:00 (2)|703=...|721=121/80|722=61");
    Expect("579= 3.46|580=...|622=!..|578=!..");
}

TEST_F(FieldTexts, TheStressTest) {
    test.SetTestType(KX_TEST_STRESS);
    test.maxHeartRate = 141;
    request.missingValue = "n/a";
    Expect("112=n/a|491=141|110=n/a|492=n/a|12=0|495= 0.0 mph,  0.0 % slope [ 0.0 METs]");
    for (std::uint32_t TestRecord::*field : {&TestRecord::peakMets, &TestRecord::peakSpeed, &TestRecord::peakGradeOrLoad}) {
        test.*field = ~0u;
        Expect("495=");
        test.*field = 0;
    }
    test.targetHeartRate = 150, test.peakBloodPressure = 190u << 16 | 95, test.value7416 = 17;
    test.exerciseTimeMs = 754000, test.peakMets = 101, test.peakSpeed = 340, test.peakGradeOrLoad = 140;
    test.values7480[0] = 4000000000u;
    std::strcpy(test.text7189[0], "Bruce");
    Expect("12=150|109=141|112=94 %|110=190 / 95|141=26790|492=17|111=12:34|108=14.0 %|359= 3.4 mph|100=4000000000|101=0|102=0");
    Expect("362=Elevation (%)|364=Elevation|366=(%)|363=Speed (mph)|365=Speed|367=mph|491=141 [94 % of THR (150) ]");
    Expect("495= 3.4 mph, 14.0 % slope [10.1 METs]|16=Treadmill (Bruce)");
    test.metricSpeed = 1;
    Expect("359= 5.5 km/h|363=Speed (km/h)|367=km/h");
    test.exerciseDevice = 1, test.peakSpeed = 6049, test.peakGradeOrLoad = 1754;
    Expect("108= 175|359=  60 RPM|362=Load (W)|364=Load|366=(W)|363=Speed (RPM)|365=Speed|367=(RPM)|495=  60 RPM,  175 W [10.1 METs]");
    Expect("16=Ergometer (Bruce)");
    test.peakSpeed = test.peakGradeOrLoad = ~0u;
    test.SetCurrentStage(nullptr);
    request.missingValue = nullptr;
    Expect("108=|359=|87=|489=|494=|86=");
}

TEST_F(FieldTexts, TheStagesOfAStressTest) {
    test.SetTestType(KX_TEST_STRESS);
    auto current = NewSubRecord<KxStressStage>();
    KxStressStage& stage = *current;
    stage.startMs = 180000, stage.durationMs = 179000, stage.speed = 170, stage.gradeOrLoad = 100, stage.mets = 46;
    stage.heartRate = 112, stage.stLevel = -124, stage.stTimeMs = 245000, stage.stLead = KX_LEAD_V5;
    test.SetCurrentStage(std::move(current));
    Expect("86=112|87=2:59|88=3:00|89= 1.7|90=10.0 %|490= 1.7 mph, 10.0 % slope|489=4.6|440=-1.2 mm @ 4:05 [V5]|80=-1.2 mm|81=4:05");
    test.exerciseDevice = 1;
    stage.stLead = 12, stage.speed = 6000, stage.gradeOrLoad = 750;
    Expect("440=-1.2 mm @ 4:05 [?]|89=  60|90=  75|490=  60 RPM,   75 W");
    for (const std::int32_t level : {50, -210, 210, 0}) {
        auto next = NewSubRecord<KxStressStage>();
        next->stLevel = level;
        next->stLead = test.StageCount();
        next->stTimeMs = 60000 * (test.StageCount() + 1);
        test.AddStage(std::move(next));
    }
    Expect("494=-2.1 mm @ 2:00 [II]|360=-2.1 mm|361=2:00");  // the largest of all stages
    stage.heartRate = 0;
    const std::vector<KxSeriesPoint> rates = {{0, 70}, {60000, 90}}, systolic = {{30000, 130}}, diastolic = {{30000, 85}};
    test.SetSeries(-7, std::make_unique<ValueSeries>(rates));
    test.SetSeries(-6, std::make_unique<ValueSeries>(systolic));
    test.SetSeries(-5, std::make_unique<ValueSeries>(diastolic));
    const std::pair<std::int32_t, const char*> times[] = {
        {60000, "86=90|95=90"}, {59999, "86=70|95=70|103=130|96=130 / 85|97=130 / 85"}, {29999, "103=...|96=..."}, {-1, "95=..."}};
    for (const auto& [ms, fields] : times) {
        request.timeMs = ms;
        Expect(fields);
    }
}

TEST_F(FieldTexts, PlaceholdersSpeakOfThePatient) {
    test.SetPatientName("Anna", "", "Rossi");
    const std::tuple<std::uint32_t, const char*, std::size_t, const char*> rows[] = {
        {0, "{%11}, {%14}, {%5}", 64, "The patient, The patient, the"},
        {2, "{%1} {%2}, {%14}, {%5}, {%11}", 64, "Anna Rossi, Ms., her, She"},
        {2, "{%007}, {%99999999999999999999}, {%02}", 64, "{%7}, {%99999999999999999999}, Rossi"},
        {2, "{%5{%5}{%5", 64, "*her*"},
        {2, "{%}{%x}{5}%{", 64, "{%}{%x}{5}%{"},
        {2, "ab{%2}cd", 7, "abcd"},  // the name does not fit
        {2, "ab{%2}cd", 8, "abRossi"}};
    char output[64];
    for (const auto& [sex, text, size, expanded] : rows) {
        std::memset(output, '#', sizeof output);
        test.SetSex(sex);
        EXPECT_TRUE(ExpandPlaceholders(test, text, output, size)) << text;
        EXPECT_STREQ(output, expanded) << text;
    }
    EXPECT_FALSE(ExpandPlaceholders(test, nullptr, output, sizeof output) || ExpandPlaceholders(test, "x", nullptr, 10) ||
                 ExpandPlaceholders(test, "x", output, 0));
}

TEST_F(FieldTexts, TheMeasurementsOfTheEpisodeAtTheTime) {
    Expect("20=..|21=..|22=..|34=..|105=..|106=..|107=..|135=..|136=..|137=..|138=..|139=..|368=..|371=..|372=..|373=..");
    Expect("17=!..|48=!..|143=!..|9999=!..");
    KxMeasurementSet& set = Measured();
    set.pDuration = 98, set.prInterval = 160, set.qrsDuration = 92, set.qtInterval = 380, set.qtc = 412, set.qtcBazett = 65535;
    set.rrInterval = 1000, set.pAxis = 45, set.qrsAxis = -30, set.tAxis = -180;
    Expect("20=160 ms|21=92 ms|22=380 ms / 412|34=60|105=45 \xBA|106=-30 \xBA|107=-180 \xBA|135=98 ms|136=380 ms|137=412|138=65535");
    Expect("139=1000 ms|368=|17=!|9999=!");
    EXPECT_EQ(Text(22, 4), "380");
    for (const auto& [rr, rate] : {std::pair{800, 75}, {0, 0}, {7, 8571}, {65535, 1}, {1, 60000}, {16000, 4}}) {
        set.rrInterval = static_cast<std::uint16_t>(rr);
        EXPECT_EQ(Text(34), std::to_string(rate)) << rr;
    }
    test.SetHolterData(NewSubRecord<KxHolterData>());
    KxHolterData& holter = *test.HolterData();
    holter.hasCurrentEvent = 1, holter.eventStartMs = 34000, holter.eventEndMs = 36000;
    request.timeMs = 30000;  // behind the episode, but the event's search begins 5 s before it
    Expect("17=160 ms|18=92 ms|19=380 ms / 412|20=..|9999=!..");
    set.measured = 0;
    Expect("17=... ms|18=... ms|19=... ms / ...");
    holter.eventStartMs = 35000;
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
            EXPECT_EQ(Text(code + lead), std::to_string(-lead - code));
        }
        for (const auto& [code, field] : values) {
            set.leads[lead].*field = static_cast<std::uint16_t>(65000 + lead + code);
            EXPECT_EQ(Text(code + lead), std::to_string(65000 + lead + code));
        }
    }
}

TEST_F(FieldTexts, StLevelsAndSlopes) {
    KxMeasurementSet& set = Measured();
    // The time (ms), the level 80 ms behind the J point (of the others: -100 (k + 1)), the texts in uV, mm and mV.
    const std::tuple<int, std::int16_t, std::array<const char*, 3>> levels[] = {{80, -150, {"-150", "-1.5", "-0.15"}},
                                                                                {80, 99, {"99", "0.9", "0.09"}},
                                                                                {80, 1234, {"1234", "12.3", "1.23"}},
                                                                                {80, -9, {"-9", "-0.0", "-0.00"}},
                                                                                {80, -32768, {"-32768", "-327.6", "-32.76"}},
                                                                                {4, 0, {"-100", "-1.0", "-0.10"}},
                                                                                {5, 0, {"-200", "-2.0", "-0.20"}},
                                                                                {94, 0, {"-1000", "-10.0", "-1.00"}},
                                                                                {95, 0, {"0", "0.0", "0.00"}},
                                                                                {-4, 0, {"-100", "-1.0", "-0.10"}},
                                                                                {-5, 0, {"0", "0.0", "0.00"}},
                                                                                {INT32_MAX, 0, {"0", "0.0", "0.00"}}};
    for (int k = 0; k < KX_ST_LEVELS; ++k) {
        set.leads[11].stLevel[k] = static_cast<std::int16_t>(-100 * (k + 1));
    }
    for (const auto& [ms, level, expected] : levels) {
        set.leads[11].stLevel[8] = level;
        request.stTimeMs = ms;
        for (const auto unit : {AmplitudeUnit::kMicrovolts, AmplitudeUnit::kMillimetres, AmplitudeUnit::kMillivolts}) {
            request.amplitudeUnit = unit;
            EXPECT_EQ(Text(59), expected[static_cast<std::size_t>(unit)]) << ms;
        }
    }
    const std::tuple<std::int16_t, std::int16_t, int, const char*> slopes[] = {
        {0, 100, 80, "1.25"}, {100, 0, 80, "-1.25"},          {0, 1, 60, "0.02"},  // 17 microvolts per second
        {0, 1, 80, "0.01"},   {-32768, 32767, 10, "6553.50"}, {50, 60, 0, ""},    {50, 60, -80, ""}, {0, 5, 5, "1.00"}};
    for (const auto& [from, to, ms, text] : slopes) {
        set.leads[0].stLevel[(std::max(ms, 0) + 5) / 10] = to;
        set.leads[0].stLevel[0] = from;
        request.stTimeMs = ms;
        EXPECT_EQ(Text(335), text) << to << " in " << ms;
    }
}

// Where the limits of the scores lie is the business of hypertrophy_score_test; the atrium is the reports' own.
TEST_F(FieldTexts, TheScores) {
    KxMeasurementSet& set = Measured();
    set.leads[KX_LEAD_AVF].aR1 = 2000, set.leads[KX_LEAD_V3].aS = -800, set.leads[KX_LEAD_AVL].aR = 700;
    set.leads[KX_LEAD_V1].aS = -32768, set.leads[KX_LEAD_V5].aR = 32767;
    Expect("371=65535|372=1500|373=3");
    KxLeadMeasurements& v1 = set.leads[KX_LEAD_V1];
    v1.aP1 = -2101, v1.aP2 = 1, set.pDuration = 40;
    Expect("373=6");
    const std::tuple<std::int16_t, std::int16_t, std::uint16_t> less[] = {{-2100, 1, 40}, {-2101, 1, 39}, {-2101, 0, 40}, {0, -3000, 40}};
    for (const auto& [first, second, duration] : less) {
        v1.aP1 = first, v1.aP2 = second, set.pDuration = duration;
        Expect("373=3");
    }
}

}  // namespace
}  // namespace kx::test
