#include "host/panes/tracing_pane.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace kxhost {
namespace {

// Lengths at 96 dots per inch.
constexpr int kNaturalWidth = 780;
constexpr int kNaturalHeight = 400;
constexpr int kBarHeight = 32;
constexpr int kMargin = 6;
constexpr int kComboWidth = 96;
constexpr int kWhatWidth = 250;
constexpr int kInfoWidth = 330;
constexpr int kComboDrop = 140;

constexpr std::array<const wchar_t*, 3> kArrangements{L"3 x 4 + ritmo", L"6 x 2", L"12 x 1"};
constexpr std::array<const wchar_t*, 3> kSpeeds{L"12,5 mm/s", L"25 mm/s", L"50 mm/s"};
constexpr std::array<const wchar_t*, 3> kGains{L"5 mm/mV", L"10 mm/mV", L"20 mm/mV"};

HWND MakeChild(HWND parent, const wchar_t* className, DWORD style, HFONT font) {
    const HWND child = CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                                       nullptr, GetModuleHandleW(nullptr), nullptr);
    if (child == nullptr) {
        throw std::runtime_error("a control of the tracing could not be created");
    }
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

HWND MakeCombo(HWND parent, HFONT font, const std::array<const wchar_t*, 3>& texts, int chosen) {
    const HWND combo = MakeChild(parent, L"COMBOBOX", CBS_DROPDOWNLIST | WS_TABSTOP, font);
    for (const wchar_t* text : texts) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    return combo;
}

std::wstring WhatItIs(const TracingSignal& signal, std::size_t beats) {
    wchar_t text[96];
    std::swprintf(text, std::size(text), L"Registrazione: %.1f s, %g Hz, %u battiti",
                  signal.DurationMs() / 1000, signal.sampleRate, static_cast<unsigned>(beats));
    std::wstring result = text;
    std::replace(result.begin(), result.end(), L'.', L',');
    return result;
}

}  // namespace

TracingPane::TracingPane(HWND parent, const UiMetrics& metrics, const KxTestRecord& test)
    : metrics_(metrics), signal_(SignalOf(test)) {
    Create(
        {L"KxTracingPane", nullptr, WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent, 0, 0, nullptr});
    const SIZE size = NaturalSize(metrics);
    SetWindowPos(Window(), nullptr, 0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    CreateBar();
    std::vector<TracedBeat> beats = BeatsOf(test);
    if (signal_) {
        SetWindowTextW(what_, WhatItIs(*signal_, beats.size()).c_str());
        paper_ = std::make_unique<TracingPaper>(Window(), metrics, *signal_, std::move(beats),
                                                [this](const std::wstring& text) { ShowInfo(text); });
    } else {
        SetWindowTextW(what_, L"Nessuna registrazione");
    }
    Layout();
}

TracingPane::~TracingPane() = default;

SIZE TracingPane::NaturalSize(const UiMetrics& metrics) {
    return {metrics.Scale(kNaturalWidth), metrics.Scale(kNaturalHeight)};
}

void TracingPane::CreateBar() {
    const HFONT font = metrics_.Message();
    arrangement_ = MakeCombo(Window(), font, kArrangements, 0);
    speed_ = MakeCombo(Window(), font, kSpeeds, 1);
    gain_ = MakeCombo(Window(), font, kGains, 1);
    what_ = MakeChild(Window(), L"STATIC", SS_CENTERIMAGE | SS_NOPREFIX | SS_ENDELLIPSIS, font);
    info_ = MakeChild(Window(), L"STATIC", SS_CENTERIMAGE | SS_NOPREFIX | SS_ENDELLIPSIS, metrics_.Strong());
}

void TracingPane::Layout() const {
    RECT area;
    GetClientRect(Window(), &area);
    const int margin = metrics_.Scale(kMargin);
    const int bar = metrics_.Scale(kBarHeight);
    int left = margin;
    const auto place = [&](HWND control, int width, int height) {
        SetWindowPos(control, nullptr, left, margin / 2, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
        left += width + margin;
    };
    for (const HWND combo : {arrangement_, speed_, gain_}) {
        place(combo, metrics_.Scale(kComboWidth), metrics_.Scale(kComboDrop));
    }
    const int lineHeight = bar - margin;
    // In a narrow window what is measured takes the place of what is shown.
    const int room = static_cast<int>(area.right) - left - margin;
    const bool both = room >= metrics_.Scale(kWhatWidth + kInfoWidth) || GetWindowTextLengthW(info_) == 0;
    ShowWindow(what_, both ? SW_SHOWNA : SW_HIDE);
    if (both) {
        place(what_, std::min(metrics_.Scale(kWhatWidth), std::max(room, 0)), lineHeight);
    }
    place(info_, std::max(static_cast<int>(area.right) - left - margin, 0), lineHeight);
    if (paper_) {
        SetWindowPos(paper_->Window(), nullptr, 0, bar, static_cast<int>(area.right),
                     std::max(static_cast<int>(area.bottom) - bar, 0), SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void TracingPane::ShowInfo(const std::wstring& text) const {
    const bool was = GetWindowTextLengthW(info_) != 0;
    SetWindowTextW(info_, text.c_str());
    if (was == text.empty()) {
        Layout();
    }
}

void TracingPane::OnChoice(HWND combo) {
    const auto chosen = static_cast<std::size_t>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
    if (!paper_ || chosen >= kSpeeds.size()) {
        return;
    }
    if (combo == arrangement_) {
        paper_->SetArrangement(static_cast<Arrangement>(chosen));
    } else if (combo == speed_) {
        paper_->SetSpeed(kTracingSpeeds[chosen]);
    } else if (combo == gain_) {
        paper_->SetGain(kTracingGains[chosen]);
    }
}

LRESULT TracingPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (info_ != nullptr) {
                Layout();
            }
            return 0;
        case WM_SETFOCUS:
            SetFocus(paper_ ? paper_->Window() : arrangement_);
            return 0;
        case WM_COMMAND:
            if (HIWORD(wParam) == CBN_SELCHANGE) {
                OnChoice(reinterpret_cast<HWND>(lParam));
            }
            return 0;
        case WM_ERASEBKGND: {
            RECT area;
            GetClientRect(Window(), &area);
            FillRect(reinterpret_cast<HDC>(wParam), &area, GetSysColorBrush(COLOR_BTNFACE));
            return 1;
        }
        default:
            return HostWindow::OnMessage(message, wParam, lParam);
    }
}

}  // namespace kxhost
