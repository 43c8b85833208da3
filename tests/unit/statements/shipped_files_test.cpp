// The statement files that come with the library: well-formed, and their codes can be typed without getting
// in the way.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "dialogs/statements/case_fold.h"
#include "dialogs/statements/statement_matcher.h"
#include "dialogs/statements/statement_reader.h"
#include "dialogs/statements/statement_writer.h"
#include "tests/rig/memory_file.h"

namespace {

using kx::StatementLibrary;

struct Statement {
    std::string text;
    std::string code;
};

class ShippedFile : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        std::ifstream stream(std::string(KX_SOURCE_DIR "/dialogs/statements/files/") + GetParam() + ".htm",
                             std::ios::binary);
        file.bytes.assign(std::istreambuf_iterator<char>(stream), {});
        ASSERT_FALSE(file.bytes.empty());
        ASSERT_TRUE(kx::StatementReader(nullptr).Read(file, library));
        for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
            sections += kx::IsHidden(library.Title(section)) ? 0 : 1;
            for (std::size_t entry = 0; entry < StatementLibrary::kEntries; ++entry) {
                if (!kx::IsHidden(library.Text(section, entry))) {
                    statements.push_back({library.Text(section, entry), library.Code(section, entry)});
                }
            }
        }
    }

    kx::test::MemoryFile file;
    StatementLibrary library;
    std::size_t sections = 0;
    std::vector<Statement> statements;
};

TEST_P(ShippedFile, IsWhatTheLibraryItselfWouldWrite) {
    kx::test::MemoryFile written;
    kx::WriteStatements(library, written);
    EXPECT_EQ(written.bytes, file.bytes);  // so no text was cut and nothing stands outside the format
    const bool resting = GetParam() == std::string("resting");
    EXPECT_GE(sections, resting ? 8u : 4u);
    EXPECT_GE(statements.size(), resting ? 60u : 15u);
}

TEST_P(ShippedFile, HoldsSentencesOfWindows1252) {
    for (const Statement& statement : statements) {
        EXPECT_EQ(statement.text.back(), '.') << statement.text;
        // A "[" would cut the text when it is inserted from the library's tree.
        EXPECT_EQ(statement.text.find_first_of("[^<>\r\n\t"), std::string::npos) << statement.text;
        EXPECT_EQ(statement.text.find("  "), std::string::npos) << statement.text;
        // Two-byte sequences of UTF-8 show as these.
        EXPECT_EQ(statement.text.find_first_of("\xC2\xC3\xE2"), std::string::npos) << statement.text;
    }
}

TEST_P(ShippedFile, HasCodesThatDoNotGetInTheWay) {
    for (const Statement& statement : statements) {
        ASSERT_FALSE(kx::IsHidden(statement.code)) << statement.text;
        for (const Statement& other : statements) {
            if (&other == &statement) {
                continue;
            }
            // The shorter code would be taken before the longer one could be typed.
            EXPECT_FALSE(kx::BeginsWithFolded(other.code, statement.code))
                << other.code << " " << statement.code;
            // No word of a statement may turn into another statement while it is typed.
            for (std::size_t at = 0; at < other.text.size(); at = other.text.find(' ', at)) {
                at += at > 0 ? 1 : 0;
                EXPECT_FALSE(kx::BeginsWithFolded(std::string_view(other.text).substr(at), statement.code))
                    << statement.code << " in " << other.text;
            }
        }
    }
}

TEST_P(ShippedFile, GivesEachStatementByItsCode) {
    kx::StatementMatcher matcher;
    matcher.AddStatements(library, nullptr);
    for (const Statement& statement : statements) {
        ASSERT_TRUE(matcher.Start(0, statement.code)) << statement.code;
        EXPECT_TRUE(matcher.IsExactCode()) << statement.code;
        EXPECT_EQ(matcher.Match(0).text, statement.text);
    }
}

INSTANTIATE_TEST_SUITE_P(TestTypes, ShippedFile,
                         testing::Values("resting", "stress", "hires", "holter", "abpm", "spiro"),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
