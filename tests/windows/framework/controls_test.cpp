// The control wrappers on real controls: whom a wrapper belongs to, and what each makes of its control's messages.
#include <richedit.h>

#include "lib/windows/check_box.h"
#include "lib/windows/child_control.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/date_time_picker.h"
#include "lib/windows/edit_box.h"
#include "lib/windows/static_label.h"
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

class Controls : public testing::Test {
  protected:
    const LibraryModule& library_ = ThisLibrary();
    const ModuleInstance& module_ = library_.instance;
    Parent parent_;
};

// ---- whom a wrapper and its control belong to

TEST_F(Controls, ThatDeleteThemselvesGoOnceWithTheirControl) {
    parent_.NewItem("BUTTON", BS_AUTOCHECKBOX, 1);
    parent_.NewItem("COMBOBOX", CBS_DROPDOWNLIST, 3);
    const Window* const alone = Watched(new ComboBox(library_, &parent_, 31, 0, 0, 100, 5, nullptr, 0));
    const Window* const withParent[] = {Watched(new CheckBox(&parent_, 1)), Watched(new ComboBox(library_, &parent_, 3)),
                                        Watched(new CheckBox(module_, &parent_, 4, 0, 0, 10, 10))};
    DestroyWindow(alone->Handle());
    EXPECT_EQ(Deletions(alone), 1);
    for (const Window* const control : withParent) {
        EXPECT_EQ(Deletions(control), 0);
    }
    parent_.Destroy();
    for (const Window* const control : {alone, withParent[0], withParent[1], withParent[2]}) {
        EXPECT_EQ(Deletions(control), 1);
    }
}

TEST_F(Controls, ThatAreNotThereLeaveTheirWrapperToItsOwner) {
    Window nowhere;
    CheckBox* const boxes[] = {new CheckBox(&parent_, 77), new CheckBox(nullptr, 77), new CheckBox(module_, &nowhere, 77, 0, 0, 10, 10)};
    for (CheckBox* const box : boxes) {
        box->Check();
        box->SetBackground(0x123456);
        EXPECT_FALSE(box->Handle() || box->DeletesItself() || box->IsChecked() || box->SetIcon({}) || box->OnCtlColor(nullptr, nullptr));
        delete box;
    }
    EXPECT_EQ(ChildControl(0, "no such class", module_, &parent_, 40, 0, 0, 9, 9, 0).Handle(), nullptr);
}

TEST_F(Controls, EndWithTheirOwnerAndGiveBackWhatTheyHeld) {
    const HWND windows[] = {parent_.NewItem("EDIT", 0, 5), parent_.NewItem("STATIC", 0, 9)};
    HBRUSH brush = nullptr;
    {
        const EditBox edit(&parent_, 5);
        const ChildControl gone(0, "STATIC", module_, &parent_, 41, 0, 0, 9, 9, 0);
        DestroyWindow(gone.Handle());
        StaticLabel label(&parent_, 9);
        label.SetBackground(0x00FF00);
        brush = label.OnCtlColor(nullptr, windows[1]);
        EXPECT_EQ(GetObjectType(brush), static_cast<DWORD>(OBJ_BRUSH));
        EXPECT_EQ(label.OnCtlColor(nullptr, windows[0]), nullptr);
    }
    EXPECT_FALSE(IsWindow(windows[0]) || IsWindow(windows[1]) || GetObjectType(brush) != 0);
}

// ---- what they take, send and read back

// Every item as "code text" in its order, the selected one in brackets.
std::string Items(const ComboBox& combo) {
    std::string all;
    for (int i = 0; i < combo.GetCount(); ++i) {
        std::int32_t code = 0;
        combo.GetItemData(i, code);
        char text[64];
        combo.GetLBText(i, text, sizeof text);
        const std::string item = std::to_string(code) + " " + text;
        all += i == combo.GetCurSel() ? "[" + item + "]" : "(" + item + ")";
    }
    return all;
}

class Combos : public Controls {
  protected:
    ComboBox& combo_ = *new ComboBox(library_, &parent_, 59005, 0, 0, 100, 5, nullptr, 0);
};

TEST_F(Combos, HoldItemsWithCodes) {
    const struct {
        const char* pickList;
        int code;
        const char* items;
    } rows[] = {{"0^...^1^Uomo^2^Donna", 2, "(0 ...)(1 Uomo)[2 Donna]"},
                {"0^...^1^Uomo^2^Donna", 7, "[0 ...](1 Uomo)(2 Donna)"},
                {"5^five^5^again^", 5, "[5 five](5 again)"}};
    for (const auto& row : rows) {
        combo_.FillPickListText(row.pickList, row.code);
        EXPECT_EQ(Items(combo_), row.items) << row.code;
    }
    combo_.Reset();
    // A text is cut at the buffer, and nothing is written behind it.
    combo_.AddString(std::string(700, 'x').c_str());
    for (const std::size_t size : {1u, 7u}) {
        char buffer[8] = "#######";
        EXPECT_EQ(combo_.GetLBText(0, buffer, size), static_cast<int>(size) - 1);
        EXPECT_EQ(buffer, std::string(size - 1, 'x'));
        EXPECT_EQ(combo_.GetLBText(1, buffer, size), CB_ERR);
        EXPECT_TRUE(size == 7 || buffer[size] == '#');
    }
}

TEST_F(Controls, AppendToAnEditAtItsEndAndLeaveATextAloneThatItShows) {
    EditBox edit(module_, &parent_, 1, 0, 0, 200, 50);
    edit.SetText("Ritmo");
    edit.SetSelection(0, 2);
    edit.Append(" sinusale");
    EXPECT_EQ(TextOf(edit.Handle()), "Ritmo sinusale");
    edit.SendMsg(EM_UNDO);
    EXPECT_EQ(TextOf(edit.Handle()), "Ritmo");
    edit.ShowNumber(-412);
    edit.SetSelection(1, 3);  // which setting a text takes away
    edit.ShowNumber(-412);
    EXPECT_EQ(edit.GetSelection().end, 3);
    edit.ShowNumber(-41);
    EXPECT_EQ(TextOf(edit.Handle()), "-41");
}

// A rich edit's formats as its control has them.
TEST_F(Controls, TakeAFormatOnlyAsARichEdit) {
    const ModuleInstance rich(LoadLibraryA("riched20.dll"));
    const HWND control = parent_.NewItem("RichEdit20A", ES_MULTILINE, 6);
    EditBox edit(&parent_, 6), plain(module_, &parent_, 1, 0, 0, 200, 50);
    edit.SetText("Ritmo");
    const struct {
        bool (EditBox::*set)();
        DWORD effects;
    } rows[] = {
        {&EditBox::SetBold, CFE_BOLD}, {&EditBox::SetUnderline, CFE_BOLD | CFE_UNDERLINE}, {&EditBox::SetPlain, CFE_BOLD | CFE_UNDERLINE}};
    for (const auto& row : rows) {
        edit.SetSelection(0, -1);
        EXPECT_TRUE((edit.*row.set)() && !(plain.*row.set)());
        CHARFORMATA format{};
        format.cbSize = sizeof format;
        SendMessageA(control, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        EXPECT_EQ(format.dwEffects & (CFE_BOLD | CFE_UNDERLINE), row.effects);
    }
    EXPECT_TRUE(edit.SetColor(0x123456) && edit.SetReadOnly(true) && (GetWindowLongA(control, GWL_STYLE) & ES_READONLY) != 0);
    edit.Deselect();
    EXPECT_EQ(edit.GetSelection().start, edit.GetSelection().end);
}

TEST_F(Controls, GiveBackTheTimeThatAPickerWasSetTo) {
    DateTimePicker picker(module_, &parent_, 5, 1, 2, 100, 20, false, true);
    const DateTime first(2024, 2, 29, 23, 59, 58);
    const struct {
        DateTime time;
        bool exists;
    } rows[] = {
        {DateTime(1999, 12, 31), true}, {DateTime::None(), false}, {DateTime(2023, 2, 29), false}, {DateTime(2023, 6, 1, 24), false}};
    for (const auto& row : rows) {
        picker.SetDateTime(&first);
        EXPECT_EQ(picker.SetDateTime(&row.time), row.exists);
        DateTime shown = DateTime::None();
        EXPECT_TRUE(picker.GetDateTime(shown));
        EXPECT_EQ(std::memcmp(&shown, row.exists ? &row.time : &first, sizeof shown), 0) << row.time.year;
    }
    EXPECT_FALSE(picker.SetDateTime(nullptr));  // it has no box for "none"
}

}  // namespace
}  // namespace kx::test
