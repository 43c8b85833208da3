#include "host/frame/command_line_help.h"

#include "host/resource_ids.h"

namespace kxhost {
namespace {

constexpr wchar_t kText[] =
    L"kxhost [TRACCIATO | --builtin] [--archive FILE]\r\n"
    L"    apre la stazione: sull'elenco degli esami, su un tracciato o su quello di esempio\r\n\r\n"
    L"Forme senza finestra (scrivono il risultato e terminano):\r\n\r\n"
    L"kxhost --import TRACCIATO... [--archive FILE]\r\n"
    L"    importa tracciati nell'archivio\r\n"
    L"kxhost --list [PAROLE] [--archive FILE]\r\n"
    L"    elenca gli esami: numero, data, nome, ID, tipo, stato\r\n"
    L"kxhost --export NUMERO FILE [--archive FILE]\r\n"
    L"    scrive un esame dell'archivio: .xml (HL7 aECG), .csv (campioni), .html (ampiezze), .pdf o .png "
    L"(pagina)\r\n"
    L"kxhost --measure TRACCIATO... [--json]\r\n"
    L"    stampa i battiti e le misure del battito mediano\r\n"
    L"kxhost --interpret TRACCIATO\r\n"
    L"    stampa le frasi dell'interpretazione automatica\r\n"
    L"kxhost --fields TRACCIATO [CODICI]\r\n"
    L"    stampa i testi dei campi del referto (per esempio 1,2,48-59)\r\n"
    L"kxhost --expand TESTO TRACCIATO\r\n"
    L"    stampa un testo con il paziente al posto di {%1}, {%2}, {%5}, {%11} e {%14}\r\n"
    L"kxhost --export-aecg TRACCIATO FILE.xml,  --export-csv TRACCIATO FILE.csv\r\n"
    L"    scrive il tracciato con le misure, o i suoi campioni\r\n"
    L"kxhost --table FILE.csv|FILE.html TRACCIATO\r\n"
    L"    scrive la tabella delle ampiezze\r\n"
    L"kxhost --print FILE TRACCIATO tracing|DERIVAZIONE [--paper A4|Letter]\r\n"
    L"    scrive la pagina del tracciato intero (.pdf, .png, .pcl, .bmp) o di una derivazione (.pcl, .bmp, "
    L".png)\r\n"
    L"kxhost --print-to STAMPANTE TRACCIATO tracing|DERIVAZIONE [--paper A4|Letter]\r\n"
    L"    la stampa come PCL 5, senza il driver\r\n"
    L"kxhost --print-by-driver STAMPANTE TRACCIATO\r\n"
    L"    stampa il tracciato intero con il driver della stampante\r\n"
    L"kxhost --shot FILE.png TRACCIATO PANNELLO [--size LxA]\r\n"
    L"    scrive l'immagine di un pannello o della finestra (window)\r\n"
    L"kxhost --version,  kxhost --help\r\n\r\n"
    L"--units-per-mv N: unità per millivolt al posto di quelle dell'intestazione WFDB.\r\n"
    L"--archive FILE: un archivio diverso da quello dell'utente.\r\n"
    L"Codici di uscita: 0 fatto; 1 non fatto, il motivo in una riga; 2 riga di comando non capita.\r\n";

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) noexcept {
    if (message == WM_INITDIALOG) {
        SetDlgItemTextW(dialog, IDC_TEXT, kText);
        // An edit that gets the keyboard would choose its whole text.
        SetFocus(GetDlgItem(dialog, IDOK));
        return FALSE;
    }
    if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
        EndDialog(dialog, IDOK);
        return TRUE;
    }
    return FALSE;
}

}  // namespace

void ShowCommandLineHelp(HWND owner) {
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_TEXT), owner, Procedure, 0);
}

}  // namespace kxhost
