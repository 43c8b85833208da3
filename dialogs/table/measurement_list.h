// The list view of the wave amplitudes of the twelve standard leads.
#pragma once

#include <windows.h>

#include "include/kxdialogs.h"
#include "lib/windows/list_view.h"

namespace kx {

// The data of a row is the address of its lead's block of measurements, which is read anew whenever a cell is
// drawn. The lead itself is shown by its icon.
class MeasurementList final : public ListView {
  public:
    // As a child of the pane, without rows. Icons that cannot be loaded leave the rows without images.
    MeasurementList(const LibraryModule& library, Window* pane);

    // Adds the twelve rows and selects the first. The set outlives the list.
    void Fill(KxMeasurementSet& set);
    // Puts the whole table, with titles and lead names, into the clipboard as tab-separated text. False: the
    // clipboard is another program's at the moment, or there is no memory; it keeps what it had.
    bool CopyToClipboard() const;

    const char* CellText(LPARAM rowData, int column) override;

  protected:
    // Ctrl+C copies.
    void OnListKey(UINT virtualKey) override;

  private:
    const KxMeasurementSet* set_ = nullptr;
};

}  // namespace kx
