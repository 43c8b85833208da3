#include "lib/modules/module_instance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "lib/modules/version_info.h"
#include "tests/unit/collected_reports.h"

namespace {

class Resources : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(module_.Load("kxresources.dll")); }
    void TearDown() override { module_.Free(); }
    kx::ModuleInstance module_;
};

TEST_F(Resources, TextsAreCutAndAlwaysTerminated) {
    const struct {
        std::uint32_t id;
        std::size_t size;
        const char* expected;
    } rows[] = {{100, 64, "Ampiezza pi\xF9 alta"},
                {100, 18, "Ampiezza pi\xF9 alta"},
                {100, 17, "Ampiezza pi\xF9 alt"},
                {100, 1, ""},
                {999, 64, ""}};
    for (const auto& row : rows) {
        char buffer[64];
        std::fill(std::begin(buffer), std::end(buffer), '#');
        EXPECT_EQ(module_.LoadText(row.id, buffer, row.size), std::strlen(row.expected))
            << row.id << " " << row.size;
        EXPECT_STREQ(buffer, row.expected) << row.id << " " << row.size;
        if (row.size < sizeof buffer) {
            EXPECT_EQ(buffer[row.size], '#') << "written beyond " << row.size;
        }
    }
    EXPECT_EQ(module_.LoadText(100, nullptr, 10), 0u);
    char untouched = '#';
    EXPECT_EQ(module_.LoadText(100, &untouched, 0), 0u);
    EXPECT_EQ(untouched, '#');
}

TEST(ModuleInstance, WithoutAModuleFindsNothingInTheProgramItself) {
    const kx::ModuleInstance none;
    SetLastError(0);
    EXPECT_EQ(none.GetProc("LIBSTART"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    // Cursor 32512 is one of the system's own, which a null module would stand for.
    EXPECT_EQ(none.LoadCursorById(32512), nullptr);
}

TEST(ModuleInstance, TheSystemsMessageIsReportedOrElseTheCode) {
    kx::test::CollectedReports reports;
    SetLastError(0);
    EXPECT_EQ(kx::ModuleInstance::LogLastSystemError(reports), 0u);
    EXPECT_TRUE(reports.texts.empty());
    for (const DWORD code : {DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_BAD_EXE_FORMAT}, DWORD{0x20000001}}) {
        SetLastError(code);
        kx::ModuleInstance::LogLastSystemError(reports);
    }
    ASSERT_EQ(reports.texts.size(), 3u);
    EXPECT_EQ(reports.texts[0].find("E = "), std::string::npos) << reports.texts[0];
    EXPECT_EQ(reports.texts[1], "E = 193") << "nothing can be inserted into its message";
    EXPECT_EQ(reports.texts[2], "E = 536870913");
}

TEST_F(Resources, VersionRecordIsReadWithItsTexts) {
    const kx::VersionInfo info(module_.Handle());
    EXPECT_EQ(info.PackedVersion(), 0x04000006u);
    EXPECT_STREQ(info.ProductName(), "Risorse di prova");
    EXPECT_STREQ(info.InternalName(), "resources");
    EXPECT_STREQ(info.FileDescription(), "Perch\xE9 cos\xEC \xE8");
    EXPECT_STREQ(info.ProductVersion(), "4.0.0.6 prodotto");
    EXPECT_STREQ(info.FileVersion(), "4.0.0.6 file");
    EXPECT_STREQ(info.CompanyName(), "Casa di prova");
}

TEST(VersionInfo, IsReadFromAFolderThatOnlyUnicodeCanWrite) {
    const std::wstring folder = L"modules-\u0141\u00F3d\u017A-\u65E5";
    CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring file = folder + L"\\copy.dll";
    wchar_t own[MAX_PATH];
    HMODULE const original = LoadLibraryA("kxresources.dll");
    GetModuleFileNameW(original, own, MAX_PATH);
    ASSERT_TRUE(CopyFileW(own, file.c_str(), FALSE));
    HMODULE const copy = LoadLibraryW(file.c_str());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(kx::VersionInfo(copy).PackedVersion(), 0x04000006u);
    FreeLibrary(copy);
    FreeLibrary(original);
    DeleteFileW(file.c_str());
    RemoveDirectoryW(folder.c_str());
}

}  // namespace
