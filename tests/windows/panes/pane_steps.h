// A pane on a stage of the host's, what is done in it, and how it ends.
#pragma once

#include <gtest/gtest.h>
// After gtest: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <iterator>

#include "tests/rig/pane.h"

namespace kx::test {

// A pane in a window of a window of the host's, on a record that the host frees with it.
struct Stage {
    std::unique_ptr<TestRecord> model = NewRecord();
    ForeignRecord record{*model};
    HostWindow grandparent;
    HostWindow parent{grandparent.Handle()};

    HWND PaneWindow() const { return GetWindow(parent.Handle(), GW_CHILD); }
};

struct Ending {
    const char* name;
    void (*end)(Stage&);
};
inline const Ending kEndings[] = {
    {"the pane", [](Stage& stage) { DestroyWindow(stage.PaneWindow()); }},
    {"its parent", [](Stage& stage) { stage.parent.Destroy(); }},
    {"its grandparent", [](Stage& stage) { stage.grandparent.Destroy(); }},
};

// What a host and a user do with a pane.
struct Step {
    const char* name;
    void (*act)(HWND pane);
};

inline void Send(HWND pane, std::uint32_t id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    SendMessageA(GetDlgItem(pane, static_cast<int>(id)), message, wParam, lParam);
}
inline void Command(HWND pane, std::uint32_t id, UINT code) {
    SendMessageA(pane, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(GetDlgItem(pane, static_cast<int>(id))));
}
inline void Type(HWND pane, std::uint32_t id, const char* text) {
    SetFocus(GetDlgItem(pane, static_cast<int>(id)));
    for (; *text != '\0'; ++text) {
        Send(pane, id, WM_CHAR, static_cast<unsigned char>(*text), 1);
        Pump();
    }
}
inline void ChooseItem(HWND pane, std::uint32_t combo, UINT code) {
    Send(pane, combo, CB_SETCURSEL, 1);
    Command(pane, combo, code);
}
inline void DragInView(HWND pane) {
    RECT area{};
    GetClientRect(GetDlgItem(pane, 31283), &area);
    for (int x = 0; x < area.right; x += 7) {
        POINT point{x, area.bottom / 2};
        ClientToScreen(GetDlgItem(pane, 31283), &point);
        if (SendMessageA(GetDlgItem(pane, 31283), WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)) == HTCLIENT) {
            Send(pane, 31283, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, area.bottom / 2));
            Send(pane, 31283, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x - 9, area.bottom / 2));
            Pump();
            Send(pane, 31283, WM_LBUTTONUP, 0, MAKELPARAM(x - 9, area.bottom / 2));
            Pump();
            return;
        }
    }
}

inline const Step kCommonSteps[] = {
    {"sized", [](HWND pane) { MoveWindow(pane, 0, 0, 900, 600, TRUE); }},
    {"painted", [](HWND pane) { RedrawWindow(pane, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN); }},
};
// These call the engine.
inline const Step kMeasuredSteps[] = {
    {"marker moved", [](HWND pane) { SendMessageA(pane, 1345, 190, KX_LEAD_V6); }},
    {"dragged", DragInView},
    {"marker stepped", [](HWND pane) { SetFocus(GetDlgItem(pane, 31283)), Send(pane, 31283, WM_KEYDOWN, VK_LEFT, 1), Pump(); }},
    {"undone", [](HWND pane) { SendMessageA(pane, 1345, 190, KX_LEAD_V6), SendMessageA(pane, 1451, 0, 0); }},
    {"reset", [](HWND pane) { SendMessageA(pane, 1345, 190, KX_LEAD_V6), Send(pane, 31264, BM_CLICK); }},
};
inline const Step kMorphologySteps[] = {
    {"lead chosen", [](HWND pane) { ChooseItem(pane, 31254, CBN_SELENDOK); }},
    {"gain chosen", [](HWND pane) { ChooseItem(pane, 31242, CBN_SELENDOK); }},
    {"readout", [](HWND pane) { SendMessageA(pane, 1450, 0, reinterpret_cast<LPARAM>("text")), SendMessageA(pane, 1450, 0, 0); }},
};
inline const Step kInterpretationSteps[] = {
    {"typed", [](HWND pane) { Type(pane, 33831, "ri"); }},
    {"code typed", [](HWND pane) { Type(pane, 33831, "rs"); }},
    {"reviewer chosen", [](HWND pane) { ChooseItem(pane, 33824, CBN_SELCHANGE); }},
    {"physician typed", [](HWND pane) { SetWindowTextA(GetDlgItem(pane, 33829), "Neri"), Command(pane, 33829, CBN_EDITCHANGE); }},
    {"focus lost", [](HWND pane) { SetFocus(GetDlgItem(pane, 33831)), SetFocus(GetDlgItem(pane, 33823)); }},
    {"automatic inserted", [](HWND pane) { Send(pane, 33827, BM_CLICK), Pump(); }},
    {"entry inserted",
     [](HWND pane) {
         Send(pane, 33828, TVM_SELECTITEM, TVGN_CARET, SendMessageA(GetDlgItem(pane, 33828), TVM_GETNEXTITEM, TVGN_ROOT, 0)),
             Send(pane, 33832, BM_CLICK), Pump();
     }},
    {"cancelled", [](HWND pane) { SendMessageA(pane, WM_COMMAND, IDCANCEL, 0); }},
};

inline std::vector<Step> StepsOf(const PaneKind& kind) {
    std::vector<Step> steps;
    if (IsMorphology(kind)) {
        steps.assign(std::begin(kMeasuredSteps), std::end(kMeasuredSteps));
        steps.insert(steps.end(), std::begin(kMorphologySteps), std::end(kMorphologySteps));
    } else if (kind.templateId == 20542) {
        steps.assign(std::begin(kInterpretationSteps), std::end(kInterpretationSteps));
    }
    steps.insert(steps.end(), std::begin(kCommonSteps), std::end(kCommonSteps));
    return steps;
}

}  // namespace kx::test
