// Drives a modal dialog of this process with the messages that keyboard and mouse send.
#pragma once

#include <windows.h>

#include <functional>
#include <string_view>

namespace kx::test {

// Calls `open`, which shows a modal dialog and returns when that has ended, and from the dialog's own message
// loop `script` once with its window. A dialog that the script leaves open is ended with -2. False: no dialog
// came up.
bool DriveModal(const std::function<void()>& open, const std::function<void(HWND)>& script);

// Dispatches what is in the queue as the modal loop would.
void PumpDialog(HWND dialog);
// The same until `done` or for at most so long; returns done().
bool PumpDialogUntil(HWND dialog, const std::function<bool()>& done, DWORD milliseconds = 5000);

// A key pressed and released where the focus is.
void PressKey(HWND dialog, UINT virtualKey);
// Characters (Windows-1252) where the focus is; each is dispatched before the next.
void TypeText(HWND dialog, std::string_view text);
// The left button on a point of a window's client area; without one, on its middle.
void ClickAt(HWND dialog, HWND window, POINT at);
void ClickOn(HWND dialog, HWND window);
void DoubleClickAt(HWND dialog, HWND window, POINT at);

}  // namespace kx::test
