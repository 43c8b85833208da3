#include "host/tracing/tracing_painter.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "host/windows/win32_handles.h"
#include "lib/leads.h"

namespace kxhost {

namespace {

constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kMinorLine = RGB(250, 228, 224);
constexpr COLORREF kMajorLine = RGB(240, 184, 176);
constexpr COLORREF kTrace = RGB(0, 0, 0);
constexpr COLORREF kName = RGB(0, 0, 128);
constexpr COLORREF kTick = RGB(96, 96, 96);
constexpr COLORREF kMedianTick = RGB(0, 128, 0);
constexpr COLORREF kCaliper = RGB(200, 0, 0);
constexpr double kPixelsPerMmAt96 = 96 / 25.4;
constexpr double kNameMm = 9;       // of a lead's name above its zero
constexpr double kBeginningMm = 2;  // of the line where a lead follows another, above and below its zero

// A line of the screen is one pixel; on a device of more dots it keeps its width.
int LineWidth(double pixelsPerMm) {
    return std::max(1, static_cast<int>(std::lround(pixelsPerMm / kPixelsPerMmAt96 / 2)));
}

void Fill(HDC dc, int left, int top, int right, int bottom, COLORREF colour) {
    const RECT area{left, top, right, bottom};
    SetBkColor(dc, colour);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

void DrawLines(HDC dc, const RECT& area, double pixelsPerMm, int everyMm, COLORREF colour) {
    const int width = everyMm == 1 ? 1 : LineWidth(pixelsPerMm);
    const double step = everyMm * pixelsPerMm;
    for (int i = 0;; ++i) {
        const int x = static_cast<int>(area.left + std::lround(i * step));
        if (x >= area.right) {
            break;
        }
        Fill(dc, x, static_cast<int>(area.top), x + width, static_cast<int>(area.bottom), colour);
    }
    for (int i = 0;; ++i) {
        const int y = static_cast<int>(area.top + std::lround(i * step));
        if (y >= area.bottom) {
            break;
        }
        Fill(dc, static_cast<int>(area.left), y, static_cast<int>(area.right), y + width, colour);
    }
}

std::wstring NameOfLead(unsigned lead) {
    const std::string_view name = kx::StandardLeadName(lead);
    return {name.begin(), name.end()};
}
}  // namespace

void DrawPaper(HDC dc, const RECT& area, double pixelsPerMm) {
    constexpr double kLeastMinorPixels = 2.5;
    Fill(dc, static_cast<int>(area.left), static_cast<int>(area.top), static_cast<int>(area.right),
         static_cast<int>(area.bottom), kPaper);
    if (pixelsPerMm >= kLeastMinorPixels) {
        DrawLines(dc, area, pixelsPerMm, 1, kMinorLine);
    }
    DrawLines(dc, area, pixelsPerMm, 5, kMajorLine);
}

TracingPainter::TracingPainter(const TracingSignal& signal, std::vector<TracedBeat> beats)
    : signal_(signal), beats_(std::move(beats)) {}

void TracingPainter::Draw(HDC dc, const TracingLayout& layout, const TracingScale& scale) {
    SetBkMode(dc, TRANSPARENT);
    {
        const UniquePen pen(CreatePen(PS_SOLID, LineWidth(scale.pixelsPerMm), kTrace));
        const Selection selected(dc, pen.get());
        for (const TracingCell& cell : layout.cells) {
            if (cell.left == layout.gutter) {
                DrawPulse(dc, layout, cell, scale);
            }
            const std::vector<POINT>& points = PointsOf(cell, scale);
            if (points.size() > 1) {
                Polyline(dc, points.data(), static_cast<int>(points.size()));
            }
        }
    }
    for (const TracingCell& cell : layout.cells) {
        const std::wstring name = NameOfLead(cell.lead);
        const int above = static_cast<int>(std::lround(kNameMm * scale.pixelsPerMm));
        const int beginning = static_cast<int>(std::lround(kBeginningMm * scale.pixelsPerMm));
        if (cell.left > layout.gutter) {
            Fill(dc, cell.left, cell.zero - beginning, cell.left + LineWidth(scale.pixelsPerMm),
                 cell.zero + beginning, kName);
        }
        SetTextColor(dc, kName);
        TextOutW(dc, cell.left + LineWidth(scale.pixelsPerMm) * 2, std::max(cell.top, cell.zero - above),
                 name.c_str(), static_cast<int>(name.size()));
        // The beats once for each stretch of time: under the rhythm strip, else under the last row.
        const TracingCell& last = layout.cells.back();
        if (last.rhythm ? cell.rhythm : cell.bottom == layout.height) {
            DrawTicks(dc, cell, scale);
        }
    }
}

// Several samples fall on one column when the paper is slow: the column then shows its first, lowest, highest
// and last.
const std::vector<POINT>& TracingPainter::PointsOf(const TracingCell& cell, const TracingScale& scale) {
    points_.clear();
    if (cell.lead >= signal_.leads.size()) {
        return points_;
    }
    const std::span<const std::int16_t> samples = signal_.leads[cell.lead];
    const double msPerSample = 1000.0 / signal_.sampleRate;
    const auto count = static_cast<long>(samples.size());
    const long first = std::clamp(std::lround(std::ceil(cell.startMs / msPerSample)), 0L, count);
    const long end = std::clamp(std::lround(std::ceil(cell.EndMs(scale) / msPerSample)), first, count);
    const double pixelsPerUnit = signal_.unitMv[cell.lead] * scale.PixelsPerMv();
    const double pixelsPerSample = msPerSample * scale.PixelsPerMs();
    const double origin = cell.left + (double(first) * msPerSample - cell.startMs) * scale.PixelsPerMs();
    struct Column {
        long x, first, lowest, highest, last;
    };
    const auto flush = [this](const Column& column) {
        for (const long y : {column.first, column.lowest, column.highest, column.last}) {
            if (points_.empty() || points_.back().x != column.x || points_.back().y != y) {
                points_.push_back({column.x, y});
            }
        }
    };
    Column column{};
    for (long i = first; i < end; ++i) {
        const long x = std::lround(origin + double(i - first) * pixelsPerSample);
        const long y = cell.zero - std::lround(samples[static_cast<std::size_t>(i)] * pixelsPerUnit);
        if (i == first || x != column.x) {
            if (i != first) {
                flush(column);
            }
            column = {x, y, y, y, y};
        }
        column.lowest = std::max(column.lowest, y);
        column.highest = std::min(column.highest, y);
        column.last = y;
    }
    if (end > first) {
        flush(column);
    }
    return points_;
}

void TracingPainter::DrawPulse(HDC dc, const TracingLayout& layout, const TracingCell& cell,
                               const TracingScale& scale) const {
    const int width = static_cast<int>(std::lround(kPulseMs * scale.PixelsPerMs()));
    const int left = std::max((layout.gutter - width) / 2, 0);
    const int right = std::min(left + width, layout.gutter);
    const int top = RowIn(cell, scale, 1.0);
    const POINT pulse[] = {{0, cell.zero}, {left, cell.zero},  {left, top},
                           {right, top},   {right, cell.zero}, {layout.gutter, cell.zero}};
    Polyline(dc, pulse, static_cast<int>(std::size(pulse)));
}

void TracingPainter::DrawTicks(HDC dc, const TracingCell& cell, const TracingScale& scale) const {
    const int height = static_cast<int>(std::lround(2 * scale.pixelsPerMm));
    const int width = LineWidth(scale.pixelsPerMm);
    TEXTMETRICW metrics;
    GetTextMetricsW(dc, &metrics);
    SetTextAlign(dc, TA_CENTER);
    for (const TracedBeat& beat : beats_) {
        const auto column = ColumnIn(cell, scale, beat.timeMs);
        if (!column) {
            continue;
        }
        const COLORREF colour = beat.inMedian ? kMedianTick : kTick;
        Fill(dc, *column - width / 2, cell.bottom - height, *column - width / 2 + width, cell.bottom, colour);
        SetTextColor(dc, colour);
        const wchar_t letter = LetterOf(beat.label);
        TextOutW(dc, *column, cell.bottom - height - static_cast<int>(metrics.tmHeight), &letter, 1);
    }
    SetTextAlign(dc, TA_LEFT);
}

void TracingPainter::DrawCalipers(HDC dc, const TracingLayout& layout, const TracingScale& scale,
                                  const Calipers& calipers) {
    if (!calipers.AreOut()) {
        return;
    }
    const int width = LineWidth(scale.pixelsPerMm);
    for (const TracingCell& cell : layout.cells) {
        for (int leg = 0; leg < 2; ++leg) {
            const TracingPoint& point = calipers.Leg(leg);
            const auto column = ColumnIn(cell, scale, point.ms);
            if (!column) {
                continue;
            }
            Fill(dc, *column, cell.top, *column + width, cell.bottom, kCaliper);
            if (cell.lead == calipers.Leg(0).lead) {
                const int row = RowIn(cell, scale, point.millivolts);
                const int arm = static_cast<int>(std::lround(2 * scale.pixelsPerMm));
                Fill(dc, *column - arm, row, *column + arm, row + width, kCaliper);
            }
        }
    }
}

}  // namespace kxhost
