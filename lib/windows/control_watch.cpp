#include "lib/windows/control_watch.h"

#include "lib/windows/subclassed_control.h"

namespace kx {

ControlWatch::ControlWatch(HWND control, Window& owner, ControlWatcher& watcher)
    : Window(control, &owner, static_cast<std::uint32_t>(GetDlgCtrlID(control))), watcher_(watcher) {
    Subclass(this, &SubclassedControlProc<ControlWatch>);
}

std::optional<LRESULT> ControlWatch::OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool received = FromHandle(ParentHandle()) == Parent();
    return received ? watcher_.OnWatchedMessage(*this, message, wParam, lParam) : std::nullopt;
}

}  // namespace kx
