// The user dictionary as it shows itself and as it takes what the user does.
#include "tests/rig/window_shot.h"
#include "tests/windows/dictionary/dictionary_fixture.h"

#include "tests/rig/gui_objects.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

RECT PlaceOf(HWND dialog, HWND control) {
    RECT area{};
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

bool IsReddish(COLORREF color) {
    return GetRValue(color) > 170 && GetGValue(color) < 130 && GetBValue(color) < 130;
}

bool IsSelectedColor(COLORREF color) {
    return color == RGB(255, 255, 225);
}

bool IsShownSelected(HWND dialog, int index) {
    RECT area{};
    GetClientRect(Entry(dialog, index), &area);
    return CountPixels(Entry(dialog, index), IsSelectedColor) > area.right * area.bottom / 2;
}

TEST_F(DictionaryTest, ShowsTheSectionsAndTheStatementsOfTheFirst) {
    Run(Path(), [&](HWND dialog) {
        EXPECT_EQ(SendMessageA(Item(dialog, IDC_DICT_SECTION), CB_GETCOUNT, 0, 0), 48);
        EXPECT_EQ(SectionText(dialog, 0), "Ritmo");
        EXPECT_EQ(SectionText(dialog, 1), "Attivit\xE0");
        EXPECT_EQ(SectionText(dialog, 47), "X");
        for (int i = 0; i < 48; ++i) {
            EXPECT_EQ(SendMessageA(Item(dialog, IDC_DICT_SECTION), CB_GETITEMDATA, static_cast<WPARAM>(i), 0),
                      i);
        }
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale.");
        EXPECT_EQ(Caption(dialog, 1), "Fibrillazione atriale.");
        EXPECT_EQ(Caption(dialog, 2), "X");
        EXPECT_EQ(Caption(dialog, 63), "X");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "Ritmo");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "");

        EXPECT_EQ(CountPixels(Entry(dialog, 0), IsReddish), 0);
        EXPECT_GT(CountPixels(Entry(dialog, 2), IsReddish), 4);
        for (int i = 0; i < 64; ++i) {
            EXPECT_FALSE(IsShownSelected(dialog, i)) << i;
        }
        ChooseSection(dialog, 1);
        EXPECT_EQ(Caption(dialog, 0), "Attivit\xE0 pi\xF9 lenta.");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "Attivit\xE0");
    });
    EXPECT_THAT(dll.TakeLog(), IsEmpty());
}

TEST_F(DictionaryTest, PutsTheButtonsIntoTwoColumnsByTheWidthOfTheEdit) {
    Run(Path(), [&](HWND dialog) {
        RECT edit{};
        GetClientRect(Item(dialog, IDC_DICT_TEXT), &edit);
        const LONG half = edit.right / 2;
        for (int i = 0; i < 64; ++i) {
            const RECT place = PlaceOf(dialog, Entry(dialog, i));
            EXPECT_EQ(place.left, (half + 7) * (i / 32) + 7) << i;
            EXPECT_EQ(place.top, 18 * (i % 32) + 48) << i;
            EXPECT_EQ(place.right - place.left, half) << i;
            EXPECT_EQ(place.bottom - place.top, 18) << i;
            EXPECT_EQ(SendMessageA(Entry(dialog, i), WM_GETFONT, 0, 0),
                      SendMessageA(Item(dialog, IDC_DICT_TEXT), WM_GETFONT, 0, 0));
        }
        RECT client{};
        RECT window{};
        GetClientRect(dialog, &client);
        GetWindowRect(dialog, &window);
        EXPECT_EQ(client.bottom, 48 + 32 * 18 + 7);
        // A screen of 1024 x 768 at 96 dpi.
        const HDC screen = GetDC(nullptr);
        const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        EXPECT_LE(window.bottom - window.top, 768);
        EXPECT_LE(window.right - window.left, MulDiv(1024, dpi, 96));
        // The row above the buttons ends before them.
        for (const std::uint32_t id : {IDC_DICT_TEXT, IDC_DICT_CODE, IDC_DICT_SECTION}) {
            EXPECT_LE(PlaceOf(dialog, Item(dialog, id)).bottom, 48) << id;
        }
    });
}

TEST_F(DictionaryTest, ShowsTheStatementThatWasClickedInTheEdits) {
    Run(Path(), [&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 1));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "Fibrillazione atriale.");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "fa");
        EXPECT_EQ(GetFocus(), Item(dialog, IDC_DICT_TEXT));
        EXPECT_TRUE(IsShownSelected(dialog, 1));
        EXPECT_FALSE(IsShownSelected(dialog, 0));
        EXPECT_TRUE(Shoot(dialog, "dictionary"));
        // What goes into the edits is no typing: each statement keeps its own code.
        ClickOn(dialog, Entry(dialog, 0));
        EXPECT_TRUE(IsShownSelected(dialog, 0));
        EXPECT_FALSE(IsShownSelected(dialog, 1));
        ClickOn(dialog, Entry(dialog, 5));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "X");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "X");
        ClickOn(dialog, Entry(dialog, 1));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "fa");
        ChooseSection(dialog, 1);
        EXPECT_FALSE(IsShownSelected(dialog, 1));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_EQ(ReadBytes(Path()), kDictionaryFile);
}

TEST_F(DictionaryTest, TakesWhatIsTypedIntoTheSelectedStatement) {
    Run(Path(), [&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 2));
        TypeText(dialog, "Bradicardia \xE8 lieve");  // over the "X"
        EXPECT_EQ(Caption(dialog, 2), "Bradicardia \xE8 lieve");
        EXPECT_EQ(SectionText(dialog, 0), "Ritmo");
        PressKey(dialog, VK_TAB);
        EXPECT_EQ(GetFocus(), Item(dialog, IDC_DICT_CODE));
        TypeText(dialog, "brad");
        ClickOn(dialog, Entry(dialog, 0));
        TypeText(dialog, " Normale.");  // behind it
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale. Normale.");
        ClickOn(dialog, Entry(dialog, 2));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "bra");

        // A code that gets into the edit otherwise is cut as well.
        SetWindowTextA(Item(dialog, IDC_DICT_CODE), "xyzt");
        ClickOn(dialog, Entry(dialog, 0));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "rs");
        ClickOn(dialog, Entry(dialog, 2));
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "xyz");

        TypeOver(dialog, IDC_DICT_TEXT, std::string(200, 'w'));
        EXPECT_EQ(Caption(dialog, 2), std::string(127, 'w'));
    });
}

// What would be read back as something else does not get into a statement, however it comes.
TEST_F(DictionaryTest, RefusesTheMarksOfTheFile) {
    Run(Path(), [&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 0));
        EXPECT_EQ(ItemText(dialog, 200), "");
        TypeText(dialog, "^");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "Ritmo sinusale.");
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale.");
        EXPECT_THAT(ItemText(dialog, 200), testing::HasSubstr("\"^\""));
        EXPECT_TRUE(Shoot(dialog, "dictionary_refusal"));
        TypeText(dialog, "!");
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale.!") << "the caret stays";
        EXPECT_EQ(ItemText(dialog, 200), "");
        TypeText(dialog, "</P>");
        EXPECT_EQ(Caption(dialog, 0), "Ritmo sinusale.!</P");
        EXPECT_THAT(ItemText(dialog, 200), testing::HasSubstr("\"</P>\""));
        TypeOver(dialog, IDC_DICT_TEXT, "QT < 440 ms");
        EXPECT_EQ(Caption(dialog, 0), "QT < 440 ms");
        SetWindowTextA(Item(dialog, IDC_DICT_CODE), "a^b");
        EXPECT_EQ(ItemText(dialog, IDC_DICT_CODE), "rs");
        ChooseSection(dialog, 1);
        TypeOver(dialog, IDC_DICT_TEXT, "A^B");  // a title has no code
        EXPECT_EQ(SectionText(dialog, 1), "A^B");
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_THAT(ReadBytes(Path()), testing::HasSubstr("<P>QT < 440 ms^rs</P>"));
}

TEST_F(DictionaryTest, HidesAnEmptiedStatementWhenTheSectionIsShownAgain) {
    Run(Path(), [&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 0));
        TypeOver(dialog, IDC_DICT_TEXT, "");
        EXPECT_EQ(Caption(dialog, 0), "");
        ChooseSection(dialog, 1);
        ChooseSection(dialog, 0);
        EXPECT_EQ(Caption(dialog, 0), "X");
        EXPECT_GT(CountPixels(Entry(dialog, 0), IsReddish), 4);
        EXPECT_EQ(Caption(dialog, 1), "Fibrillazione atriale.");
    });
}

TEST_F(DictionaryTest, RenamesTheSectionWhileNoStatementIsSelected) {
    Run(Path(), [&](HWND dialog) {
        const HWND sections = Item(dialog, IDC_DICT_SECTION);
        ChooseSection(dialog, 1);
        TypeOver(dialog, IDC_DICT_TEXT, "Conduzione");
        EXPECT_EQ(SectionText(dialog, 1), "Conduzione");
        EXPECT_EQ(SendMessageA(sections, CB_GETCURSEL, 0, 0), 1);
        EXPECT_EQ(SendMessageA(sections, CB_GETITEMDATA, 1, 0), 1);
        EXPECT_EQ(SendMessageA(sections, CB_GETCOUNT, 0, 0), 48);
        EXPECT_EQ(Caption(dialog, 0), "Attivit\xE0 pi\xF9 lenta.");
        // The code belongs to a statement; there is none.
        TypeOver(dialog, IDC_DICT_CODE, "abc");
        EXPECT_EQ(SectionText(dialog, 1), "Conduzione");
        TypeOver(dialog, IDC_DICT_TEXT, "");
        EXPECT_EQ(SectionText(dialog, 1), "X");
        ChooseSection(dialog, 0);
        ChooseSection(dialog, 1);
        EXPECT_EQ(ItemText(dialog, IDC_DICT_TEXT), "X");
    });
}

TEST_F(DictionaryTest, ReportsACombinationWithoutASection) {
    Run(Path(), [&](HWND dialog) {
        ClickOn(dialog, Entry(dialog, 0));
        SendMessageA(Item(dialog, IDC_DICT_SECTION), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_DICT_SECTION, CBN_SELCHANGE), 0);
        EXPECT_THAT(dll.TakeLog(), ElementsAre("LOGOEMERROR \"interp\" 589 \"idx -1\""));
        EXPECT_FALSE(IsShownSelected(dialog, 0));
        TypeOver(dialog, IDC_DICT_TEXT, "nowhere");
        ClickOn(dialog, Entry(dialog, 1));
        EXPECT_FALSE(IsShownSelected(dialog, 1));
        ClickOn(dialog, Item(dialog, IDOK));
    });
    EXPECT_EQ(ReadBytes(Path()), kDictionaryFile);
}

TEST_F(DictionaryTest, IsWorkedByTheKeyboardAlone) {
    const bool ok = Run(Path(), [&](HWND dialog) {
        EXPECT_EQ(GetFocus(), Item(dialog, IDC_DICT_SECTION));
        std::vector<HWND> order;
        for (int i = 0; i < 7; ++i) {
            PressKey(dialog, VK_TAB);
            order.push_back(GetFocus());
        }
        EXPECT_THAT(order, ElementsAre(Item(dialog, IDC_DICT_TEXT), Item(dialog, IDC_DICT_CODE),
                                       Entry(dialog, 0), Item(dialog, IDOK), Item(dialog, IDCANCEL),
                                       Item(dialog, IDHELP), Item(dialog, IDC_DICT_SECTION)));
        SetFocus(Entry(dialog, 0));
        PressKey(dialog, VK_DOWN);
        EXPECT_EQ(GetFocus(), Entry(dialog, 1));
        // Enter presses the button that has the focus, not OK.
        PressKey(dialog, VK_RETURN);
        EXPECT_TRUE(IsShownSelected(dialog, 1));
        EXPECT_EQ(GetFocus(), Item(dialog, IDC_DICT_TEXT));
        SetFocus(Entry(dialog, 63));
        PressKey(dialog, VK_SPACE);
        EXPECT_TRUE(IsShownSelected(dialog, 63));
        TypeText(dialog, "Ultimo");
        PressKey(dialog, VK_RETURN);
    });
    EXPECT_TRUE(ok);
    EXPECT_THAT(ReadBytes(Path()), testing::HasSubstr("\t<P>Ultimo</P>\r\n"));
}

int g_missingId = 0;

// Takes a control of the template away before the dialog sees its WM_INITDIALOG.
LRESULT CALLBACK TakeControlAway(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && message.message == WM_INITDIALOG) {
        DestroyWindow(GetDlgItem(message.hwnd, g_missingId));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Has the creation of a button fail.
LRESULT CALLBACK RefuseButton(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND) {
        const CREATESTRUCTA& created = *reinterpret_cast<const CBT_CREATEWNDA*>(lParam)->lpcs;
        if ((created.style & WS_CHILD) != 0 && reinterpret_cast<INT_PTR>(created.hMenu) == g_missingId) {
            return 1;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(DictionaryTest, DoesNotOpenWithoutAllItsControls) {
    const struct {
        int missing;
        int hook;
        HOOKPROC procedure;
        const char* report;
    } rows[] = {
        {IDC_DICT_SECTION, WH_CALLWNDPROC, TakeControlAway, "LOGMEMORYERROR \"interp\" 497"},
        {IDC_DICT_TEXT, WH_CALLWNDPROC, TakeControlAway, "LOGMEMORYERROR \"interp\" 497"},
        {IDC_DICT_CODE, WH_CALLWNDPROC, TakeControlAway, "LOGMEMORYERROR \"interp\" 497"},
        {100, WH_CBT, RefuseButton, "LOGMEMORYERROR \"interp\" 489"},
        {163, WH_CBT, RefuseButton, "LOGMEMORYERROR \"interp\" 489"},
    };
    for (const auto& row : rows) {
        g_missingId = row.missing;
        const HHOOK hook = SetWindowsHookExA(row.hook, row.procedure, nullptr, GetCurrentThreadId());
        EXPECT_FALSE(UserDictionaryDialog(library, &owner, Path().c_str(), library.Services()).Run());
        UnhookWindowsHookEx(hook);
        EXPECT_THAT(dll.TakeLog(), ElementsAre(row.report)) << row.missing;
    }
    EXPECT_EQ(ReadBytes(Path()), kDictionaryFile);
}

TEST_F(DictionaryTest, LeavesNoObjectsBehind) {
    GuiObjects before{};
    for (int i = 0; i < 12; ++i) {
        Run(Path(), [&](HWND dialog) {
            ClickOn(dialog, Entry(dialog, i));
            TypeText(dialog, "abc");
            ChooseSection(dialog, 1);
            PressKey(dialog, VK_ESCAPE);
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
