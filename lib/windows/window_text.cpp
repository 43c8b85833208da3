// A window's text, as text and as a number, and its font.
#include "lib/number_text.h"
#include "lib/timestmp.h"
#include "lib/windows/window.h"

namespace kx {
namespace {

// A number has far fewer; a fixed one may have 309 digits before its point.
constexpr std::size_t kNumberTextSize = 352;
// What is read as a number: at most 64 characters.
constexpr int kReadSize = 64 + 1;

template <class... Arguments>
bool SetFormatted(Window& window, void (*format)(char*, std::size_t, Arguments...), Arguments... arguments) {
    char text[kNumberTextSize];
    format(text, sizeof text, arguments...);
    return window.SetText(text);
}

}  // namespace

int Window::GetText(char* buffer, int size) const {
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    buffer[0] = '\0';
    return handle_ == nullptr ? 0 : GetWindowTextA(handle_, buffer, size);
}

int Window::GetTextLength() const {
    return GetWindowTextLengthA(handle_);
}

bool Window::SetText(const char* text) {
    return SetWindowTextA(handle_, text) != FALSE;
}

bool Window::SetNumber(std::int32_t value) {
    return SetFormatted(*this, FormatNumber, value);
}

bool Window::SetUnsigned(std::uint32_t value) {
    return SetFormatted(*this, FormatUnsigned, value);
}

bool Window::SetHex(std::uint32_t value) {
    return SetFormatted(*this, FormatHex, value);
}

bool Window::SetFixed(double value, int decimals) {
    return SetFormatted(*this, FormatFixed, value, decimals);
}

bool Window::SetTenths(std::uint32_t value) {
    return SetFormatted(*this, FormatTenths, value);
}

bool Window::SetScaled(std::int32_t multiplier, std::int32_t divisor, int decimals, std::int32_t value) {
    return SetFormatted(*this, FormatScaled, multiplier, divisor, decimals, value);
}

bool Window::SetDuration(std::uint32_t milliseconds) {
    char text[kNumberTextSize];
    DurationMinSec(milliseconds, text, sizeof text);
    return SetText(text);
}

std::uint32_t Window::GetHexText() const {
    char text[kReadSize];
    GetText(text, kReadSize);
    return ParseHex(text);
}

std::int32_t Window::GetNumberText() const {
    char text[kReadSize];
    GetText(text, kReadSize);
    return ParseNumber(text);
}

void Window::SetFont(HFONT font, bool redraw) {
    SendMsg(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw ? TRUE : FALSE);
}

HFONT Window::GetFont() const {
    return reinterpret_cast<HFONT>(SendMsg(WM_GETFONT));
}

}  // namespace kx
