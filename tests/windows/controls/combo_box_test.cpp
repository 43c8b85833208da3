#include "lib/windows/combo_box.h"

#include "dialogs/resources/resource_ids.h"
#include "tests/windows/controls/control_fixture.h"

namespace {

using kx::ComboBox;
using kx::test::Command;

constexpr char kSexes[] = "0^...^1^Uomo^2^Donna";

class ComboBoxTest : public kx::test::ControlTest {
  protected:
    ComboBox& Adopted(DWORD style = CBS_DROPDOWNLIST) {
        NewItem("COMBOBOX", style | WS_VSCROLL, 59005);
        return *new ComboBox(library_, &parent_, 59005);
    }
};

std::string ItemText(const ComboBox& combo, int index) {
    char text[1200];
    combo.GetLBText(index, text, sizeof text);
    return text;
}

// Every item as "code text" in its order, the selected one in brackets.
std::string Items(const ComboBox& combo) {
    std::string all;
    for (int i = 0; i < combo.GetCount(); ++i) {
        std::int32_t code = 0;
        combo.GetItemData(i, code);
        const std::string item = std::to_string(code) + " " + ItemText(combo, i);
        all += i == combo.GetCurSel() ? "[" + item + "]" : "(" + item + ")";
    }
    return all;
}

TEST_F(ComboBoxTest, FillsPickListAndSelectsCode) {
    ComboBox& combo = Adopted();
    const struct {
        const char* list;
        int code;
        const char* items;
    } rows[] = {
        {kSexes, 2, "(0 ...)(1 Uomo)[2 Donna]"},
        {kSexes, 0, "[0 ...](1 Uomo)(2 Donna)"},
        {kSexes, 7, "[0 ...](1 Uomo)(2 Donna)"},
        {"0^No BRF^50^50 Hz^60^60 Hz", 60, "(0 No BRF)(50 50 Hz)[60 60 Hz]"},
        {"5^five^5^again^", 5, "[5 five](5 again)"},
        {"-1^none^3^three", -1, "[-1 none](3 three)"},
        {"4^", 4, "[4 ]"},
        {"", 0, ""},
        {"4", 4, ""},
    };
    for (const auto& row : rows) {
        combo.FillPickListText(row.list, row.code);
        EXPECT_EQ(Items(combo), row.items) << row.list << " code " << row.code;
    }
}

TEST_F(ComboBoxTest, LoadsPickListFromTheLibrary) {
    // Tests run in the build folder.
    const HMODULE dll = LoadLibraryExA("bin\\kxdialogs.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(dll, nullptr);
    const kx::LibraryModule dialogs(dll);
    NewItem("COMBOBOX", CBS_DROPDOWNLIST, 59005);
    ComboBox& combo = *new ComboBox(dialogs, &parent_, 59005);
    combo.FillPickList(IDS_SEX_PICK_LIST, 2);
    EXPECT_EQ(Items(combo), "(0 ...)(1 Uomo)[2 Donna]");
    combo.FillPickList(IDS_SEX_PICK_LIST, 7);
    EXPECT_EQ(Items(combo), "[0 ...](1 Uomo)(2 Donna)");
    combo.FillPickList(1, 0);  // no such string
    EXPECT_EQ(combo.GetCount(), 0);
    DestroyParent();
    FreeLibrary(dll);
}

TEST_F(ComboBoxTest, SelectsByCodeAndText) {
    ComboBox& combo = Adopted();
    combo.FillPickListText(kSexes, 1);
    EXPECT_EQ(combo.SelectedCode(), 1);
    combo.SelectCode(2);
    EXPECT_EQ(combo.SelectedCode(), 2);
    combo.SelectCode(9);
    EXPECT_EQ(combo.SelectedCode(), 2);  // stays
    combo.SelectText("Uomo");
    EXPECT_EQ(combo.SelectedCode(), 1);
    const char* others[] = {"uomo", "Uom", "Uomo ", ""};
    for (const char* other : others) {
        combo.SelectCode(2);
        combo.SelectText(other);
        EXPECT_EQ(combo.GetCurSel(), 0) << other;
    }
    combo.SetCurSel(-1);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.SelectedCode(), CB_ERR);
}

TEST_F(ComboBoxTest, AddsItemsWithCodes) {
    ComboBox& combo = Adopted();
    EXPECT_EQ(combo.AddItem(7, "seven"), 0);
    EXPECT_EQ(combo.AddItem("12 mm", "twelve"), 1);
    EXPECT_EQ(combo.InsertString(0, "first"), 0);
    EXPECT_TRUE(combo.SetItemData(0, -5));
    EXPECT_EQ(Items(combo), "(-5 first)(7 seven)(12 twelve)");
    EXPECT_EQ(combo.DeleteString(1), 2);
    EXPECT_FALSE(combo.SetItemData(9, 1));
    std::int32_t data = 0;
    EXPECT_FALSE(combo.GetItemData(9, data));
    EXPECT_EQ(combo.FindExact("TWELVE"), 1);
    EXPECT_EQ(combo.FindExact("first"), 0);  // round to item 0
    EXPECT_EQ(combo.FindExact("twelv"), CB_ERR);
    combo.Reset();
    EXPECT_EQ(combo.GetCount(), 0);
}

TEST_F(ComboBoxTest, FillsListOfNames) {
    ComboBox& combo = Adopted();
    combo.FillPickListText(kSexes, 0);
    combo.FillList("Rossi^Bianchi^^Verdi");
    EXPECT_EQ(combo.GetCount(), 4);
    EXPECT_EQ(ItemText(combo, 0), "Rossi");
    EXPECT_EQ(ItemText(combo, 2), "");
    EXPECT_EQ(ItemText(combo, 3), "Verdi");
    combo.FillList("");
    EXPECT_EQ(combo.GetCount(), 0);
}

TEST_F(ComboBoxTest, CutsTextsAtTheBuffer) {
    ComboBox& combo = Adopted();
    const std::string longText(700, 'x');
    combo.AddString("abcdef");
    combo.AddString(longText.c_str());
    struct {
        char text[7];
        char guard = '#';
    } buffer;
    EXPECT_EQ(combo.GetLBText(0, buffer.text, 7), 6);
    EXPECT_STREQ(buffer.text, "abcdef");
    EXPECT_EQ(combo.GetLBText(0, buffer.text, 6), 5);
    EXPECT_STREQ(buffer.text, "abcde");
    EXPECT_EQ(combo.GetLBText(1, buffer.text, 7), 6);
    EXPECT_STREQ(buffer.text, "xxxxxx");
    EXPECT_EQ(combo.GetLBText(1, buffer.text, 1), 0);
    EXPECT_STREQ(buffer.text, "");
    EXPECT_EQ(combo.GetLBText(2, buffer.text, 7), CB_ERR);
    EXPECT_EQ(combo.GetLBText(0, buffer.text, 0), CB_ERR);
    EXPECT_EQ(buffer.guard, '#');
}

TEST_F(ComboBoxTest, TellsItsNotifications) {
    const ComboBox& combo = Adopted();
    const struct {
        unsigned code;
        bool (ComboBox::*test)(WPARAM) const;
    } rows[] = {{1, &ComboBox::IsSelChange},
                {9, &ComboBox::IsSelEndOk},
                {5, &ComboBox::IsEditChange},
                {6, &ComboBox::IsEditUpdate},
                {4, &ComboBox::IsKillFocus}};
    for (const auto& row : rows) {
        for (unsigned code = 0; code < 12; ++code) {
            EXPECT_EQ((combo.*row.test)(Command(59005, code)), code == row.code)
                << row.code << " at " << code;
        }
        EXPECT_FALSE((combo.*row.test)(Command(59004, row.code)));
    }
}

TEST_F(ComboBoxTest, IsCreatedAsDropDownList) {
    ComboBox& combo = *new ComboBox(library_, &parent_, 31, 10, 20, 120, 15, nullptr, 0);
    ASSERT_NE(combo.Handle(), nullptr);
    EXPECT_EQ(kx::test::ClassOf(combo.Handle()), "ComboBox");
    // Border and scroll bar go to its list.
    EXPECT_EQ(kx::test::StyleOf(combo.Handle()) | WS_BORDER | WS_VSCROLL, 0x50A10003u);
    EXPECT_EQ(GetDlgCtrlID(combo.Handle()), 31);
    RECT list{};
    SendMessageA(combo.Handle(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&list));
    EXPECT_EQ(list.right - list.left, 120);
    EXPECT_NEAR(list.bottom - list.top, 150, 30);
}

TEST_F(ComboBoxTest, TellsTheForwardTargetOfASelection) {
    const HWND receiver = NewItem("STATIC", 0, 90);
    kx::Window target(receiver, &parent_, 90);
    ComboBox& combo = *new ComboBox(library_, &parent_, 31, 10, 20, 120, 15, &target, WM_USER + 7);
    ComboBox& other = *new ComboBox(library_, &parent_, 32, 10, 60, 120, 15, &target, WM_USER + 8);
    combo.FillPickListText(kSexes, 2);
    other.FillPickListText("40^forty", 40);
    MSG message{};
    const auto next = [&] {
        return PeekMessageA(&message, receiver, WM_USER, WM_USER + 20, PM_REMOVE) != FALSE;
    };
    ASSERT_FALSE(next());

    SendMessageA(combo.Handle(), WM_COMMAND, Command(1000, LBN_SELCHANGE), 0);
    ASSERT_TRUE(next());
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 7));
    EXPECT_EQ(message.wParam, 2u);
    const auto* text = reinterpret_cast<const char*>(message.lParam);
    EXPECT_STREQ(text, "Donna");
    EXPECT_FALSE(next());

    SendMessageA(other.Handle(), WM_COMMAND, Command(1000, LBN_SELCHANGE), 0);
    ASSERT_TRUE(next());
    EXPECT_EQ(message.wParam, 40u);
    EXPECT_EQ(reinterpret_cast<const char*>(message.lParam), text);  // one buffer for all
    EXPECT_STREQ(text, "forty");

    const std::string longText(3000, 'y');
    combo.SetCurSel(combo.AddItem(5, longText.c_str()));
    SendMessageA(combo.Handle(), WM_COMMAND, 0, 0);
    ASSERT_TRUE(next());
    EXPECT_EQ(std::string(text), longText.substr(0, 1023));
}

// The user's way: keys in the control.
TEST_F(ComboBoxTest, ForwardsWhatTheUserSelects) {
    const HWND receiver = NewItem("STATIC", 0, 90);
    kx::Window target(receiver, &parent_, 90);
    ComboBox& combo = *new ComboBox(library_, &parent_, 31, 10, 20, 120, 15, &target, WM_USER + 7);
    combo.FillPickListText(kSexes, 0);
    SetFocus(combo.Handle());
    SendMessageA(combo.Handle(), CB_SHOWDROPDOWN, TRUE, 0);
    SendMessageA(combo.Handle(), WM_KEYDOWN, VK_DOWN, 0);
    MSG message{};
    bool told = false;
    while (PeekMessageA(&message, receiver, WM_USER + 7, WM_USER + 7, PM_REMOVE)) {
        told = true;
    }
    EXPECT_EQ(combo.SelectedCode(), 1);
    EXPECT_TRUE(told);
    EXPECT_EQ(message.wParam, 1u);
    EXPECT_STREQ(reinterpret_cast<const char*>(message.lParam), "Uomo");
}

TEST_F(ComboBoxTest, IsDeletedOnceWithItsControl) {
    ComboBox* const adopted = &Adopted();
    ComboBox* const created = new ComboBox(library_, &parent_, 31, 0, 0, 100, 5, nullptr, 0);
    kx::test::WatchDeletion(adopted);
    kx::test::WatchDeletion(created);
    DestroyWindow(created->Handle());
    EXPECT_EQ(kx::test::Deletions(created), 1);
    EXPECT_EQ(kx::test::Deletions(adopted), 0);
    DestroyParent();
    EXPECT_EQ(kx::test::Deletions(created), 1);
    EXPECT_EQ(kx::test::Deletions(adopted), 1);
}

TEST_F(ComboBoxTest, StaysItsOwnersWithoutControl) {
    ComboBox combo(library_, &parent_, 77);
    EXPECT_FALSE(combo.DeletesItself());
    combo.FillPickListText(kSexes, 2);
    combo.SelectText("Uomo");
    EXPECT_EQ(combo.GetCount(), 0);
    EXPECT_EQ(combo.AddItem(1, "x"), 0);
    char text[8] = "x";
    EXPECT_EQ(combo.GetLBText(0, text, sizeof text), 0);
    EXPECT_STREQ(text, "");
}

}  // namespace
