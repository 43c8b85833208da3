// The page of the whole tracing: twelve leads and a rhythm strip on one sheet of A4, across. Portable.
#pragma once

#include <vector>

#include "host/printing/page_canvas.h"
#include "host/printing/print_page_content.h"
#include "host/tracing/tracing_signal.h"

namespace kxhost {

inline constexpr double kTracingSheetWidthMm = 297;
inline constexpr double kTracingSheetHeightMm = 210;
// The paper on the sheet; whole multiples of 5 mm. A margin of 8 mm stays free for printers.
inline constexpr PageArea kTracingPaper{11, 31, 275, 125};

struct TracingPage {
    PrintedPage texts;  // patient, measurements, state and statement; nothing of a lead
    TracingSignal signal;
    std::vector<TracedBeat> beats;
    double startMs = 0;  // of the recording, on the left edge
};

// 25 mm/s and 10 mm/mV, leads in three rows of four with lead II below; a recording that is longer than the
// paper goes as far as that.
void DrawTracingPage(PageCanvas& canvas, const TracingPage& page);

}  // namespace kxhost
