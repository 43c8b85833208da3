// genmorph: the general morphology dialog.
#pragma once

#include "dialogs/morphology/morph_dialog.h"

namespace kx {

// Reviews the five fiducial points that hold for all leads, whatever lead is shown, and the intervals between
// them.
class GeneralMorphDialog final : public MorphDialog {
  public:
    GeneralMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                       SystemServices* services);
    const char* ReportName() const noexcept override { return "GeneralMorphDialog"; }
};

}  // namespace kx
