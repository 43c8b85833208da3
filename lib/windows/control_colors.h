// The colours of a control whose dialog answers for it (WM_CTLCOLORSTATIC, WM_CTLCOLORBTN).
#pragma once

#include <windows.h>

#include "lib/windows/gdi_handles.h"

namespace kx {

inline constexpr COLORREF kControlWhite = 0xFFFFFF;
inline constexpr COLORREF kControlBlack = 0x000000;

// Until a background was set there is no brush, and the control keeps the system's colours.
class ControlColors {
  public:
    // Replaces the brush by a solid one of the colour.
    void SetBackground(COLORREF color);
    void SetText(COLORREF color) { text_ = color; }
    COLORREF Text() const { return text_; }

    // Sets the context's background and text colours. The answer is the brush, which stays this object's;
    // null when there is none.
    HBRUSH ApplyTo(HDC dc) const;

  private:
    friend struct ControlColorsLayout;

    UniqueBrush brush_;
    COLORREF background_ = kControlWhite;
    COLORREF text_ = kControlBlack;
};

}  // namespace kx
