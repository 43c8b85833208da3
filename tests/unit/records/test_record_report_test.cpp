#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "lib/dbclient/test_record.h"
#include "tests/unit/records/text_table.h"

namespace kx {
namespace {

const DateTime kTime(2013, 11, 5, 14, 5, 9);

bool Same(const KxDateTime& a, const KxDateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(TestRecordReport, OriginalAndConfirmedMarkOnlyAChangedText) {
    using Set = void (TestRecord::*)(const KxDateTime*, const char*);
    const struct {
        Set set;
        std::uint32_t state;
        KxDateTime TestRecord::*time;
    } rows[] = {
        {&TestRecord::SetOriginalInterpretation, KX_REPORT_ORIGINAL, &TestRecord::originalTime},
        {&TestRecord::SetConfirmedInterpretation, KX_REPORT_CONFIRMED, &TestRecord::confirmedTime},
    };
    for (const auto& row : rows) {
        TestRecord test;
        test.reportState = KX_REPORT_OVERREAD;
        (test.*row.set)(&kTime, "");
        EXPECT_EQ(test.ReportState(), row.state);
        EXPECT_TRUE(Same(test.*row.time, kTime)) << row.state;
        EXPECT_FALSE(test.IsModified()) << row.state;
        (test.*row.set)(nullptr, "Sinus rhythm.");
        EXPECT_TRUE(Same(test.*row.time, KxDateTime{})) << row.state;
        EXPECT_TRUE(test.IsModified()) << row.state;
        (test.*row.set)(nullptr, nullptr);
        EXPECT_STREQ(test.interpretationText, "Sinus rhythm.");
    }
}

TEST(TestRecordReport, OverreadMarksStateTimeAndText) {
    const DateTime later(2014, 1, 1);
    const struct {
        const char* what;
        const KxDateTime* time;
        const char* text;
        bool modified;
        const DateTime* stored;
    } rows[] = {
        {"a first time", &kTime, "a", true, &kTime}, {"nothing new", &kTime, "a", false, &kTime}, {"no time", nullptr, "a", false, &kTime},
        {"another time", &later, "a", true, &later}, {"another text", &later, "b", true, &later},
    };
    TestRecord test;
    for (const auto& row : rows) {
        test.ClearModified();
        test.SetOverreadInterpretation(row.time, row.text);
        EXPECT_TRUE(test.IsOverread()) << row.what;
        EXPECT_EQ(test.IsModified(), row.modified) << row.what;
        EXPECT_TRUE(Same(test.overreadTime, *row.stored)) << row.what;
        EXPECT_STREQ(test.interpretationText, row.text) << row.what;
    }
    test.reportState = KX_REPORT_CONFIRMED;
    test.ClearModified();
    test.SetOverreadInterpretation(nullptr, "b");
    EXPECT_TRUE(test.IsModified());
}

TEST(TestRecordReport, TheTextIsCutAtItsField) {
    TestRecord test;
    test.SetOverreadInterpretation(nullptr, std::string(5000, 'x').c_str());
    EXPECT_EQ(std::strlen(test.interpretationText), 4095u);
    EXPECT_EQ(test.reportState, KX_REPORT_OVERREAD);
    EXPECT_EQ(test.InterpretationText(nullptr, 100), test.interpretationText);
    char text[8];
    EXPECT_EQ(test.InterpretationText(text, 0), test.interpretationText);
    EXPECT_EQ(test.InterpretationText(text, sizeof text), text);
    EXPECT_STREQ(text, "xxxxxxx");
    // The record's own text, given back to it.
    test.ClearModified();
    test.SetConfirmedInterpretation(nullptr, test.InterpretationText(nullptr, 0));
    EXPECT_EQ(std::strlen(test.interpretationText), 4095u);
    EXPECT_FALSE(test.IsModified());
}

TEST(TestRecordReport, AnOriginalReportReviewedOutsideSaysSo) {
    TestRecord test;
    test.CheckExternalReview();
    EXPECT_TRUE(test.IsOriginal());
    test.AddHistoryEntry(1, kTime, "a");
    test.CheckExternalReview();
    EXPECT_TRUE(test.IsOriginal());
    test.AddHistoryEntry(2, kTime, "a");
    test.CheckExternalReview();
    EXPECT_TRUE(test.IsReviewedOutside());
    test.SetConfirmedInterpretation(nullptr, "");
    test.CheckExternalReview();
    EXPECT_TRUE(test.IsConfirmed());
}

TEST(TestRecordReport, AuthorsAreCutAtTheirFields) {
    const std::string longName(100, 'n');
    TestRecord test;
    test.SetConfirmedBy(longName.c_str());
    const char* confirmed = test.ConfirmedBy();
    EXPECT_EQ(std::strlen(confirmed), 38u);
    test.SetConfirmedBy("Dr. Verdi");
    EXPECT_EQ(test.ConfirmedBy(), confirmed);  // one buffer for all calls
    EXPECT_STREQ(confirmed, "Dr. Verdi");
}

TEST(TestRecordReport, SomeTextsAreStoredWithoutALookAtWhatStoodThere) {
    const struct {
        const char* what;
        void (*set)(TestRecord&, const char*);
        std::size_t offset;
        std::size_t size;
        bool modifies;
    } rows[] = {
        {"original by", [](TestRecord& t, const char* s) { t.SetOriginalBy(s); }, 7082, 64, true},
        {"overread by", [](TestRecord& t, const char* s) { t.SetOverreadBy(s); }, 5965, 64, false},
        {"text7146", [](TestRecord& t, const char* s) { t.SetText7146(s); }, 7146, 32, true},
        {"text6570", [](TestRecord& t, const char* s) { t.SetText6570(s); }, 6570, 512, false},
        {"text7189", [](TestRecord& t, const char* s) { t.SetText7189(0, s); }, 7189, 64, false},
        {"the last", [](TestRecord& t, const char* s) { t.SetText7189(2, s); }, 7317, 64, false},
    };
    for (const auto& row : rows) {
        TestRecord test;
        const char* field = reinterpret_cast<const char*>(static_cast<const KxTestRecord*>(&test)) + row.offset;
        row.set(test, std::string(600, 'x').c_str());
        EXPECT_EQ(field, std::string(row.size - 1, 'x')) << row.what;
        test.ClearModified();
        row.set(test, std::string(600, 'x').c_str());
        EXPECT_EQ(test.IsModified(), row.modifies) << row.what;
        test.ClearModified();
        row.set(test, nullptr);
        EXPECT_FALSE(test.IsModified()) << row.what;
        row.set(test, "y");
        EXPECT_EQ(std::string(field, row.size), "y" + std::string(row.size - 1, '\0')) << row.what;
    }
}

TEST(TestRecordReport, BitsAreSetOneAtATime) {
    TestRecord test;
    test.SetBit7460(31, true);
    test.SetBit7460(0, true);
    test.SetBit7476(4, true);
    test.SetBit7460(31, false);
    for (const int none : {-1, 32, INT32_MAX}) {
        test.SetBit7460(none, true);
        test.SetBit7476(none, true);
    }
    EXPECT_EQ(test.values7444[4], 1u);
    EXPECT_EQ(test.values7444[8], 16u);
    test.SetText7189(3, "x");
    test.SetText7189(-1, "x");
}

TEST(TestRecordReport, TheStateIsNamedWithItsAuthor) {
    test::TextTable texts;
    texts.texts = {{914, "Original Report (not overread)^Overread Report (not confirmed)^Confirmed Report"}};
    TestRecord test;
    test.SetOriginalBy("engine");
    test.SetOverreadBy("Dr. Rossi");
    test.SetConfirmedBy("Dr. Verdi");
    const struct {
        std::uint8_t state;
        const char* text;
        const char* withAuthor;
    } rows[] = {
        {0, "Original Report (not overread)", "Original Report (not overread) - <engine>"},
        {1, "Overread Report (not confirmed)", "Overread Report (not confirmed) - <Dr. Rossi>"},
        {2, "Confirmed Report", "Confirmed Report (Dr. Verdi)"},
        {3, "", "before"},
    };
    for (const auto& row : rows) {
        test.reportState = row.state;
        char text[64] = "before";
        test.ReportStateAndAuthorText(texts, text, sizeof text);
        EXPECT_STREQ(text, row.withAuthor) << int{row.state};
        test.ReportStateText(texts, text, sizeof text);
        EXPECT_STREQ(text, row.text) << int{row.state};
    }
    test.reportState = 2;
    char text[64];
    test.ReportStateText(test::TextTable(), text, sizeof text);
    EXPECT_STREQ(text, "*");
    test.ReportStateAndAuthorText(texts, text, 10);
    EXPECT_STREQ(text, "Confirmed");
}

TEST(TestRecordReport, FiltersAreBitsOfTheRecord) {
    TestRecord test;
    test.filterFlags = 0xFFFFFFFFu;
    EXPECT_EQ(test.MainsFrequency(), 50u);
    test.SetMainsFrequency(60);
    EXPECT_EQ(test.MainsFrequency(), 60u);
    EXPECT_EQ(test.filterFlags, 0xFFFFFFFDu);
    test.SetMainsFrequency(100);
    EXPECT_EQ(test.MainsFrequency(), 0u);
    EXPECT_EQ(test.ArtifactFilter(), 2u);
    test.SetArtifactFilter(true, false, true);
    EXPECT_EQ(test.ArtifactFilter(), 3u);
    test.SetArtifactFilter(false, true, true);
    EXPECT_EQ(test.ArtifactFilter(), 0u);
    EXPECT_TRUE(test.BaselineFilter());
    test.SetBaselineFilter(false);
    EXPECT_EQ(test.filterFlags, 0xFFFFFFF0u);
}

}  // namespace
}  // namespace kx
