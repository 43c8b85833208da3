// The workstation's commands that read and write files.
#include "host/frame/file_dialogs.h"
#include "host/frame/frame_window.h"
#include "host/windows/png_writer.h"
#include "host/windows/text_conversion.h"
#include "host/windows/window_picture.h"

namespace kxhost {

void FrameWindow::OnOpenFile() {
    if (const auto file = AskRecordToOpen(Window()))
        OpenRecordForUser({ToUtf8(file->wstring()), 0});
}

// Of several dropped files the first is opened: the workstation shows one recording at a time.
void FrameWindow::OnDropFiles(HDROP drop) {
    std::wstring name(DragQueryFileW(drop, 0, nullptr, 0), L'\0');
    DragQueryFileW(drop, 0, name.data(), static_cast<UINT>(name.size() + 1));
    DragFinish(drop);
    SetForegroundWindow(Window());
    if (!name.empty())
        OpenRecordForUser({ToUtf8(name), 0});
}

void FrameWindow::OnSaveEpisode() {
    if (!session_)
        return;
    const auto file =
        AskFileToSave(Window(), L"Salva episodio", L"Episodio (*.kxe)\0*.kxe\0", L"kxe", session_->Title());
    if (file && !session_->SaveEpisode(*file))
        Say(L"L'episodio non può essere salvato.\n\n" + file->wstring(), MB_ICONERROR);
}

void FrameWindow::OnExportTable() {
    if (!session_)
        return;
    if (!session_->MeasuringFailure().empty()) {
        Say(L"Il battito mediano non è misurato: non c'è una tabella da esportare.", MB_ICONINFORMATION);
        return;
    }
    const auto file =
        AskFileToSave(Window(), L"Esporta tabella",
                      L"Tabella per fogli di calcolo (*.csv)\0*.csv\0Pagina HTML (*.html)\0*.html\0", L"csv",
                      session_->Title());
    if (!file)
        return;
    const auto format = TableFormatOf(ToUtf8(file->wstring()));
    if (!format)
        Say(L"Il nome del file deve finire in .csv o in .html.\n\n" + file->wstring(), MB_ICONERROR);
    else if (!session_->SaveTable(*file, *format))
        Say(L"La tabella non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
}

void FrameWindow::OnSavePicture() {
    const auto file =
        AskFileToSave(Window(), L"Salva immagine", L"Immagine PNG (*.png)\0*.png\0", L"png", L"stazione");
    if (!file)
        return;
    WaitUntilPainted(Window());
    const GdiPlusSession gdiPlus;
    const UniqueBitmap picture = TakePicture(Window());
    if (!gdiPlus.IsStarted() || !picture || !WritePng(picture.get(), *file))
        Say(L"L'immagine non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
}

}  // namespace kxhost
