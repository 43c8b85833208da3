// One of the workstation's own panes: every report field of the test, to look through, to search and to copy.
#pragma once

#include <string>
#include <vector>

#include "host/frame/host_window.h"
#include "host/report/report_listing.h"
#include "host/windows/ui_metrics.h"

namespace kxhost {

// A search edit above a list of code, name and text. Ctrl+C in the list copies the chosen rows, cells
// separated by tabs; Ctrl+A chooses all that are shown. The rows are those it was made with: like a pane of
// the library it shows the record as it was when it was opened.
class ReportPane final : public HostWindow {
  public:
    ReportPane(HWND parent, const UiMetrics& metrics, const std::vector<ReportRow>& rows);

    // What it is made at, before it is given the room there is.
    static SIZE NaturalSize(const UiMetrics& metrics);

  private:
    // As shown, which is as copied.
    struct Line {
        std::wstring code;
        std::wstring name;
        std::wstring text;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnNotify(const NMHDR& header);
    void CreateChildren();
    void Layout() const;
    void Filter();
    void OnListKey(WORD key) const;
    void CopyChosen() const;
    const std::wstring& Cell(std::size_t row, int column) const;

    const UiMetrics& metrics_;
    std::vector<Line> lines_;
    std::vector<std::size_t> shown_;  // which of them the filter lets through
    HWND label_ = nullptr;
    HWND search_ = nullptr;
    HWND count_ = nullptr;
    HWND list_ = nullptr;
};

}  // namespace kxhost
