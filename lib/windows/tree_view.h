// Typed access to a tree view.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>

#include "lib/modules/library_module.h"
#include "lib/windows/image_list.h"
#include "lib/windows/window.h"

namespace kx {

// Owned by whoever made it; its end is the end of its control and of its images.
class TreeView : public Window {
  public:
    // Adopts item `id` of a dialog. library: whose bitmaps SetImages loads; it outlives the tree.
    TreeView(const LibraryModule& library, Window* dialog, std::uint32_t id);
    // Creates a tree with buttons and lines that always shows its selection, in pixels of the parent's client
    // area.
    TreeView(const LibraryModule& library, Window* parent, std::uint32_t id, int x, int y, int width,
             int height);
    ~TreeView();

    // Takes the 16 x 16 images of the items from a bitmap of the library, one beside the other. False: it
    // holds fewer than `count`, and the tree has the images that it had.
    bool SetImages(std::uint32_t bitmapId, int count);
    // The same with a list that was made elsewhere; null: no images.
    void SetImages(UniqueImageList images);

    // Adds an item at the end of the root, or of another item's children. image, selectedImage: indexes into
    // the images; data: the caller's own. The text is copied. Null: there is no control, or no memory.
    HTREEITEM InsertTopItem(const char* text, int image, int selectedImage, LPARAM data);
    HTREEITEM InsertItem(HTREEITEM parent, const char* text, int image, int selectedImage, LPARAM data);
    // Removes every item.
    void Clear();

    // Told by the parent of every WM_NOTIFY; one of this tree's is given to its handler below. Returns
    // whether that handler consumed it, with the answer for the control in `result`. Notifications of other
    // controls, and those without a handler, are not consumed.
    bool Notify(std::uint32_t id, NMHDR* header, LRESULT& result);

    // The tree's own notifications. Each returns whether it consumed the notification; by default none is.
    virtual bool OnSelectionChanging(const NMTREEVIEWA& change, LRESULT& result);
    virtual bool OnSelectionChanged(const NMTREEVIEWA& change, LRESULT& result);
    virtual bool OnDoubleClick(LRESULT& result);
    virtual bool OnReturn(LRESULT& result);
    virtual bool OnRightClick(LRESULT& result);
    virtual bool OnItemExpanding(const NMTREEVIEWA& change, LRESULT& result);
    virtual bool OnItemExpanded(const NMTREEVIEWA& change, LRESULT& result);
    virtual bool OnDisplayInfo(NMTVDISPINFOA& display, LRESULT& result);
    virtual bool OnDeleteItem(const NMTREEVIEWA& item, LRESULT& result);
    virtual bool OnTreeKeyDown(const NMTVKEYDOWN& key, LRESULT& result);

  private:
    friend struct TreeViewLayout;

    const LibraryModule* library_;
    UniqueImageList images_;
};

}  // namespace kx
