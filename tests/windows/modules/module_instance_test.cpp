#include "lib/modules/module_instance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "lib/modules/version_info.h"
#include "tests/windows/modules/spy.h"

namespace {

using kxtest::Reports;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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

TEST_F(Resources, EveryKindIsFound) {
    std::size_t size = 0;
    const void* raw = module_.LoadRaw(200, MAKEINTRESOURCEA(10), size);
    ASSERT_NE(raw, nullptr);
    EXPECT_EQ(std::string(static_cast<const char*>(raw), size), "raw bytes");

    EXPECT_NE(module_.LoadIconById(201), nullptr);
    HANDLE const image = module_.LoadImageById(201, IMAGE_ICON, 16, 16, 0);
    EXPECT_TRUE(DestroyIcon(static_cast<HICON>(image)));
    HMENU const menu = module_.LoadMenuById(202);
    EXPECT_EQ(GetMenuItemCount(menu), 2);
    DestroyMenu(menu);
    EXPECT_EQ(CopyAcceleratorTableA(module_.LoadAcceleratorsById(203), nullptr, 0), 3);
}

TEST_F(Resources, WhatIsMissingIsNull) {
    std::size_t size = 5;
    EXPECT_EQ(module_.LoadRaw(999, MAKEINTRESOURCEA(10), size), nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(module_.LoadIconById(999), nullptr);
    EXPECT_EQ(module_.LoadCursorById(999), nullptr);
    EXPECT_EQ(module_.LoadMenuById(999), nullptr);
    EXPECT_EQ(module_.LoadAcceleratorsById(999), nullptr);
    EXPECT_EQ(module_.LoadImageById(999, IMAGE_ICON, 0, 0, 0), nullptr);
    EXPECT_EQ(module_.GetProc("NOSUCHEXPORT"), nullptr);
}

TEST(ModuleInstance, WithoutAModuleFindsNothingInTheProgramItself) {
    const kx::ModuleInstance none;
    SetLastError(0);
    EXPECT_EQ(none.GetProc("LIBSTART"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    // Cursor 32512 is one of the system's own, which a null module would stand for.
    EXPECT_EQ(none.LoadCursorById(32512), nullptr);
}

TEST(LogLastSystemError, SaysNothingWithoutAnError) {
    Reports reports;
    SetLastError(0);
    EXPECT_EQ(kx::ModuleInstance::LogLastSystemError(reports), 0u);
    EXPECT_THAT(reports.texts, IsEmpty());
}

TEST(LogLastSystemError, ReportsACodeTheSystemHasNoMessageFor) {
    const struct {
        DWORD code;
        const char* expected;
    } rows[] = {{0x20000001, "system: E = 536870913"}, {0xE0000001, "system: E = -536870911"}};
    for (const auto& row : rows) {
        Reports reports;
        SetLastError(row.code);
        EXPECT_EQ(kx::ModuleInstance::LogLastSystemError(reports), Reports::kResult);
        EXPECT_THAT(reports.texts, ElementsAre(row.expected));
    }
}

TEST(LogLastSystemError, ReportsTheSystemsMessage) {
    Reports reports;
    SetLastError(ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(kx::ModuleInstance::LogLastSystemError(reports), Reports::kResult);
    ASSERT_THAT(reports.texts, SizeIs(1));
    EXPECT_GT(reports.texts[0].size(), std::string("system: ").size());
    EXPECT_EQ(reports.texts[0].find("E = "), std::string::npos);
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

TEST(VersionInfo, WithoutTextsOrRecordTheFieldsAreEmpty) {
    const struct {
        const char* file;
        std::uint32_t packed;
    } rows[] = {{"kxold.dll", 0x00040005}, {"kxbare.dll", 0}};
    for (const auto& row : rows) {
        HMODULE const module = LoadLibraryA(row.file);
        const kx::VersionInfo info(module);
        EXPECT_EQ(info.PackedVersion(), row.packed) << row.file;
        EXPECT_STREQ(info.ProductName(), "") << row.file;
        EXPECT_STREQ(info.FileDescription(), "") << row.file;
        EXPECT_STREQ(info.CompanyName(), "") << row.file;
        FreeLibrary(module);
    }
    EXPECT_EQ(kx::VersionInfo(nullptr).PackedVersion(), 0u);
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
