// What the shared layer knows of the library that it is part of.
#pragma once

#include "lib/modules/module_instance.h"

namespace kx {

// The module whose resources (templates, strings, bitmaps, icons) are used and which registers the window
// classes. The library's own object derives from it.
struct LibraryModule {
    explicit LibraryModule(HMODULE handle) noexcept : instance(handle) {}

    ModuleInstance instance;  // the library's own handle: never freed
};

}  // namespace kx
