#include "suite/kxsys/report_line.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using namespace kx::sys;

TEST(ReportLine, ATextIsMadeFitForOneLine) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {
        {"", ""},
        {"a", "a"},
        {"  a b  ", "a b"},
        {"File not found.\r\n", "File not found."},
        {"\r\n\t ", ""},
        {"a\tb\x7F"
         "c",
         "a b c"},
        {"a\r\nb", "a  b"},
        {"\xE0 perch\xE9", "\xE0 perch\xE9"},
    };
    for (const auto& row : rows) {
        std::string text = row.text;
        TidyText(text.data());
        EXPECT_STREQ(text.c_str(), row.expected) << row.text;
    }
}

TEST(ReportLine, TimeKindAndTextStandInTheirPlaces) {
    char line[kLineSize];
    const std::size_t length = ComposeLine(line, {2024, 5, 3, 4, 6, 7, 8}, "Sistema", "testo 100%");
    EXPECT_STREQ(line, "2024-05-03 04:06:07.008\tSistema\ttesto 100%");
    EXPECT_EQ(length, std::strlen(line));
}

TEST(ReportLine, ALineThatIsTooLongIsCut) {
    char line[kLineSize];
    const std::string text(2 * kLineSize, 'x');
    const std::size_t length = ComposeLine(line, {2024, 5, 3, 4, 6, 7, 8}, "Sistema", text.c_str());
    EXPECT_EQ(length, kLineSize - 1);
    EXPECT_EQ(std::strlen(line), kLineSize - 1);
}

}  // namespace
