// qrsmrph: the QRS morphology dialog.
#pragma once

#include "dialogs/morphology/morph_dialog.h"

namespace kx {

// Reviews the onsets of the components Q, R, S, R' and S' of one lead and its QRS offset.
class QrsMorphDialog final : public MorphDialog {
  public:
    QrsMorphDialog(const DialogLibrary& library, Window* parent, TestRecord* test, SystemServices* services);
    const char* ReportName() const noexcept override { return "QrsMorphDialog"; }
};

}  // namespace kx
