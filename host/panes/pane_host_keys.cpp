// The keys that the workstation's menu strikes for a pane.
#include "host/panes/pane_host.h"

#include <algorithm>
#include <iterator>

namespace kxhost {
namespace {

// Ctrl as held down for whatever is sent meanwhile.
class ControlHeld {
  public:
    ControlHeld() {
        GetKeyboardState(before_);
        BYTE held[256];
        std::copy(std::begin(before_), std::end(before_), held);
        held[VK_CONTROL] |= kDown;
        held[VK_MENU] = 0;
        SetKeyboardState(held);
    }
    ControlHeld(const ControlHeld&) = delete;
    ControlHeld& operator=(const ControlHeld&) = delete;
    ~ControlHeld() { SetKeyboardState(before_); }

  private:
    static constexpr BYTE kDown = 0x80;
    BYTE before_[256]{};
};

HWND MarkerViewOf(HWND pane) {
    return pane != nullptr ? FindWindowExW(pane, nullptr, L"MarkerView", nullptr) : nullptr;
}

// What Ctrl+Z (1) and Ctrl+Y (2) would do in a morphology pane; other panes know no such message.
LRESULT StepsLeftIn(HWND pane) {
    constexpr UINT kStepsLeft = 1455;
    return SendMessageW(pane, kStepsLeft, 0, 0);
}

}  // namespace

HWND PaneHost::KeyTarget() const {
    const HWND focus = GetFocus();
    return pane_ != nullptr && focus != nullptr && IsChild(pane_, focus) ? focus : MarkerViewOf(pane_);
}

void PaneHost::StrikeControl(char letter) const {
    const HWND target = KeyTarget();
    if (target == nullptr) {
        return;
    }
    const ControlHeld control;
    const WPARAM key = static_cast<unsigned char>(letter);
    SendMessageW(target, WM_KEYDOWN, key, 1);
    // What Windows makes of it for an edit; the pane may have ended by then.
    if (IsWindow(target)) {
        SendMessageW(target, WM_CHAR, key - '@', 1);
    }
}

bool PaneHost::MayUndo() const {
    const HWND target = KeyTarget();
    return (StepsLeftIn(pane_) & 1) != 0 ||
           (target != nullptr && SendMessageW(target, EM_CANUNDO, 0, 0) != 0);
}

bool PaneHost::MayRedo() const {
    return (StepsLeftIn(pane_) & 2) != 0;
}

}  // namespace kxhost
