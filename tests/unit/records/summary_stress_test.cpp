#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/summary_text.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx {
namespace {

class StressText : public testing::Test {
  protected:
    StressText() {
        request.gradeName = "slope";
        test.SetTestType(KX_TEST_STRESS);
        test.targetHeartRate = 150;
        test.maxHeartRate = 141;
        test.peakBloodPressure = 190u << 16 | 95;
        test.value7416 = 17;
        test.exerciseTimeMs = 754000;
        test.peakMets = 101;
        test.peakSpeed = 340;
        test.peakGradeOrLoad = 140;
        test.values7480[0] = 4000000000u;
        std::strcpy(test.text7189[0], "Bruce");
    }

    struct Row {
        int code;
        const char* text;
    };
    template <std::size_t N>
    void Expect(const Row (&rows)[N]) const {
        for (const Row& row : rows) {
            char text[80] = "before";
            EXPECT_TRUE(FieldText(test, row.code, text, sizeof text, request)) << row.code;
            EXPECT_STREQ(text, row.text) << row.code;
        }
    }

    TestRecord test;
    test::TextTable texts;
    test::PictureLocale locale = test::Italian();
    SummaryRequest request{texts, locale};
};

TEST_F(StressText, ThePeakOnATreadmill) {
    const Row rows[] = {{12, "150"},
                        {109, "141"},
                        {112, "94 %"},
                        {110, "190 / 95"},
                        {141, "26790"},
                        {492, "17"},
                        {111, "12:34"},
                        {108, "14.0 %"},
                        {359, " 3.4 mph"},
                        {100, "4000000000"},
                        {101, "0"},
                        {102, "0"},
                        {362, "Elevation (%)"},
                        {364, "Elevation"},
                        {366, "(%)"},
                        {363, "Speed (mph)"},
                        {365, "Speed"},
                        {367, "mph"}};
    Expect(rows);
    Expect({{491, "141 [94 % of THR (150) ]"}, {495, " 3.4 mph, 14.0 % slope [10.1 METs]"}, {16, "Treadmill (Bruce)"}});
    test.metricSpeed = 1;
    Expect({{359, " 5.5 km/h"}, {363, "Speed (km/h)"}, {367, "km/h"}});
}

TEST_F(StressText, ThePeakOnAnErgometer) {
    test.exerciseDevice = 1;
    test.peakSpeed = 6049;
    test.peakGradeOrLoad = 1754;
    const Row rows[] = {{108, " 175"}, {359, "  60 RPM"},    {362, "Load (W)"}, {364, "Load"},
                        {366, "(W)"},  {363, "Speed (RPM)"}, {365, "Speed"},    {367, "(RPM)"}};
    Expect(rows);
    Expect({{495, "  60 RPM,  175 W [10.1 METs]"}, {16, "Ergometer (Bruce)"}});
}

TEST_F(StressText, WhatIsMissing) {
    test.targetHeartRate = 0;
    test.peakBloodPressure = 0;
    test.value7416 = 0;
    request.missingValue = "n/a";
    Expect({{112, "n/a"}, {491, "141"}, {110, "n/a"}, {492, "n/a"}, {12, "0"}});
    for (std::uint32_t TestRecord::*field : {&TestRecord::peakSpeed, &TestRecord::peakGradeOrLoad, &TestRecord::peakMets}) {
        const std::uint32_t before = test.*field;
        test.*field = 0xFFFFFFFFu;
        Expect({{495, ""}});
        test.*field = before;
    }
    test.peakSpeed = test.peakGradeOrLoad = 0xFFFFFFFFu;
    Expect({{108, ""}, {359, ""}});
    test.SetCurrentStage(nullptr);
    request.missingValue = nullptr;
    Expect({{87, ""}, {489, ""}, {494, ""}, {86, ""}});
}

TEST_F(StressText, TheCurrentStage) {
    auto stage = NewSubRecord<KxStressStage>();
    stage->startMs = 180000;
    stage->durationMs = 179000;
    stage->speed = 170;
    stage->gradeOrLoad = 100;
    stage->mets = 46;
    stage->heartRate = 112;
    stage->stLevel = -124;
    stage->stTimeMs = 245000;
    stage->stLead = KX_LEAD_V5;
    test.SetCurrentStage(std::move(stage));
    const Row rows[] = {{86, "112"},     {87, "2:59"},
                        {88, "3:00"},    {89, " 1.7"},
                        {90, "10.0 %"},  {490, " 1.7 mph, 10.0 % slope"},
                        {489, "4.6"},    {440, "-1.2 mm @ 4:05 [V5]"},
                        {80, "-1.2 mm"}, {81, "4:05"}};
    Expect(rows);
    test.Stage(-1)->stLead = 12;
    Expect({{440, "-1.2 mm @ 4:05 [?]"}});
    test.exerciseDevice = 1;
    test.Stage(-1)->speed = 6000;
    test.Stage(-1)->gradeOrLoad = 750;
    Expect({{89, "  60"}, {90, "  75"}, {490, "  60 RPM,   75 W"}});
}

TEST_F(StressText, TheLargestStLevelOfAllStages) {
    for (const std::int32_t level : {50, -210, 210, 0}) {
        auto stage = NewSubRecord<KxStressStage>();
        stage->stLevel = level;
        stage->stLead = test.StageCount();
        stage->stTimeMs = 60000 * (test.StageCount() + 1);
        test.AddStage(std::move(stage));
    }
    Expect({{494, "-2.1 mm @ 2:00 [II]"}, {360, "-2.1 mm"}, {361, "2:00"}});
}

TEST_F(StressText, ValuesFollowedOverTheTest) {
    const std::vector<KxSeriesPoint> rates = {{0, 70}, {60000, 90}};
    const std::vector<KxSeriesPoint> systolic = {{30000, 130}};
    const std::vector<KxSeriesPoint> diastolic = {{30000, 85}};
    test.SetSeries(-7, std::make_unique<ValueSeries>(rates));
    test.SetSeries(-6, std::make_unique<ValueSeries>(systolic));
    test.SetSeries(-5, std::make_unique<ValueSeries>(diastolic));
    request.timeMs = 59999;
    Expect({{86, "70"}, {95, "70"}, {103, "130"}, {96, "130 / 85"}, {97, "130 / 85"}});
    request.timeMs = 60000;
    Expect({{86, "90"}, {95, "90"}});
    request.timeMs = 29999;
    Expect({{103, "..."}, {96, "..."}});
    request.timeMs = -1;
    Expect({{95, "..."}});
}

}  // namespace
}  // namespace kx
