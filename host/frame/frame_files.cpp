// The workstation's commands that read and write files.
#include "host/file_formats.h"
#include "host/frame/file_dialogs.h"
#include "host/frame/frame_window.h"
#include "host/windows/png_writer.h"
#include "host/windows/text_conversion.h"
#include "host/windows/window_picture.h"

namespace kxhost {

void FrameWindow::OnOpenFile() {
    if (const auto file = AskRecordToOpen(Window())) {
        OpenRecordForUser({ToUtf8(file->wstring()), 0});
    }
}

// One file is opened; several go into the archive, since the workstation shows one recording at a time.
void FrameWindow::OnDropFiles(HDROP drop) {
    constexpr UINT kHowMany = 0xFFFFFFFF;
    std::vector<std::filesystem::path> files;
    const UINT count = DragQueryFileW(drop, kHowMany, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring name(DragQueryFileW(drop, i, nullptr, 0), L'\0');
        DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size() + 1));
        files.emplace_back(name);
    }
    DragFinish(drop);
    SetForegroundWindow(Window());
    if (files.size() == 1) {
        OpenRecordForUser({ToUtf8(files.front().wstring()), 0});
    } else {
        ImportFiles(files);
    }
}

void FrameWindow::ImportFilesForUser() {
    ImportFiles(AskRecordsToImport(Window()));
}

// Each on its own: one that cannot be read keeps none of the others out.
void FrameWindow::ImportFiles(const std::vector<std::filesystem::path>& files) {
    if (files.empty()) {
        return;
    }
    std::size_t done = 0;
    std::wstring failures;
    for (const std::filesystem::path& file : files) {
        try {
            const auto session = RecordSession::Open({ToUtf8(file.wstring()), 0}, analysis_);
            const ArchiveClient::Result saved = session->Save(archive_);
            if (saved.answer == kx::kArchiveDone) {
                ++done;
            } else {
                failures += L"\n" + file.filename().wstring() + L": " + saved.text;
            }
        } catch (const std::exception& error) {
            failures += L"\n" + file.filename().wstring() + L": " + FromUtf8(error.what());
        }
    }
    SelectPane(PaneKind::Worklist);
    ShowNote(std::to_wstring(done) + (done == 1 ? L" esame importato" : L" esami importati"));
    if (!failures.empty()) {
        Say(L"Non importati:" + failures, MB_ICONWARNING);
    }
}

void FrameWindow::OpenArchivedTest(const ArchivedKey& key) {
    if (!ConfirmLoss()) {
        return;
    }
    try {
        TakeSession(RecordSession::OpenArchived(archive_, key));
    } catch (const std::exception& error) {
        Say(L"L'esame non può essere aperto.\n\nDettaglio: " + FromUtf8(error.what()), MB_ICONERROR);
    }
}

void FrameWindow::DeleteArchivedTest(const ArchivedKey& key, const std::wstring& name) {
    if (session_ && session_->Key().id == key.id) {
        return Say(L"Questo esame è aperto: si chiude aprendone un altro, poi si elimina.",
                   MB_ICONINFORMATION);
    }
    const std::wstring question =
        L"Eliminare dall'archivio l'esame di " + name + L"?\n\nNon si può annullare.";
    if (MessageBoxW(Window(), question.c_str(), L"Stazione ECG", MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING) !=
        IDYES) {
        return;
    }
    const ArchiveClient::Result deleted = archive_.Delete(key);
    if (deleted.answer == kx::kArchiveChanged) {
        Say(L"Non eliminato: l'esame è stato salvato nel frattempo da " + deleted.text + L".",
            MB_ICONWARNING);
    } else if (deleted.answer != kx::kArchiveDone) {
        Say(L"L'esame non può essere eliminato: " + deleted.text, MB_ICONERROR);
    }
    ShowPane();
}

bool FrameWindow::OnSave() {
    if (!session_) {
        return false;
    }
    ArchiveClient::Result saved = session_->Save(archive_);
    if (saved.answer == kx::kArchiveChanged) {
        const std::wstring question =
            L"L'esame è stato salvato nel frattempo da " + saved.text +
            L".\n\nTenere entrambi? Il suo resta com'è, questo diventa un esame a parte.";
        if (MessageBoxW(Window(), question.c_str(), L"Stazione ECG", MB_YESNO | MB_ICONQUESTION) != IDYES) {
            return false;
        }
        saved = session_->Save(archive_, true);
    }
    if (saved.answer != kx::kArchiveDone) {
        Say(L"L'esame non è stato salvato: " + saved.text + L"\n\nLe modifiche restano aperte.",
            MB_ICONERROR);
    } else {
        ShowNote(L"salvato nell'archivio");
    }
    ShowChanges();
    return saved.answer == kx::kArchiveDone;
}

void FrameWindow::OnSaveEpisode() {
    if (!session_) {
        return;
    }
    const auto file = AskFileToSave(Window(), L"Salva episodio", L"Episodio (*.kxe)\0*.kxe\0", L"kxe",
                                    session_->Title(), session_->Folder());
    if (file && !session_->SaveEpisode(*file)) {
        Say(L"L'episodio non può essere salvato.\n\n" + file->wstring(), MB_ICONERROR);
    }
}

void FrameWindow::OnExportTable() {
    if (!session_) {
        return;
    }
    if (!session_->MeasuringFailure().empty()) {
        Say(L"Il battito mediano non è misurato: non c'è una tabella da esportare.", MB_ICONINFORMATION);
        return;
    }
    const auto file =
        AskFileToSave(Window(), L"Esporta tabella",
                      L"Tabella per fogli di calcolo (*.csv)\0*.csv\0Pagina HTML (*.html)\0*.html\0", L"csv",
                      session_->Title(), session_->Folder());
    if (!file) {
        return;
    }
    const auto format = TableFormatOf(ToUtf8(file->wstring()));
    if (!format) {
        Say(L"Il nome del file deve finire in .csv o in .html.\n\n" + file->wstring(), MB_ICONERROR);
    } else if (!session_->SaveTable(*file, *format)) {
        Say(L"La tabella non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
    }
}

void FrameWindow::OnExport() {
    if (!session_) {
        return;
    }
    const auto file =
        AskFileToSave(Window(), L"Esporta",
                      L"ECG annotato HL7 (*.xml)\0*.xml\0Campioni per fogli di calcolo (*.csv)\0*.csv\0"
                      L"Pagina PDF del tracciato (*.pdf)\0*.pdf\0"
                      L"Pagina PNG del tracciato, 300 dpi (*.png)\0*.png\0"
                      L"Tabella delle ampiezze (*.html)\0*.html\0",
                      L"xml", session_->Title(), session_->Folder());
    if (!file) {
        return;
    }
    const auto format = ExportFormatOf(ToUtf8(file->wstring()));
    if (!format) {
        Say(L"Il nome del file deve finire in .xml, .csv, .pdf, .png o .html.\n\n" + file->wstring(),
            MB_ICONERROR);
    } else if (session_->Export(*file, *format)) {
        ShowNote(L"esportato: " + file->filename().wstring());
    } else {
        Say(L"L'esame non può essere esportato.\n\n" + file->wstring(), MB_ICONERROR);
    }
}

void FrameWindow::OnSavePicture() {
    const auto file =
        AskFileToSave(Window(), L"Salva immagine", L"Immagine PNG (*.png)\0*.png\0", L"png", L"stazione");
    if (!file) {
        return;
    }
    WaitUntilPainted(Window());
    const GdiPlusSession gdiPlus;
    const UniqueBitmap picture = TakePicture(Window());
    if (!gdiPlus.IsStarted() || !picture || !WritePng(picture.get(), *file)) {
        Say(L"L'immagine non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
    }
}

}  // namespace kxhost
