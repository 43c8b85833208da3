#include "lib/fileutil.h"

namespace kx::test {
namespace {

using namespace std::string_literals;

using Names = char[kNamesSize];

TEST(FileNameAt, FindsTheFileInEveryFormOfTheNamesBuffer) {
    const std::string deep = "C:\\" + std::string(250, 'd');
    const std::string deepest = deep + "\\a";
    const struct {
        std::string names;
        bool multiSelect;
        std::vector<const char*> expected;  // from index 0 on
    } rows[] = {
        {"C:\\data\\a.txt", false, {"C:\\data\\a.txt", nullptr}},
        {"C:\\data\0a.txt\0b.txt\0"s, true, {"C:\\data\\a.txt", "C:\\data\\b.txt", nullptr, nullptr}},
        {"C:\\data\\a.txt\0"s, true, {"C:\\data\\a.txt", nullptr}},
        {"", true, {nullptr, nullptr}},
        {"C:\\data\0a.txt\0"s, false, {"C:\\data", nullptr}},
        {deep + "\0a\0ab\0"s, true, {deepest.c_str(), nullptr}},            // 255 characters are the most
        {"x\0"s + std::string(kNamesSize, 'x'), true, {nullptr, nullptr}},  // full to its end
    };
    auto names = std::make_unique<Names[]>(1);
    for (const auto& row : rows) {
        std::fill_n(names[0], kNamesSize, '\0');
        std::copy_n(row.names.begin(), std::min(row.names.size(), std::size_t{kNamesSize}), names[0]);
        char composed[kComposedNameSize];
        for (std::uint32_t index = 0; index < row.expected.size(); ++index) {
            EXPECT_STREQ(FileNameAt(names[0], row.multiSelect, index, composed), row.expected[index]) << row.names << ", index " << index;
        }
        EXPECT_EQ(FileNameAt(names[0], row.multiSelect, 0xFFFFFFFF, composed), nullptr);
    }
}

TEST(ReadLineAt, EndsALineAtItsFeedOrTheReturnBeforeIt) {
    const struct {
        std::string content, lines;  // each line with the place of the next one; "xxxxxxx" is what was in the buffer before
    } rows[] = {{"ab\r\ncd\n", "ab>4 cd>7 xxxxxxx>-1 "},
                {"ab\ncd", "ab>3 cd>-1 "},
                {"a\rb\r", "a>2 b>4 xxxxxxx>-1 "},
                {"\n\r\n\r", ">1 >3 >4 xxxxxxx>-1 "},
                {"a\rbc\nd\n", "a>5 d>7 xxxxxxx>-1 "},  // a return inside a line ends it, the rest goes
                {"abcdef\n", "abcdef>7 xxxxxxx>-1 "},   // exactly as long as the buffer takes
                {"abcdefg\n", "abcdefg>-1 "},
                {"a\0b\n"s, "a>4 xxxxxxx>-1 "}};
    for (const auto& row : rows) {
        std::string lines;
        for (std::int32_t at = 0; at >= 0;) {
            char line[9] = "xxxxxxx";
            at = ReadLineAt(row.content.data(), static_cast<std::uint32_t>(row.content.size()), static_cast<std::uint32_t>(at), line, 8);
            lines += std::string(line) + ">" + std::to_string(at) + " ";
        }
        EXPECT_EQ(lines, row.lines) << row.content;
    }
    char buffer[4];
    EXPECT_EQ(ReadLineAt("a\n", 2, 2, buffer, 4), -1);
    EXPECT_EQ(ReadLineAt("a\n", 2, 0xFFFFFFFF, buffer, 4), -1);
    EXPECT_EQ(ReadLineAt(nullptr, 2, 0, buffer, 4), -1);
    EXPECT_EQ(ReadLineAt("a\n", 2, 0, nullptr, 4), -1);
    EXPECT_EQ(ReadLineAt("a\n", 2, 0, buffer, -5), -1);
    EXPECT_EQ(ReadLineAt("a\n", 2, 0, buffer, 1), -1);  // room for the terminator alone
    EXPECT_STREQ(buffer, "");
}

TEST(ContentEditing, RemovesAndInserts) {
    std::string content = "0123456789";
    content.resize(RemoveBytes(content.data(), 10, 2, 5));
    EXPECT_EQ(content, "0156789");
    content.resize(RemoveBytes(content.data(), 7, 6, 7));
    EXPECT_EQ(content, "015678");
    content.resize(9);
    content.resize(InsertBytes(content.data(), 6, 2, "234", 3));
    EXPECT_EQ(content, "012345678");
    content.resize(10);
    content.resize(InsertBytes(content.data(), 9, 9, "9", 1));
    EXPECT_EQ(content, "0123456789");
}

TEST(DialogFilter, PutsZeroBytesForTheSeparatorsAndTwoAtTheEnd) {
    const std::string whole(600, 'x');
    const std::pair<const char*, std::string> rows[] = {
        {"Testo^*.txt^Tutti^*.*", "Testo\0*.txt\0Tutti\0*.*"s}, {"", ""}, {nullptr, ""}, {whole.c_str(), std::string(254, 'x')}};
    for (const auto& [text, filter] : rows) {
        std::string list(kDialogTextSize, '?');
        MakeDialogFilter(text, *reinterpret_cast<char(*)[kDialogTextSize]>(list.data()));
        EXPECT_EQ(list, filter + std::string(kDialogTextSize - filter.size(), '\0'));
    }
}

}  // namespace
}  // namespace kx::test
