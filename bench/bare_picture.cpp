#include "bench/bare_picture.h"

#include <algorithm>
#include <cstring>

#include "dialogs/marker_view/trace/filtered_lead.h"
#include "dialogs/marker_view/trace/signal_filters.h"

namespace kx::bench {
namespace {

// The paper in pixels: cells of 5 mm by the rule of the plot grid.
constexpr int kSpacingMil = 197;
constexpr int kFrameMil = 20;
constexpr int kMilPerInch = 1000;
constexpr int kBitmapHeight = kViewHeight + 1;
static_assert(kViewWidth % 16 == 0);

HBITMAP CreatePicture(HDC dc) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kViewWidth, kBitmapHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    return CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
}

void Fill(HDC dc, HBRUSH brush, int x, int y, int width, int height) {
    SelectObject(dc, brush);
    PatBlt(dc, x, y, width, height, PATCOPY);
}

}  // namespace

BarePicture::BarePicture(MarkerViewWindow& window)
    : view_(window.View()),
      memory_(CreateCompatibleDC(nullptr)),
      paper_(CreateSolidBrush(RGB(253, 255, 255))),
      major_(CreateSolidBrush(RGB(149, 240, 183))),
      frame_(CreateSolidBrush(RGB(255, 255, 255))),
      perInch_(GetDeviceCaps(memory_, LOGPIXELSY)) {
    before_ = GetCurrentObject(memory_, OBJ_BITMAP);
    SetBkMode(memory_, TRANSPARENT);
    AddTraces(window);
    AddMarkers(window);
    Rebuild();
    WNDCLASSA bareClass{};
    bareClass.lpfnWndProc = Procedure;
    bareClass.hInstance = GetModuleHandleA(nullptr);
    bareClass.lpszClassName = "BenchBarePicture";
    RegisterClassA(&bareClass);
    // Below the view and beside it, seen like it: neither is painted through the other.
    bare_ =
        CreateWindowExA(0, bareClass.lpszClassName, "", WS_CHILD | WS_VISIBLE, 0, MarkerViewWindow::kBareTop,
                        kViewWidth, kViewHeight, GetParent(view_), nullptr, bareClass.hInstance, nullptr);
    SetWindowLongPtrA(bare_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    MarkerViewWindow::Drain();
}

BarePicture::~BarePicture() {
    DestroyWindow(bare_);
    SelectObject(memory_, before_);
    SelectObject(memory_, GetStockObject(BLACK_PEN));
    SelectObject(memory_, GetStockObject(WHITE_BRUSH));
    DeleteDC(memory_);
    DeleteObject(picture_);
    for (HGDIOBJ object : {paper_, major_, frame_}) {
        DeleteObject(object);
    }
    for (const Trace& trace : traces_) {
        DeleteObject(trace.pen);
    }
    for (const Marker& marker : markers_) {
        SelectObject(marker.label, marker.before);
        DeleteDC(marker.label);
        DeleteObject(marker.bitmap);
    }
}

void BarePicture::AddTraces(MarkerViewWindow& window) {
    using View = MarkerViewWindow;
    const ViewGeometry geometry = window.Geometry();
    analysis::Episode& beat = window.Beat();
    const std::int16_t* raw = beat.Lead(View::kLead);
    const auto rate = static_cast<std::int32_t>(beat->sampleRate);
    SignalSettings signal;
    signal.bandPass = true;
    signal.lowHz = View::kLowEdge / 1000.0;
    signal.highHz = View::kHighEdge / 1000.0;
    signal.mainsHz = View::kMainsHz;
    const auto filtered = FilteredLead(raw, geometry.Samples(), rate, signal);
    const DerivativeTrace slope(beat->sampleRate, beat->resolutionNv, filtered.get(), beat->samplesPerLead);

    const auto add = [&](COLORREF colour, auto&& height) {
        Trace trace{CreatePen(PS_SOLID, 1, colour), {}};
        geometry.Trace(false, height, [&](std::int32_t x, std::int32_t y) {
            trace.points.push_back({x, y});
        });
        traces_.push_back(std::move(trace));
    };
    add(RGB(255, 128, 255),
        [&](std::int32_t i) { return geometry.SampleHeight(raw[static_cast<std::size_t>(i)]); });
    add(RGB(0, 0, 0),
        [&](std::int32_t i) { return geometry.SampleHeight(filtered[static_cast<std::size_t>(i)]); });
    add(RGB(0, 0, 128), [&](std::int32_t i) {
        return geometry.SlopeHeight(slope.SlopeValue(static_cast<std::uint32_t>(i)));
    });
    traces_.push_back({CreatePen(PS_DOT, 0, RGB(0, 0, 255)),
                       {{0, geometry.Baseline()}, {kViewWidth, geometry.Baseline()}}});
}

void BarePicture::AddMarkers(MarkerViewWindow& window) {
    const ViewGeometry geometry = window.Geometry();
    for (std::size_t slot = 0; slot < window.Labels().size(); ++slot) {
        Marker marker{};
        marker.bitmap = LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(window.Labels()[slot]));
        BITMAP size{};
        GetObjectA(marker.bitmap, sizeof size, &size);
        marker.width = size.bmWidth;
        marker.height = size.bmHeight;
        marker.label = CreateCompatibleDC(nullptr);
        marker.before = SelectObject(marker.label, marker.bitmap);
        marker.column = geometry.ColumnOf(SamplesFromMs(window.PositionsMs()[slot], geometry.Rate()));
        markers_.push_back(marker);
    }
}

void BarePicture::Rebuild() {
    const HBITMAP fresh = CreatePicture(memory_);
    SelectObject(memory_, fresh);
    DeleteObject(picture_);
    picture_ = fresh;
    DrawGrid();
    for (const Trace& trace : traces_) {
        SelectObject(memory_, trace.pen);
        Polyline(memory_, trace.points.data(), static_cast<int>(trace.points.size()));
    }
}

void BarePicture::DrawGrid() const {
    constexpr int kLine = 2;
    const int cell = MulDiv(kSpacingMil, perInch_, kMilPerInch);
    const int widthMil = MulDiv(kViewWidth, kMilPerInch, perInch_);
    const int heightMil = MulDiv(kViewHeight, kMilPerInch, perInch_);
    const int columns = MulDiv(1, widthMil, kSpacingMil);
    const int rows = MulDiv(1, heightMil, kSpacingMil);
    // The first cell, a row of cells, and every other row as a copy of that; paper in the gaps.
    Fill(memory_, paper_, 0, 0, kViewWidth, cell);
    Fill(memory_, major_, 0, 0, kLine, cell);
    Fill(memory_, major_, 0, 0, cell, kLine);
    for (int j = 1; j < columns; ++j) {
        BitBlt(memory_, MulDiv(kViewWidth, j, columns), 0, cell, cell, memory_, 0, 0, SRCCOPY);
    }
    int bottom = cell;
    for (int i = 1; i < rows; ++i) {
        const int y = MulDiv(kViewHeight, i, rows);
        if (y > bottom) {
            Fill(memory_, paper_, 0, bottom, kViewWidth, y - bottom);
        }
        BitBlt(memory_, 0, y, kViewWidth, cell, memory_, 0, 0, SRCCOPY);
        bottom = y + cell;
    }
    if (kBitmapHeight > bottom) {
        Fill(memory_, paper_, 0, bottom, kViewWidth, kBitmapHeight - bottom);
    }
    const int frame = MulDiv(kFrameMil, perInch_, kMilPerInch);
    Fill(memory_, frame_, 0, 0, kViewWidth, frame);
    Fill(memory_, frame_, 0, kViewHeight - frame, kViewWidth, frame);
    Fill(memory_, frame_, 0, 0, frame, kViewHeight);
    Fill(memory_, frame_, kViewWidth - frame, 0, frame, kViewHeight);
}

void BarePicture::DrawMarker(HDC dc, const Marker& marker, bool focus) const {
    for (const int edge : {marker.column - 2, marker.column + 2}) {
        PatBlt(dc, edge, 0, 1, kViewHeight, BLACKNESS);
    }
    for (const int inner : {marker.column - 1, marker.column + 1}) {
        PatBlt(dc, inner, 0, 1, kViewHeight, WHITENESS);
    }
    int left = marker.column - marker.width / 2;
    int top = kViewHeight - marker.height;
    int width = marker.width;
    int height = marker.height;
    BitBlt(dc, left, top, width, height, marker.label, 0, 0, SRCCOPY);
    if (!focus) {
        return;
    }
    for (const DWORD fill : {BLACKNESS, WHITENESS}) {
        PatBlt(dc, left, top, width, 1, fill);
        PatBlt(dc, left, top + height - 1, width, 1, fill);
        PatBlt(dc, left, top, 1, height, fill);
        PatBlt(dc, left + width - 1, top, 1, height, fill);
        ++left;
        ++top;
        width -= 2;
        height -= 2;
    }
}

void BarePicture::Draw(HDC dc) const {
    BitBlt(dc, 0, 0, kViewWidth, kViewHeight, memory_, 0, 0, SRCCOPY);
    for (std::size_t slot = 0; slot < markers_.size(); ++slot) {
        DrawMarker(dc, markers_[slot], slot == focused_);
    }
}

void BarePicture::Show() const {
    const HDC dc = GetDC(view_);
    Draw(dc);
    ReleaseDC(view_, dc);
    GdiFlush();
}

LRESULT CALLBACK BarePicture::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        return 1;
    }
    if (message == WM_PAINT) {
        PAINTSTRUCT paint{};
        const HDC dc = BeginPaint(window, &paint);
        reinterpret_cast<const BarePicture*>(GetWindowLongPtrA(window, GWLP_USERDATA))->Draw(dc);
        EndPaint(window, &paint);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void BarePicture::Repaint() const {
    RedrawWindow(bare_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    GdiFlush();
}

void BarePicture::Step(std::size_t slot, int column) {
    Marker& marker = markers_[slot];
    const HDC dc = GetDC(view_);
    const int labelLeft = marker.column - marker.width / 2;
    const int labelTop = kViewHeight - marker.height;
    BitBlt(dc, marker.column - 2, 0, 5, kViewHeight, memory_, marker.column - 2, 0, SRCCOPY);
    BitBlt(dc, labelLeft, labelTop, marker.width, marker.height, memory_, labelLeft, labelTop, SRCCOPY);
    marker.column = column;
    DrawMarker(dc, marker, slot == focused_);
    ReleaseDC(view_, dc);
    PostMessageA(GetParent(view_), WM_NULL, static_cast<WPARAM>(column), 0);
    GdiFlush();
}

bool BarePicture::IsShown() const {
    Show();
    const auto pixels = [this] {
        const HDC dc = GetDC(view_);
        const HDC copy = CreateCompatibleDC(dc);
        const HBITMAP bitmap = CreatePicture(dc);
        const HGDIOBJ before = SelectObject(copy, bitmap);
        BitBlt(copy, 0, 0, kViewWidth, kViewHeight, dc, 0, 0, SRCCOPY);
        ReleaseDC(view_, dc);
        GdiFlush();
        DIBSECTION section{};
        GetObjectA(bitmap, sizeof section, &section);
        const auto* bytes = static_cast<const unsigned char*>(section.dsBm.bmBits);
        std::vector<unsigned char> all(bytes, bytes + std::size_t{4} * kViewWidth * kBitmapHeight);
        SelectObject(copy, before);
        DeleteObject(bitmap);
        DeleteDC(copy);
        return all;
    };
    const auto bare = pixels();
    InvalidateRect(view_, nullptr, FALSE);
    UpdateWindow(view_);
    return bare == pixels();
}

}  // namespace kx::bench
