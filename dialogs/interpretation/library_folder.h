// Files that stand beside the library.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/reporter.h"

namespace kx {

// Path of fileName, a backslash and a name, in the folder of the module. False when that has no folder or the
// path would not fit: reported as the module's path with the source "interp" and the line; path is then
// empty.
bool PathBesideLibrary(HMODULE module, const char* fileName, std::uint32_t line, Reporter& log,
                       char (&path)[MAX_PATH]);

}  // namespace kx
