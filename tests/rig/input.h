// A user's hands: keys, mouse and the message loop; and a modal dialog of this process driven by them.
//
// A program that contains this tells Wine once that there is no window manager, and starts anew.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>

namespace kx::test {

// On a screen without a window manager Wine waits two seconds for the end of every captioned window, unless it was told before the
// program's start that there is none. Windows reads no such key. True: it had not been told yet of this program.
bool SayThereIsNoWindowManager(const std::string& program);

// Dispatches what is in the thread's queue, as a host's loop with IsDialogMessage for `dialog` does (null:
// without). False: there was no end of messages, after 100,000 of them.
bool Pump(HWND dialog = nullptr);
// The same until `done` or for at most so long; returns done().
bool PumpUntil(HWND dialog, const std::function<bool()>& done, DWORD milliseconds = 5000);

// Calls `open`, which shows a modal dialog and returns when that has ended, and from the dialog's own message
// loop `script` once with its window. A dialog that the script leaves open is ended with -2. False: no dialog
// came up.
bool DriveModal(const std::function<void()>& open, const std::function<void(HWND)>& script);

// A key pressed and released where the focus is.
void PressKey(HWND dialog, UINT virtualKey);
// Characters (Windows-1252) where the focus is; each is dispatched before the next.
void TypeText(HWND dialog, std::string_view text);
// The left button on the middle of a window's client area.
void ClickOn(HWND dialog, HWND window);

}  // namespace kx::test
