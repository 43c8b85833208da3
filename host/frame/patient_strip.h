// The strip above the panes: whose tracing this is and its global measurements.
#pragma once

#include <array>
#include <string>

#include "host/frame/host_window.h"
#include "host/windows/ui_metrics.h"
#include "include/kxdialogs.h"

namespace kxhost {

// The texts of the strip, made when the record changes and not when it is painted.
struct PatientTexts {
    static constexpr std::size_t kMeasurements = 7;
    struct Measurement {
        const wchar_t* label = L"";
        std::wstring value;
    };

    std::wstring name;
    std::wstring details;  // id, sex, age, date of the recording
    std::array<Measurement, kMeasurements> measurements;

    bool operator==(const PatientTexts&) const;
};

// set null: no measurements are shown ("..." in their places).
PatientTexts DescribePatient(const KxTestRecord& test, const KxMeasurementSet* set);

// The state of a report (KX_REPORT_...) in words.
const wchar_t* ReportStateText(unsigned state);

class PatientStrip final : public HostWindow {
  public:
    PatientStrip(HWND parent, const UiMetrics& metrics);

    // Repaints only when a text is another.
    void Show(PatientTexts texts);
    int Height() const;
    int WidthOfMeasurements() const;

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint();
    void Draw(HDC dc, const RECT& area) const;
    int CellWidth(std::size_t cell) const;
    void DrawMeasurements(HDC dc, const RECT& area) const;

    const UiMetrics& metrics_;
    PatientTexts texts_;
};

}  // namespace kxhost
