#include "lib/windows/combo_box.h"

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

}  // namespace
