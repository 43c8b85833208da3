#include "host/windows/clipboard.h"

#include <cstring>

namespace kxhost {
namespace {

// Movable memory with the text and its terminator; the clipboard's once it has taken it.
HGLOBAL MakeBlock(std::wstring_view text) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (block == nullptr) {
        return nullptr;
    }
    auto* place = static_cast<wchar_t*>(GlobalLock(block));
    std::memcpy(place, text.data(), text.size() * sizeof(wchar_t));
    place[text.size()] = L'\0';
    GlobalUnlock(block);
    return block;
}

}  // namespace

bool CopyToClipboard(HWND owner, std::wstring_view text) {
    const HGLOBAL block = MakeBlock(text);
    if (block == nullptr) {
        return false;
    }
    bool taken = false;
    if (OpenClipboard(owner)) {
        taken = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, block) != nullptr;
        CloseClipboard();
    }
    if (!taken) {
        GlobalFree(block);
    }
    return taken;
}

}  // namespace kxhost
