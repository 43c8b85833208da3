// Filling a control without having it drawn at every step.
#pragma once

#include "lib/windows/window.h"

namespace kx {

// The control, which is a visible one or a combo box, does not draw itself while the object lives, and draws
// what it has become afterwards. To be made for one control at a time, not nested. (Most controls are visible
// once drawing is resumed; a combo box hands the message to its list.)
class DrawingPause {
  public:
    explicit DrawingPause(const Window& control) : control_(&control) {
        control.SendMsg(WM_SETREDRAW, FALSE);
    }
    ~DrawingPause() { control_->SendMsg(WM_SETREDRAW, TRUE); }
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

  private:
    const Window* control_;
};

}  // namespace kx
