#include "tests/soak/random_messages.h"

#include <commctrl.h>

#include <cstring>

#include "tests/rig/input.h"

namespace kx::test {
namespace {

BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

bool IsClass(HWND window, const char* name) {
    char own[32] = {};
    GetClassNameA(window, own, sizeof own);
    return lstrcmpiA(own, name) == 0;
}

LPARAM PointIn(Random& random, HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return MAKELPARAM(random.Below(static_cast<unsigned>(area.right) + 4), random.Below(static_cast<unsigned>(area.bottom) + 4));
}

constexpr UINT kMessages[] = {
    WM_SIZE,
    WM_MOVE,
    WM_SHOWWINDOW,
    WM_ACTIVATE,
    WM_SETFOCUS,
    WM_KILLFOCUS,
    WM_TIMER,
    WM_PAINT,
    WM_CANCELMODE,
    WM_CAPTURECHANGED,
    WM_HSCROLL,
    WM_VSCROLL,
    WM_MOUSEWHEEL,
    WM_MOUSEMOVE,
    WM_LBUTTONUP,
    WM_KEYDOWN,
    WM_KEYUP,
    WM_CHAR,
    WM_SYSCOLORCHANGE,
    WM_FONTCHANGE,
    WM_DISPLAYCHANGE,
    WM_QUERYENDSESSION,
    WM_GETFONT,
    WM_COMMAND,
    WM_CUT,
    WM_COPY,
    WM_PASTE,
    WM_CLEAR,
    WM_UNDO,
    EM_SETSEL,
    BM_CLICK,
    CB_SETCURSEL,
    CB_SHOWDROPDOWN,
    WM_USER,
    WM_APP,
};
constexpr UINT kKeys[] = {VK_LEFT,   VK_RIGHT,  VK_UP,   VK_DOWN,   VK_HOME,  VK_END, VK_PRIOR, VK_NEXT,  VK_TAB,
                          VK_RETURN, VK_ESCAPE, VK_BACK, VK_DELETE, VK_SPACE, VK_F4,  VK_F1,    VK_INSERT};
constexpr const char* kWords[] = {"ri", "rs ", "Ritmo ", "^", "ra\t", "sr on ", "<P>", "\x80\xFF", ".", "rg", "\xE8 ", "1", "\r"};

}  // namespace

std::uint32_t Random::Number() {
    constexpr std::uint32_t kEdges[] = {0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFF0000, 0x7FFF7FFF,
                                        0x80008000, 0x00280028, 65535,      32768,      1000};
    switch (Below(4)) {
        case 0: return Of(kEdges);
        case 1: return static_cast<std::uint32_t>(engine_());
        default: return Below(1200);
    }
}

std::vector<HWND> WindowsFrom(HWND window) {
    std::vector<HWND> windows;
    if (IsWindow(window) != FALSE) {
        windows.push_back(window);
        EnumChildWindows(window, AddWindow, reinterpret_cast<LPARAM>(&windows));
    }
    return windows;
}

void SendAnything(Random& random, HWND window) {
    // A fifth are the marker view's to its dialog.
    const UINT ofTheView = random.OneIn(3) ? 1451 + random.Below(3) : 1345 + random.Below(6);
    const UINT message = random.OneIn(5) ? ofTheView : random.Of(kMessages);
    // A control of the system's draws on whatever it is given for a device context.
    const WPARAM wParam = message == WM_KEYDOWN ? random.Of(kKeys) : message == WM_PAINT ? 0 : random.Number();
    const LPARAM lParam =
        message == WM_MOUSEMOVE || message == WM_LBUTTONUP ? PointIn(random, window) : static_cast<LPARAM>(random.Number());
    // A control's own address would be taken for one.
    SendMessageA(window, message, wParam, message == WM_COMMAND ? 0 : lParam);
}

void SendNotification(Random& random, HWND dialog) {
    const std::vector<HWND> windows = WindowsFrom(dialog);
    const HWND control = windows.empty() ? nullptr : windows[random.Below(static_cast<unsigned>(windows.size()))];
    const auto id = static_cast<UINT>(random.OneIn(8) ? random.Number() : static_cast<std::uint32_t>(GetDlgCtrlID(control)));
    if (random.OneIn(4)) {
        constexpr UINT kCodes[] = {NM_CLICK, NM_DBLCLK, NM_RETURN, NM_SETFOCUS, NM_KILLFOCUS, static_cast<UINT>(TTN_NEEDTEXTA)};
        union {
            NMHDR header;
            NMTTDISPINFOA tip;
            char room[256];
        } notice;
        std::memset(&notice, 0, sizeof notice);
        notice.header = {control, id, random.Of(kCodes)};
        SendMessageA(dialog, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&notice));
    } else {
        constexpr UINT kCodes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0x100, 0x200, 0x300, 0x400};
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, random.Of(kCodes)), reinterpret_cast<LPARAM>(control));
    }
}

void UseKeyboard(Random& random, HWND window) {
    SetFocus(window);
    for (unsigned left = 1 + random.Below(6); left > 0; --left) {
        if (random.OneIn(3)) {
            const UINT key = random.Of(kKeys);
            PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
            PostMessageA(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
        } else {
            for (const char* at = random.Of(kWords); *at != '\0'; ++at) {
                PostMessageA(GetFocus(), WM_CHAR, static_cast<unsigned char>(*at), 1);
            }
        }
    }
}

void UseMouse(Random& random, HWND window) {
    // A header or a tree that is held waits for the button itself, so the button comes up before anything is dispatched.
    const bool isView = IsClass(window, "MarkerView");
    PostMessageA(window, WM_MOUSEMOVE, 0, PointIn(random, window));
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, PointIn(random, window));
    for (unsigned left = random.Below(isView ? 6 : 1); left > 0; --left) {
        PostMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, PointIn(random, window));
    }
    if (!isView || !random.OneIn(8)) {
        PostMessageA(window, WM_LBUTTONUP, 0, PointIn(random, window));
    }
}

}  // namespace kx::test
