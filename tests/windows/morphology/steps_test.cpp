// Where one change of the markers begins and ends, what is in force meanwhile, what others change in the record, and how a
// change is taken back.
#include <gmock/gmock.h>

#include <functional>

#include "tests/windows/morphology/morph_pane.h"

namespace kx::test {
namespace {

void Press(HWND window, UINT key, LPARAM data = 1) { SendMessageA(window, WM_KEYDOWN, key, data); }

// The keyboard's way through a combo box: what its list shows comes into force with Enter alone.
TEST(MorphologySteps, ACancelledChoiceShowsAgainWhatIsInForce) {
    for (const UINT end : {UINT{VK_RETURN}, UINT{VK_ESCAPE}, 0u}) {
        MorphPane morph(kQrsPane);
        const HWND box = morph.pane.Item(31254);
        SetFocus(box);
        Press(box, VK_F4);
        Press(box, VK_UP);
        if (end != 0) {
            Press(box, end);
        }
        SetFocus(morph.View());
        Pump();
        const int lead = end == VK_RETURN ? KX_LEAD_V5 : KX_LEAD_V6;
        const int other = end == VK_RETURN ? KX_LEAD_V6 : KX_LEAD_V5;
        EXPECT_EQ(morph.Chosen(31254), lead) << end;
        const Values ofOther = morph.Stored(other);
        morph.Notify(0, 260);
        EXPECT_EQ(morph.FlagWord(lead), 0x0F8) << end;
        EXPECT_EQ(morph.Stored(other), ofOther) << end;
    }
}

// It was stored elsewhere on its way: where it is let go, the record holds what the reviewer sees.
TEST(MorphologySteps, ADragLetGoOnTheAutomaticValueIsStoredThere) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind);
        const int from = morph.ColumnOf(morph.Stored()[0]);
        const int automatic = morph.MsAt(from);
        morph.Block().*kind->markers[0].ms = static_cast<std::uint16_t>(automatic);  // as the pane will find it
        morph.Mouse(WM_LBUTTONDOWN, from);
        morph.Mouse(WM_MOUSEMOVE, from - 20);
        Pump();
        EXPECT_NE(morph.Stored()[0], automatic) << *kind;
        morph.Mouse(WM_MOUSEMOVE, from);
        morph.Mouse(WM_LBUTTONUP, from);
        Pump();
        EXPECT_EQ(morph.Stored()[0], automatic) << *kind;
        EXPECT_EQ(morph.Shown(), morph.Stored()) << *kind;
        EXPECT_TRUE(morph.ShowsLastCall()) << *kind;
    }
}

// An arrow key that brings a marker back, left by the focus or by a wave box before it comes up.
TEST(MorphologySteps, AKeyStepEndsWithTheFocusAndBeforeABox) {
    for (const bool byBox : {false, true}) {
        MorphPane morph(kQrsPane);
        SetFocus(morph.View());
        const Values before = morph.Stored();
        Press(morph.View(), VK_RIGHT);
        Press(morph.View(), VK_LEFT, 1 | 1 << 30);
        Pump();
        EXPECT_EQ(morph.Stored()[0], before[0] + 1);
        const int calls = morph.Calls();
        if (byBox) {
            morph.pane.Click(33248);
        } else {
            SetFocus(morph.pane.Item(31254));
            Pump();
        }
        EXPECT_EQ(morph.Stored()[0], before[0]) << byBox;
        EXPECT_EQ(morph.Shown(), morph.Stored()) << byBox;
        EXPECT_EQ(morph.Calls(), calls + (byBox ? 2 : 1)) << byBox;
        EXPECT_EQ(morph.Stored()[4], byBox ? 0 : before[4]);
    }
}

// A notification alone says nothing of a step: what it puts onto its automatic value is not stored by what comes later.
TEST(MorphologySteps, ABareNotificationStoresNoAutomaticValue) {
    for (const auto& [kind, slot] : {std::pair{&kGeneralPane, 2u}, {&kQrsPane, 0u}}) {
        for (const bool byBox : {false, true}) {
            MorphPane morph(*kind);
            const int automatic = morph.Stored()[slot];
            morph.Notify(slot, automatic - 20);
            morph.Notify(slot, automatic);
            byBox ? morph.pane.Click(kind->waveBoxes[0]) : morph.SelectLead(KX_LEAD_V2);
            EXPECT_EQ(morph.Stored()[slot], automatic - 20) << *kind << byBox;
        }
    }
    // Nor does it mark a wave absent that is.
    auto record = NewRecord();
    record->Episode(0)->measurements.leads[0].pOn = record->Episode(0)->measurements.leads[0].pOff = 0;
    MorphPane morph(kGeneralPane, std::move(record));
    const KxMeasurementSet before = morph.Set();
    morph.Notify(2, morph.Stored()[2]);
    morph.SelectLead(KX_LEAD_V2);
    EXPECT_TRUE(morph.IsAsBefore(before));
}

TEST(MorphologySteps, NothingElseActsWhileTheButtonIsDown) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind);
        ASSERT_GE(morph.Drag(morph.Stored()[1], morph.Stored()[1] + 10), 0);
        const Values before = morph.Stored();
        const int from = morph.ColumnOf(before[0]);
        const int to = morph.ColumnOf(before[0] - 40);
        const int left = morph.MsAt(to);
        morph.Mouse(WM_LBUTTONDOWN, from);
        morph.Mouse(WM_MOUSEMOVE, (from + to) / 2);
        Pump();
        const int calls = morph.Calls();
        PostMessageA(morph.pane, 1451, 0, 0);
        PostMessageA(morph.pane, 1452, 0, 0);
        Press(morph.View(), VK_LEFT);
        Press(morph.View(), VK_TAB);
        morph.pane.Notify(31264, BN_CLICKED);
        morph.SelectLead(KX_LEAD_V1);
        Pump();
        EXPECT_EQ(morph.Calls(), calls) << *kind;
        EXPECT_EQ(morph.Chosen(31254), KX_LEAD_V6) << *kind;
        morph.Mouse(WM_MOUSEMOVE, to);
        morph.Mouse(WM_LBUTTONUP, to);
        Pump();
        Values moved = before;
        moved[0] = left;
        EXPECT_EQ(morph.Stored(), moved) << *kind;
        EXPECT_EQ(morph.Shown(), moved) << *kind;
        morph.Undo();
        EXPECT_EQ(morph.Stored(), before) << *kind;
    }
}

// By whom the record is changed between a step and Ctrl+Z.
TEST(MorphologySteps, AStepIsTakenBackOnlyFromTheRecordThatItLeft) {
    const std::function<void(MorphPane&)> changes[] = {
        [](MorphPane& morph) { morph.Block().pOffMarker = 350; },
        [](MorphPane& morph) { std::swap(morph.record->Episode(0)->samples[390], morph.record->Episode(0)->samples[400]); },
        [](MorphPane& morph) {
            Pane other(KindOf("P"), morph.host, *morph.record);
            SendMessageA(other, 1347, 400, KX_LEAD_V6);
        },
    };
    for (const auto& change : changes) {
        MorphPane morph(kPPane);
        ASSERT_GE(morph.Drag(200, 170), 0);
        change(morph);
        const KxMeasurementSet before = morph.Set();
        morph.Undo();
        EXPECT_TRUE(morph.IsAsBefore(before));
        EXPECT_EQ(morph.Shown(), morph.Stored());
        EXPECT_THAT(morph.pane.Text(59023), testing::HasSubstr("annullare"));
        morph.Redo();
        EXPECT_TRUE(morph.IsAsBefore(before));
        // The next step can be taken back as ever.
        const Values now = morph.Stored();
        ASSERT_GE(morph.Drag(now[0], now[0] - 30), 0);
        morph.Undo();
        EXPECT_EQ(morph.Stored(), now);
    }
}

// A drag of many moves is one step; a box and Reset are one each. Reset gives its markers back to the analysis, and leaves the
// flags of the other dialogs alone.
TEST(MorphologySteps, EveryKindOfChangeComesBackAndGoesAgain) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind);
        morph.automatic = std::make_unique<KxMeasurementSet>(morph.Set());
        morph.FlagWord() = static_cast<std::uint16_t>(kind->isGlobal ? 0xFFE0 : 0xF000);
        const auto state = [&morph] { return std::tuple(morph.Stored(), morph.Shown(), morph.FlagWord(), morph.CanReset()); };
        // What a host is told for its menu: 1 = there is one to take back, 2 = one to do again.
        const auto stepsLeft = [&morph] { return SendMessageA(morph.pane, 1455, 0, 0); };
        std::vector states = {state()};
        EXPECT_EQ(stepsLeft(), 0);
        ASSERT_GE(morph.Drag(morph.Stored()[0], morph.Stored()[0] - 30, 40), 0);
        EXPECT_GT(morph.Calls(), 10);
        states.push_back(state());
        for (const UINT button : {kind->waveBoxes[0], 31264u}) {
            SetFocus(morph.pane.Item(button));
            morph.pane.Click(button);
            states.push_back(state());
        }
        EXPECT_EQ(states.back(), states.front()) << *kind;
        EXPECT_TRUE(IsWindowEnabled(GetFocus())) << *kind << ": a disabled button keeps the keyboard";
        for (int again = 0; again < 2; ++again) {
            for (std::size_t i = states.size() - 1; i-- > 0;) {
                morph.Undo();
                ASSERT_EQ(state(), states[i]) << *kind << ", back to " << i;
                ASSERT_EQ(stepsLeft(), i == 0 ? 2 : 3);
                ASSERT_TRUE(morph.ShowsLastCall());
            }
            morph.Undo();  // nothing is left
            for (std::size_t i = 1; i < states.size(); ++i) {
                morph.Redo();
                ASSERT_EQ(state(), states[i]) << *kind << ", again to " << i;
                ASSERT_EQ(stepsLeft(), i + 1 < states.size() ? 3 : 1);
            }
        }
    }
}

TEST(MorphologySteps, TakingBackShowsTheLeadOfTheStep) {
    MorphPane morph(kQrsPane);
    const Values ofV6 = morph.Stored();
    morph.Notify(0, 280);
    morph.SelectLead(KX_LEAD_II);
    morph.Undo();
    EXPECT_EQ(morph.Stored(), ofV6);
    EXPECT_EQ(morph.Chosen(31254), KX_LEAD_V6);
    EXPECT_EQ(morph.Shown(), ofV6);
}

void Settle() {
    for (int i = 0; i < 5; ++i) {
        Sleep(10);
        Pump();
    }
}

void SendMouse(DWORD flags, POINT at = {}) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi = {
        MulDiv(at.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1, MulDiv(at.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1, 0, flags, 0, 0};
    SendInput(1, &input, sizeof input);
    Settle();
}

// By what a user has: the mouse and the keyboard of the system.
TEST(MorphologySteps, TheSystemsMouseDragsAndItsKeysTakeBack) {
    for (const MorphKind* kind : kMorphPanes) {
        MorphPane morph(*kind);
        SetForegroundWindow(HostWindow::Frame());
        Settle();
        const Values before = morph.Stored();
        const std::size_t last = before.size() - (kind == &kQrsPane ? 2 : 1);
        const int start = morph.ColumnOf(before[last]);
        const int end = morph.ColumnOf(before[last] + 40);
        Values moved = before;
        moved[last] = morph.MsAt(end);
        const auto moveTo = [&morph](int column) {
            POINT point{column, morph.Row()};
            ClientToScreen(morph.View(), &point);
            SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, point);
        };
        moveTo(start);
        SendMouse(MOUSEEVENTF_LEFTDOWN);
        for (int step = 1; step <= 8; ++step) {
            moveTo(start + (end - start) * step / 8);
        }
        SendMouse(MOUSEEVENTF_LEFTUP);
        EXPECT_EQ(morph.Stored(), moved) << *kind;
        EXPECT_EQ(GetFocus(), morph.View()) << *kind;
        for (const WORD key : {WORD{'Z'}, WORD{'Y'}}) {
            // In the view, and in another control.
            SetFocus(key == 'Z' ? morph.View() : morph.pane.Item(31254));
            INPUT inputs[4] = {};
            for (std::size_t i = 0; i < 4; ++i) {
                inputs[i].type = INPUT_KEYBOARD;
                inputs[i].ki.wVk = i == 0 || i == 3 ? WORD{VK_CONTROL} : key;
                inputs[i].ki.dwFlags = i < 2 ? 0 : KEYEVENTF_KEYUP;
            }
            SendInput(4, inputs, sizeof *inputs);
            Settle();
            EXPECT_EQ(morph.Stored(), key == 'Z' ? before : moved) << *kind;
            EXPECT_EQ(morph.Shown(), morph.Stored()) << *kind;
        }
    }
}

}  // namespace
}  // namespace kx::test
