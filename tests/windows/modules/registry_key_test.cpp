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

TEST_F(Registry, AReadOnlyKeyIsNeverCreatedNorWritten) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(RegistryKey(key_.Handle(), "Absent", RegistryKey::ReadOnly{}).Handle(), nullptr);
    }
    EXPECT_TRUE(key_.SetDword("here", 1));
    RegistryKey reader(HKEY_CURRENT_USER, kRoot, RegistryKey::ReadOnly{});
    EXPECT_TRUE(reader.IsDword("here"));
    EXPECT_FALSE(reader.SetDword("here", 2));
}

TEST_F(Registry, SixteenBytesAreTakenOfALongerValueAndFilledUpOfAShorterOne) {
    const unsigned char bytes[20] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
    for (const std::uint32_t length : {0u, 3u, 16u, 20u}) {
        unsigned char read[17];
        std::memset(read, 0xEE, sizeof read);
        EXPECT_TRUE(key_.SetBinary("value", bytes, length));
        ASSERT_TRUE(key_.GetBinary16("value", read)) << length;
        for (std::uint32_t i = 0; i < 16; ++i) {
            EXPECT_EQ(read[i], i < length ? bytes[i] : 0) << length << " bytes stored, byte " << i;
        }
        EXPECT_EQ(read[16], 0xEE) << length;
    }
}

TEST_F(Registry, EachReaderTakesItsOwnTypeOnly) {
    const unsigned char bytes[4] = {1, 2, 3, 4};
    ASSERT_TRUE(key_.SetString("text", "abc") && key_.SetDword("number", 3) && key_.SetBinary("bytes", bytes, 4));
    const struct {
        const char* name;
        bool text, number, bytes;
    } rows[] = {
        {"text", true, false, false}, {"number", false, true, false}, {"bytes", false, false, true}, {"absent", false, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        char text[16] = "before";
        EXPECT_EQ(key_.GetString(row.name, text, sizeof text), row.text);
        EXPECT_STREQ(text, row.text ? "abc" : "");
        std::uint32_t number = 77;
        EXPECT_EQ(key_.GetDword(row.name, &number), row.number);
        EXPECT_EQ(number, row.number ? 3u : 0u);
        for (const bool before : {false, true}) {
            bool flag = before;
            EXPECT_EQ(key_.GetBool(row.name, &flag), row.number);
            EXPECT_EQ(flag, row.number || before);
        }
        unsigned char binary[16] = {};
        EXPECT_EQ(key_.GetBinary(row.name, binary, sizeof binary), row.bytes ? 4u : 0u);
        EXPECT_EQ(key_.GetBinary16(row.name, binary), row.bytes);
        std::uint32_t size = 0;
        EXPECT_EQ(key_.IsString(row.name), row.text);
        EXPECT_EQ(key_.IsDword(row.name), row.number);
        EXPECT_EQ(key_.IsBinary(row.name, &size), row.bytes);
        EXPECT_EQ(size, row.bytes ? 4u : 0u);
    }
}

TEST_F(Registry, ATextNeedsRoomForItsTerminator) {
    ASSERT_TRUE(key_.SetString("text", "abcd"));
    // The same length without a terminator, as another program may store it. The system adds one that merely was not counted,
    // so more text has to follow.
    ASSERT_EQ(RegSetValueExA(key_.Handle(), "open", 0, REG_SZ, reinterpret_cast<const BYTE*>("abcdef"), 4), ERROR_SUCCESS);
    for (const char* const name : {"text", "open"}) {
        char buffer[6] = "#####";
        EXPECT_TRUE(key_.GetString(name, buffer, 5)) << name;
        EXPECT_STREQ(buffer, "abcd") << name;
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_FALSE(key_.GetString(name, buffer, 4)) << name;
        EXPECT_EQ(buffer[0], '\0') << name;
        EXPECT_EQ(buffer[4], '#') << name << ": written beyond the buffer";
    }
}

}  // namespace
}  // namespace kx::test
