// Draws the tracing on any device: window, picture or page.
#pragma once

#include <windows.h>

#include <vector>

#include "host/tracing/calipers.h"
#include "host/tracing/tracing_layout.h"
#include "host/tracing/tracing_signal.h"

namespace kxhost {

// Millimetre paper over the area; lines are one pixel wide at 96 dots per inch and grow with the device.
void DrawPaper(HDC dc, const RECT& area, double pixelsPerMm);

class TracingPainter {
  public:
    // The signal outlives the painter.
    TracingPainter(const TracingSignal& signal, std::vector<TracedBeat> beats);

    // The calibration pulses, the traces, the leads' names and the beats' ticks, in the font that is
    // selected.
    void Draw(HDC dc, const TracingLayout& layout, const TracingScale& scale);
    // Over it: the legs in every cell that shows them, the levels in the cell that they were measured in.
    static void DrawCalipers(HDC dc, const TracingLayout& layout, const TracingScale& scale,
                             const Calipers& calipers);

    // The points of a cell's trace; valid until the next call.
    const std::vector<POINT>& PointsOf(const TracingCell& cell, const TracingScale& scale);

    const std::vector<TracedBeat>& Beats() const { return beats_; }

  private:
    void DrawPulse(HDC dc, const TracingLayout& layout, const TracingCell& cell,
                   const TracingScale& scale) const;
    void DrawTicks(HDC dc, const TracingCell& cell, const TracingScale& scale) const;

    const TracingSignal& signal_;
    std::vector<TracedBeat> beats_;
    std::vector<POINT> points_;  // of the trace being drawn; kept, so that painting asks for no memory
};

}  // namespace kxhost
