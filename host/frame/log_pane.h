// The list at the bottom: what the library and its sibling modules report.
#pragma once

#include <windows.h>

#include <string>

#include "host/windows/ui_metrics.h"

namespace kxhost {

// A report list of time, kind and text; the newest line is kept in view, the oldest go when there are too
// many.
class LogPane {
  public:
    // The list becomes a child of the parent, which destroys it.
    LogPane(HWND parent, const UiMetrics& metrics);

    HWND Window() const { return list_; }
    void Append(const std::wstring& kind, const std::wstring& text);
    int PreferredHeight() const;
    // Gives the text column what the others leave of the list's width.
    void FitColumns() const;

  private:
    HWND list_;
    const UiMetrics& metrics_;
};

}  // namespace kxhost
