// A list view: what it asks its derived class for, and whose notifications it takes.
#include "lib/windows/list_view.h"
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

    const char* CellText(LPARAM rowData, int) override { return NumberText(static_cast<int>(rowData)); }
    COLORREF CellTextColor(LPARAM rowData, int) override { return static_cast<COLORREF>(rowData); }
    COLORREF CellBackColor(LPARAM, int column) override { return static_cast<COLORREF>(column); }
    HFONT CellFont(LPARAM, int column) override { return column == 1 ? static_cast<HFONT>(GetStockObject(SYSTEM_FONT)) : nullptr; }
    int CompareRows(LPARAM first, LPARAM second, int column) override {
        return column == 2 ? throw column : column == 0 ? 0 : static_cast<int>(first - second);
    }
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
        return {list.RowData(0), list.RowData(1), list.RowData(2)};
    }

    Parent parent_;
    NumberList list_{ThisLibrary(), &parent_, kId, ListForm::kReport, kArea};
};

TEST_F(Lists, SortByTheClickedHeaderAndBackAgain) {
    EXPECT_FALSE(list_.SetColumns("50^a^50"));
    EXPECT_TRUE(list_.SetColumns(("50^b^50^" + std::string(200, 't')).c_str()));
    EXPECT_EQ(list_.ColumnCount(), 3);
    for (const LPARAM number : {3, 1, 2}) {
        list_.AppendRow(number, 0);
    }
    EXPECT_THAT(AfterClick(list_, 0), ElementsAre(3, 1, 2)) << "rows that compare equal stay";
    EXPECT_THAT(AfterClick(list_, 1), ElementsAre(1, 2, 3));
    EXPECT_THAT(AfterClick(list_, 1), ElementsAre(3, 2, 1));
    EXPECT_THAT(AfterClick(list_, 2), ElementsAre(3, 2, 1)) << "an exception stays inside";
    // Columns from 16 on share a direction.
    AfterClick(list_, 17);
    EXPECT_THAT(AfterClick(list_, 16), ElementsAre(3, 2, 1));
}

TEST_F(Lists, AnswerForTheirOwnRowsAlone) {
    NMLVCUSTOMDRAW draw{};
    draw.nmcd.lItemlParam = 0x123456;
    draw.nmcd.hdc = GetDC(parent_.Handle());
    draw.iSubItem = 1;
    const struct {
        DWORD stage;
        LRESULT answer;
    } stages[] = {{CDDS_PREPAINT, CDRF_NOTIFYITEMDRAW},
                  {CDDS_ITEMPREPAINT, CDRF_NOTIFYSUBITEMDRAW},
                  {CDDS_ITEMPREPAINT | CDDS_SUBITEM, CDRF_NEWFONT}};
    for (const auto& stage : stages) {
        draw.nmcd.dwDrawStage = stage.stage;
        EXPECT_EQ(Tell(list_, draw.nmcd.hdr, NM_CUSTOMDRAW), stage.answer);
    }
    EXPECT_EQ(draw.clrText, 0x123456u);
    EXPECT_EQ(draw.clrTextBk, 1u);
    EXPECT_EQ(GetCurrentObject(draw.nmcd.hdc, OBJ_FONT), GetStockObject(SYSTEM_FONT));
    ReleaseDC(parent_.Handle(), draw.nmcd.hdc);

    LRESULT result = 77;
    NMHDR others{parent_.Handle(), kId + 1, static_cast<UINT>(NM_CUSTOMDRAW)};
    EXPECT_FALSE(list_.Notify(kId + 1, &others, result) || list_.Notify(kId, &others, result) || list_.Notify(kId, nullptr, result));
    EXPECT_EQ(result, 77);
}

}  // namespace
}  // namespace kx::test
