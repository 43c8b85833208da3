// Sees the messages of a control before the control does, on behalf of a dialog.
#pragma once

#include <windows.h>

#include <optional>

#include "lib/windows/window.h"

namespace kx {

class ControlWatch;

class ControlWatcher {
  public:
    // A message of a watched control. Its result, or nothing: the control gets the message. One that acts
    // after the control passes the message on itself, by watch.Pass, and returns that result.
    virtual std::optional<LRESULT> OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam,
                                                    LPARAM lParam) = 0;

  protected:
    ControlWatcher() = default;
    ControlWatcher(const ControlWatcher&) = default;
    ControlWatcher& operator=(const ControlWatcher&) = default;
    ~ControlWatcher() = default;
};

// Held by its watcher; its end is the end of the watching. The control may have a wrapper that holds it, but
// none that is attached to it.
class ControlWatch final : public Window {
  public:
    // owner: the dialog or popup of the control; once it has ended (its window does not lead to it any more)
    // the watcher is told nothing. All but the control outlive the object.
    ControlWatch(HWND control, Window& owner, ControlWatcher& watcher);

    // The control's own procedure.
    LRESULT Pass(UINT message, WPARAM wParam, LPARAM lParam) {
        return CallReplacedProc(message, wParam, lParam);
    }

    std::optional<LRESULT> OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool DeletesItself() const { return false; }

  private:
    ControlWatcher& watcher_;
};

}  // namespace kx
