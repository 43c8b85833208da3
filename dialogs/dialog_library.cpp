#include "dialogs/dialog_library.h"

#include "lib/windows/common_controls.h"
#include "lib/windows/smooth_polyline.h"

namespace kx {

DialogLibrary::DialogLibrary(HMODULE module)
    : LibraryModule(module),
      session_(*this),
      markerViewClass_(*this, session_.Services()),
      completionPopupClass_(this, kCompletionPopupClass, 0, 0, session_.Services()),
      controls_(module) {
    // The templates name date and time pickers, and the panes make list and tree views.
    UseCommonControls();
}

DialogLibrary::~DialogLibrary() {
    // The module may be unloaded next.
    StopSmoothDrawing();
}

}  // namespace kx
