// What the user wants printed, where and how.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/printing/print_page_layout.h"

namespace kxhost {

struct PrintChoice {
    std::optional<unsigned> lead;  // none: the whole tracing, on A4
    Paper paper = Paper::kA4;
    bool byDriver = true;                // of the whole tracing; a lead goes to the printer as PCL 5
    std::optional<std::string> printer;  // in the system's code page; none: into a file
};

// Asks, beginning with `first`; none when the user left the dialog. Without printers a file is all that can
// be chosen.
std::optional<PrintChoice> AskHowToPrint(HWND owner, const std::vector<std::string>& printers,
                                         const PrintChoice& first);

}  // namespace kxhost
