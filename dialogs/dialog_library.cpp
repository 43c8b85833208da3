#include "dialogs/dialog_library.h"

namespace kx {

DialogLibrary::DialogLibrary(HMODULE module)
    : LibraryModule(module),
      session_(*this),
      markerViewClass_(*this, session_.Services()),
      controls_(module) {}

}  // namespace kx
