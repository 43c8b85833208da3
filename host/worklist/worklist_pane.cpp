#include "host/worklist/worklist_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <stdexcept>

#include "host/panes/list_columns.h"
#include "host/windows/text_conversion.h"
#include "host/worklist/listing_words.h"

namespace kxhost {
namespace {

enum { kDateColumn, kNameColumn, kIdColumn, kTypeColumn, kStateColumn };

// Lengths at 96 dots per inch.
constexpr int kNaturalWidth = 740;
constexpr int kNaturalHeight = 380;
constexpr int kMargin = 10;
constexpr int kGap = 6;
constexpr int kSearchWidth = 240;
constexpr int kLeastSearchWidth = 100;
constexpr int kStateWidth = 110;
constexpr int kImportWidth = 110;
constexpr std::array kWidths{140, 220, 130, 130, 110};

constexpr UINT kOpenChosen = WM_APP;  // posted: the pane may end by it

constexpr std::uint32_t kPage = 64;  // rows that are asked for at once
constexpr std::size_t kCachedPages = 16;

constexpr std::array<const wchar_t*, 4> kStateNames{L"Tutti", L"Originali", L"Riletti", L"Confermati"};
constexpr std::array<std::uint32_t, 4> kStateMasks{0, 1 << 0 | 1 << 3, 1 << 1,
                                                   1 << 2};  // of ArchiveFilter::states
HWND MakeChild(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, DWORD extendedStyle,
               HFONT font) {
    const HWND child = CreateWindowExW(extendedStyle, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                                       0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (child == nullptr) {
        throw std::runtime_error("a control of the worklist could not be created");
    }
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

}  // namespace

WorklistPane::WorklistPane(HWND parent, const UiMetrics& metrics, const ArchiveClient& archive,
                           WorklistActions& actions)
    : metrics_(metrics), archive_(archive), actions_(actions) {
    Create({L"KxWorklist", nullptr, WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent, 0, 0, nullptr});
    const SIZE size = NaturalSize(metrics);
    SetWindowPos(Window(), nullptr, 0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    CreateChildren();
    Layout();
    Search();
}

SIZE WorklistPane::NaturalSize(const UiMetrics& metrics) {
    return {metrics.Scale(kNaturalWidth), metrics.Scale(kNaturalHeight)};
}

// From the search the arrow goes into the list, and Enter opens what is chosen there.
LRESULT CALLBACK WorklistPane::SearchKeys(HWND search, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR pane) noexcept {
    auto* const self = reinterpret_cast<WorklistPane*>(pane);
    if (message == WM_KEYDOWN && wParam == VK_DOWN) {
        SetFocus(self->list_);
        return 0;
    }
    if (message == WM_KEYDOWN && wParam == VK_RETURN) {
        PostMessageW(self->Window(), kOpenChosen, 0, 0);
        return 0;
    }
    return DefSubclassProc(search, message, wParam, lParam);
}

void WorklistPane::CreateChildren() {
    const HFONT font = metrics_.Message();
    search_ = MakeChild(Window(), L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, font);
    SendMessageW(search_, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(L"Cerca nome, ID, data, stato"));
    SetWindowSubclass(search_, SearchKeys, 0, reinterpret_cast<DWORD_PTR>(this));
    for (std::size_t i = 0; i < kStates; ++i) {
        states_[i] =
            MakeChild(Window(), L"BUTTON", kStateNames[i],
                      BS_AUTORADIOBUTTON | BS_PUSHLIKE | (i == 0 ? WS_GROUP | WS_TABSTOP : 0), 0, font);
    }
    SendMessageW(states_[0], BM_SETCHECK, BST_CHECKED, 0);
    import_ = MakeChild(Window(), L"BUTTON", L"&Importa file...", WS_GROUP | WS_TABSTOP, 0, font);
    list_ = MakeChild(Window(), WC_LISTVIEWW, L"",
                      LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SINGLESEL | WS_TABSTOP,
                      WS_EX_CLIENTEDGE, font);
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    constexpr std::array titles{L"Data", L"Paziente", L"ID", L"Esame", L"Stato"};
    for (std::size_t i = 0; i < titles.size(); ++i) {
        AddColumn(list_, static_cast<int>(i), titles[i], metrics_.Scale(kWidths[i]));
    }
    count_ = MakeChild(Window(), L"STATIC", L"", SS_CENTERIMAGE | SS_NOPREFIX, 0, font);
}

void WorklistPane::Layout() const {
    RECT area;
    GetClientRect(Window(), &area);
    const int margin = metrics_.Scale(kMargin);
    const int gap = metrics_.Scale(kGap);
    const int line = metrics_.LineHeight(metrics_.Message()) + metrics_.Scale(8);
    int left = margin;
    const auto place = [&](HWND control, int width) {
        SetWindowPos(control, nullptr, left, margin, width, line, SWP_NOZORDER | SWP_NOACTIVATE);
        left += width + gap;
    };
    // In a narrow window the search gives way first.
    const int buttons = metrics_.Scale(kStateWidth * static_cast<int>(kStates) + kImportWidth) +
                        gap * static_cast<int>(kStates + 1);
    const int room = static_cast<int>(area.right) - 2 * margin - buttons;
    place(search_, std::clamp(room, metrics_.Scale(kLeastSearchWidth), metrics_.Scale(kSearchWidth)));
    for (const HWND state : states_) {
        place(state, metrics_.Scale(kStateWidth));
    }
    place(import_, metrics_.Scale(kImportWidth));
    const int top = margin + line + gap;
    const int bottom = static_cast<int>(area.bottom) - line;
    SetWindowPos(list_, nullptr, margin, top, std::max(static_cast<int>(area.right) - 2 * margin, 0),
                 std::max(bottom - top, 0), SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(count_, nullptr, margin, bottom, std::max(static_cast<int>(area.right) - 2 * margin, 0),
                 line, SWP_NOZORDER | SWP_NOACTIVATE);
    FillWithColumn(list_, kNameColumn, metrics_.Scale(kWidths[kNameColumn]));
}

kx::ArchiveFilter WorklistPane::Filter(std::size_t state) const {
    kx::ArchiveFilter filter{};
    filter.size = sizeof filter;
    filter.states = kStateMasks[state];
    std::array<wchar_t, sizeof filter.words> words{};
    GetWindowTextW(search_, words.data(), static_cast<int>(words.size()));
    const std::string text = ToRecordText(words.data());
    std::copy_n(text.begin(), std::min(text.size(), sizeof filter.words - 1), filter.words);
    return filter;
}

void WorklistPane::Search() {
    if (!archive_.IsAvailable()) {
        SetWindowTextW(
            count_,
            (L"Archivio non disponibile: " + archive_.FailureText() + L" (il motivo: Ctrl+L)").c_str());
        return;
    }
    for (std::size_t i = 0; i < kStates; ++i) {
        const std::uint32_t count = archive_.Count(Filter(i));
        SetWindowTextW(states_[i],
                       (std::wstring(kStateNames[i]) + L" (" + std::to_wstring(count) + L")").c_str());
        if (i == state_) {
            rows_ = count;
        }
    }
    pages_.clear();
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    SendMessageW(list_, LVM_SETITEMCOUNT, rows_, 0);
    if (rows_ > 0) {
        state.state = state.stateMask;
        SendMessageW(list_, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&state));
    }
    InvalidateRect(list_, nullptr, FALSE);
    SetWindowTextW(count_, (std::to_wstring(rows_) + (rows_ == 1 ? L" esame" : L" esami")).c_str());
}

const ArchivedLine* WorklistPane::Line(std::uint32_t row) {
    const std::uint32_t first = row / kPage * kPage;
    auto page = pages_.find(first);
    if (page == pages_.end()) {
        if (pages_.size() >= kCachedPages) {
            pages_.clear();
        }
        page = pages_.emplace(first, archive_.List(Filter(state_), order_, first, kPage)).first;
    }
    return row - first < page->second.size() ? &page->second[row - first] : nullptr;
}

const ArchivedLine* WorklistPane::Chosen() {
    const LRESULT row = SendMessageW(list_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    return row >= 0 ? Line(static_cast<std::uint32_t>(row)) : nullptr;
}

const std::wstring& WorklistPane::Cell(const ArchivedLine& line, int column) {
    switch (column) {
        case kDateColumn:
            return cell_ = DateText(line.time);
        case kNameColumn:
            return cell_ = NameText(line.name);
        case kIdColumn:
            return cell_ = FromRecordText(line.patientId);
        case kTypeColumn:
            return cell_ = TestTypeText(line.testType);
        default:
            return cell_ = StateText(line.stateFlags);
    }
}

// The actions may end this pane: nothing of it is used behind them.
void WorklistPane::OpenChosen() {
    if (const ArchivedLine* line = Chosen()) {
        actions_.OpenArchivedTest(ArchivedKey(line->key));
    }
}

void WorklistPane::DeleteChosen() {
    if (const ArchivedLine* line = Chosen()) {
        const ArchivedLine copy = *line;
        actions_.DeleteArchivedTest(copy.key, NameText(copy.name) + L" (" + DateText(copy.time) + L")");
    }
}

void WorklistPane::OnColumn(int column) {
    if (column == kDateColumn) {
        order_ = order_ == kx::kArchiveNewestFirst ? kx::kArchiveOldestFirst : kx::kArchiveNewestFirst;
    } else if (column == kNameColumn) {
        order_ = kx::kArchiveByName;
    } else if (column == kIdColumn) {
        order_ = kx::kArchiveById;
    }
    Search();
}

LRESULT WorklistPane::OnNotify(const NMHDR& header) {
    if (header.hwndFrom != list_) {
        return 0;
    }
    switch (header.code) {
        case static_cast<UINT>(LVN_GETDISPINFOW): {
            LVITEMW& item = const_cast<NMLVDISPINFOW&>(reinterpret_cast<const NMLVDISPINFOW&>(header)).item;
            const ArchivedLine* line = Line(static_cast<std::uint32_t>(item.iItem));
            if ((item.mask & LVIF_TEXT) != 0 && line != nullptr) {
                item.pszText = const_cast<wchar_t*>(Cell(*line, item.iSubItem).c_str());
            }
            return 0;
        }
        case static_cast<UINT>(LVN_COLUMNCLICK):
            OnColumn(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
            return 0;
        case static_cast<UINT>(NM_DBLCLK):
        case static_cast<UINT>(NM_RETURN):
            OpenChosen();
            return 0;
        case static_cast<UINT>(LVN_KEYDOWN):
            if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_DELETE) {
                DeleteChosen();
            }
            return 0;
        default:
            return 0;
    }
}

void WorklistPane::OnCommand(HWND control, WORD code) {
    if (control == search_ && code == EN_CHANGE) {
        return Search();
    }
    if (control == import_ && code == BN_CLICKED) {
        return actions_.ImportFilesForUser();
    }
    const auto state = std::find(states_.begin(), states_.end(), control);
    if (state != states_.end() && code == BN_CLICKED) {
        state_ = static_cast<std::size_t>(state - states_.begin());
        Search();
    }
}

LRESULT WorklistPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            if (count_ != nullptr) {
                Layout();
            }
            return 0;
        case WM_SETFOCUS:
            SetFocus(search_);
            return 0;
        case kOpenChosen:
            OpenChosen();
            return 0;
        case WM_COMMAND:
            OnCommand(reinterpret_cast<HWND>(lParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
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
