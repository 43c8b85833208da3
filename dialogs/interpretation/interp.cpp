// The interpretation pane: building it and showing the record.
#include "dialogs/interpretation/interp.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "dialogs/interpretation/automatic_interpretation.h"
#include "dialogs/interpretation/staff_names.h"
#include "dialogs/resources/interpretation_ids.h"
#include "dialogs/resources/picture_ids.h"
#include "dialogs/statements/interp_report.h"
#include "lib/modules/version_info.h"
#include "lib/windows/common_controls.h"
#include "lib/windows/device_context.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/held_control.h"
#include "lib/windows/registry_key.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoWindowLine = 1185;
constexpr std::uint32_t kNotBuiltLine = 1292;
constexpr StaffListLines kReviewerLines{1235, 1237};
constexpr StaffListLines kPhysicianLines{1263, 1265};

constexpr char kSuiteKey[] = "Software\\Vardessa\\Halcyra OEM";
constexpr std::uint32_t kSourceSize = 256;

constexpr GrowthRow kGrowth[] = {
    {IDC_INTERP_STATEMENT, 0, 0, 60, 100},
    {IDC_INTERP_INSERT_AUTOMATIC, 60, 0, 60, 0},
    {IDC_INTERP_AUTOMATIC_SOURCE, 60, 0, 100, 0},
    {IDC_INTERP_AUTOMATIC, 60, 0, 100, 40},
    {IDC_INTERP_INSERT_LIBRARY_ENTRY, 60, 40, 60, 40},
    {IDC_INTERP_DICTIONARY, 60, 40, 60, 40},
    {IDC_INTERP_LIBRARY_TITLE, 60, 40, 100, 40},
    {IDC_INTERP_LIBRARY, 60, 40, 100, 100},
};

// Adds the names and makes the list wide enough for them: a title behind a name is as long as the name.
template <class Record>
void AddNames(const StaffList<Record>& staff, ComboBox& names) {
    WindowContext context(names.Handle());
    const GdiSelection font(context.Handle(), names.GetFont());
    LONG widest = 0;
    char name[256];
    for (std::uint32_t i = 0; i < staff.count; ++i) {
        if (!IsNameless(staff.records[i])) {
            const std::size_t length = DisplayName(staff.records[i], name, sizeof name);
            widest = std::max(widest, context.TextExtent(name, static_cast<int>(length)).cx);
            names.AddString(name);
        }
    }
    names.SendMsg(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widest + 2 * GetSystemMetrics(SM_CXVSCROLL)));
}

}  // namespace

struct InterpretationDialog::Shown {
    explicit Shown(TestRecord& test)
        : testType(test.TestType()),
          isOverread(test.IsOverread()),
          isConfirmed(test.IsConfirmed()),
          originalTime(test.OriginalTime()),
          overreadTime(test.OverreadTime()),
          confirmedTime(test.ConfirmedTime()),
          originalBy(test.OriginalBy()),
          overreadBy(test.OverreadBy()),
          confirmedBy(test.ConfirmedBy()) {}

    std::uint32_t testType;
    bool isOverread;
    bool isConfirmed;
    DateTime originalTime;
    DateTime overreadTime;
    DateTime confirmedTime;
    std::string originalBy;
    std::string overreadBy;
    std::string confirmedBy;
};

InterpretationDialog::InterpretationDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                                           const void* hostOptions, SystemServices* services)
    : Pane(library, parent, nullptr, services), library_(library), test_(test), hostOptions_(hostOptions) {}

void InterpretationDialog::Open() {
    if (test_ != nullptr) {
        UseCommonControls();  // the template has pickers and a tree
        CreateModeless(IDD_INTERPRETATION, this);
    }
    if (Handle() == nullptr) {
        Reports().LOGMEMORYERROR(kInterpSource, kNoWindowLine);
    }
}

bool InterpretationDialog::OnInitDialog() {
    try {
        Build();
        if (!HasEnded()) {
            filled_ = true;
            Show();
            return true;
        }
    } catch (...) {
        // Reported below, as every other failure of this step.
    }
    if (!HasEnded()) {
        Reports().LOGMEMORYERROR(kInterpSource, kNotBuiltLine);
    }
    return false;
}

void InterpretationDialog::Build() {
    const Shown shown(*test_);
    test_->InterpretationText(statementBuffer_, sizeof statementBuffer_);
    HoldControls(shown.testType);
    layout_.emplace(Handle(), kGrowth, std::size(kGrowth));
    ShowOriginal(shown);
    AddNames(ListTechnicians(kReviewerLines, Reports()), *review_.names);
    ShowReview(shown);
    AddNames(ListPhysicians(kPhysicianLines, Reports()), *confirmation_.names);
    ShowConfirmation(shown);

    statement_->SendMsg(EM_LIMITTEXT, kStatementSize - 1);
    statement_->SetText(statementBuffer_);
    completion_ = std::make_unique<StatementCompletion>(library_, *this, *statement_, shown.testType,
                                                        StatementCompletion::Source::kStatements, Reports());
    ShowSource();
    if (!HasEnded()) {
        automatic_->SetText(ProduceAutomaticInterpretation(*this, *test_, hostOptions_).c_str());
    }
    ShowIcons();
}

void InterpretationDialog::HoldControls(std::uint32_t testType) {
    Hold(originalBy_, this, IDC_INTERP_ORIGINAL_BY);
    Hold(originalTime_, this, IDC_INTERP_ORIGINAL_DATE, IDC_INTERP_ORIGINAL_TIME);
    HoldStage(review_, IDC_INTERP_REVIEWED, IDC_INTERP_REVIEWER, IDC_INTERP_REVIEW_DATE,
              IDC_INTERP_REVIEW_TIME);
    HoldStage(confirmation_, IDC_INTERP_CONFIRMED, IDC_INTERP_PHYSICIAN, IDC_INTERP_CONFIRM_DATE,
              IDC_INTERP_CONFIRM_TIME);
    Hold(statement_, this, IDC_INTERP_STATEMENT);
    Hold(tree_, library_, this, IDC_INTERP_LIBRARY, testType, Reports());
    Hold(insertLibraryEntry_, this, IDC_INTERP_INSERT_LIBRARY_ENTRY, kHeld);
    Hold(dictionary_, this, IDC_INTERP_DICTIONARY, kHeld);
    Hold(automatic_, this, IDC_INTERP_AUTOMATIC);
    Hold(source_, this, IDC_INTERP_AUTOMATIC_SOURCE);
    Hold(insertAutomatic_, this, IDC_INTERP_INSERT_AUTOMATIC, kHeld);
}

void InterpretationDialog::HoldStage(Stage& stage, std::uint32_t box, std::uint32_t names, std::uint32_t date,
                                     std::uint32_t time) {
    Hold(stage.taken, this, box, kHeld);
    Hold(stage.names, library_, this, names, kHeld);
    Hold(stage.time, this, date, time);
}

void InterpretationDialog::ShowOriginal(const Shown& shown) {
    originalBy_->SetText(shown.originalBy.c_str());
    originalTime_->Show(shown.originalTime);
    // A picker cannot be without a date: it would show the present moment as that of a report without a time.
    if (!shown.originalTime.IsValid()) {
        originalTime_->Hide();
    }
}

void InterpretationDialog::Stage::Show(bool isTaken, const char* name, const DateTime& reached) {
    wasTaken = isTaken;
    taken->SetChecked(isTaken);
    if (isTaken) {
        names->SetText(name);
    }
    time->Show(isTaken ? reached : DateTime());  // now
}

void InterpretationDialog::ShowReview(const Shown& shown) {
    const bool reviewed = shown.isOverread || shown.isConfirmed;
    if (reviewed) {
        originalTime_->Hide();
        review_.taken->Enable(false);  // a stage that was reached is not given up
    }
    review_.Show(reviewed, shown.overreadBy.c_str(), shown.overreadTime);
    review_.names->SendMsg(CB_LIMITTEXT, sizeof(KxTestRecord::overreadBy) - 1);
}

void InterpretationDialog::ShowConfirmation(const Shown& shown) {
    confirmation_.Show(shown.isConfirmed, shown.confirmedBy.c_str(), shown.confirmedTime);
    confirmation_.names->SendMsg(CB_LIMITTEXT, sizeof(KxTestRecord::confirmedBy) - 1);
}

// The suite can name itself as the source of the automatic interpretation.
void InterpretationDialog::ShowSource() {
    char text[kSourceSize] = {};
    const RegistryKey suite(HKEY_CURRENT_USER, kSuiteKey, RegistryKey::ReadOnly{});
    std::uint32_t enabled = 0;
    if (suite.GetDword("enable", &enabled) && enabled != 0) {
        suite.GetString("ProductName", text, sizeof text);
    } else {
        const VersionInfo version(Module());
        std::snprintf(text, sizeof text, "%s (%s)", version.ProductName(), version.FileVersion());
    }
    source_->SetText(text);
}

void InterpretationDialog::ShowIcons() {
    const struct {
        CheckBox* button;
        std::uint32_t icon;
    } rows[] = {
        {insertLibraryEntry_.get(), IDI_BUTTON_INSERT_LIBRARY_ENTRY},
        {insertAutomatic_.get(), IDI_BUTTON_INSERT_AUTOMATIC},
        {dictionary_.get(), IDI_BUTTON_DICTIONARY},
    };
    toolTips_.emplace(Module(), *this);
    const int side = GetSystemMetrics(SM_CXSMICON);  // grows with the screen's resolution, as the buttons do
    for (const auto& row : rows) {
        toolTips_->Add(*row.button);
        row.button->SetIcon(UniqueIcon(static_cast<HICON>(
            Library()->instance.LoadImageById(row.icon, IMAGE_ICON, side, side, LR_DEFAULTCOLOR))));
    }
}

bool InterpretationDialog::GetToolTipText(UINT_PTR controlId, HINSTANCE& module, const char*& text) {
    module = Module();
    text = MAKEINTRESOURCEA(GetDlgCtrlID(reinterpret_cast<HWND>(controlId)));
    return true;
}

void InterpretationDialog::OnEnd() {
    if (filled_) {
        completion_->Close();  // its popup belongs to the host's frame
        Save();
    }
}

}  // namespace kx
