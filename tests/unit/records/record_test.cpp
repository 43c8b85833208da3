// A test record's patient and report.
#include "lib/dbclient/test_record.h"
#include "tests/unit/records/text_table.h"

namespace kx::test {
namespace {

const DateTime kTime(2013, 11, 5, 14, 5, 9);

std::string Text(const TestRecord& test, void (TestRecord::*getter)(char*, std::size_t) const) {
    char text[256] = "before";
    (test.*getter)(text, sizeof text);
    return text;
}

bool Same(const KxDateTime& a, const KxDateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(TestRecord, StartsEmpty) {
    const TestRecord test;
    KxTestRecord expected{};
    expected.testType = 1;
    expected.history = test.history;
    expected.currentStage = test.currentStage;
    EXPECT_EQ(std::memcmp(static_cast<const KxTestRecord*>(&test), &expected, sizeof expected), 0);
    ASSERT_NE(test.history, nullptr);
    EXPECT_EQ(test.history->count, 0u);
    EXPECT_NE(test.Stage(-1), nullptr);
}

TEST(TestRecord, NamesAreJoinedAndSplit) {
    const std::string longName(200, 'x'), longer(300, 'y'), z(43, 'z');
    const struct {
        const char *first, *middle, *last, *stored, *parts[3], *full, *sort;  // the parts: last, first, middle
    } rows[] = {{"Anna", "Maria", "Rossi", "Rossi^Anna^Maria^", {"Rossi", "Anna", "Maria"}, "Anna Maria Rossi", "Rossi, Anna Maria"},
                {"", "Paul", "Smith", "Smith^^Paul^", {"Smith", "Paul", ""}, "Paul  Smith", "Smith, Paul "},
                {"A^B", nullptr, "C^", "C_^A_B^^", {"C_", "A_B", ""}, "A_B  C_", "C_, A_B "},
                {nullptr, nullptr, nullptr, "^^^", {"", "", ""}, "  ", ",  "},
                // What does not fit ends the join: last, first and their separators take 212 of the 255 characters.
                {"Anna", longName.c_str(), "Rossi", "Rossi^Anna^xxxxxxxxxxxxxxxxxx", {}, nullptr, nullptr},
                {longer.c_str(), "Maria", "Rossi", "Rossi^", {}, nullptr, nullptr},
                {longName.c_str(), z.c_str(), "Rossi1234", "Rossi1234^xxxxxxxxxxxxxxxxxxx", {}, nullptr, nullptr}};
    for (const auto& row : rows) {
        TestRecord test;
        test.SetPatientName(row.first, row.middle, row.last);
        EXPECT_STREQ(test.patientName, row.stored);
        if (row.full == nullptr) {
            continue;
        }
        EXPECT_EQ(Text(test, &TestRecord::LastName), row.parts[0]) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::FirstName), row.parts[1]) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::MiddleName), row.parts[2]) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::FullName), row.full) << row.stored;
        EXPECT_EQ(Text(test, &TestRecord::SortName), row.sort) << row.stored;
    }
}

TEST(TestRecord, SettersMarkAChangeOnce) {
    const std::pair<const char*, void (*)(TestRecord&)> rows[] = {{"patient id", [](auto& t) { t.SetPatientId("4711"); }},
                                                                  {"name", [](auto& t) { t.SetPatientName("a", "b", "c"); }},
                                                                  {"birth date",
                                                                   [](auto& t) {
                                                                       t.SetBirthDate({1970, 1, 2});
                                                                   }},
                                                                  {"age text", [](auto& t) { t.SetAgeText("77 D"); }},
                                                                  {"height text", [](auto& t) { t.SetHeightText("170 cm"); }},
                                                                  {"flag", [](auto& t) { t.SetClinicalFlag(4, 1); }},
                                                                  {"clinical date",
                                                                   [](auto& t) {
                                                                       t.SetClinicalDate({1970, 1, 2});
                                                                   }},
                                                                  {"mains", [](auto& t) { t.SetMainsFrequency(50); }},
                                                                  {"artifact", [](auto& t) { t.SetArtifactFilter(true, false, true); }},
                                                                  {"baseline", [](auto& t) { t.SetBaselineFilter(true); }},
                                                                  {"exercise device", [](auto& t) { t.SetExerciseDevice(1, false); }},
                                                                  {"its speed unit", [](auto& t) { t.SetExerciseDevice(0, true); }},
                                                                  {"a bit", [](auto& t) { t.SetBit7460(31, true); }},
                                                                  {"another", [](auto& t) { t.SetBit7476(0, true); }}};
    for (const auto& [what, set] : rows) {
        TestRecord test;
        set(test);
        EXPECT_TRUE(test.IsModified()) << what;
        test.ClearModified();
        set(test);
        EXPECT_FALSE(test.IsModified()) << what;
    }
}

TEST(TestRecord, AgesAreReadAndShown) {
    const struct {
        const char* typed;
        std::uint32_t days;
        const char* shown;
    } rows[] = {{"29 D", 29, "29 d"}, {"30d", 30, "1 m"},    {"364 d", 364, "12 m"},   {"365 d", 365, "1 y"}, {"5 M", 150, "5 m"},
                {"12m", 360, "12 m"}, {"47", 17155, "47 y"}, {" 47 y", 17155, "47 y"}, {"NG", 0, "NG"},       {"0", 0, "NG"},
                {"abc", 0, "NG"},     {"3 md", 3, "3 d"},    {"179", 65335, "179 y"}};
    TestRecord test;
    for (const auto& row : rows) {
        EXPECT_TRUE(test.SetAgeText(row.typed)) << row.typed;
        EXPECT_EQ(test.AgeDays(), row.days) << row.typed;
        EXPECT_EQ(Text(test, &TestRecord::AgeText), row.shown) << row.typed;
    }
    test.SetAgeDays(100);
    for (const char* refused : {"180", "-1", "99999999999999", "70000 d", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(test.SetAgeText(refused));
        EXPECT_EQ(test.AgeDays(), 100u);
    }
    test.SetBirthDate({1970, 1, 1});
    test.SetAgeDays(5);
    test.SetAgeText("6");
    EXPECT_EQ(test.AgeDays(), 100u) << "a birth date says more";
    const struct {
        KxDate birth;
        DateTime acquired;
        int ageDays;  // 4242: unchanged
    } dates[] = {{{1970, 1, 1}, {2013, 1, 1, 12}, 15706}, {{2013, 3, 5}, {2013, 5, 3}, 0},    {{2013, 4, 5}, {2013, 5, 3}, 0},
                 {{1801, 1, 1}, {2013, 1, 1}, 65535},     {{1800, 1, 1}, {2013, 1, 1}, 4242}, {{1970, 1, 1}, {0, 1, 1}, 4242}};
    for (const auto& row : dates) {
        TestRecord born;
        born.acquisitionTime = row.acquired;
        born.ageDays = 4242;
        born.SetBirthDate(row.birth);
        EXPECT_EQ(born.ageDays, row.ageDays) << row.birth.year << ' ' << row.acquired.year;
        born.ageDays = 17;
        born.SetBirthDate(row.birth);
        EXPECT_EQ(born.ageDays, 17);
    }
}

TEST(TestRecord, WeightsAndHeightsAreReadAndShown) {
    const struct {
        bool metric;
        const char* typed;
        std::uint32_t weight;
        const char* weightShown;
        std::uint32_t height;
        const char* heightShown;
    } rows[] = {{true, "70", 15453, "70 kg", 2756, "70 cm"},
                {true, "175 lbs", 38631, "175 kg", 6890, "175 cm"},
                {false, "70", 7000, "70 lbs", 7000, "70 in"},
                {false, "70 kg", 15453, "155 lbs", 7000, "70 in"},
                {false, "175 CM", 17500, "175 lbs", 6890, "69 in"},
                {false, "1", 100, "1 lbs", 100, "1 in"},
                {false, "NG", 0, "NG", 0, "NG"}};
    TestRecord test;
    for (const auto& row : rows) {
        test.SetMetricUnits(row.metric);
        EXPECT_TRUE(test.SetWeightText(row.typed) && test.SetHeightText(row.typed)) << row.typed;
        EXPECT_EQ(test.Weight(), row.weight) << row.typed;
        EXPECT_EQ(test.Height(), row.height) << row.typed;
        EXPECT_EQ(Text(test, &TestRecord::WeightText), row.weightShown) << row.typed;
        EXPECT_EQ(Text(test, &TestRecord::HeightText), row.heightShown) << row.typed;
    }
    test.SetWeight(99);
    EXPECT_EQ(Text(test, &TestRecord::WeightText), "NG");
    for (const char* refused : {"656", "298 kg", "-3", "99999999999"}) {  // more than the field holds
        EXPECT_FALSE(test.SetWeightText(refused)) << refused;
        EXPECT_EQ(test.Weight(), 99u) << refused;
    }
    EXPECT_TRUE(test.SetWeightText("655"));
    EXPECT_FALSE(test.SetHeightText(nullptr));
}

TEST(TestRecord, CodesAreShownByTheirLists) {
    const TextTable texts({{913, "0^...^1^Uomo^2^Donna"}});
    TestRecord test;
    char text[32] = "before";
    test.SetSex(7);
    test.SexText(texts, text, sizeof text);
    for (const int flag : {-1, 5}) {
        test.ClinicalFlagText(texts, flag, text, sizeof text);
        test.SetClinicalFlag(flag, 9);
        EXPECT_EQ(test.ClinicalFlag(flag), 0u);
    }
    EXPECT_STREQ(text, "before");
}

TEST(TestRecord, ReportsMarkOnlyWhatChanges) {
    const DateTime later(2014, 1, 1);
    const struct {
        void (TestRecord::*set)(const KxDateTime*, const char*);
        KxDateTime TestRecord::*field;
        const KxDateTime* time;
        const char* text;
        std::uint32_t state;
        bool modified;
        KxDateTime stored;
    } rows[] = {{&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime, &kTime, "a", KX_REPORT_OVERREAD, true, kTime},
                {&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime, &kTime, "a", KX_REPORT_OVERREAD, false, kTime},
                {&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime, nullptr, "a", KX_REPORT_OVERREAD, false, kTime},
                {&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime, &later, "a", KX_REPORT_OVERREAD, true, later},
                {&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime, &later, "b", KX_REPORT_OVERREAD, true, later},
                {&TestRecord::SetConfirmedInterpretation, &TestRecord::confirmedTime, &kTime, "b", KX_REPORT_CONFIRMED, false, kTime},
                {&TestRecord::SetOverreadInterpretation, &TestRecord::overreadTime, nullptr, "b", KX_REPORT_OVERREAD, true, later},
                {&TestRecord::SetConfirmedInterpretation, &TestRecord::confirmedTime, nullptr, "c", KX_REPORT_CONFIRMED, true, {}},
                {&TestRecord::SetOriginalInterpretation, &TestRecord::originalTime, &kTime, nullptr, KX_REPORT_ORIGINAL, false, kTime},
                {&TestRecord::SetOriginalInterpretation, &TestRecord::originalTime, nullptr, "d", KX_REPORT_ORIGINAL, true, {}}};
    TestRecord test;
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        test.ClearModified();
        (test.*row.set)(row.time, row.text);
        EXPECT_EQ(test.ReportState(), row.state);
        EXPECT_EQ(test.IsModified(), row.modified);
        EXPECT_TRUE(Same(test.*row.field, row.stored));
        EXPECT_STREQ(test.interpretationText, row.text != nullptr ? row.text : "c");
    }
    test.SetOverreadInterpretation(nullptr, std::string(5000, 'x').c_str());
    EXPECT_EQ(std::strlen(test.interpretationText), 4095u);
    char text[8];
    EXPECT_EQ(test.InterpretationText(nullptr, 100), test.interpretationText);
    EXPECT_EQ(test.InterpretationText(text, 0), test.interpretationText);
    EXPECT_STREQ(test.InterpretationText(text, sizeof text), "xxxxxxx");
    test.ClearModified();
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

TEST(TestRecord, SomeTextsAreStoredWithoutALookAtWhatStoodThere) {
    const struct {
        void (*set)(TestRecord&, const char*);
        std::string_view (*field)(const TestRecord&);
        bool modifies;
    } rows[] = {{[](auto& t, auto s) { t.SetOriginalBy(s); }, [](auto& t) { return std::string_view(t.originalBy, 64); }, true},
                {[](auto& t, auto s) { t.SetOverreadBy(s); }, [](auto& t) { return std::string_view(t.overreadBy, 64); }, false},
                {[](auto& t, auto s) { t.SetText7146(s); }, [](auto& t) { return std::string_view(t.text7146, 32); }, true},
                {[](auto& t, auto s) { t.SetText6570(s); }, [](auto& t) { return std::string_view(t.text6570, 512); }, false},
                {[](auto& t, auto s) { t.SetText7189(2, s), t.SetText7189(3, s), t.SetText7189(-1, s); },
                 [](auto& t) { return std::string_view(t.text7189[2], 64); }, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        TestRecord test;
        for (const std::string& text : {std::string(600, 'x'), std::string(600, 'x'), std::string("y")}) {
            test.ClearModified();
            row.set(test, text.c_str());
            row.set(test, nullptr);
            std::string stored = text;
            stored.resize(row.field(test).size() - 1);
            EXPECT_EQ(row.field(test), stored + '\0');
            EXPECT_EQ(test.IsModified(), row.modifies);
        }
    }
    TestRecord test;
    test.SetConfirmedBy("Dr. Verdi");
    const char* confirmed = test.ConfirmedBy();
    test.SetConfirmedBy(std::string(100, 'n').c_str());
    EXPECT_EQ(test.ConfirmedBy(), confirmed);  // one buffer for all calls
    EXPECT_EQ(std::strlen(confirmed), 38u);
}

TEST(TestRecord, BitsAreSetOneAtATime) {
    TestRecord test;
    for (const int bit : {31, 0, -1, 32, INT32_MAX}) {
        test.SetBit7460(bit, true);
        test.SetBit7476(bit, true);
    }
    test.SetBit7460(31, false);
    EXPECT_EQ(test.values7444[4], 1u);
    EXPECT_EQ(test.values7444[8], 0x80000001u);
}

}  // namespace
}  // namespace kx::test
