#include "lib/windows/tree_view.h"

#include "tests/support/gui_objects.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::TreeView;

class TreeViewTest : public kx::test::ControlTest {
  protected:
    std::string Text(const TreeView& tree, HTREEITEM item) {
        char text[64];
        EXPECT_TRUE(tree.ItemText(item, text, sizeof text));
        return text;
    }
};

TEST_F(TreeViewTest, IsCreatedWithButtonsAndLines) {
    const TreeView tree(library_, &parent_, 500, 1, 2, 150, 200);
    EXPECT_EQ(kx::test::ClassOf(tree.Handle()), "SysTreeView32");
    EXPECT_EQ(kx::test::TextOf(tree.Handle()), "Tree View");
    // An empty tree has no scroll bar.
    EXPECT_EQ(kx::test::StyleOf(tree.Handle()) | WS_VSCROLL, 0x50A10227u);
    EXPECT_NE(kx::test::ExtendedStyleOf(tree.Handle()) & WS_EX_CLIENTEDGE, 0u);
    EXPECT_EQ(GetDlgCtrlID(tree.Handle()), 500);
}

TEST_F(TreeViewTest, HoldsItemsWithData) {
    TreeView tree(library_, &parent_, 500, 1, 2, 150, 200);
    const HTREEITEM first = tree.InsertTopItem("Ritmo", 0, 1, 11);
    const HTREEITEM second = tree.InsertTopItem("Asse", 0, 1, 22);
    const HTREEITEM child = tree.InsertItem(first, "Ritmo sinusale [RS]", 2, 2, 33);
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(reinterpret_cast<HTREEITEM>(tree.SendMsg(TVM_GETNEXTITEM, TVGN_ROOT)), first);
    EXPECT_EQ(reinterpret_cast<HTREEITEM>(
                  tree.SendMsg(TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(first))),
              second);
    EXPECT_EQ(Text(tree, child), "Ritmo sinusale [RS]");
    EXPECT_EQ(tree.ItemData(child), 33);
    EXPECT_EQ(tree.ItemData(second), 22);
    EXPECT_EQ(tree.ItemData(nullptr), 0);
    char text[6] = "?????";
    EXPECT_TRUE(tree.ItemText(child, text, sizeof text));
    EXPECT_STREQ(text, "Ritmo");
    EXPECT_FALSE(tree.ItemText(nullptr, text, sizeof text));
    EXPECT_STREQ(text, "");
    EXPECT_FALSE(tree.ItemText(child, text, 0));

    EXPECT_EQ(tree.SelectedItem(), nullptr);
    tree.SendMsg(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(child));
    EXPECT_EQ(tree.SelectedItem(), child);
    tree.Clear();
    EXPECT_EQ(tree.SendMsg(TVM_GETCOUNT), 0);
}

TEST_F(TreeViewTest, KeepsImagesUntilItsEnd) {
    kx::test::GuiObjects before{};
    for (int i = 0; i < 60; ++i) {
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

// resources.rc holds a strip of three images.
TEST_F(TreeViewTest, TakesImagesFromBitmapOfTheLibrary) {
    TreeView tree(library_, &parent_, 500, 1, 2, 150, 200);
    EXPECT_TRUE(tree.SetImages(100, 3));
    const auto list = reinterpret_cast<HIMAGELIST>(tree.SendMsg(TVM_GETIMAGELIST, TVSIL_NORMAL));
    EXPECT_EQ(ImageList_GetImageCount(list), 3);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(list, &width, &height);
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
    EXPECT_FALSE(tree.SetImages(100, 4));
    EXPECT_EQ(reinterpret_cast<HIMAGELIST>(tree.SendMsg(TVM_GETIMAGELIST, TVSIL_NORMAL)), list);
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
