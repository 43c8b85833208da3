// pane_keys: Ctrl+Z and Ctrl+Y anywhere in a pane.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <vector>

#include "lib/windows/control_watch.h"

namespace kx {

// Held by the pane.
class PaneKeys final : public ControlWatcher {
  public:
    // Watches the controls of a pane other than its marker view, which has these keys itself: they post
    // MVN_UNDO and MVN_REDO to the pane, whichever control has the focus. The watching ends with the object.
    void Watch(Window& pane, HWND view);

  private:
    std::optional<LRESULT> OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam,
                                            LPARAM lParam) override;

    std::vector<std::unique_ptr<ControlWatch>> watches_;
};

}  // namespace kx
