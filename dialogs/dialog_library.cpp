#include "dialogs/dialog_library.h"

namespace kx {

DialogLibrary::DialogLibrary(HMODULE module) : LibraryModule(module), session_(*this), controls_(module) {}

}  // namespace kx
