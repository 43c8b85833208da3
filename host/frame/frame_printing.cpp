// The workstation's printing.
#include "host/frame/file_dialogs.h"
#include "host/frame/frame_window.h"
#include "host/frame/print_dialog.h"
#include "host/printing/page_output.h"
#include "host/printing/print_page.h"
#include "host/windows/text_conversion.h"
#include "lib/measurement_table.h"
#include "lib/modules/system_services.h"

namespace kxhost {
namespace {

constexpr wchar_t kPageFilter[] =
    L"Pagina PCL per la stampante (*.pcl)\0*.pcl\0Immagine BMP (*.bmp)\0*.bmp\0Immagine PNG (*.png)\0*.png\0";

// The lead that a pane of the library shows: what is chosen in the one of its lists that names leads.
std::optional<unsigned> LeadShownIn(HWND pane) {
    for (HWND list = nullptr; (list = FindWindowExW(pane, list, L"ComboBox", nullptr)) != nullptr;) {
        char text[16] = {};
        GetWindowTextA(list, text, sizeof text);
        for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
            if (kx::StandardLeadName(lead) == std::string_view(text))
                return lead;
        }
    }
    return std::nullopt;
}

std::wstring SizesText(const PageSizes& sizes) {
    return std::to_wstring(sizes.raw) + L" byte, compressi " + std::to_wstring(sizes.packed);
}

}  // namespace

void FrameWindow::OnPrint() {
    if (!session_)
        return;
    kx::SystemServices services(nullptr);
    PrintChoice first{printedLead_, printedPaper_, {}};
    if (paneHost_->Pane() != nullptr)
        first.lead = LeadShownIn(paneHost_->Pane()).value_or(first.lead);
    const auto choice = AskHowToPrint(Window(), ListPrinters(services), first);
    if (!choice)
        return;
    printedLead_ = choice->lead;
    printedPaper_ = choice->paper;
    const auto page = DrawPage(DescribePage(session_->Test(), choice->lead), choice->paper);
    const std::wstring sizes = SizesText(SizesOf(*page));
    const std::wstring lead = FromRecordText(kx::StandardLeadName(choice->lead));
    if (choice->printer) {
        const std::wstring printer = FromSystemText(*choice->printer);
        if (PrintPage(*page, choice->paper, *choice->printer, ToSystemText(session_->Title()), services))
            ShowNote(L"Derivazione " + lead + L" stampata: " + sizes);
        else
            Say(L"La stampante non c'è o rifiuta la pagina.\n\n" + printer +
                    L"\n\nIl motivo è fra i messaggi della libreria.",
                MB_ICONERROR);
        return;
    }
    const auto file =
        AskFileToSave(Window(), L"Salva pagina", kPageFilter, L"pcl", session_->Title() + L" " + lead);
    if (!file)
        return;
    const auto format = PageFormatOf(ToUtf8(file->wstring()));
    if (!format)
        Say(L"Il nome del file deve finire in .pcl, .bmp o .png.\n\n" + file->wstring(), MB_ICONERROR);
    else if (SavePage(*page, choice->paper, *format, *file))
        ShowNote(L"Derivazione " + lead + L" salvata: " + sizes);
    else
        Say(L"La pagina non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
}

}  // namespace kxhost
