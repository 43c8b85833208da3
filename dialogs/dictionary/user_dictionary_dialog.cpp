#include "dialogs/dictionary/user_dictionary_dialog.h"

#include <cstring>

#include "dialogs/interpretation/interp_report.h"
#include "dialogs/resources/dictionary_ids.h"
#include "dialogs/statements/statement_files.h"
#include "lib/windows/subclassed_control.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoWriteLine = 337;
constexpr std::uint32_t kNoButtonLine = 489;
constexpr std::uint32_t kNoControlLine = 497;
constexpr std::uint32_t kNoSectionLine = 589;
constexpr char kNotWritten[] = "Could not write dictionary file";

// The buttons, in pixels.
constexpr int kRows = 32;
constexpr int kRowHeight = 18;
constexpr int kFirstRowY = 48;
constexpr int kMargin = 7;  // left of each column, and below the last row
constexpr int kFontHeight = 12;
constexpr int kFontWeight = 500;

// While the dialog writes into its own edits.
class FillingScope {
  public:
    explicit FillingScope(bool& filling) : filling_(filling) { filling_ = true; }
    ~FillingScope() { filling_ = false; }
    FillingScope(const FillingScope&) = delete;
    FillingScope& operator=(const FillingScope&) = delete;

  private:
    bool& filling_;
};

RECT ButtonArea(std::size_t entry, int editWidth) {
    const int column = static_cast<int>(entry) / kRows;
    const int row = static_cast<int>(entry) % kRows;
    const int x = (editWidth / 2 + kMargin) * column + kMargin;
    const int y = kRowHeight * row + kFirstRowY;
    return {x, y, x + editWidth / 2, y + kRowHeight};
}

bool FileExists(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MoveUp(HWND window, HWND control, int by) {
    RECT area{};
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
    SetWindowPos(control, nullptr, area.left, area.top - by, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

UserDictionaryDialog::UserDictionaryDialog(const LibraryModule& library, Window* owner, const char* path,
                                           SystemServices* services)
    : Dialog(library, owner, nullptr, services),
      path_(path),
      fileRead_(ReadStatementFile(path, dictionary_, &Reports())) {}

bool UserDictionaryDialog::Run() {
    return RunModal(IDD_USER_DICTIONARY, this) == 1;
}

// ---- building

bool UserDictionaryDialog::OnInitDialog() {
    if (!WrapControls()) {
        ReleaseControls();
        Reports().LOGMEMORYERROR(kInterpSource, kNoControlLine);
        return false;
    }
    if (!MakeButtons()) {
        ReleaseControls();
        Reports().LOGMEMORYERROR(kInterpSource, kNoButtonLine);
        return false;
    }
    FitHeight();
    FillSections();
    ShowSection();
    return true;
}

bool UserDictionaryDialog::WrapControls() {
    sections_ = new ComboBox(*Library(), this, IDC_DICT_SECTION);
    text_ = std::make_unique<EditBox>(this, IDC_DICT_TEXT);
    code_ = std::make_unique<EditBox>(this, IDC_DICT_CODE);
    if (sections_->Handle() == nullptr || text_->Handle() == nullptr || code_->Handle() == nullptr) {
        return false;
    }
    // What would not be kept cannot be typed.
    text_->SendMsg(EM_LIMITTEXT, StatementLibrary::kTextSize - 1);
    code_->SendMsg(EM_LIMITTEXT, StatementLibrary::kCodeSize - 1);
    return true;
}

bool UserDictionaryDialog::MakeButtons() {
    buttonFont_.reset(CreateFontA(kFontHeight, 0, 0, 0, kFontWeight, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                  OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                  VARIABLE_PITCH | FF_SWISS, "MS Shell Dlg"));
    RECT edit{};
    text_->GetClientRect(edit);
    const HFONT font = text_->GetFont();
    HWND previous = code_->Handle();
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const auto id = kFirstButtonId + static_cast<std::uint32_t>(i);
        buttons_[i] = std::make_unique<EntryButton>(
            Library()->instance, this, id, ButtonArea(i, static_cast<int>(edit.right)), i == 0, font);
        const HWND button = buttons_[i]->Handle();
        if (button == nullptr) {
            return false;
        }
        // Tab goes from the edits to the statements before it comes to OK.
        SetWindowPos(button, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        previous = button;
    }
    return true;
}

// The rows are as high in pixels at every resolution, the template is not.
void UserDictionaryDialog::FitHeight() {
    RECT client{};
    RECT window{};
    GetClientRect(client);
    GetWindowRect(window);
    const int surplus = static_cast<int>(client.bottom) - (kFirstRowY + kRows * kRowHeight + kMargin);
    for (const int id : {IDOK, IDCANCEL, IDHELP}) {
        MoveUp(Handle(), GetDlgItem(Handle(), id), surplus);
    }
    MoveTo(window.left, window.top + surplus / 2, window.right - window.left,
           window.bottom - window.top - surplus);
}

void UserDictionaryDialog::FillSections() {
    for (std::size_t section = 0; section < StatementLibrary::kSections; ++section) {
        sections_->AddItem(static_cast<std::int32_t>(section), dictionary_.Title(section));
    }
    sections_->SetCurSel(0);
}

void UserDictionaryDialog::ReleaseControls() {
    for (std::unique_ptr<EntryButton>& button : buttons_) {
        button.reset();
    }
    code_.reset();
    text_.reset();
    ReleaseSubclassed(sections_);
}

void UserDictionaryDialog::OnDestroy() {
    ReleaseControls();
    Dialog::OnDestroy();
}

// ---- what the user does

INT_PTR UserDictionaryDialog::OnDialogCommand(WPARAM wParam) {
    const std::size_t entry = LOWORD(wParam) - kFirstButtonId;
    if (sections_ == nullptr) {
        return Dialog::OnDialogCommand(wParam);
    }
    if (sections_->IsSelChange(wParam)) {
        ShowSection();
        return TRUE;
    }
    if (text_->IsChange(wParam) || code_->IsChange(wParam)) {
        TakeEdits();
        return TRUE;
    }
    if (entry < buttons_.size()) {
        if (HIWORD(wParam) == BN_CLICKED) {
            SelectEntry(entry);
        }
        return TRUE;
    }
    return Dialog::OnDialogCommand(wParam);
}

bool UserDictionaryDialog::OnDrawItem(UINT id, DRAWITEMSTRUCT* item) {
    const std::size_t entry = id - kFirstButtonId;
    if (item == nullptr || entry >= buttons_.size() || buttons_[entry] == nullptr) {
        return false;
    }
    buttons_[entry]->Draw(*item, buttonFont_.get());
    return true;
}

void UserDictionaryDialog::ShowSection() {
    const FillingScope scope(filling_);
    for (const std::unique_ptr<EntryButton>& button : buttons_) {
        button->Select(false);
    }
    const std::size_t section = CurrentSection();
    if (section == kNone) {
        Reports().LOGOEMERROR(kInterpSource, kNoSectionLine, "idx -1");
        return;
    }
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        buttons_[i]->SetText(dictionary_.Text(section, i));
    }
    text_->SetText(dictionary_.Title(section));
    code_->SetText("");
}

void UserDictionaryDialog::SelectEntry(std::size_t entry) {
    const std::size_t section = CurrentSection();
    if (section == kNone) {
        return;
    }
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (buttons_[i]->IsSelected() != (i == entry)) {
            buttons_[i]->Select(i == entry);
        }
    }
    const char* const text = dictionary_.Text(section, entry);
    {
        const FillingScope scope(filling_);
        text_->SetText(text);
        code_->SetText(dictionary_.Code(section, entry));
    }
    // The first letter replaces the mark of an empty statement; a statement is written on at its end.
    text_->SetFocus();
    text_->SetSelection(std::strcmp(text, kHiddenText) == 0 ? 0 : text_->GetTextLength(),
                        text_->GetTextLength());
}

void UserDictionaryDialog::TakeEdits() {
    const std::size_t section = CurrentSection();
    if (filling_ || section == kNone) {
        return;
    }
    char text[StatementLibrary::kTextSize];
    text_->GetText(text, sizeof text);
    const std::size_t entry = SelectedEntry();
    if (entry == kNone) {
        TakeTitle(text);
        return;
    }
    char code[StatementLibrary::kCodeSize];
    code_->GetText(code, sizeof code);
    buttons_[entry]->SetText(text);
    dictionary_.SetText(section, entry, text);
    dictionary_.SetCode(section, entry, code);
}

void UserDictionaryDialog::TakeTitle(const char* title) {
    const std::size_t section = CurrentSection();
    const int index = static_cast<int>(section);
    char shown[StatementLibrary::kTextSize];
    sections_->GetLBText(index, shown, sizeof shown);
    if (std::strcmp(shown, title) == 0) {
        return;
    }
    dictionary_.SetTitle(section, title);
    sections_->DeleteString(index);
    sections_->InsertString(index, dictionary_.Title(section));
    sections_->SetItemData(index, index);
    sections_->SetCurSel(index);
}

bool UserDictionaryDialog::OnOK() {
    if (WriteFile()) {
        return EndOK();
    }
    if (Services() != nullptr) {
        Services()->SHOWSYSTEMERROR(this, kNotWritten);
    }
    return true;
}

bool UserDictionaryDialog::WriteFile() {
    // A file that is there but could not be read holds statements that this dialog does not know.
    if (!fileRead_ && FileExists(path_)) {
        Reports().LOGOEMERROR(kInterpSource, kNoWriteLine, "no write");
        return false;
    }
    return WriteStatementFile(path_.c_str(), dictionary_, &Reports());
}

std::size_t UserDictionaryDialog::CurrentSection() const {
    const int index = sections_->GetCurSel();
    return index >= 0 && static_cast<std::size_t>(index) < StatementLibrary::kSections
               ? static_cast<std::size_t>(index)
               : kNone;
}

std::size_t UserDictionaryDialog::SelectedEntry() const {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (buttons_[i]->IsSelected()) {
            return i;
        }
    }
    return kNone;
}

}  // namespace kx
