#include "lib/html_document.h"

#include "tests/rig/memory_file.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

constexpr char kFont[] = "<FONT style=FONT-SIZE:10pt FACE=\"Arial\" COLOR=#";

std::string Document(const std::string& title, const std::string& headerCells, const std::string& rows) {
    return "<HTML>\r\n<HEAD>\r\n<TITLE>" + title +
           "</TITLE>\r\n</HEAD>\r\n<BODY>\r\n"
           "<TABLE BORDER=1 BGCOLOR=#ffffff CELLSPACING=0><FONT FACE=\"Arial\" COLOR=#000000><CAPTION><B>" +
           title + "</B></CAPTION></FONT>\r\n<THEAD>\r\n<TR>\r\n" + headerCells + "</TR>\r\n</THEAD>\r\n<TBODY>\r\n" + rows +
           "</TBODY>\r\n<TFOOT>\r\n</TFOOT>\r\n</TABLE>\r\n</BODY>\r\n</HTML>\r\n";
}

std::string HeaderCell(const std::string& text) {
    return "<TH BGCOLOR=#c0c0c0 BORDERCOLOR=#000000 >" + (kFont + ("000000>" + text)) + "</FONT></TH>\r\n";
}

class Rows final : public HtmlDocument {
  public:
    using HtmlDocument::HtmlDocument;
    void WriteRows(ByteSink& file) override {
        BeginRow(file);
        Cell(file, "V1 <&> \xE0");
        Cell(file, "-1250", 0x0012AB, 0xFFFF0000);
        Cell(file, nullptr);
        EndRow(file);
    }
};

TEST(HtmlDocument, WritesATableAndTheRowsOfItsDerivedClassAsTheyAre) {
    Rows document(nullptr);
    document.SetTitle("Misure");
    document.AddColumn("Deriv");
    document.AddColumn(nullptr);
    document.AddColumn("aP1 (uV)");
    MemoryFile file("what was there before");
    ASSERT_TRUE(document.WriteDocument(file));
    const std::string font = kFont;
    EXPECT_EQ(file.bytes,
              Document("Misure", HeaderCell("Deriv") + HeaderCell("aP1 (uV)"),
                       "<TR>\r\n<TD BORDERCOLOR=#C0C0C0 >" + font + "000000>V1 <&> \xE0</FONT></TD>\r\n<TD BORDERCOLOR=#0012AB >" + font +
                           "FF0000>-1250</FONT></TD>\r\n<TD BORDERCOLOR=#C0C0C0 >" + font + "000000></FONT></TD>\r\n</TR>\r\n"));
}

TEST(HtmlDocument, KeepsItsLimits) {
    HtmlDocument document(nullptr);
    document.SetTitle(std::string(70, 't').c_str());
    std::string cells;
    for (int column = 0; column < 33; ++column) {
        document.AddColumn("c");
        cells += column < 32 ? HeaderCell("c") : "";
    }
    MemoryFile file;
    ASSERT_TRUE(document.WriteDocument(file));
    EXPECT_EQ(file.bytes, Document(std::string(63, 't'), cells, ""));
    for (const std::size_t length : {1013u, 5000u}) {  // with "\t<P>", "</P>" and line end 1023 characters, and more
        const std::string text(length, 'x');
        file.bytes.clear();
        HtmlDocument::WriteElement(file, "P", text.c_str());
        EXPECT_EQ(file.bytes, ("\t<P>" + text + "</P>\r\n").substr(0, 1023));
    }
}

TEST(HtmlDocument, ReportsAFileThatCannotBeOpenedOnce) {
    RecordedReports log;
    HtmlDocument document(&log);
    MemoryFile file("<P>a</P>");
    ASSERT_TRUE(document.Load(file));
    file.refuses = true;
    EXPECT_FALSE(document.WriteDocument(file));
    EXPECT_FALSE(document.Load(file));
    EXPECT_THAT(log.Take(), testing::ElementsAre("system Could not open HTML file.", "system Could not open HTML file."));
    EXPECT_EQ(document.FindOpenTag(0, "P"), 0u);  // nothing is left of what was loaded before
    EXPECT_FALSE(HtmlDocument(nullptr).Load(file));
}

// Where in the content a search ends; what is read is up to 7 characters, "?" where nothing is copied.
TEST(HtmlDocument, FindsTagsBodiesAndElements) {
    const struct {
        const char* content;
        std::uint32_t from, tag, body, element;
        const char* text;
    } rows[] = {{"<P>abc</P>", 0, 3, 0, 3, "abc"},
                {"<P>abcdefgh</P>", 0, 3, 0, 3, "abcdefg"},
                {"x<P>a</P>", 1, 4, 0, 4, "a"},
                {"x<P>a</P>", 2, 0, 0, 0, "?"},
                {"<P></P>", 0, 3, 0, 0, "?"},
                {"<P>abc", 0, 3, 0, 0, "?"},
                {"abc</P>", 0, 0, 0, 0, "?"},
                {"</P><P>abc</P>", 0, 7, 0, 7, "abc"},
                {"<P>a<P>b</P>", 0, 3, 0, 3, "a<P>b"},
                {"<P>a</P><P>b</P>", 1, 11, 0, 11, "b"},
                {"<P>a</p></P>", 0, 3, 0, 3, "a</p>"},
                {"<p>", 0, 0, 0, 0, "?"},
                {"<P >", 0, 0, 0, 0, "?"},
                {"<<P>", 0, 4, 0, 0, "?"},
                {"<P", 0, 0, 0, 0, "?"},
                {"<PP><P>", 0, 7, 0, 0, "?"},
                {"", 0, 0, 0, 0, "?"},
                {"<P>", 4000000000u, 0, 0, 0, "?"},
                {"<HTML><BODY>x", 0, 0, 12, 0, "?"},
                {"<body>x", 0, 0, 6, 0, "?"},
                {"<body><BODY>x", 0, 0, 12, 0, "?"},
                {"<BODY>x", 1, 0, 0, 0, "?"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.content) + " from " + std::to_string(row.from));
        HtmlDocument document(nullptr);
        MemoryFile file(row.content);
        ASSERT_TRUE(document.Load(file));
        EXPECT_EQ(document.FindOpenTag(row.from, "P"), row.tag);
        EXPECT_EQ(document.FindBody(row.from), row.body);
        char buffer[8] = "?";
        EXPECT_EQ(document.ReadElement(row.from, "P", buffer, sizeof buffer), row.element);
        EXPECT_STREQ(buffer, row.text);
        EXPECT_EQ(document.ReadElement(row.from, "P", nullptr, 8), row.element);
        EXPECT_EQ(document.ReadElement(row.from, "P", buffer, 0), row.element);
    }
}

}  // namespace
}  // namespace kx::test
