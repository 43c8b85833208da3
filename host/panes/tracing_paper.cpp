#include "host/panes/tracing_paper.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kxhost {
namespace {

constexpr double kLeastZoom = 0.5;
constexpr double kMostZoom = 4;
constexpr double kZoomStep = 1.25;
constexpr double kMmPerInch = 25.4;
constexpr int kReachPixels = 4;       // of a leg of the calipers, and from a press to a drag
constexpr double kBeatReachMs = 300;  // of a click on a beat
constexpr double kMvStep = 0.01;

double ClampZoom(double zoom) {
    return std::clamp(zoom, kLeastZoom, kMostZoom);
}

std::wstring Seconds(double ms) {
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%.3f s", ms / 1000);
    std::wstring result = text;
    std::replace(result.begin(), result.end(), L'.', L',');
    return result;
}

bool Held(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

TracingPaper::TracingPaper(HWND parent, const UiMetrics& metrics, const TracingSignal& signal,
                           std::vector<TracedBeat> beats, Teller tell)
    : metrics_(metrics), signal_(signal), painter_(signal, std::move(beats)), tell_(std::move(tell)) {
    Create({kClassName, nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_HSCROLL | WS_VSCROLL, 0, parent, 0,
            0, nullptr});
    const WindowDc dc(Window());
    devicePixelsPerMm_ = GetDeviceCaps(dc.Get(), LOGPIXELSX) / kMmPerInch;
    scale_.pixelsPerMm = devicePixelsPerMm_;
}

void TracingPaper::SetArrangement(Arrangement arrangement) {
    arrangement_ = arrangement;
    Rebuild();
}

void TracingPaper::SetSpeed(double mmPerSecond) {
    scale_.mmPerSecond = mmPerSecond;
    Rebuild();
}

void TracingPaper::SetGain(double mmPerMv) {
    scale_.mmPerMv = mmPerMv;
    Rebuild();
}

double TracingPaper::LastStartMs() const {
    return std::max(signal_.DurationMs() - layout_.visibleMs, 0.0);
}

// After a change of size, scale or arrangement.
void TracingPaper::Rebuild() {
    RECT area;
    GetClientRect(Window(), &area);
    if (area.right <= 0 || area.bottom <= 0) {
        return;
    }
    scale_.pixelsPerMm = ZoomedPixelsPerMm();
    layout_ = LayOutTracing(arrangement_, static_cast<int>(area.right), static_cast<int>(area.bottom), scale_,
                            startMs_, signal_.DurationMs());
    startMs_ = std::clamp(startMs_, 0.0, LastStartMs());
    scrolledRows_ = std::clamp(scrolledRows_, 0, layout_.height - static_cast<int>(area.bottom));
    MakeSurface();
    RedrawContent();
    SetBars();
}

// The surfaces are as large as the content; the empty paper is drawn here, once.
void TracingPaper::MakeSurface() {
    RECT area;
    GetClientRect(Window(), &area);
    const WindowDc dc(Window());
    surfaceSize_ = {area.right, layout_.height};
    surfaceDc_.reset(CreateCompatibleDC(dc.Get()));
    paperDc_.reset(CreateCompatibleDC(dc.Get()));
    surface_.reset(CreateCompatibleBitmap(dc.Get(), area.right, layout_.height));
    paper_.reset(CreateCompatibleBitmap(dc.Get(), area.right, layout_.height));
    if (!surfaceDc_ || !paperDc_ || !surface_ || !paper_) {
        surfaceSize_ = {};
        return;
    }
    SelectObject(surfaceDc_.get(), surface_.get());
    SelectObject(paperDc_.get(), paper_.get());
    SelectObject(surfaceDc_.get(), metrics_.Message());
    DrawPaper(paperDc_.get(), {0, 0, area.right, layout_.height}, scale_.pixelsPerMm);
}

void TracingPaper::RedrawContent() {
    stale_ = true;
    InvalidateRect(Window(), nullptr, FALSE);
}

void TracingPaper::SetBars() {
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL | SIF_DISABLENOSCROLL;
    bar.nMax = static_cast<int>(signal_.DurationMs());
    bar.nPage = static_cast<UINT>(layout_.visibleMs);
    bar.nPos = static_cast<int>(startMs_);
    SetScrollInfo(Window(), SB_HORZ, &bar, TRUE);
    RECT area;
    GetClientRect(Window(), &area);
    bar.nMax = layout_.height - 1;
    bar.nPage = static_cast<UINT>(area.bottom);
    bar.nPos = scrolledRows_;
    SetScrollInfo(Window(), SB_VERT, &bar, TRUE);
}

void TracingPaper::OnPaint() {
    const PaintScope paint(Window());
    RECT area;
    GetClientRect(Window(), &area);
    if (surfaceSize_.cx == 0) {
        FillRect(paint.Dc(), &area, GetSysColorBrush(COLOR_WINDOW));
        return;
    }
    if (stale_) {
        BitBlt(surfaceDc_.get(), 0, 0, static_cast<int>(surfaceSize_.cx), static_cast<int>(surfaceSize_.cy),
               paperDc_.get(), 0, 0, SRCCOPY);
        painter_.Draw(surfaceDc_.get(), layout_, scale_);
        stale_ = false;
    }
    BitBlt(paint.Dc(), 0, 0, static_cast<int>(area.right), static_cast<int>(area.bottom), surfaceDc_.get(), 0,
           scrolledRows_, SRCCOPY);
    SetViewportOrgEx(paint.Dc(), 0, -scrolledRows_, nullptr);
    TracingPainter::DrawCalipers(paint.Dc(), layout_, scale_, calipers_);
}

void TracingPaper::ScrollTo(double startMs) {
    const double limited = std::clamp(startMs, 0.0, LastStartMs());
    if (limited == startMs_) {
        return;
    }
    // Each cell's time moves alike: nothing is laid out anew.
    for (TracingCell& cell : layout_.cells) {
        cell.startMs += limited - startMs_;
    }
    startMs_ = limited;
    SetScrollPos(Window(), SB_HORZ, static_cast<int>(startMs_), TRUE);
    RedrawContent();
}

void TracingPaper::OnHScroll(int request) {
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_TRACKPOS;
    GetScrollInfo(Window(), SB_HORZ, &bar);
    switch (request) {
        case SB_LINELEFT:
            return ScrollTo(startMs_ - layout_.visibleMs / 20);
        case SB_LINERIGHT:
            return ScrollTo(startMs_ + layout_.visibleMs / 20);
        case SB_PAGELEFT:
            return ScrollTo(startMs_ - layout_.visibleMs);
        case SB_PAGERIGHT:
            return ScrollTo(startMs_ + layout_.visibleMs);
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return ScrollTo(bar.nTrackPos);
        case SB_LEFT:
            return ScrollTo(0);
        case SB_RIGHT:
            return ScrollTo(signal_.DurationMs());
        default:
            return;
    }
}

void TracingPaper::OnVScroll(int request) {
    RECT area;
    GetClientRect(Window(), &area);
    const int page = static_cast<int>(area.bottom);
    SCROLLINFO bar{};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_TRACKPOS;
    GetScrollInfo(Window(), SB_VERT, &bar);
    int rows = scrolledRows_;
    switch (request) {
        case SB_LINEUP:
            rows -= metrics_.Scale(24);
            break;
        case SB_LINEDOWN:
            rows += metrics_.Scale(24);
            break;
        case SB_PAGEUP:
            rows -= page;
            break;
        case SB_PAGEDOWN:
            rows += page;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            rows = bar.nTrackPos;
            break;
        default:
            return;
    }
    scrolledRows_ = std::clamp(rows, 0, std::max(layout_.height - page, 0));
    SetScrollPos(Window(), SB_VERT, scrolledRows_, TRUE);
    InvalidateRect(Window(), nullptr, FALSE);
}

// The time under the pointer stays there.
void TracingPaper::OnWheel(int delta, bool scroll, POINT screen) {
    if (scroll) {
        return ScrollTo(startMs_ - delta * layout_.visibleMs / (10 * WHEEL_DELTA));
    }
    ScreenToClient(Window(), &screen);
    const auto before =
        PointAt(layout_, scale_, static_cast<int>(screen.x), static_cast<int>(screen.y) + scrolledRows_);
    zoom_ = ClampZoom(delta > 0 ? zoom_ * kZoomStep : zoom_ / kZoomStep);
    if (std::abs(zoom_ - 1) < 0.01) {
        zoom_ = 1;
    }
    Rebuild();
    const auto after =
        PointAt(layout_, scale_, static_cast<int>(screen.x), static_cast<int>(screen.y) + scrolledRows_);
    if (before && after) {
        ScrollTo(startMs_ + before->ms - after->ms);
    }
}

void TracingPaper::ShowCalipers() {
    InvalidateRect(Window(), nullptr, FALSE);
    tell_(calipers_.AreOut() ? calipers_.Text() : std::wstring());
}

void TracingPaper::OnButtonDown(POINT at) {
    SetFocus(Window());
    const auto point =
        PointAt(layout_, scale_, static_cast<int>(at.x), static_cast<int>(at.y) + scrolledRows_);
    if (!point) {
        return;
    }
    pressed_ = at;
    dragging_ = calipers_.Take(point->ms, kReachPixels / scale_.PixelsPerMs());
    SetCapture(Window());
}

void TracingPaper::OnMouseMove(POINT at) {
    if (GetCapture() != Window()) {
        return;
    }
    const auto here =
        PointAt(layout_, scale_, static_cast<int>(at.x), static_cast<int>(at.y) + scrolledRows_);
    if (!dragging_ && std::abs(at.x - pressed_.x) + std::abs(at.y - pressed_.y) >= kReachPixels) {
        const auto first = PointAt(layout_, scale_, static_cast<int>(pressed_.x),
                                   static_cast<int>(pressed_.y) + scrolledRows_);
        if (first) {
            calipers_.Begin(*first);
            dragging_ = true;
        }
    }
    if (dragging_ && here) {
        calipers_.MoveTo(*here);
        ShowCalipers();
    }
}

void TracingPaper::OnButtonUp(POINT at) {
    if (GetCapture() != Window()) {
        return;
    }
    const bool wasDrag = dragging_;  // the loss of the capture ends it
    ReleaseCapture();
    if (!wasDrag) {
        const auto point =
            PointAt(layout_, scale_, static_cast<int>(at.x), static_cast<int>(at.y) + scrolledRows_);
        if (point) {
            TellBeatAt(point->ms);
        }
    }
}

void TracingPaper::TellBeatAt(double ms) {
    const std::vector<TracedBeat>& beats = painter_.Beats();
    const auto nearest =
        std::min_element(beats.begin(), beats.end(), [ms](const TracedBeat& a, const TracedBeat& b) {
            return std::abs(a.timeMs - ms) < std::abs(b.timeMs - ms);
        });
    if (nearest == beats.end() || std::abs(nearest->timeMs - ms) > kBeatReachMs) {
        return tell_(Seconds(ms));
    }
    const auto index = nearest - beats.begin();
    std::wstring text = L"Battito " + std::to_wstring(index + 1) + L" di " + std::to_wstring(beats.size()) +
                        L" a " + Seconds(nearest->timeMs) + L", " + NameOfBeat(nearest->label);
    if (index > 0) {
        text += L", RR " + std::to_wstring(std::lround(nearest->timeMs - (nearest - 1)->timeMs)) + L" ms";
    }
    tell_(text + (nearest->inMedian ? L", nel battito mediano" : L""));
}

bool TracingPaper::OnKey(WPARAM key) {
    const double times = Held(VK_CONTROL) ? 10 : 1;
    const double sample = times * 1000 / signal_.sampleRate;
    const double mv = times * kMvStep;
    const bool out = calipers_.AreOut();
    switch (key) {
        case VK_ESCAPE:
            calipers_.PutAway();
            break;
        case VK_LEFT:
        case VK_RIGHT:
            if (!out) {
                OnHScroll(key == VK_LEFT ? SB_LINELEFT : SB_LINERIGHT);
                return true;
            }
            calipers_.Nudge(key == VK_LEFT ? -sample : sample, 0, signal_.DurationMs());
            break;
        case VK_UP:
        case VK_DOWN:
            if (!out) {
                OnVScroll(key == VK_UP ? SB_LINEUP : SB_LINEDOWN);
                return true;
            }
            calipers_.Nudge(0, key == VK_UP ? mv : -mv, signal_.DurationMs());
            break;
        case VK_SPACE:
            calipers_.TakeOther();
            break;
        case VK_PRIOR:
        case VK_NEXT:
            OnHScroll(key == VK_PRIOR ? SB_PAGELEFT : SB_PAGERIGHT);
            return true;
        case VK_HOME:
        case VK_END:
            OnHScroll(key == VK_HOME ? SB_LEFT : SB_RIGHT);
            return true;
        default:
            return false;
    }
    ShowCalipers();
    return true;
}

LRESULT TracingPaper::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
        case WM_SIZE:
            Rebuild();
            return 0;
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_HSCROLL:
            OnHScroll(LOWORD(wParam));
            return 0;
        case WM_VSCROLL:
            OnVScroll(LOWORD(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0, at);
            return 0;
        case WM_LBUTTONDOWN:
            OnButtonDown(at);
            return 0;
        case WM_MOUSEMOVE:
            OnMouseMove(at);
            return 0;
        case WM_LBUTTONUP:
            OnButtonUp(at);
            return 0;
        case WM_CAPTURECHANGED:
            dragging_ = false;
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        case WM_KEYDOWN:
            return OnKey(wParam) ? 0 : HostWindow::OnMessage(message, wParam, lParam);
        default:
            return HostWindow::OnMessage(message, wParam, lParam);
    }
}

}  // namespace kxhost
