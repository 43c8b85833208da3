// Typed access to a BUTTON control: a check box, or a push button with an icon.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "lib/modules/module_instance.h"
#include "lib/windows/control_colors.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/held_control.h"
#include "lib/windows/window.h"

namespace kx {

// Subclasses its control and deletes itself with it (see subclassed_control.h): made with new, held by
// address. One that is held leaves its control alone and is deleted by its holder.
class CheckBox final : public Window {
  public:
    // Adopts item `id` of a dialog.
    CheckBox(Window* dialog, std::uint32_t id);
    CheckBox(Window* dialog, std::uint32_t id, Held) : Window(dialog, id) {}
    // Creates an automatic check box without text, in pixels of the parent's client area.
    CheckBox(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
             int height);

    // True: the control deletes this object. False (it is held, there is no control, or it could not be
    // subclassed): the owner does.
    bool DeletesItself() const { return ReplacedProc() != nullptr; }
    // The control's own messages mean nothing to the wrapper.
    std::optional<LRESULT> OnControlMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }

    void SetChecked(bool checked);
    void Check() { SetChecked(true); }
    void Uncheck() { SetChecked(false); }
    void SetIndeterminate();
    // False also while it is indeterminate.
    bool IsChecked() const;
    // Whether the wParam of a WM_COMMAND says that this button was clicked.
    bool IsClicked(WPARAM wParam) const;

    // Shows the icon in the place of the text of a BS_ICON button and keeps it until the next one; null:
    // none. Returns whether there is one. The icon must not be a shared one.
    bool SetIcon(UniqueIcon icon);

    void SetBackground(COLORREF color) { colors_.SetBackground(color); }
    void SetTextColor(COLORREF color) { colors_.SetText(color); }
    // For the dialog's WM_CTLCOLORSTATIC: sets this control's colours and answers its brush. Null: another
    // control, or no background was set.
    HBRUSH OnCtlColor(HDC dc, HWND control) const;

  private:
    friend struct CheckBoxLayout;

    UniqueIcon icon_;
    ControlColors colors_;
};

}  // namespace kx
