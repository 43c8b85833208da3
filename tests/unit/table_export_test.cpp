#include "host/report/table_export.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <utility>
#include <vector>

#include "lib/dbclient/test_record.h"
#include "lib/html_document.h"
#include "tests/rig/memory_file.h"
#include "tests/unit/picture_locale.h"

namespace kxhost {
namespace {

using kx::test::MemoryFile;

class TableExport : public testing::Test {
  protected:
    TableExport() {
        kx::EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
        for (int lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
            KxLeadMeasurements& block = episode->measurements.leads[lead];
            block.aP1 = static_cast<int16_t>(1 + 10 * lead);
            block.aP2 = static_cast<int16_t>(2 + 10 * lead);
            block.aQ = static_cast<int16_t>(-3 - 10 * lead);
            block.aR = static_cast<int16_t>(4 + 10 * lead);
            block.aS = static_cast<int16_t>(-5 - 10 * lead);
            block.aR1 = static_cast<int16_t>(6 + 10 * lead);
            block.aS1 = static_cast<int16_t>(-7 - 10 * lead);
            block.aT1 = static_cast<int16_t>(8 + 10 * lead);
            block.aT2 = INT16_MIN;
        }
        test.SetPatientId("4711");
        test.acquisitionTime = {2024, 31, 5, 4, 13, 0, 59};
    }
    std::string Written(TableFormat format) {
        EXPECT_TRUE(WriteTable(test, format, locale, file));
        return file.bytes;
    }
    // The content of every element, in order.
    std::vector<std::string> Elements(const char* open, const char* close) const {
        std::vector<std::string> found;
        for (std::size_t at = 0; (at = file.bytes.find(open, at)) != std::string::npos;) {
            at = file.bytes.find('>', file.bytes.find("<FONT", at)) + 1;
            found.push_back(file.bytes.substr(at, file.bytes.find(close, at) - at));
        }
        return found;
    }

    kx::TestRecord test;
    kx::test::PictureLocale locale = kx::test::Italian();
    MemoryFile file{"what was there before"};
};

TEST_F(TableExport, ACsvFileHasARowForEachLead) {
    const std::string text = Written(TableFormat::kCsv);
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "Deriv;aP1 (uV);aP2 (uV);aQ (uV);aR (uV);aS (uV);aR1 (uV);aS1 (uV);aT1 (uV);aT2 (uV)\r");
    std::getline(lines, line);
    EXPECT_EQ(line, "I;1;2;-3;4;-5;6;-7;8;-32768\r");
    int rows = 1;
    for (std::string next; std::getline(lines, next); ++rows)
        line = next;
    EXPECT_EQ(rows, KX_STANDARD_LEADS);
    EXPECT_EQ(line, "V6;111;112;-113;114;-115;116;-117;118;-32768\r");
}

TEST_F(TableExport, AnHtmlFileHasTheSameCells) {
    const std::string csv = Written(TableFormat::kCsv);
    MemoryFile kept(csv);
    Written(TableFormat::kHtml);
    std::vector<std::string> cells = Elements("<TH ", "</FONT>");
    const std::vector<std::string> body = Elements("<TD ", "</FONT>");
    cells.insert(cells.end(), body.begin(), body.end());
    std::vector<std::string> expected;
    std::string cell;
    for (const char c : kept.bytes) {
        if (c == ';' || c == '\n')
            expected.push_back(std::exchange(cell, {}));
        else if (c != '\r')
            cell += c;
    }
    EXPECT_EQ(cells, expected);
}

TEST_F(TableExport, TheTitleSaysWhoseAndWhen) {
    const struct {
        const char* id;
        const char* name;  // last^first^middle^
        bool dated;
        const char* title;
    } rows[] = {
        {"4711", "Rossi^Anna^^", true, "4711, 31/05/2024, 13:04, Rossi, Anna"},
        {"4711", "", true, "4711, 31/05/2024, 13:04"},
        {"", "Rossi^Anna^^", false, "Rossi, Anna"},
        {"", "", false, ""},
        {"<b>&\"", "D'Al\xEC^^^", false, "&lt;b&gt;&amp;&quot;, D'Al\xEC"},
        // 63 characters are the most, and none of the last one is left when it does not fit whole.
        {"&&&&&&&&&&&&&&&", "", false, "&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;&amp;"},
    };
    for (const auto& row : rows) {
        test.SetPatientId(row.id);
        std::strcpy(test.patientName, row.name);
        test.acquisitionTime.year = row.dated ? 2024 : 0;
        Written(TableFormat::kHtml);
        kx::HtmlDocument document(nullptr);
        ASSERT_TRUE(document.Load(file));
        char title[200] = {};
        document.ReadElement(0, "TITLE", title, sizeof title);
        EXPECT_EQ(std::string(title).substr(0, std::strlen(row.title)), row.title);
        EXPECT_LE(std::strlen(title), 63u);
        EXPECT_NE(file.bytes.find("<CAPTION><B>" + std::string(title) + "</B>"), std::string::npos);
    }
}

TEST_F(TableExport, ARefusedFileIsAFailure) {
    file.refuses = true;
    for (const TableFormat format : {TableFormat::kCsv, TableFormat::kHtml})
        EXPECT_FALSE(WriteTable(test, format, locale, file));
    EXPECT_EQ(file.bytes, "what was there before");
}

TEST(TableFormatOf, TheExtension) {
    const struct {
        const char* file;
        std::optional<TableFormat> format;
    } rows[] = {
        {"a.csv", TableFormat::kCsv},
        {"C:\\a b\\\xC3\xA8.CSV", TableFormat::kCsv},
        {"a.html", TableFormat::kHtml},
        {"a.Htm", TableFormat::kHtml},
        {"a.csv.html", TableFormat::kHtml},
        {".csv", std::nullopt},
        {"csv", std::nullopt},
        {"a.txt", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& row : rows)
        EXPECT_EQ(TableFormatOf(row.file), row.format) << row.file;
}

}  // namespace
}  // namespace kxhost
