#include "host/frame/frame_window.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "host/resource_ids.h"
#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

// Lengths at 96 dots per inch.
constexpr int kFirstWidth = 1180;
constexpr int kFirstHeight = 860;
constexpr int kGap = 6;
constexpr int kTabPadding = 10;
constexpr int kSmallestHeight = 480;

constexpr const wchar_t* kProgramTitle = L"Stazione ECG";

}  // namespace

FrameWindow::FrameWindow(const LibraryClient& library, const AnalysisClient& analysis,
                         const ArchiveClient& archive, const UiMetrics& metrics)
    : library_(library),
      analysis_(analysis),
      archive_(archive),
      metrics_(metrics),
      accelerators_(LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ACCELERATORS))) {
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const int width = std::min(metrics_.Scale(kFirstWidth), static_cast<int>(work.right - work.left));
    const int height = std::min(metrics_.Scale(kFirstHeight), static_cast<int>(work.bottom - work.top));
    Create({L"KxWorkstation", kProgramTitle, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_ACCEPTFILES,
            nullptr, width, height, LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_MENU))});
    CreateChildren();
    Layout();
    ShowStatus();
}

FrameWindow::~FrameWindow() = default;

void FrameWindow::CreateChildren() {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    strip_ = std::make_unique<PatientStrip>(Window(), metrics_);
    WorklistActions& actions = *this;
    paneHost_ = std::make_unique<PaneHost>(Window(), library_, metrics_, &archive_, &actions);
    tabs_ = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP, 0,
                            0, 0, 0, Window(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_TABS)),
                            instance, nullptr);
    SendMessageW(tabs_, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_.Message()), FALSE);
    SendMessageW(tabs_, TCM_SETPADDING, 0, MAKELPARAM(metrics_.Scale(kTabPadding), metrics_.Scale(4)));
    for (const PaneRow& row : kPanes) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(row.title);
        SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(row.kind), reinterpret_cast<LPARAM>(&item));
    }
    log_ = std::make_unique<LogPane>(Window(), metrics_);
    status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0,
                              Window(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_STATUS)), instance,
                              nullptr);
    SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_.Message()), FALSE);
}

void FrameWindow::Layout() {
    if (status_ == nullptr) {
        return;
    }
    RECT area;
    GetClientRect(Window(), &area);
    SendMessageW(status_, WM_SIZE, 0, 0);
    RECT status;
    GetWindowRect(status_, &status);
    const int gap = metrics_.Scale(kGap);
    const int width = static_cast<int>(area.right);
    int bottom = static_cast<int>(area.bottom - (status.bottom - status.top));
    const int parts[] = {width - metrics_.Scale(620), width - metrics_.Scale(380),
                         width - metrics_.Scale(180), -1};
    SendMessageW(status_, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));

    const int stripHeight = strip_->Height();
    SetWindowPos(strip_->Window(), nullptr, 0, 0, width, stripHeight, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(log_->Window(), logShown_ ? SW_SHOWNA : SW_HIDE);
    if (logShown_) {
        const int logHeight = std::min(log_->PreferredHeight(), std::max((bottom - stripHeight) / 3, 0));
        bottom -= logHeight + gap;
        SetWindowPos(log_->Window(), nullptr, gap, bottom, width - 2 * gap, logHeight,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        log_->FitColumns();
    }
    RECT pane{gap, stripHeight + gap, width - gap, bottom - gap};
    pane.bottom = std::max(pane.bottom, pane.top);
    SetWindowPos(tabs_, HWND_BOTTOM, static_cast<int>(pane.left), static_cast<int>(pane.top),
                 static_cast<int>(pane.right - pane.left), static_cast<int>(pane.bottom - pane.top),
                 SWP_NOACTIVATE);
    SendMessageW(tabs_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&pane));
    SetWindowPos(paneHost_->Window(), HWND_TOP, static_cast<int>(pane.left), static_cast<int>(pane.top),
                 std::max(static_cast<int>(pane.right - pane.left), 0),
                 std::max(static_cast<int>(pane.bottom - pane.top), 0), SWP_NOACTIVATE);
}

// As narrow as the measurements with some room for the name; never more than the screen has.
void FrameWindow::OnGetMinMaxInfo(MINMAXINFO& info) const {
    if (!strip_) {
        return;
    }
    info.ptMinTrackSize.x =
        std::min(strip_->WidthOfMeasurements() + metrics_.Scale(220), GetSystemMetrics(SM_CXSCREEN));
    info.ptMinTrackSize.y = std::min(metrics_.Scale(kSmallestHeight), GetSystemMetrics(SM_CYSCREEN));
    info.ptMaxTrackSize = {kLargestShot, kLargestShot};
}

void FrameWindow::OpenRecord(const RecordRequest& request) {
    TakeSession(RecordSession::Open(request, analysis_));
}

void FrameWindow::TakeSession(std::unique_ptr<RecordSession> opened) {
    paneHost_->Close();
    session_ = std::move(opened);
    if (SendMessageW(tabs_, TCM_GETCURSEL, 0, 0) == static_cast<LRESULT>(PaneKind::Worklist)) {
        SendMessageW(tabs_, TCM_SETCURSEL, static_cast<WPARAM>(PaneKind::Tracing), 0);
    }
    ShowRecord();
}

void FrameWindow::ShowRecord() {
    SetWindowTextW(Window(), (session_->Title() + L" - " + kProgramTitle).c_str());
    for (const std::wstring& remark : session_->Remarks()) {
        AppendReport(L"Tracciato", remark);
    }
    if (!session_->MeasuringFailure().empty()) {
        AppendReport(L"Stazione", L"Il battito mediano non è misurato: " + session_->MeasuringFailure());
    }
    ShowPane();
    paneHost_->FocusPane();
    shown_ = TakeSnapshot();
    strip_->Show(DescribePatient(session_->Test(), &session_->Measurements()));
    ShowStatus();
}

FrameWindow::Snapshot FrameWindow::TakeSnapshot() const {
    Snapshot snapshot;
    std::memcpy(snapshot.measured.data(), &session_->Measurements(), snapshot.measured.size());
    std::memcpy(snapshot.patient.data(), static_cast<const KxTestRecord*>(&session_->Test()),
                snapshot.patient.size());
    snapshot.changed = session_->HasChanges();
    snapshot.reportState = session_->Test().reportState;
    snapshot.manualMarkers = session_->HasManualMarkers();
    return snapshot;
}

void FrameWindow::ShowChanges() {
    if (!session_) {
        return;
    }
    const Snapshot now = TakeSnapshot();
    if (now == shown_) {
        return;
    }
    shown_ = now;
    strip_->Show(DescribePatient(session_->Test(), &session_->Measurements()));
    ShowStatus();
}

void FrameWindow::ShowStatus() {
    const wchar_t* texts[4] = {L"Nessun tracciato aperto", L"", L"", L""};
    std::wstring title;
    if (!session_ && !note_.empty()) {
        texts[0] = note_.c_str();
    }
    if (session_) {
        title = session_->Title() + (note_.empty() ? L"" : L" - " + note_);
        texts[0] = title.c_str();
        texts[1] = ReportStateText(session_->Test().reportState);
        texts[2] = session_->HasChanges()   ? L"Esame: modificato"
                   : session_->IsArchived() ? L"Esame: salvato"
                                            : L"Esame: non nell'archivio";
        texts[3] = session_->Measurements().measured == 0 ? L"Misure: nessuna"
                   : session_->HasManualMarkers()         ? L"Misure: corrette a mano"
                                                          : L"Misure: automatiche";
    }
    for (WPARAM part = 0; part < std::size(texts); ++part) {
        SendMessageW(status_, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(texts[part]));
    }
}

void FrameWindow::ShowNote(std::wstring text) {
    note_ = std::move(text);
    ShowStatus();
}

PaneKind FrameWindow::ShownPane() const {
    const auto selected = SendMessageW(tabs_, TCM_GETCURSEL, 0, 0);
    return kPanes[static_cast<std::size_t>(std::max<LRESULT>(selected, 0))].kind;
}

void FrameWindow::ShowPane() {
    if (!note_.empty()) {
        ShowNote({});
    }
    const PaneKind kind = ShownPane();
    if (kind == PaneKind::Worklist) {
        paneHost_->OpenWorklist();
    } else if (session_) {
        paneHost_->Open(kind, session_->Test());
    } else {
        paneHost_->Close();
        paneHost_->ShowMessage(
            L"Nessun tracciato aperto.\nSi apre dall'elenco degli esami, con Ctrl+O, o trascinando qui il "
            L"suo file.");
    }
    ShowChanges();
}

void FrameWindow::SelectPane(PaneKind kind) {
    SendMessageW(tabs_, TCM_SETCURSEL, static_cast<WPARAM>(kind), 0);
    ShowPane();
    paneHost_->FocusPane();
}

// The arrows on the tabs go from tab to tab and must not lose the keyboard on the way; a click means the
// pane.
void FrameWindow::OnTabChosen() {
    ShowPane();
    if (GetKeyState(VK_LBUTTON) < 0) {
        paneHost_->FocusPane();
    }
}

// The window manager gives the keyboard to the window itself when it is entered again; it belongs to the
// control that had it.
void FrameWindow::OnSetFocus() {
    if (lastFocus_ != nullptr && IsChild(Window(), lastFocus_)) {
        SetFocus(lastFocus_);
    } else if (paneHost_) {
        paneHost_->FocusPane();
    }
}

void FrameWindow::StepPane(int step) {
    const int count = static_cast<int>(kPanes.size());
    const int selected = static_cast<int>(SendMessageW(tabs_, TCM_GETCURSEL, 0, 0));
    SelectPane(kPanes[static_cast<std::size_t>((selected + step + count) % count)].kind);
}

void FrameWindow::FocusNextPart() {
    const HWND focus = GetFocus();
    const HWND pane = paneHost_->Pane();
    if (focus == tabs_ && pane != nullptr) {
        paneHost_->FocusPane();
    } else if (logShown_ && focus != log_->Window()) {
        SetFocus(log_->Window());
    } else {
        SetFocus(tabs_);
    }
}

void FrameWindow::AppendReport(const std::wstring& kind, const std::wstring& text) {
    if (log_) {
        log_->Append(kind, text);
    }
}

bool FrameWindow::TranslateKeys(MSG& message) {
    // Before each message: one that opens a dialog disables this window, and its focus is gone by then.
    if (const HWND focus = GetFocus(); focus != nullptr && IsChild(Window(), focus)) {
        lastFocus_ = focus;
    }
    if (TranslateAcceleratorW(Window(), accelerators_, &message) != 0) {
        return true;
    }
    return paneHost_->TranslateForPane(message) || IsDialogMessageW(Window(), &message) != FALSE;
}

LRESULT FrameWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        case WM_GETMINMAXINFO:
            OnGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_INITMENUPOPUP:
            ShowEditing();
            return 0;
        case WM_COMMAND:
            // Only the menu and the accelerators speak to the frame; controls come with their window.
            if (lParam == 0) {
                OnCommand(LOWORD(wParam));
            }
            return 0;
        case WM_NOTIFY:
            if (const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
                header.hwndFrom == tabs_ && header.code == static_cast<UINT>(TCN_SELCHANGE)) {
                OnTabChosen();
            }
            return 0;
        case WM_SETFOCUS:
            OnSetFocus();
            return 0;
        case WM_DROPFILES:
            OnDropFiles(reinterpret_cast<HDROP>(wParam));
            return 0;
        case WM_USER:       // a pane has stored something
        case WM_ENTERIDLE:  // from the loop of a dialog or menu over this window, which the program's own
                            // does not see
            ShowChanges();
            return 0;
        case WM_CLOSE:
            if (ConfirmLoss()) {
                DestroyWindow(Window());
            }
            return 0;
        case WM_DESTROY:
            if (paneHost_) {
                paneHost_->Close();
            }
            PostQuitMessage(0);
            return 0;
        default:
            return HostWindow::OnMessage(message, wParam, lParam);
    }
}

}  // namespace kxhost
