// The product's kxrender.dll with the stress test's script that is shipped beside it.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "lib/dbclient/test_record.h"
#include "tests/unit/suite/stress_test.h"
#include "tests/windows/modules/spy.h"

namespace {

using CreateText = std::uint32_t(__stdcall*)(const char*, char*, std::uint32_t, KxTestRecord*, std::uint32_t,
                                             std::uint32_t);

std::filesystem::path ProductFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return (std::filesystem::path(path).parent_path() / ".." / ".." / "bin").lexically_normal();
}

TEST(RendererModule, RunsTheStressScriptBesideIt) {
    const HMODULE module = LoadLibraryW((ProductFolder() / L"kxrender.dll").c_str());
    const auto createText = kxtest::FindExport<CreateText>(module, "CREATETEXT");
    ASSERT_NE(nullptr, createText);
    std::ifstream stream(ProductFolder() / L"stress.scr", std::ios::binary);
    const std::string script((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    ASSERT_FALSE(script.empty());
    kx::TestRecord test;
    kx::test::FillTreadmillTest(test);

    std::vector<char> buffer(script.size() + 4096, '\x5A');
    const auto size = static_cast<std::uint32_t>(buffer.size());
    EXPECT_EQ(1u, createText(script.c_str(), buffer.data(), size, &test, 0, 0));
    EXPECT_STREQ(kx::test::kTreadmillReport, buffer.data());

    // A short buffer holds whole lines, terminated, and nothing behind it is touched.
    std::memset(buffer.data(), 0x5A, buffer.size());
    EXPECT_EQ(1u, createText(script.c_str(), buffer.data(), 60, &test, 0, 0));
    EXPECT_STREQ("Test da sforzo al tappeto rotante, durata 9:30 min.", buffer.data());
    EXPECT_EQ('\x5A', buffer[60]);

    // Dates are the user's, pick lists the library's own when it is there.
    test.SetSex(KX_SEX_FEMALE);
    test.acquisitionTime = {2024, 31, 5, 4, 13, 0, 59};
    EXPECT_EQ(1u, createText("{#9}", buffer.data(), size, &test, 0, 0));
    EXPECT_NE(nullptr, std::strstr(buffer.data(), "2024")) << buffer.data();
    const HMODULE library = LoadLibraryW((ProductFolder() / L"kxdialogs.dll").c_str());
    EXPECT_EQ(1u, createText("{#3}", buffer.data(), size, &test, 0, 0));
    EXPECT_STREQ("Donna", buffer.data());
    FreeLibrary(library);

    EXPECT_EQ(0u, createText(nullptr, buffer.data(), size, &test, 0, 0));
    EXPECT_EQ(0u, createText(script.c_str(), nullptr, size, &test, 0, 0));
    EXPECT_EQ(0u, createText(script.c_str(), buffer.data(), 0, &test, 0, 0));
    EXPECT_EQ(0u, createText(script.c_str(), buffer.data(), size, nullptr, 0, 0));
    FreeLibrary(module);
}

}  // namespace
