// Fonts and lengths of the user interface, by the system's message font and the system's dots per inch.
#pragma once

#include "host/windows/win32_handles.h"

namespace kxhost {

// Taken once at the start: the program is system-DPI-aware, so neither changes while it runs.
class UiMetrics {
  public:
    UiMetrics();

    // A length that is `pixels` at 96 dots per inch.
    int Scale(int pixels) const { return MulDiv(pixels, dpi_, USER_DEFAULT_SCREEN_DPI); }
    int LineHeight(HFONT font) const;

    HFONT Message() const { return message_.get(); }
    HFONT Strong() const { return strong_.get(); }
    HFONT Heading() const { return heading_.get(); }

  private:
    int dpi_;
    UniqueFont message_;
    UniqueFont strong_;   // bold, of the message font's size
    UniqueFont heading_;  // bold, larger
};

}  // namespace kxhost
