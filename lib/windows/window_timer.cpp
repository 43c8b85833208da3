// The one timer that an object may have.
#include <algorithm>
#include <vector>

#include "lib/windows/handler_scope.h"
#include "lib/windows/window.h"

namespace kx {
namespace {

// The objects whose timer runs. A tick that was on its way when its timer was stopped arrives all the same,
// and the object that it names may be gone.
std::vector<Window*>& RunningTimers() {
    static std::vector<Window*> running;
    return running;
}

UINT_PTR TimerIdOf(const Window& object) {
    return reinterpret_cast<UINT_PTR>(&object);
}

void CALLBACK Tick(HWND, UINT, UINT_PTR id, DWORD systemTime) noexcept {
    auto* object = reinterpret_cast<Window*>(id);
    const std::vector<Window*>& running = RunningTimers();
    if (std::find(running.begin(), running.end(), object) == running.end()) {
        return;
    }
    const HandlerScope scope(*object);
    try {
        object->OnTimer(systemTime);
    } catch (...) {
        scope.Exception();
    }
}

}  // namespace

bool Window::StartTimer(UINT milliseconds) {
    // Without a window the system would choose an id of its own, which names no object.
    if (handle_ == nullptr) {
        return false;
    }
    std::vector<Window*>& running = RunningTimers();
    running.reserve(running.size() + 1);
    timerId_ = SetTimer(handle_, TimerIdOf(*this), milliseconds, Tick);
    std::erase(running, this);
    if (timerId_ != 0) {
        running.push_back(this);
    }
    return timerId_ != 0;
}

void Window::StopTimer() {
    if (timerId_ == 0) {
        return;
    }
    std::erase(RunningTimers(), this);
    // By the id that it was asked for with: what SetTimer returns for a window's timer is only said to be not
    // 0.
    KillTimer(handle_, TimerIdOf(*this));
    timerId_ = 0;
}

}  // namespace kx
