#include "host/panes/pane_host.h"

#include <algorithm>
#include <utility>

#include "host/clients/library_resources.h"
#include "host/resource_ids.h"
#include "lib/dbclient/test_record.h"

namespace kxhost {
namespace {

constexpr WPARAM kChangeNotice = 1024;
// Of the workstation's own panes, at 96 dots per inch.
constexpr int kLeastOwnWidth = 700;
constexpr int kLeastOwnHeight = 260;

int LengthOf(const RECT& area, int bar) {
    return static_cast<int>(bar == SB_HORZ ? area.right - area.left : area.bottom - area.top);
}

bool IsPushButton(HWND control) {
    const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

}  // namespace

PaneHost::PaneHost(HWND parent, const LibraryClient& library, const UiMetrics& metrics,
                   const ArchiveClient* archive, WorklistActions* actions)
    : library_(library), metrics_(metrics), archive_(archive), actions_(actions) {
    Create({L"KxPaneHost", nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT, parent, 0,
            0, reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_PANE_HOST))});
    shared_.handle = Window();
}

PaneHost::~PaneHost() {
    Close();
}

HWND PaneHost::MakePane(PaneKind kind, kx::TestRecord& test) {
    if (kind == PaneKind::Tracing) {
        own_ = std::make_unique<TracingPane>(Window(), metrics_, test);
    } else if (kind == PaneKind::Report) {
        // Without the library its pick lists are missing and everything else is there.
        const LibraryResources texts;
        own_ = std::make_unique<ReportPane>(Window(), metrics_, ListReport(test, {texts, kx::UserLocale()}));
    } else {
        return library_.Open(kind, shared_, test);
    }
    return own_->Window();
}

bool PaneHost::Open(PaneKind kind, kx::TestRecord& test) {
    Close();
    if (!library_.IsLoaded() && RowOf(kind).exportName != nullptr) {
        ShowMessage(L"La libreria dei pannelli non è disponibile.\n" + library_.FailureText());
        return false;
    }
    if (kind == PaneKind::Worklist) {
        return OpenWorklist();
    }
    if (Show(MakePane(kind, test))) {
        return true;
    }
    ShowMessage(std::wstring(L"Il pannello «") + RowOf(kind).title +
                L"» non è disponibile per questo tracciato.\nIl motivo è fra i messaggi della libreria.");
    return false;
}

bool PaneHost::OpenWorklist() {
    Close();
    if (archive_ == nullptr || actions_ == nullptr) {
        return false;
    }
    own_ = std::make_unique<WorklistPane>(Window(), metrics_, *archive_, *actions_);
    return Show(own_->Window());
}

bool PaneHost::Show(HWND pane) {
    pane_ = pane;
    if (pane_ == nullptr) {
        return false;
    }
    message_.clear();
    // The pane's template may have had a caption: its place counts until the frame is computed anew.
    RECT area;
    GetClientRect(pane_, &area);
    natural_ = {area.right, area.bottom};
    least_ = natural_;
    if (own_) {
        least_ = {std::min<LONG>(natural_.cx, metrics_.Scale(kLeastOwnWidth)),
                  std::min<LONG>(natural_.cy, metrics_.Scale(kLeastOwnHeight))};
    }
    SetWindowPos(pane_, nullptr, 0, 0, static_cast<int>(natural_.cx), static_cast<int>(natural_.cy),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    scrolled_ = {};
    Place();
    ShowWindow(pane_, SW_SHOWNA);
    return true;
}

void PaneHost::Close() {
    if (pane_ != nullptr && IsWindow(pane_)) {
        DestroyWindow(pane_);
    }
    pane_ = nullptr;
    own_.reset();
    natural_ = least_ = {};
    scrolled_ = {};
    Place();
}

void PaneHost::FocusPane() const {
    if (pane_ == nullptr) {
        return;
    }
    HWND first = FindWindowExW(pane_, nullptr, L"MarkerView", nullptr);
    if (first == nullptr) {
        first = FindWindowExW(pane_, nullptr, TracingPaper::kClassName, nullptr);
    }
    if (first == nullptr) {
        first = GetNextDlgTabItem(pane_, nullptr, FALSE);
    }
    if (first != nullptr) {
        SetFocus(first);
    }
}

double PaneHost::TracingStartMs() const {
    const auto* tracing = dynamic_cast<const TracingPane*>(own_.get());
    return tracing != nullptr ? tracing->StartMs() : 0;
}

void PaneHost::ShowMessage(std::wstring text) {
    message_ = std::move(text);
    InvalidateRect(Window(), nullptr, TRUE);
}

// The middle without its scroll bars is measured from the window's own rectangle, since showing one bar
// changes the room for the other.
void PaneHost::Place() {
    RECT area;
    GetWindowRect(Window(), &area);
    // Before the frame has placed this window there is no room to fill, and no bar is wanted.
    if (placing_ || IsRectEmpty(&area)) {
        return;
    }
    placing_ = true;
    const int barWidth = GetSystemMetrics(SM_CXVSCROLL);
    const int barHeight = GetSystemMetrics(SM_CYHSCROLL);
    int width = LengthOf(area, SB_HORZ);
    int height = LengthOf(area, SB_VERT);
    const int needsWidth = static_cast<int>(least_.cx);
    const int needsHeight = static_cast<int>(least_.cy);
    const bool down = needsHeight > height || (needsWidth > width && needsHeight > height - barHeight);
    const bool across = needsWidth > width - (down ? barWidth : 0);
    width -= down ? barWidth : 0;
    height -= across ? barHeight : 0;

    int left = static_cast<int>(scrolled_.x);
    int top = static_cast<int>(scrolled_.y);
    SetBar(SB_HORZ, needsWidth, width, left);
    SetBar(SB_VERT, needsHeight, height, top);
    scrolled_ = {left, top};
    if (pane_ != nullptr) {
        SetWindowPos(pane_, nullptr, -left, -top, std::max(width, needsWidth), std::max(height, needsHeight),
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
    // This window paints under the pane too: a pane that clips its children erases nothing inside its group
    // boxes.
    RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    placing_ = false;
}

void PaneHost::SetBar(int bar, int content, int room, int& position) {
    position = std::clamp(position, 0, std::max(content - room, 0));
    const bool needed = content > room;
    const LONG style = bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL;
    const bool shown = (GetWindowLongW(Window(), GWL_STYLE) & style) != 0;
    if (needed) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_PAGE | SIF_POS | SIF_RANGE;
        info.nMax = content - 1;
        info.nPage = static_cast<UINT>(std::max(room, 0));
        info.nPos = position;
        SetScrollInfo(Window(), bar, &info, TRUE);
    }
    if (needed != shown) {
        ShowScrollBar(Window(), bar, needed);
    }
}

void PaneHost::OnScroll(int bar, int request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(Window(), bar, &info);
    const int line = metrics_.Scale(24);
    const int page = static_cast<int>(info.nPage);
    int position = info.nPos;
    switch (request) {
        case SB_LINEUP:
            position -= line;
            break;
        case SB_LINEDOWN:
            position += line;
            break;
        case SB_PAGEUP:
            position -= page;
            break;
        case SB_PAGEDOWN:
            position += page;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            position = info.nTrackPos;
            break;
        case SB_TOP:
            position = info.nMin;
            break;
        case SB_BOTTOM:
            position = info.nMax;
            break;
        default:
            return;
    }
    (bar == SB_HORZ ? scrolled_.x : scrolled_.y) = position;
    Place();
}

void PaneHost::OnPaint() {
    const PaintScope paint(Window());
    RECT area;
    GetClientRect(Window(), &area);
    FillRect(paint.Dc(), &area, GetSysColorBrush(COLOR_BTNFACE));
    if (message_.empty()) {
        return;
    }
    const Selection font(paint.Dc(), metrics_.Message());
    SetBkMode(paint.Dc(), TRANSPARENT);
    SetTextColor(paint.Dc(), GetSysColor(COLOR_BTNTEXT));
    InflateRect(&area, -metrics_.Scale(16), 0);
    RECT text = area;
    const UINT format = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX;
    DrawTextW(paint.Dc(), message_.c_str(), -1, &text, format | DT_CALCRECT);
    const LONG height = text.bottom - text.top;
    area.top = std::max<LONG>((area.top + area.bottom - height) / 2, 0);
    DrawTextW(paint.Dc(), message_.c_str(), -1, &area, format);
}

bool PaneHost::TranslateForPane(MSG& message) {
    if (pane_ == nullptr || (message.hwnd != pane_ && !IsChild(pane_, message.hwnd))) {
        return false;
    }
    if (message.message != WM_KEYDOWN) {
        return IsDialogMessageW(pane_, &message) != FALSE;
    }
    switch (message.wParam) {
        case VK_TAB:
            return false;
        case VK_RETURN:
            if (IsPushButton(message.hwnd)) {
                SendMessageW(message.hwnd, BM_CLICK, 0, 0);
                return true;
            }
            [[fallthrough]];
        case VK_ESCAPE:
            TranslateMessage(&message);
            DispatchMessageW(&message);
            return true;
        default:
            return IsDialogMessageW(pane_, &message) != FALSE;
    }
}

LRESULT PaneHost::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Place();
            InvalidateRect(Window(), nullptr, FALSE);
            return 0;
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_HSCROLL:
            OnScroll(SB_HORZ, LOWORD(wParam));
            return 0;
        case WM_VSCROLL:
            OnScroll(SB_VERT, LOWORD(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            OnScroll(SB_VERT, GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? SB_LINEUP : SB_LINEDOWN);
            return 0;
        case WM_PARENTNOTIFY:
            // The library may end a pane by itself; its window's handle must not be used after that.
            if (LOWORD(wParam) == WM_DESTROY && reinterpret_cast<HWND>(lParam) == pane_) {
                pane_ = nullptr;
            }
            return 0;
        case WM_USER:
            if (wParam == kChangeNotice && lParam == static_cast<LPARAM>(kChangeNotice)) {
                return SendMessageW(GetParent(Window()), message, wParam, lParam);
            }
            return 0;
        default:
            return HostWindow::OnMessage(message, wParam, lParam);
    }
}

}  // namespace kxhost
