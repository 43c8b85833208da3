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
// nothing. The object belongs to its window and is deleted in its WM_DESTROY.
class TableDialog final : public Dialog {
  public:
    // Creates the pane in the parent's window; a record without a median beat gets none. Record and parent
    // outlive the pane; neither is owned.
    TableDialog(const DialogLibrary& library, Window* parent, TestRecord* test, SystemServices* services);

    bool OnEraseBackground(DeviceContext& context) override;
    void OnSize(UINT sizeType, int width, int height) override;
    // False, reported, when the list could not be made.
    bool OnInitDialog() override;
    bool OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) override;
    // Deletes the list and this object.
    void OnDestroy() override;

  private:
    ~TableDialog() = default;

    bool FillList();

    TestRecord* test_;
    EpisodeRecord* episode_;
    std::unique_ptr<MeasurementList> list_;
};

}  // namespace kx
