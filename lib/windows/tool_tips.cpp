#include "lib/windows/tool_tips.h"

// After <windows.h>.
#include <commctrl.h>

namespace kx {

ToolTips::ToolTips(HINSTANCE module, const Window& owner)
    : owner_(owner.Handle()),
      tips_(CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                            0, 0, 0, 0, owner_, nullptr, module, nullptr)) {}

void ToolTips::Add(const Window& control) {
    TTTOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;  // what the classic controls know too
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = owner_;
    tool.uId = reinterpret_cast<UINT_PTR>(control.Handle());
    tool.lpszText = LPSTR_TEXTCALLBACKA;
    SendMessageA(tips_.get(), TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace kx
