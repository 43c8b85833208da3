// A test record's patient and report.
#include "lib/dbclient/test_record.h"

namespace kx::test {
namespace {

const DateTime kTime(2013, 11, 5, 14, 5, 9);

std::string Text(const TestRecord& test, void (TestRecord::*getter)(char*, std::size_t) const) {
    char text[256] = "before";
    (test.*getter)(text, sizeof text);
    return text;
}

TEST(TestRecord, NamesAreJoinedAndSplit) {
    const std::string longName(200, 'x'), longer(300, 'y'), z(43, 'z');
    // The parts: last, first and middle name, first name first, last name first.
    const std::tuple<const char*, const char*, const char*, const char*, const char*> rows[] = {
        {"Anna", "Maria", "Rossi", "Rossi^Anna^Maria^", "Rossi|Anna|Maria|Anna Maria Rossi|Rossi, Anna Maria"},
        {"", "Paul", "Smith", "Smith^^Paul^", "Smith|Paul||Paul  Smith|Smith, Paul "},
        {"A^B", nullptr, "C^", "C_^A_B^^", "C_|A_B||A_B  C_|C_, A_B "},
        {nullptr, nullptr, nullptr, "^^^", "|||  |,  "},
        // What does not fit ends the join: last, first and their separators take 212 of the 255 characters.
        {"Anna", longName.c_str(), "Rossi", "Rossi^Anna^xxxxxxxxxxxxxxxxxx", nullptr},
        {longer.c_str(), "Maria", "Rossi", "Rossi^", nullptr},
        {longName.c_str(), z.c_str(), "Rossi1234", "Rossi1234^xxxxxxxxxxxxxxxxxxx", nullptr}};
    for (const auto& [first, middle, last, stored, parts] : rows) {
        TestRecord test;
        test.SetPatientName(first, middle, last);
        EXPECT_STREQ(test.patientName, stored);
        EXPECT_EQ(parts == nullptr ? ""
                                   : Text(test, &TestRecord::LastName) + '|' + Text(test, &TestRecord::FirstName) + '|' +
                                         Text(test, &TestRecord::MiddleName) + '|' + Text(test, &TestRecord::FullName) + '|' +
                                         Text(test, &TestRecord::SortName),
                  parts == nullptr ? "" : parts);
    }
}

TEST(TestRecord, AgesAreReadAndShown) {
    const std::tuple<const char*, std::uint32_t, const char*> rows[] = {
        {"29 D", 29, "29 d"},     {"30d", 30, "1 m"}, {"364 d", 364, "12 m"}, {"365 d", 365, "1 y"}, {"5 M", 150, "5 m"},
        {" 47 y", 17155, "47 y"}, {"NG", 0, "NG"},    {"0", 0, "NG"},         {"3 md", 3, "3 d"},    {"179", 65335, "179 y"}};
    TestRecord test;
    for (const auto& [typed, days, shown] : rows) {
        EXPECT_TRUE(test.SetAgeText(typed) && test.AgeDays() == days) << typed;
        EXPECT_EQ(Text(test, &TestRecord::AgeText), shown) << typed;
    }
    test.SetAgeDays(100);
    for (const char* refused : {"180", "-1", "99999999999999", "70000 d", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(!test.SetAgeText(refused) && test.AgeDays() == 100);
    }
    test.SetBirthDate({1970, 1, 1});
    test.SetAgeDays(5);
    test.SetAgeText("6");
    EXPECT_EQ(test.AgeDays(), 100u) << "a birth date says more";
    const std::tuple<KxDate, DateTime, int> dates[] =  // age 4242: unchanged
        {{{1970, 1, 1}, {2013, 1, 1, 12}, 15706}, {{2013, 3, 5}, {2013, 5, 3}, 0},    {{2013, 4, 5}, {2013, 5, 3}, 0},
         {{1801, 1, 1}, {2013, 1, 1}, 65535},     {{1800, 1, 1}, {2013, 1, 1}, 4242}, {{1970, 1, 1}, {0, 1, 1}, 4242}};
    for (const auto& [birth, acquired, ageDays] : dates) {
        TestRecord born;
        born.acquisitionTime = acquired;
        born.ageDays = 4242;
        born.SetBirthDate(birth);
        EXPECT_EQ(born.ageDays, ageDays) << birth.year << ' ' << acquired.year;
        born.ageDays = 17;
        born.SetBirthDate(birth);
        EXPECT_EQ(born.ageDays, 17) << "the same date changes nothing";
    }
}

TEST(TestRecord, WeightsAndHeightsAreReadAndShown) {
    const std::tuple<bool, const char*, std::uint32_t, const char*, std::uint32_t, const char*> rows[] = {
        {true, "70", 15453, "70 kg", 2756, "70 cm"},       {true, "175 lbs", 38631, "175 kg", 6890, "175 cm"},
        {false, "70 kg", 15453, "155 lbs", 7000, "70 in"}, {false, "175 CM", 17500, "175 lbs", 6890, "69 in"},
        {false, "1", 100, "1 lbs", 100, "1 in"},           {false, "NG", 0, "NG", 0, "NG"}};
    TestRecord test;
    for (const auto& [metric, typed, weight, weightShown, height, heightShown] : rows) {
        test.SetMetricUnits(metric);
        EXPECT_TRUE(test.SetWeightText(typed) && test.SetHeightText(typed)) << typed;
        EXPECT_TRUE(test.Weight() == weight && test.Height() == height) << typed;
        EXPECT_EQ(Text(test, &TestRecord::WeightText) + Text(test, &TestRecord::HeightText), weightShown + std::string(heightShown));
    }
    test.SetWeight(99);
    EXPECT_EQ(Text(test, &TestRecord::WeightText), "NG");
    for (const char* refused : {"656", "298 kg", "-3", "99999999999"}) {  // more than the field holds
        EXPECT_TRUE(!test.SetWeightText(refused) && test.Weight() == 99) << refused;
    }
    EXPECT_TRUE(test.SetWeightText("655"));
    EXPECT_FALSE(test.SetHeightText(nullptr));
}

TEST(TestRecord, ReportsMarkOnlyWhatChanges) {
    const DateTime later(2014, 1, 1);
    const auto overread = std::pair{&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime};
    const auto confirmed = std::pair{&TestRecord::SetConfirmedInterpretation, &TestRecord::confirmedTime};
    const auto original = std::pair{&TestRecord::SetOriginalInterpretation, &TestRecord::originalTime};
    const std::tuple<decltype(overread), const KxDateTime*, const char*, std::uint32_t, bool, KxDateTime> rows[] = {
        {overread, &kTime, "a", KX_REPORT_OVERREAD, true, kTime},      {overread, &kTime, "a", KX_REPORT_OVERREAD, false, kTime},
        {overread, nullptr, "a", KX_REPORT_OVERREAD, false, kTime},    {overread, &later, "a", KX_REPORT_OVERREAD, true, later},
        {overread, &later, "b", KX_REPORT_OVERREAD, true, later},      {confirmed, &kTime, "b", KX_REPORT_CONFIRMED, false, kTime},
        {overread, nullptr, "b", KX_REPORT_OVERREAD, true, later},     {confirmed, nullptr, "c", KX_REPORT_CONFIRMED, true, {}},
        {original, &kTime, nullptr, KX_REPORT_ORIGINAL, false, kTime}, {original, nullptr, "d", KX_REPORT_ORIGINAL, true, {}}};
    TestRecord test;
    for (const auto& [report, time, text, state, modified, stored] : rows) {
        SCOPED_TRACE(text != nullptr ? text : "no text");
        test.ClearModified();
        (test.*report.first)(time, text);
        EXPECT_TRUE(test.ReportState() == state && test.IsModified() == modified);
        EXPECT_EQ(std::memcmp(&(test.*report.second), &stored, sizeof stored), 0);
        EXPECT_STREQ(test.interpretationText, text != nullptr ? text : "c");
    }
    test.SetOverreadInterpretation(nullptr, std::string(5000, 'x').c_str());
    EXPECT_EQ(std::strlen(test.interpretationText), 4095u);
    char text[8];
    EXPECT_TRUE(test.InterpretationText(nullptr, 100) == test.interpretationText &&
                test.InterpretationText(text, 0) == test.interpretationText);
    EXPECT_STREQ(test.InterpretationText(text, sizeof text), "xxxxxxx");
    test.ClearModified();
    test.SetOverreadBy("Dr. Rossi");                                                // copies without a comparison
    test.SetConfirmedInterpretation(nullptr, test.InterpretationText(nullptr, 0));  // its own text
    EXPECT_EQ(std::strlen(test.interpretationText), 4095u);
    EXPECT_FALSE(test.IsModified());
}

TEST(TestRecord, AnOriginalReportReviewedOutsideSaysSo) {
    TestRecord test;
    for (const auto& [action, outside] : {std::pair{0, false}, {1, false}, {2, true}}) {
        test.AddHistoryEntry(static_cast<std::uint32_t>(action), kTime, "a");
        test.CheckExternalReview();
        EXPECT_EQ(test.IsReviewedOutside(), outside) << action;
    }
    test.SetConfirmedInterpretation(nullptr, "");
    test.CheckExternalReview();
    EXPECT_TRUE(test.IsConfirmed());
}

}  // namespace
}  // namespace kx::test
