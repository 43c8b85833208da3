#include "lib/dbclient/summary_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx {
namespace {

class SummaryText : public testing::Test {
  protected:
    SummaryText() {
        texts.texts = {{913, "0^...^1^Uomo^2^Donna"},
                       {914, "Original Report (not overread)^Overread Report (not confirmed)^Confirmed Report"},
                       {959, "0^No^1^S\xEC"},
                       {964, "0^No^1^S\xEC"},
                       {963, "0^...^4^R"},
                       {7000, "1^M^2^F"}};
    }

    // "(no field)" when no family knew the code, "(no field) text" when something was written all the same.
    std::string Text(int code, std::size_t size = 600) const {
        std::string buffer(size, '#');
        const bool known = FieldText(test, code, buffer.data(), size, request);
        EXPECT_NE(std::memchr(buffer.data(), '\0', size), nullptr) << code;
        const std::string text = buffer.c_str();
        return known ? text : text.empty() ? "(no field)" : "(no field) " + text;
    }

    struct Row {
        int code;
        const char* text;
    };
    template <std::size_t N>
    void Expect(const Row (&rows)[N]) const {
        for (const Row& row : rows) {
            EXPECT_EQ(Text(row.code), row.text) << row.code;
        }
    }

    TestRecord test;
    test::TextTable texts;
    test::PictureLocale locale = test::Italian();
    SummaryRequest request{texts, locale};
};

TEST_F(SummaryText, AnEmptyPatient) {
    const Row rows[] = {
        {1, "  "},   {2, ""},     {3, "..."},          {4, "NG"},        {5, "NG"},   {6, "NG"},
        {15, "..."}, {35, "..."}, {42, "NG"},          {45, "The"},      {75, "the"}, {76, "the patient"},
        {63, "No"},  {64, "*"},   {78, "The patient"}, {206, "\r\n,  "}, {640, "NG"},
    };
    Expect(rows);
}

TEST_F(SummaryText, APatient) {
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
    std::strcpy(test.text186, "t186");
    std::memset(test.text844, 'x', sizeof test.text844);
    std::strcpy(test.text332, "t332");
    std::strcpy(test.text6160, "a");
    std::strcpy(test.text6192, "b");
    std::strcpy(test.text6224, "c");
    std::strcpy(test.text6288, "d");
    std::memset(test.text6320, 'e', sizeof test.text6320);
    const Row rows[] = {{2, "4711"},    {3, "Donna"},        {4, "43 y"},    {5, "70 kg"},  {6, "175 cm"},      {15, "R"},
                        {35, "120/80"}, {42, "07/03/1970"},  {43, "Anna"},   {44, "Rossi"}, {126, "Maria"},     {45, "Her"},
                        {75, "her"},    {76, "she"},         {77, "She"},    {78, "Ms."},   {63, "S\xEC"},      {131, "S\xEC"},
                        {69, "t332"},   {127, "Via Roma 1"}, {128, "Udine"}, {129, "UD"},   {130, "33100"},     {207, "t186"},
                        {8, "a"},       {208, "b"},          {209, "c"},     {210, "d"},    {640, "05/03/2013"}};
    Expect(rows);
    Expect({{1, "Anna Maria Rossi"}, {206, "Via Roma 1\r\nUdine, UD 33100"}, {448, "eeeeeeeeeeeeeeeeeeeeeeeeeeeeeee"}});
    EXPECT_EQ(Text(67), std::string(511, 'x'));
    EXPECT_EQ(Text(206, 20), "Via Roma 1\r\nUdine, ") << "ends at the first part that does not fit";
    request.sexList = 7000;
    EXPECT_EQ(Text(3), "F");
    EXPECT_EQ(Text(1, 5), "Anna");
    test.SetSex(1);
    Expect({{45, "His"}, {75, "his"}, {76, "he"}, {77, "He"}, {78, "Mr."}});
}

TEST_F(SummaryText, TheReport) {
    test.acquisitionTime = DateTime(2013, 11, 5, 23, 30);
    test.SetOriginalBy("engine");
    test.SetOverreadBy("Dr. Rossi");
    test.SetConfirmedBy("Dr. Verdi");
    test.SetDevice("ECG 12", "A-17", "2.1");
    const Row rows[] = {{649, ""}, {33, "None"}, {213, "Dr. Rossi"}, {7, "Dr. Verdi"}, {214, "engine"}, {452, " 0:00"}};
    Expect(rows);
    Expect({{9, "05/11/2013, 23:30"},
            {125, "05/11/2013, 23:30"},
            {71, "Original Report (not overread)"},
            {142, "Original Report (not overread) - <engine>"},
            {68, "ECG 12 (SN: A-17) rev 2.1"},
            {498, "23:30:00 (1)"}});
    const DateTime time(2014, 1, 2);
    test.SetConfirmedInterpretation(&time, "Sinus rhythm.");
    request.timeMs = 3599999;
    Expect({{70, "Sinus rhythm."},
            {71, "Confirmed Report"},
            {142, "Confirmed Report (Dr. Verdi)"},
            {649, "02/01/2014"},
            {452, "59:59"},
            {125, "05/11/2013, 23:30 (+3599s)"},
            {498, "00:29:59 (2)"}});
    EXPECT_EQ(Text(125, 12), "05/11/2013,") << "date and offset are cut as one text";
    request.timeMs = 3600000;
    EXPECT_EQ(Text(452), "1:00:00");
    request.timeMs = -61000;
    EXPECT_EQ(Text(452), "-0:01:01");
    request.timeMs = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(Text(452), "-596:31:23");
}

TEST_F(SummaryText, TheBannerOfAnOutsideReviewNeedsItsRoom) {
    const std::string banner = "\r\n*** ECG Interpretation review performed in Word or an EMR program ***";
    test.SetOverreadInterpretation(nullptr, "Sinus rhythm.");
    test.externalReview = 1;
    EXPECT_EQ(Text(70), "Sinus rhythm." + banner);
    EXPECT_EQ(Text(70, 13 + banner.size() + 1), "Sinus rhythm." + banner);
    EXPECT_EQ(Text(70, 13 + banner.size()), "Sinus rhythm.");
    EXPECT_EQ(Text(70, 6), "Sinus");
}

TEST_F(SummaryText, RecordingDurations) {
    const std::pair<std::uint32_t, const char*> rows[] = {
        {0, "0:00"},         {59999, "0:59"},     {3599999, "59:59"},      {3600000, "1:00"},
        {86399999, "23:59"}, {86400000, "24 hr"}, {4294967295u, "1193 hr"}};
    for (const auto& [ms, text] : rows) {
        test.recordingDurationMs = ms;
        EXPECT_EQ(Text(493), text) << ms;
    }
}

TEST_F(SummaryText, Filters) {
    const struct {
        bool artifact;
        std::uint32_t hz;
        bool baseline;
        const char* text;
    } rows[] = {
        {false, 0, false, "None"},     {false, 50, false, "50 Hz"},           {false, 60, true, "60 Hz, Baseline"},
        {true, 50, false, "Artifact"}, {true, 0, true, "Artifact, Baseline"}, {false, 0, true, "Baseline"},
    };
    for (const auto& row : rows) {
        test.SetArtifactFilter(row.artifact, false, false);
        test.SetMainsFrequency(row.hz);
        test.SetBaselineFilter(row.baseline);
        EXPECT_EQ(Text(33), row.text);
    }
}

TEST_F(SummaryText, Events) {
    const struct {
        int number;
        const char* name;
        int value;
        const char* rate;  // at 48 beats per minute
    } rows[] = {
        {0, "Normal Beats", 7, "HR: 48"},
        {3, "Tachycardia", 7, "HR: 48 (7)"},
        {8, "Isolated VEB", 7, "HR: 48 (7%)"},
        {9, "?", 7, "..."},
        {10, "Isolated VEB (R on T)", 30, "HR: 48 (30%)"},
        {14, "Pause", 2350, "HR: 48 (2.3 s)"},
        {15, "STe Change", 0x0F0D, "HR: 48 (+1.5 mm (3))"},
        {15, "STe Change", 0xF10A, "HR: 48 (-1.5 mm (0))"},
        {15, "STe Change", 0xFB00, "HR: 48 (-0.5 mm (-10))"},
        {19, "?", 7, "HR: 48"},
        {20, "?", 7, "..."},
        {33, "SVEB Triplet", 7, "HR: 48 (7%)"},
        {-1, "?", 7, "..."},
    };
    request.eventHeartRate = 48;
    for (const auto& row : rows) {
        request.eventClass = row.number;
        request.eventValue = row.value;
        EXPECT_EQ(Text(453), row.name) << row.number;
        EXPECT_EQ(Text(499), row.rate) << row.number;
    }
    request.eventText = "Dizzy";
    EXPECT_EQ(Text(453), "Dizzy");
    request.eventClass = 14;
    request.eventValue = 2350;
    request.eventHeartRate = 0;
    EXPECT_EQ(Text(499), "HR: ? (2.3 s)");
    request.eventClass = 0;
    EXPECT_EQ(Text(499), "HR: ?");
    EXPECT_EQ(Text(499, 32), "");
}

TEST_F(SummaryText, HolterSummaryValues) {
    EXPECT_EQ(Text(374), "...");
    EXPECT_EQ(Text(377), "");
    auto summary = NewSubRecord<KxHolterSummary>();
    for (int i = 0; i < KX_HOLTER_GROUPS; ++i) {
        summary->groups[i].first = 10 * i + 0.5;
        summary->groups[i].second = 10 * i + 3.4;
    }
    summary->groups[1].first = std::nan("");
    summary->groups[2].second = 1e300;
    test.SetHolterSummary(std::move(summary));
    const Row rows[] = {{374, "1"},   {375, "3"},   {376, "1 - 3"}, {377, ""},          {378, "..."},
                        {384, "..."}, {418, "111"}, {419, "113"},   {420, "111 - 113"}, {421, ""}};
    Expect(rows);
}

TEST_F(SummaryText, HolterRatesAndPressures) {
    Expect({{700, "..."}, {702, "..."}, {720, "..."}, {721, "..."}, {722, "..."}});
    test.acquisitionTime = DateTime(2013, 11, 5, 20, 0);
    auto data = NewSubRecord<KxHolterData>();
    data->meanHeartRate = 71;
    data->minHeartRate = 44;
    data->minHeartRateMs = 8 * 3600000;
    test.SetHolterData(std::move(data));
    Expect({{700, "71"}, {701, "44"}, {702, "04:00:00 (2)"}, {703, "..."}, {704, "..."}});
    for (int i = 0; i < 3; ++i) {
        auto reading = NewSubRecord<KxPressureReading>();
        reading->time = DateTime(2013, 11, 5, 20, 10 * i);
        reading->systolic = static_cast<std::uint32_t>(120 + i);
        reading->diastolic = 80;
        reading->heartRate = static_cast<std::uint32_t>(60 + i);
        test.AddPressure(std::move(reading));
    }
    request.timeMs = 1199999;
    Expect({{721, "121/80"}, {722, "61"}});
    request.timeMs = -1;
    EXPECT_EQ(Text(721), "...");
}

TEST_F(SummaryText, Spirometry) {
    EXPECT_EQ(Text(579), "...");
    auto block = NewSubRecord<KxSpirometry>();
    block->values[0] = 3.456;
    block->values[30] = 12.3;
    block->values[31] = -0.5;
    block->values[41] = 100;
    block->values[1] = std::numeric_limits<double>::infinity();
    block->predictedSet = 7;
    test.SetSpirometry(std::move(block));
    const Row rows[] = {{579, " 3.46"},         {609, "12.30"},        {611, "-0.50"},
                        {621, "100.00"},        {580, "..."},          {610, "Brazil (Pereira/Mallozi)"},
                        {622, "(no field) .."}, {578, "(no field) .."}};
    Expect(rows);
    test.Spirometry()->predictedSet = 9;
    EXPECT_EQ(Text(610), "User values");
    test.Spirometry()->predictedSet = 10;
    EXPECT_EQ(Text(610), "Unknown values");
}

TEST_F(SummaryText, MeasurementsOfTheEpisodeAtTheTime) {
    for (const int code : {20, 21, 22, 34, 105, 106, 107, 135, 136, 137, 138, 139, 368, 371, 372, 373}) {
        EXPECT_EQ(Text(code), "..") << code;
    }
    Expect({{48, "(no field) .."}, {143, "(no field) .."}, {9999, "(no field) .."}, {17, "(no field) .."}});
    EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
    episode->SetEndTimeMs(30000);
    episode->durationSeconds = 10;
    EXPECT_EQ(Text(20), "..");  // not measured
    episode->measurements.measured = 1;
    episode->measurements.prInterval = 160;
    episode->measurements.leads[0].stLevel[8] = -150;
    Expect({{20, "160 ms"}, {48, "-1.5"}, {17, "(no field)"}, {9999, "(no field)"}});
    request.timeMs = 30000;
    EXPECT_EQ(Text(20), "..");

    auto data = NewSubRecord<KxHolterData>();
    data->hasCurrentEvent = 1;
    data->eventStartMs = 34000;
    data->eventEndMs = 36000;
    test.SetHolterData(std::move(data));
    Expect({{17, "160 ms"}, {20, ".."}, {9999, "(no field) .."}});
    test.HolterData()->eventStartMs = 35000;  // the search begins 5 s before
    EXPECT_EQ(Text(17), "(no field) ..");
    test.HolterData()->eventStartMs = 0;
    test.HolterData()->hasCurrentEvent = 0;
    EXPECT_EQ(Text(17), "(no field) ..");
}

TEST_F(SummaryText, NeedsABuffer) {
    char text[2] = "x";
    EXPECT_FALSE(FieldText(test, 2, nullptr, 10, request));
    EXPECT_FALSE(FieldText(test, 2, text, 0, request));
    EXPECT_STREQ(text, "x");
    EXPECT_TRUE(FieldText(test, 4, text, 1, request));
    EXPECT_STREQ(text, "");
}

TEST_F(SummaryText, PlaceholdersSpeakOfThePatient) {
    test.SetPatientName("Anna", "", "Rossi");
    test.SetSex(2);
    const struct {
        const char* text;
        std::size_t size;
        const char* expanded;
    } rows[] = {
        {"{%11} was seen", 64, "She was seen"},
        {"{%1} {%2}, {%14}, {%5}", 64, "Anna Rossi, Ms., her"},
        {"{%99999999999999999999}", 64, "{%99999999999999999999}"},
        {"{%007}, {%000}, {%02}", 64, "{%7}, {%0}, Rossi"},
        {"{%5", 64, "*"},
        {"{%5{%5}", 64, "*her"},
        {"{%}{%x}{5}%", 64, "{%}{%x}{5}%"},
        {"{", 64, "{"},
        {"ab{%2}cd", 7, "abcd"},  // the name does not fit
        {"ab{%2}cd", 8, "abRossi"},
        {"abcdef", 4, "abc"},
        {"abcdef", 1, ""},
    };
    for (const auto& row : rows) {
        std::string output(row.size, '#');
        EXPECT_TRUE(ExpandPlaceholders(test, row.text, output.data(), row.size)) << row.text;
        EXPECT_STREQ(output.c_str(), row.expanded) << row.text;
    }
    char output[32];
    test.SetSex(0);
    EXPECT_TRUE(ExpandPlaceholders(test, "{%11}, {%14}, {%5}", output, sizeof output));
    EXPECT_STREQ(output, "The patient, The patient, the");
    EXPECT_FALSE(ExpandPlaceholders(test, nullptr, output, sizeof output));
    EXPECT_FALSE(ExpandPlaceholders(test, "x", nullptr, 10));
    EXPECT_FALSE(ExpandPlaceholders(test, "x", output, 0));
}

}  // namespace
}  // namespace kx
