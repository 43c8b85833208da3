// Where everything of the tracing stands: arithmetic in millimetres, milliseconds and pixels, without a
// device. Portable.
#pragma once

#include <array>
#include <optional>
#include <vector>

namespace kxhost {

enum class Arrangement { k3x4, k6x2, k12x1 };

inline constexpr std::array kTracingSpeeds{12.5, 25.0, 50.0};  // mm per second
inline constexpr std::array kTracingGains{5.0, 10.0, 20.0};    // mm per millivolt

struct TracingScale {
    double pixelsPerMm = 96 / 25.4;  // of the device, times the zoom
    double mmPerSecond = 25;
    double mmPerMv = 10;

    double PixelsPerMs() const { return pixelsPerMm * mmPerSecond / 1000; }
    double PixelsPerMv() const { return pixelsPerMm * mmPerMv; }
};

// One lead over a stretch of time. Pixels from the corner of the content; right and bottom are the first
// outside.
struct TracingCell {
    unsigned lead = 0;  // KX_LEAD_...
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
    int zero = 0;        // the row of 0 mV
    double startMs = 0;  // at `left`
    bool rhythm = false;

    double EndMs(const TracingScale& scale) const { return startMs + (right - left) / scale.PixelsPerMs(); }
};

// The content as wide as the view and at least as high: rows that do not fit at their least height are
// scrolled.
struct TracingLayout {
    std::vector<TracingCell> cells;
    int height = 0;
    int gutter = 0;        // width of the calibration pulses on the left
    double visibleMs = 0;  // of the recording, from the first column to the last
};

// The rows' least height, and the width of the gutter.
inline constexpr double kLeastRowMm = 14;
inline constexpr double kGutterMm = 8;
// The calibration pulse: 1 mV over 200 ms.
inline constexpr double kPulseMs = 200;

// A recording that is shorter than the width shares what it needs among the columns.
TracingLayout LayOutTracing(Arrangement arrangement, int width, int height, const TracingScale& scale,
                            double startMs, double durationMs);

// A place in the tracing: a time, and a level in the lead of a cell.
struct TracingPoint {
    double ms = 0;
    double millivolts = 0;
    unsigned lead = 0;
};

// What a pixel of the content shows; none in the gutter.
std::optional<TracingPoint> PointAt(const TracingLayout& layout, const TracingScale& scale, int x, int y);
// The column of a time in a cell; none when the cell does not show it.
std::optional<int> ColumnIn(const TracingCell& cell, const TracingScale& scale, double ms);
int RowIn(const TracingCell& cell, const TracingScale& scale, double millivolts);

}  // namespace kxhost
