// Where one change of the markers begins and ends, what is in force meanwhile, and what others change in the record.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "tests/windows/morphology/pane_under_test.h"

namespace {

using kx::test::Item;
using kx::test::ItemText;
using kx::test::kAllPanes;
using kx::test::kGeneralPane;
using kx::test::kPPane;
using kx::test::kQrsPane;
using kx::test::kTPane;
using kx::test::PaneKind;
using kx::test::PaneUnderTest;
using kx::test::Pump;

LRESULT SelectedCode(HWND pane, UINT combo) {
    const HWND box = Item(pane, combo);
    return SendMessageA(box, CB_GETITEMDATA, static_cast<WPARAM>(SendMessageA(box, CB_GETCURSEL, 0, 0)), 0);
}

void Press(HWND window, UINT key) { SendMessageA(window, WM_KEYDOWN, key, 1); }

// The keyboard's way through a combo box: what the list shows comes into force with Enter alone.
TEST(MorphologySteps, ACancelledChoiceShowsAgainWhatIsInForce) {
    for (const UINT combo : {31254u, 31242u, 31240u}) {
        for (const UINT end : {UINT{VK_RETURN}, UINT{VK_ESCAPE}, 0u}) {
            PaneUnderTest pane(kQrsPane);
            const HWND box = Item(pane.Pane(), combo);
            const LRESULT before = SelectedCode(pane.Pane(), combo);
            SetFocus(box);
            Press(box, VK_F4);
            Press(box, VK_UP);
            if (end != 0) {
                Press(box, end);
            }
            SetFocus(pane.View());
            Pump();
            SCOPED_TRACE(std::to_string(combo) + " left by " + std::to_string(end));
            EXPECT_EQ(SelectedCode(pane.Pane(), combo) != before, end == VK_RETURN);
            if (combo == 31254) {
                const auto lead = static_cast<int>(SelectedCode(pane.Pane(), combo));
                EXPECT_EQ(pane.Shown(), pane.Stored(lead));
                const std::vector<int> others = pane.Stored(lead == KX_LEAD_V6 ? KX_LEAD_V5 : KX_LEAD_V6);
                ASSERT_GE(pane.Drag(pane.Stored(lead)[0], 260), 0);
                EXPECT_EQ(pane.Flags(lead), 0x0F8);
                EXPECT_EQ(pane.Stored(lead == KX_LEAD_V6 ? KX_LEAD_V5 : KX_LEAD_V6), others);
            }
        }
    }
}

// In the closed box an arrow key chooses at once.
TEST(MorphologySteps, AnArrowInTheClosedBoxChooses) {
    PaneUnderTest pane(kQrsPane);
    const HWND box = Item(pane.Pane(), 31254);
    SetFocus(box);
    Press(box, VK_UP);
    Pump();
    EXPECT_EQ(SelectedCode(pane.Pane(), 31254), KX_LEAD_V5);
    EXPECT_EQ(pane.Shown(), pane.Stored(KX_LEAD_V5));
}

// An arrow key that brings a marker back, left by the focus or by a wave box before it comes up.
TEST(MorphologySteps, AKeyStepEndsWithTheFocusAndBeforeABox) {
    for (const bool byBox : {false, true}) {
        PaneUnderTest pane(kQrsPane);
        SetFocus(pane.View());
        const std::vector<int> before = pane.Stored();
        for (const UINT key : {VK_RIGHT, VK_LEFT}) {
            SendMessageA(pane.View(), WM_KEYDOWN, key, key == VK_RIGHT ? 1 : 1 | 1 << 30);
            Pump();
        }
        EXPECT_EQ(pane.Stored()[0], before[0] + 1);
        const std::uint32_t calls = pane.Spy().calls();
        if (byBox) {
            pane.Click(33248);
        } else {
            SetFocus(Item(pane.Pane(), 31254));
            Pump();
        }
        EXPECT_EQ(pane.Stored()[0], before[0]) << byBox;
        EXPECT_EQ(pane.Shown(), pane.Stored()) << byBox;
        EXPECT_EQ(pane.Spy().calls(), calls + (byBox ? 2 : 1)) << byBox;
        EXPECT_EQ(pane.Stored()[4], byBox ? 0 : before[4]);
    }
}

// A notification alone says nothing of a step: what it puts onto its automatic value is not stored by what comes later.
TEST(MorphologySteps, ABareNotificationStoresNoAutomaticValue) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        const int automatic = pane.Stored()[0];
        SendMessageA(pane.Pane(), 1345, static_cast<WPARAM>(automatic - 20), KX_LEAD_V6);
        SendMessageA(pane.Pane(), 1345, static_cast<WPARAM>(automatic), KX_LEAD_V6);
        const KxMeasurementSet before = pane.Set();
        pane.SelectLead(KX_LEAD_V2);
        EXPECT_EQ(std::memcmp(&before, &pane.Set(), sizeof before), 0) << kind->name;
        if (!kind->isGlobal) {
            EXPECT_EQ(pane.Shown(), pane.Stored(KX_LEAD_V2)) << kind->name;
        }
    }
    for (const auto& [kind, box] : {std::pair{&kQrsPane, 33248u}, {&kPPane, 33243u}, {&kTPane, 33289u}}) {
        PaneUnderTest pane(*kind);
        const int automatic = pane.Stored()[0];
        SendMessageA(pane.Pane(), 1345, static_cast<WPARAM>(automatic - 20), KX_LEAD_V6);
        SendMessageA(pane.Pane(), 1345, static_cast<WPARAM>(automatic), KX_LEAD_V6);
        pane.Click(box);
        EXPECT_EQ(pane.Stored()[0], automatic - 20) << kind->name;
        EXPECT_EQ(pane.Shown()[0], automatic) << kind->name;
    }
}

TEST(MorphologySteps, ABareNotificationMarksNoWaveAbsent) {
    auto record = kx::test::NewRecord();
    record->Episode(0)->measurements.leads[0].pOn = 0;
    record->Episode(0)->measurements.leads[0].pOff = 0;
    PaneUnderTest pane(kGeneralPane, kx::test::Engine::kSpy, std::move(record));
    const KxMeasurementSet before = pane.Set();
    SendMessageA(pane.Pane(), 1347, static_cast<WPARAM>(pane.Stored()[2]), KX_LEAD_V6);
    pane.SelectLead(KX_LEAD_V2);
    EXPECT_EQ(std::memcmp(&before, &pane.Set(), sizeof before), 0);
}

TEST(MorphologySteps, NothingElseActsWhileTheButtonIsDown) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind);
        ASSERT_GE(pane.Drag(pane.Stored()[1], pane.Stored()[1] + 10), 0);
        const std::vector<int> before = pane.Stored();
        const int from = pane.ColumnOf(before[0]);
        const int to = pane.ColumnOf(before[0] - 40);
        const int left = pane.MsAt(to);
        SendMessageA(pane.View(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from, pane.Row()));
        SendMessageA(pane.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM((from + to) / 2, pane.Row()));
        Pump();
        const std::uint32_t calls = pane.Spy().calls();
        pane.PressControl(pane.View(), 'Z');
        PostMessageA(pane.Pane(), 1451, 0, 0);
        PostMessageA(pane.Pane(), 1452, 0, 0);
        Press(pane.View(), VK_LEFT);
        Press(pane.View(), VK_TAB);
        SendMessageA(pane.Pane(), WM_COMMAND, MAKEWPARAM(31264, BN_CLICKED), 0);
        pane.SelectLead(KX_LEAD_V1);
        Pump();
        EXPECT_EQ(pane.Spy().calls(), calls) << kind->name;
        EXPECT_EQ(SelectedCode(pane.Pane(), 31254), KX_LEAD_V6) << kind->name;
        SendMessageA(pane.View(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, pane.Row()));
        SendMessageA(pane.View(), WM_LBUTTONUP, 0, MAKELPARAM(to, pane.Row()));
        Pump();
        std::vector<int> moved = before;
        moved[0] = left;
        EXPECT_EQ(pane.Stored(), moved) << kind->name;
        EXPECT_EQ(pane.Shown(), moved) << kind->name;
        pane.Undo();
        EXPECT_EQ(pane.Stored(), before) << kind->name;
    }
}

// By whom the record is changed between a step and Ctrl+Z.
TEST(MorphologySteps, AStepIsTakenBackOnlyFromTheRecordThatItLeft) {
    const auto replaceMarkers = [](PaneUnderTest& pane) { pane.Block().pOffMarker += 20; };
    const auto replaceBeat = [](PaneUnderTest& pane) {
        std::int16_t* samples = pane.Record().Episode(0)->samples;
        std::swap(samples[300], samples[301]);
        std::swap(samples[600], samples[650]);
    };
    const auto other = [](PaneUnderTest& pane) {
        KxHostWindow host{nullptr, pane.Host()};
        const std::uint32_t handle = pane.Library()->pMorph(&host, &pane.Record());
        const auto window = static_cast<HWND>(reinterpret_cast<const KxHostWindow*>(static_cast<std::uintptr_t>(handle))->handle);
        SendMessageA(window, 1347, 400, KX_LEAD_V6);
        DestroyWindow(window);
    };
    for (const auto& change : {std::function<void(PaneUnderTest&)>(replaceMarkers), {replaceBeat}, {other}}) {
        PaneUnderTest pane(kPPane);
        ASSERT_GE(pane.Drag(pane.Stored()[0], 170), 0);
        change(pane);
        const KxMeasurementSet before = pane.Set();
        pane.Undo();
        EXPECT_EQ(std::memcmp(&before, &pane.Set(), sizeof before), 0);
        EXPECT_EQ(pane.Shown(), pane.Stored());
        EXPECT_NE(ItemText(pane.Pane(), 59023).find("annullare"), std::string::npos);
        pane.Redo();
        EXPECT_EQ(std::memcmp(&before, &pane.Set(), sizeof before), 0);
        // The next step can be taken back as ever.
        const std::vector<int> now = pane.Stored();
        ASSERT_GE(pane.Drag(now[0], now[0] - 30), 0);
        pane.Undo();
        EXPECT_EQ(pane.Stored(), now);
    }
}

TEST(MorphologySteps, TheBindingSaysWhyAndWorksAgain) {
    for (const PaneKind* kind : kAllPanes) {
        PaneUnderTest pane(*kind, kx::test::Engine::kMissing);
        pane.Library().TakeLog();
        SendMessageA(pane.Pane(), 1345, 100, KX_LEAD_V6);
        EXPECT_THAT(pane.Library().TakeLog(),
                    testing::ElementsAre(testing::HasSubstr("(kxanalyze.dll)"), testing::HasSubstr("UpdateDetection")));
        pane.LayEngine(kx::test::Engine::kSpy);
        SendMessageA(pane.Pane(), 1345, 110, KX_LEAD_V6);
        EXPECT_THAT(pane.Library().TakeLog(), testing::IsEmpty());
        EXPECT_TRUE(pane.CanReset());
        EXPECT_GT(pane.Number(kind->figure), 10000);
    }
}

}  // namespace
