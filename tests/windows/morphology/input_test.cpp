// One marker of every pane moved by what a user has: the mouse and the keyboard of the system.
#include <gtest/gtest.h>

#include "tests/windows/morphology/pane_under_test.h"

namespace {

using kx::test::PaneKind;
using kx::test::PaneUnderTest;

void Settle() {
    for (int i = 0; i < 5; ++i) {
        Sleep(10);
        kx::test::Pump();
    }
}

void MoveMouse(HWND window, int x, int y) {
    POINT point{x, y};
    ClientToScreen(window, &point);
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = MulDiv(point.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
    input.mi.dy = MulDiv(point.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    SendInput(1, &input, sizeof input);
    Settle();
}

void Button(DWORD flag) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    SendInput(1, &input, sizeof input);
    Settle();
}

void ControlAnd(WORD key) {
    INPUT inputs[4] = {};
    for (INPUT& input : inputs) {
        input.type = INPUT_KEYBOARD;
    }
    inputs[0].ki.wVk = VK_CONTROL;
    inputs[1].ki.wVk = key;
    inputs[2].ki.wVk = key;
    inputs[2].ki.dwFlags = KEYEVENTF_KEYUP;
    inputs[3].ki.wVk = VK_CONTROL;
    inputs[3].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(4, inputs, sizeof *inputs);
    Settle();
}

TEST(MorphologyInput, DragAndTakeBackWithTheSystemsMouseAndKeys) {
    for (const PaneKind* kind : kx::test::kAllPanes) {
        PaneUnderTest pane(*kind);
        SetForegroundWindow(pane.Host());
        Settle();
        const std::vector<int> before = pane.Stored();
        const std::size_t last = before.size() - 1 - (kind == &kx::test::kQrsPane ? 1 : 0);
        const int row = pane.Row();
        const int start = pane.ColumnOf(before[last]);
        const int end = pane.ColumnOf(before[last] + 40);
        const int left = pane.MsAt(end);
        MoveMouse(pane.View(), start, row);
        Button(MOUSEEVENTF_LEFTDOWN);
        for (int step = 1; step <= 8; ++step) {
            MoveMouse(pane.View(), start + (end - start) * step / 8, row);
        }
        Button(MOUSEEVENTF_LEFTUP);
        std::vector<int> moved = before;
        moved[last] = left;
        EXPECT_EQ(pane.Stored(), moved) << kind->name;
        EXPECT_EQ(pane.Shown(), moved) << kind->name;
        // The press has given the view the focus.
        EXPECT_EQ(GetFocus(), pane.View()) << kind->name;
        ControlAnd('Z');
        EXPECT_EQ(pane.Stored(), before) << kind->name;
        EXPECT_EQ(pane.Shown(), before) << kind->name;
        ControlAnd('Y');
        EXPECT_EQ(pane.Stored(), moved) << kind->name;
        SetFocus(kx::test::Item(pane.Pane(), 31262));
        ControlAnd('Z');
        EXPECT_EQ(pane.Stored(), before) << kind->name;
    }
}

}  // namespace
