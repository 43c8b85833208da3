#include "lib/windows/registry_key.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>

namespace {

using kx::RegistryKey;

constexpr char kRoot[] = "Software\\kxdialogs tests";

class Registry : public testing::Test {
  protected:
    void SetUp() override {
        RegDeleteTreeA(HKEY_CURRENT_USER, kRoot);
        key_.emplace(kRoot);
    }
    void TearDown() override {
        key_.reset();
        RegDeleteTreeA(HKEY_CURRENT_USER, kRoot);
    }
    RegistryKey& Key() { return *key_; }

  private:
    std::optional<RegistryKey> key_;
};

bool Exists(const char* path) {
    return RegistryKey(HKEY_CURRENT_USER, path, RegistryKey::ReadOnly{}).Handle() != nullptr;
}

TEST_F(Registry, AReadOnlyKeyIsNeverCreatedNorWritten) {
    const RegistryKey absent(Key().Handle(), "Absent", RegistryKey::ReadOnly{});
    EXPECT_EQ(absent.Handle(), nullptr);
    EXPECT_FALSE(Exists("Software\\kxdialogs tests\\Absent"));
    EXPECT_TRUE(Key().SetDword("here", 1));
    RegistryKey reader(HKEY_CURRENT_USER, kRoot, RegistryKey::ReadOnly{});
    EXPECT_TRUE(reader.IsDword("here"));
    EXPECT_FALSE(reader.SetDword("here", 2));
}

TEST_F(Registry, SixteenBytesAreTakenOfALongerValueAndFilledUpOfAShorterOne) {
    const unsigned char bytes[20] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
    for (const std::uint32_t length : {0u, 3u, 16u, 20u}) {
        unsigned char read[17];
        std::memset(read, 0xEE, sizeof read);
        EXPECT_TRUE(Key().SetBinary("value", bytes, length));
        ASSERT_TRUE(Key().GetBinary16("value", read)) << length;
        for (std::uint32_t i = 0; i < 16; ++i) {
            EXPECT_EQ(read[i], i < length ? bytes[i] : 0) << length << " bytes stored, byte " << i;
        }
        EXPECT_EQ(read[16], 0xEE) << length;
    }
}

TEST_F(Registry, EachReaderTakesItsOwnTypeOnly) {
    const unsigned char bytes[4] = {1, 2, 3, 4};
    ASSERT_TRUE(Key().SetString("text", "abc"));
    ASSERT_TRUE(Key().SetDword("number", 3));
    ASSERT_TRUE(Key().SetBinary("bytes", bytes, 4));
    const struct {
        const char* name;
        bool text, number, bytes;
    } rows[] = {{"text", true, false, false},
                {"number", false, true, false},
                {"bytes", false, false, true},
                {"absent", false, false, false}};
    for (const auto& row : rows) {
        char text[16] = "before";
        EXPECT_EQ(Key().GetString(row.name, text, sizeof text), row.text) << row.name;
        EXPECT_STREQ(text, row.text ? "abc" : "") << row.name;
        std::uint32_t number = 77;
        EXPECT_EQ(Key().GetDword(row.name, &number), row.number) << row.name;
        EXPECT_EQ(number, row.number ? 3u : 0u) << row.name;
        for (const bool before : {false, true}) {
            bool flag = before;
            EXPECT_EQ(Key().GetBool(row.name, &flag), row.number) << row.name;
            EXPECT_EQ(flag, row.number || before) << row.name;
        }
        unsigned char binary[16] = {};
        EXPECT_EQ(Key().GetBinary(row.name, binary, sizeof binary), row.bytes ? 4u : 0u) << row.name;
        EXPECT_EQ(Key().GetBinary16(row.name, binary), row.bytes) << row.name;
        std::uint32_t size = 0;
        EXPECT_EQ(Key().IsString(row.name), row.text) << row.name;
        EXPECT_EQ(Key().IsDword(row.name), row.number) << row.name;
        EXPECT_EQ(Key().IsBinary(row.name, &size), row.bytes) << row.name;
        EXPECT_EQ(size, row.bytes ? 4u : 0u) << row.name;
    }
    EXPECT_TRUE(Key().IsBinary("bytes", nullptr));
}

TEST_F(Registry, ATextNeedsRoomForItsTerminator) {
    ASSERT_TRUE(Key().SetString("text", "abcd"));
    // The same length without a terminator, as another program may store it. The system adds one that merely
    // was not counted, so more text has to follow.
    ASSERT_EQ(RegSetValueExA(Key().Handle(), "open", 0, REG_SZ, reinterpret_cast<const BYTE*>("abcdef"), 4),
              ERROR_SUCCESS);
    for (const char* name : {"text", "open"}) {
        char buffer[6] = "#####";
        EXPECT_TRUE(Key().GetString(name, buffer, 5)) << name;
        EXPECT_STREQ(buffer, "abcd") << name;
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_FALSE(Key().GetString(name, buffer, 4)) << name;
        EXPECT_EQ(buffer[0], '\0') << name;
        EXPECT_EQ(buffer[4], '#') << name << ": written beyond the buffer";
    }
}

}  // namespace
