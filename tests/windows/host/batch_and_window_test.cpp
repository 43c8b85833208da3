// The workstation from outside: its batch forms and its window.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "host/resource_ids.h"
#include "tests/windows/host/host_fixture.h"
#include "tests/windows/host/host_process.h"

namespace kx::test {
namespace {

std::multimap<std::string, int> ParseMeasurements(const std::string& output) {
    std::multimap<std::string, int> values;
    for (const std::string& line : Lines(output)) {
        const std::size_t tab = line.find('\t');
        int value = 0;
        const char* end = line.data() + line.size();
        if (tab == std::string::npos || std::from_chars(line.data() + tab + 1, end, value).ptr != end) {
            ADD_FAILURE() << "not a name, a tab and a number: " << line;
        } else {
            values.emplace(line.substr(0, tab), value);
        }
    }
    return values;
}

// Runs --measure and checks what holds of every recording; returns the values.
std::multimap<std::string, int> MeasureRecord(const std::vector<std::wstring>& record) {
    std::vector<std::wstring> arguments{L"--measure"};
    arguments.insert(arguments.end(), record.begin(), record.end());
    const HostResult result = RunHost(arguments);
    EXPECT_EQ(result.exitCode, 0u) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output.find('\r'), std::string::npos);
    auto values = ParseMeasurements(result.output);
    EXPECT_GE(values.count("beat"), 1u);
    // Those of the whole beat, and of each lead its amplitudes, markers, intrinsicoid deflection and ST levels.
    std::set<std::string> names;
    for (const auto& [name, value] : values) {
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 17u + 12u * 35u);
    for (const char* const name : {"beat", "rPeak", "qtcBazett", "tOff", "I.aP1", "aVR.sPrimeOnMarker", "V6.stLevel9"}) {
        EXPECT_GE(values.count(name), 1u) << name;
    }
    return values;
}

int Value(const std::multimap<std::string, int>& values, const std::string& name) {
    const auto found = values.find(name);
    return found == values.end() ? INT_MIN : found->second;
}

// The built-in recording and one of each collection: other rates, gains, lead names and layouts of the signal file. The points
// are in their order, times and amplitudes those of an adult.
TEST_F(HostTest, MeasuresRecordings) {
#ifdef KX_HAVE_RECORDS
    const std::wstring root = L"Z:" + fs::path(KX_RECORDS_DIR).wstring();
#endif
    const struct {
        std::vector<std::wstring> record;
        int beats;  // at least
    } rows[] = {
        {{L"--builtin"}, 3},
#ifdef KX_HAVE_RECORDS
        {{root + L"/ptb/s0010_re.hea"}, 40},
        {{root + L"/ptbxl/00001_lr"}, 8},
        {{root + L"/chapman/JS00001.hea"}, 8},
        {{root + L"/ludb/1.hea", L"--units-per-mv", L"1000"}, 5},
#endif
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(fs::path(row.record[0]).string());
        const auto values = MeasureRecord(row.record);
        EXPECT_GE(static_cast<int>(values.count("beat")), row.beats);
        const char* order[] = {"qrsOn", "rPeak", "qrsOff", "tOff"};
        for (std::size_t i = 1; i < std::size(order); ++i) {
            EXPECT_LT(Value(values, order[i - 1]), Value(values, order[i])) << order[i - 1] << " before " << order[i];
        }
        EXPECT_EQ(Value(values, "qrsDuration"), Value(values, "qrsOff") - Value(values, "qrsOn"));
        for (const auto& [name, least, most] : {std::tuple{"rrInterval", 400, 1500}, {"qrsDuration", 60, 200}, {"qtInterval", 250, 550}}) {
            EXPECT_TRUE(Value(values, name) >= least && Value(values, name) <= most) << name << ' ' << Value(values, name);
        }
        // Some limb lead has an upright QRS.
        const int upright = Value(values, "I.aR") + Value(values, "II.aR") + Value(values, "aVR.aR") + Value(values, "III.aR");
        EXPECT_TRUE(upright > 200 && upright < 12000) << upright;
    }
}

TEST_F(HostTest, FailsInOneLineWhenARecordCannotBeRead) {
    const HostResult misused = RunHost({L"--nonsense"});
    EXPECT_EQ(misused.exitCode, 2u);
    EXPECT_NE(misused.error.find("--help"), std::string::npos) << misused.error;
    const fs::path garbage = Write("garbage.hea", std::string("\x01\xFF\x00no header at all\n\x7F", 22));
    const fs::path missingSignal = Write("alone.hea", "alone 1 500 5000\nalone.dat 16 1000 16 0 0 0 0 I\n");
    const fs::path empty = Write("empty.hea", "");
    const fs::path records[] = {folder_ / L"no such file.hea", garbage, missingSignal, empty, TruncatedRecord()};
    for (const fs::path& record : records) {
        const fs::path picture = folder_ / L"never.png";
        for (const auto& arguments : {std::vector<std::wstring>{L"--measure", record.wstring()},
                                      {L"--shot", picture.wstring(), record.wstring(), L"table"},
                                      {L"--shot", picture.wstring(), record.wstring(), L"window"}}) {
            const HostResult result = RunHost(arguments);
            EXPECT_EQ(result.exitCode, 1u) << record;
            EXPECT_EQ(result.output, "") << record;
            const auto lines = Lines(result.error);
            ASSERT_EQ(lines.size(), 1u) << record << ": " << result.error;
            EXPECT_GT(lines[0].size(), std::string("kxhost: ").size()) << record;
            EXPECT_FALSE(fs::exists(picture)) << record;
        }
    }
}

// The program alone, without the suite's modules beside it: what it can still do, it does.
TEST_F(HostTest, WithoutTheModulesItSaysSoAndTheRecordStillOpens) {
    const fs::path program = folder_ / L"kxhost.exe";
    fs::copy_file(fs::path(ProductFolder()) / L"kxhost.exe", program);
    const HostResult measured = RunHost({L"--measure", L"--builtin"}, program.wstring());
    EXPECT_EQ(measured.exitCode, 1u);
    ASSERT_EQ(Lines(measured.error).size(), 1u) << measured.error;
    EXPECT_NE(measured.error.find("kxanalyze.dll"), std::string::npos) << measured.error;

    const fs::path picture = folder_ / L"window.png";
    const HostResult shown = RunHost({L"--shot", picture.wstring(), L"--builtin", L"window"}, program.wstring());
    EXPECT_EQ(shown.exitCode, 0u) << shown.error;
    EXPECT_TRUE(PngPicture(Read(picture)).isDrawn);

    const HostResult pane = RunHost({L"--shot", picture.wstring(), L"--builtin", L"table"}, program.wstring());
    EXPECT_EQ(pane.exitCode, 1u);
    EXPECT_NE(pane.error.find("kxdialogs.dll"), std::string::npos) << pane.error;
}

TEST_F(HostTest, ABrokenRecordLeavesTheOneShown) {
    const fs::path broken = TruncatedRecord();
    const OpenHost host({L"--builtin"});
    ASSERT_NE(host.Frame(), nullptr);
    ASSERT_TRUE(WaitUntil([&] { return host.Pane() != nullptr; })) << "no pane for the built-in recording";
    const std::wstring title = host.Title();
    const HWND pane = host.Pane();

    host.Drop(broken.wstring());
    const HWND box = host.WaitForMessageBox();
    ASSERT_NE(box, nullptr) << "no message about the broken recording";
    const std::wstring text = TextsOf(box);
    EXPECT_NE(text.find(L"Il tracciato non può essere aperto."), std::wstring::npos);
    EXPECT_NE(text.find(L"short"), std::wstring::npos) << "the message does not name the file";
    SendMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitUntil([&] { return !host.HasMessageBox(); })) << "more than one message";
    EXPECT_EQ(host.Title(), title);
    EXPECT_EQ(host.Pane(), pane) << "the pane shown before is gone";
}

// Whatever can be seen lies within what holds it, on the smallest screen that hospitals still have.
TEST_F(HostTest, NothingLiesBelowTheFold) {
    const OpenHost host({});
    ASSERT_NE(host.Frame(), nullptr);
    SetWindowPos(host.Frame(), nullptr, 0, 0, 800, 600, SWP_NOZORDER);
    RECT frame{};
    GetWindowRect(host.Frame(), &frame);
    EXPECT_TRUE(frame.right == 800 && frame.bottom == 600) << frame.right << " x " << frame.bottom;
    for (int tab = 0; tab <= IDM_VIEW_LAST_PANE - IDM_VIEW_FIRST_PANE; ++tab) {
        SendMessageW(host.Frame(), WM_COMMAND, static_cast<WPARAM>(IDM_VIEW_FIRST_PANE + tab), 0);
        std::vector<HWND> windows;
        EnumChildWindows(
            host.Frame(),
            [](HWND window, LPARAM list) CALLBACK { return reinterpret_cast<std::vector<HWND>*>(list)->push_back(window), TRUE; },
            reinterpret_cast<LPARAM>(&windows));
        EXPECT_GT(windows.size(), 5u) << tab;
        for (const HWND window : windows) {
            RECT area{}, room{}, common{};
            GetWindowRect(window, &area);
            GetWindowRect(GetParent(window), &room);
            IntersectRect(&common, &area, &room);
            char name[32] = {};
            GetClassNameA(window, name, sizeof name);
            EXPECT_TRUE(!IsWindowVisible(window) || EqualRect(&common, &area))
                << "tab " << tab << ", " << name << ' ' << GetDlgCtrlID(window);
        }
    }
}

TEST_F(HostTest, TheReportIsEditedInTheLibrarysEditorAndShownAnew) {
    constexpr int kEditorText = 100;
    constexpr int kPaneStatement = 33831;
    constexpr int kPaneReviewer = 33823;
    const OpenHost host({});
    ASSERT_NE(host.Frame(), nullptr);
    SendMessageW(host.Frame(), WM_COMMAND, IDM_VIEW_FIRST_PANE + 7, 0);
    ASSERT_NE(host.Pane(), nullptr);
    PostMessageW(host.Frame(), WM_COMMAND, IDM_REPORT_STATEMENT, 0);
    const HWND editor = host.WaitForMessageBox();
    ASSERT_NE(editor, nullptr);
    EXPECT_FALSE(IsWindowEnabled(host.Frame())) << "the editor is not modal";
    EXPECT_EQ(host.Pane(), nullptr) << "a pane writes into the record meanwhile";
    for (const wchar_t letter : {L'Z', L'z'}) {
        SendMessageW(GetDlgItem(editor, kEditorText), WM_CHAR, letter, 1);
    }
    PostMessageW(editor, WM_COMMAND, IDOK, 0);
    ASSERT_TRUE(WaitUntil([&] { return host.Pane() != nullptr; }));
    wchar_t text[64] = {};
    SendDlgItemMessageW(host.Pane(), kPaneStatement, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, L"Zz");
    EXPECT_EQ(SendDlgItemMessageW(host.Pane(), kPaneReviewer, BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(HostTest, TheStripShowsWhatIsMeasured) {
    const auto values = ParseMeasurements(RunHost({L"--measure", L"--builtin"}).output);
    ASSERT_GT(Value(values, "rrInterval"), 0);
    const OpenHost host({});
    ASSERT_NE(host.Frame(), nullptr);
    wchar_t text[512] = {};
    SendMessageW(GetDlgItem(host.Frame(), IDC_PATIENT_STRIP), WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    const auto number = [&](const char* name) { return std::to_wstring(Value(values, name)); };
    const std::wstring parts[] = {
        L"; PR " + number("prInterval") + L" ms;",
        L"; QRS " + number("qrsDuration") + L" ms;",
        L"; QT / QTc " + number("qtInterval") + L" / " + number("qtc") + L" ms;",
        L"; Asse QRS " + number("qrsAxis") + L"°;",
        L"; FC " + std::to_wstring((60000 + Value(values, "rrInterval") / 2) / Value(values, "rrInterval")) + L" bpm;",
    };
    for (const std::wstring& part : parts) {
        EXPECT_NE(std::wstring(text).find(part), std::wstring::npos) << fs::path(part).string() << " is not in " << fs::path(text).string();
    }
}

}  // namespace
}  // namespace kx::test
