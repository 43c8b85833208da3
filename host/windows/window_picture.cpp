#include "host/windows/window_picture.h"

namespace kxhost {
namespace {

constexpr DWORD kQuietMs = 60;
constexpr DWORD kLongestWaitMs = 5000;

void DispatchWaiting() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Timers do not count: a blinking caret, or a button under the pointer, never lets a window be without them.
void DispatchUntilQuiet() {
    const DWORD start = GetTickCount();
    DispatchWaiting();
    while (GetTickCount() - start < kLongestWaitMs &&
           MsgWaitForMultipleObjects(0, nullptr, FALSE, kQuietMs, QS_ALLINPUT & ~QS_TIMER) != WAIT_TIMEOUT) {
        DispatchWaiting();
    }
}

}  // namespace

void WaitUntilPainted(HWND window) {
    DispatchUntilQuiet();
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    DispatchUntilQuiet();
    GdiFlush();
}

UniqueBitmap TakePicture(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = area.right - area.left;
    info.bmiHeader.biHeight = area.bottom - area.top;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const WindowDc source(window, true);
    void* pixels = nullptr;
    UniqueBitmap picture(CreateDIBSection(source.Get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    const UniqueMemoryDc memory(CreateCompatibleDC(source.Get()));
    if (!picture || !memory) {
        return nullptr;
    }
    const Selection selection(memory.get(), picture.get());
    if (!BitBlt(memory.get(), 0, 0, info.bmiHeader.biWidth, info.bmiHeader.biHeight, source.Get(), 0, 0,
                SRCCOPY)) {
        return nullptr;
    }
    return picture;
}

}  // namespace kxhost
