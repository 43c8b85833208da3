// The texts of report fields of the patient, the report and the other examinations.
#include <limits>

#include "lib/dbclient/sub_records.h"
#include "lib/measurement_text.h"
#include "tests/unit/records/field_texts.h"

namespace kx::test {
namespace {

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
    const std::pair<char*, const char*> fields[] = {
        {test.street, "Via Roma 1"}, {test.city, "Udine"}, {test.state, "UD"},   {test.postalCode, "33100"}, {test.text186, "t186"},
        {test.text332, "t332"},      {test.text6160, "a"}, {test.text6192, "b"}, {test.text6224, "c"},       {test.text6288, "d"}};
    for (const auto& [field, text] : fields) {
        std::strcpy(field, text);
    }
    std::memset(test.text844, 'x', sizeof test.text844);
    std::memset(test.text6320, 'e', sizeof test.text6320);
    Expect("2=4711|3=Donna|4=43 y|5=70 kg|6=175 cm|15=R|35=120/80|42=07/03/1970|43=Anna|44=Rossi|126=Maria|640=05/03/2013");
    Expect("45=Her|75=her|76=she|77=She|78=Ms.|63=S\xEC|131=S\xEC|69=t332|127=Via Roma 1|128=Udine|129=UD|130=33100|207=t186");
    Expect("8=a|208=b|209=c|210=d|448=eeeeeeeeeeeeeeeeeeeeeeeeeeeeeee|1=Anna Maria Rossi|206=Via Roma 1\r\nUdine, UD 33100");
    EXPECT_EQ(Text(67), std::string(511, 'x'));
    EXPECT_EQ(Text(206, 20), "Via Roma 1\r\nUdine, ") << "ends at the first part that does not fit";
    EXPECT_EQ(Text(1, 5), "Anna");
    request.sexList = 7000;
    Expect("3=F");
    test.SetSex(1);
    Expect("45=His|75=his|76=he|77=He|78=Mr.");
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
    EXPECT_EQ(Text(70, 6), "Sinus");
    test.externalReview = 0;
    test.SetConfirmedInterpretation(&time, "Sinus rhythm.");
    request.timeMs = 3599999;
    Expect(
        "70=Sinus rhythm.|71=Confirmed|142=Confirmed (Dr. Verdi)|649=02/01/2014|452=59:59|125=05/11/2013, 23:30 (+3599s)|498=00:29:59 (2)");
    EXPECT_EQ(Text(125, 12), "05/11/2013,") << "date and offset are cut as one text";
    EXPECT_EQ(Text(142, 10), "Confirmed");
    test.reportState = 3;
    Expect("71=|142=");
    texts.texts.erase(914);
    Expect("71=*");
    const std::pair<std::int32_t, const char*> times[] = {{3600000, "1:00:00"}, {-61000, "-0:01:01"}, {INT32_MIN, "-596:31:23"}};
    for (const auto& [ms, text] : times) {
        request.timeMs = ms;
        EXPECT_EQ(Text(452), text);
    }
    const std::pair<std::uint32_t, const char*> durations[] = {
        {0, "0:00"},         {59999, "0:59"},     {3599999, "59:59"},      {3600000, "1:00"},
        {86399999, "23:59"}, {86400000, "24 hr"}, {4294967295u, "1193 hr"}};
    for (const auto& [ms, text] : durations) {
        test.recordingDurationMs = ms;
        EXPECT_EQ(Text(493), text) << ms;
    }
}

TEST_F(FieldTexts, TheFilters) {
    test.filterFlags = ~0u;
    EXPECT_EQ(test.MainsFrequency(), 50u);
    test.SetBaselineFilter(false);
    const struct {
        bool artifact, second, third;
        std::uint32_t hz, artifactFilter;
        bool baseline;
        const char* text;
    } rows[] = {{false, true, true, 0, 0, false, "None"},
                {false, false, false, 50, 0, false, "50 Hz"},
                {false, false, false, 60, 0, true, "60 Hz, Baseline"},
                {true, false, false, 50, 1, false, "Artifact"},
                {true, true, false, 100, 2, true, "Artifact, Baseline"},
                {true, false, true, 0, 3, true, "Artifact, Baseline"},
                {false, false, false, 0, 0, true, "Baseline"}};
    for (const auto& row : rows) {
        test.SetArtifactFilter(row.artifact, row.second, row.third);
        test.SetMainsFrequency(row.hz);
        test.SetBaselineFilter(row.baseline);
        EXPECT_EQ(Text(33), row.text);
        EXPECT_EQ(test.ArtifactFilter(), row.artifactFilter) << row.text;
        EXPECT_EQ(test.MainsFrequency(), row.hz % 100) << row.text;
        EXPECT_EQ(test.BaselineFilter(), row.baseline);
    }
    EXPECT_EQ(test.filterFlags, 0xFFFFFF38u) << "the other bits are the host's";
}

TEST_F(FieldTexts, Events) {
    request.eventHeartRate = 48;
    request.eventValue = 7;
    const std::pair<const char*, const char*> rates[] = {
        {"HR: 48", "0=Normal Beats|1=Max. HR|2=Min. HR|17=Noise|18=User|19=?|25=Aberrant|26=A Pace|27=V Pace|28=AV Pace"},
        {"HR: 48", "29=Sense Failure|30=Capture Failure|31=Inhibition"},
        {"HR: 48 (7)", "3=Tachycardia|4=Bradycardia|7=SVEB Run|12=Bigeminy|13=VEB Run|16=Irregular Rhythm|23=Trigeminy"},
        {"HR: 48 (7)", "24=Quadrigeminy|34=Atrial Fib."},
        {"HR: 48 (7%)", "5=Isolated SVEB|6=SVEB Pair|8=Isolated VEB|10=Isolated VEB (R on T)|11=VEB Pair|32=VEB Triplet"},
        {"HR: 48 (7%)", "33=SVEB Triplet"},
        {"HR: 48 (0.0 s)", "14=Pause"},
        {"HR: 48 (+0.0 mm (-3))", "15=STe Change"},
        {"...", "9=?|20=?|21=?|22=?|35=?|-1=?"}};
    for (const auto& [rate, classes] : rates) {
        std::string one;
        for (std::istringstream all(classes); std::getline(all, one, '|');) {
            request.eventClass = std::stoi(one);
            EXPECT_EQ(Text(453), one.substr(one.find('=') + 1));
            EXPECT_EQ(Text(499), rate) << one;
        }
    }
    const std::pair<int, const char*> changes[] = {{0x0F0D, "+1.5 mm (3)"}, {0xF10A, "-1.5 mm (0)"}, {0xFB00, "-0.5 mm (-10)"}};
    for (const auto& [value, text] : changes) {
        request.eventClass = 15;
        request.eventValue = value;
        EXPECT_EQ(Text(499), "HR: 48 (" + std::string(text) + ")");
    }
    request.eventText = "Dizzy";
    request.eventClass = 14;
    request.eventValue = 2350;
    request.eventHeartRate = 0;
    Expect("453=Dizzy|499=HR: ? (2.3 s)");
    EXPECT_EQ(Text(499, 32), "");
}

TEST_F(FieldTexts, TheHolterRecording) {
    Expect("374=...|377=|700=...|702=...|720=...|721=...|722=...");
    test.acquisitionTime = DateTime(2013, 11, 5, 20, 0);
    auto summary = NewSubRecord<KxHolterSummary>();
    for (int i = 0; i < KX_HOLTER_GROUPS; ++i) {
        summary->groups[i].first = 10 * i + 0.5;
        summary->groups[i].second = 10 * i + 3.4;
    }
    summary->groups[1].first = std::nan("");
    summary->groups[2].second = 1e300;
    test.SetHolterSummary(std::move(summary));
    Expect("374=1|375=3|376=1 - 3|377=|378=...|384=...|418=111|419=113|420=111 - 113|421=");
    auto data = NewSubRecord<KxHolterData>();
    data->meanHeartRate = 71;
    data->minHeartRate = 44;
    data->minHeartRateMs = 8 * 3600000;
    test.SetHolterData(std::move(data));
    Expect("700=71|701=44|702=04:00:00 (2)|703=...|704=...");
    for (int i = 0; i < 3; ++i) {
        auto reading = NewSubRecord<KxPressureReading>();
        reading->time = DateTime(2013, 11, 5, 20, 10 * i);
        reading->systolic = static_cast<std::uint32_t>(120 + i);
        reading->diastolic = 80;
        reading->heartRate = static_cast<std::uint32_t>(60 + i);
        test.AddPressure(std::move(reading));
    }
    request.timeMs = 1199999;
    Expect("721=121/80|722=61");
    request.timeMs = -1;
    Expect("721=...");
}

TEST_F(FieldTexts, Spirometry) {
    Expect("579=...");
    auto block = NewSubRecord<KxSpirometry>();
    block->values[0] = 3.456;
    block->values[1] = std::numeric_limits<double>::infinity();
    block->values[30] = 12.3;
    block->values[31] = -0.5;
    block->values[41] = 100;
    block->predictedSet = 7;
    test.SetSpirometry(std::move(block));
    Expect("579= 3.46|580=...|609=12.30|611=-0.50|621=100.00|610=Brazil (Pereira/Mallozi)|622=!..|578=!..");
    test.Spirometry()->predictedSet = 9;
    Expect("610=User values");
    test.Spirometry()->predictedSet = 10;
    Expect("610=Unknown values");
}

TEST_F(FieldTexts, TheStressTest) {
    test.SetTestType(KX_TEST_STRESS);
    test.targetHeartRate = 150, test.maxHeartRate = 141, test.peakBloodPressure = 190u << 16 | 95, test.value7416 = 17;
    test.exerciseTimeMs = 754000, test.peakMets = 101, test.peakSpeed = 340, test.peakGradeOrLoad = 140;
    test.values7480[0] = 4000000000u;
    std::strcpy(test.text7189[0], "Bruce");
    Expect("12=150|109=141|112=94 %|110=190 / 95|141=26790|492=17|111=12:34|108=14.0 %|359= 3.4 mph|100=4000000000|101=0|102=0");
    Expect("362=Elevation (%)|364=Elevation|366=(%)|363=Speed (mph)|365=Speed|367=mph|491=141 [94 % of THR (150) ]");
    Expect("495= 3.4 mph, 14.0 % slope [10.1 METs]|16=Treadmill (Bruce)");
    test.metricSpeed = 1;
    Expect("359= 5.5 km/h|363=Speed (km/h)|367=km/h");
    test.metricSpeed = 0;
    auto stage = NewSubRecord<KxStressStage>();
    stage->startMs = 180000, stage->durationMs = 179000, stage->speed = 170, stage->gradeOrLoad = 100, stage->mets = 46;
    stage->heartRate = 112, stage->stLevel = -124, stage->stTimeMs = 245000, stage->stLead = KX_LEAD_V5;
    test.SetCurrentStage(std::move(stage));
    Expect("86=112|87=2:59|88=3:00|89= 1.7|90=10.0 %|490= 1.7 mph, 10.0 % slope|489=4.6|440=-1.2 mm @ 4:05 [V5]|80=-1.2 mm|81=4:05");
    test.exerciseDevice = 1;
    test.peakSpeed = 6049;
    test.peakGradeOrLoad = 1754;
    test.Stage(-1)->stLead = 12;
    test.Stage(-1)->speed = 6000;
    test.Stage(-1)->gradeOrLoad = 750;
    Expect("108= 175|359=  60 RPM|362=Load (W)|364=Load|366=(W)|363=Speed (RPM)|365=Speed|367=(RPM)|495=  60 RPM,  175 W [10.1 METs]");
    Expect("16=Ergometer (Bruce)|440=-1.2 mm @ 4:05 [?]|89=  60|90=  75|490=  60 RPM,   75 W");
    for (const std::int32_t level : {50, -210, 210, 0}) {
        auto next = NewSubRecord<KxStressStage>();
        next->stLevel = level;
        next->stLead = test.StageCount();
        next->stTimeMs = 60000 * (test.StageCount() + 1);
        test.AddStage(std::move(next));
    }
    Expect("494=-2.1 mm @ 2:00 [II]|360=-2.1 mm|361=2:00");  // the largest of all stages
    test.Stage(-1)->heartRate = 0;
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

TEST_F(FieldTexts, WhatAStressTestLacks) {
    test.SetTestType(KX_TEST_STRESS);
    test.maxHeartRate = 141;
    request.missingValue = "n/a";
    Expect("112=n/a|491=141|110=n/a|492=n/a|12=0|495= 0.0 mph,  0.0 % slope [ 0.0 METs]");
    for (std::uint32_t TestRecord::*field : {&TestRecord::peakMets, &TestRecord::peakSpeed, &TestRecord::peakGradeOrLoad}) {
        test.*field = ~0u;
        Expect("495=");
        test.*field = 0;
    }
    test.peakSpeed = test.peakGradeOrLoad = ~0u;
    test.SetCurrentStage(nullptr);
    request.missingValue = nullptr;
    Expect("108=|359=|87=|489=|494=|86=");
}

TEST_F(FieldTexts, NeedABuffer) {
    char text[2] = "x";
    EXPECT_FALSE(FieldText(test, 2, nullptr, 10, request));
    EXPECT_FALSE(FieldText(test, 2, text, 0, request));
    EXPECT_TRUE(MeasurementFieldText(Measured(), 22, text, 0, AmplitudeUnit::kMicrovolts, 0));
    EXPECT_STREQ(text, "x");
    EXPECT_EQ(Text(4, 1), "");
}

TEST_F(FieldTexts, PlaceholdersSpeakOfThePatient) {
    test.SetPatientName("Anna", "", "Rossi");
    test.SetSex(2);
    const struct {
        const char* text;
        std::size_t size;
        const char* expanded;
    } rows[] = {{"{%11} was seen", 64, "She was seen"},
                {"{%1} {%2}, {%14}, {%5}", 64, "Anna Rossi, Ms., her"},
                {"{%99999999999999999999}", 64, "{%99999999999999999999}"},
                {"{%007}, {%000}, {%02}", 64, "{%7}, {%0}, Rossi"},
                {"{%5", 64, "*"},
                {"{%5{%5}", 64, "*her"},
                {"{%}{%x}{5}%{", 64, "{%}{%x}{5}%{"},
                {"ab{%2}cd", 7, "abcd"},  // the name does not fit
                {"ab{%2}cd", 8, "abRossi"},
                {"abcdef", 4, "abc"},
                {"abcdef", 1, ""}};
    char output[64];
    for (const auto& row : rows) {
        std::memset(output, '#', sizeof output);
        EXPECT_TRUE(ExpandPlaceholders(test, row.text, output, row.size)) << row.text;
        EXPECT_STREQ(output, row.expanded) << row.text;
    }
    test.SetSex(0);
    EXPECT_TRUE(ExpandPlaceholders(test, "{%11}, {%14}, {%5}", output, sizeof output));
    EXPECT_STREQ(output, "The patient, The patient, the");
    EXPECT_FALSE(ExpandPlaceholders(test, nullptr, output, sizeof output));
    EXPECT_FALSE(ExpandPlaceholders(test, "x", nullptr, 10));
    EXPECT_FALSE(ExpandPlaceholders(test, "x", output, 0));
}

}  // namespace
}  // namespace kx::test
