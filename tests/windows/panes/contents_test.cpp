// The panes that show figures and take none: the table of the amplitudes and the hypertrophy scores.
#include <gmock/gmock.h>
// After gmock: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <set>
#include <sstream>

#include "lib/measurement_table.h"
#include "tests/rig/pane.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Contents : public testing::Test {
  protected:
    SpyingSuite suite_;
    LibraryUse library_;
    HostWindow host_;
};

std::vector<std::string> RowOf(HWND list, int row) {
    std::vector<std::string> cells;
    for (int column = 0; column < 10; ++column) {
        char text[64] = {};
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        cells.emplace_back(text);
    }
    return cells;
}

std::string ClipboardText(HWND window) {
    std::string copied;
    if (OpenClipboard(window) != FALSE) {
        if (const HANDLE memory = GetClipboardData(CF_TEXT)) {
            copied = static_cast<const char*>(GlobalLock(memory));
            GlobalUnlock(memory);
        }
        CloseClipboard();
    }
    return copied;
}

TEST_F(Contents, TheTableListsTheLeadsAsTheRecordHoldsThemNow) {
    const auto record = NewRecord();
    KxMeasurementSet& set = record->Episode(0)->measurements;
    const Pane pane(KindOf("Table"), host_, *record);
    const HWND list = pane.Item(1);
    ASSERT_EQ(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0), 12);
    for (int lead = 0; lead < 12; ++lead) {
        LVITEMA item{};
        item.mask = LVIF_IMAGE;
        item.iItem = lead;
        SendMessageA(list, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        EXPECT_EQ(item.iImage, lead);
        EXPECT_EQ(RowOf(list, lead)[4], std::to_string(set.leads[lead].aR)) << lead;
    }
    // What another pane writes is seen at the next drawing.
    KxLeadMeasurements& v3 = set.leads[KX_LEAD_V3];
    v3.aP1 = 1, v3.aP2 = 2, v3.aQ = -3, v3.aR = 4, v3.aS = -1250, v3.aR1 = 6, v3.aS1 = -32768, v3.aT1 = 32767, v3.aT2 = -9;
    EXPECT_THAT(RowOf(list, KX_LEAD_V3), ElementsAre("", "1", "2", "-3", "4", "-1250", "6", "-32768", "32767", "-9"));
    PressControl(list, 'C');
    EXPECT_EQ(ClipboardText(pane), MeasurementTableText(set, '\t'));
    EXPECT_THAT(ClipboardText(pane), testing::StartsWith("Deriv\taP1 (uV)\taP2 (uV)\t"));
}

constexpr COLORREF kRed = 0x0000FF;
constexpr COLORREF kOlive = 0x008080;
constexpr COLORREF kGreen = 0x008000;

// What a host has stored in its own memory, and what the pane must show for it. Boxes that are not named are clear,
// points that are not named 0 and green. Lead -1: a value of the whole beat.
struct Scores {
    const char* name;
    int sex;
    struct {
        int lead, offset, value;
    } stored[9];
    struct Shown {
        std::uint32_t id;
        const char* text;
        COLORREF color;
    };
    std::vector<Shown> labels;
    std::set<std::uint32_t> checked;
    const char* sexText;
};
constexpr int kPDuration = 8, kQrsDuration = 20, kQrsAxis = 30, kTAxis = 36;
constexpr int kP = 0, kPPrime = 2, kR = 4, kRPrime = 6, kQ = 10, kS = 18, kSPrime = 20, kIntrinsicoid = 32;

const Scores kScores[] = {
    {"bounds of the bands",
     0,
     {{10, kR, 1000}, {11, kRPrime, 2000}, {6, kSPrime, -1500}, {4, kRPrime, 1001}, {8, kSPrime, -2001}},
     {{59000, "1000", kGreen},
      {59001, "2000", kOlive},
      {59002, "3500", kOlive},
      {59003, "1001", kOlive},
      {59004, "2001", kRed},
      {59007, "3002", kRed}},
     {},
     "..."},
    {"largest amplitudes",
     0,
     {{10, kR, 32767}, {6, kS, -32768}, {4, kR, 32767}, {8, kS, -32768}},
     {{59000, "32767", kRed},
      {59006, "32768", kRed},
      {59002, "65535", kRed},
      {59007, "65535", kRed},
      {59011, "3", kRed},
      {59022, "3", kGreen}},
     {59008, 59009, 59010},
     "..."},
    {"Cornell of a man", 1, {{4, kR, 1200}, {8, kS, -1300}}, {{59007, "2500", kOlive}}, {}, "Uomo"},
    {"Cornell of a woman", 2, {{4, kR, 1200}, {8, kS, -1300}}, {{59007, "2500", kRed}}, {}, "Donna"},
    {"total of 5",
     0,
     {{-1, kQrsAxis, -60}, {-1, kTAxis, -60}, {7, kS, -3000}},
     {{59011, "3", kRed}, {59016, "2", kRed}, {59022, "5", kOlive}},
     {59009, 59015},
     "..."},
    {"total of 6",
     0,
     {{-1, kQrsAxis, -60}, {-1, kTAxis, -60}, {7, kS, -3000}, {-1, kQrsDuration, 200}},
     {{59011, "3", kRed}, {59016, "2", kRed}, {59018, "1", kOlive}, {59022, "6", kRed}},
     {59009, 59015, 59017},
     "..."},
    {"everything",
     2,
     {{-1, kPDuration, 120},
      {-1, kQrsDuration, 104},
      {-1, kQrsAxis, -45},
      {-1, kTAxis, 60},
      {10, kR, 3200},
      {0, kQ, -2345},
      {6, kPPrime, -2150},
      {7, kS, -3100},
      {8, kIntrinsicoid, 51}},
     {{59000, "3200", kRed},
      {59006, "0", kGreen},
      {59002, "3200", kOlive},
      {59011, "3", kRed},
      {59012, "3", kRed},
      {59016, "2", kRed},
      {59018, "2", kRed},
      {59021, "3", kRed},
      {59022, "13", kRed}},
     {59008, 59009, 59010, 59013, 59015, 59017, 59019, 59020},
     "Donna"},
};

TEST_F(Contents, TheHypertrophyPaneShowsItsScoresAndOnlyReads) {
    suite_.TakeReports();
    for (const Scores& row : kScores) {
        SCOPED_TRACE(row.name);
        ForeignRecord record;
        record.Store(258, row.sex, 2);
        for (const auto& stored : row.stored) {
            if (stored.value != 0 && stored.lead < 0) {
                record.StoreGlobal(static_cast<std::size_t>(stored.offset), stored.value);
            } else if (stored.value != 0) {
                record.StoreLead(static_cast<std::size_t>(stored.lead), static_cast<std::size_t>(stored.offset), stored.value);
            }
        }
        const KxTestRecord before = record.Record();
        const Pane pane(KindOf("Hypertrophy"), host_, record.Record());
        std::vector<Scores::Shown> labels = row.labels;
        for (const std::uint32_t id : {59011u, 59012u, 59016u, 59018u, 59021u, 59022u}) {
            if (std::none_of(labels.begin(), labels.end(), [id](const auto& label) { return label.id == id; })) {
                labels.push_back({id, "0", kGreen});
            }
        }
        const COLORREF face = GetSysColor(COLOR_BTNFACE);
        for (const auto& [id, text, color] : labels) {
            const ControlColours colours = AskColours(pane, id);
            EXPECT_EQ(pane.Text(id), text) << id;
            EXPECT_EQ(colours.text, color) << id;
            EXPECT_TRUE(colours.answered && colours.background == face && colours.brush == face) << id;
        }
        for (const std::uint32_t id : {59008u, 59009u, 59010u, 59013u, 59014u, 59015u, 59017u, 59019u, 59020u}) {
            EXPECT_EQ(pane.IsChecked(id), row.checked.count(id) != 0) << id;
        }
        EXPECT_EQ(pane.Text(59005), row.sexText);
        EXPECT_EQ(std::memcmp(&record.Record(), &before, sizeof before), 0);
    }
    EXPECT_THAT(suite_.TakeReports(), IsEmpty());
}

// The interpretation alone needs none.
TEST_F(Contents, APaneWithoutAMedianBeatHasNoWindow) {
    for (const PaneKind& kind : PaneKinds()) {
        for (const std::uint32_t episodes : {0u, 1u}) {
            TestRecord record;
            record.episodeCount = episodes;
            suite_.TakeReports();
            {
                const Pane pane(kind, host_, record);
                EXPECT_EQ(pane.IsAlive(), kind.templateId == 20542) << kind;
            }
            const std::vector<std::string> reports = suite_.TakeReports();
            EXPECT_EQ(reports.size(), kind.templateId == 0 ? 0u : 1u) << kind;
            if (kind.templateId != 0 && kind.templateId != 20542) {
                EXPECT_THAT(reports, ElementsAre(testing::StartsWith("LOGMEMORYERROR \"" + std::string(kind.source)))) << kind;
            }
            record.episodeCount = 0;
        }
    }
}

}  // namespace
}  // namespace kx::test
