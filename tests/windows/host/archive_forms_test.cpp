// The forms of the workstation that work on the archive, and what they leave when they are killed.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/resource_ids.h"
#include "tests/windows/host/host_fixture.h"
#include "tests/windows/host/host_process.h"

namespace kx::test {
namespace {

// Boxes of the interpretation pane.
constexpr int kPaneReviewed = 33823;
constexpr int kPaneConfirmed = 33830;

TEST_F(HostTest, TheArchivesFormsImportListAndExport) {
    const std::vector<std::wstring> archive{L"--archive", (folder_ / L"neu" / L"ä.kxdb").wstring()};
    const auto run = [&](std::vector<std::wstring> arguments) {
        arguments.insert(arguments.end(), archive.begin(), archive.end());
        return RunHost(arguments);
    };
    EXPECT_EQ(run({L"--list"}).output, "") << "a new archive holds nothing";
    // What cannot be read keeps nothing else out.
    const HostResult imported = run({L"--import", L"--builtin", TruncatedRecord().wstring()});
    EXPECT_EQ(imported.exitCode, 1u);
    EXPECT_EQ(imported.output, "1\t--builtin\n");
    EXPECT_EQ(Lines(imported.error).size(), 1u) << imported.error;
    EXPECT_EQ(run({L"--list"}).output, "1\t14/02/2026 09:30\t\tSYNTHETIC\tRiposo\toriginale\n");
    EXPECT_EQ(run({L"--list", L"synth ORIGINALE 14/02"}).output.substr(0, 2), "1\t");
    EXPECT_EQ(run({L"--list", L"confermato"}).output, "");

    // The samples are those of the recording, byte for byte.
    const fs::path kept = folder_ / L"kept.csv";
    const fs::path direct = folder_ / L"direct.csv";
    EXPECT_EQ(run({L"--export", L"1", kept.wstring()}).exitCode, 0u);
    EXPECT_EQ(RunHost({L"--export-csv", L"--builtin", direct.wstring()}).exitCode, 0u);
    EXPECT_GT(Read(kept).size(), 10000u);
    EXPECT_TRUE(Read(kept) == Read(direct));
    const HostResult absent = run({L"--export", L"2", kept.wstring()});
    EXPECT_EQ(absent.exitCode, 1u);
    EXPECT_EQ(Lines(absent.error).size(), 1u) << absent.error;
    EXPECT_TRUE(Read(kept) == Read(direct)) << "the file there was is gone";

    // An archive that is none is named with its reason, and left alone.
    const fs::path letter = Write("letter.doc", std::string(9000, 'x'));
    const HostResult refused = RunHost({L"--list", L"--archive", letter.wstring()});
    EXPECT_EQ(refused.exitCode, 1u);
    EXPECT_EQ(Lines(refused.error).size(), 1u) << refused.error;
    EXPECT_NE(refused.error.find("il file non \xC3\xA8 un archivio"), std::string::npos) << refused.error;
    EXPECT_EQ(Read(letter), std::string(9000, 'x'));
}

// Killed in the middle of its saves, the program leaves every one that it had told of, whole.
TEST_F(HostTest, EverySaveThatWasToldOfIsThereAfterTheProgramWasKilled) {
    const fs::path file = folder_ / L"a.kxdb";
    const fs::path log = folder_ / L"a.kxdb-wal";
    std::vector<std::wstring> import{L"--archive", file.wstring(), L"--import"};
    const fs::path record = folder_ / L"r.xml";
    ASSERT_EQ(RunHost({L"--export-aecg", L"--builtin", record.wstring()}).exitCode, 0u);
    import.insert(import.end(), 40, record.wstring());
    std::size_t told = 0;
    // A slow machine sees more of the log's growths than a quick one: later and later until enough was told of.
    for (int kill = 0; kill < 10 || (told <= 5 && kill < 50); ++kill) {
        // At a growth of the data base's log, sometimes a moment later: within a save or just behind it.
        int growths = 6 + kill * 2;
        std::uintmax_t size = 0;
        const HostResult killed = RunHost(import, {}, [&] {
            std::error_code none;
            const std::uintmax_t now = fs::file_size(log, none);
            if (none || now == size) {
                return false;
            }
            size = now;
            if (--growths > 0) {
                return false;
            }
            Sleep(static_cast<DWORD>(kill % 4 * 2));
            return true;
        });
        told += Lines(killed.output).size();
        const HostResult listed = RunHost({L"--list", L"--archive", file.wstring()});
        ASSERT_EQ(listed.exitCode, 0u) << listed.error;
        const std::size_t there = Lines(listed.output).size();
        EXPECT_GE(there, told) << "a save that was told of is gone";
        EXPECT_LE(there, told + static_cast<std::size_t>(kill) + 1) << "at most one save a kill was not told of yet";
    }
    EXPECT_GT(told, 5u);
    const fs::path whole = folder_ / L"whole.csv";
    for (std::size_t id = 1; id <= told; id += 3) {
        EXPECT_EQ(RunHost({L"--export", std::to_wstring(id), whole.wstring(), L"--archive", file.wstring()}).exitCode, 0u) << id;
    }
}

// Two workstations on one test: the second to save is told, and by keeping both no report is lost.
TEST_F(HostTest, ASaveOverThatOfAnotherWorkstationIsToldAndBothAreKept) {
    const std::wstring archive = (folder_ / L"a.kxdb").wstring();
    ASSERT_EQ(RunHost({L"--import", L"--builtin", L"--archive", archive}).exitCode, 0u);
    const auto listed = [&] { return RunHost({L"--list", L"--archive", archive}).output; };
    const auto tickAndSave = [](const OpenHost& host, int box) {
        // Enter in the worklist's search opens its first test.
        PostMessageW(FindWindowExW(host.Pane(), nullptr, L"Edit", nullptr), WM_KEYDOWN, VK_RETURN, 1);
        EXPECT_TRUE(WaitUntil([&] { return FindWindowExW(host.Pane(), nullptr, L"KxTracingPaper", nullptr) != nullptr; }));
        SendMessageW(host.Frame(), WM_COMMAND, IDM_VIEW_FIRST_PANE + 7, 0);
        SendDlgItemMessageW(host.Pane(), box, BM_CLICK, 0, 0);
        PostMessageW(host.Frame(), WM_COMMAND, IDM_FILE_SAVE, 0);
    };
    const OpenHost first({L"--archive", archive}), second({L"--archive", archive});
    SendMessageW(FindWindowExW(second.Pane(), nullptr, L"Edit", nullptr), WM_KEYDOWN, VK_RETURN, 1);
    ASSERT_TRUE(WaitUntil([&] { return FindWindowExW(second.Pane(), nullptr, L"KxTracingPaper", nullptr) != nullptr; }));
    tickAndSave(first, kPaneReviewed);
    ASSERT_TRUE(WaitUntil([&] { return listed().ends_with("riletto\n"); })) << listed();
    const std::string before = listed();
    tickAndSave(second, kPaneConfirmed);
    const HWND question = second.WaitForMessageBox();
    ASSERT_NE(question, nullptr);
    EXPECT_NE(TextsOf(question).find(L"Tenere entrambi?"), std::wstring::npos) << fs::path(TextsOf(question)).string();
    EXPECT_EQ(listed(), before);
    PostMessageW(question, WM_COMMAND, IDYES, 0);
    EXPECT_TRUE(WaitUntil([&] { return Lines(listed()).size() == 2; }));
    EXPECT_NE(listed().find("riletto"), std::string::npos) << listed();
    EXPECT_NE(listed().find("confermato"), std::string::npos) << listed();
}

// A box that is ticked is no change to the library before its next save.
TEST_F(HostTest, AConfirmationThatIsOnlyTickedIsAskedAboutAndSaved) {
    const OpenHost host({});
    ASSERT_NE(host.Frame(), nullptr);
    SendMessageW(host.Frame(), WM_COMMAND, IDM_VIEW_FIRST_PANE + 7, 0);
    const HWND pane = host.Pane();
    SendDlgItemMessageW(pane, kPaneConfirmed, BM_CLICK, 0, 0);
    PostMessageW(host.Frame(), WM_CLOSE, 0, 0);
    const HWND question = host.WaitForMessageBox();
    ASSERT_NE(question, nullptr);
    EXPECT_NE(TextsOf(question).find(L"i dati del referto"), std::wstring::npos) << fs::path(TextsOf(question)).string();
    PostMessageW(question, WM_COMMAND, IDYES, 0);
    EXPECT_TRUE(WaitUntil([&] { return IsWindow(host.Frame()) == FALSE; })) << "saved, it asks again";
}

}  // namespace
}  // namespace kx::test
