#include "dialogs/dictionary/user_dictionary_dialog.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "dialogs/help_topic.h"
#include "dialogs/resources/dictionary_ids.h"
#include "dialogs/statements/interp_report.h"
#include "dialogs/statements/statement_merge.h"
#include "lib/windows/held_control.h"

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

// Why a text was refused: beside the buttons, below the instructions.
constexpr RECT kReasonArea{440, 116, 566, 150};  // dialog units
constexpr std::uint32_t kReasonId = 200;
constexpr std::size_t kReasonSize = 128;
constexpr COLORREF kReasonColor = RGB(176, 0, 0);

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
      stamp_(StampOf(path)),
      fileRead_(ReadStatementFile(path, dictionary_, &Reports())),
      asRead_(dictionary_.Copy()) {}

bool UserDictionaryDialog::Run() {
    return RunModal(IDD_USER_DICTIONARY, this) == 1;
}

// ---- building

bool UserDictionaryDialog::OnInitDialog() {
    std::uint32_t line = kNoControlLine;
    try {
        HoldControls();
        line = kNoButtonLine;
        MakeReason();
        MakeButtons();
    } catch (...) {
        Reports().LOGMEMORYERROR(kInterpSource, line);
        return false;
    }
    FitHeight();
    FillSections();
    ShowSection();
    return true;
}

void UserDictionaryDialog::HoldControls() {
    Hold(sections_, *Library(), this, IDC_DICT_SECTION, kHeld);
    Hold(text_.box, this, IDC_DICT_TEXT);
    Hold(code_.box, this, IDC_DICT_CODE);
    // What would not be kept cannot be typed.
    text_.box->SendMsg(EM_LIMITTEXT, StatementLibrary::kTextSize - 1);
    code_.box->SendMsg(EM_LIMITTEXT, StatementLibrary::kCodeSize - 1);
}

void UserDictionaryDialog::MakeButtons() {
    buttonFont_.reset(CreateFontA(kFontHeight, 0, 0, 0, kFontWeight, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                  OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                                  VARIABLE_PITCH | FF_SWISS, "MS Shell Dlg"));
    RECT edit{};
    text_.box->GetClientRect(edit);
    const HFONT font = text_.box->GetFont();
    HWND previous = code_.box->Handle();
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const auto id = kFirstButtonId + static_cast<std::uint32_t>(i);
        Hold(buttons_[i], Library()->instance, this, id, ButtonArea(i, static_cast<int>(edit.right)), i == 0,
             font);
        const HWND button = buttons_[i]->Handle();
        // Tab goes from the edits to the statements before it comes to OK.
        SetWindowPos(button, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        previous = button;
    }
}

void UserDictionaryDialog::MakeReason() {
    RECT area = kReasonArea;
    MapDialogRect(Handle(), &area);
    Hold(reason_, 0u, "STATIC", Library()->instance, this, kReasonId, area.left, area.top,
         area.right - area.left, area.bottom - area.top,
         WholeStyle{WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX});
    reason_->SetFont(text_.box->GetFont(), false);
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
    if (text_.box->IsChange(wParam) || code_.box->IsChange(wParam)) {
        TakeEdits();
        return TRUE;
    }
    if (wParam == IDHELP) {
        ShowHelpTopic(*this, Id());
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

HBRUSH UserDictionaryDialog::OnCtlColorStatic(HDC context, HWND control) {
    if (reason_ == nullptr || control != reason_->Handle()) {
        return nullptr;
    }
    SetTextColor(context, kReasonColor);
    SetBkMode(context, TRANSPARENT);
    return GetSysColorBrush(COLOR_BTNFACE);
}

std::string UserDictionaryDialog::Edit::Text() const {
    char text[StatementLibrary::kTextSize];
    box->GetText(text, sizeof text);
    return text;
}

void UserDictionaryDialog::Edit::Show(const char* text) {
    box->SetText(text);
    taken = Text();
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
    text_.Show(dictionary_.Title(section));
    code_.Show("");
    reason_->SetText("");
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
        text_.Show(text);
        code_.Show(dictionary_.Code(section, entry));
    }
    reason_->SetText("");
    // The first letter replaces the mark of an empty statement; a statement is written on at its end.
    text_.box->SetFocus();
    text_.box->SetSelection(std::strcmp(text, kHiddenText) == 0 ? 0 : text_.box->GetTextLength(),
                            text_.box->GetTextLength());
}

void UserDictionaryDialog::TakeEdits() {
    const std::size_t section = CurrentSection();
    if (filling_ || section == kNone) {
        return;
    }
    const std::size_t entry = SelectedEntry();
    const bool isTitle = entry == kNone;
    if (Refuses(text_, isTitle ? StatementPart::kTitle : StatementPart::kText) ||
        (!isTitle && Refuses(code_, StatementPart::kCode))) {
        return;
    }
    reason_->SetText("");
    if (isTitle) {
        TakeTitle(text_.taken.c_str());
        return;
    }
    buttons_[entry]->SetText(text_.taken.c_str());
    dictionary_.SetText(section, entry, text_.taken);
    dictionary_.SetCode(section, entry, code_.taken);
}

bool UserDictionaryDialog::Refuses(Edit& edit, StatementPart part) {
    std::string text = edit.Text();
    const std::string_view mark = FormatMark(text, part);
    if (mark.empty()) {
        edit.taken = std::move(text);
        return false;
    }
    // The caret goes back to where it was before what was typed or pasted.
    const int grown = static_cast<int>(text.size()) - static_cast<int>(edit.taken.size());
    const int caret = std::max(edit.box->GetSelection().end - grown, 0);
    {
        const FillingScope scope(filling_);
        edit.box->SetText(edit.taken.c_str());
    }
    edit.box->SetSelection(caret, caret);
    char format[kReasonSize];
    char reason[kReasonSize];
    Library()->instance.LoadText(mark == "^" ? IDS_DICT_CODE_MARK : IDS_DICT_TAG, format, sizeof format);
    std::snprintf(reason, sizeof reason, format, std::string(mark).c_str());
    reason_->SetText(reason);
    MessageBeep(MB_ICONWARNING);
    return true;
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
    const bool exists = FileExists(path_);
    // A file that is there but could not be read holds statements that this dialog does not know.
    bool isKnown = fileRead_ || !exists;
    StatementLibrary merged;
    const bool isOthers = exists && fileRead_ && StampOf(path_.c_str()) != stamp_;
    if (isOthers) {
        // Somebody else has saved it meanwhile.
        isKnown = ReadStatementFile(path_.c_str(), merged, &Reports()) &&
                  MergeStatements(asRead_, dictionary_, merged);
    }
    if (!isKnown) {
        Reports().LOGOEMERROR(kInterpSource, kNoWriteLine, "no write");
        return false;
    }
    return WriteStatementFile(path_.c_str(), isOthers ? merged : dictionary_, &Reports());
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
