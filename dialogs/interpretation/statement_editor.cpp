#include "dialogs/interpretation/statement_editor.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "dialogs/help_topic.h"
#include "dialogs/statements/interp_report.h"
#include "dialogs/statements/statement_insertion.h"
#include "lib/windows/held_control.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoControlLine = 1792;
constexpr std::uint32_t kNoPanelLine = 2040;
constexpr std::uint32_t kButtonTextLine = 2051;
constexpr std::uint32_t kButtonTextLengthLine = 2052;
constexpr std::uint32_t kNoContentLine = 2108;
constexpr std::uint32_t kNoStatementLine = 2123;
constexpr std::uint32_t kNoPhysicianLine = 2144;

constexpr std::uint32_t kEditId = 100;
constexpr std::uint32_t kPanelButtonId = 101;
constexpr std::uint32_t kPanelId = 500;

// Pixels.
constexpr int kButtonWidth = 30;
constexpr int kButtonHeight = 20;
constexpr int kPanelWidth = 300;
constexpr int kSmallestWidth = 4 * kButtonWidth;
constexpr int kSmallestHeight = 3 * kButtonHeight;
constexpr LONG kFarthest = 16000;  // window coordinates have 16 bits

constexpr char kOpenPanel[] = ">>";
constexpr char kClosePanel[] = "<<";

constexpr WPARAM kFocusEdit = 100;  // of a WM_USER that the editor posts to itself

// The buttons blink in turn, once in two seconds each.
constexpr UINT kTickMs = 100;
constexpr int kTicks = 20;
constexpr int kOkTick = 1;
constexpr int kCancelTick = 11;

constexpr DWORD kFrameStyles = WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;

LONG Clamped(std::int32_t coordinate) {
    return std::clamp<LONG>(coordinate, -kFarthest, kFarthest);
}

// A button that the user is about to press stays: hidden, it would lose the focus and the press.
void Blink(Window& button, int tick, int hidingTick) {
    if (tick == hidingTick && !button.HasFocus()) {
        button.Hide();
    } else if (tick == hidingTick + 1) {
        button.Show();
    }
}

// The edit has several lines, a name has one.
void JoinLines(char* text) {
    char* end = text;
    for (const char* at = text; *at != '\0'; ++at) {
        if (*at != '\r') {
            *end++ = *at == '\n' ? ' ' : *at;
        }
    }
    while (end != text && end[-1] == ' ') {
        --end;
    }
    *end = '\0';
}

}  // namespace

StatementEditor::StatementEditor(const DialogLibrary& library, Window* parent, TestRecord* test,
                                 const KxRect& area, Mode mode, SystemServices* services)
    : Dialog(library, parent, nullptr, services),
      library_(library),
      test_(test),
      testType_(test->TestType()),
      host_(ParentHandle()),
      area_{Clamped(area.left), Clamped(area.top), Clamped(area.right), Clamped(area.bottom)},
      mode_(mode) {
    // One could not leave an editor that one does not see.
    area_.right = std::max(area_.right, area_.left + kSmallestWidth);
    area_.bottom = std::max(area_.bottom, area_.top + kSmallestHeight);
}

bool StatementEditor::Run() {
    return RunModalPopup(this) == 1;
}

// ---- building

bool StatementEditor::OnInitDialog() {
    const std::unique_ptr<char[]> content = ReadContent();
    if (content == nullptr) {
        return false;
    }
    TakeArea();
    try {
        MakeControls();
    } catch (...) {
        Reports().LOGMEMORYERROR(kInterpSource, kNoControlLine);
        return false;
    }
    ShowContent(content.get());
    filled_ = true;
    StartTimer(kTickMs);
    return true;
}

void StatementEditor::TakeArea() {
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(Handle(), GWL_STYLE));
    SetStyles((style & ~kFrameStyles) | WS_POPUP, 0);
    RECT parent{};
    ::GetWindowRect(host_, &parent);
    SetWindowPos(Handle(), nullptr, static_cast<int>(parent.left + area_.left),
                 static_cast<int>(parent.top + area_.top), Width(), Height(),
                 SWP_NOZORDER | SWP_FRAMECHANGED);
}

void StatementEditor::MakeControls() {
    Hold(edit_, library_.instance, this, kEditId, 0, 0, Width() - kButtonWidth, Height());
    MakeButton(ok_, IDOK, "OK", 0, BS_DEFPUSHBUTTON);
    MakeButton(cancel_, IDCANCEL, "X", kButtonHeight, BS_PUSHBUTTON);
    if (mode_ == Mode::kStatement) {
        MakeButton(panelButton_, kPanelButtonId, kOpenPanel, Height() - kButtonHeight, BS_PUSHBUTTON);
    }
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(edit_->Handle(), GWL_STYLE));
    edit_->SetStyles(style | ES_WANTRETURN, WS_EX_CLIENTEDGE);
    edit_->SetFont(GetFont(), false);

    using Completion = StatementCompletion;
    completion_ = std::make_unique<Completion>(
        library_, *this, *edit_, testType_,
        mode_ == Mode::kPhysician ? Completion::Source::kPhysicians : Completion::Source::kStatements,
        Reports());
    if (panelButton_ != nullptr) {
        completion_->SetOpenListener([this](bool open) { panelButton_->Enable(!open); });
    }
}

void StatementEditor::MakeButton(std::unique_ptr<ChildControl>& place, std::uint32_t id, const char* text,
                                 int y, DWORD style) {
    Hold(place, 0u, "BUTTON", library_.instance, this, id, Width() - kButtonWidth, y, kButtonWidth,
         kButtonHeight, WholeStyle{WS_CHILD | WS_VISIBLE | WS_TABSTOP | style});
    place->SetFont(GetFont(), false);
    place->SetText(text);
}

std::unique_ptr<char[]> StatementEditor::ReadContent() const {
    std::unique_ptr<char[]> content(new (std::nothrow) char[kTextSize]());
    if (content == nullptr) {
        Reports().LOGMEMORYERROR(kInterpSource, kNoContentLine);
    } else if (mode_ == Mode::kStatement) {
        test_->InterpretationText(content.get(), kTextSize);
    } else {
        std::strncpy(content.get(), test_->ConfirmedBy(), kTextSize - 1);
    }
    return content;
}

void StatementEditor::ShowContent(const char* content) {
    if (mode_ == Mode::kPhysician) {
        edit_->SendMsg(EM_LIMITTEXT, sizeof(KxTestRecord::confirmedBy) - 1);
        edit_->SetText(content);
        edit_->SetSelection(0, -1);  // another name takes the place of the old one
        return;
    }
    edit_->SendMsg(EM_LIMITTEXT, kTextSize - 1);
    edit_->SetText(content);
    // The statement is written on at its end.
    const int end = edit_->GetTextLength();
    edit_->SetSelection(end, end);
    edit_->SendMsg(EM_SCROLLCARET);
}

void StatementEditor::OnEnd() {
    if (completion_ != nullptr) {
        completion_->Close();
    }
}

// ---- what the user does

INT_PTR StatementEditor::DialogProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_USER && filled_ && wParam == kFocusEdit) {
        edit_->SetFocus();
        return TRUE;
    }
    return Dialog::DialogProc(message, wParam, lParam);
}

INT_PTR StatementEditor::OnDialogCommand(WPARAM wParam) {
    if (!filled_) {
        return 0;
    }
    if (edit_->IsChange(wParam)) {
        changed_ = true;
        completion_->OnTextChanged();
        return 1;
    }
    if (completion_->OnDialogCommand(wParam)) {
        return 1;
    }
    if (wParam == IDHELP) {
        ShowHelpTopic(*this, kEditorTopic);
        return 1;
    }
    if (wParam == MAKEWPARAM(kPanelButtonId, BN_CLICKED)) {
        TogglePanel();
        return 1;
    }
    return Dialog::OnDialogCommand(wParam);
}

bool StatementEditor::OnDialogNotify(UINT_PTR id, NMHDR* header, LRESULT& result) {
    if (panel_ == nullptr || header == nullptr) {
        return false;
    }
    if (panel_->Notify(static_cast<std::uint32_t>(id), header, result)) {
        return true;
    }
    if (id == kPanelId && header->code == static_cast<UINT>(NM_DBLCLK)) {
        InsertLibraryEntry();
    }
    return false;  // the tree opens or closes a section by it
}

void StatementEditor::OnTimer(UINT_PTR) {
    // A child window of the host does not take the windows that it owns along: its frame is their owner.
    if (IsWindow(host_) == FALSE) {
        OnCancel();
        return;
    }
    tick_ = tick_ % kTicks + 1;
    Blink(*ok_, tick_, kOkTick);
    Blink(*cancel_, tick_, kCancelTick);
}

void StatementEditor::InsertLibraryEntry() {
    if (!panel_->SelectedText().empty()) {
        completion_->ReplaceSelection(LibraryInsertion(panel_->SelectedText()).c_str());
        PostUser(kFocusEdit, 0);
    }
}

bool StatementEditor::OnOK() {
    // Enter in the library panel, whose keys the dialog gets: it is meant for the entry.
    if (panel_ != nullptr && panel_->HasFocus()) {
        InsertLibraryEntry();
        return true;
    }
    completion_->Close();
    // With its window the host may have freed the record; the next tick would see it.
    if (IsWindow(host_) == FALSE) {
        return EndCancel();
    }
    // What could not be stored is still in the edit.
    if (changed_ && !(mode_ == Mode::kPhysician ? StorePhysician() : StoreStatement())) {
        return true;
    }
    return EndOK();
}

bool StatementEditor::OnCancel() {
    if (completion_ != nullptr) {
        completion_->Close();
    }
    return EndCancel();
}

// ---- the library panel

void StatementEditor::TogglePanel() {
    char text[8];
    if (panelButton_->GetText(text, sizeof text) != 2) {
        Reports().LOGOEMERROR(kInterpSource, kButtonTextLengthLine, "GetText");
    } else if (std::strcmp(text, kOpenPanel) == 0) {
        OpenPanel();
    } else if (std::strcmp(text, kClosePanel) == 0) {
        ClosePanel();
    } else {
        Reports().LOGOEMERROR(kInterpSource, kButtonTextLine, "GetText value");
    }
}

void StatementEditor::OpenPanel() {
    const int left = Width() - kButtonWidth;
    const RECT band{left, 0, left + kPanelWidth, Height()};
    try {
        Hold(panel_, library_, this, kPanelId, band, testType_, Reports());
    } catch (...) {
        panel_.reset();
        Reports().LOGMEMORYERROR(kInterpSource, kNoPanelLine);
        return;
    }
    panel_->SetFont(GetFont(), false);
    completion_->SetEnabled(false);
    Widen(kPanelWidth);
    panelButton_->SetText(kClosePanel);
}

void StatementEditor::ClosePanel() {
    panel_.reset();
    Widen(-kPanelWidth);
    panelButton_->SetText(kOpenPanel);
    completion_->SetEnabled(true);
}

void StatementEditor::Widen(int pixels) {
    RECT window{};
    GetWindowRect(window);
    MoveTo(static_cast<int>(window.left) - pixels, static_cast<int>(window.top),
           static_cast<int>(window.right - window.left) + pixels,
           static_cast<int>(window.bottom - window.top));
    for (ChildControl* const button : {ok_.get(), cancel_.get(), panelButton_.get()}) {
        RECT place{};
        button->GetWindowRect(place);
        MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&place), 2);
        button->MoveTo(static_cast<int>(place.left) + pixels, static_cast<int>(place.top), kButtonWidth,
                       kButtonHeight);
    }
}

// ---- into the record

std::unique_ptr<char[]> StatementEditor::ReadText(std::uint32_t line) const {
    std::unique_ptr<char[]> text(new (std::nothrow) char[kTextSize]);
    if (text == nullptr) {
        Reports().LOGMEMORYERROR(kInterpSource, line);
    } else {
        edit_->GetText(text.get(), kTextSize);
    }
    return text;
}

bool StatementEditor::StoreStatement() {
    const std::unique_ptr<char[]> text = ReadText(kNoStatementLine);
    if (text == nullptr) {
        return false;
    }
    if (HasEnded()) {
        return false;
    }
    const DateTime now;
    if (test_->IsConfirmed()) {
        test_->SetConfirmedInterpretation(&now, text.get());
    } else {
        test_->SetOverreadInterpretation(&now, text.get());
    }
    return true;
}

bool StatementEditor::StorePhysician() {
    const std::unique_ptr<char[]> text = ReadText(kNoPhysicianLine);
    if (text == nullptr) {
        return false;
    }
    if (HasEnded()) {
        return false;
    }
    JoinLines(text.get());
    test_->SetConfirmedBy(text.get());
    test_->InterpretationText(text.get(), kTextSize);
    const DateTime now;
    test_->SetConfirmedInterpretation(&now, text.get());
    return true;
}

}  // namespace kx
