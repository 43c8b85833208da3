#include "dialogs/dialog_library.h"

#include "lib/windows/common_controls.h"

namespace kx {

DialogLibrary::DialogLibrary(HMODULE module)
    : LibraryModule(module),
      session_(*this),
      markerViewClass_(*this, session_.Services()),
      controls_(module) {
    // The templates name date and time pickers, and the panes make list and tree views.
    UseCommonControls();
}

}  // namespace kx
