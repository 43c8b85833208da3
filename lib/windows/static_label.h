// Typed access to a STATIC control with colours of its own.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/modules/module_instance.h"
#include "lib/windows/control_colors.h"
#include "lib/windows/window.h"

namespace kx {

// What a created label without an image is.
enum class LabelKind { kCentered, kCenteredBordered, kOwnerDrawn, kOwnerDrawnBordered };

// Owned by whoever made it; its end is the end of its control.
class StaticLabel : public Window {
  public:
    // Adopts item `id` of a dialog.
    StaticLabel(Window* dialog, std::uint32_t id);
    // Create a label without text, in pixels of the parent's client area.
    StaticLabel(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
                int height, LabelKind kind);
    // The image stays the caller's and must outlive the label; null: a plain label without image.
    StaticLabel(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
                int height, HICON icon);
    StaticLabel(const ModuleInstance& module, Window* parent, std::uint32_t id, int x, int y, int width,
                int height, HBITMAP bitmap);
    ~StaticLabel();

    void SetBackground(COLORREF color) { colors_.SetBackground(color); }
    void SetTextColor(COLORREF color) { colors_.SetText(color); }
    // For the dialog's WM_CTLCOLORSTATIC: sets this label's colours and answers its brush. Null: another
    // control, or no background was set.
    HBRUSH OnCtlColor(HDC dc, HWND control) const;

  private:
    friend struct StaticLabelLayout;

    ControlColors colors_;
};

}  // namespace kx
