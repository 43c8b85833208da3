// What the workstation lists and writes of a test: measurements, the report's fields, the table.
#include <set>

#include "host/report/measurement_listing.h"
#include "host/report/report_fields.h"
#include "host/report/report_listing.h"
#include "host/report/statement_listing.h"
#include "host/report/table_export.h"
#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"
#include "tests/rig/memory_file.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/records/text_table.h"

namespace kxhost {
namespace {

using kx::test::MemoryFile;
using testing::HasSubstr;

TEST(MeasurementListing, HasALineForEveryValue) {
    KxMeasurementSet set{};
    set.rrInterval = 65535;
    set.tAxis = -32768;
    set.leads[KX_LEAD_I].tOff = 5;
    set.leads[KX_LEAD_AVL].aR1 = 16;
    set.leads[KX_LEAD_AVL].tOffMarker = 35;
    set.leads[KX_LEAD_V6].stLevel[9] = -109;
    const std::string text = ListMeasurements({"r", std::vector<int>{350, 1350}, 300, set}, false);
    EXPECT_EQ(text.rfind("beat\t350\nbeat\t1350\nrPeak\t300\npDuration\t0\n", 0), 0u) << text;
    for (const char* line :
         {"rrInterval\t65535", "tAxis\t-32768", "tOff\t5", "aVL.aR1\t16", "aVL.tOffMarker\t35", "V6.stLevel9\t-109", "aVR.aR\t0"}) {
        EXPECT_THAT(text, HasSubstr("\n" + std::string(line) + "\n"));
    }
    // Beats, the alignment point, global values, fiducial points, 25 values and ten ST levels a lead.
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2 + 1 + 10 + 5 + 12 * (25 + 10));
}

// A test of which every family of fields has something: a measured beat over the whole time, and an event.
class Listing : public testing::Test {
  protected:
    Listing() {
        kx::EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
        episode->SetEndTimeMs(60000);
        episode->durationSeconds = 60;
        episode->measurements.measured = 1;
        episode->measurements.prInterval = 160;
        episode->measurements.leads[KX_LEAD_V6].aQ = -113;
        episode->measurements.leads[KX_LEAD_V6].aT2 = INT16_MIN;
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
    MemoryFile file{"what was there before"};
};

TEST_F(Listing, NamesEveryCodeThatTheReportKnowsAndNoOther) {
    std::set<int> named;
    std::set<std::wstring> names{L""};
    for (const ReportField& field : ReportFields()) {
        EXPECT_TRUE(named.insert(field.code).second) << field.code << " is named twice";
        EXPECT_TRUE(names.insert(field.name).second) << field.code << " has no name, or that of another";
    }
    char text[600];
    for (int code = -100; code <= 10000; ++code) {
        EXPECT_EQ(kx::FieldText(test, code, text, sizeof text, request), named.contains(code)) << code;
    }
    const std::pair<int, const wchar_t*> rows[] = {{48, L"Livello ST, I"},
                                                   {62, L"Livello ST, derivazione 15"},
                                                   {63, L"Condizione clinica 1"},
                                                   {146, L"Ampiezza P (aP1, µV), aVR"},
                                                   {420, L"Holter, gruppo 12, intervallo"},
                                                   {621, L"Spirometria, valore 42"}};
    for (const auto& [code, name] : rows) {
        EXPECT_TRUE(std::any_of(ReportFields().begin(), ReportFields().end(), [c = code, n = name](const ReportField& f) {
            return f.code == c && f.name == n;
        })) << code;
    }
}

TEST_F(Listing, GivesTheWholeTextsOfFieldsAndTemplates) {
    std::memset(test.interpretationText, 'x', sizeof test.interpretationText);
    test.externalReview = 1;
    const auto rows = ListReport(test, request);
    const auto text = [&](int code) {
        return std::find_if(rows.begin(), rows.end(), [code](const ReportRow& row) { return row.code == code; })->text;
    };
    ASSERT_EQ(rows.size(), ReportFields().size());
    EXPECT_EQ(text(1) + text(20) + text(2) + text(368), "Anna Maria Rossi160 ms");
    EXPECT_EQ(text(70), std::string(sizeof test.interpretationText - 1, 'x') +
                            "\r\n*** ECG Interpretation review performed in Word or an EMR program ***");
    EXPECT_EQ(ExpandTemplate(test, "{%11} {%1}{%2} {%99} {%5x {"), "She AnnaRossi {%99} *x {");
    test.SetPatientName("Wolfeschlegelsteinhau", "", "x");  // many times the length of its placeholder
    std::string many, expected;
    for (int i = 0; i < 300; ++i) {
        many += "{%1}";
        expected += "Wolfeschlegelsteinhau";
    }
    EXPECT_EQ(ExpandTemplate(test, many), expected);
}

TEST_F(Listing, WritesTheTableAsCsvAndTheSameCellsAsHtml) {
    ASSERT_TRUE(WriteTable(test, TableFormat::kCsv, locale, file));
    const std::string csv = file.bytes;
    EXPECT_EQ(csv.rfind("Deriv;aP1 (uV);aP2 (uV);aQ (uV);aR (uV);aS (uV);aR1 (uV);aS1 (uV);aT1 (uV);aT2 (uV)\r\nI;0;", 0), 0u);
    EXPECT_THAT(csv, HasSubstr("\r\nV6;0;0;-113;0;0;0;0;0;-32768\r\n"));
    ASSERT_TRUE(WriteTable(test, TableFormat::kHtml, locale, file));
    std::string cells;
    for (std::size_t at = 0; (at = std::min(file.bytes.find("<TH ", at), file.bytes.find("<TD ", at))) != std::string::npos;) {
        at = file.bytes.find('>', file.bytes.find("<FONT", at)) + 1;
        cells += file.bytes.substr(at, file.bytes.find("</FONT>", at) - at) + ";";
    }
    std::string expected = csv;
    std::replace(expected.begin(), expected.end(), '\n', ';');
    std::erase(expected, '\r');
    EXPECT_EQ(cells, expected);
    file.refuses = true;
    EXPECT_FALSE(WriteTable(test, TableFormat::kCsv, locale, file) || WriteTable(test, TableFormat::kHtml, locale, file));
}

TEST_F(Listing, TheTitleOfTheTableSaysWhoseAndWhen) {
    const struct {
        const char *id, *name;  // last^first^middle^
        bool dated;
        const char* title;
    } rows[] = {{"4711", "Rossi^Anna^^", true, "4711, 31/05/2024, 13:04, Rossi, Anna "},
                {"", "Rossi^Anna^^", false, "Rossi, Anna "},
                {"", "", false, ""},
                {"<b>&\"", "D'Al\xEC^^^", false, "&lt;b&gt;&amp;&quot;, D'Al\xEC,  "},
                // 63 characters are the most, and none of the last one is left when it does not fit whole.
                {"&&&&&&&&&&&&&&&", "", false, "&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;"}};
    for (const auto& row : rows) {
        test.SetPatientId(row.id);
        std::strcpy(test.patientName, row.name);
        test.acquisitionTime = {static_cast<std::int16_t>(row.dated ? 2024 : 0), 31, 5, 4, 13, 0, 59};
        ASSERT_TRUE(WriteTable(test, TableFormat::kHtml, locale, file));
        EXPECT_TRUE(file.bytes.find("<TITLE>" + std::string(row.title) + "</TITLE>") != std::string::npos) << row.title;
        EXPECT_TRUE(file.bytes.find("<CAPTION><B>" + std::string(row.title) + "</B>") != std::string::npos) << row.title;
    }
}

TEST(StatementListing, FindsTheCodeBehindTheNumbersOfAStatement) {
    kx::test::TextTable statements;
    statements.texts = {{30005, "Rate > %d."}, {30026, "Axis %d"}, {30132, "Normal"}};
    EXPECT_EQ("30005\tRate > 100.\n30026\tAxis -40\n0\tAxis -\n0\tAxis 4 \n30132\tNormal\n",
              ListStatements("Rate > 100.\r\nAxis -40\r\nAxis -\r\nAxis 4 \r\n\r\nNormal", statements));
}

TEST(OneLine, ShowsWhatIsNotSeen) { EXPECT_EQ(OneLine(std::string_view("a\r\nb\tC:\\new \xE8")), "a\\r\\nb\\tC:\\\\new \xE8"); }

TEST(Matches, WordsInAnyOrderWithoutCaseAndAccents) {
    const struct {
        const wchar_t *text, *filter;
        bool matches;
    } rows[] = {{L"Età", L"  \t", true},
                {L"Età", L"eta", true},
                {L"eta", L"ETÀ", true},
                {L"Velocità di picco", L"pic vel", true},
                {L"Velocità di picco", L"picco nullo", false},
                {L"É Ü ß ÿ", L"u s y e", true},
                {L"× ÷", L"x", false},
                {L"Ampiezza", L"ampiezze", false}};
    for (const auto& row : rows) {
        EXPECT_EQ(Matches(row.text, row.filter), row.matches)
            << testing::PrintToString(row.text) << " by " << testing::PrintToString(row.filter);
    }
}

}  // namespace
}  // namespace kxhost
