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

}  // namespace
}  // namespace kx::test
