#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kx {
namespace {

constexpr KxDate kBirth = {1970, 1, 2};

using Getter = void (TestRecord::*)(char*, std::size_t) const;

std::string Text(const TestRecord& test, Getter getter) {
    char text[256] = "before";
    (test.*getter)(text, sizeof text);
    return text;
}

TEST(TestRecordPatient, NamesAreJoinedAndSplit) {
    const struct {
        const char* first;
        const char* middle;
        const char* last;
        const char* stored;
        const char* parts[3];  // last, first, middle
        const char* full;
        const char* sort;
    } rows[] = {
        {"Anna", "Maria", "Rossi", "Rossi^Anna^Maria^", {"Rossi", "Anna", "Maria"}, "Anna Maria Rossi", "Rossi, Anna Maria"},
        {"", "Paul", "Smith", "Smith^^Paul^", {"Smith", "Paul", ""}, "Paul  Smith", "Smith, Paul "},
        {"A^B", nullptr, "C^", "C_^A_B^^", {"C_", "A_B", ""}, "A_B  C_", "C_, A_B "},
        {nullptr, nullptr, nullptr, "^^^", {"", "", ""}, "  ", ",  "},
    };
    for (const auto& row : rows) {
        TestRecord test;
        test.SetPatientName(row.first, row.middle, row.last);
        EXPECT_STREQ(test.patientName, row.stored);
        EXPECT_EQ(Text(test, &TestRecord::LastName), row.parts[0]) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::FirstName), row.parts[1]) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::MiddleName), row.parts[2]) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::FullName), row.full) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::SortName), row.sort) << row.stored;
    }
}

TEST(TestRecordPatient, ANameThatDoesNotFitEndsTheJoin) {
    const std::string longName(200, 'x');
    TestRecord test;
    test.SetPatientName("Anna", longName.c_str(), "Rossi");
    EXPECT_STREQ(test.patientName, "Rossi^Anna^xxxxxxxxxxxxxxxxxx");
    test.SetPatientName(std::string(300, 'y').c_str(), "Maria", "Rossi");
    EXPECT_STREQ(test.patientName, "Rossi^");
    // Last, first and their separators take 212 of the 255 characters.
    test.SetPatientName(longName.c_str(), std::string(43, 'z').c_str(), "Rossi1234");
    EXPECT_STREQ(test.patientName, "Rossi1234^xxxxxxxxxxxxxxxxxxx");
}

TEST(TestRecordPatient, SettersMarkAChangeOnce) {
    const struct {
        const char* what;
        void (*set)(TestRecord&);
    } rows[] = {
        {"patient id", [](TestRecord& t) { t.SetPatientId("4711"); }},
        {"name", [](TestRecord& t) { t.SetPatientName("a", "b", "c"); }},
        {"sex", [](TestRecord& t) { t.SetSex(2); }},
        {"birth date", [](TestRecord& t) { t.SetBirthDate(kBirth); }},
        {"age text", [](TestRecord& t) { t.SetAgeText("77 D"); }},
        {"weight", [](TestRecord& t) { t.SetWeight(15000); }},
        {"height text", [](TestRecord& t) { t.SetHeightText("170 cm"); }},
        {"race", [](TestRecord& t) { t.SetRace(3); }},
        {"flag", [](TestRecord& t) { t.SetClinicalFlag(4, 1); }},
        {"clinical date", [](TestRecord& t) { t.SetClinicalDate(kBirth); }},
        {"mains", [](TestRecord& t) { t.SetMainsFrequency(50); }},
        {"artifact", [](TestRecord& t) { t.SetArtifactFilter(true, false, true); }},
        {"baseline", [](TestRecord& t) { t.SetBaselineFilter(true); }},
        {"confirmed by", [](TestRecord& t) { t.SetConfirmedBy("Dr."); }},
        {"exercise device", [](TestRecord& t) { t.SetExerciseDevice(1, false); }},
        {"its speed unit", [](TestRecord& t) { t.SetExerciseDevice(0, true); }},
        {"a bit", [](TestRecord& t) { t.SetBit7460(31, true); }},
        {"another", [](TestRecord& t) { t.SetBit7476(0, true); }},
    };
    for (const auto& row : rows) {
        TestRecord test;
        row.set(test);
        EXPECT_TRUE(test.IsModified()) << row.what;
        test.ClearModified();
        row.set(test);
        EXPECT_FALSE(test.IsModified()) << row.what;
    }
}

TEST(TestRecordPatient, TextsAreCutAndPaddedWithZeros) {
    TestRecord test;
    test.SetPatientId("0123456789abcdefghij");
    EXPECT_STREQ(test.patientId, "0123456789abcde");
    test.SetPatientId("7");
    for (std::size_t i = 1; i < sizeof test.patientId; ++i) {
        EXPECT_EQ(test.patientId[i], '\0') << i;
    }
    test.ClearModified();
    test.SetPatientId(nullptr);
    EXPECT_STREQ(test.patientId, "7");
    char text[4] = "abc";
    test.SetPatientId("98765");
    test.PatientId(text, sizeof text);
    EXPECT_STREQ(text, "987");
    test.PatientId(text, 0);
    test.PatientId(nullptr, 4);
    EXPECT_STREQ(text, "987");
}

TEST(TestRecordPatient, AgesAreReadAndShown) {
    const struct {
        const char* typed;
        int days;
        const char* shown;
    } rows[] = {
        {"29 D", 29, "29 d"}, {"30d", 30, "1 m"},    {"364 d", 364, "12 m"},   {"365 d", 365, "1 y"}, {"5 M", 150, "5 m"},
        {"12m", 360, "12 m"}, {"47", 17155, "47 y"}, {" 47 y", 17155, "47 y"}, {"NG", 0, "NG"},       {"0", 0, "NG"},
        {"abc", 0, "NG"},     {"3 md", 3, "3 d"},    {"179", 65335, "179 y"},
    };
    for (const auto& row : rows) {
        TestRecord test;
        test.ageDays = 1;
        EXPECT_TRUE(test.SetAgeText(row.typed)) << row.typed;
        EXPECT_EQ(test.AgeDays(), static_cast<std::uint32_t>(row.days)) << row.typed;
        EXPECT_EQ(Text(test, &TestRecord::AgeText), row.shown) << row.typed;
    }
    TestRecord test;
    test.SetAgeDays(100);
    for (const char* refused : {"180", "-1", "99999999999999", "70000 d"}) {
        EXPECT_FALSE(test.SetAgeText(refused)) << refused;
        EXPECT_EQ(test.AgeDays(), 100u) << refused;
    }
    EXPECT_FALSE(test.SetAgeText(nullptr));
    test.SetBirthDate({1970, 1, 1});
    test.SetAgeDays(5);
    test.SetAgeText("6");
    EXPECT_EQ(test.AgeDays(), 100u);
}

TEST(TestRecordPatient, WeightsAndHeightsAreReadAndShown) {
    const struct {
        bool metric;
        const char* typed;
        int weight;
        const char* weightShown;
        int height;
        const char* heightShown;
    } rows[] = {
        {true, "70", 15453, "70 kg", 2756, "70 cm"},
        {true, "175 lbs", 38631, "175 kg", 6890, "175 cm"},
        {false, "70", 7000, "70 lbs", 7000, "70 in"},
        {false, "70 kg", 15453, "155 lbs", 7000, "70 in"},
        {false, "175 CM", 17500, "175 lbs", 6890, "69 in"},
        {false, "1", 100, "1 lbs", 100, "1 in"},
        {false, "NG", 0, "NG", 0, "NG"},
    };
    for (const auto& row : rows) {
        TestRecord test;
        test.SetMetricUnits(row.metric);
        EXPECT_TRUE(test.SetWeightText(row.typed)) << row.typed;
        EXPECT_TRUE(test.SetHeightText(row.typed)) << row.typed;
        EXPECT_EQ(test.Weight(), static_cast<std::uint32_t>(row.weight)) << row.typed;
        EXPECT_EQ(test.Height(), static_cast<std::uint32_t>(row.height)) << row.typed;
        EXPECT_EQ(Text(test, &TestRecord::WeightText), row.weightShown) << row.typed;
        EXPECT_EQ(Text(test, &TestRecord::HeightText), row.heightShown) << row.typed;
    }
    TestRecord test;
    test.SetWeight(99);
    EXPECT_EQ(Text(test, &TestRecord::WeightText), "NG");
    for (const char* refused : {"656", "298 kg", "-3", "99999999999"}) {  // more than the field holds
        EXPECT_FALSE(test.SetWeightText(refused)) << refused;
        EXPECT_EQ(test.Weight(), 99u) << refused;
    }
    EXPECT_TRUE(test.SetWeightText("655"));
    EXPECT_FALSE(test.SetHeightText(nullptr));
}

TEST(TestRecordPatient, ABirthDateSetsTheAge) {
    const struct {
        KxDate birth;
        DateTime acquired;
        int ageDays;  // 4242: unchanged
    } rows[] = {
        {{1970, 1, 1}, {2013, 1, 1, 12}, 15706}, {{2013, 3, 5}, {2013, 5, 3}, 0},    {{2013, 4, 5}, {2013, 5, 3}, 0},
        {{1801, 1, 1}, {2013, 1, 1}, 65535},     {{1800, 1, 1}, {2013, 1, 1}, 4242}, {{1970, 1, 1}, {0, 1, 1}, 4242},
    };
    for (const auto& row : rows) {
        TestRecord test;
        test.acquisitionTime = row.acquired;
        test.ageDays = 4242;
        test.SetBirthDate(row.birth);
        EXPECT_EQ(test.ageDays, row.ageDays) << row.birth.year << ' ' << row.acquired.year;
        EXPECT_TRUE(test.IsModified());
        test.ClearModified();
        test.ageDays = 17;
        test.SetBirthDate(row.birth);
        EXPECT_EQ(test.ageDays, 17);
        EXPECT_FALSE(test.IsModified());
    }
}

TEST(TestRecordPatient, CodesAreShownByTheirLists) {
    test::TextTable texts;
    texts.texts = {{913, "0^...^1^Uomo^2^Donna"}, {964, "0^No^1^S\xEC"}};
    TestRecord test;
    char text[32] = "before";
    test.SetSex(2);
    test.SexText(texts, text, 3);
    EXPECT_STREQ(text, "Do");
    test.SetSex(7);
    std::strcpy(text, "before");
    test.SexText(texts, text, sizeof text);
    EXPECT_STREQ(text, "before");
    test.SetClinicalFlag(4, 1);
    EXPECT_EQ(test.ClinicalFlag(4), 1u);
    test.ClinicalFlagText(texts, 4, text, sizeof text);
    EXPECT_STREQ(text, "S\xEC");
    test.ClinicalFlagText(texts, 0, text, sizeof text);  // 959 is not there
    EXPECT_STREQ(text, "*");
    test.ClinicalFlagText(texts, 5, text, sizeof text);
    test.SetClinicalFlag(5, 9);
    test.SetClinicalFlag(-1, 9);
    EXPECT_EQ(test.ClinicalFlag(5), 0u);
    EXPECT_STREQ(text, "*");
}

}  // namespace
}  // namespace kx
