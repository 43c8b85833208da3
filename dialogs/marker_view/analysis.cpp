#include "dialogs/marker_view/analysis.h"

#include <algorithm>
#include <new>

#include "dialogs/marker_view/analysis_report.h"
#include "dialogs/marker_view/trace/sample_sum.h"
#include "lib/windows/handler_scope.h"

namespace kx {

namespace report = analysis_report;

namespace {

constexpr double kMilliHertz = 1000.0;

}  // namespace

ViewMarker::ViewMarker(const ModuleInstance& module, std::uint32_t id)
    : label_(static_cast<HBITMAP>(module.LoadImageById(id, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))),
      size_{label_.Width(), label_.Height()} {
    context_.SelectBitmap(label_);
}

MarkerViewControl::MarkerViewControl(HWND window, std::uint32_t id, const LibraryModule& library,
                                     Reporter& reports)
    : Window(window, nullptr, id),
      library_(&library),
      reports_(&reports),
      sizeCursor_(LoadCursorA(nullptr, IDC_SIZEWE)),
      crossCursor_(LoadCursorA(nullptr, IDC_CROSS)) {}

LRESULT MarkerViewControl::MakeFor(HWND window, std::uint32_t id, const LibraryModule& library,
                                   Reporter& reports) {
    auto* const view = new (std::nothrow) MarkerViewControl(window, id, library, reports);
    if (view == nullptr) {
        reports.LOGMEMORYERROR(report::kSource, report::kNoObjectLine);
        return -1;
    }
    if (!view->Attach(view)) {
        delete view;
        return -1;
    }
    return 0;
}

void MarkerViewControl::OnDestroy() {
    // A handler that is still running finds nothing to show and nobody to tell.
    beat_ = nullptr;
    owner_ = nullptr;
    RetireWindow(*this, [](Window& view) { delete static_cast<MarkerViewControl*>(&view); });
}

LRESULT MarkerViewControl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case MV_SETBEAT:
            return SetBeat(reinterpret_cast<const KxEpisodeRecord*>(lParam));
        case MV_SETLEAD:
            return SetLead(static_cast<std::uint32_t>(wParam), reinterpret_cast<const std::int32_t*>(lParam));
        case MV_ADDMARKER:
            return AddMarker(static_cast<std::uint32_t>(lParam));
        case MV_ATTACHOWNER:
            return AttachOwner(reinterpret_cast<const Window*>(lParam));
        case MV_SETGAIN:
        case MV_SETSPEED:
        case MV_SETHSCROLL:
        case MV_SETVOFFSET:
        case MV_SETHIGHCUT:
        case MV_SETLOWCUT:
        case MV_SETMAINS:
        case MV_SHOWMARKERS:
        case MV_SHOWDERIVATIVE:
        case MV_SETBANDPASS:
            if (TakeSetting(message, static_cast<std::int32_t>(lParam))) {
                Rebuild();
            }
            return 1;
        case WM_PAINT: {
            // Not as other windows, whose default procedure begins and ends a painting of its own in it: to
            // ask the system for that costs as much as the picture.
            PaintContext context(Handle());
            OnPaint(context);
            return 0;
        }
        case WM_CAPTURECHANGED:
            // Whoever took the mouse away: the drag is over.
            EndDrag();
            return 0;
        case WM_KEYUP:
            if (wParam == VK_LEFT || wParam == VK_RIGHT) {
                EndKeyStep();
            }
            return Window::WindowProc(message, wParam, lParam);
        default:
            return Window::WindowProc(message, wParam, lParam);
    }
}

// False: the value is not taken, and nothing has changed.
bool MarkerViewControl::TakeSetting(UINT message, std::int32_t value) {
    const bool on = value == 1;
    const double hertz = value / kMilliHertz;
    switch (message) {
        case MV_SETGAIN:
            settings_.gain = value;
            settings_.verticalOffset = 0;
            break;
        case MV_SETSPEED:
            settings_.speed = value;
            break;
        case MV_SETHSCROLL:
            settings_.horizontalPosition = std::clamp(value, 0, kFullScrollPercent);
            break;
        case MV_SETVOFFSET:
            settings_.verticalOffset = std::clamp(value, -kLargestVerticalOffset, kLargestVerticalOffset);
            break;
        case MV_SETHIGHCUT:
            if (!(hertz > signal_.lowHz)) {
                return false;
            }
            signal_.highHz = hertz;
            break;
        case MV_SETLOWCUT:
            if (!(hertz < signal_.highHz)) {
                return false;
            }
            signal_.lowHz = hertz;
            break;
        case MV_SETMAINS:
            signal_.mainsHz = value;
            break;
        case MV_SHOWMARKERS:
            markersShown_ = on;
            break;
        case MV_SHOWDERIVATIVE:
            derivativeShown_ = on;
            break;
        case MV_SETBANDPASS:
            signal_.bandPass = on;
            break;
        default:
            return false;
    }
    return true;
}

LRESULT MarkerViewControl::SetBeat(const KxEpisodeRecord* beat) {
    beat_ = beat == nullptr ? nullptr : &EpisodeRecord::Of(*beat);
    missingSamplesReported_ = false;
    Rebuild();
    return 1;
}

LRESULT MarkerViewControl::SetLead(std::uint32_t lead, const std::int32_t* positionsMs) {
    const std::int32_t rate = beat_ == nullptr ? 0 : HeldToInt32(beat_->SampleRate());
    const auto before = positions_;
    for (std::size_t slot = 0; positionsMs != nullptr && slot < markerCount_; ++slot) {
        positions_[slot] = SamplesFromMs(positionsMs[slot], rate);
    }
    markerRate_ = rate;
    // The dialog sends the lead after each step of a drag. The picture is the same then, so that only the
    // markers that moved are painted again, from the back buffer. A beat that the host has replaced in place
    // is drawn anew: its samples are others, and the positions are counted in them.
    if (lead == lead_ && backBufferValid_ && ShowsTheBeat()) {
        for (std::size_t slot = 0; slot < markerCount_; ++slot) {
            if (positions_[slot] != before[slot]) {
                InvalidateMarker(slot, before[slot]);
                InvalidateMarker(slot, positions_[slot]);
            }
        }
        Update();
        return 1;
    }
    lead_ = lead;
    inverted_ = lead == KX_LEAD_AVR;
    Rebuild();
    return 1;
}

LRESULT MarkerViewControl::AddMarker(std::uint32_t bitmapId) {
    std::unique_ptr<ViewMarker> marker;
    if (markerCount_ < kMarkerSlots) {
        marker.reset(new (std::nothrow) ViewMarker(library_->instance, bitmapId));
    }
    if (marker == nullptr || !marker->IsMade()) {
        reports_->LOGMEMORYERROR(report::kSource, report::kNoMarkerLine);
        return 0;
    }
    positions_[markerCount_] = 0;
    markers_[markerCount_++] = std::move(marker);
    return 1;
}

LRESULT MarkerViewControl::AttachOwner(const Window* owner) {
    owner_ = owner == nullptr ? nullptr : owner->Handle();
    return reinterpret_cast<LRESULT>(static_cast<Window*>(this));
}

void MarkerViewControl::DiscardBackBuffer() {
    backBufferValid_ = false;
    geometryValid_ = false;
}

// After a change of the settings: everything is painted anew, at once. A view that is hidden, as in a pane
// that is being built, will be painted when it is shown; its bars are set before, or they would be drawn
// twice.
void MarkerViewControl::Rebuild() {
    DiscardBackBuffer();
    if (IsWindowVisible(Handle()) != FALSE) {
        InvalidateRect(Handle(), nullptr, FALSE);
        Update();
    } else {
        Geometry();
        ShowScrollBars();
    }
}

void MarkerViewControl::OnSize(UINT, int width, int height) {
    if (geometryValid_ && (width != geometry_.Width() || height != geometry_.Height())) {
        DiscardBackBuffer();
        device_.reset();
        InvalidateRect(Handle(), nullptr, FALSE);
    }
}

BeatMeasure MarkerViewControl::Measure() const {
    if (beat_ == nullptr) {
        return {};
    }
    return {beat_->Samples(lead_) == nullptr ? 0 : beat_->SamplesPerLead(), beat_->SampleRate(),
            beat_->ResolutionNv()};
}

std::uint32_t MarkerViewControl::SumOfSamples() const {
    return beat_ == nullptr ? 0 : SampleSum(beat_->Samples(lead_), beat_->SamplesPerLead());
}

// Whether the back buffer is the picture of the beat as it is now.
bool MarkerViewControl::ShowsTheBeat() const {
    return Measure() == measure_ && SumOfSamples() == drawnSum_;
}

// Known before the first painting too, so that the first drag finds its marker.
const ViewGeometry& MarkerViewControl::Geometry() {
    if (!geometryValid_) {
        RECT client = {};
        GetClientRect(client);
        if (!device_) {
            const WindowContext screen(Handle());
            device_ = {screen.WidthPixels(), screen.WidthMm(), screen.HeightPixels(), screen.HeightMm()};
        }
        measure_ = Measure();
        geometry_ = ViewGeometry(*device_, measure_, settings_, static_cast<std::int32_t>(client.right),
                                 static_cast<std::int32_t>(client.bottom));
        geometryValid_ = true;
    }
    return geometry_;
}

}  // namespace kx
