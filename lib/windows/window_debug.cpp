#include "lib/windows/window_debug.h"

#include <cstdint>
#include <cstdio>

#include "lib/windows/registry_key.h"
#include "lib/windows/window.h"

namespace kx {
namespace {

constexpr const char* kDebugKey = "Software\\VDS DEBUG";
constexpr const char* kWindowCount = "Window Count";

struct TracedMessage {
    UINT message;
    const char* name;
};

#define KX_TRACED(name) \
    { name, #name }
constexpr TracedMessage kTraced[] = {
    KX_TRACED(WM_MOVE),
    KX_TRACED(WM_ACTIVATE),
    KX_TRACED(WM_PAINT),
    KX_TRACED(WM_GETTEXT),
    KX_TRACED(WM_SETCURSOR),
    KX_TRACED(WM_DRAWITEM),
    KX_TRACED(WM_ACTIVATEAPP),
    KX_TRACED(WM_NCPAINT),
    KX_TRACED(WM_CHILDACTIVATE),
    KX_TRACED(WM_WINDOWPOSCHANGING),
    KX_TRACED(WM_WINDOWPOSCHANGED),
    KX_TRACED(WM_CTLCOLORDLG),
    KX_TRACED(WM_NCHITTEST),
    KX_TRACED(WM_NCMOUSEMOVE),
    KX_TRACED(WM_NCACTIVATE),
    KX_TRACED(WM_ENTERIDLE),
    KX_TRACED(WM_NOTIFY),
    KX_TRACED(WM_ERASEBKGND),
    KX_TRACED(WM_CTLCOLORSTATIC),
};
#undef KX_TRACED

unsigned Word(std::uintptr_t value) {
    return static_cast<unsigned>(value);
}

unsigned HandleWord(const void* handle) {
    return Word(reinterpret_cast<std::uintptr_t>(handle));
}

// The name of an object's subkey.
struct ObjectName {
    explicit ObjectName(const Window& window) { std::snprintf(text, sizeof text, "%X", HandleWord(&window)); }
    char text[2 * sizeof(void*) + 1];
};

}  // namespace

void CountWindow(const Window& window) {
    RegistryKey key(kDebugKey);
    std::uint32_t count = 0;
    key.GetDword(kWindowCount, &count);  // 0 when it is missing
    ++count;
    key.SetDword(kWindowCount, count);
    RegistryKey object(kDebugKey, ObjectName(window).text);
    object.SetDword("New", count);
    object.SetDword("hwnd", HandleWord(window.Handle()));
}

void UncountWindow(const Window& window) {
    RegistryKey key(kDebugKey);
    std::uint32_t count = 0;
    key.GetDword(kWindowCount, &count);
    if (count > 0) {
        key.SetDword(kWindowCount, count - 1);
    }
    key.DeleteSubkey(ObjectName(window).text);
}

void FormatMessageTrace(char* buffer, std::size_t size, const char* tag, HWND window, UINT message,
                        WPARAM wParam, LPARAM lParam) {
    const unsigned handle = HandleWord(window);
    const auto first = static_cast<unsigned>(wParam);
    const auto second = static_cast<unsigned>(lParam);
    if (message == WM_COMMAND) {
        // A control's handle in two decimals.
        const auto control = static_cast<int>(lParam);
        std::snprintf(buffer, size, "%s: %04X WM_COMMAND %08X %d %d\r\n", tag, handle, first, control / 4096,
                      control % 4096);
        return;
    }
    for (const TracedMessage& traced : kTraced) {
        if (traced.message == message) {
            std::snprintf(buffer, size, "%s: %04X %s %08X %08X\r\n", tag, handle, traced.name, first, second);
            return;
        }
    }
    std::snprintf(buffer, size, "%s: %04X %04X %08X %08X\r\n", tag, handle, message, first, second);
}

void TraceMessage(const char* tag, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    char line[256];
    FormatMessageTrace(line, sizeof line, tag, window, message, wParam, lParam);
    OutputDebugStringA(line);
}

}  // namespace kx
