// The control wrappers on real controls: whom a wrapper belongs to, and what each makes of its control's messages.
#include "dialogs/hypertrophy/range_color_label.h"
#include "lib/windows/check_box.h"
#include "lib/windows/child_control.h"
#include "lib/windows/combo_box.h"
#include "lib/windows/date_time_picker.h"
#include "lib/windows/edit_box.h"
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

class Controls : public testing::Test {
  protected:
    const LibraryModule& library_ = ThisLibrary();
    const ModuleInstance& module_ = library_.instance;
    Parent parent_;
};

// The parameters of WM_COMMAND that say that control `id` sent notification `code`.
constexpr WPARAM Command(std::uint32_t id, unsigned code) { return (static_cast<WPARAM>(code) << 16) | (id & 0xFFFF); }

// ---- whom a wrapper and its control belong to

TEST_F(Controls, ThatDeleteThemselvesGoOnceWithTheirControl) {
    parent_.NewItem("BUTTON", BS_AUTOCHECKBOX, 1);
    parent_.NewItem("BUTTON", BS_AUTOCHECKBOX, 2);
    parent_.NewItem("COMBOBOX", CBS_DROPDOWNLIST, 3);
    const Window* const alone[] = {Watched(new CheckBox(&parent_, 1)),
                                   Watched(new ComboBox(library_, &parent_, 31, 0, 0, 100, 5, nullptr, 0))};
    const Window* const withParent[] = {Watched(new CheckBox(&parent_, 2)), Watched(new ComboBox(library_, &parent_, 3)),
                                        Watched(new CheckBox(module_, &parent_, 4, 0, 0, 10, 10))};
    for (const Window* const control : alone) {
        DestroyWindow(control->Handle());
        EXPECT_EQ(Deletions(control), 1);
    }
    for (const Window* const control : withParent) {
        EXPECT_EQ(Deletions(control), 0);
    }
    parent_.Destroy();
    for (const Window* const control : withParent) {
        EXPECT_EQ(Deletions(control), 1);
    }
    EXPECT_EQ(Deletions(alone[0]), 1);
}

TEST_F(Controls, GetTheirOwnProcedureBackWhenTheWrapperGoesFirst) {
    const HWND item = parent_.NewItem("BUTTON", BS_AUTOCHECKBOX, 1);
    const LONG_PTR before = GetWindowLongPtrA(item, GWLP_WNDPROC);
    delete new CheckBox(&parent_, 1);
    EXPECT_EQ(GetWindowLongPtrA(item, GWLP_WNDPROC), before);
    EXPECT_EQ(GetWindowLongPtrA(item, GWLP_USERDATA), 0);
    SendMessageA(item, BM_CLICK, 0, 0);
    EXPECT_EQ(SendMessageA(item, BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(Controls, ThatAreNotThereLeaveTheirWrapperToItsOwner) {
    Window nowhere;
    CheckBox* const boxes[] = {new CheckBox(&parent_, 77), new CheckBox(nullptr, 77), new CheckBox(&nowhere, 77),
                               new CheckBox(module_, &nowhere, 77, 0, 0, 10, 10)};
    for (CheckBox* const box : boxes) {
        Watched(box);
        EXPECT_EQ(box->Handle(), nullptr);
        EXPECT_FALSE(box->DeletesItself());
        box->Check();
        box->SetIndeterminate();
        EXPECT_FALSE(box->IsChecked() || box->SetIcon({}));
        box->SetBackground(0x123456);
        EXPECT_EQ(box->OnCtlColor(nullptr, nullptr), nullptr);
    }
    EditBox edit(&parent_, 77);
    edit.Append("nowhere");
    EXPECT_FALSE(edit.SetBold());
    EXPECT_EQ(edit.GetSelection().end, 0);
    StaticLabel label(&parent_, 77);
    EXPECT_FALSE(label.SetText("nowhere"));
    const ChildControl unknown(0, "no such class", module_, &parent_, 40, 0, 0, 9, 9, 0);
    EXPECT_EQ(unknown.Handle(), nullptr);
    parent_.Destroy();
    for (CheckBox* const box : boxes) {
        EXPECT_EQ(Deletions(box), 0);
        delete box;
    }
}

TEST_F(Controls, EndWithTheirOwner) {
    HWND windows[3] = {};
    HBRUSH brush = nullptr;
    {
        const EditBox edit(module_, &parent_, 5, 1, 2, 100, 20);
        const ChildControl child(0, "STATIC", module_, &parent_, 40, 0, 0, 9, 9, 0);
        const ChildControl gone(0, "STATIC", module_, &parent_, 41, 0, 0, 9, 9, 0);
        DestroyWindow(gone.Handle());
        windows[0] = edit.Handle();
        windows[1] = child.Handle();
        windows[2] = parent_.NewItem("STATIC", 0, 9);
        StaticLabel label(&parent_, 9);
        label.SetBackground(0x00FF00);
        const HDC dc = GetDC(windows[2]);
        brush = label.OnCtlColor(dc, windows[2]);
        EXPECT_EQ(GetObjectType(brush), static_cast<DWORD>(OBJ_BRUSH));
        EXPECT_EQ(label.OnCtlColor(dc, parent_.Handle()), nullptr);
        ReleaseDC(windows[2], dc);
    }
    for (const HWND window : windows) {
        EXPECT_FALSE(IsWindow(window));
    }
    EXPECT_EQ(GetObjectType(brush), 0u);
    EXPECT_TRUE(parent_.IsValid());
}

UniqueIcon NewIcon() {
    const BYTE bits[16 * 16 / 8] = {};
    return UniqueIcon(CreateIcon(nullptr, 16, 16, 1, 1, bits, bits));
}

TEST_F(Controls, KeepTheirIconUntilTheNextOne) {
    const HWND item = parent_.NewItem("BUTTON", BS_PUSHBUTTON | BS_ICON, 1);
    CheckBox& box = *new CheckBox(&parent_, 1);
    const HICON icons[] = {NewIcon().release(), NewIcon().release()};
    for (const HICON icon : icons) {
        EXPECT_TRUE(box.SetIcon(UniqueIcon(icon)));
        EXPECT_EQ(reinterpret_cast<HICON>(SendMessageA(item, BM_GETIMAGE, IMAGE_ICON, 0)), icon);
    }
    ICONINFO info{};
    EXPECT_FALSE(GetIconInfo(icons[0], &info));
    DestroyWindow(item);
    EXPECT_FALSE(GetIconInfo(icons[1], &info));
}

// ---- which notification is whose

TEST_F(Controls, TellTheirOwnNotificationsFromOthers) {
    parent_.NewItem("BUTTON", BS_AUTOCHECKBOX, 59008);
    const CheckBox box(&parent_, 59008, kHeld);
    parent_.NewItem("COMBOBOX", CBS_DROPDOWN, 59005);
    const ComboBox combo(library_, &parent_, 59005, kHeld);
    parent_.NewItem("EDIT", 0, 59006);
    const EditBox edit(&parent_, 59006);
    const struct {
        std::uint32_t id;
        std::function<bool(WPARAM)> asks;
        unsigned code;
    } rows[] = {
        {59008, [&](WPARAM w) { return box.IsClicked(w); }, BN_CLICKED},
        {59005, [&](WPARAM w) { return combo.IsSelChange(w); }, CBN_SELCHANGE},
        {59005, [&](WPARAM w) { return combo.IsSelEndOk(w); }, CBN_SELENDOK},
        {59005, [&](WPARAM w) { return combo.IsEditChange(w); }, CBN_EDITCHANGE},
        {59005, [&](WPARAM w) { return combo.IsEditUpdate(w); }, CBN_EDITUPDATE},
        {59005, [&](WPARAM w) { return combo.IsKillFocus(w); }, CBN_KILLFOCUS},
        {59006, [&](WPARAM w) { return edit.IsSetFocus(w); }, EN_SETFOCUS},
        {59006, [&](WPARAM w) { return edit.IsKillFocus(w); }, EN_KILLFOCUS},
        {59006, [&](WPARAM w) { return edit.IsChange(w); }, EN_CHANGE},
        {59006, [&](WPARAM w) { return edit.IsUpdate(w); }, EN_UPDATE},
    };
    for (const auto& row : rows) {
        for (const unsigned code : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 0x100u, 0x200u, 0x300u, 0x400u, 0x500u}) {
            EXPECT_EQ(row.asks(Command(row.id, code)), code == row.code) << row.id << ' ' << row.code << ' ' << code;
        }
        EXPECT_FALSE(row.asks(Command(row.id + 4, row.code)) || row.asks(Command(0, row.code)));
    }
}

TEST_F(Controls, RememberTheirLastNotification) {
    ChildControl control(0, "STATIC", module_, &parent_, 40, 0, 0, 9, 9, 0);
    NMHDR header{control.Handle(), 40, static_cast<UINT>(NM_CLICK)};
    LRESULT result = 5;
    const struct {
        std::uint32_t id;
        const NMHDR* header;
        std::uint32_t remembered;
    } rows[] = {{40, &header, static_cast<std::uint32_t>(NM_CLICK)},
                {41, &header, 0},
                {40, &header, static_cast<std::uint32_t>(NM_CLICK)},
                {40, nullptr, 0}};
    for (const auto& row : rows) {
        EXPECT_FALSE(control.OnChildNotify(row.id, row.header, &result));
        EXPECT_EQ(control.LastNotification(), row.remembered);
    }
    EXPECT_EQ(result, 5);
    EXPECT_EQ(Slot(&ChildControl::OnChildNotify), 42);
}

// ---- combo box

constexpr char kSexes[] = "0^...^1^Uomo^2^Donna";

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

TEST_F(Combos, AreFilledFromAPickListAndSelectACode) {
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
        combo_.FillPickListText(row.list, row.code);
        EXPECT_EQ(Items(combo_), row.items) << row.list << " code " << row.code;
    }
}

TEST_F(Combos, SelectByCodeAndByWholeText) {
    combo_.FillPickListText(kSexes, 1);
    EXPECT_EQ(combo_.SelectedCode(), 1);
    combo_.SelectCode(2);
    combo_.SelectCode(9);
    EXPECT_EQ(combo_.SelectedCode(), 2) << "stays";
    combo_.SelectText("Uomo");
    EXPECT_EQ(combo_.SelectedCode(), 1);
    for (const char* const other : {"uomo", "Uom", "Uomo ", ""}) {
        combo_.SelectCode(2);
        combo_.SelectText(other);
        EXPECT_EQ(combo_.GetCurSel(), 0) << other;
    }
    combo_.SetCurSel(-1);
    EXPECT_EQ(combo_.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo_.SelectedCode(), CB_ERR);
}

TEST_F(Combos, CutTextsAtTheBuffer) {
    combo_.AddString("abcdef");
    combo_.AddString(std::string(700, 'x').c_str());
    const struct {
        int item;
        std::size_t size;
        int length;
        const char* text;
    } rows[] = {{0, 7, 6, "abcdef"}, {0, 6, 5, "abcde"}, {1, 7, 6, "xxxxxx"}, {1, 1, 0, ""}, {2, 7, CB_ERR, ""}};
    for (const auto& row : rows) {
        char buffer[8] = "#######";
        EXPECT_EQ(combo_.GetLBText(row.item, buffer, row.size), row.length);
        EXPECT_STREQ(buffer, row.text);
        EXPECT_TRUE(row.size == 7 || buffer[row.size] == '#');
    }
    char untouched = '#';
    EXPECT_EQ(combo_.GetLBText(0, &untouched, 0), CB_ERR);
    EXPECT_EQ(untouched, '#');
}

TEST_F(Combos, TellTheForwardTargetOfASelection) {
    const HWND receiver = parent_.NewItem("STATIC", 0, 90);
    Window target(receiver, &parent_, 90);
    ComboBox& combo = *new ComboBox(library_, &parent_, 31, 10, 20, 120, 15, &target, WM_USER + 7);
    ComboBox& other = *new ComboBox(library_, &parent_, 32, 10, 60, 120, 15, &target, WM_USER + 8);
    combo.FillPickListText(kSexes, 2);
    other.FillPickListText("40^forty", 40);
    MSG message{};
    const auto next = [&] { return PeekMessageA(&message, receiver, WM_USER, WM_USER + 20, PM_REMOVE) != FALSE; };
    ASSERT_FALSE(next());
    const std::string longText(3000, 'y');
    const struct {
        ComboBox& combo;
        int item;
        UINT message;
        WPARAM code;
        std::string text;
    } rows[] = {
        {combo, 2, WM_USER + 7, 2, "Donna"},
        {other, 0, WM_USER + 8, 40, "forty"},
        {combo, combo.AddItem(5, longText.c_str()), WM_USER + 7, 5, longText.substr(0, 1023)},
    };
    LPARAM text = 0;  // one buffer for all
    for (const auto& row : rows) {
        row.combo.SetCurSel(row.item);
        SendMessageA(row.combo.Handle(), WM_COMMAND, Command(1000, LBN_SELCHANGE), 0);
        ASSERT_TRUE(next());
        EXPECT_EQ(message.message, row.message);
        EXPECT_EQ(message.wParam, row.code);
        EXPECT_EQ(reinterpret_cast<const char*>(message.lParam), row.text);
        EXPECT_TRUE(text == 0 || text == message.lParam);
        text = message.lParam;
        EXPECT_FALSE(next());
    }
}

// ---- edit, label, date and time

TEST_F(Controls, AppendToAnEditAtItsEndAndLeaveATextAloneThatItShows) {
    EditBox edit(module_, &parent_, 1, 0, 0, 200, 50);
    edit.SetText("Ritmo");
    edit.SetSelection(0, 2);
    edit.Append(" sinusale");
    EXPECT_EQ(TextOf(edit.Handle()), "Ritmo sinusale");
    EXPECT_EQ(edit.GetSelection().start, 14);
    EXPECT_EQ(edit.GetSelection().end, 14);
    EXPECT_TRUE(edit.SendMsg(EM_CANUNDO));
    edit.SendMsg(EM_UNDO);
    EXPECT_EQ(TextOf(edit.Handle()), "Ritmo");
    const std::string longText(300, 'x');
    for (const char* const text : {"412", "412 ms\r\n-73 uV", longText.c_str()}) {
        edit.ShowText(text);
        EXPECT_EQ(TextOf(edit.Handle()), text);
    }
    edit.ShowNumber(-412);
    edit.SetSelection(1, 3);  // which setting a text takes away
    edit.ShowNumber(-412);
    EXPECT_EQ(edit.GetSelection().end, 3);
    edit.ShowNumber(-41);
    EXPECT_EQ(TextOf(edit.Handle()), "-41");
}

TEST_F(Controls, ColourALabelByTheBandOfItsValue) {
    const HWND item = parent_.NewItem("STATIC", 0, 9, "...");
    // Bounds that no pane uses: each belongs to the band it closes.
    RangeColorLabel label(&parent_, 9, {0x0000FF, 0x008080, 0x008000, -100, -10, 10, 100});
    EXPECT_EQ(TextOf(item), "...");
    const HDC dc = GetDC(item);
    const struct {
        std::int32_t value;
        COLORREF color;
    } rows[] = {{0, 0x008000},   {10, 0x008000},  {11, 0x008080},   {100, 0x008080},  {101, 0x0000FF},
                {-10, 0x008000}, {-11, 0x008080}, {-100, 0x008080}, {-101, 0x0000FF}, {2147483647, 0x0000FF}};
    for (const auto& row : rows) {
        label.SetValue(row.value);
        label.OnCtlColor(dc, item);
        EXPECT_EQ(TextOf(item), std::to_string(row.value));
        EXPECT_EQ(GetTextColor(dc), row.color) << row.value;
    }
    ReleaseDC(item, dc);
}

TEST_F(Controls, GiveBackTheTimeThatAPickerWasSetTo) {
    DateTimePicker picker(module_, &parent_, 5, 1, 2, 100, 20, false, true);
    const DateTime first(2024, 2, 29, 23, 59, 58);
    const struct {
        DateTime time;
        bool exists;
    } rows[] = {{first, true},
                {DateTime(1999, 12, 31), true},
                {DateTime(2000, 1, 1, 12, 30, 15), true},
                {DateTime::None(), false},
                {DateTime(2023, 2, 29), false},
                {DateTime(2023, 13, 1), false},
                {DateTime(2023, 6, 1, 24), false}};
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
