#include "lib/fileutil.h"

namespace kx::test {
namespace {

using namespace std::literals;

TEST(FileNameAt, FindsTheFileInEveryFormOfTheNamesBuffer) {
    const auto names = [](const std::string& content, bool multiSelect) {  // from index 0 on
        std::vector<char> buffer(kNamesSize);                              // of the heap, so that a sanitizer sees a byte too many
        std::copy_n(content.begin(), std::min(content.size(), buffer.size()), buffer.begin());
        std::string all;
        char composed[kComposedNameSize];
        for (const std::uint32_t index : {0u, 1u, 2u, 0xFFFFFFFFu}) {
            const char* name = FileNameAt(*reinterpret_cast<char(*)[kNamesSize]>(buffer.data()), multiSelect, index, composed);
            all += name != nullptr ? name + " "s : "";
        }
        return all;
    };
    const std::string deep = "C:\\" + std::string(250, 'd');
    EXPECT_EQ(names("C:\\data\0a.txt\0b.txt\0"s, true), "C:\\data\\a.txt C:\\data\\b.txt ");
    EXPECT_EQ(names("C:\\data\0a.txt\0"s, false) + names("", true), "C:\\data ");
    EXPECT_EQ(names(deep + "\0a\0ab\0"s, true), deep + "\\a ") << "255 characters are the most";
    EXPECT_EQ(names("x\0"s + std::string(kNamesSize, 'x'), true), "") << "full to its end";
}

TEST(ReadLineAt, EndsALineAtItsFeedOrTheReturnBeforeIt) {
    const auto lines = [](const std::string& content) {  // each line with the place of the next one
        std::string all;
        for (std::int32_t at = 0; at >= 0;) {
            char line[9] = "-";  // left where there is none
            at = ReadLineAt(content.data(), static_cast<std::uint32_t>(content.size()), static_cast<std::uint32_t>(at), line, 8);
            all += std::string(line) + ">" + std::to_string(at) + " ";
        }
        return all;
    };
    EXPECT_EQ(lines("ab\r\ncd\n"), "ab>4 cd>7 ->-1 ");
    EXPECT_EQ(lines("\n\r\n\rcd"), ">1 >3 >4 cd>-1 ");
    EXPECT_EQ(lines("a\rbc\nd\n"), "a>5 d>7 ->-1 ") << "a return inside a line ends it, the rest goes";
    EXPECT_EQ(lines("abcdef\nabcdefg\n"), "abcdef>7 abcdefg>-1 ") << "exactly as long as the buffer takes, and longer";
    char buffer[4];
    EXPECT_TRUE(ReadLineAt("a\n", 2, 0xFFFFFFFF, buffer, 4) == -1 && ReadLineAt(nullptr, 2, 0, buffer, 4) == -1);
    EXPECT_TRUE(ReadLineAt("a\n", 2, 0, buffer, -5) == -1 && ReadLineAt("a\n", 2, 0, buffer, 1) == -1) << "room for the terminator alone";
    EXPECT_STREQ(buffer, "");
}

TEST(ContentEditing, RemovesInsertsAndMakesAFilter) {
    std::string content = "0123456789";
    EXPECT_TRUE(RemoveBytes(content.data(), 10, 2, 5) == 7 && content.substr(0, 7) == "0156789");
    EXPECT_TRUE(InsertBytes(content.data(), 7, 2, "234", 3) == 10 && content == "0123456789");
    char list[kDialogTextSize] = "?";
    MakeDialogFilter("Testo^*.txt", list);
    EXPECT_EQ(std::string_view(list, 13), "Testo\0*.txt\0\0"sv);
    MakeDialogFilter(std::string(600, 'x').c_str(), list);
    EXPECT_EQ(list, std::string(kDialogTextSize - 2, 'x')) << "two zero bytes end it";
}

}  // namespace
}  // namespace kx::test
