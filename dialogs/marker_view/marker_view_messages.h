// marker_view_messages: the messages between a marker view and the dialog that owns it.
#pragma once

#include <windows.h>

namespace kx {

// Owner to view. wParam is 0 where nothing is said. Every setter but MV_ADDMARKER and MV_ATTACHOWNER repaints
// the view; all return 1 except where stated.
enum MarkerViewMessage : UINT {
    MV_SETBEAT = WM_USER + 300,     // lParam: the KxEpisodeRecord shown, not owned
    MV_SETGAIN = WM_USER + 301,     // lParam: mm per mV; the vertical offset becomes 0
    MV_SETSPEED = WM_USER + 302,    // lParam: mm per s
    MV_SETHSCROLL = WM_USER + 303,  // lParam: percent, held to 0 to 100
    MV_SETVOFFSET = WM_USER + 304,  // lParam: microvolts, held to -2500 to 2500
    MV_SETLEAD = WM_USER + 305,     // wParam: lead code; lParam: array of std::int32_t, the position in ms of
                                    // each added marker, 0 = absent; read before the message returns
    MV_SETHIGHCUT = WM_USER + 306,  // lParam: thousandths of a Hz; taken only above the low edge
    MV_SETLOWCUT = WM_USER + 307,   // lParam: thousandths of a Hz; taken only below the high edge
    MV_SHOWMARKERS = WM_USER + 308,     // lParam: 1 = shown
    MV_SHOWDERIVATIVE = WM_USER + 309,  // lParam: 1 = shown
    MV_SETBANDPASS = WM_USER + 310,     // lParam: 1 = on
    MV_SETMAINS = WM_USER + 311,        // lParam: 0, 50 or 60 Hz
    MV_ADDMARKER =
        WM_USER + 312,  // lParam: bitmap resource of the label; returns 0 when the marker cannot be made
    MV_ATTACHOWNER = WM_USER + 320  // lParam: the owner, a kx::Window; returns the view's own kx::Window
};
static_assert(MV_SETBEAT == 1324 && MV_ADDMARKER == 1336 && MV_ATTACHOWNER == 1344);

// View to owner.
enum MarkerViewNotification : UINT {
    MVN_MARKERMOVED =
        1345,  // plus the marker's slot, 0 to 5; posted. wParam: its new position in ms; lParam: lead code
    MVN_READOUT = 1450,  // sent. lParam: the readout's text
    MVN_UNDO = 1451,     // posted: the user pressed Ctrl+Z in the view
    MVN_REDO = 1452,     // posted: Ctrl+Y
    // Sent: the user takes hold of a marker; wParam: 1 by the mouse, 0 by a key. What moves from here to the
    // next MVN_STEPENDS is one change. The owner may set the markers anew before it answers.
    MVN_STEPBEGINS = 1453,
    // Posted, so that it comes behind the moves: the button or the key came up, or the mouse or the focus was
    // lost.
    MVN_STEPENDS = 1454,
    // Sent by a host: what Ctrl+Z and Ctrl+Y would do. The answer: 1 = there is a step to take back, 2 = one
    // to do again, or their sum.
    MVN_STEPSLEFT = 1455
};

inline constexpr UINT kMarkerSlots = 6;

}  // namespace kx
