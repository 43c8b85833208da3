#include "lib/windows/registry_key.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

namespace {

using kx::RegistryKey;

constexpr char kRoot[] = "Software\\kxdialogs tests";

class Paths final : public kx::ResourceTexts {
  public:
    std::size_t LoadText(std::uint32_t id, char* buffer, std::size_t size) const override {
        const char* text = id == 1 ? "Software\\kxdialogs tests\\By id" : "";
        std::snprintf(buffer, size, "%s", text);
        return std::strlen(buffer);
    }
};

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

TEST_F(Registry, KeysAreOpenedOrCreated) {
    const std::string fresh = std::string(kRoot) + "\\Fresh";
    EXPECT_FALSE(Exists(fresh.c_str()));
    {
        RegistryKey created(fresh.c_str());
        ASSERT_NE(created.Handle(), nullptr);
        EXPECT_TRUE(created.SetDword("kept", 5));
    }
    std::uint32_t value = 0;
    EXPECT_TRUE(RegistryKey(fresh.c_str()).GetDword("kept", &value)) << "the second opening made another key";
    EXPECT_EQ(value, 5u);
    EXPECT_TRUE(RegistryKey(kRoot, "Fresh").GetDword("kept", &value));

    EXPECT_NE(RegistryKey(Paths(), 1).Handle(), nullptr);
    EXPECT_TRUE(Exists("Software\\kxdialogs tests\\By id"));
    EXPECT_EQ(RegistryKey(Paths(), 2).Handle(), nullptr);
    EXPECT_EQ(RegistryKey(static_cast<const char*>(nullptr)).Handle(), nullptr);
    const std::string tooLong(1100, 'x');
    EXPECT_EQ(RegistryKey(kRoot, tooLong.c_str()).Handle(), nullptr);
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

TEST_F(Registry, ValuesComeBackAsTheyWereStored) {
    char text[32];
    EXPECT_TRUE(Key().SetString("text", "perch\xE9"));
    EXPECT_TRUE(Key().GetString("text", text, sizeof text));
    EXPECT_STREQ(text, "perch\xE9");

    std::uint32_t number = 0;
    EXPECT_TRUE(Key().SetDword("number", 0xFEDCBA98));
    EXPECT_TRUE(Key().GetDword("number", &number));
    EXPECT_EQ(number, 0xFEDCBA98u);

    const unsigned char bytes[20] = {1, 2, 0, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
    unsigned char read[20] = {};
    EXPECT_TRUE(Key().SetBinary("bytes", bytes, 20));
    EXPECT_EQ(Key().GetBinary("bytes", read, sizeof read), 20u);
    EXPECT_EQ(std::memcmp(read, bytes, 20), 0);
    EXPECT_EQ(Key().GetBinary("bytes", read, 19), 0u) << "a value that does not fit";

    EXPECT_TRUE(Key().SetBinary16("sixteen", bytes));
    EXPECT_EQ(Key().GetBinary("sixteen", read, sizeof read), 16u);
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

TEST_F(Registry, AFlagIsSetByAPositiveNumberOnly) {
    const struct {
        int flag;
        std::uint32_t stored;
    } rows[] = {{1, 1}, {7, 1}, {0, 0}, {-1, 0}};
    for (const auto& row : rows) {
        EXPECT_TRUE(Key().SetBool("flag", row.flag));
        std::uint32_t stored = 9;
        EXPECT_TRUE(Key().GetDword("flag", &stored));
        EXPECT_EQ(stored, row.stored) << row.flag;
        bool flag = row.stored == 0;
        EXPECT_TRUE(Key().GetBool("flag", &flag));
        EXPECT_EQ(flag, row.stored != 0) << row.flag;
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

TEST_F(Registry, NamesAreCountedThroughAndDeleted) {
    ASSERT_TRUE(Key().SetDword("first", 1));
    ASSERT_TRUE(Key().SetDword("second", 2));
    ASSERT_NE(RegistryKey(kRoot, "Sub").Handle(), nullptr);
    std::string names;
    char name[32];
    for (std::uint32_t i = 0; Key().ValueName(i, name, sizeof name); ++i) {
        names += std::string(name) + ";";
    }
    EXPECT_EQ(names, "first;second;");
    EXPECT_STREQ(name, "");
    EXPECT_FALSE(Key().ValueName(0, name, 5)) << "five characters and a terminator do not fit";
    EXPECT_TRUE(Key().SubkeyName(0, name, sizeof name));
    EXPECT_STREQ(name, "Sub");
    EXPECT_FALSE(Key().SubkeyName(1, name, sizeof name));

    EXPECT_TRUE(Key().DeleteValue("first"));
    EXPECT_FALSE(Key().DeleteValue("first"));
    EXPECT_FALSE(Key().DeleteSubkey(""));
    EXPECT_FALSE(Key().DeleteSubkey(nullptr));
    EXPECT_TRUE(Exists(kRoot));
    EXPECT_TRUE(Key().DeleteSubkey("Sub"));
    EXPECT_FALSE(Exists("Software\\kxdialogs tests\\Sub"));
}

TEST_F(Registry, EverythingFailsOnAKeyThatCouldNotBeOpened) {
    RegistryKey none(static_cast<const char*>(nullptr));
    char text[8] = "before";
    std::uint32_t number = 7;
    bool flag = true;
    unsigned char bytes[16] = {};
    EXPECT_FALSE(none.SetString("a", "b"));
    EXPECT_FALSE(none.SetDword("a", 1));
    EXPECT_FALSE(none.SetBool("a", 1));
    EXPECT_FALSE(none.SetBinary16("a", bytes));
    EXPECT_FALSE(none.SetBinary("a", bytes, 4));
    EXPECT_FALSE(none.GetString("a", text, sizeof text));
    EXPECT_FALSE(none.GetDword("a", &number));
    EXPECT_FALSE(none.GetBool("a", &flag));
    EXPECT_EQ(none.GetBinary("a", bytes, sizeof bytes), 0u);
    EXPECT_FALSE(none.GetBinary16("a", bytes));
    EXPECT_FALSE(none.IsString("a") || none.IsDword("a") || none.IsBinary("a", &number));
    EXPECT_FALSE(none.ValueName(0, text, sizeof text));
    EXPECT_FALSE(none.SubkeyName(0, text, sizeof text));
    EXPECT_FALSE(none.DeleteValue("a"));
    EXPECT_FALSE(none.DeleteSubkey("a"));
}

TEST_F(Registry, NullDestinationsFail) {
    ASSERT_TRUE(Key().SetDword("number", 1));
    EXPECT_FALSE(Key().GetString("number", nullptr, 8));
    EXPECT_FALSE(Key().GetDword("number", nullptr));
    EXPECT_FALSE(Key().GetBool("number", nullptr));
    EXPECT_EQ(Key().GetBinary("number", nullptr, 8), 0u);
    EXPECT_FALSE(Key().GetBinary16("number", nullptr));
    EXPECT_FALSE(Key().SetString("number", nullptr));
    EXPECT_FALSE(Key().SetBinary("number", nullptr, 4));
}

}  // namespace
