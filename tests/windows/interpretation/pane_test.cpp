// The stages of the report: what the pane shows of the record and when it writes into it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "lib/windows/registry_key.h"
#include "tests/rig/gui_objects.h"
#include "tests/windows/interpretation/pane_fixture.h"

namespace {

using kx::DateTime;
using kx::test::Physician;
using kx::test::SuiteModule;
using kx::test::Technician;
using testing::ElementsAre;
using testing::IsEmpty;

// With hundredths, which no picker knows.
constexpr DateTime kOriginal(2013, 3, 5, 8, 15, 30, 12);
constexpr DateTime kReviewed(2013, 3, 6, 9, 45, 10, 34);
constexpr DateTime kConfirmed(2013, 3, 7, 17, 5, 59, 99);

bool IsSame(const KxDateTime& a, const KxDateTime& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}
// By what a picker can show.
bool ShowsTime(const DateTime& picker, const DateTime& time) {
    return picker.Year() == time.Year() && picker.Month() == time.Month() && picker.Day() == time.Day() &&
           picker.Hour() == time.Hour() && picker.Minute() == time.Minute() &&
           picker.Second() == time.Second();
}
bool IsNow(const DateTime& time) {
    const std::int64_t age = DateTime().MillisecondsSince(time);
    return age >= -1000 && age < 60000;
}

class Pane : public kx::test::InterpretationPane {
  protected:
    Pane() {
        answers_.technicians = [](kx::TechnicianRecord* records, std::uint32_t) -> std::uint32_t {
            records[0] = Technician(
                "Lo\xEF"
                "c",
                "G.", "Bassi");
            records[1] = Technician("Anna", "M.", "Nicol\xF2");
            return 2;
        };
        answers_.physicians = [](std::uint32_t first, kx::PhysicianRecord* records,
                                 std::uint32_t) -> std::uint32_t {
            EXPECT_EQ(first, 0u);
            records[0] = Physician("Giosu\xE8", "L.", "D'Andrea", "Cardiologo");
            records[1] = Physician("Teresa", "A.", "Cant\xF9", "");
            return 2;
        };
        record_->SetOriginalBy("Analisi automatica");
        record_->SetOriginalInterpretation(&kOriginal, "Ritmo sinusale.");
    }
    void MakeOverread() {
        record_->SetOverreadInterpretation(&kReviewed, "Riveduto.");
        record_->SetOverreadBy("Anna M. Nicol\xF2");
    }
    void MakeConfirmed() {
        MakeOverread();
        record_->SetConfirmedInterpretation(&kConfirmed, "Confermato.");
        record_->SetConfirmedBy("Teresa A. Cant\xF9");
    }
    bool IsEnabled(std::uint32_t id) { return IsWindowEnabled(kx::test::Item(pane_, id)) != FALSE; }
    bool IsShown(std::uint32_t id) { return IsWindowVisible(kx::test::Item(pane_, id)) != FALSE; }
    std::string Stored() { return record_->InterpretationText(nullptr, 0); }
};

TEST_F(Pane, OpensAnOriginalReport) {
    Open();
    EXPECT_EQ(Text(IDC_INTERP_ORIGINAL_BY), "Analisi automatica");
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_ORIGINAL_DATE), kOriginal));
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_ORIGINAL_TIME), kOriginal));
    EXPECT_TRUE(IsShown(IDC_INTERP_ORIGINAL_DATE) && IsShown(IDC_INTERP_ORIGINAL_TIME));
    EXPECT_FALSE(IsEnabled(IDC_INTERP_ORIGINAL_DATE) || IsEnabled(IDC_INTERP_ORIGINAL_TIME));
    EXPECT_FALSE(IsChecked(IDC_INTERP_REVIEWED) || IsChecked(IDC_INTERP_CONFIRMED));
    EXPECT_TRUE(IsEnabled(IDC_INTERP_REVIEWED) && IsEnabled(IDC_INTERP_CONFIRMED));
    for (const std::uint32_t id :
         {IDC_INTERP_REVIEW_DATE, IDC_INTERP_REVIEW_TIME, IDC_INTERP_CONFIRM_DATE, IDC_INTERP_CONFIRM_TIME}) {
        EXPECT_TRUE(IsNow(PickerTime(id))) << id;
    }
    EXPECT_THAT(ListOf(IDC_INTERP_REVIEWER), ElementsAre("Anna M. Nicol\xF2",
                                                         "Lo\xEF"
                                                         "c G. Bassi"));
    EXPECT_THAT(ListOf(IDC_INTERP_PHYSICIAN),
                ElementsAre("Giosu\xE8 L. D'Andrea, Cardiologo", "Teresa A. Cant\xF9"));
    EXPECT_EQ(Text(IDC_INTERP_REVIEWER), "");
    EXPECT_EQ(Statement(), "Ritmo sinusale.");
    // The dialog manager selects the text of an edit that it gives the focus; the next key would replace it.
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, end);
    EXPECT_TRUE(IsWindowVisible(pane_));
    EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(Pane, OpensAnOverreadReport) {
    MakeOverread();
    Open();
    EXPECT_FALSE(IsShown(IDC_INTERP_ORIGINAL_DATE) || IsShown(IDC_INTERP_ORIGINAL_TIME));
    EXPECT_TRUE(IsChecked(IDC_INTERP_REVIEWED));
    EXPECT_FALSE(IsEnabled(IDC_INTERP_REVIEWED));
    EXPECT_EQ(Text(IDC_INTERP_REVIEWER), "Anna M. Nicol\xF2");
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_REVIEW_DATE), kReviewed));
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_REVIEW_TIME), kReviewed));
    EXPECT_FALSE(IsChecked(IDC_INTERP_CONFIRMED));
    EXPECT_TRUE(IsNow(PickerTime(IDC_INTERP_CONFIRM_TIME)));
    EXPECT_EQ(Statement(), "Riveduto.");
}

TEST_F(Pane, OpensAConfirmedReport) {
    MakeConfirmed();
    Open();
    EXPECT_TRUE(IsChecked(IDC_INTERP_REVIEWED) && IsChecked(IDC_INTERP_CONFIRMED));
    EXPECT_FALSE(IsEnabled(IDC_INTERP_REVIEWED));
    EXPECT_TRUE(IsEnabled(IDC_INTERP_CONFIRMED));
    EXPECT_EQ(Text(IDC_INTERP_REVIEWER), "Anna M. Nicol\xF2");
    EXPECT_EQ(Text(IDC_INTERP_PHYSICIAN), "Teresa A. Cant\xF9");
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_CONFIRM_DATE), kConfirmed));
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_CONFIRM_TIME), kConfirmed));
}

TEST_F(Pane, ShowsNoTimeForAnOriginalReportWithoutOne) {
    record_->originalTime = {};
    Open();
    EXPECT_FALSE(IsShown(IDC_INTERP_ORIGINAL_DATE) || IsShown(IDC_INTERP_ORIGINAL_TIME));
    EXPECT_TRUE(IsShown(IDC_INTERP_REVIEW_DATE) && IsShown(IDC_INTERP_CONFIRM_DATE));
}

// A report that was only looked at is as it was to its last byte, whatever its times are.
TEST_F(Pane, LookingChangesNothing) {
    for (std::uint8_t state = 0; state <= 3; ++state) {
        for (const bool timed : {true, false}) {
            MakeConfirmed();
            record_->reportState = state;
            if (!timed) {
                record_->originalTime = record_->overreadTime = record_->confirmedTime = {};
            }
            record_->modified = 0;
            const KxTestRecord before = *record_;
            Open();
            SendMessageA(pane_, WM_COMMAND, MAKEWPARAM(IDC_INTERP_STATEMENT, EN_KILLFOCUS), 0);
            EXPECT_EQ(changes_, 1);
            Close();
            EXPECT_EQ(changes_, 2) << "the end saves once more";
            EXPECT_EQ(std::memcmp(static_cast<KxTestRecord*>(record_.get()), &before, sizeof before), 0)
                << "state " << int{state} << (timed ? "" : " without times");
        }
    }
}

TEST_F(Pane, TypingMakesItOverread) {
    record_->modified = 0;
    Open();
    TypeName(IDC_INTERP_REVIEWER, "L");
    SendMessageA(kx::test::Item(pane_, IDC_INTERP_REVIEWED), BM_SETCHECK, BST_UNCHECKED, 0);
    changes_ = 0;
    SendMessageA(Edit(), EM_SETSEL, 0, -1);
    Type("!");
    EXPECT_EQ(changes_, 1);
    EXPECT_TRUE(IsChecked(IDC_INTERP_REVIEWED));
    EXPECT_EQ(record_->ReportState(), static_cast<std::uint32_t>(KX_REPORT_OVERREAD));
    EXPECT_TRUE(record_->IsModified());
    EXPECT_EQ(Stored(), "!");
    EXPECT_STREQ(record_->OverreadBy(), "L");
    EXPECT_TRUE(IsNow(record_->OverreadTime()));
    EXPECT_STREQ(record_->ConfirmedBy(), "");
}

TEST_F(Pane, PickedNamesTakeTheStages) {
    Open();
    Pick(IDC_INTERP_REVIEWER, "Anna M. Nicol\xF2");
    EXPECT_EQ(changes_, 1);
    EXPECT_TRUE(IsChecked(IDC_INTERP_REVIEWED));
    EXPECT_TRUE(record_->IsOverread());
    EXPECT_STREQ(record_->OverreadBy(), "Anna M. Nicol\xF2");
    EXPECT_EQ(Stored(), "Ritmo sinusale.");
    const DateTime reviewed = record_->OverreadTime();

    SetPicker(IDC_INTERP_CONFIRM_DATE, DateTime(2020, 2, 29, 1, 2, 3));
    SetPicker(IDC_INTERP_CONFIRM_TIME, DateTime(1999, 1, 1, 23, 59, 58));
    EXPECT_TRUE(record_->IsConfirmed());
    EXPECT_TRUE(ShowsTime(record_->ConfirmedTime(), DateTime(2020, 2, 29, 23, 59, 58)));
    SetWindowTextA(GetWindow(kx::test::Item(pane_, IDC_INTERP_REVIEWER), GW_CHILD),
                   "Lo\xEF"
                   "c G. Bassi");
    Pick(IDC_INTERP_PHYSICIAN, "Giosu\xE8 L. D'Andrea, Cardiologo");
    EXPECT_TRUE(record_->IsConfirmed());
    // As much as the record keeps of a name.
    EXPECT_STREQ(record_->ConfirmedBy(), "Giosu\xE8 L. D'Andrea, Cardiologo");
    EXPECT_STREQ(record_->OverreadBy(),
                 "Lo\xEF"
                 "c G. Bassi")
        << "a confirmed report keeps its reviewer";
    EXPECT_TRUE(IsSame(record_->OverreadTime(), reviewed));
}

TEST_F(Pane, TypedNamesTakeTheStages) {
    Open();
    TypeName(IDC_INTERP_PHYSICIAN, "Dott. Zo\xEB Rossi");
    EXPECT_TRUE(IsChecked(IDC_INTERP_CONFIRMED));
    EXPECT_FALSE(IsChecked(IDC_INTERP_REVIEWED));
    EXPECT_STREQ(record_->ConfirmedBy(), "Dott. Zo\xEB Rossi");
    EXPECT_STREQ(record_->OverreadBy(), "");
    EXPECT_GE(changes_, 15) << "each character is in the record at once";
}

TEST_F(Pane, ReviewTimeTakesTheReview) {
    Open();
    SetPicker(IDC_INTERP_REVIEW_DATE, DateTime(2012, 12, 31, 6, 7, 8));
    EXPECT_TRUE(record_->IsOverread());
    const DateTime time = record_->OverreadTime();
    EXPECT_EQ(time.Year() * 10000 + time.Month() * 100 + time.Day(), 20121231);
    EXPECT_EQ(time.Hour(), PickerTime(IDC_INTERP_REVIEW_TIME).Hour()) << "not the date picker's own";
}

TEST_F(Pane, ABoxIsWrittenWithTheNextSave) {
    Open();
    Click(IDC_INTERP_CONFIRMED);
    EXPECT_TRUE(IsChecked(IDC_INTERP_CONFIRMED));
    EXPECT_TRUE(record_->IsOriginal());
    SendMessageA(pane_, WM_COMMAND, MAKEWPARAM(IDC_INTERP_STATEMENT, EN_KILLFOCUS), 0);
    EXPECT_TRUE(record_->IsConfirmed());
}

TEST_F(Pane, AConfirmationCanBeTakenBack) {
    MakeConfirmed();
    Open();
    Click(IDC_INTERP_CONFIRMED);
    Type("* ");
    EXPECT_TRUE(record_->IsOverread());
    EXPECT_EQ(Stored(), "* Confermato.");
}

// A picker cannot be without a date: what it shows of a stage without a time is the time, once the user has
// done anything to the report.
TEST_F(Pane, StoresTheTimeThatIsShown) {
    MakeConfirmed();
    record_->overreadTime = record_->confirmedTime = {};
    Open();
    Click(IDC_INTERP_CONFIRMED);
    SendMessageA(pane_, WM_COMMAND, MAKEWPARAM(IDC_INTERP_STATEMENT, EN_KILLFOCUS), 0);
    EXPECT_TRUE(record_->IsOverread());
    EXPECT_TRUE(IsNow(record_->OverreadTime()));
    EXPECT_TRUE(ShowsTime(PickerTime(IDC_INTERP_REVIEW_TIME), record_->OverreadTime()));
    Close();

    MakeConfirmed();
    record_->confirmedTime = {};
    Open();
    Type("x");
    EXPECT_TRUE(IsNow(record_->ConfirmedTime()));
    EXPECT_TRUE(IsSame(record_->OverreadTime(), kReviewed));
}

TEST_F(Pane, ShowsTheNameThatIsStored) {
    answers_.physicians = [](std::uint32_t, kx::PhysicianRecord* records, std::uint32_t) {
        records[0] = Physician("Giosu\xE8 Maria", "L.", "D'Andrea", "Specialista in cardiologia");
        return 1u;
    };
    Open();
    Pick(IDC_INTERP_PHYSICIAN, "Giosu\xE8 Maria L. D'Andrea, Specialista in cardiologia");
    Pump();
    EXPECT_STREQ(record_->ConfirmedBy(), "Giosu\xE8 Maria L. D'Andrea, Specialista ");
    EXPECT_EQ(Text(IDC_INTERP_PHYSICIAN), record_->ConfirmedBy());
    SetWindowTextA(GetWindow(kx::test::Item(pane_, IDC_INTERP_PHYSICIAN), GW_CHILD), "");
    TypeName(IDC_INTERP_PHYSICIAN, std::string(60, 'n').c_str());
    EXPECT_EQ(record_->ConfirmedBy(), std::string(38, 'n'));
    EXPECT_EQ(Text(IDC_INTERP_PHYSICIAN), std::string(38, 'n'));
}

TEST_F(Pane, SaysWhatItsIconsAreFor) {
    Open();
    HWND tips = nullptr;
    while ((tips = FindWindowExA(nullptr, tips, TOOLTIPS_CLASSA, nullptr)) != nullptr &&
           GetWindowThreadProcessId(tips, nullptr) != GetCurrentThreadId()) {
    }
    for (const std::uint32_t id :
         {IDC_INTERP_INSERT_LIBRARY_ENTRY, IDC_INTERP_INSERT_AUTOMATIC, IDC_INTERP_DICTIONARY}) {
        char text[256] = {};
        TTTOOLINFOA tool{};
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        tool.hwnd = pane_;
        tool.uId = reinterpret_cast<UINT_PTR>(kx::test::Item(pane_, id));
        tool.lpszText = text;
        SendMessageA(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
        EXPECT_GT(std::strlen(text), 20u) << id;
    }
    Close();
    EXPECT_FALSE(IsWindow(tips));
}

TEST_F(Pane, ShowsListsAsTheyAreReported) {
    const std::string full(sizeof(kx::TechnicianRecord::lastName), 'W');
    const struct {
        std::uint32_t reported;
        std::size_t shown;
    } rows[] = {{0, 0}, {1, 1}, {1024, 1024}, {5000, 1024}, {0xFFFFFFFF, 1024}};
    for (const auto& row : rows) {
        answers_.technicians = [&](kx::TechnicianRecord* records, std::uint32_t capacity) {
            EXPECT_EQ(capacity, 1024u);
            for (std::uint32_t i = 0; i < std::min(row.reported, capacity); ++i) {
                records[i] = Technician(full.c_str(), "1234", full.c_str());
            }
            return row.reported;
        };
        Open();
        const std::vector<std::string> names = ListOf(IDC_INTERP_REVIEWER);
        EXPECT_EQ(names.size(), row.shown) << row.reported;
        if (!names.empty()) {
            EXPECT_EQ(names.front(), full + " 1234 " + full) << "fields without terminator";
        }
        Close();
    }
    // What was counted and not written has no name.
    answers_.technicians = [](kx::TechnicianRecord*, std::uint32_t) { return 700u; };
    Open();
    EXPECT_THAT(ListOf(IDC_INTERP_REVIEWER), IsEmpty());
}

TEST_F(Pane, WorksWithoutTheDataBase) {
    for (const SuiteModule module : {SuiteModule::kMissing, SuiteModule::kOutdated}) {
        LayModule("kxdb.dll", module);
        ASSERT_NE(Open(), nullptr);
        EXPECT_THAT(Reports(),
                    ElementsAre("LOGMEMORYERROR \"interp\" 1235", "LOGMEMORYERROR \"interp\" 1263"));
        EXPECT_THAT(ListOf(IDC_INTERP_REVIEWER), IsEmpty());
        TypeName(IDC_INTERP_REVIEWER, "Elena");
        EXPECT_STREQ(record_->OverreadBy(), "Elena");
        Close();
        record_->SetOverreadBy("");
    }
}

TEST_F(Pane, NamesTheSourceOfTheInterpretation) {
    constexpr char kKey[] = "Software\\Vardessa\\Halcyra OEM";
    const struct {
        const char* name;
        std::function<void(kx::RegistryKey&)> set;
        const char* shown;
    } rows[] = {
        {"no values", [](kx::RegistryKey&) {}, "Halcyra (" KX_VERSION_TEXT ")"},
        {"disabled", [](kx::RegistryKey& key) { key.SetDword("enable", 0); }, "Halcyra (" KX_VERSION_TEXT ")"},
        {"not a number", [](kx::RegistryKey& key) { key.SetString("enable", "1"); }, "Halcyra (" KX_VERSION_TEXT ")"},
        {"without a name", [](kx::RegistryKey& key) { key.SetDword("enable", 1); }, ""},
        {"named",
         [](kx::RegistryKey& key) {
             key.SetDword("enable", 7);
             key.SetString("ProductName", "Cardio & C. Qualit\xE0");
         },
         "Cardio & C. Qualit\xE0"},
    };
    RegDeleteKeyA(HKEY_CURRENT_USER, kKey);
    Open();
    EXPECT_EQ(Text(IDC_INTERP_AUTOMATIC_SOURCE), "Halcyra (" KX_VERSION_TEXT ")");
    Close();
    HKEY created = nullptr;
    EXPECT_NE(RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &created), ERROR_SUCCESS)
        << "looking makes no key";
    for (const auto& row : rows) {
        {
            kx::RegistryKey key(kKey);
            row.set(key);
        }
        Open();
        EXPECT_EQ(Text(IDC_INTERP_AUTOMATIC_SOURCE), row.shown) << row.name;
        Close();
        RegDeleteKeyA(HKEY_CURRENT_USER, kKey);
    }
}

// What the parent does while it is told may be the end of the pane.
TEST_F(Pane, MayBeDestroyedWhileItTells) {
    const struct {
        const char* name;
        std::function<void()> act;
    } rows[] = {
        {"typing", [this] { SendMessageA(Edit(), WM_CHAR, 'x', 1); }},
        {"a name",
         [this] {
             Pick(IDC_INTERP_REVIEWER,
                  "Lo\xEF"
                  "c G. Bassi");
         }},
        {"a time", [this] { SetPicker(IDC_INTERP_CONFIRM_TIME, kConfirmed); }},
        {"the focus", [] { SetFocus(nullptr); }},
    };
    for (const auto& row : rows) {
        Open();
        onChange_ = [this] {
            onChange_ = nullptr;
            DestroyWindow(pane_);
        };
        row.act();
        Pump();
        EXPECT_FALSE(IsWindow(pane_)) << row.name;
        onChange_ = nullptr;
    }
}

TEST_F(Pane, EndsByNoKey) {
    Open();
    SendMessageA(pane_, WM_CLOSE, 0, 0);
    Pump();
    Press(VK_ESCAPE);
    SendMessageA(pane_, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(IsWindowVisible(pane_));
    SendMessageA(pane_, WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(IsWindowVisible(pane_));
}

TEST_F(Pane, PutsTheFocusIntoTheStatement) {
    Open();
    SetFocus(kx::test::Item(pane_, IDC_INTERP_REVIEWED));
    SendMessageA(pane_, WM_USER, 99, 0);
    EXPECT_NE(GetFocus(), Edit());
    PostMessageA(pane_, WM_USER, 100, 0);
    Pump();
    EXPECT_EQ(GetFocus(), Edit());
}

TEST_F(Pane, LeavesNothingBehind) {
    MakeConfirmed();
    kx::test::GuiObjects before{};
    for (int i = 0; i < 320; ++i) {
        if (i == 20) {
            before = kx::test::CountGuiObjects();
        }
        ASSERT_NE(Open(), nullptr) << i;
        if (i % 8 == 0) {
            SendMessageA(Edit(), EM_SETSEL, 0, -1);
            Type("ri");
        }
        Close();
    }
    const kx::test::GuiObjects after = kx::test::CountGuiObjects();
    EXPECT_LE(after.gdi, before.gdi + 8);
    EXPECT_LE(after.user, before.user + 8);
}

}  // namespace
