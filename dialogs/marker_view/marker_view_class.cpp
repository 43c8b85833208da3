#include "dialogs/marker_view/marker_view_class.h"

#include "dialogs/marker_view/analysis.h"

namespace kx {

LRESULT MarkerViewClass::CreateWindowObject(std::uint32_t controlId, HWND window) {
    return MarkerViewControl::MakeFor(window, controlId, *Library(), Reports());
}

}  // namespace kx
