#include "host/printing/page_output.h"

#include <algorithm>
#include <cstdio>

#include "host/windows/png_writer.h"
#include "lib/bmp_format.h"
#include "lib/packbits.h"
#include "lib/replacing_file.h"
#include "lib/spooler.h"

namespace kxhost {
namespace {

// Where the printable area begins, in thousandths of an inch as the spooler wants it.
constexpr std::int32_t kLeftMils = kx::kPrintableLeft * 1000 / kPrintDpi;
constexpr std::int32_t kTopMils = kx::kPrintableTop * 1000 / kPrintDpi;
static_assert(kLeftMils * kPrintDpi / 1000 == kx::kPrintableLeft &&
              kTopMils * kPrintDpi / 1000 == kx::kPrintableTop);

// As a printer is sent them: padded to 16 bits.
std::size_t RowBytes(const PageImage& page) {
    return static_cast<std::size_t>((page.Width() + 15) / 16 * 2);
}

// All rows from the top down.
std::vector<std::uint8_t> RowsDown(const PageImage& page) {
    const std::size_t rowBytes = RowBytes(page);
    std::vector<std::uint8_t> rows(rowBytes * static_cast<std::size_t>(page.Height()));
    for (int y = 0; y < page.Height(); ++y) {
        const auto row = page.Row(y);
        std::copy(row.begin(), row.end(),
                  rows.begin() + static_cast<std::ptrdiff_t>(rowBytes * static_cast<std::size_t>(y)));
    }
    return rows;
}

// The page around its raster. `printer` has the commands of PclPage; `bytes` is where they go.
template <class Printer, class Raster>
bool SendPage(Printer& printer, kx::ByteSink& bytes, Paper paper, Raster raster) {
    char paperSize[16];
    const int length = std::snprintf(paperSize, sizeof paperSize, "\x1B&l%dA", PclPaperCode(paper));
    return printer.Reset() && bytes.Write(paperSize, static_cast<std::uint32_t>(length)) &&
           printer.Portrait() && raster() && printer.FormFeed() && printer.Reset();
}

bool SavePcl(const PageImage& page, Paper paper, const std::filesystem::path& file) {
    kx::ReplacingFile replaced(file.wstring());
    kx::PclPage pcl(replaced, kx::kPrintableLeft, kx::kPrintableTop);
    std::vector<std::uint8_t> rows = RowsDown(page);
    return SendPage(pcl, replaced, paper,
                    [&] {
                        return pcl.BeginRaster(kx::kPrintableLeft, kx::kPrintableTop, kPrintDpi) &&
                               pcl.RasterOfClearBits(rows.data(), page.Width(), page.Height(),
                                                     RowBytes(page)) &&
                               pcl.EndRaster();
                    }) &&
           replaced.Commit();
}

bool SaveBmp(const PageImage& page, const std::filesystem::path& file) {
    constexpr double kInchesPerMetre = 1 / 0.0254;
    const auto rows = page.BottomUpRows();
    kx::BmpHead head;
    kx::MakeBmpHead(page.Width(), page.Height(), 1,
                    static_cast<std::uint32_t>(rows.size() / static_cast<std::size_t>(page.Height())), head,
                    static_cast<std::uint32_t>(kPrintDpi * kInchesPerMetre + 0.5));
    kx::ReplacingFile replaced(file.wstring());
    return replaced.Write(head.data(), static_cast<std::uint32_t>(head.size())) &&
           replaced.Write(rows.data(), static_cast<std::uint32_t>(rows.size())) && replaced.Commit();
}

bool SavePng(PageImage& page, const std::filesystem::path& file) {
    const GdiPlusSession gdiPlus;
    return gdiPlus.IsStarted() && WritePng(page.TakeBitmap(), file, kPrintDpi);
}

}  // namespace

PageSizes SizesOf(const PageImage& page) {
    const std::size_t rowBytes = RowBytes(page);
    std::vector<std::uint8_t> rows = RowsDown(page);
    std::vector<std::uint8_t> packed(kx::PackBitsWorstCase(rowBytes));
    PageSizes sizes;
    sizes.raw = rows.size();
    for (int y = 0; y < page.Height(); ++y) {
        std::uint8_t* row = rows.data() + rowBytes * static_cast<std::size_t>(y);
        kx::InvertClearBits(row, page.Width(), rowBytes);
        sizes.packed += kx::PackBitsEncode(row, rowBytes, packed.data());
    }
    return sizes;
}

bool SavePage(PageImage& page, Paper paper, PageFormat format, const std::filesystem::path& file) {
    switch (format) {
        case PageFormat::kPcl:
            return SavePcl(page, paper, file);
        case PageFormat::kBmp:
            return SaveBmp(page, file);
        default:
            return SavePng(page, file);
    }
}

bool PrintPage(PageImage& page, Paper paper, const std::string& printer, const std::string& document,
               kx::SystemServices& log) {
    kx::PclSpooler spooler(printer.c_str(), document.c_str(), &log, 0);
    if (!spooler.IsOpen()) {
        return false;
    }
    spooler.AnnounceJob();
    return spooler.StartPage() &&
           SendPage(spooler, spooler, paper,
                    [&] {
                        return spooler.PrintBitmap(page.TakeBitmap(), kLeftMils, kTopMils, kPrintDpi,
                                                   kPrintDpi);
                    }) &&
           spooler.EndPage() && spooler.Finish();
}

std::vector<std::string> ListPrinters(kx::SystemServices& log) {
    constexpr std::size_t kRoom = 32768;  // for more printers than anybody chooses from
    std::vector<char> names(kRoom);
    std::vector<std::string> printers;
    kx::PclSpooler::ListPrinters(names.data(), names.size(), &log);
    const std::string_view all(names.data());
    for (std::size_t next = 0; next < all.size();) {
        const std::size_t end = std::min(all.find('^', next), all.size());
        printers.emplace_back(all.substr(next, end - next));
        next = end + 1;
    }
    return printers;
}

}  // namespace kxhost
