#include "dialogs/interpretation/statement_completion.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "dialogs/dialog_library.h"
#include "dialogs/statements/statement_insertion.h"

namespace kx {
namespace {

// As much of a text as is looked at, with its terminator. A completion that would make the text longer than
// that is left out, the text stays as it is and the popup closes: nothing that the user wrote is cut off.
constexpr int kLookedAt = 1024;

bool IsBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

// What edits without typing: undo, cut, paste, clear, by message or by key.
bool IsEditingCommand(UINT message, WPARAM wParam) {
    switch (message) {
        case EM_UNDO:
        case WM_UNDO:
        case WM_CUT:
        case WM_PASTE:
        case WM_CLEAR:
        case WM_SYSKEYDOWN:  // Alt+Backspace
            return true;
        case WM_KEYDOWN:
            return wParam == VK_DELETE || wParam == VK_INSERT;
        case WM_CHAR:
            return wParam < ' ' && wParam != VK_BACK && wParam != VK_TAB && wParam != '\r' && wParam != '\n';
        default:
            return false;
    }
}

// What may scroll an edit, or end its being seen, besides what the user types.
bool IsScrolling(UINT message) {
    switch (message) {
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_MOUSEWHEEL:
        case EM_SCROLL:
        case EM_LINESCROLL:
        case EM_SCROLLCARET:
        case WM_WINDOWPOSCHANGED:
        case WM_SETFONT:
            return true;
        default:
            return false;
    }
}

}  // namespace

StatementCompletion::StatementCompletion(const DialogLibrary& library, Window& dialog, EditBox& edit,
                                         std::uint32_t testType, Source source, Reporter& log)
    : library_(library),
      dialog_(dialog),
      edit_(edit),
      testType_(testType),
      source_(source),
      log_(log),
      watch_(edit.Handle(), dialog, *this) {}

StatementCompletion::~StatementCompletion() {
    UnwatchSurroundings();
}

void StatementCompletion::OnTextChanged() {
    const TextSelection selection = edit_.GetSelection();
    const int caret = selection.start;
    if (paused_ > 0 || selection.end != caret || caret < 1 || caret + 1 >= kLookedAt) {
        Close();
        return;
    }
    char text[kLookedAt];
    const int length = edit_.GetText(text, sizeof text);
    const std::string_view textToCaret(text, static_cast<std::size_t>(std::min(caret, length)));
    if (textToCaret.empty()) {
        Close();
    } else if (IsOpen()) {
        Continue(textToCaret);
    } else if (enabled_) {
        Begin(textToCaret);
    }
}

void StatementCompletion::Begin(std::string_view textToCaret) {
    if (IsBlank(textToCaret.back())) {
        return;
    }
    if (popup_ == nullptr) {
        popup_ = std::make_unique<CompletionPopup>(library_, &dialog_, testType_,
                                                   source_ == Source::kPhysicians, log_);
    }
    const std::size_t lineStart = textToCaret.find_last_of("\r\n") + 1;  // 0 behind npos
    if (popup_->Start(lineStart, textToCaret.substr(lineStart))) {
        // A statement that was chosen by its code is about to be inserted: nothing to show.
        if (!popup_->IsExactCode()) {
            Place();
        }
        Tell();
    }
}

void StatementCompletion::Continue(std::string_view textToCaret) {
    if (textToCaret.back() == '\n') {
        Insert(popup_->SelectedText(), textToCaret.ends_with("\r\n") ? "\r\n" : "\n");
        return;
    }
    if (popup_->Extend(textToCaret.size() - 1, textToCaret.back())) {
        Follow();
    } else {
        Close();
    }
    if (!edit_.HasFocus()) {
        edit_.SetFocus();
    }
}

bool StatementCompletion::OnDialogCommand(WPARAM wParam) {
    if (wParam != MAKEWPARAM(CompletionPopup::kControlId, CompletionPopup::kChosen)) {
        return false;
    }
    // The user may have gone on since the popup posted the message: its choice is none then.
    if (popup_ != nullptr) {
        if (std::string chosen = popup_->ChosenText(); !chosen.empty()) {
            Insert(std::move(chosen), {});
        }
    }
    return true;
}

std::size_t StatementCompletion::RoomInPlaceOf(std::size_t length) const {
    const auto kept = static_cast<std::size_t>(edit_.GetTextLength()) - length;
    const auto limit = static_cast<std::size_t>(edit_.SendMsg(EM_GETLIMITTEXT));
    return limit > kept ? limit - kept : 0;
}

void StatementCompletion::Insert(std::string chosen, std::string_view lineBreak) {
    const std::string prefix(popup_->Prefix());
    const std::size_t start = popup_->PrefixStart();
    const std::size_t length = prefix.size() + lineBreak.size();
    Close();
    char text[kLookedAt];
    const auto textLength = static_cast<std::size_t>(edit_.GetText(text, sizeof text));
    if (chosen.empty() || start > textLength) {
        return;
    }
    // What is replaced must be what was typed.
    std::string replaced(text + start, std::min(length, textLength - start));
    if (const std::size_t at = replaced.find(lineBreak); at != std::string::npos) {
        replaced.erase(at, lineBreak.size());
    }
    if (replaced != prefix) {
        return;
    }
    if (source_ == Source::kPhysicians) {
        chosen.resize(std::min(chosen.size(), RoomInPlaceOf(length)));
    }
    if (edit_.GetTextLength() >= kLookedAt ||
        InsertCompletion(text, sizeof text, start, length, chosen) == kNoInsertion) {
        MessageBeep(MB_ICONWARNING);
        return;
    }
    edit_.SetFocus();
    edit_.SetSelection(static_cast<int>(start), static_cast<int>(start + length));
    ReplaceSelection(chosen.c_str());
}

void StatementCompletion::ReplaceSelection(const char* text) {
    const TextSelection selection = edit_.GetSelection();
    if (std::strlen(text) > RoomInPlaceOf(static_cast<std::size_t>(selection.end - selection.start))) {
        MessageBeep(MB_ICONWARNING);
        return;
    }
    ++paused_;
    edit_.SendMsg(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    --paused_;
}

void StatementCompletion::Close() {
    if (popup_ != nullptr) {
        popup_->Close();
    }
    UnwatchSurroundings();
    Tell();
}

void StatementCompletion::SetEnabled(bool enabled) {
    enabled_ = enabled;
    if (!enabled) {
        Close();
    }
}

void StatementCompletion::Tell() {
    if (told_ != IsOpen()) {
        told_ = !told_;
        if (listener_) {
            listener_(told_);
        }
    }
}

std::optional<LRESULT> StatementCompletion::OnWatchedMessage(ControlWatch& watch, UINT message, WPARAM wParam,
                                                             LPARAM lParam) {
    if (TakesKey(message, wParam)) {
        return 0;
    }
    const int pause = IsEditingCommand(message, wParam) ? 1 : 0;
    paused_ += pause;
    const LRESULT result = watch.Pass(message, wParam, lParam);
    paused_ -= pause;
    if (message == WM_GETDLGCODE) {
        // A dialog selects the text of an edit that it gives the focus. Here the next key would replace what
        // may be a whole report.
        return result & ~LRESULT{DLGC_HASSETSEL};
    }
    AfterMessage(message, wParam);
    return result;
}

bool StatementCompletion::TakesKey(UINT message, WPARAM wParam) {
    if (!IsOpen() || (message != WM_KEYDOWN && message != WM_CHAR)) {
        return false;
    }
    if (message == WM_CHAR) {
        if (wParam != '\r') {
            return false;
        }
        Insert(popup_->SelectedText(), {});
        return true;
    }
    switch (wParam) {
        case VK_UP:
        case VK_DOWN:
            popup_->MoveSelection(wParam == VK_UP ? -1 : 1);
            return true;
        case VK_ESCAPE:
            Close();
            return true;
        default:
            return false;
    }
}

void StatementCompletion::AfterMessage(UINT message, WPARAM wParam) {
    switch (message) {
        case WM_KEYDOWN:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
            if (IsOpen() && !IsCaretInPrefix()) {
                Close();
            }
            break;
        case WM_KILLFOCUS:
            // wParam: who has the focus now.
            if (IsOpen() && GetAncestor(reinterpret_cast<HWND>(wParam), GA_ROOT) != popup_->Handle()) {
                Close();
            }
            break;
        default:
            if (IsScrolling(message)) {
                Follow();
            }
            break;
    }
}

bool StatementCompletion::IsCaretInPrefix() const {
    const TextSelection selection = edit_.GetSelection();
    const auto start = static_cast<int>(popup_->PrefixStart());
    const int end = start + static_cast<int>(popup_->Prefix().size());
    return selection.start == selection.end && start <= selection.start && selection.start <= end;
}

}  // namespace kx
