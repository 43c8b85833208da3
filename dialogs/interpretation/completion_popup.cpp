#include "dialogs/interpretation/completion_popup.h"

// After <windows.h>.
#include <commctrl.h>

#include <algorithm>

#include "dialogs/dialog_library.h"
#include "dialogs/interpretation/completion_entries.h"
#include "dialogs/interpretation/interp_report.h"
#include "lib/windows/device_context.h"

namespace kx {
namespace {

constexpr std::uint32_t kNoWindowLine = 1112;
constexpr UINT_PTR kListWatch = 1;
constexpr int kRowHeight = 19;  // pixels at 96 dpi

}  // namespace

CompletionPopup::CompletionPopup(const DialogLibrary& library, Window* parent, std::uint32_t testType,
                                 bool fromPhysicians, Reporter& log)
    : Window(parent), library_(library), log_(log) {
    SetId(kControlId);
    if (fromPhysicians) {
        AddPhysicianEntries(matcher_, log);
    } else {
        AddStatementEntries(library.instance.Handle(), testType, matcher_, log);
    }
}

CompletionPopup::~CompletionPopup() {
    Close();
}

bool CompletionPopup::Open() {
    if (IsOpen()) {
        return true;
    }
    const ActivationScope controls(library_.Controls());
    if (Create(kCompletionPopupClass, "", library_.instance.Handle(), this,
               WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, 0, 0, 0, 0)) {
        auto list = std::make_unique<CompletionList>(library_, this);
        if (list->Handle() != nullptr && SetWindowSubclass(list->Handle(), ListProc, kListWatch,
                                                           reinterpret_cast<DWORD_PTR>(this)) != FALSE) {
            list_ = std::move(list);
            return true;
        }
        list.reset();
        Close();
    }
    log_.LOGMEMORYERROR(kInterpSource, kNoWindowLine);
    return false;
}

void CompletionPopup::Close() {
    Destroy();  // OnDestroy does the rest
}

void CompletionPopup::OnDestroy() {
    list_.reset();
    Attach(nullptr);
    SetHandle(nullptr);
}

bool CompletionPopup::Start(std::size_t lineStart, std::string_view lineText) {
    if (!matcher_.Start(lineStart, lineText) || !Open()) {
        Close();
        return false;
    }
    Refresh();
    return true;
}

bool CompletionPopup::Extend(std::size_t position, char character) {
    if (!IsOpen() || !matcher_.Extend(position, character)) {
        return false;
    }
    Refresh();
    return true;
}

void CompletionPopup::Refresh() {
    list_->SendMsg(WM_SETREDRAW, FALSE);
    list_->SetHighlight(matcher_.Prefix());
    list_->DeleteAllRows();
    for (std::size_t i = 0; i < matcher_.MatchCount(); ++i) {
        list_->AppendRow(reinterpret_cast<LPARAM>(&matcher_.Match(i)), 0);
    }
    list_->SelectRow(0);
    list_->SendMsg(WM_SETREDRAW, TRUE);
    list_->Invalidate();
    if (matcher_.IsExactCode()) {
        Choose();
    }
}

void CompletionPopup::ShowAt(const RECT& area, HFONT font) {
    if (!IsOpen()) {
        return;
    }
    list_->SetFont(font, false);
    SetWindowPos(Handle(), HWND_TOP, static_cast<int>(area.left), static_cast<int>(area.top),
                 static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top),
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void CompletionPopup::OnSize(UINT, int width, int height) {
    if (IsOpen()) {
        list_->MoveTo(0, 0, width, height);
        list_->FitColumns();
    }
}

void CompletionPopup::MoveSelection(int rows) {
    if (IsOpen() && list_->ItemCount() > 0) {
        list_->SelectRow(std::clamp(list_->SelectedRow() + rows, 0, list_->ItemCount() - 1));
    }
}

const char* CompletionPopup::ChosenText() const {
    const CompletionEntry* const entry = IsOpen() ? list_->Entry(list_->SelectedRow()) : nullptr;
    return entry != nullptr ? entry->text : "";
}

void CompletionPopup::Choose() const {
    PostToParent(WM_COMMAND, MAKEWPARAM(kControlId, kChosen), reinterpret_cast<LPARAM>(Handle()));
}

LRESULT CompletionPopup::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_MOUSEACTIVATE ? MA_NOACTIVATE : Window::WindowProc(message, wParam, lParam);
}

LRESULT CompletionPopup::OnMeasureItem(UINT, MEASUREITEMSTRUCT* item) {
    const WindowContext screen(nullptr);
    item->itemHeight = static_cast<UINT>(MulDiv(kRowHeight, screen.PixelsPerInchY(), 96));
    return TRUE;
}

bool CompletionPopup::OnDrawItem(UINT id, DRAWITEMSTRUCT* item) {
    return IsOpen() && list_->DrawItem(id, item);
}

LRESULT CompletionPopup::OnNotify(WPARAM id, NMHDR* header) {
    LRESULT result = 0;
    if (IsOpen() && list_->Notify(id, header, result) && list_->WasClicked()) {
        Choose();
    }
    return result;
}

// A list view takes the focus on every click, and with it the activation from the host's window. Here a click
// only chooses.
LRESULT CALLBACK CompletionPopup::ListProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR id, DWORD_PTR popup) noexcept {
    switch (message) {
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONUP:
            reinterpret_cast<CompletionPopup*>(popup)->OnListButton(
                message, {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
            return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_MBUTTONDOWN:
            return 0;
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, ListProc, id);
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void CompletionPopup::OnListButton(UINT message, POINT point) {
    const int row = list_->RowAt(point);
    if (row < 0) {
        return;
    }
    if (message != WM_LBUTTONUP) {
        list_->SelectRow(row);
    } else if (row == list_->SelectedRow()) {
        Choose();
    }
}

}  // namespace kx
