// Ctrl+Z and Ctrl+Y anywhere in a pane, and where one change of a marker ends and the next begins.
#pragma once

#include <windows.h>

namespace kx {

// Sent to the pane when the user takes hold of a marker in the view, by mouse or by key: what follows is a
// change of its own.
inline constexpr UINT kMarkerGrasped = WM_APP + 1;
// Posted to the pane when the user lets go, so that it comes behind the moves.
inline constexpr UINT kMarkerReleased = WM_APP + 2;

// Watches the pane's controls: the keys post MVN_UNDO and MVN_REDO to the pane, whichever control has the
// focus. The view has these keys itself; of it only the begin and the end of a change are told. To be called
// before the controls get wrappers, which restore at the end the procedure that they found; the watching ends
// with the controls.
void WatchPane(HWND pane, HWND view);

}  // namespace kx
