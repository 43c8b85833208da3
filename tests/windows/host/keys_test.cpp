// The workstation by the keyboard: who gets a key, and whether what it changes is shown.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "dialogs/resources/morphology_ids.h"
#include "host/resource_ids.h"
#include "tests/windows/host/host_fixture.h"
#include "tests/windows/host/host_process.h"

namespace kx::test {
namespace {

std::wstring TextOf(HWND window) {
    wchar_t text[512] = {};
    SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return name;
}

class HostKeysTest : public HostTest {
  protected:
    HostKeysTest() {
        // A screen without a window manager may leave the keyboard with the window that has just gone.
        WaitUntil([&] {
            SetForegroundWindow(host_.Frame());
            return ClassOf(host_.Focus()) == L"KxTracingPaper";
        });
    }

    std::wstring Strip() const { return TextOf(GetDlgItem(host_.Frame(), IDC_PATIENT_STRIP)); }
    // What the general pane says of the interval that both show.
    std::wstring PaneInStripsWords() const {
        return L"; P " + TextOf(GetDlgItem(host_.Pane(), IDC_MORPH_P_DURATION)) + L" ms; PR " +
               TextOf(GetDlgItem(host_.Pane(), IDC_MORPH_PR)) + L" ms;";
    }
    bool StripFollows() const { return Strip().find(PaneInStripsWords()) != std::wstring::npos; }
    // Strikes and waits for the marker's own edit to show another value.
    bool Moves(int markerEdit, WORD key, bool control = false) const {
        return MovesBy(markerEdit, [&] { host_.Strike(key, control); });
    }
    bool MovesByMenu(int markerEdit, WPARAM command) const {
        return MovesBy(markerEdit, [&] { PostMessageW(host_.Frame(), WM_COMMAND, command, 0); });
    }
    template <class Act>
    bool MovesBy(int markerEdit, Act act) const {
        const HWND edit = GetDlgItem(host_.Pane(), markerEdit);
        const std::wstring before = TextOf(edit);
        act();
        return WaitUntil([&] { return TextOf(edit) != before; });
    }

    OpenHost host_{{}};
};

TEST_F(HostKeysTest, TheKeysMoveTheMarkersOfThePaneAndTheStripShowsIt) {
    EXPECT_EQ(ClassOf(host_.Focus()), L"KxTracingPaper") << "the first pane was not given the keyboard";
    host_.Strike('2', true);
    ASSERT_TRUE(WaitUntil([&] { return ClassOf(host_.Focus()) == L"MarkerView"; }));
    ASSERT_TRUE(StripFollows()) << fs::path(Strip()).string();
    const std::wstring first = Strip();
    const HWND onset = GetDlgItem(host_.Pane(), IDC_MORPH_GLOBAL_P_ON);
    const std::wstring automatic = TextOf(onset);

    ASSERT_TRUE(Moves(IDC_MORPH_GLOBAL_P_ON, VK_RIGHT));
    EXPECT_TRUE(WaitUntil([&] { return Strip() != first && StripFollows(); })) << fs::path(Strip()).string();
    ASSERT_TRUE(Moves(IDC_MORPH_GLOBAL_P_ON, VK_RIGHT, true)) << "Ctrl+Right";
    EXPECT_TRUE(WaitUntil([&] { return StripFollows(); }));
    const std::wstring moved = TextOf(onset);

    ASSERT_TRUE(Moves(IDC_MORPH_GLOBAL_P_ON, 'Z', true)) << "Ctrl+Z";
    ASSERT_TRUE(MovesByMenu(IDC_MORPH_GLOBAL_P_ON, IDM_EDIT_UNDO));
    EXPECT_EQ(TextOf(onset), automatic);
    EXPECT_TRUE(WaitUntil([&] { return Strip() == first && StripFollows(); })) << fs::path(Strip()).string();
    ASSERT_TRUE(Moves(IDC_MORPH_GLOBAL_P_ON, 'Y', true)) << "Ctrl+Y";
    ASSERT_TRUE(MovesByMenu(IDC_MORPH_GLOBAL_P_ON, IDM_EDIT_REDO));
    EXPECT_EQ(TextOf(onset), moved);
    EXPECT_TRUE(WaitUntil([&] { return StripFollows(); }));

    // Tab goes on to the next marker.
    host_.Strike(VK_TAB);
    ASSERT_TRUE(Moves(IDC_MORPH_P_OFF, VK_LEFT)) << "Tab did not go to the next marker";
    EXPECT_TRUE(WaitUntil([&] { return StripFollows(); }));
    EXPECT_FALSE(host_.HasMessageBox());
}

// By the pointer and by the keys; what it says stands in the pane's last text.
TEST_F(HostKeysTest, TheCalipersMeasureOnTheTracing) {
    const HWND paper = FindWindowExW(host_.Pane(), nullptr, L"KxTracingPaper", nullptr);
    ASSERT_NE(paper, nullptr);
    const auto said = [&] {
        HWND last = nullptr;
        for (HWND text = nullptr; (text = FindWindowExW(host_.Pane(), text, L"Static", nullptr)) != nullptr;) {
            last = text;
        }
        return TextOf(last);
    };
    const auto drag = [&](int fromX, int toX, int y) {
        SendMessageW(paper, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(fromX, y));
        for (const int x : {fromX, (fromX + toX) / 2, toX}) {
            SendMessageW(paper, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y));
        }
        SendMessageW(paper, WM_LBUTTONUP, 0, MAKELPARAM(toX, y));
    };
    // 189 dots of 96 an inch are 50 mm: at 25 mm/s two seconds.
    drag(100, 289, 60);
    EXPECT_EQ(said(), L"2000 ms   30 bpm   +0,00 mV");
    host_.Strike(VK_RIGHT);
    EXPECT_TRUE(WaitUntil([&] { return said() == L"2002 ms   30 bpm   +0,00 mV"; })) << fs::path(said()).string();
    host_.Strike(VK_ESCAPE);
    EXPECT_TRUE(WaitUntil([&] { return said().empty(); }));
}

// By their accelerators, whatever had the keyboard before. Enter and Esc are a dialog's OK and Cancel, which would hide a pane
// for good; in the worklist Enter opens a test.
TEST_F(HostKeysTest, EveryPaneThatIsChosenHasTheKeyboardAndStays) {
    const HWND log = GetDlgItem(host_.Frame(), IDC_LOG);
    for (int tab = IDM_VIEW_LAST_PANE - IDM_VIEW_FIRST_PANE; tab >= 0; --tab) {
        const HWND before = host_.Pane();
        host_.Strike(static_cast<WORD>('0' + tab), true);
        ASSERT_TRUE(WaitUntil([&] { return host_.Pane() != before && IsChild(host_.Pane(), host_.Focus()) != FALSE; })) << tab;
        const HWND pane = host_.Pane();
        EXPECT_TRUE(!IsWindow(before) && GetWindow(pane, GW_HWNDNEXT) == nullptr) << "two panes at once on tab " << tab;
        host_.Strike(VK_ESCAPE);
        host_.Strike(static_cast<WORD>(tab == 0 ? VK_ESCAPE : VK_RETURN));
        const BOOL shown = IsWindowVisible(log);
        host_.Strike('L', true);
        ASSERT_TRUE(WaitUntil([&] { return IsWindowVisible(log) != shown; })) << tab;
        EXPECT_TRUE(host_.Pane() == pane && IsWindowVisible(pane)) << tab;
    }
    // The window left for another one and entered again.
    const HWND focus = host_.Focus();
    PostMessageW(host_.Frame(), WM_COMMAND, IDM_HELP_ABOUT, 0);
    const HWND box = host_.WaitForMessageBox();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(WaitUntil([&] { return IsChild(box, host_.Focus()) != FALSE; }));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitUntil([&] { return host_.Focus() == focus; })) << fs::path(ClassOf(host_.Focus())).string();
}

}  // namespace
}  // namespace kx::test
