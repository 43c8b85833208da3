// The stages of the report: what the pane shows of the record and when it writes into it.
#include <cstring>

#include "tests/windows/interpretation/interpretation_pane.h"

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// With hundredths, which no picker knows.
constexpr DateTime kOriginal(2013, 3, 5, 8, 15, 30, 12);
constexpr DateTime kReviewed(2013, 3, 6, 9, 45, 10, 34);
constexpr DateTime kConfirmed(2013, 3, 7, 17, 5, 59, 99);
constexpr char kLongName[] = "Giosu\xE8 Maria L. D'Andrea, Specialista in cardiologia";

bool IsSame(const DateTime& a, const DateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }
bool IsNow(const DateTime& time) {
    const std::int64_t age = DateTime().MillisecondsSince(time);
    return age >= -1000 && age < 60000;
}

class PaneTest : public InterpretationTest {
  protected:
    PaneTest() {
        suite_.On("TECH_LIST", [](auto a) {
            Address<TechnicianRecord>(a[0])[0] = Technician("Lo\xEF", "G.", "Bassi");
            Address<TechnicianRecord>(a[0])[1] = Technician("Anna", "M.", "Nicol\xF2");
            return 2u;
        });
        suite_.On("PHYS_LIST", [](auto a) {
            EXPECT_EQ(a[0], 0u);
            Address<PhysicianRecord>(a[1])[0] = Physician("Giosu\xE8 Maria", "L.", "D'Andrea", "Specialista in cardiologia");
            Address<PhysicianRecord>(a[1])[1] = Physician("Teresa", "A.", "Cant\xF9", "");
            return 2u;
        });
        record_->SetOriginalBy("Analisi automatica");
        record_->SetOriginalInterpretation(&kOriginal, "Ritmo sinusale.");
    }
    void MakeConfirmed() {
        record_->SetOverreadInterpretation(&kReviewed, "Riveduto.");
        record_->SetOverreadBy("Anna M. Nicol\xF2");
        record_->SetConfirmedInterpretation(&kConfirmed, "Confermato.");
        record_->SetConfirmedBy("Teresa A. Cant\xF9");
    }
    bool IsEnabled(std::uint32_t id) { return IsWindowEnabled(pane_->Item(id)) != FALSE; }
    bool IsShown(std::uint32_t id) { return IsWindowVisible(pane_->Item(id)) != FALSE; }
    // The one line of a combo box's edit field, and all of its list.
    std::string Names(std::uint32_t combo) {
        std::string names = pane_->Text(combo);
        for (WPARAM i = 0; i < static_cast<WPARAM>(SendMessageA(pane_->Item(combo), CB_GETCOUNT, 0, 0)); ++i) {
            char name[512] = {};
            SendMessageA(pane_->Item(combo), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(name));
            names += std::string("|") + name;
        }
        return names;
    }
    DateTime Picked(std::uint32_t id) {
        SYSTEMTIME system{};
        SendMessageA(pane_->Item(id), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&system));
        DateTime time = DateTime::None();
        time.SetFromSystemTime(system);
        return time;
    }
    // To the second.
    bool Shows(std::uint32_t id, const DateTime& time) {
        const std::int64_t ahead = Picked(id).MillisecondsSince(time);
        return ahead > -1000 && ahead < 1000;
    }
    void SetPicker(std::uint32_t id, const DateTime& time) {
        NMDATETIMECHANGE change{};
        time.ToSystemTime(change.st);
        change.nmhdr = {pane_->Item(id), id, static_cast<UINT>(DTN_DATETIMECHANGE)};
        SendMessageA(pane_->Item(id), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
        SendMessageA(pane_->Window(), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&change));
    }
};

TEST_F(PaneTest, ShowsTheStageOfTheReport) {
    for (const std::uint8_t state : {KX_REPORT_ORIGINAL, KX_REPORT_OVERREAD, KX_REPORT_CONFIRMED}) {
        SCOPED_TRACE(int{state});
        MakeConfirmed();
        record_->reportState = state;
        Open();
        const bool reviewed = state != KX_REPORT_ORIGINAL;
        const bool confirmed = state == KX_REPORT_CONFIRMED;
        EXPECT_EQ(pane_->Text(IDC_INTERP_ORIGINAL_BY), "Analisi automatica");
        EXPECT_EQ(IsShown(IDC_INTERP_ORIGINAL_DATE), !reviewed);
        EXPECT_EQ(IsShown(IDC_INTERP_ORIGINAL_TIME), !reviewed);
        EXPECT_TRUE(Shows(IDC_INTERP_ORIGINAL_TIME, kOriginal));
        EXPECT_EQ(pane_->IsChecked(IDC_INTERP_REVIEWED), reviewed);
        EXPECT_EQ(IsEnabled(IDC_INTERP_REVIEWED), !reviewed);
        EXPECT_EQ(pane_->IsChecked(IDC_INTERP_CONFIRMED), confirmed);
        EXPECT_TRUE(IsEnabled(IDC_INTERP_CONFIRMED));
        for (const std::uint32_t id : {IDC_INTERP_REVIEW_DATE, IDC_INTERP_REVIEW_TIME}) {
            EXPECT_TRUE(reviewed ? Shows(id, kReviewed) : IsNow(Picked(id)));
        }
        for (const std::uint32_t id : {IDC_INTERP_CONFIRM_DATE, IDC_INTERP_CONFIRM_TIME}) {
            EXPECT_TRUE(confirmed ? Shows(id, kConfirmed) : IsNow(Picked(id)));
        }
        EXPECT_EQ(Names(IDC_INTERP_REVIEWER), std::string(reviewed ? "Anna M. Nicol\xF2" : "") + "|Anna M. Nicol\xF2|Lo\xEF G. Bassi");
        EXPECT_EQ(Names(IDC_INTERP_PHYSICIAN),
                  std::string(confirmed ? "Teresa A. Cant\xF9" : "") + "|" + kLongName + "|Teresa A. Cant\xF9");
        EXPECT_EQ(Statement(), "Confermato.");
        // The dialog manager selects the text of an edit that it gives the focus; the next key would replace it.
        EXPECT_EQ(HIWORD(SendMessageA(Edit(), EM_GETSEL, 0, 0)), LOWORD(SendMessageA(Edit(), EM_GETSEL, 0, 0)));
        EXPECT_THAT(suite_.TakeReports(), IsEmpty());
        Close();
    }
    record_->originalTime = {};
    record_->reportState = KX_REPORT_ORIGINAL;
    Open();
    EXPECT_FALSE(IsShown(IDC_INTERP_ORIGINAL_DATE));
}

// A report that was only looked at is as it was to its last byte, whatever its times are.
TEST_F(PaneTest, LookingChangesNothing) {
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
            pane_->Notify(IDC_INTERP_STATEMENT, EN_KILLFOCUS);
            EXPECT_EQ(host_.notices, 1);
            Close();
            EXPECT_EQ(host_.notices, 2) << "the end saves once more";
            EXPECT_EQ(std::memcmp(static_cast<KxTestRecord*>(record_.get()), &before, sizeof before), 0) << int{state} << timed;
        }
    }
}

TEST_F(PaneTest, TypingMakesItOverread) {
    record_->modified = 0;
    Open();
    Select(0, -1);
    Type("!");
    EXPECT_EQ(host_.notices, 1);
    EXPECT_TRUE(pane_->IsChecked(IDC_INTERP_REVIEWED));
    EXPECT_TRUE(record_->IsOverread() && record_->IsModified());
    EXPECT_EQ(Stored(), "!");
    EXPECT_STREQ(record_->OverreadBy(), "");
    EXPECT_TRUE(IsNow(record_->OverreadTime()));
}

TEST_F(PaneTest, NamesAndTimesTakeTheirStages) {
    Open();
    pane_->Type(IDC_INTERP_REVIEWER, "Anna M. Nicol\xF2");
    EXPECT_TRUE(record_->IsOverread());
    EXPECT_STREQ(record_->OverreadBy(), "Anna M. Nicol\xF2");
    EXPECT_EQ(Stored(), "Ritmo sinusale.");
    SetPicker(IDC_INTERP_REVIEW_DATE, DateTime(2012, 12, 31, 6, 7, 8));
    const DateTime reviewed = record_->OverreadTime();
    EXPECT_EQ(reviewed.Year() * 10000 + reviewed.Month() * 100 + reviewed.Day(), 20121231);
    EXPECT_EQ(reviewed.Hour(), Picked(IDC_INTERP_REVIEW_TIME).Hour()) << "not the date picker's own";

    SetPicker(IDC_INTERP_CONFIRM_DATE, DateTime(2020, 2, 29, 1, 2, 3));
    SetPicker(IDC_INTERP_CONFIRM_TIME, DateTime(1999, 1, 1, 23, 59, 58));
    EXPECT_TRUE(record_->IsConfirmed());
    EXPECT_TRUE(IsSame(DateTime(2020, 2, 29, 23, 59, 58), record_->ConfirmedTime()));
    pane_->Type(IDC_INTERP_PHYSICIAN, "Dott. Zo\xEB");
    EXPECT_STREQ(record_->ConfirmedBy(), "Dott. Zo\xEB");
    EXPECT_STREQ(record_->OverreadBy(), "Anna M. Nicol\xF2") << "a confirmed report keeps its reviewer";
    EXPECT_TRUE(IsSame(record_->OverreadTime(), reviewed));
}

// A record holds less of a name than a list may offer.
TEST_F(PaneTest, ShowsTheNameThatIsStored) {
    Open();
    // The list tells the choice before the edit field shows it.
    SendMessageA(pane_->Item(IDC_INTERP_PHYSICIAN), CB_SETCURSEL, 0, 0);
    SetWindowTextA(GetWindow(pane_->Item(IDC_INTERP_PHYSICIAN), GW_CHILD), "");
    pane_->Notify(IDC_INTERP_PHYSICIAN, CBN_SELCHANGE);
    Pump();
    EXPECT_EQ(record_->ConfirmedBy(), std::string(kLongName).substr(0, 38));
    EXPECT_EQ(pane_->Text(IDC_INTERP_PHYSICIAN), record_->ConfirmedBy());
    SetWindowTextA(GetWindow(pane_->Item(IDC_INTERP_PHYSICIAN), GW_CHILD), "");
    pane_->Type(IDC_INTERP_PHYSICIAN, std::string(60, 'n'));
    EXPECT_EQ(record_->ConfirmedBy(), std::string(38, 'n'));
    EXPECT_EQ(pane_->Text(IDC_INTERP_PHYSICIAN), std::string(38, 'n'));
}

// A picker cannot be without a date: what it shows of a stage without a time is the time, once the report is edited.
TEST_F(PaneTest, StoresTheTimeThatIsShown) {
    MakeConfirmed();
    record_->overreadTime = record_->confirmedTime = {};
    Open();
    pane_->Click(IDC_INTERP_CONFIRMED);
    EXPECT_TRUE(record_->IsConfirmed()) << "a box is written with the next save";
    pane_->Notify(IDC_INTERP_STATEMENT, EN_KILLFOCUS);
    EXPECT_TRUE(record_->IsOverread()) << "a confirmation can be taken back";
    EXPECT_TRUE(Shows(IDC_INTERP_REVIEW_TIME, record_->OverreadTime()));
    Close();

    MakeConfirmed();
    record_->confirmedTime = {};
    Open();
    Type("x");
    EXPECT_TRUE(IsNow(record_->ConfirmedTime()));
    EXPECT_TRUE(IsSame(record_->OverreadTime(), kReviewed));
}

TEST_F(PaneTest, ListsWhatTheDataBaseHasWritten) {
    const std::string full(sizeof(TechnicianRecord::lastName), 'W');
    const struct {
        std::uint32_t reported;
        std::uint32_t written;
        int shown;
    } rows[] = {{0, 0, 0}, {1, 1, 1}, {5000, 1024, 1024}, {0xFFFFFFFF, 1024, 1024}, {700, 0, 0}};
    for (const auto& row : rows) {
        suite_.On("TECH_LIST", [&](auto a) {
            EXPECT_EQ(a[1], 1024u);
            std::fill_n(Address<TechnicianRecord>(a[0]), row.written, Technician(full.c_str(), "1234", full.c_str()));
            return row.reported;
        });
        Open();
        EXPECT_EQ(SendMessageA(pane_->Item(IDC_INTERP_REVIEWER), CB_GETCOUNT, 0, 0), row.shown) << row.reported;
        Close();
    }
    suite_.Lay("kxdb.dll", Sibling::kMissing);
    Open();
    EXPECT_THAT(suite_.TakeReports(), ElementsAre("LOGMEMORYERROR \"interp\" 1235", "LOGMEMORYERROR \"interp\" 1263"));
    pane_->Type(IDC_INTERP_REVIEWER, "Elena");
    EXPECT_STREQ(record_->OverreadBy(), "Elena");
}

}  // namespace
}  // namespace kx::test
