#include "lib/windows/list_view.h"

#include <algorithm>
#include <vector>

#include "lib/windows/device_context.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::ListForm;
using kx::ListView;

constexpr std::uint32_t kId = 500;
constexpr RECT kArea{1, 2, 301, 202};

// Rows are numbers; column 1 sorts them, column 2 refuses to.
class NumberList final : public ListView {
  public:
    using ListView::ListView;

    const char* CellText(LPARAM rowData, int column) override {
        return column == 0 ? NumberText(static_cast<int>(rowData)) : "x";
    }
    COLORREF CellTextColor(LPARAM rowData, int) override { return static_cast<COLORREF>(rowData); }
    COLORREF CellBackColor(LPARAM, int column) override { return static_cast<COLORREF>(column); }
    HFONT CellFont(LPARAM, int column) override {
        return column == 1 ? static_cast<HFONT>(GetStockObject(SYSTEM_FONT)) : nullptr;
    }
    int CompareRows(LPARAM first, LPARAM second, int column) override {
        if (column == 2) {
            throw column;
        }
        return column == 1 || column >= 16 ? static_cast<int>(first - second) : 0;
    }
    void DrawRow(kx::DeviceContext& surface, const RECT& area, LPARAM rowData, bool selected) override {
        drawn.push_back({surface.Handle(), area, rowData, selected});
    }

    struct Drawn {
        HDC surface;
        RECT area;
        LPARAM rowData;
        bool selected;
    };
    std::vector<Drawn> drawn;
};

class ListViewTest : public kx::test::ControlTest {
  protected:
    std::vector<LPARAM> Rows(const ListView& list) {
        std::vector<LPARAM> rows;
        for (int row = 0; row < list.ItemCount(); ++row) {
            rows.push_back(list.RowData(row));
        }
        return rows;
    }
    LRESULT Tell(ListView& list, NMHDR* header, UINT code) {
        *header = {list.Handle(), kId, code};
        LRESULT result = -1;
        EXPECT_TRUE(list.Notify(kId, header, result)) << static_cast<int>(code);
        return result;
    }
    void Click(ListView& list, int column) {
        NMLISTVIEW click{};
        click.iSubItem = column;
        Tell(list, &click.hdr, static_cast<UINT>(LVN_COLUMNCLICK));
    }
};

TEST_F(ListViewTest, SuppliesItsOperationsInTheSlotsBehindTheWindows) {
    using kx::test::SlotOf;
    EXPECT_EQ(SlotOf(&ListView::CellText), 42u);
    EXPECT_EQ(SlotOf(&ListView::CellTextColor), 43u);
    EXPECT_EQ(SlotOf(&ListView::CellBackColor), 44u);
    EXPECT_EQ(SlotOf(&ListView::CellFont), 45u);
    EXPECT_EQ(SlotOf(&ListView::CompareRows), 46u);
    EXPECT_EQ(SlotOf(&ListView::DrawRow), 47u);
}

TEST_F(ListViewTest, ReadsColumnsInPairs) {
    const struct {
        const char* text;
        bool whole;
        int columns;
        DWORD extendedStyle;
    } cases[] = {{"", true, 0, 0x30},      {"70^Deriv", true, 1, 0x30}, {"230^c1^-1^c2", true, 2, 0x30},
                 {"70^a^80", false, 1, 0}, {"70^a^80^", true, 2, 0x30}, {"70", false, 0, 0}};
    for (const auto& c : cases) {
        ListView list(library_, &parent_, kId, ListForm::kReport, kArea);
        EXPECT_EQ(list.SetColumns(c.text), c.whole) << c.text;
        EXPECT_EQ(list.ColumnCount(), c.columns) << c.text;
        EXPECT_EQ(static_cast<DWORD>(list.SendMsg(LVM_GETEXTENDEDLISTVIEWSTYLE)), c.extendedStyle) << c.text;
    }
    ListView list(library_, &parent_, kId, ListForm::kReport, kArea);
    EXPECT_TRUE(list.SetColumns(("70^" + std::string(200, 't')).c_str()));
    char title[128] = {};
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT;
    column.pszText = title;
    column.cchTextMax = sizeof title;
    list.SendMsg(LVM_GETCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    EXPECT_EQ(std::string(title), std::string(64, 't'));
}

TEST_F(ListViewTest, SortsByTheClickedHeaderAndBackAgain) {
    NumberList list(library_, &parent_, kId, ListForm::kReport, kArea);
    list.SetColumns("50^a^50^b^50^c");
    for (const LPARAM number : {3, 1, 2}) {
        EXPECT_GE(list.AppendRow(number, 0), 0);
    }
    const std::vector<LPARAM> first{3, 1, 2}, up{1, 2, 3}, down{3, 2, 1};
    Click(list, 0);
    EXPECT_EQ(Rows(list), first) << "rows that compare equal stay";
    Click(list, 1);
    EXPECT_EQ(Rows(list), up);
    Click(list, 1);
    EXPECT_EQ(Rows(list), down);
    Click(list, 1);
    EXPECT_EQ(Rows(list), up);
    Click(list, 2);
    EXPECT_EQ(Rows(list), up) << "an exception stays inside";
    // Columns from 16 on share a direction.
    Click(list, 17);
    Click(list, 16);
    EXPECT_EQ(Rows(list), down);
}

TEST_F(ListViewTest, AnswersForItsOwnRowsAlone) {
    NumberList list(library_, &parent_, kId, ListForm::kReport, kArea);
    NMLVDISPINFOA display{};
    display.item.mask = LVIF_TEXT;
    display.item.lParam = -1250;
    Tell(list, &display.hdr, static_cast<UINT>(LVN_GETDISPINFOA));
    EXPECT_STREQ(display.item.pszText, "-1250");

    NMLVCUSTOMDRAW draw{};
    draw.nmcd.dwDrawStage = CDDS_PREPAINT;
    EXPECT_EQ(Tell(list, &draw.nmcd.hdr, static_cast<UINT>(NM_CUSTOMDRAW)), CDRF_NOTIFYITEMDRAW);
    draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
    EXPECT_EQ(Tell(list, &draw.nmcd.hdr, static_cast<UINT>(NM_CUSTOMDRAW)), CDRF_NOTIFYSUBITEMDRAW);
    draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT | CDDS_SUBITEM;
    draw.nmcd.lItemlParam = 0x123456;
    draw.nmcd.hdc = GetDC(parent_.Handle());
    draw.iSubItem = 2;
    EXPECT_EQ(Tell(list, &draw.nmcd.hdr, static_cast<UINT>(NM_CUSTOMDRAW)), CDRF_DODEFAULT);
    EXPECT_EQ(draw.clrText, 0x123456u);
    EXPECT_EQ(draw.clrTextBk, 2u);
    draw.iSubItem = 1;
    EXPECT_EQ(Tell(list, &draw.nmcd.hdr, static_cast<UINT>(NM_CUSTOMDRAW)), CDRF_NEWFONT);
    EXPECT_EQ(GetCurrentObject(draw.nmcd.hdc, OBJ_FONT), GetStockObject(SYSTEM_FONT));
    ReleaseDC(parent_.Handle(), draw.nmcd.hdc);

    NMLVKEYDOWN key{};
    key.wVKey = VK_F2;
    Tell(list, &key.hdr, static_cast<UINT>(LVN_KEYDOWN));
    EXPECT_EQ(list.LastKey(), static_cast<UINT>(VK_F2));
    EXPECT_FALSE(list.WasClicked());
    Tell(list, &key.hdr, static_cast<UINT>(NM_CLICK));
    EXPECT_TRUE(list.WasClicked());

    LRESULT result = 77;
    NMHDR others{parent_.Handle(), kId + 1, static_cast<UINT>(LVN_KEYDOWN)};
    EXPECT_FALSE(list.Notify(kId + 1, &others, result));
    EXPECT_FALSE(list.Notify(kId, &others, result)) << "another control of the same id";
    EXPECT_FALSE(list.Notify(kId, nullptr, result));
    EXPECT_EQ(result, 77);
}

TEST_F(ListViewTest, DrawsWholeRowsOfItsOwn) {
    NumberList list(library_, &parent_, kId, ListForm::kOwnerDrawn, kArea);
    DRAWITEMSTRUCT item{};
    item.CtlID = kId;
    item.hwndItem = list.Handle();
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = ODS_SELECTED | ODS_FOCUS;
    item.itemData = 42;
    item.rcItem = {1, 2, 3, 4};
    item.hDC = GetDC(list.Handle());
    EXPECT_TRUE(list.DrawItem(kId, &item));
    ASSERT_EQ(list.drawn.size(), 1u);
    EXPECT_EQ(list.drawn[0].rowData, 42);
    EXPECT_EQ(list.drawn[0].surface, item.hDC);
    EXPECT_EQ(list.drawn[0].area.bottom, 4);
    EXPECT_TRUE(list.drawn[0].selected);

    item.itemAction = ODA_FOCUS;
    EXPECT_FALSE(list.DrawItem(kId, &item));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemData = 0;
    EXPECT_FALSE(list.DrawItem(kId, &item));
    item.itemData = 42;
    EXPECT_FALSE(list.DrawItem(kId + 1, &item));
    item.hwndItem = parent_.Handle();
    EXPECT_FALSE(list.DrawItem(kId, &item));
    EXPECT_FALSE(list.DrawItem(kId, nullptr));
    EXPECT_EQ(list.drawn.size(), 1u);
    ReleaseDC(list.Handle(), item.hDC);
}

}  // namespace
