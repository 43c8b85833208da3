// What the workstation lists and writes of a test: measurements, the report's fields, the table.
#include <map>
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
    set.leads[KX_LEAD_AVL].tOffMarker = 35;
    set.leads[KX_LEAD_V6].stLevel[9] = -109;
    const std::string text = ListMeasurements({"r", std::vector<int>{350, 1350}, 300, set}, false);
    EXPECT_EQ(text.rfind("beat\t350\nbeat\t1350\nrPeak\t300\npDuration\t0\n", 0), 0u) << text;
    for (const char* line : {"rrInterval\t65535", "aVL.tOffMarker\t35", "V6.stLevel9\t-109", "aVR.aR\t0"}) {
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
        KxMeasurementSet& set = episode->measurements;
        set.measured = 1;
        set.prInterval = 160;
        set.leads[KX_LEAD_V6].aQ = -113;
        set.leads[KX_LEAD_V6].aT2 = INT16_MIN;
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
    std::map<int, std::wstring> named;
    std::set<std::wstring> names{L""};
    for (const ReportField& field : ReportFields()) {
        EXPECT_TRUE(named.emplace(field.code, field.name).second) << field.code << " is named twice";
        EXPECT_TRUE(names.insert(field.name).second) << field.code << " has no name, or that of another";
    }
    char text[600];
    for (int code = -100; code <= 10000; ++code) {
        EXPECT_EQ(kx::FieldText(test, code, text, sizeof text, request), named.contains(code)) << code;
    }
    EXPECT_TRUE(named[62] == L"Livello ST, derivazione 15" && named[146] == L"Ampiezza P (aP1, µV), aVR");
    EXPECT_TRUE(named[420] == L"Holter, gruppo 12, intervallo" && named[621] == L"Spirometria, valore 42");
}

TEST_F(Listing, GivesTheWholeTextsOfFieldsAndTemplates) {
    std::memset(test.interpretationText, 'x', sizeof test.interpretationText);
    test.externalReview = 1;
    std::map<int, std::string> text;
    for (const ReportRow& row : ListReport(test, request)) {
        text[row.code] = row.text;
    }
    ASSERT_EQ(text.size(), ReportFields().size());
    EXPECT_EQ(text[1] + text[20] + text[2] + text[368], "Anna Maria Rossi160 ms");
    EXPECT_EQ(text[70], std::string(sizeof test.interpretationText - 1, 'x') +
                            "\r\n*** ECG Interpretation review performed in Word or an EMR program ***");
    test.SetPatientName("Wolfeschlegelsteinhau", "", "x");  // many times the length of its placeholder
    EXPECT_EQ(ExpandTemplate(test, "{%1}{%1}{%1}"), "WolfeschlegelsteinhauWolfeschlegelsteinhauWolfeschlegelsteinhau");
}

TEST_F(Listing, WritesTheTableAsCsvAndTheSameCellsAsHtml) {
    ASSERT_TRUE(WriteTable(test, TableFormat::kCsv, locale, file));
    std::string expected = file.bytes, cells;
    EXPECT_TRUE(expected.starts_with("Deriv;aP1 (uV);aP2 (uV);aQ (uV);aR (uV);aS (uV);aR1 (uV);aS1 (uV);aT1 (uV);aT2 (uV)\r\nI;0;"));
    EXPECT_THAT(expected, HasSubstr("\r\nV6;0;0;-113;0;0;0;0;0;-32768\r\n"));
    ASSERT_TRUE(WriteTable(test, TableFormat::kHtml, locale, file));
    for (std::size_t at = 0; (at = std::min(file.bytes.find("<TH ", at), file.bytes.find("<TD ", at))) != std::string::npos;) {
        at = file.bytes.find('>', file.bytes.find("<FONT", at)) + 1;
        cells += file.bytes.substr(at, file.bytes.find("</FONT>", at) - at) + ";";
    }
    std::replace(expected.begin(), expected.end(), '\n', ';');
    std::erase(expected, '\r');
    EXPECT_EQ(cells, expected);
    file.refuses = true;
    EXPECT_FALSE(WriteTable(test, TableFormat::kCsv, locale, file) || WriteTable(test, TableFormat::kHtml, locale, file));
}

TEST_F(Listing, TheTitleOfTheTableSaysWhoseAndWhenInHtml) {
    const auto hasTitle = [&](const std::string& title) {
        EXPECT_TRUE(WriteTable(test, TableFormat::kHtml, locale, file));
        return file.bytes.find("<CAPTION><B>" + title + "</B>") != std::string::npos;
    };
    std::strcpy(test.patientName, "Ros\"<i>^D'Al\xEC^^");
    EXPECT_TRUE(hasTitle("Ros&quot;&lt;i&gt;, D'Al\xEC "));
    test.SetPatientId("4711");
    test.acquisitionTime = {2024, 31, 5, 4, 13, 0, 59};
    EXPECT_TRUE(hasTitle("4711, 31/05/2024, 13:04, Ros&quot;&lt;i&gt;, D'Al\xEC "));
    test.SetPatientId("&&&&&&&&&&&&&&&");  // 63 characters are the most, and none of the last one is left when it does not fit whole
    EXPECT_TRUE(hasTitle("&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;"));
}

TEST(StatementListing, FindsTheCodeBehindTheNumbersOfAStatement) {
    kx::test::TextTable statements;
    statements.texts = {{30005, "Rate > %d."}, {30026, "Axis %d"}, {30132, "Normal"}};
    EXPECT_EQ("30005\tRate > 100.\n30026\tAxis -40\n0\tAxis -\n0\tAxis 4 \n30132\tNormal\n",
              ListStatements("Rate > 100.\r\nAxis -40\r\nAxis -\r\nAxis 4 \r\n\r\nNormal", statements));
}

}  // namespace
}  // namespace kxhost
