#include "host/tracing/tracing_layout.h"

#include <algorithm>
#include <cmath>

#include "include/kxdialogs.h"

namespace kxhost {

namespace {

int Round(double value) {
    return static_cast<int>(std::lround(value));
}

struct Shape {
    int rows;
    int columns;
    bool rhythm;  // one more row that shows lead II all along
};

Shape ShapeOf(Arrangement arrangement) {
    switch (arrangement) {
        case Arrangement::k3x4:
            return {3, 4, true};
        case Arrangement::k6x2:
            return {6, 2, false};
        default:
            return {12, 1, false};
    }
}

}  // namespace

TracingLayout LayOutTracing(Arrangement arrangement, int width, int height, const TracingScale& scale,
                            double startMs, double durationMs) {
    const Shape shape = ShapeOf(arrangement);
    const int rows = shape.rows + (shape.rhythm ? 1 : 0);
    TracingLayout layout;
    layout.gutter = Round(kGutterMm * scale.pixelsPerMm);
    layout.height = std::max(height, Round(rows * kLeastRowMm * scale.pixelsPerMm));
    const int needed = static_cast<int>(std::min(std::ceil(durationMs * scale.PixelsPerMs()), 1e9));
    const int room = std::max(std::min(width - layout.gutter, needed), shape.columns);
    layout.visibleMs = room / scale.PixelsPerMs();
    const auto edge = [&](int column) { return layout.gutter + column * room / shape.columns; };
    const auto cell = [&](unsigned lead, int row, int first, int last, bool rhythm) {
        TracingCell made{
            lead, edge(first), edge(last), row * layout.height / rows, (row + 1) * layout.height / rows,
            0,    0,           rhythm};
        made.zero = (made.top + made.bottom) / 2;
        // A column goes on where the one before it ends.
        made.startMs = startMs + (made.left - layout.gutter) / scale.PixelsPerMs();
        layout.cells.push_back(made);
    };
    for (int column = 0; column < shape.columns; ++column) {
        for (int row = 0; row < shape.rows; ++row) {
            cell(static_cast<unsigned>(column * shape.rows + row), row, column, column + 1, false);
        }
    }
    if (shape.rhythm) {
        cell(KX_LEAD_II, shape.rows, 0, shape.columns, true);
    }
    return layout;
}

std::optional<TracingPoint> PointAt(const TracingLayout& layout, const TracingScale& scale, int x, int y) {
    for (const TracingCell& cell : layout.cells) {
        if (x >= cell.left && x < cell.right && y >= cell.top && y < cell.bottom) {
            return TracingPoint{cell.startMs + (x - cell.left) / scale.PixelsPerMs(),
                                (cell.zero - y) / scale.PixelsPerMv(), cell.lead};
        }
    }
    return std::nullopt;
}

std::optional<int> ColumnIn(const TracingCell& cell, const TracingScale& scale, double ms) {
    const int column = cell.left + Round((ms - cell.startMs) * scale.PixelsPerMs());
    return column >= cell.left && column < cell.right ? std::optional(column) : std::nullopt;
}

int RowIn(const TracingCell& cell, const TracingScale& scale, double millivolts) {
    // Beyond what a window can show the level no longer matters, only its side.
    constexpr double kFar = 20'000;
    return cell.zero - Round(std::clamp(millivolts * scale.PixelsPerMv(), -kFar, kFar));
}

}  // namespace kxhost
