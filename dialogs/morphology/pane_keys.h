// pane_keys: Ctrl+Z and Ctrl+Y anywhere in a pane.
#pragma once

#include <windows.h>

namespace kx {

// Watches the controls of a pane other than its marker view, which has these keys itself: they post MVN_UNDO
// and MVN_REDO to the pane, whichever control has the focus. To be called before the controls get wrappers,
// which restore at the end the procedure that they found; the watching ends with the controls.
void WatchPane(HWND pane, HWND view);

}  // namespace kx
