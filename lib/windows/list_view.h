// Typed access to a list view whose texts, colours, fonts and order are asked for when they are needed.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>

#include "lib/modules/library_module.h"
#include "lib/windows/image_list.h"
#include "lib/windows/window.h"

namespace kx {

class DeviceContext;

// What a created list shows itself as.
enum class ListForm {
    kReport,     // columns and rows, one row can be selected, the selection is always shown
    kTitled,     // with a window title, several rows can be selected
    kOwnerDrawn  // as kReport, its rows drawn by DrawRow; at 0, 0 with size 100 x 100
};

// Owned by whoever made it; its end is the end of its control and of its images. rowData is the caller's own
// 32-bit value of a row. Its parent passes WM_NOTIFY on to Notify and, when the rows are owner-drawn,
// WM_DRAWITEM to DrawItem.
class ListView : public Window {
  public:
    // Adopts item `id` of a dialog. library: whose strings and icons are used; it outlives the list.
    ListView(const LibraryModule& library, Window* dialog, std::uint32_t id);
    // Creates a list; area in pixels of the parent's client area. title: kTitled alone shows one.
    ListView(const LibraryModule& library, Window* parent, std::uint32_t id, ListForm form, const RECT& area,
             const char* title = "");
    ~ListView();

    // ---- what a derived list supplies, in this order after the slots of Window

    // The text of a cell; it is used before the next call. Default: empty.
    virtual const char* CellText(LPARAM rowData, int column);
    // Default: black on white.
    virtual COLORREF CellTextColor(LPARAM rowData, int column);
    virtual COLORREF CellBackColor(LPARAM rowData, int column);
    // Null, the default: the list's own font.
    virtual HFONT CellFont(LPARAM rowData, int column);
    // Below 0, 0 or above 0 as the first row stands before, with or behind the second when the column
    // ascends. Default: 0, the rows stay in their order.
    virtual int CompareRows(LPARAM first, LPARAM second, int column);
    // A row of an owner-drawn list. Default: nothing.
    virtual void DrawRow(DeviceContext& surface, const RECT& area, LPARAM rowData, bool selected);

    // ---- styles that can be added

    void HideColumnHeader() { AddStyle(LVS_NOCOLUMNHEADER); }
    void DrawRowsByOwner() { AddStyle(LVS_OWNERDRAWFIXED); }
    void DisableHeaderSorting() { AddStyle(LVS_NOSORTHEADER); }
    void AlignLeft() { AddStyle(LVS_ALIGNLEFT); }
    void ShowGridLines() { AddExtendedStyle(LVS_EX_GRIDLINES); }

    // ---- columns, images and rows

    // Builds the small (16 x 16) and the normal (32 x 32) images from `count` icons of the library. False:
    // one of the icons cannot be had, and the list has no images.
    bool SetImages(int count, const std::uint32_t* iconIds);
    // Adds the columns that a text of pairs width^title names, left-aligned, widths in pixels, titles cut at
    // 64 characters, and lets rows be selected whole and headers be dragged. False: a pair is incomplete or
    // the system refuses a column; the pairs before are columns then, without those two styles.
    bool SetColumns(const char* text);
    // The same with a string of the library, cut at 255 characters.
    bool SetColumnsFromResource(std::uint32_t stringId);
    int ColumnCount() const { return columnCount_; }

    // Adds a row at the end; its texts are asked for when they are shown. Its index, or -1.
    int AppendRow(LPARAM rowData, int image);
    // Focuses and selects a row and scrolls it into view.
    void SelectRow(int row);
    // -1: none.
    int SelectedRow() const;
    int ItemCount() const;
    // The rowData of a row; 0 for one that is not there.
    LPARAM RowData(int row) const;
    void DeleteAllRows();

    // ---- what the parent passes on

    // True: it was this list's own and result is its answer. Other controls' are not touched.
    bool Notify(UINT_PTR id, NMHDR* header, LRESULT& result);
    // True when a row was drawn.
    bool DrawItem(UINT id, const DRAWITEMSTRUCT* item);

    bool WasClicked() const { return lastCode_ == NM_CLICK; }
    UINT LastKey() const { return lastKey_; }        // virtual key; 0: none yet
    int LastEditedRow() const { return lastItem_; }  // -1: none yet

    // "%d", in a buffer that all lists share.
    static const char* NumberText(int value);

  protected:
    // The key that the list was given while it had the focus. Default: nothing.
    virtual void OnListKey(UINT virtualKey);

    const LibraryModule& Library() const { return *library_; }
    void AddStyle(DWORD bits);
    void AddExtendedStyle(DWORD bits);

  private:
    friend struct ListViewLayout;

    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& draw);
    void SortBy(int column);

    const LibraryModule* library_;
    UniqueImageList smallImages_;
    UniqueImageList normalImages_;
    int columnCount_ = 0;
    UINT lastCode_ = 0;
    UINT lastKey_ = 0;
    int lastItem_ = -1;
    // Bit min(column, 16): the column's next sorting descends.
    std::uint32_t descending_ = 0;
};

}  // namespace kx
