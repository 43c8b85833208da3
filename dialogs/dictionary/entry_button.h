// One statement of the user dictionary's section as a button.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "lib/modules/module_instance.h"
#include "lib/windows/window.h"

namespace kx {

// An owner-drawn push button whose caption is the statement. Owned by whoever made it; its end is the end of
// its control. Enter clicks it, as it does an ordinary push button: the system would press the dialog's
// default one, which here ends the editing.
class EntryButton final : public Window {
  public:
    // In pixels of the dialog's client area. startsGroup: the arrow keys move from this button through those
    // made after it, and Tab stops at it. font stays the caller's.
    EntryButton(const ModuleInstance& module, Window* dialog, std::uint32_t id, const RECT& area,
                bool startsGroup, HFONT font);
    ~EntryButton();

    bool IsSelected() const { return selected_; }
    // Redraws the button.
    void Select(bool selected);

    // For the dialog's WM_DRAWITEM of this button.
    void Draw(const DRAWITEMSTRUCT& item, HFONT font) const;

    std::optional<LRESULT> OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool DeletesItself() const { return false; }

  private:
    bool selected_ = false;
    COLORREF normalColor_;
};

}  // namespace kx
