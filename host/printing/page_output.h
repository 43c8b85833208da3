// Where a drawn page goes: to a printer, or into a file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/file_formats.h"
#include "host/printing/page_image.h"

namespace kx {
class SystemServices;
}

namespace kxhost {

// How many bytes the dots of the page take as they are and after PackBits, as a printer is sent them.
struct PageSizes {
    std::size_t raw = 0;
    std::size_t packed = 0;
};

PageSizes SizesOf(const PageImage& page);

// Writes the file in the place of one there may be; false, and that one is as it was, when it cannot be
// written. The image is finished with.
bool SavePage(PageImage& page, Paper paper, PageFormat format, const std::filesystem::path& file);

// Prints the page as a document of its own. False when the printer cannot be opened, or refuses the document
// or a part of it; the system's reason has then gone to the suite's log. Texts in the system's code page. The
// image is finished with.
bool PrintPage(PageImage& page, Paper paper, const std::string& printer, const std::string& document,
               kx::SystemServices& log);

// The local printers, in the system's code page.
std::vector<std::string> ListPrinters(kx::SystemServices& log);

}  // namespace kxhost
