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

// The beginnings of the first two sections.
std::string Described(const StatementLibrary& library) {
    std::string all;
    for (const std::size_t section : {0u, 1u}) {
        all += library.Title(section) + ":"s;
        for (const std::size_t entry : {0u, 1u}) {
            all += " "s + library.Text(section, entry) + "[" + library.Code(section, entry) + "]";
        }
        all += section == 0 ? "; " : "";
    }
    return all;
}

TEST(StatementReader, ReadsTheFormatAndWhatIsLeftOfIt) {
    const std::string longText(600, 't'), cut(127, 't'), none = "X: X[X] X[X]";
    const auto read = [](const std::string& body) {
        StatementLibrary library;
        Read("<BODY>" + body, library);
        return Described(library);
    };
    EXPECT_EQ(read("\r\n\t<H1>A</H1>\r\n\t<P>uno^1</P>\r\n\t<P>due</P>\r\n\t<H1>B</H1>\r\n</BODY>"), "A: uno[1] due[X]; B: X[X] X[X]");
    EXPECT_EQ(read("<P>uno</P><H1>A</H1><P>due</P>"), "A: due[X] X[X]; " + none) << "statements before the first title";
    EXPECT_EQ(read("<H1>A</H1><P>uno^12^34</P><P>^12345</P>"), "A: uno[12] X[123]; " + none) << "further circumflexes and characters";
    EXPECT_EQ(read("<H1></H1><P>uno</P><H1>B</H1><P></P><P>due^X</P>"), "X: uno[X] X[X]; B: X[X] due[X]")
        << "empty elements keep their place";
    EXPECT_EQ(read("<H1>A</H1><P>uno</P><H1>B<P>due</P>"), "A: uno[X] X[X]; " + none) << "a title that is not closed ends the file";
    EXPECT_EQ(read("<H1>A</H1><P>uno<H1>B</H1><P>due</P><P>tre</P>"), "A: uno<H1>B</H1><P>due[X] X[X]; B: due[X] tre[X]")
        << "a statement that is closed too late does not cost the next section";
    EXPECT_EQ(read("<H1>\xC8</H1><P>pi\xF9 &egrave;\r\n x</P>"), "\xC8: pi\xF9 &egrave;\r\n x[X] X[X]; " + none) << "bytes as they are";
    EXPECT_EQ(read("<H1>A\0B</H1><P>uno\0due^1\0</P>"s), "A: uno[1] X[X]; " + none) << "up to a zero byte";
    EXPECT_EQ(read("<H1>" + longText + "</H1><P>" + longText + "</P><P>due</P>"), cut + ": " + cut + "[X] due[X]; " + none);
    EXPECT_EQ(read("<H1>A</H1><P>" + longText.substr(0, 509) + "^1</P><P>" + longText.substr(0, 511) + "^1</P>"),
              "A: " + cut + "[1] " + cut + "[X]; " + none)
        << "a code within the first 511 bytes";
    StatementLibrary library;
    Read("<body><H1>A</H1><BODY><H1>B</H1>", library);
    EXPECT_STREQ(library.Title(0), "B") << "the large body is the one, also behind a small one";
    Read("<body><H1>A</H1><h1>B</h1>", library);
    EXPECT_EQ(Described(library), "A: X[X] X[X]; " + none) << "it replaces what the library held; small tags are none";
    RecordedReports log;
    MemoryFile missing;
    missing.refuses = true;
    EXPECT_FALSE(StatementReader(&log).Read(missing, library) || StatementReader(nullptr).Read(missing, library));
    EXPECT_EQ(Described(library), none + "; " + none);
    EXPECT_THAT(log.Take(), testing::ElementsAre("oem interp 299 no read"));
}

TEST(StatementWriter, WritesTheFileByteForByte) {
    StatementLibrary library;
    library.SetTitle(0, "Ritmo");
    library.SetEntry(0, 0, "Ritmo sinusale", "rs");
    library.SetEntry(0, 5, "Attivit\xE0 ectopica", "");
    library.SetCode(0, 6, "zz");
    library.SetText(1, 0, "senza titolo");
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
    StatementLibrary library, again;
    for (int i = 0; i < 3000; ++i) {
        const std::string title = "t" + some(4), text = "x" + some(5), code = some(3).substr(0, 3);
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
