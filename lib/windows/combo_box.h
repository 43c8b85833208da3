// Typed access to a COMBOBOX control whose items carry codes.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "lib/modules/library_module.h"
#include "lib/modules/module_instance.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/held_control.h"
#include "lib/windows/window.h"

namespace kx {

// Subclasses its control and deletes itself with it (see subclassed_control.h): made with new, held by
// address. One that is held leaves its control alone and is deleted by its holder. An operation on a list
// that has no such item gives what the message gives, CB_ERR (-1).
class ComboBox final : public Window {
  public:
    // Adopts item `id` of a dialog. library: whose strings FillPickList loads; it outlives the combo box.
    ComboBox(const LibraryModule& library, Window* dialog, std::uint32_t id);
    ComboBox(const LibraryModule& library, Window* dialog, std::uint32_t id, Held)
        : Window(dialog, id), library_(&library) {}
    // Creates a drop-down list in pixels of the parent's client area. visibleItems: how many items of 10
    // pixels its control with the open list is high. forwardTarget: whom a selection is told (see
    // OnControlMessage); null: nobody.
    ComboBox(const LibraryModule& library, Window* parent, std::uint32_t id, int x, int y, int width,
             int visibleItems, Window* forwardTarget, UINT forwardMessage);

    // True: the control deletes this object. False (it is held, there is no control, or it could not be
    // subclassed): the owner does.
    bool DeletesItself() const { return ReplacedProc() != nullptr; }

    // Replaces the items by those of pick list `textId` of the library's strings (see lib/pick_list.h), each
    // with its code, and selects the one with `selectedCode`, else item 0.
    void FillPickList(std::uint32_t textId, std::int32_t selectedCode);
    void FillPickListText(std::string_view text, std::int32_t selectedCode);

    // Adds an item with a code. Returns its index.
    int AddItem(std::int32_t code, const char* text);
    // Selects the first item with the code; without one the selection stays.
    void SelectCode(std::int32_t code);
    // The code of the selected item, CB_ERR when none is selected.
    std::int32_t SelectedCode() const;

    // Whether the wParam of a WM_COMMAND says this of this combo box.
    bool IsSelChange(WPARAM wParam) const;
    bool IsEditChange(WPARAM wParam) const;
    bool IsEditUpdate(WPARAM wParam) const;

    // One message each; indexes from 0.
    void Reset();
    // False: there is no such item, or its data is -1, which the control cannot tell from that; data is set
    // in any case.
    bool GetItemData(int index, std::int32_t& data) const;
    bool SetItemData(int index, std::int32_t data);
    int AddString(const char* text);
    int InsertString(int index, const char* text);
    int DeleteString(int index);
    int SetCurSel(int index);
    // Copies an item's text, cut at size - 1 characters. Returns the number of characters copied, CB_ERR (and
    // an empty buffer) when there is no such item.
    int GetLBText(int index, char* buffer, std::size_t size) const;
    int GetCount() const;
    int GetCurSel() const;

    // What the control's own messages mean to the wrapper: a WM_COMMAND of its list is told to the forward
    // target, if there is one, by posting the forward message with the selected item's code and the address
    // of its text. The text stands in one buffer for all combo boxes until the next such message.
    std::optional<LRESULT> OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // ---- what the suite's other programs do, and no pane of this library

    // Replaces the items by the pieces of a text between its '^' separators. The items have no codes.
    void FillList(const char* text);
    // The code is the decimal number that codeText starts with. Returns the item's index.
    int AddItem(const char* codeText, const char* text);
    // Selects the first item whose text is exactly (also in case) the given one, else item 0.
    void SelectText(const char* text);
    // The next item with the text, case ignored, searching from item 1 and round to item 0.
    int FindExact(const char* text) const;

    // As IsSelChange.
    bool IsSelEndOk(WPARAM wParam) const;
    bool IsKillFocus(WPARAM wParam) const;

  private:
    friend struct ComboBoxLayout;

    bool HasText(int index, std::string_view text) const;
    void ForwardSelection() const;

    const LibraryModule* library_;
    UINT forwardMessage_ = 0;
    Window* forwardTarget_ = nullptr;
    UniqueBrush brush_;  // none: the system's colours
};

}  // namespace kx
