// List view and tree view: what each asks its derived class for, and whose notifications it takes.
#include "lib/windows/list_view.h"
#include "lib/windows/tree_view.h"
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t kId = 500;
constexpr RECT kArea{1, 2, 301, 202};

// Rows are numbers; column 1 sorts them, column 2 refuses to.
class NumberList final : public ListView {
  public:
    using ListView::ListView;

    const char* CellText(LPARAM rowData, int column) override { return column == 0 ? NumberText(static_cast<int>(rowData)) : "x"; }
    COLORREF CellTextColor(LPARAM rowData, int) override { return static_cast<COLORREF>(rowData); }
    COLORREF CellBackColor(LPARAM, int column) override { return static_cast<COLORREF>(column); }
    HFONT CellFont(LPARAM, int column) override { return column == 1 ? static_cast<HFONT>(GetStockObject(SYSTEM_FONT)) : nullptr; }
    int CompareRows(LPARAM first, LPARAM second, int column) override {
        if (column == 2) {
            throw column;
        }
        return column == 1 || column >= 16 ? static_cast<int>(first - second) : 0;
    }
    void DrawRow(DeviceContext& surface, const RECT& area, LPARAM rowData, bool selected) override {
        drawn.push_back(std::to_string(rowData) + (selected ? " selected " : " ") + std::to_string(area.bottom));
        drawnOn = surface.Handle();
    }

    std::vector<std::string> drawn;
    HDC drawnOn = nullptr;
};

class Lists : public testing::Test {
  protected:
    static LRESULT Tell(ListView& list, NMHDR& header, int code) {
        header = {list.Handle(), kId, static_cast<UINT>(code)};
        LRESULT result = -1;
        EXPECT_TRUE(list.Notify(kId, &header, result)) << code;
        return result;
    }
    static std::vector<LPARAM> AfterClick(ListView& list, int column) {
        NMLISTVIEW click{};
        click.iSubItem = column;
        Tell(list, click.hdr, LVN_COLUMNCLICK);
        std::vector<LPARAM> rows;
        for (int row = 0; row < list.ItemCount(); ++row) {
            rows.push_back(list.RowData(row));
        }
        return rows;
    }

    const LibraryModule& library_ = ThisLibrary();
    Parent parent_;
};

TEST_F(Lists, HaveTheirOperationsInTheSlotsBehindTheWindows) {
    const int list[] = {Slot(&ListView::CellText), Slot(&ListView::CellTextColor), Slot(&ListView::CellBackColor),
                        Slot(&ListView::CellFont), Slot(&ListView::CompareRows),   Slot(&ListView::DrawRow)};
    EXPECT_THAT(list, ElementsAre(42, 43, 44, 45, 46, 47));
    EXPECT_EQ(Slot(&TreeView::OnSelectionChanging), 42);
    EXPECT_EQ(Slot(&TreeView::OnTreeKeyDown), 51);
}

TEST_F(Lists, ReadColumnsInPairs) {
    const struct {
        std::string text;
        bool whole;
        int columns;
        DWORD extendedStyle;
    } rows[] = {{"", true, 0, 0x30},
                {"70^Deriv", true, 1, 0x30},
                {"230^c1^-1^c2", true, 2, 0x30},
                {"70^a^80", false, 1, 0},
                {"70^a^80^", true, 2, 0x30},
                {"70", false, 0, 0},
                {"70^" + std::string(200, 't'), true, 1, 0x30}};
    for (const auto& row : rows) {
        ListView list(library_, &parent_, kId, ListForm::kReport, kArea);
        EXPECT_EQ(list.SetColumns(row.text.c_str()), row.whole) << row.text;
        EXPECT_EQ(list.ColumnCount(), row.columns) << row.text;
        EXPECT_EQ(static_cast<DWORD>(list.SendMsg(LVM_GETEXTENDEDLISTVIEWSTYLE)), row.extendedStyle) << row.text;
        if (row.text.size() > 64) {
            char title[128] = {};
            LVCOLUMNA column{};
            column.mask = LVCF_TEXT;
            column.pszText = title;
            column.cchTextMax = sizeof title;
            list.SendMsg(LVM_GETCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
            EXPECT_EQ(std::string(title), std::string(64, 't'));
        }
    }
}

TEST_F(Lists, SortByTheClickedHeaderAndBackAgain) {
    NumberList list(library_, &parent_, kId, ListForm::kReport, kArea);
    list.SetColumns("50^a^50^b^50^c");
    for (const LPARAM number : {3, 1, 2}) {
        EXPECT_GE(list.AppendRow(number, 0), 0);
    }
    EXPECT_THAT(AfterClick(list, 0), ElementsAre(3, 1, 2)) << "rows that compare equal stay";
    EXPECT_THAT(AfterClick(list, 1), ElementsAre(1, 2, 3));
    EXPECT_THAT(AfterClick(list, 1), ElementsAre(3, 2, 1));
    EXPECT_THAT(AfterClick(list, 1), ElementsAre(1, 2, 3));
    EXPECT_THAT(AfterClick(list, 2), ElementsAre(1, 2, 3)) << "an exception stays inside";
    // Columns from 16 on share a direction.
    AfterClick(list, 17);
    EXPECT_THAT(AfterClick(list, 16), ElementsAre(3, 2, 1));
}

TEST_F(Lists, AnswerForTheirOwnRowsAlone) {
    NumberList list(library_, &parent_, kId, ListForm::kReport, kArea);
    NMLVDISPINFOA display{};
    display.item.mask = LVIF_TEXT;
    display.item.lParam = -1250;
    Tell(list, display.hdr, LVN_GETDISPINFOA);
    EXPECT_STREQ(display.item.pszText, "-1250");

    NMLVCUSTOMDRAW draw{};
    draw.nmcd.lItemlParam = 0x123456;
    draw.nmcd.hdc = GetDC(parent_.Handle());
    const struct {
        DWORD stage;
        int column;
        LRESULT answer;
    } stages[] = {{CDDS_PREPAINT, 0, CDRF_NOTIFYITEMDRAW},
                  {CDDS_ITEMPREPAINT, 0, CDRF_NOTIFYSUBITEMDRAW},
                  {CDDS_ITEMPREPAINT | CDDS_SUBITEM, 2, CDRF_DODEFAULT},
                  {CDDS_ITEMPREPAINT | CDDS_SUBITEM, 1, CDRF_NEWFONT}};
    for (const auto& stage : stages) {
        draw.nmcd.dwDrawStage = stage.stage;
        draw.iSubItem = stage.column;
        EXPECT_EQ(Tell(list, draw.nmcd.hdr, NM_CUSTOMDRAW), stage.answer);
    }
    EXPECT_EQ(draw.clrText, 0x123456u);
    EXPECT_EQ(draw.clrTextBk, 1u);
    EXPECT_EQ(GetCurrentObject(draw.nmcd.hdc, OBJ_FONT), GetStockObject(SYSTEM_FONT));
    ReleaseDC(parent_.Handle(), draw.nmcd.hdc);

    NMLVKEYDOWN key{};
    key.wVKey = VK_F2;
    Tell(list, key.hdr, LVN_KEYDOWN);
    EXPECT_EQ(list.LastKey(), static_cast<UINT>(VK_F2));
    EXPECT_FALSE(list.WasClicked());
    Tell(list, key.hdr, NM_CLICK);
    EXPECT_TRUE(list.WasClicked());

    LRESULT result = 77;
    NMHDR others{parent_.Handle(), kId + 1, static_cast<UINT>(LVN_KEYDOWN)};
    EXPECT_FALSE(list.Notify(kId + 1, &others, result));
    EXPECT_FALSE(list.Notify(kId, &others, result)) << "another control of the same id";
    EXPECT_FALSE(list.Notify(kId, nullptr, result));
    EXPECT_EQ(result, 77);
}

TEST_F(Lists, DrawWholeRowsOfTheirOwn) {
    NumberList list(library_, &parent_, kId, ListForm::kOwnerDrawn, kArea);
    const HDC dc = GetDC(list.Handle());
    const struct {
        const char* name;
        std::uint32_t id;
        UINT action, state;
        HWND control;
        ULONG_PTR data;
        const char* drawn;  // null: nothing
    } rows[] = {
        {"selected", kId, ODA_DRAWENTIRE, ODS_SELECTED | ODS_FOCUS, list.Handle(), 42, "42 selected 4"},
        {"not selected", kId, ODA_DRAWENTIRE, 0, list.Handle(), 43, "43 4"},
        {"focus only", kId, ODA_FOCUS, 0, list.Handle(), 42, nullptr},
        {"no row", kId, ODA_DRAWENTIRE, 0, list.Handle(), 0, nullptr},
        {"another id", kId + 1, ODA_DRAWENTIRE, 0, list.Handle(), 42, nullptr},
        {"another control", kId, ODA_DRAWENTIRE, 0, parent_.Handle(), 42, nullptr},
    };
    for (const auto& row : rows) {
        const DRAWITEMSTRUCT item{0, kId, 0, row.action, row.state, row.control, dc, {1, 2, 3, 4}, row.data};
        list.drawn.clear();
        EXPECT_EQ(list.DrawItem(row.id, &item), row.drawn != nullptr) << row.name;
        EXPECT_EQ(list.drawn, row.drawn != nullptr ? std::vector<std::string>{row.drawn} : std::vector<std::string>{}) << row.name;
    }
    EXPECT_EQ(list.drawnOn, dc);
    EXPECT_FALSE(list.DrawItem(kId, nullptr));
    ReleaseDC(list.Handle(), dc);
}

class ListeningTree final : public TreeView {
  public:
    using TreeView::TreeView;
    std::string heard;

    bool OnSelectionChanging(const NMTREEVIEWA&, LRESULT&) override { return Hear("changing"); }
    bool OnSelectionChanged(const NMTREEVIEWA& change, LRESULT& result) override {
        result = change.itemNew.lParam;
        return Hear("changed");
    }
    bool OnDoubleClick(LRESULT&) override { return Hear("double click"); }
    bool OnReturn(LRESULT&) override { return Hear("return"); }
    bool OnRightClick(LRESULT&) override { return Hear("right click"); }
    bool OnItemExpanding(const NMTREEVIEWA&, LRESULT&) override { return Hear("expanding"); }
    bool OnItemExpanded(const NMTREEVIEWA&, LRESULT&) override { return Hear("expanded"); }
    bool OnDisplayInfo(NMTVDISPINFOA&, LRESULT&) override { return Hear("display"); }
    bool OnDeleteItem(const NMTREEVIEWA&, LRESULT&) override { return Hear("delete"); }
    bool OnTreeKeyDown(const NMTVKEYDOWN& key, LRESULT&) override { return Hear(key.wVKey == VK_F2 ? "key F2" : "key"); }

  private:
    bool Hear(const char* what) {
        heard = what;
        return true;
    }
};

TEST_F(Lists, OfATreeGiveItsNotificationsToTheirHandlers) {
    ListeningTree tree(library_, &parent_, 500, 1, 2, 150, 200);
    TreeView silent(library_, &parent_, 501, 1, 2, 150, 200);
    const struct {
        UINT code;
        const char* heard;
    } rows[] = {{TVN_SELCHANGINGA, "changing"},    {TVN_SELCHANGEDA, "changed"},    {TVN_SELCHANGEDW, "changed"},
                {NM_DBLCLK, "double click"},       {NM_RETURN, "return"},           {NM_RCLICK, "right click"},
                {TVN_ITEMEXPANDINGA, "expanding"}, {TVN_ITEMEXPANDEDA, "expanded"}, {TVN_GETDISPINFOA, "display"},
                {TVN_DELETEITEMA, "delete"},       {TVN_KEYDOWN, "key F2"},         {NM_CLICK, ""}};
    for (const auto& row : rows) {
        union {
            NMHDR header;
            NMTREEVIEWA change;
            NMTVDISPINFOA display;
            NMTVKEYDOWN key;
        } notification{};
        notification.change.itemNew.lParam = 77;
        if (row.code == TVN_KEYDOWN) {
            notification.key.wVKey = VK_F2;
        }
        notification.header = {tree.Handle(), 500, row.code};
        LRESULT result = 0;
        tree.heard.clear();
        EXPECT_EQ(tree.Notify(500, &notification.header, result), *row.heard != 0) << row.heard;
        EXPECT_EQ(tree.heard, row.heard);
        EXPECT_EQ(result, row.heard == std::string("changed") ? 77 : 0) << row.heard;
        tree.heard.clear();
        EXPECT_FALSE(tree.Notify(501, &notification.header, result) || silent.Notify(501, &notification.header, result));
        EXPECT_EQ(tree.heard, "");
    }
    LRESULT result = 0;
    EXPECT_FALSE(tree.Notify(500, nullptr, result));
}

TEST_F(Lists, OfATreeKeepTheirImagesAndEndWithTheirOwner) {
    HWND window = nullptr;
    UniqueImageList images(ImageList_Create(16, 16, ILC_COLOR32, 3, 0));
    const HIMAGELIST list = images.get();
    {
        TreeView tree(library_, &parent_, 500, 1, 2, 150, 200);
        window = tree.Handle();
        tree.SetImages(std::move(images));
        EXPECT_FALSE(tree.SetImages(1, 3));  // no such bitmap
        EXPECT_EQ(reinterpret_cast<HIMAGELIST>(tree.SendMsg(TVM_GETIMAGELIST, TVSIL_NORMAL)), list);
    }
    EXPECT_FALSE(IsWindow(window));
    TreeView missing(library_, &parent_, 5);
    EXPECT_EQ(missing.InsertTopItem("nowhere", 0, 0, 0), nullptr);
    EXPECT_EQ(missing.SelectedItem(), nullptr);
    missing.Clear();
}

}  // namespace
}  // namespace kx::test
