// The window that says in the user's language what the command line takes.
#pragma once

#include <windows.h>

namespace kxhost {

// Modal. It fits the smallest screen, and its text is scrolled.
void ShowCommandLineHelp(HWND owner);

}  // namespace kxhost
