#include "lib/windows/tree_view.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "lib/windows/common_controls.h"
#include "lib/windows/gdi_handles.h"

namespace kx {

// The layout that the suite's window objects share.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
struct TreeViewLayout {
    static_assert(offsetof(TreeView, library_) == sizeof(Window) + 0);
    static_assert(offsetof(TreeView, images_) == sizeof(Window) + 4);
    static_assert(sizeof(TreeView) == sizeof(Window) + 8);
};
#pragma GCC diagnostic pop

namespace {

// WS_CHILD, WS_VISIBLE, WS_BORDER, WS_VSCROLL, WS_TABSTOP, TVS_HASBUTTONS, TVS_HASLINES, TVS_LINESATROOT,
// TVS_SHOWSELALWAYS, TVS_TRACKSELECT
constexpr DWORD kTreeStyle = 0x50A10227;
constexpr int kImageSide = 16;  // pixels

}  // namespace

TreeView::TreeView(const LibraryModule& library, Window* dialog, std::uint32_t id)
    : Window(dialog, id), library_(&library) {}

TreeView::TreeView(const LibraryModule& library, Window* parent, std::uint32_t id, int x, int y, int width,
                   int height)
    : Window(nullptr, parent, id), library_(&library) {
    UseCommonControls();
    CreateControl(WC_TREEVIEWA, "Tree View", library.instance.Handle(), kTreeStyle, WS_EX_CLIENTEDGE, x, y,
                  width, height);
}

TreeView::~TreeView() {
    SendMsg(TVM_SETIMAGELIST, TVSIL_NORMAL, 0);
    Destroy();
}

bool TreeView::SetImages(std::uint32_t bitmapId, int count) {
    const UniqueBitmap strip(static_cast<HBITMAP>(
        library_->instance.LoadImageById(bitmapId, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    UniqueImageList images(ImageList_Create(kImageSide, kImageSide, ILC_COLOR32, std::max(count, 1), 0));
    if (strip != nullptr && images != nullptr) {
        ImageList_Add(images.get(), strip.get(), nullptr);
    }
    if (images == nullptr || ImageList_GetImageCount(images.get()) < count) {
        return false;
    }
    SetImages(std::move(images));
    return true;
}

void TreeView::SetImages(UniqueImageList images) {
    SendMsg(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images.get()));
    images_ = std::move(images);
}

HTREEITEM TreeView::InsertTopItem(const char* text, int image, int selectedImage, LPARAM data) {
    return InsertItem(TVI_ROOT, text, image, selectedImage, data);
}

HTREEITEM TreeView::InsertItem(HTREEITEM parent, const char* text, int image, int selectedImage,
                               LPARAM data) {
    TVINSERTSTRUCTA insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    insert.item.pszText = const_cast<char*>(text);  // read only
    insert.item.iImage = image;
    insert.item.iSelectedImage = selectedImage;
    insert.item.lParam = data;
    return reinterpret_cast<HTREEITEM>(SendMsg(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
}

void TreeView::Clear() {
    SendMsg(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
}

bool TreeView::Notify(std::uint32_t id, NMHDR* header, LRESULT& result) {
    if (id != Id() || header == nullptr) {
        return false;
    }
    const auto& change = *reinterpret_cast<const NMTREEVIEWA*>(header);
    // The Unicode forms, which a parent may have asked for, differ in texts that the handlers do not read.
    switch (header->code) {
        case TVN_SELCHANGINGA:
        case TVN_SELCHANGINGW:
            return OnSelectionChanging(change, result);
        case TVN_SELCHANGEDA:
        case TVN_SELCHANGEDW:
            return OnSelectionChanged(change, result);
        case NM_DBLCLK:
            return OnDoubleClick(result);
        case NM_RETURN:
            return OnReturn(result);
        case NM_RCLICK:
            return OnRightClick(result);
        case TVN_ITEMEXPANDINGA:
        case TVN_ITEMEXPANDINGW:
            return OnItemExpanding(change, result);
        case TVN_ITEMEXPANDEDA:
        case TVN_ITEMEXPANDEDW:
            return OnItemExpanded(change, result);
        case TVN_GETDISPINFOA:
            return OnDisplayInfo(*reinterpret_cast<NMTVDISPINFOA*>(header), result);
        case TVN_DELETEITEMA:
        case TVN_DELETEITEMW:
            return OnDeleteItem(change, result);
        case TVN_KEYDOWN:
            return OnTreeKeyDown(*reinterpret_cast<const NMTVKEYDOWN*>(header), result);
        default:
            return false;
    }
}

bool TreeView::OnSelectionChanging(const NMTREEVIEWA&, LRESULT&) {
    return false;
}
bool TreeView::OnSelectionChanged(const NMTREEVIEWA&, LRESULT&) {
    return false;
}
bool TreeView::OnDoubleClick(LRESULT&) {
    return false;
}
bool TreeView::OnReturn(LRESULT&) {
    return false;
}
bool TreeView::OnRightClick(LRESULT&) {
    return false;
}
bool TreeView::OnItemExpanding(const NMTREEVIEWA&, LRESULT&) {
    return false;
}
bool TreeView::OnItemExpanded(const NMTREEVIEWA&, LRESULT&) {
    return false;
}
bool TreeView::OnDisplayInfo(NMTVDISPINFOA&, LRESULT&) {
    return false;
}
bool TreeView::OnDeleteItem(const NMTREEVIEWA&, LRESULT&) {
    return false;
}
bool TreeView::OnTreeKeyDown(const NMTVKEYDOWN&, LRESULT&) {
    return false;
}

}  // namespace kx
