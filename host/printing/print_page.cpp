#include "host/printing/print_page.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace kxhost {
namespace {

enum TextStyle { kTitle, kStrong, kBody, kSmall, kTextStyles };

struct StyleRow {
    double points;
    int weight;
};

constexpr std::array<StyleRow, kTextStyles> kStyles{
    {{15, FW_BOLD}, {9, FW_BOLD}, {9, FW_NORMAL}, {7.5, FW_NORMAL}}};

UniqueFont MakeFont(const StyleRow& style) {
    constexpr int kPointsPerInch = 72;
    LOGFONTW font{};
    font.lfHeight = -std::lround(style.points * kPrintDpi / kPointsPerInch);
    font.lfWeight = style.weight;
    // A dot is black or white: grey edges would become ragged ones.
    font.lfQuality = NONANTIALIASED_QUALITY;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    constexpr std::wstring_view kFace = L"Arial";
    kFace.copy(font.lfFaceName, LF_FACESIZE - 1);
    return UniqueFont(CreateFontIndirectW(&font));
}

// Text and rectangles on the page, in dots.
class Canvas {
  public:
    explicit Canvas(HDC dc) : dc_(dc) {
        for (std::size_t i = 0; i < fonts_.size(); ++i) {
            fonts_[i] = MakeFont(kStyles[i]);
        }
        SetBkMode(dc_, TRANSPARENT);
    }

    HDC Dc() const { return dc_; }
    void Fill(int left, int top, int width, int height, DWORD rop = BLACKNESS) const {
        PatBlt(dc_, left, top, width, height, rop);
    }
    void Frame(const PageBox& box, int thickness) const {
        Fill(box.left, box.top, box.Width(), thickness);
        Fill(box.left, box.bottom - thickness, box.Width(), thickness);
        Fill(box.left, box.top, thickness, box.Height());
        Fill(box.right - thickness, box.top, thickness, box.Height());
    }
    int WidthOf(TextStyle style, const std::wstring& text) const {
        const Selection font(dc_, fonts_[style].get());
        SIZE size{};
        GetTextExtentPoint32W(dc_, text.c_str(), static_cast<int>(text.size()), &size);
        return static_cast<int>(size.cx);
    }
    // format: how DrawText takes it; returns the height of the text.
    int Text(TextStyle style, const std::wstring& text, const PageBox& box, UINT format = DT_LEFT) const {
        const Selection font(dc_, fonts_[style].get());
        RECT area{box.left, box.top, box.right, box.bottom};
        const UINT lines = (format & DT_WORDBREAK) != 0 ? 0 : DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;
        return DrawTextW(dc_, text.c_str(), -1, &area, format | lines | DT_NOPREFIX);
    }

  private:
    HDC dc_;
    std::array<UniqueFont, kTextStyles> fonts_;
};

constexpr int kLine = 2;  // of a marker and the frame, dots
constexpr int kTraceWidth = 3;
constexpr double kTableRowMm = 3.8;
constexpr double kTableHeadMm = 5;

PageBox Moved(PageBox box, int down) {
    box.top += down;
    box.bottom += down;
    return box;
}

void DrawPatient(const Canvas& canvas, const PageLayout& layout, const PrintedPage& page) {
    PageBox line = layout.patient;
    line.bottom = line.top + DotsOf(8);
    canvas.Text(kTitle, page.patient, line);
    line.top = line.bottom;
    line.bottom = line.top + DotsOf(5);
    canvas.Text(kBody, page.details, line);
    canvas.Text(kBody, page.reportState, Moved(line, DotsOf(5)));
    canvas.Fill(layout.patient.left, layout.patient.bottom - kLine, layout.patient.Width(), kLine);
    const PageBox title{layout.grid.left, layout.patient.bottom, layout.grid.right, layout.grid.top};
    canvas.Text(kStrong, L"Battito mediano, derivazione " + page.lead, title);
}

void DrawPaper(const Canvas& canvas, const PageLayout& layout) {
    constexpr int kLinesMm = 5;
    const PageBox& grid = layout.grid;
    for (int x = 1; x < layout.gridWidthMm; ++x) {
        const int column = grid.left + DotsOf(x);
        if (x % kLinesMm == 0) {
            canvas.Fill(column, grid.top, 1, grid.Height());
            continue;
        }
        for (int y = 1; y < layout.gridHeightMm; ++y) {
            if (y % kLinesMm != 0) {
                canvas.Fill(column, grid.top + DotsOf(y), 2, 2);
            }
        }
    }
    for (int y = kLinesMm; y < layout.gridHeightMm; y += kLinesMm) {
        canvas.Fill(grid.left, grid.top + DotsOf(y), grid.Width(), 1);
    }
    canvas.Frame(grid, kLine);
}

// Within the grid and nowhere else, whatever a damaged beat holds.
void DrawTrace(const Canvas& canvas, const PageLayout& layout, const WaveScale& scale,
               const PrintedPage& page) {
    struct PenDeleter {
        using pointer = HPEN;
        void operator()(HPEN pen) const { DeleteObject(pen); }
    };
    std::vector<POINT> points;
    for (std::size_t i = 0; i < page.microvolts.size(); ++i) {
        points.push_back({ColumnOf(layout, scale, static_cast<double>(i) / page.samplesPerMs),
                          RowOf(layout, scale, page.microvolts[i])});
    }
    const std::unique_ptr<HPEN, PenDeleter> pen(CreatePen(PS_SOLID, kTraceWidth, RGB(0, 0, 0)));
    const int saved = SaveDC(canvas.Dc());
    IntersectClipRect(canvas.Dc(), layout.grid.left, layout.grid.top, layout.grid.right, layout.grid.bottom);
    SelectObject(canvas.Dc(), pen.get());
    Polyline(canvas.Dc(), points.data(), static_cast<int>(points.size()));
    RestoreDC(canvas.Dc(), saved);
}

// The markers of the whole beat hang from labels along the upper edge on solid lines, those of the lead stand
// on labels along the lower edge on broken ones.
void DrawMarkers(const Canvas& canvas, const PageLayout& layout, const WaveScale& scale,
                 const std::vector<PrintedMarker>& markers, bool above) {
    const PageBox& grid = layout.grid;
    const int rowHeight = DotsOf(kLabelRowMm);
    std::vector<LabelPlace> places;
    places.reserve(markers.size());
    for (const PrintedMarker& marker : markers) {
        places.push_back(
            {ColumnOf(layout, scale, marker.ms), canvas.WidthOf(kSmall, marker.name) + DotsOf(2)});
    }
    const std::vector<int> rows = StaggerLabels(places, kLabelRows);
    const int margin = DotsOf(1);
    for (std::size_t i = 0; i < markers.size(); ++i) {
        const int column = places[i].centre;
        if (column <= grid.left || column >= grid.right) {
            continue;
        }
        PageBox label{column - places[i].width / 2, 0, 0, 0};
        label.right = label.left + places[i].width - DotsOf(0.5);
        label.top = above ? grid.top + margin + rows[i] * rowHeight
                          : grid.bottom - margin - (rows[i] + 1) * rowHeight;
        label.bottom = label.top + rowHeight - DotsOf(0.5);
        const int lineTop = above ? label.bottom : grid.top + margin + kLabelRows * rowHeight;
        const int lineBottom = above ? grid.bottom - margin - kLabelRows * rowHeight : label.top;
        const int dash = DotsOf(1);
        for (int y = lineTop; y < lineBottom; y += above ? lineBottom - lineTop : 2 * dash) {
            canvas.Fill(column - kLine / 2, y, kLine,
                        above ? lineBottom - lineTop : std::min(dash, lineBottom - y));
        }
        canvas.Fill(label.left, label.top, label.Width(), label.Height(), WHITENESS);
        canvas.Frame(label, 1);
        canvas.Text(kSmall, markers[i].name, label, DT_CENTER);
    }
}

void DrawTable(const Canvas& canvas, PageBox& room, const std::wstring& title,
               const std::vector<PrintedValue>& rows) {
    if (rows.empty()) {
        return;
    }
    PageBox line = room;
    line.bottom = line.top + DotsOf(kTableHeadMm);
    canvas.Text(kStrong, title, line);
    canvas.Fill(line.left, line.bottom - 1, line.Width(), 1);
    for (const PrintedValue& row : rows) {
        line.top = line.bottom;
        line.bottom = line.top + DotsOf(kTableRowMm);
        canvas.Text(kSmall, row.name, line);
        canvas.Text(kSmall, row.value, line, DT_RIGHT);
    }
    room.top = line.bottom + DotsOf(1);
}

std::vector<PrintedValue> MarkerRows(const std::vector<PrintedMarker>& markers) {
    std::vector<PrintedValue> rows;
    rows.reserve(markers.size());
    for (const PrintedMarker& marker : markers) {
        rows.push_back(
            {marker.name, (marker.manual ? L"a mano   " : L"") + std::to_wstring(marker.ms) + L" ms"});
    }
    return rows;
}

void DrawTables(const Canvas& canvas, const PageLayout& layout, const PrintedPage& page) {
    PageBox room = layout.tables;
    DrawTable(canvas, room, L"Misure", page.globalValues);
    DrawTable(canvas, room, L"Derivazione " + page.lead, page.leadValues);
    DrawTable(canvas, room, L"Marcatori del battito", MarkerRows(page.globalMarkers));
    DrawTable(canvas, room, L"Marcatori di " + page.lead, MarkerRows(page.leadMarkers));
}

// What does not fit is said, never lost in silence.
void DrawStatement(const Canvas& canvas, const PageLayout& layout, const PrintedPage& page) {
    PageBox room = layout.statement;
    PageBox head = room;
    head.bottom = head.top + DotsOf(kTableHeadMm);
    canvas.Text(kStrong, L"Interpretazione", head);
    canvas.Fill(head.left, head.bottom - 1, head.Width(), 1);
    room.top = head.bottom + DotsOf(1);
    const std::wstring text = page.statement.empty() ? L"Non ancora scritta." : page.statement;
    const UINT format = DT_WORDBREAK | DT_EDITCONTROL;
    if (canvas.Text(kBody, text, room, format | DT_CALCRECT) > room.Height()) {
        const PageBox note{room.left, room.bottom - DotsOf(kTableHeadMm), room.right, room.bottom};
        canvas.Text(kStrong, L"[...] L'interpretazione continua: il testo intero è nella stazione.", note);
        room.bottom = note.top;
    }
    canvas.Text(kBody, text, room, format);
}

void DrawScale(const Canvas& canvas, const PageLayout& layout, const WaveScale& scale,
               const std::wstring& lead) {
    const PageBox line{layout.grid.left, layout.grid.bottom, layout.grid.right, layout.statement.top};
    canvas.Text(
        kStrong,
        std::to_wstring(scale.mmPerSecond) + L" mm/s     " + std::to_wstring(scale.mmPerMv) + L" mm/mV",
        line);
    canvas.Text(kSmall,
                L"punti: 1 mm     linee: 5 mm     marcatori continui: del battito, tratteggiati: di " + lead,
                line, DT_RIGHT);
}

void DrawFooter(const Canvas& canvas, const PageLayout& layout) {
    canvas.Fill(layout.footer.left, layout.footer.top, layout.footer.Width(), 1);
    canvas.Text(kSmall, L"Stazione ECG. Non è un dispositivo medico.", layout.footer);
    canvas.Text(kSmall, L"Tempi dall'inizio del battito.", layout.footer, DT_RIGHT);
}

}  // namespace

std::unique_ptr<PageImage> DrawPage(const PrintedPage& page, Paper paper) {
    const PageLayout layout = LayOutPage(paper);
    auto image = std::make_unique<PageImage>(layout.width, layout.height);
    const Canvas canvas(image->Dc());
    DrawPatient(canvas, layout, page);
    DrawPaper(canvas, layout);
    if (!page.microvolts.empty()) {
        const auto [lowest, highest] = std::minmax_element(page.microvolts.begin(), page.microvolts.end());
        const double durationMs = static_cast<double>(page.microvolts.size()) / page.samplesPerMs;
        const WaveScale scale = ChooseScale(layout, static_cast<int>(durationMs), static_cast<int>(*lowest),
                                            static_cast<int>(*highest));
        DrawMarkers(canvas, layout, scale, page.leadMarkers, false);
        DrawMarkers(canvas, layout, scale, page.globalMarkers, true);
        DrawTrace(canvas, layout, scale, page);
        DrawScale(canvas, layout, scale, page.lead);
    }
    DrawTables(canvas, layout, page);
    DrawStatement(canvas, layout, page);
    DrawFooter(canvas, layout);
    GdiFlush();
    return image;
}

}  // namespace kxhost
