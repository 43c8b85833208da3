// What the workstation's menu does.
#include <windows.h>

#include <commctrl.h>

#include <exception>

#include "host/frame/command_line_help.h"
#include "host/frame/frame_window.h"
#include "host/resource_ids.h"
#include "host/windows/help_page.h"
#include "host/windows/text_conversion.h"

namespace kxhost {
namespace {

constexpr int kEditorMargin = 40;        // pixels between the middle's edge and the editor
constexpr int kLibraryPanelWidth = 300;  // by which the editor grows to the left

}  // namespace

void FrameWindow::Say(const std::wstring& text, UINT icon) const {
    MessageBoxW(Window(), text.c_str(), L"Stazione ECG", MB_OK | icon);
}

// The interpretation pane writes a box that was ticked with its next save, at the latest when it ends; what
// is saved or printed is to be what is shown.
void FrameWindow::StoreShown() {
    if (!session_ || ShownPane() != PaneKind::Interpretation) {
        return;
    }
    const HWND focus = GetFocus();
    const bool isInside = IsChild(paneHost_->Pane(), focus) != FALSE;
    const int control = GetDlgCtrlID(focus);
    const auto selection = static_cast<DWORD>(SendMessageW(focus, EM_GETSEL, 0, 0));
    ShowPane();
    if (!isInside) {
        return;
    }
    if (const HWND same = GetDlgItem(paneHost_->Pane(), control)) {
        SetFocus(same);
        SendMessageW(same, EM_SETSEL, LOWORD(selection), HIWORD(selection));
    } else {
        paneHost_->FocusPane();
    }
}

bool FrameWindow::ConfirmLoss() {
    StoreShown();
    if (!session_ || !session_->HasChanges()) {
        return true;
    }
    std::wstring lost;
    if (session_->HasChangedMarkers()) {
        lost += L"\n- i marcatori e le misure corretti";
    }
    if (session_->HasChangedText()) {
        lost += L"\n- il testo dell'interpretazione";
    }
    if (session_->HasChangedReport() || lost.empty()) {
        lost += L"\n- i dati del referto (stadio, nomi, date)";
    }
    const std::wstring question =
        L"Salvare le modifiche a «" + session_->Title() + L"»?\n\nSenza salvare vanno perduti:" + lost;
    switch (MessageBoxW(Window(), question.c_str(), L"Stazione ECG", MB_YESNOCANCEL | MB_ICONQUESTION)) {
        case IDYES:
            return OnSave();
        case IDNO:
            return true;
        default:
            return false;
    }
}

void FrameWindow::OpenRecordForUser(const RecordRequest& request) {
    if (!ConfirmLoss()) {
        return;
    }
    try {
        OpenRecord(request);
    } catch (const std::exception& error) {
        // The reader's reason is for whoever has to mend the file; what it means for the user is said first.
        std::wstring text =
            L"Il tracciato non può essere aperto.\n\nManca un file, oppure l'intestazione o i segnali sono "
            L"incompleti o "
            L"danneggiati.";
        if (session_) {
            text += L" Resta aperto il tracciato mostrato finora.";
        }
        Say(text + L"\n\nDettaglio: " + FromUtf8(error.what()), MB_ICONERROR);
    }
}

void FrameWindow::OnCommand(int id) {
    if (id >= IDM_VIEW_FIRST_PANE && id <= IDM_VIEW_LAST_PANE) {
        SelectPane(kPanes[static_cast<std::size_t>(id - IDM_VIEW_FIRST_PANE)].kind);
        return;
    }
    static constexpr struct {
        int id;
        void (*run)(FrameWindow& frame);
    } kCommands[] = {
        {IDM_FILE_OPEN, [](FrameWindow& frame) { frame.OnOpenFile(); }},
        {IDM_FILE_BUILTIN, [](FrameWindow& frame) { frame.OpenRecordForUser({}); }},
        {IDM_FILE_SAVE, [](FrameWindow& frame) { frame.StoreShown(), frame.OnSave(); }},
        {IDM_FILE_IMPORT, [](FrameWindow& frame) { frame.ImportFilesForUser(); }},
        {IDM_FILE_SAVE_EPISODE, [](FrameWindow& frame) { frame.OnSaveEpisode(); }},
        {IDM_FILE_EXPORT, [](FrameWindow& frame) { frame.StoreShown(), frame.OnExport(); }},
        {IDM_FILE_EXPORT_TABLE, [](FrameWindow& frame) { frame.OnExportTable(); }},
        {IDM_FILE_PRINT, [](FrameWindow& frame) { frame.StoreShown(), frame.OnPrint(); }},
        {IDM_FILE_SAVE_PICTURE, [](FrameWindow& frame) { frame.OnSavePicture(); }},
        {IDM_FILE_EXIT, [](FrameWindow& frame) { SendMessageW(frame.Window(), WM_CLOSE, 0, 0); }},
        {IDM_EDIT_UNDO, [](FrameWindow& frame) { frame.paneHost_->StrikeControl('Z'); }},
        {IDM_EDIT_REDO, [](FrameWindow& frame) { frame.paneHost_->StrikeControl('Y'); }},
        {IDM_VIEW_REFRESH, [](FrameWindow& frame) { frame.ShowPane(); }},
        {IDM_VIEW_LOG, [](FrameWindow& frame) { frame.OnShowLog(); }},
        {IDM_VIEW_NEXT_PART, [](FrameWindow& frame) { frame.FocusNextPart(); }},
        {IDM_VIEW_NEXT_PANE, [](FrameWindow& frame) { frame.StepPane(1); }},
        {IDM_VIEW_PREVIOUS_PANE, [](FrameWindow& frame) { frame.StepPane(-1); }},
        {IDM_REPORT_STATEMENT, [](FrameWindow& frame) { frame.OnEditReport(0); }},
        {IDM_REPORT_PHYSICIAN, [](FrameWindow& frame) { frame.OnEditReport(1); }},
        {IDM_HELP_COMMAND_LINE, [](FrameWindow& frame) { ShowCommandLineHelp(frame.Window()); }},
        {IDM_HELP_TOPIC, [](FrameWindow& frame) { frame.OnHelp(); }},
        {IDM_HELP_ABOUT, [](FrameWindow& frame) { frame.OnAbout(); }},
    };
    for (const auto& command : kCommands) {
        if (command.id == id) {
            command.run(*this);
            return;
        }
    }
}

void FrameWindow::OnShowLog() {
    logShown_ = !logShown_;
    CheckMenuItem(GetMenu(Window()), IDM_VIEW_LOG, logShown_ ? MF_CHECKED : MF_UNCHECKED);
    Layout();
}

void FrameWindow::ShowEditing() const {
    const HMENU menu = GetMenu(Window());
    const auto enable = [menu](UINT id, bool possible) {
        EnableMenuItem(menu, id, possible ? MF_ENABLED : MF_GRAYED);
    };
    enable(IDM_EDIT_UNDO, paneHost_->MayUndo());
    enable(IDM_EDIT_REDO, paneHost_->MayRedo());
}

// In the middle of the window, with room on the left for the editor's library panel.
void FrameWindow::OnEditReport(uint32_t mode) {
    if (!session_) {
        return;
    }
    paneHost_->Close();
    RECT frame;
    RECT middle;
    GetWindowRect(Window(), &frame);
    GetWindowRect(paneHost_->Window(), &middle);
    const int left = static_cast<int>(middle.left - frame.left) + kEditorMargin + kLibraryPanelWidth;
    const int top = static_cast<int>(middle.top - frame.top) + kEditorMargin;
    const KxRect area{left, top, left + metrics_.Scale(420), top + metrics_.Scale(mode == 0 ? 160 : 60)};
    KxHostWindow parent{};
    parent.handle = Window();
    library_.EditReport(parent, session_->Test(), area, mode);
    ShowPane();
    paneHost_->FocusPane();
    ShowChanges();
}

// The page of the pane that is shown.
void FrameWindow::OnHelp() {
    if (!OpenHelpPage(Window(), RowOf(ShownPane()).helpPage)) {
        Say(L"La guida non si apre: manca un visualizzatore, e manca la cartella help accanto al programma.",
            MB_ICONINFORMATION);
    }
}

void FrameWindow::OnAbout() {
    Say(L"Stazione ECG\n\nUna piccola stazione di lavoro che apre tracciati WFDB, SCP-ECG, DICOM e HL7 aECG "
        L"e mostra i pannelli di "
        L"revisione di "
        L"kxdialogs.dll: l'esempio vivo per chi integra la libreria.\n\nNon è un dispositivo medico.",
        MB_ICONINFORMATION);
}

}  // namespace kxhost
