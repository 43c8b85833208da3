// The hypertrophy pane on real recordings: what the workstation shows against what its own listing of the
// measurements gives by the criteria, worked out here once more.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <set>
#include <string>

#include "host/panes/pane_kinds.h"
#include "host/resource_ids.h"
#include "tests/windows/host_process.h"

namespace {

using Values = std::map<std::string, int>;

Values Measure(const std::vector<std::wstring>& record) {
    std::vector<std::wstring> arguments{L"--measure"};
    arguments.insert(arguments.end(), record.begin(), record.end());
    Values values;
    for (const std::string& line : kxtest::Lines(kxtest::RunHost(arguments).output)) {
        const std::size_t tab = line.find('\t');
        if (tab != std::string::npos) {
            values[line.substr(0, tab)] = std::stoi(line.substr(tab + 1));
        }
    }
    return values;
}

int Tallest(const Values& values, std::initializer_list<const char*> leads) {
    int tallest = -40000;
    for (const std::string lead : leads) {
        tallest = std::max({tallest, values.at(lead + ".aR"), values.at(lead + ".aR1")});
    }
    return tallest;
}

int Deepest(const Values& values, std::initializer_list<const char*> leads) {
    int lowest = 40000;
    for (const std::string lead : leads) {
        lowest = std::min({lowest, values.at(lead + ".aS"), values.at(lead + ".aS1")});
    }
    return -lowest;
}

// The numbers of the value controls and which boxes are checked.
struct Pane {
    std::map<int, int> numbers;
    std::set<int> checked;
};

void Add(Pane& pane, int box, bool met, int label, int points, int most) {
    if (met) {
        pane.checked.insert(box);
        pane.numbers[label] = std::min(pane.numbers[label] + points, most);
    }
}

Pane Expected(const Values& v) {
    Pane pane;
    pane.numbers = {{59000, Tallest(v, {"V5"})},
                    {59001, Tallest(v, {"V6"})},
                    {59006, Deepest(v, {"V1"})},
                    {59002, Deepest(v, {"V1"}) + Tallest(v, {"V5", "V6"})},
                    {59003, Tallest(v, {"aVL"})},
                    {59004, Deepest(v, {"V3"})},
                    {59007, Tallest(v, {"aVL"}) + Deepest(v, {"V3"})},
                    {59011, 0},
                    {59012, 0},
                    {59016, 0},
                    {59018, 0},
                    {59021, 0}};
    const auto limbs = {"I", "II", "III", "aVR", "aVL", "aVF"};
    int limb = std::max(Tallest(v, limbs), Deepest(v, limbs));
    for (const std::string lead : limbs) {
        limb = std::max(limb, -v.at(lead + ".aQ"));
    }
    Add(pane, 59008, limb >= 2000, 59011, 3, 3);
    Add(pane, 59009, Deepest(v, {"V1", "V2"}) >= 3000, 59011, 3, 3);
    Add(pane, 59010, Tallest(v, {"V5", "V6"}) >= 3000, 59011, 3, 3);
    const int apart = v.at("qrsAxis") - v.at("tAxis");
    const int folded = apart > 180 ? apart - 180 : apart < -180 ? apart + 180 : apart;
    Add(pane, 59013, folded > 90 || folded < -90, 59012, 3, 3);
    Add(pane, 59015, v.at("qrsAxis") >= -90 && v.at("qrsAxis") <= -30, 59016, 2, 2);
    Add(pane, 59017, v.at("qrsDuration") >= 90, 59018, 1, 2);
    Add(pane, 59019, std::max(v.at("V3.intrinsicoidDeflection"), v.at("V6.intrinsicoidDeflection")) >= 50,
        59018, 1, 2);
    const int terminalP = v.at("V1.aP2") != 0 ? v.at("V1.aP2") : v.at("V1.aP1");
    Add(pane, 59020, terminalP < -2100 && v.at("pDuration") >= 40, 59021, 3, 3);
    pane.numbers[59022] = pane.numbers[59011] + pane.numbers[59012] + pane.numbers[59016] +
                          pane.numbers[59018] + pane.numbers[59021];
    return pane;
}

std::string TextOf(HWND pane, int id) {
    // WM_GETTEXT crosses processes, GetWindowText does not.
    char text[128] = {};
    SendMessageA(GetDlgItem(pane, id), WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

TEST(HypertrophyOnRecordings, ShowsWhatTheMeasurementsGive) {
    const std::wstring root = L"Z:" + std::filesystem::path(KX_RECORDS_DIR).wstring();
    const struct {
        std::vector<std::wstring> record;
        const char* sex;
    } rows[] = {
        {{root + L"/ptb/s0010_re.hea"}, "Donna"},
        {{root + L"/ptbxl/00001_lr.hea"}, "..."},
        {{root + L"/chapman/JS00001.hea"}, "Uomo"},
        {{root + L"/ludb/1.hea", L"--units-per-mv", L"1000"}, nullptr},
        {{root + L"/ludb/51.hea", L"--units-per-mv", L"1000"}, nullptr},
        {{L"--builtin"}, nullptr},
    };
    std::set<int> totals;
    for (const auto& row : rows) {
        const std::string name(row.record[0].begin(), row.record[0].end());
        const Values values = Measure(row.record);
        ASSERT_TRUE(values.count("V6.intrinsicoidDeflection") != 0) << name;
        const Pane expected = Expected(values);

        const kxtest::OpenHost host(row.record);
        ASSERT_NE(host.Frame(), nullptr) << name;
        // Handled once the recording is open.
        SendMessageW(host.Frame(), WM_COMMAND,
                     IDM_VIEW_FIRST_PANE + static_cast<WPARAM>(kxhost::PaneKind::Hypertrophy), 0);
        ASSERT_TRUE(kxtest::WaitUntil([&] { return GetDlgItem(host.Pane(), 59022) != nullptr; })) << name;
        const HWND pane = host.Pane();
        for (const auto& [id, number] : expected.numbers) {
            EXPECT_EQ(TextOf(pane, id), std::to_string(number)) << name << ": " << id;
        }
        for (int box = 59008; box <= 59020; ++box) {
            const bool isChecked = SendMessageA(GetDlgItem(pane, box), BM_GETCHECK, 0, 0) == BST_CHECKED;
            EXPECT_EQ(isChecked, expected.checked.count(box) != 0) << name << ": " << box;
        }
        if (row.sex != nullptr) {
            EXPECT_EQ(TextOf(pane, 59005), row.sex) << name;
        }
        totals.insert(expected.numbers.at(59022));
    }
    // Recordings that all score the same would prove little.
    EXPECT_GT(totals.size(), 1u);
}

}  // namespace
