// The modal editor of the statement and of the confirming physician.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
// After gtest: the common controls' macros.
#include <windows.h>

#include <commctrl.h>

#include <cstring>

#include "tests/rig/pane.h"
#include "tests/rig/window_shot.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kStatement = 0;
constexpr std::uint32_t kPhysician = 1;
constexpr int kEdit = 100;
constexpr int kPanelButton = 101;
constexpr int kPanel = 500;

HWND Item(HWND editor, int id) { return GetDlgItem(editor, id); }
std::string EditText(HWND editor) { return TextOf(Item(editor, kEdit)); }
int WidthOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return static_cast<int>(area.right - area.left);
}
bool IsProposing() {
    const HWND popup = FindWindowA("CompletionPopup", nullptr);
    return popup != nullptr && IsWindowVisible(popup);
}
bool IsNow(const DateTime& time) {
    const std::int64_t age = DateTime().MillisecondsSince(time);
    return age >= -1000 && age < 60000;
}

class Editor : public testing::Test {
  protected:
    Editor() {
        suite_.On("PHYS_LIST", [](auto a) {
            Address<PhysicianRecord>(a[1])[0] = Physician("Nicol\xF2", "B", "Rossi", "");
            Address<PhysicianRecord>(a[1])[1] = Physician("Oreste Maria", "B", "Rossi della Valle", "Primario di cardiologia");
            return 2u;
        });
        record_->SetConfirmedBy("Bruni");
        record_->ClearModified();
    }
    std::uint32_t Run(std::uint32_t mode, const std::function<void(HWND)>& script) {
        suite_.TakeReports();
        std::uint32_t result = 99;
        EXPECT_TRUE(DriveModal([&] { result = library_->editInterpretation(host_.Object(), record_.get(), &area_, mode); }, script));
        return result;
    }
    std::string Stored() { return record_->InterpretationText(nullptr, 0); }

    SpyingSuite suite_;
    LibraryUse library_;
    HostWindow host_;
    std::unique_ptr<TestRecord> record_ = NewRecord();
    KxRect area_{340, 30, 740, 190};
};

TEST_F(Editor, CanBeLeftHoweverSmallItIs) {
    for (const KxRect& area : {KxRect{0, 0, 0, 0}, KxRect{50, 50, 10, 10}, KxRect{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}) {
        area_ = area;
        EXPECT_EQ(Run(kStatement, [&](HWND editor) { ClickOn(editor, Item(editor, IDOK)); }), 1u);
    }
    EXPECT_EQ(library_->editInterpretation(host_.Object(), record_.get(), nullptr, kStatement), 0u);
    EXPECT_EQ(library_->editInterpretation(host_.Object(), record_.get(), &area_, 2), 0u);
    EXPECT_THAT(suite_.TakeReports(),
                ElementsAre("LOGOEMERROR \"interp\" 2176 \"no Wpar or tst\"", "LOGOEMERROR \"interp\" 2180 \"mode\""));
}

TEST_F(Editor, WritesTheStatementByTheStateOfTheReport) {
    const DateTime then(2020, 1, 2, 3, 4, 5);
    const std::uint8_t rows[][2] = {{KX_REPORT_ORIGINAL, KX_REPORT_OVERREAD},
                                    {KX_REPORT_OVERREAD, KX_REPORT_OVERREAD},
                                    {KX_REPORT_CONFIRMED, KX_REPORT_CONFIRMED},
                                    {KX_REPORT_REVIEWED_OUTSIDE, KX_REPORT_OVERREAD}};
    for (const auto& [state, after] : rows) {
        record_->reportState = state;
        record_->overreadTime = record_->confirmedTime = then;
        std::strcpy(record_->interpretationText, "Testo di prima.");
        record_->ClearModified();
        EXPECT_EQ(Run(kStatement,
                      [&](HWND editor) {
                          TypeText(editor, " \xC8 vero.");  // behind the text: the first key replaces nothing
                          ClickOn(editor, Item(editor, IDOK));
                      }),
                  1u);
        EXPECT_EQ(Stored(), "Testo di prima. \xC8 vero.");
        EXPECT_EQ(record_->reportState, after);
        const bool confirmed = after == KX_REPORT_CONFIRMED;
        EXPECT_TRUE(IsNow(confirmed ? record_->ConfirmedTime() : record_->OverreadTime()));
        EXPECT_EQ((confirmed ? record_->OverreadTime() : record_->ConfirmedTime()).Compare(then), 0);
        EXPECT_TRUE(record_->IsModified());
        EXPECT_STREQ(record_->ConfirmedBy(), "Bruni");
    }
    std::strcpy(record_->interpretationText, std::string(4090, 'a').c_str());
    Run(kStatement, [&](HWND editor) {
        TypeText(editor, "bcdefgh");
        ClickOn(editor, Item(editor, IDOK));
    });
    EXPECT_EQ(Stored(), std::string(4090, 'a') + "bcdef") << "no more than the record holds";
}

TEST_F(Editor, ConfirmsTheTestByThePhysiciansName) {
    const struct {
        const char* typed;  // over the old name
        std::string stored;
    } rows[] = {
        {"nic\r", "Nicol\xF2 B Rossi"},
        {"ore\r", "Oreste Maria B Rossi della Valle, Prim"},  // as much as a record keeps, and as the user sees
        {"Verdi\rPaolo\r", "Verdi Paolo"},
        {"nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn", std::string(38, 'n')},
    };
    for (const auto& row : rows) {
        record_->reportState = KX_REPORT_ORIGINAL;
        EXPECT_EQ(Run(kPhysician,
                      [&](HWND editor) {
                          TypeText(editor, row.typed);
                          ClickOn(editor, Item(editor, IDOK));
                      }),
                  1u);
        EXPECT_EQ(record_->ConfirmedBy(), row.stored);
        EXPECT_TRUE(record_->IsConfirmed());
        EXPECT_TRUE(IsNow(record_->ConfirmedTime()));
        EXPECT_EQ(Stored(), "Testo di prima.");
    }
    Run(kPhysician, [&](HWND editor) {
        TypeText(editor, "ore\r");
        EXPECT_EQ(EditText(editor), rows[1].stored);
    });
}

// However it is left, the call returns; without OK, or without a change, the record is as it was.
TEST_F(Editor, AlwaysEndsAndLeavesTheRecordAlone) {
    std::optional<HostWindow> parent;
    const struct {
        const char* name;
        bool types;
        std::function<void(HWND)> end;
        std::uint32_t result;
    } rows[] = {
        {"OK without a change", false, [](HWND e) { ClickOn(e, Item(e, IDOK)); }, 1},
        {"X", true, [](HWND e) { ClickOn(e, Item(e, IDCANCEL)); }, 0},
        {"Escape", true, [](HWND e) { PressKey(e, VK_ESCAPE); }, 0},
        {"closed by the system", true, [](HWND e) { PostMessageA(e, WM_SYSCOMMAND, SC_CLOSE, 0); }, 0},
        {"its parent ends, which does not own it", true, [&](HWND) { parent->Destroy(); }, 0},
        {"told that it is destroyed", true, [](HWND e) { SendMessageA(e, WM_DESTROY, 0, 0); }, 0},
        {"under the menu of its edit", true,
         [](HWND e) { PostMessageA(Item(e, kEdit), WM_CONTEXTMENU, 0, MAKELPARAM(420, 120)), PostMessageA(e, WM_SYSCOMMAND, SC_CLOSE, 0); },
         0},
    };
    const KxTestRecord before = *record_;
    for (const auto& row : rows) {
        for (const std::uint32_t mode : {kStatement, kPhysician}) {
            parent.emplace(host_.Handle());
            std::uint32_t result = 99;
            bool ended = false;
            DriveModal([&] { result = library_->editInterpretation(parent->Object(), record_.get(), &area_, mode); },
                       [&](HWND editor) {
                           TypeText(editor, row.types ? "zz" : "");
                           row.end(editor);
                           ended = PumpUntil(editor, [&] { return !IsWindow(editor) || !IsWindowVisible(editor); });
                       });
            EXPECT_TRUE(ended) << row.name;
            EXPECT_EQ(result, row.result) << row.name;
            EXPECT_EQ(std::memcmp(static_cast<KxTestRecord*>(record_.get()), &before, sizeof before), 0) << row.name;
        }
    }
}

TEST_F(Editor, CompletesStatements) {
    Run(kStatement, [&](HWND editor) {
        TypeText(editor, "\rritmo g");
        EXPECT_TRUE(IsProposing());
        EXPECT_FALSE(IsWindowEnabled(Item(editor, kPanelButton)));
        EXPECT_TRUE(Shoot(editor, "editor"));
        PressKey(editor, VK_ESCAPE);
        EXPECT_FALSE(IsProposing());
        EXPECT_TRUE(IsWindowVisible(editor) && IsWindowEnabled(Item(editor, kPanelButton)));
        TypeText(editor, "i\r\rra");
        EXPECT_TRUE(PumpUntil(editor, [&] { return EditText(editor) == "Testo di prima.\r\nRitmo giunzionale.\r\nRitmo atriale."; }))
            << EditText(editor);
        ClickOn(editor, Item(editor, IDOK));
        EXPECT_FALSE(IsProposing());
    });
    EXPECT_EQ(Stored(), "Testo di prima.\r\nRitmo giunzionale.\r\nRitmo atriale.");
    EXPECT_THAT(suite_.TakeReports(), IsEmpty());
}

TEST_F(Editor, InsertsFromItsPanel) {
    Run(kStatement, [&](HWND editor) {
        const auto next = [&](UINT which, LRESULT item) { return SendDlgItemMessageA(editor, kPanel, TVM_GETNEXTITEM, which, item); };
        ClickOn(editor, Item(editor, kPanelButton));
        EXPECT_EQ(WidthOf(editor), 700) << "it opens to the left";
        EXPECT_EQ(WidthOf(Item(editor, kEdit)), 370);
        SetFocus(Item(editor, kEdit));
        TypeText(editor, "\rrit");
        EXPECT_FALSE(IsProposing()) << "nothing is completed while it is open";
        SendDlgItemMessageA(editor, kPanel, TVM_SELECTITEM, TVGN_CARET, next(TVGN_CHILD, next(TVGN_ROOT, 0)));
        NMHDR header{Item(editor, kPanel), kPanel, static_cast<UINT>(NM_DBLCLK)};
        SendMessageA(editor, WM_NOTIFY, kPanel, reinterpret_cast<LPARAM>(&header));
        Pump(editor);
        EXPECT_EQ(EditText(editor), "Testo di prima.\r\nritRitmo sinusale. ");
        EXPECT_EQ(GetFocus(), Item(editor, kEdit));
        SetFocus(Item(editor, kPanel));
        PressKey(editor, VK_RETURN);  // is no OK
        EXPECT_EQ(EditText(editor), "Testo di prima.\r\nritRitmo sinusale. Ritmo sinusale. ");
        ClickOn(editor, Item(editor, kPanelButton));
        EXPECT_EQ(WidthOf(editor), 400);
        EXPECT_EQ(Item(editor, kPanel), nullptr);
    });
}

}  // namespace
}  // namespace kx::test
