#include "host/frame/print_dialog.h"

#include <winspool.h>

#include <algorithm>

#include "host/resource_ids.h"
#include "lib/measurement_table.h"

namespace kxhost {
namespace {

struct Question {
    const std::vector<std::string>& printers;
    PrintChoice choice;
};

int Selected(HWND dialog, int id) {
    return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
}

void Select(HWND dialog, int id, std::size_t item) {
    SendDlgItemMessageW(dialog, id, CB_SETCURSEL, item, 0);
}

void Add(HWND dialog, int id, const std::string& text) {
    SendDlgItemMessageA(dialog, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

// The place of the system's default printer in the list, else the first.
std::size_t DefaultPrinter(const std::vector<std::string>& printers) {
    char name[256] = {};
    DWORD size = sizeof name;
    if (!GetDefaultPrinterA(name, &size)) {
        return 0;
    }
    const auto found = std::find(printers.begin(), printers.end(), name);
    return found == printers.end() ? 0 : static_cast<std::size_t>(found - printers.begin());
}

void Fill(HWND dialog, const Question& question) {
    for (const std::string& printer : question.printers) {
        Add(dialog, IDC_PRINT_PRINTER, printer);
    }
    Select(dialog, IDC_PRINT_PRINTER, DefaultPrinter(question.printers));
    for (unsigned lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
        Add(dialog, IDC_PRINT_LEAD, kx::StandardLeadName(lead));
    }
    SendDlgItemMessageW(dialog, IDC_PRINT_LEAD, CB_ADDSTRING, 0,
                        reinterpret_cast<LPARAM>(L"Tracciato intero"));
    Select(dialog, IDC_PRINT_LEAD, question.choice.lead.value_or(KX_STANDARD_LEADS));
    CheckDlgButton(dialog, IDC_PRINT_BY_DRIVER, question.choice.byDriver ? BST_CHECKED : BST_UNCHECKED);
    for (const Paper paper : {Paper::kA4, Paper::kLetter}) {
        Add(dialog, IDC_PRINT_PAPER, NameOf(paper));
    }
    Select(dialog, IDC_PRINT_PAPER, static_cast<std::size_t>(question.choice.paper));
    if (question.printers.empty()) {
        EnableWindow(GetDlgItem(dialog, IDOK), FALSE);
        EnableWindow(GetDlgItem(dialog, IDC_PRINT_PRINTER), FALSE);
        SendMessageW(dialog, DM_SETDEFID, IDC_PRINT_TO_FILE, 0);
    }
}

// The whole tracing has one paper, a lead one way.
void ShowWhatApplies(HWND dialog) {
    const bool whole = Selected(dialog, IDC_PRINT_LEAD) == KX_STANDARD_LEADS;
    EnableWindow(GetDlgItem(dialog, IDC_PRINT_PAPER), !whole);
    EnableWindow(GetDlgItem(dialog, IDC_PRINT_BY_DRIVER), whole);
    if (whole) {
        Select(dialog, IDC_PRINT_PAPER, static_cast<std::size_t>(Paper::kA4));
    }
}

void Take(HWND dialog, bool toFile, Question& question) {
    const auto lead = static_cast<unsigned>(std::max(Selected(dialog, IDC_PRINT_LEAD), 0));
    question.choice.lead = lead < KX_STANDARD_LEADS ? std::optional(lead) : std::nullopt;
    question.choice.byDriver = IsDlgButtonChecked(dialog, IDC_PRINT_BY_DRIVER) == BST_CHECKED;
    question.choice.paper = Selected(dialog, IDC_PRINT_PAPER) == 1 ? Paper::kLetter : Paper::kA4;
    const auto printer = static_cast<std::size_t>(Selected(dialog, IDC_PRINT_PRINTER));
    question.choice.printer.reset();
    if (!toFile && printer < question.printers.size()) {
        question.choice.printer = question.printers[printer];
    }
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, DWLP_USER, lParam);
        Fill(dialog, *reinterpret_cast<const Question*>(lParam));
        ShowWhatApplies(dialog);
        return TRUE;
    }
    if (message != WM_COMMAND) {
        return FALSE;
    }
    auto* question = reinterpret_cast<Question*>(GetWindowLongPtrW(dialog, DWLP_USER));
    switch (LOWORD(wParam)) {
        case IDC_PRINT_LEAD:
            ShowWhatApplies(dialog);
            return TRUE;
        case IDOK:
        case IDC_PRINT_TO_FILE:
            Take(dialog, LOWORD(wParam) == IDC_PRINT_TO_FILE, *question);
            EndDialog(dialog, IDOK);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, IDCANCEL);
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

std::optional<PrintChoice> AskHowToPrint(HWND owner, const std::vector<std::string>& printers,
                                         const PrintChoice& first) {
    Question question{printers, first};
    if (DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PRINT), owner, Procedure,
                        reinterpret_cast<LPARAM>(&question)) != IDOK) {
        return std::nullopt;
    }
    return question.choice;
}

}  // namespace kxhost
