// What a window shows, as a bitmap.
#pragma once

#include "host/windows/win32_handles.h"

namespace kxhost {

// Lets the window and its children paint until they have been quiet for a moment (at most a few seconds).
// Messages are dispatched meanwhile.
void WaitUntilPainted(HWND window);

// A 32-bit picture of the window with its frame, or null when there is no memory. The window must be visible.
UniqueBitmap TakePicture(HWND window);

}  // namespace kxhost
