// The interpretation pane: building it and showing the record.
#include "dialogs/interpretation/interp.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <new>

#include "dialogs/interpretation/automatic_interpretation.h"
#include "dialogs/interpretation/staff_names.h"
#include "dialogs/resources/interpretation_ids.h"
#include "dialogs/resources/picture_ids.h"
#include "dialogs/statements/interp_report.h"
#include "lib/modules/version_info.h"
#include "lib/windows/common_controls.h"
#include "lib/windows/device_context.h"
#include "lib/windows/gdi_handles.h"
#include "lib/windows/registry_key.h"
#include "lib/windows/subclassed_control.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoRecordLine = 1185;
constexpr std::uint32_t kNotBuiltLine = 1292;
constexpr StaffListLines kReviewerLines{1235, 1237};
constexpr StaffListLines kPhysicianLines{1263, 1265};

constexpr char kSuiteKey[] = "Software\\Vardessa\\Halcyra OEM";
constexpr std::uint32_t kSourceSize = 256;
constexpr int kIconSide = 16;  // pixels

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

bool Exists(const Window* control) {
    return control != nullptr && control->Handle() != nullptr;
}

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

InterpretationDialog::InterpretationDialog(const DialogLibrary& library, Window* parent, TestRecord* test,
                                           const void* hostOptions, SystemServices* services)
    : Dialog(library, parent, nullptr, services), library_(library), test_(test), hostOptions_(hostOptions) {
    if (test_ == nullptr) {
        Reports().LOGMEMORYERROR(kInterpSource, kNoRecordLine);
        return;
    }
    UseCommonControls();  // the template has pickers and a tree
    CreateModeless(IDD_INTERPRETATION, this);
}

bool InterpretationDialog::OnInitDialog() {
    try {
        if (Build()) {
            filled_ = true;
            Show();
            return true;
        }
    } catch (...) {
        // Reported below, as every other failure of this step.
    }
    Reports().LOGMEMORYERROR(kInterpSource, kNotBuiltLine);
    // The window stays, without this object: what it holds of the controls would be lost.
    Release();
    return false;
}

bool InterpretationDialog::Build() {
    if (!AdoptControls()) {
        return false;
    }
    layout_.emplace(Handle(), kGrowth, std::size(kGrowth));
    ShowOriginal();
    AddNames(ListTechnicians(kReviewerLines, Reports()), *review_.names);
    ShowReview();
    AddNames(ListPhysicians(kPhysicianLines, Reports()), *confirmation_.names);
    ShowConfirmation();

    statement_->SendMsg(EM_LIMITTEXT, kStatementSize - 1);
    statement_->SetText(test_->InterpretationText(statementBuffer_, sizeof statementBuffer_));
    completion_ = std::make_unique<StatementCompletion>(library_, this, *statement_, test_->TestType(),
                                                        StatementCompletion::Source::kStatements, Reports());
    ShowSource();
    automatic_->SetText(ProduceAutomaticInterpretation(library_, *test_, hostOptions_, Reports()).c_str());
    ShowIcons();
    return true;
}

bool InterpretationDialog::AdoptControls() {
    originalBy_ = std::make_unique<EditBox>(this, IDC_INTERP_ORIGINAL_BY);
    originalTime_.emplace(this, IDC_INTERP_ORIGINAL_DATE, IDC_INTERP_ORIGINAL_TIME);
    AdoptStage(review_, IDC_INTERP_REVIEWED, IDC_INTERP_REVIEWER, IDC_INTERP_REVIEW_DATE,
               IDC_INTERP_REVIEW_TIME);
    AdoptStage(confirmation_, IDC_INTERP_CONFIRMED, IDC_INTERP_PHYSICIAN, IDC_INTERP_CONFIRM_DATE,
               IDC_INTERP_CONFIRM_TIME);
    statement_ = std::make_unique<EditBox>(this, IDC_INTERP_STATEMENT);
    tree_ = std::make_unique<CommentLibraryTree>(library_, this, IDC_INTERP_LIBRARY, test_->TestType(),
                                                 Reports());
    insertLibraryEntry_ = new CheckBox(this, IDC_INTERP_INSERT_LIBRARY_ENTRY);
    dictionary_ = new CheckBox(this, IDC_INTERP_DICTIONARY);
    automatic_ = std::make_unique<EditBox>(this, IDC_INTERP_AUTOMATIC);
    source_.emplace(this, IDC_INTERP_AUTOMATIC_SOURCE);
    insertAutomatic_ = new CheckBox(this, IDC_INTERP_INSERT_AUTOMATIC);
    return Exists(originalBy_.get()) && originalTime_->IsComplete() && review_.IsComplete() &&
           confirmation_.IsComplete() && Exists(statement_.get()) && Exists(tree_.get()) &&
           Exists(insertLibraryEntry_) && Exists(dictionary_) && Exists(automatic_.get()) &&
           Exists(&*source_) && Exists(insertAutomatic_);
}

void InterpretationDialog::AdoptStage(Stage& stage, std::uint32_t box, std::uint32_t names,
                                      std::uint32_t date, std::uint32_t time) {
    stage.taken = new CheckBox(this, box);
    stage.names = new ComboBox(library_, this, names);
    stage.time.emplace(this, date, time);
}

void InterpretationDialog::ShowOriginal() {
    originalBy_->SetText(test_->OriginalBy());
    originalTime_->Show(test_->OriginalTime());
    // A picker cannot be without a date: it would show the present moment as that of a report without a time.
    if (!test_->OriginalTime().IsValid()) {
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

void InterpretationDialog::ShowReview() {
    const bool reviewed = test_->IsOverread() || test_->IsConfirmed();
    if (reviewed) {
        originalTime_->Hide();
        review_.taken->Enable(false);  // a stage that was reached is not given up
    }
    review_.Show(reviewed, test_->OverreadBy(), test_->OverreadTime());
    review_.names->SendMsg(CB_LIMITTEXT, sizeof test_->overreadBy - 1);
}

void InterpretationDialog::ShowConfirmation() {
    confirmation_.Show(test_->IsConfirmed(), test_->ConfirmedBy(), test_->ConfirmedTime());
    confirmation_.names->SendMsg(CB_LIMITTEXT, sizeof test_->confirmedBy - 1);
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
        {insertLibraryEntry_, IDI_BUTTON_INSERT_LIBRARY_ENTRY},
        {insertAutomatic_, IDI_BUTTON_INSERT_AUTOMATIC},
        {dictionary_, IDI_BUTTON_DICTIONARY},
    };
    toolTips_.emplace(Module(), *this);
    for (const auto& row : rows) {
        toolTips_->Add(*row.button);
        row.button->SetIcon(UniqueIcon(static_cast<HICON>(
            Library()->instance.LoadImageById(row.icon, IMAGE_ICON, kIconSide, kIconSide, LR_DEFAULTCOLOR))));
    }
}

bool InterpretationDialog::GetToolTipText(UINT_PTR controlId, HINSTANCE& module, const char*& text) {
    module = Module();
    text = MAKEINTRESOURCEA(GetDlgCtrlID(reinterpret_cast<HWND>(controlId)));
    return true;
}

void InterpretationDialog::Release() {
    filled_ = false;
    toolTips_.reset();
    for (Stage* stage : {&review_, &confirmation_}) {
        ReleaseSubclassed(stage->taken);
        ReleaseSubclassed(stage->names);
        stage->time.reset();
    }
    for (CheckBox** button : {&insertLibraryEntry_, &dictionary_, &insertAutomatic_}) {
        ReleaseSubclassed(*button);
    }
    originalBy_.reset();
    originalTime_.reset();
    completion_.reset();  // before the edit that it serves
    statement_.reset();
    tree_.reset();
    automatic_.reset();
    source_.reset();
    layout_.reset();
}

void InterpretationDialog::OnDestroy() {
    // The controls are destroyed after their dialog and still hold what the user has entered.
    Save();
    Release();
    Dialog::OnDestroy();
    delete this;
}

}  // namespace kx
