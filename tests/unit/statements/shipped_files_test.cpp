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
    std::string file;
    std::string text;
    std::string code;
};

std::vector<Statement> Statements(const std::string& file, const StatementLibrary& library) {
    std::vector<Statement> statements;
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
            if (!IsHidden(library.Text(section, entry))) {
                statements.push_back({file, library.Text(section, entry), library.Code(section, entry)});
            }
        }
    }
    return statements;
}

class ShippedFiles : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"resting", "stress", "hires", "holter", "abpm", "spiro"}) {
            std::ifstream stream(std::string(KX_SOURCE_DIR "/dialogs/statements/files/") + name + ".htm", std::ios::binary);
            MemoryFile file(std::string(std::istreambuf_iterator<char>(stream), {}));
            StatementLibrary library;
            ASSERT_TRUE(StatementReader(nullptr).Read(file, library));
            const std::vector<Statement> read = Statements(name, library);
            ASSERT_GE(read.size(), 15u) << name;
            all.insert(all.end(), read.begin(), read.end());
            MemoryFile written;
            WriteStatements(library, written);
            EXPECT_EQ(written.bytes, file.bytes);  // so no text was cut and nothing stands outside the format
        }
    }

    std::vector<Statement> all;
};

TEST_F(ShippedFiles, HoldSentencesOfWindows1252) {
    for (const Statement& statement : all) {
        EXPECT_EQ(statement.text.back(), '.') << statement.text;
        // A "[" would cut the text when it is inserted from the library's tree.
        EXPECT_EQ(statement.text.find_first_of("[^<>\r\n\t"), std::string::npos) << statement.text;
        EXPECT_EQ(statement.text.find("  "), std::string::npos) << statement.text;
        // Two-byte sequences of UTF-8 show as these.
        EXPECT_EQ(statement.text.find_first_of("\xC2\xC3\xE2"), std::string::npos) << statement.text;
    }
}

TEST_F(ShippedFiles, HaveOneCodeForOneStatement) {
    for (const Statement& statement : all) {
        EXPECT_EQ(statement.code.size(), 3u) << statement.text;  // no shorter one begins a longer one
        for (const Statement& other : all) {
            EXPECT_EQ(statement.code == other.code, statement.text == other.text) << statement.text << other.text;
            EXPECT_TRUE(&statement == &other || statement.file != other.file || statement.code != other.code)
                << statement.code << " twice in " << statement.file;
        }
    }
}

TEST_F(ShippedFiles, HaveCodesThatBeginNothingThatIsWritten) {
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
        for (const std::string& word : words) {
            EXPECT_FALSE(BeginsWithFolded(word, statement.code)) << statement.code << " in " << word;
        }
    }
}

}  // namespace
}  // namespace kx::test
