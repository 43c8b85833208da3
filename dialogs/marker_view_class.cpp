#include "dialogs/marker_view_class.h"

namespace kx {

LRESULT MarkerViewClass::CreateWindowObject(std::uint32_t controlId, HWND window) {
    return WindowClass::CreateWindowObject(controlId, window);
}

}  // namespace kx
