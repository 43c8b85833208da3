#include "lib/fileutil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

using Names = char[kx::kNamesSize];

TEST(FileNameAt, FindsTheFileInEveryFormOfTheNamesBuffer) {
    const std::string deep = "C:\\" + std::string(250, 'd');
    const std::string deepest = deep + "\\a";
    const struct {
        const char* row;
        std::string names;
        bool multiSelect;
        std::vector<const char*> expected;  // from index 0 on
    } rows[] = {
        {"one name", "C:\\data\\a.txt", false, {"C:\\data\\a.txt", nullptr}},
        {"two of a folder",
         "C:\\data\0a.txt\0b.txt\0"s,
         true,
         {"C:\\data\\a.txt", "C:\\data\\b.txt", nullptr, nullptr}},
        {"a selection of one", "C:\\data\\a.txt\0"s, true, {"C:\\data\\a.txt", nullptr}},
        {"an empty selection", "", true, {nullptr, nullptr}},
        {"a selection that is taken for one name", "C:\\data\0a.txt\0"s, false, {"C:\\data", nullptr}},
        {"a path of 255 characters", deep + "\0a\0ab\0"s, true, {deepest.c_str(), nullptr}},
    };
    auto names = std::make_unique<Names[]>(1);
    for (const auto& row : rows) {
        std::fill_n(names[0], kx::kNamesSize, '\0');
        std::copy(row.names.begin(), row.names.end(), names[0]);
        for (std::uint32_t index = 0; index < row.expected.size(); ++index) {
            char composed[kx::kComposedNameSize];
            const char* const found = kx::FileNameAt(names[0], row.multiSelect, index, composed);
            EXPECT_STREQ(found, row.expected[index]) << row.row << ", index " << index;
        }
    }
}

TEST(FileNameAt, StaysWithinABufferThatIsFullToItsEnd) {
    auto names = std::make_unique<Names[]>(1);
    std::fill_n(names[0], kx::kNamesSize, 'x');
    names[0][1] = '\0';
    char composed[kx::kComposedNameSize];
    EXPECT_EQ(kx::FileNameAt(names[0], true, 0, composed), nullptr);
    EXPECT_EQ(kx::FileNameAt(names[0], true, 1, composed), nullptr);
    EXPECT_EQ(kx::FileNameAt(names[0], true, 0xFFFFFFFF, composed), nullptr);
}

struct Line {
    std::string text;
    std::int32_t next;
    bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* out) {
    *out << testing::PrintToString(line.text) << " -> " << line.next;
}

std::vector<Line> Lines(const std::string& content, std::int32_t maxLength) {
    std::vector<Line> lines;
    std::int32_t offset = 0;
    while (offset >= 0) {
        std::string line(static_cast<std::size_t>(maxLength), '?');
        offset = kx::ReadLineAt(content.data(), static_cast<std::uint32_t>(content.size()),
                                static_cast<std::uint32_t>(offset), line.data(), maxLength);
        lines.push_back({line.c_str(), offset});
    }
    return lines;
}

TEST(ReadLineAt, EndsALineAtItsFeedOrTheReturnBeforeIt) {
    const std::string untouched(8, '?');
    const struct {
        const char* row;
        std::string content;
        std::vector<Line> lines;
    } rows[] = {
        {"carriage return and feed, feed alone", "ab\r\ncd\n", {{"ab", 4}, {"cd", 7}, {untouched, -1}}},
        {"a last line without end", "ab\ncd", {{"ab", 3}, {"cd", -1}}},
        {"carriage returns alone", "a\rb\r", {{"a", 2}, {"b", 4}, {untouched, -1}}},
        {"empty lines", "\n\r\n\r", {{"", 1}, {"", 3}, {"", 4}, {untouched, -1}}},
        {"a return inside a line ends it, the rest goes",
         "a\rbc\nd\n",
         {{"a", 5}, {"d", 7}, {untouched, -1}}},
        {"exactly as long as the buffer takes", "abcdef\n", {{"abcdef", 7}, {untouched, -1}}},
        {"longer than the buffer", "abcdefg\n", {{"abcdefg", -1}}},
        {"a zero byte is a character of the line", "a\0b\n"s, {{"a", 4}, {untouched, -1}}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Lines(row.content, 8), row.lines) << row.row;
    }
}

TEST(ReadLineAt, RefusesWhatIsNoLine) {
    char buffer[4];
    EXPECT_EQ(kx::ReadLineAt("a\n", 2, 2, buffer, 4), -1);
    EXPECT_EQ(kx::ReadLineAt("a\n", 2, 0xFFFFFFFF, buffer, 4), -1);
    EXPECT_EQ(kx::ReadLineAt(nullptr, 2, 0, buffer, 4), -1);
    EXPECT_EQ(kx::ReadLineAt("a\n", 2, 0, nullptr, 4), -1);
    EXPECT_EQ(kx::ReadLineAt("a\n", 2, 0, buffer, 0), -1);
    EXPECT_EQ(kx::ReadLineAt("a\n", 2, 0, buffer, -5), -1);
    EXPECT_EQ(kx::ReadLineAt("a\n", 2, 0, buffer, 1), -1);  // room for the terminator alone
    EXPECT_STREQ(buffer, "");
}

TEST(ContentEditing, RemovesAndInserts) {
    std::string content = "0123456789";
    content.resize(kx::RemoveBytes(content.data(), 10, 2, 5));
    EXPECT_EQ(content, "0156789");
    content.resize(kx::RemoveBytes(content.data(), 7, 6, 7));
    EXPECT_EQ(content, "015678");
    content.resize(9);
    content.resize(kx::InsertBytes(content.data(), 6, 2, "234", 3));
    EXPECT_EQ(content, "012345678");
    content.resize(10);
    content.resize(kx::InsertBytes(content.data(), 9, 9, "9", 1));
    EXPECT_EQ(content, "0123456789");
}

TEST(DialogFilter, PutsZeroBytesForTheSeparatorsAndTwoAtTheEnd) {
    const auto filter = [](const char* text) {
        char list[kx::kDialogTextSize];
        std::fill(std::begin(list), std::end(list), '?');
        kx::MakeDialogFilter(text, list);
        return std::string(list, sizeof list);
    };
    const auto padded = [](std::string text) {
        text.resize(kx::kDialogTextSize);
        return text;
    };
    EXPECT_EQ(filter("Testo^*.txt^Tutti^*.*"), padded("Testo\0*.txt\0Tutti\0*.*"s));
    EXPECT_EQ(filter(""), padded(""));
    EXPECT_EQ(filter(nullptr), padded(""));
    EXPECT_EQ(filter(std::string(600, 'x').c_str()), padded(std::string(254, 'x')));
}

}  // namespace
