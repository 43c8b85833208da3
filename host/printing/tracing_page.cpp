#include "host/printing/tracing_page.h"

#include <algorithm>
#include <cmath>
#include <cwchar>

#include "host/tracing/tracing_layout.h"
#include "lib/leads.h"

namespace kxhost {
namespace {

// The tracing is laid out as for a device of a hundred dots per millimetre.
constexpr double kDots = 100;
constexpr TracingScale kScale{kDots, 25, 10};

constexpr double kTraceMm = 0.25;
constexpr double kThinMm = 0.15;
constexpr PageFont kName{14, true};
constexpr PageFont kStrong{9, true};
constexpr PageFont kBody{9, false};
constexpr PageFont kSmall{7, false};

constexpr double kRight = kTracingPaper.left + kTracingPaper.width;
constexpr double kBottom = kTracingPaper.top + kTracingPaper.height;
constexpr double kStatementTop = kBottom + 12;
constexpr double kStatementLine = 4.2;
constexpr std::size_t kStatementLines = 7;  // in each of two columns
constexpr double kFooter = 203;

PagePoint Placed(double x, double y) {
    return {kTracingPaper.left + x / kDots, kTracingPaper.top + y / kDots};
}

std::wstring Decimal(const wchar_t* format, double value) {
    wchar_t text[32];
    std::swprintf(text, std::size(text), format, value);
    std::wstring result = text;
    std::replace(result.begin(), result.end(), L'.', L',');
    return result;
}

// As much of a text as there is room for.
std::wstring Fitting(const PageFont& font, const std::wstring& text, double widthMm) {
    const auto lines = WrapText(font, text, widthMm);
    return lines.empty() ? std::wstring() : lines.size() == 1 ? lines[0] : lines[0] + L"...";
}

void DrawHeader(PageCanvas& canvas, const PrintedPage& texts) {
    constexpr double kWide = 130;
    canvas.Text({kTracingPaper.left, 14}, kName, Ink::kBlack, Fitting(kName, texts.patient, kWide));
    canvas.Text({kTracingPaper.left, 19.5}, kBody, Ink::kBlack, Fitting(kBody, texts.details, kWide));
    canvas.Text({kTracingPaper.left, 25}, kStrong, Ink::kBlack, Fitting(kStrong, texts.reportState, kWide));
    constexpr double kCell = 27;
    constexpr std::size_t kAcross = 4;
    for (std::size_t i = 0; i < texts.globalValues.size(); ++i) {
        const double x = kRight - kCell * double(kAcross - i % kAcross);
        const std::size_t row = i / kAcross;
        const double y = 11.5 + double(row) * 9;
        canvas.Text({x, y}, kSmall, Ink::kGrey, texts.globalValues[i].name);
        canvas.Text({x, y + 4.2}, kStrong, Ink::kBlack, texts.globalValues[i].value);
    }
}

void DrawTrace(PageCanvas& canvas, const TracingSignal& signal, const TracingCell& cell) {
    if (cell.lead >= signal.leads.size()) {
        return;
    }
    const double msPerSample = 1000 / signal.sampleRate;
    std::vector<PagePoint> points;
    const auto first = static_cast<std::size_t>(std::max(std::ceil(cell.startMs / msPerSample), 0.0));
    for (std::size_t i = first; i < signal.SampleCount(); ++i) {
        const double ms = double(i) * msPerSample;
        if (ms > cell.EndMs(kScale)) {
            break;
        }
        const double y = cell.zero - signal.Millivolts(cell.lead, i) * kScale.PixelsPerMv();
        points.push_back(Placed(cell.left + (ms - cell.startMs) * kScale.PixelsPerMs(),
                                std::clamp(y, 0.0, kTracingPaper.height * kDots)));
    }
    canvas.Polyline(Ink::kBlack, kTraceMm, points);
}

void DrawPulse(PageCanvas& canvas, const TracingLayout& layout, const TracingCell& cell) {
    const double width = kPulseMs * kScale.PixelsPerMs();
    const double left = (layout.gutter - width) / 2;
    const double top = cell.zero - kScale.PixelsPerMv();
    const double zero = cell.zero;
    const PagePoint pulse[] = {
        Placed(0, zero),           Placed(left, zero),         Placed(left, top),
        Placed(left + width, top), Placed(left + width, zero), Placed(layout.gutter, zero)};
    canvas.Polyline(Ink::kBlack, kTraceMm, pulse);
}

void DrawBeats(PageCanvas& canvas, const TracingPage& page, const TracingCell& cell) {
    for (const TracedBeat& beat : page.beats) {
        const auto column = ColumnIn(cell, kScale, beat.timeMs);
        if (!column) {
            continue;
        }
        const PagePoint tick[] = {Placed(*column, cell.bottom - 2 * kDots), Placed(*column, cell.bottom)};
        canvas.Polyline(beat.inMedian ? Ink::kBlack : Ink::kGrey, kThinMm, tick);
        const wchar_t letter = LetterOf(beat.label);
        const std::wstring_view name(&letter, 1);
        canvas.Text({tick[0].x - TextWidthMm(kSmall, name) / 2, tick[0].y - 0.6}, kSmall, Ink::kGrey, name);
    }
}

void DrawStatement(PageCanvas& canvas, const PrintedPage& texts) {
    canvas.Text({kTracingPaper.left, kStatementTop}, kStrong, Ink::kBlack, L"Interpretazione");
    const double column = kTracingPaper.width / 2;
    auto lines =
        WrapText(kBody, texts.statement.empty() ? L"Non ancora scritta." : texts.statement, column - 5);
    if (lines.size() > 2 * kStatementLines) {
        lines.resize(2 * kStatementLines);
        lines.back() = L"[...] Il testo intero è nella stazione.";
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t across = i / kStatementLines;
        canvas.Text({kTracingPaper.left + column * double(across),
                     kStatementTop + kStatementLine * double(i % kStatementLines + 1)},
                    kBody, Ink::kBlack, lines[i]);
    }
}

}  // namespace

void DrawTracingPage(PageCanvas& canvas, const TracingPage& page) {
    DrawHeader(canvas, page.texts);
    canvas.MillimetrePaper(kTracingPaper);
    const TracingLayout layout =
        LayOutTracing(Arrangement::k3x4, int(kTracingPaper.width * kDots), int(kTracingPaper.height * kDots),
                      kScale, page.startMs, page.signal.DurationMs());
    for (const TracingCell& cell : layout.cells) {
        if (cell.left == layout.gutter) {
            DrawPulse(canvas, layout, cell);
        }
        DrawTrace(canvas, page.signal, cell);
        const std::string_view lead = kx::StandardLeadName(cell.lead);
        if (cell.left > layout.gutter) {
            const PagePoint beginning[] = {Placed(cell.left, cell.zero - 2 * kDots),
                                           Placed(cell.left, cell.zero + 2 * kDots)};
            canvas.Polyline(Ink::kBlue, kThinMm, beginning);
        }
        canvas.Text(Placed(cell.left + kDots, cell.zero - 9 * kDots), kStrong, Ink::kBlue,
                    std::wstring(lead.begin(), lead.end()));
        if (cell.rhythm) {
            DrawBeats(canvas, page, cell);
        }
    }
    const double seconds = page.startMs / 1000;
    const double end = std::min(seconds + layout.visibleMs / 1000, page.signal.DurationMs() / 1000);
    canvas.Text({kTracingPaper.left, kBottom + 4}, kStrong, Ink::kBlack, L"25 mm/s     10 mm/mV");
    canvas.Text(
        {kTracingPaper.left + 50, kBottom + 4}, kSmall, Ink::kBlack,
        L"Registrazione: da " + Decimal(L"%.1f", seconds) + L" a " + Decimal(L"%.1f s", end) + L" di " +
            Decimal(L"%.1f s, ", page.signal.DurationMs() / 1000) +
            Decimal(L"%.0f Hz", page.signal.sampleRate) +
            L". Linee ogni millimetro e ogni 5; impulso: 1 mV, 200 ms; tacche nere: battiti del mediano.");
    DrawStatement(canvas, page.texts);
    canvas.Text({kTracingPaper.left, kFooter}, kSmall, Ink::kGrey,
                L"Stazione ECG. Non è un dispositivo medico.");
}

}  // namespace kxhost
