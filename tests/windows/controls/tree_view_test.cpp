#include "lib/windows/tree_view.h"

#include "tests/rig/gui_objects.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::TreeView;

class TreeViewTest : public kx::test::ControlTest {};

TEST_F(TreeViewTest, KeepsImagesUntilItsEnd) {
    kx::test::GuiObjects before{};
    for (int i = 0; i < 40; ++i) {
        TreeView tree(library_, &parent_, 500, 1, 2, 150, 200);
        kx::UniqueImageList images(ImageList_Create(16, 16, ILC_COLOR32, 3, 0));
        const HIMAGELIST list = images.get();
        tree.SetImages(std::move(images));
        EXPECT_EQ(reinterpret_cast<HIMAGELIST>(tree.SendMsg(TVM_GETIMAGELIST, TVSIL_NORMAL)), list);
        EXPECT_FALSE(tree.SetImages(1, 3));  // no such bitmap
        EXPECT_EQ(reinterpret_cast<HIMAGELIST>(tree.SendMsg(TVM_GETIMAGELIST, TVSIL_NORMAL)), list);
        if (i == 10) {
            before = kx::test::CountGuiObjects();
        }
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 6);
    EXPECT_LE(after.user, before.user + 4);
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
    bool OnTreeKeyDown(const NMTVKEYDOWN& key, LRESULT&) override {
        return Hear(key.wVKey == VK_F2 ? "key F2" : "key");
    }

  private:
    bool Hear(const char* what) {
        heard = what;
        return true;
    }
};

TEST_F(TreeViewTest, GivesItsNotificationsToTheirHandlers) {
    ListeningTree tree(library_, &parent_, 500, 1, 2, 150, 200);
    TreeView silent(library_, &parent_, 501, 1, 2, 150, 200);
    const struct {
        UINT code;
        const char* heard;
    } rows[] = {
        {TVN_SELCHANGINGA, "changing"},    {TVN_SELCHANGEDA, "changed"},    {TVN_SELCHANGEDW, "changed"},
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
        EXPECT_FALSE(tree.Notify(501, &notification.header, result));
        EXPECT_EQ(tree.heard, "");
        EXPECT_FALSE(silent.Notify(501, &notification.header, result)) << row.heard;
    }
    LRESULT result = 0;
    EXPECT_FALSE(tree.Notify(500, nullptr, result));
}

TEST_F(TreeViewTest, HandlersStandBehindThoseOfWindow) {
    EXPECT_EQ(kx::test::SlotOf(&TreeView::OnSelectionChanging), 42u);
    EXPECT_EQ(kx::test::SlotOf(&TreeView::OnTreeKeyDown), 51u);
}

TEST_F(TreeViewTest, EndsItsControl) {
    HWND window = nullptr;
    {
        const TreeView tree(library_, &parent_, 5, 1, 2, 100, 20);
        window = tree.Handle();
    }
    EXPECT_FALSE(IsWindow(window));
    TreeView missing(library_, &parent_, 5);
    EXPECT_EQ(missing.InsertTopItem("nowhere", 0, 0, 0), nullptr);
    EXPECT_EQ(missing.SelectedItem(), nullptr);
    missing.Clear();
}

}  // namespace
