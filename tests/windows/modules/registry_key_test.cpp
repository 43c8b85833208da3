// A key of the registry and its typed values.
#include "lib/windows/registry_key.h"

#include <gtest/gtest.h>

#include <cstring>

namespace kx::test {
namespace {

constexpr char kRoot[] = "Software\\kxdialogs tests";

class Registry : public testing::Test {
  protected:
    ~Registry() override { RegDeleteTreeA(HKEY_CURRENT_USER, kRoot); }
    RegistryKey key_{(RegDeleteTreeA(HKEY_CURRENT_USER, kRoot), kRoot)};
};

TEST_F(Registry, EachReaderTakesItsOwnTypeOnlyAndNeverWritesBeyondItsBuffer) {
    const unsigned char bytes[4] = {1, 2, 3, 4};
    ASSERT_TRUE(key_.SetString("text", "abc") && key_.SetDword("number", 3) && key_.SetBinary("bytes", bytes, 4));
    const struct {
        const char* name;
        bool text, number, bytes;
    } rows[] = {
        {"text", true, false, false}, {"number", false, true, false}, {"bytes", false, false, true}, {"absent", false, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        char text[4] = "old";
        EXPECT_EQ(key_.GetString(row.name, text, sizeof text), row.text);
        EXPECT_STREQ(text, row.text ? "abc" : "");
        EXPECT_FALSE(key_.GetString(row.name, text, 3)) << "no room for the terminator";
        EXPECT_STREQ(text, "");
        std::uint32_t number = 77;
        EXPECT_EQ(key_.GetDword(row.name, &number), row.number);
        EXPECT_EQ(number, row.number ? 3u : 0u);
        bool flag = false;
        EXPECT_EQ(key_.GetBool(row.name, &flag), row.number);
        EXPECT_EQ(flag, row.number);
        unsigned char binary[17];
        std::memset(binary, 0xEE, sizeof binary);
        EXPECT_EQ(key_.GetBinary16(row.name, binary), row.bytes);
        EXPECT_TRUE(!row.bytes || (binary[3] == 4 && binary[4] == 0 && binary[15] == 0 && binary[16] == 0xEE));
        std::uint32_t size = 0;
        EXPECT_EQ(key_.IsString(row.name), row.text);
        EXPECT_EQ(key_.IsBinary(row.name, &size), row.bytes);
        EXPECT_EQ(size, row.bytes ? 4u : 0u);
    }
    // A text without a terminator, as another program may store it. The system adds one that merely was not counted, so more
    // text has to follow.
    ASSERT_EQ(RegSetValueExA(key_.Handle(), "open", 0, REG_SZ, reinterpret_cast<const BYTE*>("abcdef"), 4), ERROR_SUCCESS);
    char buffer[6] = "#####";
    EXPECT_FALSE(key_.GetString("open", buffer, 4));
    EXPECT_EQ(buffer[4], '#');
    EXPECT_TRUE(key_.GetString("open", buffer, 5));
    EXPECT_STREQ(buffer, "abcd");
}

TEST_F(Registry, ValuesAndSubkeysAreListedAndDeleted) {
    const RegistryKey sub(kRoot, "sub");
    const unsigned char bytes[16] = {1, 2};
    ASSERT_TRUE(key_.SetBool("flag", 7) && key_.SetBinary16("bytes", bytes));
    std::uint32_t number = 0, size = 0;
    EXPECT_TRUE(key_.IsDword("flag") && key_.GetDword("flag", &number) && number == 1 && key_.IsBinary("bytes", &size) && size == 16);
    char name[8] = "", cut[4] = "old";
    EXPECT_TRUE(key_.DeleteValue("bytes") && key_.ValueName(0, name, sizeof name) && !key_.ValueName(1, cut, sizeof cut));
    EXPECT_STREQ(name, "flag");
    EXPECT_TRUE(!key_.ValueName(0, cut, sizeof cut) && *cut == 0 && key_.SubkeyName(0, cut, sizeof cut) && key_.DeleteSubkey(cut));
    EXPECT_FALSE(key_.SubkeyName(0, cut, sizeof cut));
}

}  // namespace
}  // namespace kx::test
