// pmorph: the P-wave morphology dialog.
#pragma once

#include "dialogs/morphology/morph_dialog.h"

namespace kx {

// Reviews the onset of one lead's P wave, the onset of its second component and its offset.
class PMorphDialog final : public MorphDialog {
  public:
    PMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test, SystemServices* services);
    const char* ReportName() const noexcept override { return "PMorphDialog"; }
};

}  // namespace kx
