// The report of the workstation: its batch forms.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>

#include "tests/windows/host/host_fixture.h"
#include "tests/windows/host/host_process.h"

namespace kx::test {
namespace {

std::map<int, std::string> Fields(const std::string& output) {
    std::map<int, std::string> texts;
    for (const std::string& line : Lines(output)) {
        const std::size_t tab = line.find('\t');
        EXPECT_NE(tab, std::string::npos) << line;
        EXPECT_TRUE(texts.emplace(std::stoi(line), line.substr(tab + 1)).second) << "twice: " << line;
    }
    return texts;
}

TEST_F(HostTest, PrintsTheReportFields) {
    const HostResult all = RunHost({L"--fields", L"--builtin"});
    ASSERT_EQ(all.exitCode, 0u) << all.error;
    const auto texts = Fields(all.output);
    EXPECT_GT(texts.size(), 350u);
    EXPECT_EQ(texts.at(3), "Donna") << "a pick list of the library's resources";
    EXPECT_EQ(texts.at(71), "Original Report (not overread)");
    const auto measured = Lines(RunHost({L"--measure", L"--builtin"}).output);
    EXPECT_NE(std::find(measured.begin(), measured.end(), "prInterval\t" + std::to_string(std::stoi(texts.at(20)))), measured.end())
        << texts.at(20);

    const HostResult some = RunHost({L"--fields", L"--builtin", L"206,2-3,105"});
    EXPECT_EQ(some.exitCode, 0u) << some.error;
    EXPECT_EQ(some.output, "206\t\\r\\n,  \n2\tSYNTHETIC\n3\tDonna\n105\t" + texts.at(105) + "\n");
    EXPECT_NE(texts.at(105).find(" \xC2\xBA"), std::string::npos) << "no degree sign in UTF-8: " << texts.at(105);

    const HostResult unknown = RunHost({L"--fields", L"--builtin", L"2,9999"});
    EXPECT_EQ(unknown.exitCode, 1u);
    EXPECT_EQ(unknown.output, "");
    EXPECT_NE(unknown.error.find("9999"), std::string::npos) << unknown.error;
}

TEST_F(HostTest, WritesTheTableInPlaceOfTheFileThereWas) {
    const struct {
        const wchar_t* file;
        const char* begin;
    } rows[] = {
        {L"table.csv", "Deriv;aP1 (uV);"},
        {L"\u03B1 \u2013 tabella.html", "<HTML>\r\n<HEAD>\r\n<TITLE>SYNTHETIC, "},  // not in Windows-1252
    };
    for (const auto& row : rows) {
        const fs::path file = folder_ / row.file;
        std::ofstream(file) << std::string(100000, 'x');
        const HostResult result = RunHost({L"--table", file.wstring(), L"--builtin"});
        EXPECT_EQ(result.exitCode, 0u) << result.error;
        EXPECT_EQ(result.output, "");
        const std::string text = Read(file);
        EXPECT_EQ(text.substr(0, std::strlen(row.begin)), row.begin);
        EXPECT_LT(text.size(), 100000u);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1) << "something is left behind";

        // A file that may not be written stays as it is.
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
        const HostResult refused = RunHost({L"--table", file.wstring(), L"--builtin"});
        SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
        EXPECT_EQ(refused.exitCode, 1u);
        EXPECT_EQ(Lines(refused.error).size(), 1u) << refused.error;
        EXPECT_EQ(Read(file), text);
        fs::remove(file);
    }
}

}  // namespace
}  // namespace kx::test
