// Debug aids of the window framework: how many windows are open, and which messages they get. Nothing in the
// library calls them; they are called by hand while a fault is looked for.
#pragma once

#include <windows.h>

#include <cstddef>

namespace kx {

class Window;

// Under "Software\VDS DEBUG" of the current user: the value "Window Count" is increased, and the subkey named
// by the object's address holds the new count ("New") and the window's handle ("hwnd").
void CountWindow(const Window& window);
// The counterpart: decreases the count (not below 0) and deletes the subkey.
void UncountWindow(const Window& window);

// One line for a message: tag, window handle, the message's name (its number for one without a name) and
// parameters. Cut at size - 1 characters, always terminated.
void FormatMessageTrace(char* buffer, std::size_t size, const char* tag, HWND window, UINT message,
                        WPARAM wParam, LPARAM lParam);
// The line on the debugger's output.
void TraceMessage(const char* tag, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace kx
