// The statement files that come with the library: well-formed, and their codes can be typed without getting
// in the way.
#include <iterator>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "tests/rig/memory_file.h"

namespace kx::test {
namespace {

struct Statement {
    std::string file, text, code;
};

std::vector<Statement> ReadShipped() {
    std::vector<Statement> all;
    for (const std::string name : {"resting", "stress", "hires", "holter", "abpm", "spiro"}) {
        std::ifstream stream(KX_SOURCE_DIR "/dialogs/statements/files/" + name + ".htm", std::ios::binary);
        MemoryFile file(std::string(std::istreambuf_iterator<char>(stream), {})), written;
        StatementLibrary library;
        EXPECT_TRUE(StatementReader(nullptr).Read(file, library));
        WriteStatements(library, written);
        EXPECT_EQ(written.bytes, file.bytes);  // so no text was cut and nothing stands outside the format
        for (std::size_t i = 0; i < StatementLibrary::kSections * StatementLibrary::kEntries; ++i) {
            const std::size_t section = i / StatementLibrary::kEntries, entry = i % StatementLibrary::kEntries;
            if (!IsHidden(library.Text(section, entry))) {
                all.push_back({name, library.Text(section, entry), library.Code(section, entry)});
            }
        }
        EXPECT_EQ(all.back().file, name) << "it has none";
    }
    return all;
}

TEST(ShippedFiles, HoldSentencesWithCodesThatBeginNothingThatIsWritten) {
    const std::vector<Statement> all = ReadShipped();
    // What cardiologists write, in reports and in the margin: none of it may turn into a statement while it is typed. A number
    // stands where one is often written without a blank.
    std::ifstream written(KX_SOURCE_DIR "/tests/unit/statements/written_words.txt");
    std::vector<std::string> words(std::istream_iterator<std::string>(written), {});
    ASSERT_EQ(words.size(), 398u);
    for (const Statement& statement : all) {
        for (std::size_t at = 0; at < statement.text.size(); at = statement.text.find(' ', at)) {
            at += at > 0 ? 1 : 0;
            words.push_back(statement.text.substr(at));
        }
    }
    for (const Statement& statement : all) {
        EXPECT_TRUE(statement.text.ends_with('.') && statement.text.find("  ") == std::string::npos) << statement.text;
        // A "[" would cut the text when it is inserted from the library's tree; the last three begin two-byte sequences of UTF-8.
        EXPECT_EQ(statement.text.find_first_of("[^<>\r\n\t\xC2\xC3\xE2"), std::string::npos) << statement.text;
        EXPECT_EQ(statement.code.size(), 3u) << statement.text;  // no shorter one begins a longer one
        for (const Statement& other : all) {
            EXPECT_EQ(statement.code == other.code, statement.text == other.text) << statement.text << other.text;
            EXPECT_TRUE(&statement == &other || statement.file != other.file || statement.code != other.code) << statement.code;
        }
        for (const std::string& word : words) {
            EXPECT_FALSE(BeginsWithFolded(word, statement.code)) << statement.code << " in " << word;
        }
    }
}

}  // namespace
}  // namespace kx::test
