// analysis: what a marker view draws into its back buffer over the grid, and its scroll bars.
#include <new>

#include "dialogs/marker_view/analysis.h"
#include "dialogs/marker_view/analysis_report.h"

namespace kx {

namespace report = analysis_report;

namespace {

constexpr COLORREF kRawColour = RGB(255, 128, 255);
constexpr COLORREF kTraceColour = RGB(0, 0, 0);
constexpr COLORREF kDerivativeColour = RGB(0, 0, 128);
constexpr COLORREF kBaselineColour = RGB(0, 0, 255);

void ShowScrollBar(HWND window, int bar, const ScrollBarState& state) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = state.range;
    info.nPage = static_cast<UINT>(state.page);
    info.nPos = state.position;
    SetScrollInfo(window, bar, &info, TRUE);
}

}  // namespace

// A bar stays visible, and is disabled when there is nothing to scroll. Drawing it costs more than the whole
// picture, so one that shows its state already is left alone.
void MarkerViewControl::ShowScrollBars() {
    if (horizontalShown_ != geometry_.HorizontalBar()) {
        horizontalShown_ = geometry_.HorizontalBar();
        ShowScrollBar(Handle(), SB_HORZ, *horizontalShown_);
    }
    if (verticalShown_ != geometry_.VerticalBar()) {
        verticalShown_ = geometry_.VerticalBar();
        ShowScrollBar(Handle(), SB_VERT, *verticalShown_);
    }
}

template <typename Height>
void MarkerViewControl::DrawTrace(DeviceContext& target, COLORREF colour, Height&& height) {
    points_.clear();
    geometry_.Trace(inverted_, height, [this](std::int32_t x, std::int32_t y) { points_.push_back({x, y}); });
    target.SetPen(PS_SOLID, 1, colour);
    target.Polyline(points_.data(), static_cast<int>(points_.size()));
}

void MarkerViewControl::DrawTraces(DeviceContext& target) {
    derivative_.reset();
    if (beat_ == nullptr) {
        return;
    }
    if (geometry_.Samples() > 0) {
        DrawBeat(target);
    }
    ReportMissingSamples();
    POINT baseline[] = {{0, geometry_.Baseline()}, {geometry_.Width(), geometry_.Baseline()}};
    target.SetTransparent();
    target.SetPen(PS_DOT, 0, kBaselineColour);
    target.Polyline(baseline, 2);
}

// Once for each beat: nothing else would say why the paper is empty.
void MarkerViewControl::ReportMissingSamples() {
    if (!missingSamplesReported_ && beat_->samples != nullptr && beat_->AnnouncesTooMuch()) {
        missingSamplesReported_ = true;
        reports_->LOGOEMERROR(report::kSource, report::kNoSamplesLine, "Samples past the block");
    }
}

void MarkerViewControl::DrawBeat(DeviceContext& target) {
    const std::int32_t count = geometry_.Samples();
    const std::int16_t* raw = beat_->Samples(lead_);
    const auto filtered = FilteredLead(raw, count, geometry_.Rate(), signal_);
    const std::int16_t* shown = filtered == nullptr ? raw : filtered.get();
    if (signal_.Filters()) {
        DrawTrace(target, kRawColour, [&](std::int32_t i) { return geometry_.SampleHeight(raw[i]); });
    }
    DrawTrace(target, kTraceColour, [&](std::int32_t i) { return geometry_.SampleHeight(shown[i]); });
    derivative_.reset(new (std::nothrow) DerivativeTrace(beat_->SampleRate(), beat_->ResolutionNv(), shown,
                                                         static_cast<std::uint32_t>(count)));
    if (derivativeShown_ && derivative_ != nullptr) {
        DrawTrace(target, kDerivativeColour, [&](std::int32_t i) {
            return geometry_.SlopeHeight(derivative_->SlopeValue(static_cast<std::uint32_t>(i)));
        });
    }
}

}  // namespace kx
