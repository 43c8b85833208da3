// marker_view_class: the window class by which a dialog template asks for a marker view.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/windows/window_class.h"

namespace kx {

// "MarkerView": one for the library, registered as long as it lives.
class MarkerViewClass final : public WindowClass {
  public:
    MarkerViewClass(const LibraryModule& library, SystemServices* services)
        : WindowClass(&library, "MarkerView", 0, 0, services) {}

    // Makes the view of a control that a template creates; the view deletes itself with the window.
    LRESULT CreateWindowObject(std::uint32_t controlId, HWND window) override;
};

}  // namespace kx
