#include "dialogs/interpretation/statement_completion.h"

// After <windows.h>.
#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "dialogs/dialog_library.h"
#include "dialogs/statements/statement_insertion.h"
#include "lib/windows/device_context.h"

namespace kx {
namespace {

constexpr UINT_PTR kEditWatch = 2;

// As much of a text as is looked at, with its terminator. A completion that would make the text longer than
// that is left out, the text stays as it is and the popup closes: nothing that the user wrote is cut off.
constexpr int kLookedAt = 1024;

// Pixels at 96 dpi: the popup's place from the caret, and its size.
constexpr int kLeftOfCaret = 5;
constexpr int kBelowCaret = 20;
constexpr int kPopupWidth = 250;
constexpr int kPopupHeight = 100;

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

// Whether an edit still has the object whose messages it passes on.
bool IsWatched(HWND edit, SUBCLASSPROC watch) {
    DWORD_PTR object = 0;
    return GetWindowSubclass(edit, watch, kEditWatch, &object) != FALSE;
}

}  // namespace

StatementCompletion::StatementCompletion(const DialogLibrary& library, Window* dialog, EditBox& edit,
                                         std::uint32_t testType, Source source, Reporter& log)
    : library_(library), dialog_(dialog), edit_(edit), testType_(testType), source_(source), log_(log) {
    SetWindowSubclass(edit_.Handle(), EditProc, kEditWatch, reinterpret_cast<DWORD_PTR>(this));
}

StatementCompletion::~StatementCompletion() {
    RemoveWindowSubclass(edit_.Handle(), EditProc, kEditWatch);
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
        popup_ = std::make_unique<CompletionPopup>(library_, dialog_, testType_,
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
        InsertChosen(textToCaret.ends_with("\r\n") ? "\r\n" : "\n");
        return;
    }
    if (!popup_->Extend(textToCaret.size() - 1, textToCaret.back())) {
        Close();
    }
    if (!edit_.HasFocus()) {
        edit_.SetFocus();
    }
}

void StatementCompletion::Place() {
    POINT caret{};
    if (!edit_.HasFocus() || GetCaretPos(&caret) == FALSE) {
        caret = edit_.PositionOfChar(edit_.GetSelection().start - 1);
    }
    RECT edit{};
    edit_.GetWindowRect(edit);
    const WindowContext screen(nullptr);
    const auto scaled = [dpi = screen.PixelsPerInchX()](int pixels) { return MulDiv(pixels, dpi, 96); };
    const int width = scaled(kPopupWidth);
    const int height = scaled(kPopupHeight);
    const LONG line = edit.top + caret.y;
    RECT area{edit.left + caret.x - scaled(kLeftOfCaret), line + scaled(kBelowCaret), 0, 0};

    // Where the screen ends before the popup does, it stands above the line, and further left.
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoA(MonitorFromWindow(edit_.Handle(), MONITOR_DEFAULTTONEAREST), &monitor) != FALSE) {
        const RECT& work = monitor.rcWork;
        if (area.top + height > work.bottom && line - height >= work.top) {
            area.top = line - height;
        }
        area.left = std::max(std::min(area.left, work.right - width), work.left);
    }
    area.right = area.left + width;
    area.bottom = area.top + height;
    popup_->ShowAt(area, edit_.GetFont());
}

bool StatementCompletion::OnDialogCommand(WPARAM wParam) {
    if (wParam != MAKEWPARAM(CompletionPopup::kControlId, CompletionPopup::kChosen)) {
        return false;
    }
    // The popup may have been closed since it posted the message.
    if (IsOpen()) {
        InsertChosen({});
    }
    return true;
}

void StatementCompletion::InsertChosen(std::string_view lineBreak) {
    const std::string chosen = popup_->ChosenText();
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
    const int kept = edit_.GetTextLength() - (selection.end - selection.start);
    if (kept + static_cast<int>(std::strlen(text)) > edit_.SendMsg(EM_GETLIMITTEXT)) {
        MessageBeep(MB_ICONWARNING);
        return;
    }
    const HWND edit = edit_.Handle();
    ++paused_;
    SendMessageA(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    if (IsWatched(edit, EditProc)) {
        --paused_;
    }
}

void StatementCompletion::Close() {
    if (popup_ != nullptr) {
        popup_->Close();
    }
    Tell();
}

void StatementCompletion::SetEnabled(bool enabled) {
    enabled_ = enabled;
    if (!enabled) {
        Close();
    }
}

void StatementCompletion::Reload() {
    Close();
    popup_.reset();
}

void StatementCompletion::Tell() {
    if (told_ != IsOpen()) {
        told_ = !told_;
        if (listener_) {
            listener_(told_);
        }
    }
}

LRESULT CALLBACK StatementCompletion::EditProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                               UINT_PTR, DWORD_PTR object) noexcept {
    auto* const completion = reinterpret_cast<StatementCompletion*>(object);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, EditProc, kEditWatch);
        return DefSubclassProc(window, message, wParam, lParam);
    }
    Reporter& log = completion->log_;
    try {
        return completion->Watch(window, message, wParam, lParam);
    } catch (...) {
        log.LOGEXCEPTION("StatementCompletion");
        return 0;
    }
}

LRESULT StatementCompletion::Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (TakesKey(message, wParam)) {
        return 0;
    }
    const int pause = IsEditingCommand(message, wParam) ? 1 : 0;
    paused_ += pause;
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_GETDLGCODE) {
        // A dialog selects the text of an edit that it gives the focus. Here the next key would replace what
        // may be a whole report.
        return result & ~LRESULT{DLGC_HASSETSEL};
    }
    if (IsWatched(window, EditProc)) {
        paused_ -= pause;
        AfterMessage(message, wParam);
    }
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
        InsertChosen({});
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
