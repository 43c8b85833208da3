// analysis: mouse, keys, scroll bars and the readout of a marker view.
#include <algorithm>
#include <utility>

#include "dialogs/marker_view/analysis.h"

namespace kx {

namespace {

static_assert(static_cast<int>(ScrollRequest::kLineForward) == SB_LINERIGHT &&
              static_cast<int>(ScrollRequest::kPageForward) == SB_PAGEDOWN &&
              static_cast<int>(ScrollRequest::kThumbTrack) == SB_THUMBTRACK &&
              static_cast<int>(ScrollRequest::kFirst) == SB_TOP &&
              static_cast<int>(ScrollRequest::kLast) == SB_RIGHT &&
              static_cast<int>(ScrollRequest::kEnd) == SB_ENDSCROLL);

constexpr std::int32_t kCtrlStepMs = 10;
constexpr LPARAM kRepeated = LPARAM{1} << 30;  // of a key that is held down

bool IsDown(int virtualKey) {
    return GetKeyState(virtualKey) < 0;
}

// A scroll message has 16 bits of the thumb's position; the bar knows the others while the thumb is dragged.
std::int32_t Thumb(int position, int tracked) {
    return (tracked & 0xFFFF) == position ? tracked : position;
}

ScrollRequest RequestOf(int code) {
    return code >= SB_LINEUP && code <= SB_ENDSCROLL ? static_cast<ScrollRequest>(code) : ScrollRequest::kEnd;
}

}  // namespace

// Markers. A marker that is not drawn cannot be taken hold of.

bool MarkerViewControl::IsPresent(std::size_t slot) const {
    return slot < markerCount_ && positions_[slot] != 0 && markersShown_;
}

std::size_t MarkerViewControl::MarkerAt(int x, int y) {
    const ViewGeometry& geometry = Geometry();
    for (std::size_t slot = 0; slot < markerCount_; ++slot) {
        if (IsPresent(slot) && HitsMarker(geometry.ColumnOf(positions_[slot]), markers_[slot]->Size(),
                                          geometry.Height(), x, y)) {
            return slot;
        }
    }
    return kNoMarker;
}

// The one way in which the user moves a marker. The two places are painted again at once, with what else
// stands there.
void MarkerViewControl::MoveMarker(std::size_t slot, std::int32_t sample) {
    const std::int32_t before = positions_[slot];
    if (sample == before) {
        return;
    }
    positions_[slot] = sample;
    if (backBufferValid_ && markersShown_ && slot == current_) {
        ShowMoved(slot, before);
    } else {
        InvalidateMarker(slot, before);
        InvalidateMarker(slot, sample);
        Update();
    }
    if (owner_ != nullptr) {
        PostMessageA(owner_, MVN_MARKERMOVED + static_cast<UINT>(slot),
                     static_cast<WPARAM>(MsFromSamples(sample, markerRate_)), static_cast<LPARAM>(lead_));
    }
}

// Mouse.

LRESULT MarkerViewControl::OnNcHitTest(LRESULT defaultResult, int x, int y) {
    if (defaultResult != HTCLIENT) {
        return defaultResult;
    }
    POINT point = {x, y};
    ScreenToClient(Handle(), &point);
    UpdateReadout(static_cast<int>(point.x));
    const bool onMarker = dragged_ != kNoMarker || MarkerAt(point.x, point.y) != kNoMarker;
    return onMarker ? HTCLIENT : HTNOWHERE;
}

bool MarkerViewControl::OnSetCursor(HWND window, UINT hitTest) {
    const int hit = static_cast<short>(hitTest);
    if (window != Handle() || (hit != HTCLIENT && hit != HTNOWHERE)) {
        return false;
    }
    SetCursor(hit == HTCLIENT ? sizeCursor_ : crossCursor_);
    return true;
}

void MarkerViewControl::OnLButtonDown(UINT, int x, int y) {
    UpdateReadout(x);
    EndDrag();
    if (beat_ == nullptr || MarkerAt(x, y) == kNoMarker) {
        return;
    }
    SetFocus();
    EndKeyStep();
    BeginStep(true);
    // The owner may have set the markers anew.
    const std::size_t hit = MarkerAt(x, y);
    if (hit == kNoMarker) {
        EndStep();
        return;
    }
    SelectMarker(hit);
    dragged_ = hit;
    SetCapture();
}

// The second press of a double click takes hold as the first one did.
void MarkerViewControl::OnLButtonDblClk(UINT keys, int x, int y) {
    OnLButtonDown(keys, x, y);
}

void MarkerViewControl::OnMouseMove(int x, int, bool leftButtonDown) {
    if (dragged_ == kNoMarker) {
        return;
    }
    if (!leftButtonDown && GetCapture() != Handle()) {
        EndDrag();
        return;
    }
    // The system asks for no hit test while it has captured the mouse.
    UpdateReadout(x);
    const ViewGeometry& geometry = Geometry();
    // The pointer on the marker's own column asks for nothing: where a column has several samples, the marker
    // keeps its.
    if (x == geometry.ColumnOf(positions_[dragged_]) && positions_[dragged_] != 0) {
        return;
    }
    const auto target = geometry.DragTarget(x);
    if (target && *target != positions_[dragged_]) {
        MoveMarker(dragged_, *target);
        if (x != geometry.ColumnOf(*target)) {
            HoldPointerOnMarker();
        }
    }
}

void MarkerViewControl::OnLButtonUp(UINT, int, int) {
    EndDrag();
}

void MarkerViewControl::EndDrag() {
    if (dragged_ == kNoMarker) {
        return;
    }
    dragged_ = kNoMarker;
    if (GetCapture() == Handle()) {
        ReleaseCapture();
    }
    EndStep();
    InvalidateRect(Handle(), nullptr, FALSE);
    Update();
}

// Where one change of the markers begins and ends, for the owner.

void MarkerViewControl::BeginStep(bool byMouse) {
    if (owner_ != nullptr) {
        SendMessageA(owner_, MVN_STEPBEGINS, byMouse ? 1 : 0, 0);
    }
}

void MarkerViewControl::EndStep() {
    if (owner_ != nullptr) {
        PostMessageA(owner_, MVN_STEPENDS, 0, 0);
    }
}

void MarkerViewControl::EndKeyStep() {
    if (std::exchange(keyStep_, false)) {
        EndStep();
    }
}

// Keys.

bool MarkerViewControl::OnGetDlgCode(LRESULT& code) {
    if (dragged_ != kNoMarker) {
        code = DLGC_WANTALLKEYS;  // none of which does anything
        return true;
    }
    // Tab is asked for as long as there is a marker to go to; at the last one it belongs to the dialog.
    const bool further = NeighbourOf(current_, !IsDown(VK_SHIFT)) != kNoMarker;
    code = DLGC_WANTARROWS | (further ? DLGC_WANTTAB : 0);
    return true;
}

bool MarkerViewControl::OnKeyDown(UINT virtualKey, LPARAM keyData) {
    if (dragged_ != kNoMarker) {
        return true;
    }
    const bool ctrl = IsDown(VK_CONTROL) && !IsDown(VK_MENU);
    switch (virtualKey) {
        case VK_LEFT:
        case VK_RIGHT:
            return OnArrow(virtualKey, ctrl, (keyData & kRepeated) != 0);
        case VK_TAB:
            if (!ctrl) {
                SelectMarker(NeighbourOf(current_, !IsDown(VK_SHIFT)));
            }
            return true;
        case 'Z':
        case 'Y':
            // The history of the changes is the owner's.
            if (ctrl && owner_ != nullptr) {
                PostMessageA(owner_, virtualKey == 'Z' ? MVN_UNDO : MVN_REDO, 0, 0);
            }
            return ctrl;
        default:
            return false;
    }
}

// A press is one change, however long the key is held.
bool MarkerViewControl::OnArrow(UINT virtualKey, bool ctrl, bool repeated) {
    if (!repeated) {
        EndKeyStep();
    }
    if (!keyStep_ && IsPresent(current_)) {
        keyStep_ = true;
        BeginStep(false);
    }
    const std::int32_t step = ctrl ? std::max(SamplesFromMs(kCtrlStepMs, Geometry().Rate()), 1) : 1;
    StepMarker(virtualKey == VK_LEFT ? -step : step);
    return true;
}

void MarkerViewControl::StepMarker(std::int32_t samples) {
    if (beat_ == nullptr || !IsPresent(current_)) {
        return;
    }
    const std::int32_t target = Geometry().Stepped(positions_[current_], samples);
    ShowSample(target);
    MoveMarker(current_, target);
    SendReadout(target);
}

// The next marker that is present, in the order in which they were added; kNoMarker behind the last one. From
// no marker it is the first one, backward the last.
std::size_t MarkerViewControl::NeighbourOf(std::size_t slot, bool forward) const {
    if (forward) {
        for (std::size_t next = slot == kNoMarker ? 0 : slot + 1; next < markerCount_; ++next) {
            if (IsPresent(next)) {
                return next;
            }
        }
        return kNoMarker;
    }
    for (std::size_t next = std::min(slot, markerCount_); next-- > 0;) {
        if (IsPresent(next)) {
            return next;
        }
    }
    return kNoMarker;
}

void MarkerViewControl::SelectMarker(std::size_t slot) {
    if (slot == kNoMarker || slot == current_) {
        return;
    }
    const std::size_t before = current_;
    current_ = slot;
    if (before != kNoMarker) {
        InvalidateMarker(before, positions_[before]);
    }
    InvalidateMarker(slot, positions_[slot]);
    Update();
}

void MarkerViewControl::OnSetFocus() {
    focused_ = true;
    if (!IsPresent(current_)) {
        current_ = kNoMarker;
        SelectMarker(NeighbourOf(kNoMarker, !IsDown(VK_SHIFT)));
    } else {
        InvalidateMarker(current_, positions_[current_]);
    }
}

void MarkerViewControl::OnKillFocus() {
    EndKeyStep();
    focused_ = false;
    if (IsPresent(current_)) {
        InvalidateMarker(current_, positions_[current_]);
    }
}

// A marker that is moved by a key is seen: the view scrolls to it when it is outside.
void MarkerViewControl::ShowSample(std::int32_t sample) {
    const ViewGeometry& geometry = Geometry();
    const std::int32_t column = geometry.ColumnOf(sample);
    if (column < 0 || column >= geometry.Width()) {
        settings_.horizontalPosition = geometry.PercentShowing(sample);
        Rebuild();
    }
}

// Readout.

void MarkerViewControl::UpdateReadout(int x) {
    if (owner_ != nullptr && beat_ != nullptr) {
        SendReadout(Geometry().SampleAt(x));
    }
}

void MarkerViewControl::SendReadout(std::int32_t sample) {
    if (owner_ == nullptr || beat_ == nullptr) {
        return;
    }
    const ViewGeometry& geometry = Geometry();
    if (geometry.IsInBeat(sample)) {
        const auto index = static_cast<std::uint32_t>(sample);
        FormatReadout(readout_, MsFromSamples(sample, geometry.Rate()), beat_->SampleMicrovolts(lead_, index),
                      derivative_ == nullptr ? 0 : derivative_->SlopeValue(index));
    } else {
        std::copy(std::begin(kNoReadout), std::end(kNoReadout), readout_);
    }
    SendMessageA(owner_, MVN_READOUT, 0, reinterpret_cast<LPARAM>(readout_));
}

// Scroll bars.

void MarkerViewControl::OnHScroll(int code, int position) {
    settings_.horizontalPosition =
        Scrolled(settings_.horizontalPosition, RequestOf(code), Thumb(position, GetHTrackPosition()),
                 Geometry().HorizontalBar().range, kHorizontalSteps);
    Rebuild();
}

void MarkerViewControl::OnVScroll(int code, int position) {
    settings_.verticalOffset =
        Scrolled(settings_.verticalOffset, RequestOf(code), Thumb(position, GetVTrackPosition()),
                 Geometry().VerticalBar().range, kVerticalSteps);
    Rebuild();
}

}  // namespace kx
