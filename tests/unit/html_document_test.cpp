#include "lib/html_document.h"

#include "tests/rig/memory_file.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

using namespace std::string_literals;

constexpr char kFont[] = "<FONT style=FONT-SIZE:10pt FACE=\"Arial\" COLOR=#";

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

TEST(HtmlDocument, WritesATableWithinItsLimitsAndTheRowsOfItsDerivedClassAsTheyAre) {
    RecordedReports log;
    Rows document(&log);
    document.SetTitle(std::string(70, 't').c_str());
    document.AddColumn(nullptr);
    std::string cells;
    for (int column = 0; column < 33; ++column) {
        document.AddColumn("aP1 (uV)");
        cells += column < 32 ? "<TH BGCOLOR=#c0c0c0 BORDERCOLOR=#000000 >"s + kFont + "000000>aP1 (uV)</FONT></TH>\r\n" : "";
    }
    MemoryFile file("what was there before"), loaded("<P>a</P>");
    ASSERT_TRUE(document.WriteDocument(file) && document.Load(loaded));
    const std::string title(63, 't');
    const auto cell = [](const char* border, const char* text) {
        return "<TD BORDERCOLOR=#"s + border + " >" + kFont + text + "</FONT></TD>\r\n";
    };
    EXPECT_EQ(file.bytes, "<HTML>\r\n<HEAD>\r\n<TITLE>" + title +
                              "</TITLE>\r\n</HEAD>\r\n<BODY>\r\n"
                              "<TABLE BORDER=1 BGCOLOR=#ffffff CELLSPACING=0><FONT FACE=\"Arial\" COLOR=#000000><CAPTION><B>" +
                              title + "</B></CAPTION></FONT>\r\n<THEAD>\r\n<TR>\r\n" + cells + "</TR>\r\n</THEAD>\r\n<TBODY>\r\n<TR>\r\n" +
                              cell("C0C0C0", "000000>V1 <&> \xE0") + cell("0012AB", "FF0000>-1250") + cell("C0C0C0", "000000>") +
                              "</TR>\r\n</TBODY>\r\n<TFOOT>\r\n</TFOOT>\r\n</TABLE>\r\n</BODY>\r\n</HTML>\r\n");
    for (const std::size_t length : {1013u, 5000u}) {  // with "\t<P>", "</P>" and line end 1023 characters, and more
        const std::string text(length, 'x');
        file.bytes.clear();
        HtmlDocument::WriteElement(file, "P", text.c_str());
        EXPECT_EQ(file.bytes, ("\t<P>" + text + "</P>\r\n").substr(0, 1023));
    }
    file.refuses = true;
    EXPECT_FALSE(document.WriteDocument(file) || document.Load(file) || HtmlDocument(nullptr).Load(file));
    EXPECT_THAT(log.Take(), testing::ElementsAre("system Could not open HTML file.", "system Could not open HTML file."));
    EXPECT_EQ(document.FindOpenTag(0, "P"), 0u);  // nothing is left of what was loaded before
}

}  // namespace
}  // namespace kx::test
