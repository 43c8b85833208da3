#include "dialogs/statements/statement_reader.h"

#include <random>

#include "dialogs/statements/statement_writer.h"
#include "tests/rig/memory_file.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

using namespace std::string_literals;

void Read(const std::string& content, StatementLibrary& library) {
    MemoryFile file(content);
    ASSERT_TRUE(StatementReader(nullptr).Read(file, library));
}

// One line: "title: text[code], text; title: ...", hidden sections left out, hidden entries as "X".
std::string Described(const StatementLibrary& library) {
    std::string all;
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        std::string entries;
        std::size_t gap = 0;
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            const std::string text = library.Text(section, entry);
            const std::string code = library.Code(section, entry);
            if (text == "X" && code == "X") {
                ++gap;
                continue;
            }
            for (; gap > 0; --gap) {
                entries += " X";
            }
            entries += " " + text + (code != "X" ? "[" + code + "]" : "");
        }
        if (library.Title(section) != "X"s || !entries.empty()) {
            all += (all.empty() ? "" : "; ") + std::to_string(section) + " " + library.Title(section) + ":" + entries;
        }
    }
    return all;
}

TEST(StatementReader, ReadsTheFormatAndWhatIsLeftOfIt) {
    const std::string longText(600, 't');
    const struct {
        const char* row;
        std::string content;
        std::string expected;
    } rows[] = {{"sections, statements, codes", "<BODY>\r\n\t<H1>A</H1>\r\n\t<P>uno^1</P>\r\n\t<P>due</P>\r\n\t<H1>B</H1>\r\n</BODY>",
                 "0 A: uno[1] due; 1 B:"},
                {"a small body", "<body><H1>A</H1><P>uno</P>", "0 A: uno"},
                {"the large body is the one, also behind a small one", "<body><H1>A</H1><BODY><H1>B</H1>", "0 B:"},
                {"no body", "<H1>A</H1><P>uno</P>", ""},
                {"a body alone", "<BODY>", ""},
                {"statements before the first title", "<BODY><P>uno</P><H1>A</H1><P>due</P>", "0 A: due"},
                {"the code ends at a further circumflex", "<BODY><H1>A</H1><P>uno^12^34</P>", "0 A: uno[12]"},
                {"a code is cut at three characters", "<BODY><H1>A</H1><P>uno^12345</P>", "0 A: uno[123]"},
                {"a statement of a code alone", "<BODY><H1>A</H1><P>^12</P><P>due</P>", "0 A: X[12] due"},
                {"hidden by an X", "<BODY><H1>X</H1><P>uno</P><H1>B</H1><P>X</P><P>due^X</P>", "0 X: uno; 1 B: X due"},
                {"empty elements keep their place", "<BODY><H1></H1><P>uno</P><H1>B</H1><P></P><P>due</P>", "0 X: uno; 1 B: X due"},
                {"small tags are none", "<BODY><h1>A</h1><H1>B</H1><p>uno</p><P>due</P>", "0 B: due"},
                {"a title that is not closed ends the file", "<BODY><H1>A</H1><P>uno</P><H1>B<P>due</P>", "0 A: uno"},
                {"a statement that is closed too late does not cost the next section",
                 "<BODY><H1>A</H1><P>uno<H1>B</H1><P>due</P><P>tre</P>", "0 A: uno<H1>B</H1><P>due; 1 B: due tre"},
                {"other tags are part of the text or between", "<BODY><HR><H1>A <B>b</B></H1><BR><P>uno <I>x</I></P>",
                 "0 A <B>b</B>: uno <I>x</I>"},
                {"bytes as they are, line ends in a statement too", "<BODY><H1>\xC8</H1><P>pi\xF9 &egrave;\r\n x</P>",
                 "0 \xC8: pi\xF9 &egrave;\r\n x"},
                {"up to a zero byte", "<BODY><H1>A\0B</H1><P>uno\0due^1\0</P>"s, "0 A: uno[1]"},
                {"cut at 127 characters", "<BODY><H1>" + longText + "</H1><P>" + longText + "</P><P>due</P>",
                 "0 " + longText.substr(0, 127) + ": " + longText.substr(0, 127) + " due"},
                {"a code within the first 511 bytes", "<BODY><H1>A</H1><P>" + longText.substr(0, 509) + "^1</P>",
                 "0 A: " + longText.substr(0, 127) + "[1]"},
                {"a code behind them", "<BODY><H1>A</H1><P>" + longText.substr(0, 511) + "^1</P>", "0 A: " + longText.substr(0, 127)}};
    for (const auto& row : rows) {
        StatementLibrary library;
        Read(row.content, library);
        EXPECT_EQ(Described(library), row.expected) << row.row;
    }
}

TEST(StatementReader, ReadsTheFirst48SectionsOf64Statements) {
    std::string content = "<BODY>";
    for (int section = 0; section < 50; ++section) {
        content += "<H1>s" + std::to_string(section) + "</H1>";
        for (int entry = 0; entry < 70; ++entry) {
            content += "<P>e" + std::to_string(entry) + "</P>";
        }
    }
    StatementLibrary library;
    Read(content, library);
    EXPECT_EQ(std::string(library.Title(47)) + library.Text(47, 63) + library.Text(47, 64) + library.Title(48), "s47e63XX");
}

TEST(StatementReader, ReadsLargeAndHostileFilesInOnePass) {
    constexpr std::size_t kSize = 10u << 20;
    const auto repeated = [](const char* piece) {
        std::string content = "<BODY>";
        while (content.size() < kSize) {
            content += piece;
        }
        return content;
    };
    const struct {
        const char* row;
        std::string content;
        const char* expected;
    } rows[] = {{"titles that are never closed", repeated("<H1>"), ""},
                {"closed far away", repeated("<H1>a</H1><P>") + "</P>", nullptr},
                {"statements that are never closed", "<BODY><H1>A</H1>" + repeated("<P>"), "0 A:"},
                {"a line of 10 MB", "<BODY><H1>A</H1><P>" + std::string(kSize, 'x') + "</P><P>due</P>", nullptr},
                {"zero bytes", "<BODY><H1>A</H1>" + std::string(kSize, '\0') + "<P>uno</P>", "0 A: uno"}};
    for (const auto& row : rows) {
        StatementLibrary library;
        Read(row.content, library);
        if (row.expected != nullptr) {
            EXPECT_EQ(Described(library), row.expected) << row.row;
        }
    }
}

TEST(StatementReader, ReplacesWhatTheLibraryHeld) {
    StatementLibrary library;
    Read("<BODY><H1>A</H1><P>uno^1</P><H1>B</H1>", library);
    Read("<BODY><H1>C</H1>", library);
    EXPECT_EQ(Described(library), "0 C:");

    RecordedReports log;
    MemoryFile missing;
    missing.refuses = true;
    EXPECT_FALSE(StatementReader(&log).Read(missing, library));
    EXPECT_EQ(Described(library), "");
    EXPECT_THAT(log.Take(), testing::ElementsAre("oem interp 299 no read"));
    EXPECT_FALSE(StatementReader(nullptr).Read(missing, library));
}

TEST(StatementLibrary, CutsTextsAndIgnoresForeignIndices) {
    StatementLibrary library;
    library.SetTitle(0, std::string(200, 't'));
    library.SetText(47, 63, std::string(200, 'x'));
    library.SetCode(47, 63, "12345");
    library.SetTitle(48, "t");
    library.SetText(48, 0, "t");
    library.SetText(0, 64, "t");
    library.SetCode(0, 64, "t");
    EXPECT_EQ(library.Title(0), std::string(127, 't'));
    EXPECT_EQ(library.Text(47, 63), std::string(127, 'x'));
    EXPECT_STREQ(library.Code(47, 63), "123");
    EXPECT_STREQ(library.Title(48), "X");
    EXPECT_STREQ(library.Text(0, 64), "X");
    EXPECT_STREQ(library.Code(48, 0), "X");
}

TEST(StatementWriter, WritesTheFileByteForByte) {
    StatementLibrary library;
    library.SetTitle(0, "Ritmo");
    library.SetText(0, 0, "Ritmo sinusale");
    library.SetCode(0, 0, "rs");
    library.SetText(0, 1, "X");
    library.SetText(0, 5, "Attivit\xE0 ectopica");
    library.SetCode(0, 6, "zz");
    library.SetText(1, 0, "senza titolo");
    library.SetTitle(2, "X");
    library.SetTitle(47, "Ultima");
    MemoryFile file;
    WriteStatements(library, file);
    EXPECT_EQ(file.bytes,
              "<HEAD>\r\n<TITLE>Physician Dictionary</TITLE>\r\n</HEAD>\r\n<BODY>\r\n\t<H1>Ritmo</H1>\r\n"
              "\t<P>Ritmo sinusale^rs</P>\r\n\t<P>Attivit\xE0 ectopica</P>\r\n\t<H1>Ultima</H1>\r\n</BODY>\r\n");
}

// A text without a mark of the format is read back as it is, whatever else is in it, and one with a mark is not.
TEST(StatementWriter, KnowsWhatWouldBeReadAsSomethingElse) {
    constexpr const char* kPieces[] = {"^", "<", ">", "P", "/", "H1", "</P>", "<P>", "<H1>", "</H1>", "<BODY>", "a", " "};
    std::mt19937 random(1);
    const auto some = [&](std::size_t most) {
        std::string text;
        for (auto count = random() % (most + 1); count > 0; --count) {
            text += kPieces[random() % std::size(kPieces)];
        }
        return text;
    };
    StatementLibrary library;
    StatementLibrary again;
    for (int i = 0; i < 3000; ++i) {
        const std::string title = "t" + some(4);
        const std::string text = "x" + some(5);
        const std::string code = some(3).substr(0, 3);
        library.SetTitle(0, title);
        library.SetEntry(0, 0, text, code);
        library.SetTitle(1, "B");
        library.SetEntry(1, 0, "due", "2");
        MemoryFile file;
        WriteStatements(library, file);
        Read(file.bytes, again);
        const bool same = again.Title(0) == title && again.Text(0, 0) == text && again.Title(1) == "B"s &&
                          again.Code(0, 0) == std::string(library.Code(0, 0)) && again.Text(1, 0) == "due"s && IsHidden(again.Text(0, 1)) &&
                          IsHidden(again.Text(1, 1)) && IsHidden(again.Title(2));
        const bool marked = !FormatMark(title, StatementPart::kTitle).empty() || !FormatMark(text, StatementPart::kText).empty() ||
                            !FormatMark(code, StatementPart::kCode).empty();
        EXPECT_EQ(same, !marked) << title << " | " << text << " | " << code;
    }
}

}  // namespace
}  // namespace kx::test
