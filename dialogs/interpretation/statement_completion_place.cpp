// The typing completion: where its popup stands, and how it follows its word.
#include "dialogs/interpretation/statement_completion.h"

// After <windows.h>.
#include <commctrl.h>

#include <algorithm>

#include "lib/windows/device_context.h"
#include "lib/windows/handler_scope.h"

namespace kx {
namespace {

// Pixels at 96 dpi: the popup's place from the caret, and its size.
constexpr int kLeftOfCaret = 5;
constexpr int kBelowCaret = 20;
constexpr int kPopupWidth = 250;
constexpr int kPopupHeight = 100;

bool AreSame(POINT a, POINT b) {
    return a.x == b.x && a.y == b.y;
}

}  // namespace

void StatementCompletion::Place() {
    POINT caret{};
    if (!edit_.HasFocus() || GetCaretPos(&caret) == FALSE) {
        caret = edit_.PositionOfChar(edit_.GetSelection().start - 1);
    }
    const POINT word = edit_.PositionOfChar(static_cast<int>(popup_->PrefixStart()));
    caretFromWord_ = {caret.x - word.x, caret.y - word.y};
    word_ = WordOnScreen();
    ShowBelow(word_);
    WatchSurroundings();
}

void StatementCompletion::Follow() {
    if (!IsOpen()) {
        return;
    }
    if (!IsWordInSight()) {
        Close();
        return;
    }
    if (const POINT word = WordOnScreen(); !AreSame(word, word_)) {
        word_ = word;
        ShowBelow(word);
    }
}

POINT StatementCompletion::WordOnScreen() const {
    RECT edit{};
    edit_.GetWindowRect(edit);
    const POINT word = edit_.PositionOfChar(static_cast<int>(popup_->PrefixStart()));
    return {edit.left + word.x, edit.top + word.y};
}

bool StatementCompletion::IsWordInSight() const {
    RECT client{};
    edit_.GetClientRect(client);
    const POINT word = edit_.PositionOfChar(static_cast<int>(popup_->PrefixStart()));
    return IsWindowVisible(edit_.Handle()) != FALSE && 0 <= word.y && word.y < client.bottom;
}

void StatementCompletion::ShowBelow(POINT word) {
    const WindowContext screen(nullptr);
    const auto scaled = [dpi = screen.PixelsPerInchX()](int pixels) { return MulDiv(pixels, dpi, 96); };
    const int width = scaled(kPopupWidth);
    const int height = scaled(kPopupHeight);
    const LONG line = word.y + caretFromWord_.y;
    RECT area{word.x + caretFromWord_.x - scaled(kLeftOfCaret), line + scaled(kBelowCaret), 0, 0};

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

// The edit is not told when a window around it moves or is hidden. These windows are the dialog's and the
// host's, whose user data is the host's own, so they cannot be watched as a control is.
void StatementCompletion::WatchSurroundings() {
    UnwatchSurroundings();
    for (HWND window = GetAncestor(edit_.Handle(), GA_PARENT);
         window != nullptr && window != GetDesktopWindow(); window = GetAncestor(window, GA_PARENT)) {
        surroundings_.push_back(window);
        SetWindowSubclass(window, SurroundingsProc, reinterpret_cast<UINT_PTR>(this),
                          reinterpret_cast<DWORD_PTR>(this));
    }
}

void StatementCompletion::UnwatchSurroundings() {
    for (const HWND window : surroundings_) {
        RemoveWindowSubclass(window, SurroundingsProc, reinterpret_cast<UINT_PTR>(this));
    }
    surroundings_.clear();
}

LRESULT CALLBACK StatementCompletion::SurroundingsProc(HWND window, UINT message, WPARAM wParam,
                                                       LPARAM lParam, UINT_PTR id,
                                                       DWORD_PTR object) noexcept {
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, SurroundingsProc, id);
    } else if (message == WM_WINDOWPOSCHANGED || message == WM_SHOWWINDOW) {
        // Without the watch the object may be gone by now.
        DWORD_PTR watching = 0;
        if (GetWindowSubclass(window, SurroundingsProc, id, &watching) != FALSE) {
            auto& completion = *reinterpret_cast<StatementCompletion*>(object);
            const HandlerScope scope(completion.dialog_, &completion.log_);
            try {
                completion.Follow();
            } catch (...) {
                scope.Exception();
            }
        }
    }
    return result;
}

}  // namespace kx
