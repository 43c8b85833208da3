// The editor's window: its place and its controls, its blinking buttons, and when it does not open.
#include "tests/rig/gui_objects.h"
#include "tests/windows/statement_editor/editor_fixture.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(StatementEditorTest, StandsInItsAreaOfTheParentsWindow) {
    const RECT place{corner_.x + 40, corner_.y + 30, corner_.x + 440, corner_.y + 190};
    for (const std::uint32_t mode : {kStatementMode, kPhysicianMode}) {
        Run(mode, [&](HWND editor) {
            EXPECT_EQ(ScreenPlaceOf(editor), place);
            EXPECT_EQ(PlaceOf(editor, Item(editor, kEditId)), (RECT{0, 0, 370, 160}));
            EXPECT_EQ(PlaceOf(editor, Item(editor, IDOK)), (RECT{370, 0, 400, 20}));
            EXPECT_EQ(PlaceOf(editor, Item(editor, IDCANCEL)), (RECT{370, 20, 400, 40}));
            EXPECT_EQ(ItemText(editor, IDOK), "OK");
            EXPECT_EQ(ItemText(editor, IDCANCEL), "X");
            EXPECT_EQ(Item(editor, kPanelButtonId) != nullptr, mode == kStatementMode);
            if (mode == kStatementMode) {
                EXPECT_EQ(PlaceOf(editor, Item(editor, kPanelButtonId)), (RECT{370, 140, 400, 160}));
                EXPECT_EQ(ItemText(editor, kPanelButtonId), ">>");
            }
            // Nothing of the area is taken by a frame.
            RECT client{};
            GetClientRect(editor, &client);
            EXPECT_EQ(client, (RECT{0, 0, 400, 160}));

            const HWND edit = Item(editor, kEditId);
            const LONG style = GetWindowLongA(edit, GWL_STYLE);
            EXPECT_EQ(style & (ES_MULTILINE | ES_WANTRETURN), ES_MULTILINE | ES_WANTRETURN);
            EXPECT_NE(GetWindowLongA(edit, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, 0);
            EXPECT_EQ(SendMessageA(edit, WM_GETFONT, 0, 0), SendMessageA(editor, WM_GETFONT, 0, 0));
            EXPECT_EQ(GetFocus(), edit);
            EXPECT_EQ(GetWindow(editor, GW_OWNER), parent_.handle);
            EXPECT_FALSE(IsWindowEnabled(static_cast<HWND>(parent_.handle)));
        });
        EXPECT_TRUE(IsWindowEnabled(static_cast<HWND>(parent_.handle)));
    }
    EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(StatementEditorTest, CanBeLeftHoweverSmallItsAreaIs) {
    const KxRect areas[] = {
        {0, 0, 0, 0}, {50, 50, 10, 10}, {0, 0, 29, 400}, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}};
    for (const KxRect& area : areas) {
        area_ = area;
        EXPECT_EQ(Run(kStatementMode,
                      [&](HWND editor) {
                          RECT client{};
                          GetClientRect(editor, &client);
                          EXPECT_GE(client.right, 120);
                          EXPECT_GE(client.bottom, 60);
                          ClickOn(editor, Item(editor, IDOK));
                      }),
                  1u);
    }
}

// What the buttons of the editor do in a little more than one round of the timer.
std::vector<std::string> Watch(HWND editor) {
    std::vector<std::string> events;
    bool okShown = true;
    bool cancelShown = true;
    const DWORD start = GetTickCount();
    PumpUntil(
        editor,
        [&] {
            const auto note = [&](std::uint32_t id, const char* name, bool& shown) {
                if ((IsWindowVisible(Item(editor, id)) != FALSE) != shown) {
                    shown = !shown;
                    events.push_back(std::string(name) + (shown ? " shown" : " hidden"));
                }
            };
            note(IDOK, "OK", okShown);
            note(IDCANCEL, "X", cancelShown);
            return GetTickCount() - start > 2600;
        },
        4000);
    return events;
}

TEST_F(StatementEditorTest, BlinksItsButtonsInTurn) {
    Run(kStatementMode, [&](HWND editor) {
        const std::vector<std::string> events = Watch(editor);
        ASSERT_GE(events.size(), 5u);
        EXPECT_THAT(std::vector<std::string>(events.begin(), events.begin() + 5),
                    ElementsAre("OK hidden", "OK shown", "X hidden", "X shown", "OK hidden"));
    });
}

// Hidden, it would lose the focus, and the key or the click that is on its way.
TEST_F(StatementEditorTest, DoesNotBlinkTheButtonThatHasTheFocus) {
    Run(kStatementMode, [&](HWND editor) {
        SetFocus(Item(editor, IDOK));
        const std::vector<std::string> events = Watch(editor);
        EXPECT_THAT(events, ElementsAre("X hidden", "X shown"));
        EXPECT_EQ(GetFocus(), Item(editor, IDOK));
    });
}

int g_refusedId = 0;

LRESULT CALLBACK RefuseChild(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND) {
        const CREATESTRUCTA& created = *reinterpret_cast<const CBT_CREATEWNDA*>(lParam)->lpcs;
        if ((created.style & WS_CHILD) != 0 && reinterpret_cast<INT_PTR>(created.hMenu) == g_refusedId) {
            return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(StatementEditorTest, DoesNotOpenWithoutAllItsControls) {
    HoldModules();
    for (const int refused : {100, 1, 2, 101}) {
        Reports();
        g_refusedId = refused;
        const HHOOK hook = SetWindowsHookExA(WH_CBT, RefuseChild, nullptr, GetCurrentThreadId());
        EXPECT_EQ(library_->editInterpretation(&parent_, record_.get(), &area_, kStatementMode), 0u);
        UnhookWindowsHookEx(hook);
        EXPECT_THAT(Reports(), ElementsAre("LOGMEMORYERROR \"interp\" 1792")) << refused;
    }
}

TEST_F(StatementEditorTest, RefusesWhatItCannotEdit) {
    const auto edit = [&](KxHostWindow* parent, KxTestRecord* test, const KxRect* area, std::uint32_t mode) {
        return library_->editInterpretation(parent, test, area, mode);
    };
    constexpr char kMissing[] = "LOGOEMERROR \"interp\" 2176 \"no Wpar or tst\"";
    Reports();
    EXPECT_EQ(edit(nullptr, record_.get(), &area_, 0), 0u);
    EXPECT_EQ(edit(&parent_, nullptr, &area_, 0), 0u);
    EXPECT_EQ(edit(&parent_, record_.get(), nullptr, 0), 0u);
    EXPECT_THAT(Reports(), ElementsAre(kMissing, kMissing, kMissing));
    EXPECT_EQ(edit(&parent_, record_.get(), &area_, 2), 0u);
    EXPECT_THAT(Reports(), ElementsAre("LOGOEMERROR \"interp\" 2180 \"mode\""));
}

TEST_F(StatementEditorTest, LeavesNoObjectsBehind) {
    GuiObjects before{};
    for (int i = 0; i < 10; ++i) {
        Run(kStatementMode, [&](HWND editor) {
            TypeText(editor, "\r\nri");
            PressKey(editor, VK_ESCAPE);
            ClickOn(editor, Item(editor, kPanelButtonId));
            if (i % 2 == 0) {
                ClickOn(editor, Item(editor, kPanelButtonId));
            }
            ClickOn(editor, Item(editor, IDCANCEL));
        });
        if (i == 1) {
            before = CountGuiObjects();
        }
    }
    const GuiObjects after = CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 2);
    EXPECT_LE(after.user, before.user + 2);
}

}  // namespace
}  // namespace kx::test
