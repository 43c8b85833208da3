// What the user wants printed, where and how.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/printing/print_page_layout.h"

namespace kxhost {

struct PrintChoice {
    unsigned lead = 0;
    Paper paper = Paper::kA4;
    std::optional<std::string> printer;  // in the system's code page; none: into a file
};

// Asks, beginning with `first`; none when the user left the dialog. Without printers a file is all that can
// be chosen.
std::optional<PrintChoice> AskHowToPrint(HWND owner, const std::vector<std::string>& printers,
                                         const PrintChoice& first);

}  // namespace kxhost
