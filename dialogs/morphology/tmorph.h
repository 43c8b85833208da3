// tmorph: the T-wave morphology dialog.
#pragma once

#include "dialogs/morphology/morph_dialog.h"

namespace kx {

// Reviews the onset of one lead's T wave, the onset of its second component and its offset.
class TMorphDialog final : public MorphDialog {
  public:
    TMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test, SystemServices* services);
    const char* ReportName() const noexcept override { return "TMorphDialog"; }
};

}  // namespace kx
