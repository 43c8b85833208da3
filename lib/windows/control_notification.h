// What a WM_COMMAND says about a control.
#pragma once

#include <windows.h>

#include <cstdint>

namespace kx {

// Whether the wParam of a WM_COMMAND is notification `code` of control `id`. Only 16 bits of an id travel.
constexpr bool IsNotification(WPARAM wParam, std::uint32_t id, WORD code) {
    return LOWORD(wParam) == static_cast<WORD>(id) && HIWORD(wParam) == code;
}

}  // namespace kx
