#include "dialogs/dialog_library.h"

#include <utility>

#include "lib/windows/common_controls.h"
#include "lib/windows/dialog.h"
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

void DialogLibrary::KeepWithoutWindow(std::unique_ptr<Pane> pane) {
    withoutWindow_.push_back(std::move(pane));
}

DialogLibrary::~DialogLibrary() {
    // A host that stops the library may unload it next, and then its panes have no code to end with.
    Dialog::EndAll(*this);
    // The module may be unloaded next.
    StopSmoothDrawing();
}

}  // namespace kx
