// The panes that show figures and take none: the table of the amplitudes and the hypertrophy scores.
#include <gmock/gmock.h>
// After gmock: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <set>

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

TEST_F(Contents, TheTableListsTheLeadsAsTheRecordHoldsThemNow) {
    const auto record = NewRecord();
    KxMeasurementSet& set = record->Episode(0)->measurements;
    const Pane pane(KindOf("Table"), host_, *record);
    const HWND list = pane.Item(1);
    ASSERT_EQ(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0), 12);
    // What another pane writes is seen at the next drawing.
    KxLeadMeasurements& v3 = set.leads[KX_LEAD_V3];
    v3.aP1 = 1, v3.aP2 = 2, v3.aQ = -3, v3.aR = 4, v3.aS = -1250, v3.aR1 = 6, v3.aS1 = -32768, v3.aT1 = 32767, v3.aT2 = -9;
    EXPECT_THAT(RowOf(list, KX_LEAD_V3), ElementsAre("", "1", "2", "-3", "4", "-1250", "6", "-32768", "32767", "-9"));
}

// What a host has stored in its own memory, and what the pane shows for it; the limits are the score's.
TEST_F(Contents, TheHypertrophyPaneShowsItsScoresAndOnlyReads) {
    constexpr COLORREF kRed = 0x0000FF, kOlive = 0x008080, kGreen = 0x008000;
    constexpr std::size_t kPDuration = 8, kQrsDuration = 20, kQrsAxis = 30, kTAxis = 36;  // of the whole beat
    constexpr std::size_t kPPrime = 2, kR = 4, kQ = 10, kS = 18, kIntrinsicoid = 32;      // of a lead
    ForeignRecord record;
    record.Store(258, KX_SEX_FEMALE, 2);
    for (const auto& [offset, value] : {std::pair{kPDuration, 120}, {kQrsDuration, 104}, {kQrsAxis, -45}, {kTAxis, 60}}) {
        record.StoreGlobal(offset, value);
    }
    const std::tuple<std::size_t, std::size_t, int> stored[] = {
        {10, kR, 3200}, {0, kQ, -2345}, {6, kPPrime, -2150}, {7, kS, -3100}, {8, kIntrinsicoid, 51}};
    for (const auto& [lead, offset, value] : stored) {
        record.StoreLead(lead, offset, value);
    }
    const KxTestRecord before = record.Record();
    const Pane pane(KindOf("Hypertrophy"), host_, record.Record());
    const std::tuple<std::uint32_t, const char*, COLORREF> labels[] = {{59000, "3200", kRed}, {59001, "0", kGreen}, {59002, "3200", kOlive},
                                                                       {59011, "3", kRed},    {59012, "3", kRed},   {59016, "2", kRed},
                                                                       {59018, "2", kRed},    {59021, "3", kRed},   {59022, "13", kRed}};
    const HDC dc = GetDC(pane);
    for (const auto& [id, text, color] : labels) {
        EXPECT_EQ(pane.Text(id), text) << id;
        SendMessageA(pane, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(pane.Item(id)));
        EXPECT_EQ(GetTextColor(dc), color) << id;
    }
    ReleaseDC(pane, dc);
    EXPECT_EQ(pane.Text(59005), "Donna");
    const std::set<std::uint32_t> checked = {59008, 59009, 59010, 59013, 59015, 59017, 59019, 59020};
    for (const std::uint32_t id : {59008u, 59009u, 59010u, 59013u, 59014u, 59015u, 59017u, 59019u, 59020u}) {
        EXPECT_EQ(pane.IsChecked(id), checked.count(id) != 0) << id;
    }
    EXPECT_EQ(std::memcmp(&record.Record(), &before, sizeof before), 0);
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
