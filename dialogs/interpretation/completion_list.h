// The list of a completion popup: a row for each entry that can complete what is being typed.
#pragma once

#include <windows.h>

#include <string_view>

#include "dialogs/statements/statement_matcher.h"
#include "lib/windows/list_view.h"

namespace kx {

// Its rows carry the addresses of their entries (CompletionEntry), which outlive them.
class CompletionList final : public ListView {
  public:
    // Fills no more of popup than a ListForm::kOwnerDrawn list does at first.
    CompletionList(const LibraryModule& library, Window* popup);

    // What has been typed, which the rows set off from what is still to come.
    void SetHighlight(std::string_view text);
    // Rows that stand there take another entry and the rest goes: making rows anew moves the list's parts for
    // each of them, at every letter typed.
    void KeepRows(int count);
    // Row i of the entries, appended when there is none yet.
    void ShowEntry(int row, const CompletionEntry& entry);
    // Selects a row and draws the list anew: rows reach farther than the columns, which is what the control
    // takes for their end.
    void ShowSelected(int row);
    // The row at a height of the list's client area; -1: none.
    int RowAt(int y) const;
    // Null: there is no such row.
    const CompletionEntry* Entry(int row) const;

    void DrawRow(DeviceContext& surface, const RECT& area, LPARAM rowData, bool selected) override;

  private:
    char highlight_[256] = {};
};

}  // namespace kx
