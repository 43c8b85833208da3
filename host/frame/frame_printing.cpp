// The workstation's printing.
#include "host/frame/file_dialogs.h"
#include "host/frame/frame_window.h"
#include "host/frame/print_dialog.h"
#include "host/printing/page_output.h"
#include "host/printing/print_page.h"
#include "host/printing/tracing_output.h"
#include "host/windows/text_conversion.h"
#include "lib/measurement_table.h"
#include "lib/modules/system_services.h"

namespace kxhost {
namespace {

constexpr wchar_t kPageFilter[] =
    L"Pagina PCL per la stampante (*.pcl)\0*.pcl\0Immagine BMP (*.bmp)\0*.bmp\0Immagine PNG (*.png)\0*.png\0";

constexpr wchar_t kTracingFilter[] =
    L"Pagina PDF (*.pdf)\0*.pdf\0Immagine PNG (*.png)\0*.png\0Pagina PCL per la stampante (*.pcl)\0*.pcl\0"
    L"Immagine BMP (*.bmp)\0*.bmp\0";
constexpr wchar_t kReasonInLog[] = L"Il motivo è fra i messaggi della libreria.";

// The lead that a pane of the library shows: what is chosen in the one of its lists that names leads.
std::optional<unsigned> LeadShownIn(HWND pane) {
    for (HWND list = nullptr; (list = FindWindowExW(pane, list, L"ComboBox", nullptr)) != nullptr;) {
        char text[16] = {};
        GetWindowTextA(list, text, sizeof text);
        for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
            if (kx::StandardLeadName(lead) == std::string_view(text)) {
                return lead;
            }
        }
    }
    return std::nullopt;
}

std::wstring SizesText(const PageSizes& sizes) {
    return std::to_wstring(sizes.raw) + L" byte, compressi " + std::to_wstring(sizes.packed);
}

}  // namespace

void FrameWindow::OnPrint() {
    if (!session_) {
        return;
    }
    kx::SystemServices services(nullptr);
    PrintChoice first = printed_;
    first.printer.reset();
    if (paneHost_->Pane() != nullptr) {
        first.lead = LeadShownIn(paneHost_->Pane());
    }
    const auto choice = AskHowToPrint(Window(), ListPrinters(services), first);
    if (!choice) {
        return;
    }
    printed_ = *choice;
    if (choice->lead) {
        PrintLead(*choice);
    } else {
        PrintWholeTracing(*choice);
    }
}

void FrameWindow::SayPrinterRefuses(const std::wstring& printer, const std::wstring& reason) const {
    Say(L"La stampante non c'è o rifiuta la pagina.\n\n" + printer + L"\n\n" + reason, MB_ICONERROR);
}

void FrameWindow::PrintLead(const PrintChoice& choice) {
    kx::SystemServices services(nullptr);
    const auto page = DrawPage(DescribePage(session_->Test(), *choice.lead), choice.paper);
    const std::wstring sizes = SizesText(SizesOf(*page));
    const std::wstring lead = FromRecordText(kx::StandardLeadName(*choice.lead));
    if (choice.printer) {
        if (PrintPage(*page, choice.paper, *choice.printer, ToSystemText(session_->Title()), services)) {
            ShowNote(L"Derivazione " + lead + L" stampata: " + sizes);
        } else {
            SayPrinterRefuses(FromSystemText(*choice.printer), kReasonInLog);
        }
        return;
    }
    const auto file = AskFileToSave(Window(), L"Salva pagina", kPageFilter, L"pcl",
                                    session_->Title() + L" " + lead, session_->Folder());
    if (!file) {
        return;
    }
    const auto format = PageFormatOf(ToUtf8(file->wstring()));
    if (!format || *format == PageFormat::kPdf) {
        Say(L"Il nome del file deve finire in .pcl, .bmp o .png.\n\n" + file->wstring(), MB_ICONERROR);
    } else if (SavePage(*page, choice.paper, *format, *file)) {
        ShowNote(L"Derivazione " + lead + L" salvata: " + sizes);
    } else {
        Say(L"La pagina non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
    }
}

void FrameWindow::PrintWholeTracing(const PrintChoice& choice) {
    const TracingPage page = DescribeTracing(session_->Test(), paneHost_->TracingStartMs());
    if (choice.printer) {
        const std::wstring printer = FromSystemText(*choice.printer);
        std::wstring reason = kReasonInLog;
        kx::SystemServices services(nullptr);
        if (choice.byDriver ? PrintTracing(page, printer, session_->Title(), reason)
                            : PrintPage(*DrawTracingUpright(page), Paper::kA4, *choice.printer,
                                        ToSystemText(session_->Title()), services)) {
            ShowNote(L"Tracciato stampato");
        } else {
            SayPrinterRefuses(printer, reason);
        }
        return;
    }
    const auto file = AskFileToSave(Window(), L"Salva pagina del tracciato", kTracingFilter, L"pdf",
                                    session_->Title() + L" tracciato", session_->Folder());
    if (!file) {
        return;
    }
    const auto format = PageFormatOf(ToUtf8(file->wstring()));
    if (!format) {
        Say(L"Il nome del file deve finire in .pdf, .png, .pcl o .bmp.\n\n" + file->wstring(), MB_ICONERROR);
    } else if (SaveTracing(page, *format, *file, session_->Title())) {
        ShowNote(L"Pagina del tracciato salvata");
    } else {
        Say(L"La pagina non può essere salvata.\n\n" + file->wstring(), MB_ICONERROR);
    }
}

}  // namespace kxhost
