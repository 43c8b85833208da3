// The tabs of the workstation: the panes of the library and its own, one row a tab.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace kxhost {

enum class PaneKind {
    Worklist,
    Tracing,
    General,
    Qrs,
    PWave,
    TWave,
    Hypertrophy,
    Interpretation,
    Table,
    Report
};

struct PaneRow {
    PaneKind kind;
    std::string_view name;    // on the command line
    const wchar_t* title;     // on the tab
    const char* exportName;   // null: a pane of the workstation itself
    const wchar_t* helpPage;  // of docs/help
};

// In tab order. The export of Interpretation takes a third argument (see include/kxdialogs.h).
inline constexpr std::array<PaneRow, 10> kPanes{{
    {PaneKind::Worklist, "worklist", L"Elenco", nullptr, L"postazione"},
    {PaneKind::Tracing, "tracing", L"Tracciato", nullptr, L"tracciato"},
    {PaneKind::General, "general", L"Morfologia generale", "GENERALMORPHDIALOG", L"generale"},
    {PaneKind::Qrs, "qrs", L"QRS", "QRSMORPHDIALOG", L"qrs"},
    {PaneKind::PWave, "p", L"Onda P", "PMORPHDIALOG", L"onda-p"},
    {PaneKind::TWave, "t", L"Onda T", "TMORPHDIALOG", L"onda-t"},
    {PaneKind::Hypertrophy, "hypertrophy", L"Ipertrofia", "HYPERTROPHYDIALOG", L"ipertrofia"},
    {PaneKind::Interpretation, "interpretation", L"Interpretazione", "INTERPRETATIONDIALOG",
     L"interpretazione"},
    {PaneKind::Table, "table", L"Tabella", "TABLEDIALOG", L"tabella"},
    {PaneKind::Report, "report", L"Report", nullptr, L"postazione"},
}};

inline const PaneRow& RowOf(PaneKind kind) {
    return kPanes[static_cast<std::size_t>(kind)];
}

}  // namespace kxhost
