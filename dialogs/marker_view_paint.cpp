// The painting of a marker view: the back buffer, and the markers over it.
#include <algorithm>
#include <new>

#include "dialogs/marker_view.h"
#include "dialogs/marker_view_report.h"

namespace kx {

namespace report = marker_view_report;

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

// Black and white as the marker's line, to be seen on a label of any colour.
void DrawFocusFrame(DeviceContext& target, const RECT& label) {
    RECT frame = label;
    for (const auto fill : {&DeviceContext::FillBlack, &DeviceContext::FillWhite}) {
        const int width = static_cast<int>(frame.right - frame.left);
        const int height = static_cast<int>(frame.bottom - frame.top);
        const int left = static_cast<int>(frame.left);
        const int top = static_cast<int>(frame.top);
        (target.*fill)(left, top, width, 1);
        (target.*fill)(left, top + height - 1, width, 1);
        (target.*fill)(left, top, 1, height);
        (target.*fill)(left + width - 1, top, 1, height);
        InflateRect(&frame, -1, -1);
    }
}

}  // namespace

void MarkerViewControl::OnPaint(PaintContext& context) {
    // A picture is drawn from the beat as it is now.
    geometryValid_ = geometryValid_ && backBufferValid_;
    const ViewGeometry& geometry = Geometry();
    // Without an area there is nothing to show and no bitmap to make.
    if (geometry.Width() == 0 || geometry.Height() == 0) {
        return;
    }
    if (!backBufferValid_ && !RebuildBackBuffer(context)) {
        return;
    }
    SetLastError(ERROR_SUCCESS);
    if (!context.DeviceCopyFrom(context.UpdateRect(), *surface_)) {
        ModuleInstance::LogLastSystemError(*reports_);
        return;
    }
    if (markersShown_) {
        DrawMarkers(context);
    }
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
    if (surface_ == nullptr || surface_->Handle() == nullptr || !RenderGrid(target)) {
        surface_.reset();
        reports_->LOGMEMORYERROR(report::kSource, report::kNoSurfaceLine);
        return false;
    }
    surface_->SetPixelMapping();
    ShowScrollBars();
    DrawTraces(*surface_);
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

void MarkerViewControl::DrawMarkers(DeviceContext& target) {
    // The marker used last is drawn last, over the others.
    for (std::size_t slot = 0; slot < markerCount_; ++slot) {
        if (slot != current_) {
            DrawMarker(target, slot);
        }
    }
    if (current_ < markerCount_) {
        DrawMarker(target, current_);
    }
    HoldPointerOnMarker();
}

void MarkerViewControl::DrawMarker(DeviceContext& target, std::size_t slot) {
    if (positions_[slot] == 0) {
        return;
    }
    const std::int32_t height = geometry_.Height();
    const std::int32_t column = geometry_.ColumnOf(positions_[slot]);
    const ViewMarker& marker = *markers_[slot];
    const RECT label = LabelOf(column, height, marker.Size());
    if (label.right <= 0 || label.left >= geometry_.Width()) {
        return;
    }
    for (const std::int32_t edge : {column - kMarkerHalfWidth, column + kMarkerHalfWidth}) {
        target.FillBlack(edge, 0, 1, height);
    }
    for (const std::int32_t inner : {column - 1, column + 1}) {
        target.FillWhite(inner, 0, 1, height);
    }
    target.DeviceCopyFrom(label.left, label.top, marker.Size().width, marker.Size().height, marker.Label(), 0,
                          0);
    if (slot == current_ && HasFocus()) {
        DrawFocusFrame(target, label);
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
