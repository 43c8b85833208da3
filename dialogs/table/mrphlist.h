// The pane that lists the wave amplitudes of the twelve standard leads (TABLEDIALOG).
#pragma once

#include <windows.h>

#include <memory>

#include "dialogs/dialog_library.h"
#include "dialogs/table/measurement_list.h"
#include "lib/dbclient/test_record.h"
#include "lib/windows/dialog.h"

namespace kx {

// Shows the measurements of the record's first median beat as they are whenever it is drawn, and changes
// nothing.
class TableDialog final : public Pane {
  public:
    // Record and parent outlive the pane; neither is owned.
    TableDialog(const DialogLibrary& library, Window* parent, TestRecord* test, SystemServices* services);

    // A record without a median beat gets no window.
    void Open() override;
    bool OnEraseBackground(DeviceContext& context) override;
    void OnSize(UINT sizeType, int width, int height) override;
    // False, reported, when the list could not be made.
    bool OnInitDialog() override;
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override;
    const char* ReportName() const noexcept override { return "TableDialog"; }

  private:
    bool FillList();

    TestRecord* test_;
    EpisodeRecord* episode_;
    std::unique_ptr<MeasurementList> list_;
};

}  // namespace kx
