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
    // Watches a control that can have the focus: the keys post MVN_UNDO and MVN_REDO to the pane. The marker
    // view has these keys itself. The watching ends with the object.
    void Watch(Window& pane, const Window& control);

  private:
    std::optional<LRESULT> OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam,
                                            LPARAM lParam) override;

    std::vector<std::unique_ptr<ControlWatch>> watches_;
};

}  // namespace kx
