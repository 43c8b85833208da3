#include "lib/windows/control_colors.h"

#include <cstddef>

namespace kx {

// Three words of every wrapper that has colours.
struct ControlColorsLayout {
    static_assert(offsetof(ControlColors, brush_) == 0);
    static_assert(offsetof(ControlColors, background_) == 4);
    static_assert(offsetof(ControlColors, text_) == 8);
    static_assert(sizeof(ControlColors) == 12);
};

void ControlColors::SetBackground(COLORREF color) {
    background_ = color;
    brush_.reset(CreateSolidBrush(color));
}

HBRUSH ControlColors::ApplyTo(HDC dc) const {
    SetBkColor(dc, background_);
    SetTextColor(dc, text_);
    return brush_.get();
}

}  // namespace kx
