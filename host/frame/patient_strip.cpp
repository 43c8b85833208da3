#include "host/frame/patient_strip.h"

#include <algorithm>
#include <cwchar>
#include <string_view>
#include <utility>

#include "host/resource_ids.h"
#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

constexpr COLORREF kAccent = RGB(20, 87, 40);
constexpr const wchar_t* kMissing = L"...";
constexpr int kDaysInYear = 365;
constexpr int kDaysInMonth = 30;

// Between the window's text and its background: quiet, and still readable whatever the system's colours are.
COLORREF LabelColour() {
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF back = GetSysColor(COLOR_WINDOW);
    const auto mix = [](int a, int b) { return (3 * a + 2 * b) / 5; };
    return RGB(mix(GetRValue(text), GetRValue(back)), mix(GetGValue(text), GetGValue(back)),
               mix(GetBValue(text), GetBValue(back)));
}

// Lengths at 96 dots per inch.
constexpr int kMargin = 12;
constexpr int kAccentWidth = 5;
// A cell's width, and that of one with two numbers; the second of each where the window is narrow.
constexpr int kCellWidths[] = {74, 62};
constexpr int kWideCellWidths[] = {104, 96};
constexpr int kNarrow = 1000;

template <std::size_t N>
std::wstring FieldText(const char (&field)[N]) {
    const std::string_view whole(field, N);
    return FromRecordText(whole.substr(0, whole.find('\0')));
}

// "last^first^middle^" as "Last First Middle".
std::wstring NameText(const KxTestRecord& test) {
    std::wstring name;
    std::wstring part;
    for (const wchar_t c : FieldText(test.patientName) + L"^") {
        if (c != L'^') {
            part += c;
        } else if (!part.empty()) {
            name += (name.empty() ? L"" : L" ") + std::exchange(part, {});
        }
    }
    return name;
}

std::wstring AgeText(unsigned days) {
    if (days >= kDaysInYear) {
        return std::to_wstring(days / kDaysInYear) + (days / kDaysInYear == 1 ? L" anno" : L" anni");
    }
    if (days >= kDaysInMonth) {
        return std::to_wstring(days / kDaysInMonth) + (days / kDaysInMonth == 1 ? L" mese" : L" mesi");
    }
    return std::to_wstring(days) + (days == 1 ? L" giorno" : L" giorni");
}

std::wstring SexText(unsigned sex) {
    return sex == KX_SEX_MALE ? L"Uomo" : sex == KX_SEX_FEMALE ? L"Donna" : L"Sesso non indicato";
}

std::wstring DateText(const KxDateTime& time) {
    constexpr int kLastInvalidYear = 1800;
    if (time.year <= kLastInvalidYear) {
        return L"data non indicata";
    }
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%02u/%02u/%04d %02u:%02u", unsigned{time.day},
                  unsigned{time.month}, int{time.year}, unsigned{time.hour}, unsigned{time.minute});
    return text;
}

std::wstring WithUnit(unsigned value, const wchar_t* unit) {
    return value == 0 ? kMissing : std::to_wstring(value) + unit;
}

std::wstring HeartRateText(unsigned rrMs) {
    constexpr unsigned kMsInMinute = 60000;
    return rrMs == 0 ? kMissing : WithUnit((kMsInMinute + rrMs / 2) / rrMs, L" bpm");
}

}  // namespace

const wchar_t* ReportStateText(unsigned state) {
    switch (state) {
        case KX_REPORT_ORIGINAL:
            return L"Report: originale";
        case KX_REPORT_OVERREAD:
            return L"Report: modificato (non confermato)";
        case KX_REPORT_CONFIRMED:
            return L"Report: confermato";
        default:
            return L"Report: rivisto all'esterno";
    }
}

bool PatientTexts::operator==(const PatientTexts& other) const {
    return name == other.name && details == other.details &&
           std::equal(measurements.begin(), measurements.end(), other.measurements.begin(),
                      [](const Measurement& a, const Measurement& b) { return a.value == b.value; });
}

PatientTexts DescribePatient(const KxTestRecord& test, const KxMeasurementSet* set) {
    PatientTexts texts;
    texts.name = NameText(test);
    const std::wstring id = FieldText(test.patientId);
    // Recordings for research carry no name: the id then stands for it.
    if (texts.name.empty()) {
        texts.name = id.empty() ? L"Paziente senza nome" : id;
    } else if (!id.empty()) {
        texts.details = L"ID " + id + L"  ·  ";
    }
    texts.details += SexText(test.sex);
    if (test.ageDays != 0) {
        texts.details += L"  ·  " + AgeText(test.ageDays);
    }
    texts.details += L"  ·  " + DateText(test.acquisitionTime);

    static constexpr const wchar_t* kLabels[PatientTexts::kMeasurements] = {
        L"FC", L"P", L"PR", L"QRS", L"QT / QTc", L"Asse QRS", L"Asse P / T"};
    for (std::size_t i = 0; i < texts.measurements.size(); ++i) {
        texts.measurements[i] = {kLabels[i], kMissing};
    }
    if (set == nullptr || set->measured == 0) {
        return texts;
    }
    const bool hasP = set->pDuration != 0;
    auto& cells = texts.measurements;
    cells[0].value = HeartRateText(set->rrInterval);
    cells[1].value = WithUnit(set->pDuration, L" ms");
    cells[2].value = WithUnit(set->prInterval, L" ms");
    cells[3].value = WithUnit(set->qrsDuration, L" ms");
    if (set->qtInterval != 0) {
        cells[4].value = std::to_wstring(set->qtInterval) + L" / " + WithUnit(set->qtc, L" ms");
    }
    cells[5].value = std::to_wstring(set->qrsAxis) + L"°";
    cells[6].value =
        (hasP ? std::to_wstring(set->pAxis) + L"°" : kMissing) + L" / " + std::to_wstring(set->tAxis) + L"°";
    return texts;
}

PatientStrip::PatientStrip(HWND parent, const UiMetrics& metrics) : metrics_(metrics) {
    Create({L"KxPatientStrip", nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, parent, 0, 0,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_PATIENT_STRIP))});
}

void PatientStrip::Show(PatientTexts texts) {
    if (texts == texts_) {
        return;
    }
    texts_ = std::move(texts);
    // For screen readers, which see no painting.
    std::wstring all = texts_.name + L"; " + texts_.details;
    for (const auto& measurement : texts_.measurements) {
        all += std::wstring(L"; ") + measurement.label + L" " + measurement.value;
    }
    SetWindowTextW(Window(), all.c_str());
    InvalidateRect(Window(), nullptr, FALSE);
}

int PatientStrip::Height() const {
    return metrics_.LineHeight(metrics_.Heading()) + metrics_.LineHeight(metrics_.Message()) +
           metrics_.Scale(24);
}

int PatientStrip::CellWidth(std::size_t cell) const {
    RECT area;
    GetClientRect(Window(), &area);
    const int narrow = area.right < metrics_.Scale(kNarrow) ? 1 : 0;
    return metrics_.Scale(cell == 4 || cell == 6 ? kWideCellWidths[narrow] : kCellWidths[narrow]);
}

int PatientStrip::WidthOfMeasurements() const {
    int width = 0;
    for (std::size_t i = 0; i < PatientTexts::kMeasurements; ++i) {
        width += CellWidth(i);
    }
    return width;
}

void PatientStrip::DrawMeasurements(HDC dc, const RECT& area) const {
    const int labelHeight = metrics_.LineHeight(metrics_.Message());
    const int top = static_cast<int>(area.top + area.bottom) / 2 - labelHeight - metrics_.Scale(1);
    RECT cell{area.right - WidthOfMeasurements(), top, 0, top + labelHeight};
    for (std::size_t i = 0; i < texts_.measurements.size(); ++i) {
        cell.right = cell.left + CellWidth(i);
        RECT label = cell;
        label.left += metrics_.Scale(8);
        RECT rule{cell.left, cell.top, cell.left + 1, cell.bottom + labelHeight + metrics_.Scale(4)};
        FillRect(dc, &rule, GetSysColorBrush(COLOR_3DLIGHT));
        RECT value = label;
        OffsetRect(&value, 0, labelHeight + metrics_.Scale(3));
        const UINT format = DT_SINGLELINE | DT_NOPREFIX | DT_LEFT | DT_NOCLIP;
        {
            const Selection font(dc, metrics_.Message());
            SetTextColor(dc, LabelColour());
            DrawTextW(dc, texts_.measurements[i].label, -1, &label, format);
        }
        const Selection font(dc, metrics_.Strong());
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        DrawTextW(dc, texts_.measurements[i].value.c_str(), -1, &value, format);
        cell.left = cell.right;
    }
}

void PatientStrip::Draw(HDC dc, const RECT& area) const {
    FillRect(dc, &area, GetSysColorBrush(COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    RECT accent = area;
    accent.right = accent.left + metrics_.Scale(kAccentWidth);
    SetDCBrushColor(dc, kAccent);
    FillRect(dc, &accent, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    if (texts_.name.empty()) {
        return;  // no record yet
    }
    DrawMeasurements(dc, area);

    const int nameHeight = metrics_.LineHeight(metrics_.Heading());
    const int detailHeight = metrics_.LineHeight(metrics_.Message());
    RECT line = area;
    line.left += metrics_.Scale(kAccentWidth + kMargin);
    line.right -= WidthOfMeasurements() + metrics_.Scale(kMargin);
    line.top += (area.bottom - area.top - nameHeight - detailHeight - metrics_.Scale(3)) / 2;
    const UINT format = DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    {
        const Selection font(dc, metrics_.Heading());
        DrawTextW(dc, texts_.name.c_str(), -1, &line, format);
    }
    const Selection font(dc, metrics_.Message());
    line.top += nameHeight + metrics_.Scale(3);
    DrawTextW(dc, texts_.details.c_str(), -1, &line, format);
}

void PatientStrip::OnPaint() {
    const PaintScope paint(Window());
    RECT area;
    GetClientRect(Window(), &area);
    // Drawn aside and copied, so that a new value does not flicker.
    const UniqueMemoryDc memory(CreateCompatibleDC(paint.Dc()));
    const UniqueBitmap bitmap(CreateCompatibleBitmap(paint.Dc(), area.right, area.bottom));
    const Selection selection(memory.get(), bitmap.get());
    Draw(memory.get(), area);
    BitBlt(paint.Dc(), 0, 0, area.right, area.bottom, memory.get(), 0, 0, SRCCOPY);
}

LRESULT PatientStrip::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            InvalidateRect(Window(), nullptr, FALSE);
            return 0;
        default:
            return HostWindow::OnMessage(message, wParam, lParam);
    }
}

}  // namespace kxhost
