#include "bench/marker_view_window.h"

#include "dialogs/marker_view/marker_view_messages.h"
#include "dialogs/resources/picture_ids.h"
#include "lib/windows/device_context.h"

namespace kx::bench {

MarkerViewWindow::MarkerViewWindow()
    : library_(GetModuleHandleA(nullptr)),
      ownerClass_(library_),
      viewClass_(library_, nullptr),
      beat_(analysis::SyntheticBeat{.rate = 1000}),
      positionsMs_{230, 340, 400, 490, 760},
      labels_{IDB_BADGE_P_ON, IDB_BADGE_P_OFF, IDB_BADGE_QRS_ON, IDB_BADGE_QRS_OFF, IDB_BADGE_T_OFF} {
    const HINSTANCE module = GetModuleHandleA(nullptr);
    const int width = kViewWidth + GetSystemMetrics(SM_CXVSCROLL);
    const int height = kViewHeight + GetSystemMetrics(SM_CYHSCROLL);
    if (!owner_.Create("BenchOwner", "", module, &owner_, WS_POPUP, 0, 0, 0, width, kBareTop + kViewHeight)) {
        return;
    }
    // A pointer in the view would be held on the marker that is dragged, and each step would move it.
    SetCursorPos(width + 100, 0);
    ShowWindow(owner_.Handle(), SW_SHOW);
    view_ = CreateWindowExA(0, "MarkerView", "", WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL, 0, 0, width,
                            height, owner_.Handle(), nullptr, module, nullptr);
    RECT client{};
    ready_ = view_ != nullptr && GetClientRect(view_, &client) && client.right == kViewWidth &&
             client.bottom == kViewHeight;
    if (!ready_) {
        return;
    }
    Send(MV_ATTACHOWNER, 0, reinterpret_cast<LPARAM>(static_cast<Window*>(&owner_)));
    for (const WORD label : labels_) {
        ready_ = ready_ && Send(MV_ADDMARKER, 0, label) == 1;
    }
    Send(MV_SETBEAT, 0, reinterpret_cast<LPARAM>(beat_.Get()));
    Send(MV_SETGAIN, 0, kGain);
    Send(MV_SETSPEED, 0, kSpeed);
    Send(MV_SETMAINS, 0, kMainsHz);
    Send(MV_SETHIGHCUT, 0, kHighEdge);
    Send(MV_SETLOWCUT, 0, kLowEdge);
    Send(MV_SETBANDPASS, 0, 1);
    Send(MV_SHOWDERIVATIVE, 0, 1);
    Send(MV_SETLEAD, kLead, reinterpret_cast<LPARAM>(positionsMs_.data()));
    Drain();
}

MarkerViewWindow::~MarkerViewWindow() {
    owner_.Destroy();
}

void MarkerViewWindow::Drain() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageA(&message);
    }
    GdiFlush();
}

ViewGeometry MarkerViewWindow::Geometry() const {
    const WindowContext screen(view_);
    ViewSettings settings;
    settings.gain = kGain;
    settings.speed = kSpeed;
    const KxEpisodeRecord& beat = *const_cast<analysis::Episode&>(beat_).Get();
    return ViewGeometry({screen.WidthPixels(), screen.WidthMm(), screen.HeightPixels(), screen.HeightMm()},
                        {beat.samplesPerLead, beat.sampleRate, beat.resolutionNv}, settings, kViewWidth,
                        kViewHeight);
}

}  // namespace kx::bench
