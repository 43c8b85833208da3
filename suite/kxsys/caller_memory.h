// Reading what a caller points at without trusting the pointer.
#pragma once

#include <windows.h>

#include "suite/kxsys/kxsys.h"

namespace kx::sys {

// A copy of a caller's text, tidied for one line. Null, unreadable and unterminated texts are taken as far as
// they can be read.
class CallerText {
  public:
    explicit CallerText(const char* text);
    const char* Text() const { return text_; }

  private:
    char text_[KXSYS_LONGEST_TEXT + 1];
};

// The window of a window object: its second 32-bit word. Null when there is no object or no such window.
HWND OwnerWindow(const void* owner);

}  // namespace kx::sys
