#include "host/report/report_listing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>

#include "host/report/report_fields.h"
#include "host/report/statement_listing.h"
#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kxhost {
namespace {

// A test of which every family of fields has something: a measured beat over the whole time, and an event.
class ReportListing : public testing::Test {
  protected:
    ReportListing() {
        kx::EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
        episode->SetEndTimeMs(60000);
        episode->durationSeconds = 60;
        episode->measurements.measured = 1;
        episode->measurements.prInterval = 160;
        auto data = kx::NewSubRecord<KxHolterData>();
        data->hasCurrentEvent = 1;
        data->eventStartMs = 10000;
        data->eventEndMs = 20000;
        test.SetHolterData(std::move(data));
        test.SetPatientName("Anna", "Maria", "Rossi");
        test.SetSex(KX_SEX_FEMALE);
    }

    kx::TestRecord test;
    kx::test::TextTable texts;
    kx::test::PictureLocale locale = kx::test::Italian();
    kx::SummaryRequest request{texts, locale};
};

TEST_F(ReportListing, NamesEveryCodeThatTheReportKnowsAndNoOther) {
    std::set<int> known;
    char text[600];
    for (int code = -100; code <= 10000; ++code) {
        if (kx::FieldText(test, code, text, sizeof text, request))
            known.insert(code);
    }
    std::set<int> named;
    std::set<std::wstring> names{L""};
    for (const ReportField& field : ReportFields()) {
        EXPECT_TRUE(named.insert(field.code).second) << field.code << " is named twice";
        EXPECT_TRUE(names.insert(field.name).second) << field.code << " has no name, or that of another";
    }
    for (const int code : known)
        EXPECT_TRUE(named.contains(code)) << code << " has no name";
    for (const int code : named)
        EXPECT_TRUE(known.contains(code)) << code << " has a name and no text";
}

TEST_F(ReportListing, NamesTheMembersOfAFamily) {
    const struct {
        int code;
        const wchar_t* name;
    } rows[] = {
        {48, L"Livello ST, I"},
        {62, L"Livello ST, derivazione 15"},
        {63, L"Condizione clinica 1"},
        {146, L"Ampiezza P (aP1, µV), aVR"},
        {374, L"Holter, gruppo 1, primo valore"},
        {420, L"Holter, gruppo 12, intervallo"},
        {579, L"Spirometria, valore 1"},
        {611, L"Spirometria, valore 32"},
        {621, L"Spirometria, valore 42"},
    };
    const auto& fields = ReportFields();
    for (const auto& row : rows) {
        const auto field = std::find_if(fields.begin(), fields.end(),
                                        [&](const ReportField& f) { return f.code == row.code; });
        ASSERT_NE(field, fields.end()) << row.code;
        EXPECT_EQ(field->name, row.name) << row.code;
    }
}

TEST_F(ReportListing, ListsTheWholeTexts) {
    std::memset(test.interpretationText, 'x', sizeof test.interpretationText);
    test.externalReview = 1;
    const auto rows = ListReport(test, request);
    ASSERT_EQ(rows.size(), ReportFields().size());
    const auto text = [&](int code) {
        for (const ReportRow& row : rows) {
            if (row.code == code)
                return row.text;
        }
        return std::string("(no row)");
    };
    EXPECT_EQ(text(1), "Anna Maria Rossi");
    EXPECT_EQ(text(20), "160 ms");
    EXPECT_EQ(text(17), "160 ms");
    EXPECT_EQ(text(70), std::string(sizeof test.interpretationText - 1, 'x') +
                            "\r\n*** ECG Interpretation review performed in Word or an EMR program ***");
    // What was never filled in, and what there is no text for.
    EXPECT_EQ(text(2), "");
    EXPECT_EQ(text(368), "");
}

TEST_F(ReportListing, ExpandsATemplateToItsWholeLength) {
    const struct {
        std::string text;
        std::string expected;
    } rows[] = {
        {"", ""},   {"{%11} was seen", "She was seen"}, {"{%1}{%2}", "AnnaRossi"}, {"{%99} {%5x", "{%99} *x"},
        {"{", "{"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ExpandTemplate(test, row.text), row.expected) << row.text;
    // Each placeholder becomes many times its own length.
    test.SetPatientName("Wolfeschlegelsteinhau", "", "x");
    std::string many, expected;
    for (int i = 0; i < 300; ++i) {
        many += "{%1}";
        expected += "Wolfeschlegelsteinhau";
    }
    EXPECT_EQ(ExpandTemplate(test, many), expected);
}

TEST(OneLine, ShowsWhatIsNotSeen) {
    const struct {
        const char* text;
        const char* line;
    } rows[] = {{"", ""},
                {"a\r\nb", "a\\r\\nb"},
                {"\t", "\\t"},
                {"C:\\new", "C:\\\\new"},
                {"\xE8 e \xB5V", "\xE8 e \xB5V"}};
    for (const auto& row : rows)
        EXPECT_EQ(OneLine(std::string_view(row.text)), row.line) << row.line;
}

TEST(StatementListing, FindsTheCodeBehindTheNumbersOfAStatement) {
    kx::test::TextTable statements;
    statements.texts = {{30005, "Rate > %d."}, {30026, "Axis %d"}, {30132, "Normal"}};
    EXPECT_EQ("30005\tRate > 100.\n30026\tAxis -40\n0\tAxis -\n0\tAxis 4 \n30132\tNormal\n",
              ListStatements("Rate > 100.\r\nAxis -40\r\nAxis -\r\nAxis 4 \r\n\r\nNormal", statements));
}

TEST(Matches, WordsInAnyOrderWithoutCaseAndAccents) {
    const struct {
        const wchar_t* text;
        const wchar_t* filter;
        bool matches;
    } rows[] = {
        {L"Età", L"", true},
        {L"Età", L"  \t", true},
        {L"Età", L"eta", true},
        {L"eta", L"ETÀ", true},
        {L"Velocità di picco", L"pic vel", true},
        {L"Velocità di picco", L"picco nullo", false},
        {L"Ampiezza R (aR, µV)", L"µv", true},
        {L"É Ü ß ÿ", L"u s y e", true},
        {L"× ÷", L"x", false},
        {L"Ampiezza", L"ampiezze", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Matches(row.text, row.filter), row.matches)
            << testing::PrintToString(row.text) << " by " << testing::PrintToString(row.filter);
}

}  // namespace
}  // namespace kxhost
