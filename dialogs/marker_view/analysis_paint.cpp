// analysis: the painting of a marker view, the back buffer and the markers over it.
#include <algorithm>
#include <new>

#include "dialogs/marker_view/analysis.h"
#include "dialogs/marker_view/analysis_report.h"

namespace kx {

namespace report = analysis_report;

namespace {

constexpr std::int32_t kMilPerInch = 1000;
constexpr std::uint32_t kPlainFrame = 1;
constexpr std::int32_t kFrameWidth = 20;  // mil
constexpr COLORREF kFrameColour = RGB(255, 255, 255);
constexpr COLORREF kPaper = RGB(253, 255, 255);
constexpr COLORREF kMajorLine = RGB(149, 240, 183);
constexpr COLORREF kMinorDot = RGB(226, 252, 235);

// The part of the client area that a marker's line, and its label, cover.
RECT LineOf(std::int32_t column, std::int32_t height) {
    return {column - kMarkerHalfWidth, 0, column + kMarkerHalfWidth + 1, height};
}
RECT LabelOf(std::int32_t column, std::int32_t height, const LabelSize& label) {
    const LONG left = column - label.width / 2;
    return {left, height - label.height, left + label.width, height};
}

}  // namespace

void MarkerViewControl::OnPaint(PaintContext& context) {
    // A picture is drawn from the beat as it is now.
    const bool replaced = backBufferValid_ && !ShowsTheBeat();
    if (replaced) {
        backBufferValid_ = false;
    }
    geometryValid_ = geometryValid_ && backBufferValid_;
    const ViewGeometry& geometry = Geometry();
    // Without an area there is nothing to show and no bitmap to make.
    if (geometry.Width() == 0 || geometry.Height() == 0) {
        return;
    }
    if (!backBufferValid_ && !RebuildBackBuffer(context)) {
        return;
    }
    if (replaced) {
        // The rest of the view as well, of which nothing was said.
        WindowContext window(Handle());
        PaintArea(window, {0, 0, geometry.Width(), geometry.Height()});
    } else {
        PaintArea(context, context.UpdateRect());
    }
}

void MarkerViewControl::PaintArea(DeviceContext& target, const RECT& area) {
    if (CopyPicture(target, area) && markersShown_) {
        DrawMarkers(target, area, kNoMarker);
        HoldPointerOnMarker();
    }
}

// From the back buffer; false, reported, when the system refuses.
bool MarkerViewControl::CopyPicture(DeviceContext& target, const RECT& area) {
    SetLastError(ERROR_SUCCESS);
    if (!target.DeviceCopyFrom(area, *surface_)) {
        ModuleInstance::LogLastSystemError(*reports_);
        return false;
    }
    return true;
}

bool MarkerViewControl::RebuildBackBuffer(const DeviceContext& target) {
    if (grid_ == nullptr) {
        grid_.reset(new (std::nothrow) PlotGrid(*reports_, target.PixelsPerInchX(), target.PixelsPerInchY()));
    }
    if (grid_ == nullptr) {
        reports_->LOGMEMORYERROR(report::kSource, report::kNoGridLine);
        return false;
    }
    if (surface_ == nullptr) {
        surface_.reset(new (std::nothrow) MemoryContext(target));
    }
    if (surface_ == nullptr || surface_->Handle() == nullptr || !RenderGrid(target) ||
        !markerLine_.Make(target, geometry_.Height())) {
        surface_.reset();
        reports_->LOGMEMORYERROR(report::kSource, report::kNoSurfaceLine);
        return false;
    }
    surface_->SetPixelMapping();
    ShowScrollBars();
    DrawTraces(*surface_);
    drawnSum_ = SumOfSamples();
    backBufferValid_ = true;
    return true;
}

// The grid's bitmap stays selected in the surface until it is made anew.
bool MarkerViewControl::RenderGrid(const DeviceContext& target) {
    const auto mil = [](std::int32_t pixels, int perInch) {
        return static_cast<LONG>(MulDivRound(pixels, kMilPerInch, perInch));
    };
    PlotGrid::Unlock(*surface_);
    grid_->SetFrameRect({0, 0, mil(geometry_.Width(), target.PixelsPerInchX()),
                         mil(geometry_.Height(), target.PixelsPerInchY())});
    grid_->SetFrame(kPlainFrame, kFrameWidth, kFrameColour);
    grid_->SetSpacing(PlotGrid::kMajorSpacing, PlotGrid::kMinorSpacing, PlotGrid::kMajorSpacing,
                      PlotGrid::kMinorSpacing);
    return grid_->Render(*surface_, kPaper, kMajorLine, kMinorDot, target.BitsPerPixel(), false) &&
           grid_->Lock(*surface_) != nullptr;
}

bool MarkerLine::Make(const DeviceContext& like, std::int32_t height) {
    if (context_ != nullptr && height == height_) {
        return true;
    }
    context_.reset(new (std::nothrow) MemoryContext(like));
    if (context_ == nullptr || !bitmap_.CreateCompatible(like, 2 * kMarkerHalfWidth, height) ||
        context_->SelectBitmap(bitmap_) == nullptr) {
        context_.reset();
        return false;
    }
    height_ = height;
    context_->FillBlack(0, 0, 2 * kMarkerHalfWidth, height);
    context_->FillWhite(1, 0, 2 * kMarkerHalfWidth - 2, height);
    return true;
}

void MarkerLine::Draw(DeviceContext& target, std::int32_t column) const {
    target.DeviceCopyFrom(column - kMarkerHalfWidth, 0, kMarkerHalfWidth, height_, *context_, 0, 0);
    target.DeviceCopyFrom(column + 1, 0, kMarkerHalfWidth, height_, *context_, kMarkerHalfWidth, 0);
}

// Whether a marker covers something of a part of the view.
bool MarkerViewControl::StandsIn(std::size_t slot, const RECT& area) const {
    if (positions_[slot] == 0) {
        return false;
    }
    const std::int32_t column = geometry_.ColumnOf(positions_[slot]);
    const std::int32_t reach = std::max(markers_[slot]->Size().width, kMarkerHalfWidth);
    return column + reach > area.left && column - reach < area.right;
}

// Those that cover something of the area. The marker used last is drawn last, over the others.
void MarkerViewControl::DrawMarkers(DeviceContext& target, const RECT& area, std::size_t except) {
    for (std::size_t slot = 0; slot < markerCount_; ++slot) {
        if (slot != current_ && slot != except && StandsIn(slot, area)) {
            DrawMarker(target, slot);
        }
    }
    if (current_ < markerCount_ && current_ != except && StandsIn(current_, area)) {
        DrawMarker(target, current_);
    }
}

void MarkerViewControl::DrawMarker(DeviceContext& target, std::size_t slot) const {
    const std::int32_t column = geometry_.ColumnOf(positions_[slot]);
    const ViewMarker& marker = *markers_[slot];
    markerLine_.Draw(target, column);
    const RECT label = LabelOf(column, geometry_.Height(), marker.Size());
    const auto left = static_cast<int>(label.left);
    const auto top = static_cast<int>(label.top);
    const LabelSize& size = marker.Size();
    if (slot != current_ || !focused_) {
        target.DeviceCopyFrom(left, top, size.width, size.height, marker.Label(), 0, 0);
        return;
    }
    // The frame of the focus: black and white as the line, to be seen on a label of any colour.
    target.FillBlack(left, top, size.width, size.height);
    target.FillWhite(left + 1, top + 1, std::max(size.width - 2, 0), std::max(size.height - 2, 0));
    target.DeviceCopyFrom(left + 2, top + 2, std::max(size.width - 4, 0), std::max(size.height - 4, 0),
                          marker.Label(), 2, 2);
}

// Draws the marker used last at its place and gives what it covered before back, at once and without the
// window manager's painting, which costs several times as much as the few pixels do.
void MarkerViewControl::ShowMoved(std::size_t slot, std::int32_t before) {
    WindowContext window(Handle());
    if (before != 0) {
        const std::int32_t column = geometry_.ColumnOf(before);
        for (const RECT& left : {LineOf(column, geometry_.Height()),
                                 LabelOf(column, geometry_.Height(), markers_[slot]->Size())}) {
            if (!CopyPicture(window, left)) {
                return;
            }
            bool covered = false;
            for (std::size_t other = 0; other < markerCount_; ++other) {
                covered = covered || (other != slot && StandsIn(other, left));
            }
            if (covered) {
                window.SetClipRect(left);
                DrawMarkers(window, left, slot);
                window.ClearClip();
            }
        }
    }
    if (positions_[slot] != 0) {
        DrawMarker(window, slot);
    }
}

// Has a marker painted again that stood, or stands now, on a sample.
void MarkerViewControl::InvalidateMarker(std::size_t slot, std::int32_t position) {
    if (position == 0 || slot >= markerCount_ || !markersShown_) {
        return;
    }
    const ViewGeometry& geometry = Geometry();
    const std::int32_t column = geometry.ColumnOf(position);
    const RECT line = LineOf(column, geometry.Height());
    const RECT label = LabelOf(column, geometry.Height(), markers_[slot]->Size());
    InvalidateRect(Handle(), &line, FALSE);
    InvalidateRect(Handle(), &label, FALSE);
}

// While a marker is dragged, the pointer stands on its column, so that it follows whole samples and the
// limits that the owner sets.
void MarkerViewControl::HoldPointerOnMarker() {
    POINT pointer = {};
    if (dragged_ == kNoMarker || positions_[dragged_] == 0 || !GetCursorPos(&pointer) ||
        !ScreenToClient(Handle(), &pointer)) {
        return;
    }
    const std::int32_t column = geometry_.ColumnOf(positions_[dragged_]);
    const RECT client = {0, 0, geometry_.Width(), geometry_.Height()};
    if (PtInRect(&client, pointer) && pointer.x != column && column >= 0 && column < geometry_.Width()) {
        pointer.x = column;
        ClientToScreen(Handle(), &pointer);
        SetCursorPos(pointer.x, pointer.y);
    }
}

}  // namespace kx
