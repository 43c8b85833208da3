#include "host/printing/tracing_output.h"

#include <winspool.h>

#include <stdexcept>
#include <vector>

#include "host/printing/gdi_canvas.h"
#include "host/printing/page_output.h"
#include "host/printing/pdf_canvas.h"
#include "host/windows/png_writer.h"
#include "host/windows/text_conversion.h"
#include "host/windows/win32_handles.h"
#include "lib/replacing_file.h"
#include "lib/spooler.h"

namespace kxhost {
namespace {

constexpr double kMmPerInch = 25.4;

class PrinterHandle {
  public:
    explicit PrinterHandle(const std::wstring& name) {
        OpenPrinterW(const_cast<wchar_t*>(name.c_str()), &handle_, nullptr);
    }
    PrinterHandle(const PrinterHandle&) = delete;
    PrinterHandle& operator=(const PrinterHandle&) = delete;
    ~PrinterHandle() {
        if (handle_ != nullptr) {
            ClosePrinter(handle_);
        }
    }
    HANDLE Get() const { return handle_; }

  private:
    HANDLE handle_ = nullptr;
};

// The driver's settings for A4 across; empty when the driver gives none.
std::vector<std::byte> SettingsOf(const std::wstring& printer) {
    const PrinterHandle opened(printer);
    auto* name = const_cast<wchar_t*>(printer.c_str());
    const LONG size =
        opened.Get() != nullptr ? DocumentPropertiesW(nullptr, opened.Get(), name, nullptr, nullptr, 0) : 0;
    if (size <= 0) {
        return {};
    }
    std::vector<std::byte> settings(static_cast<std::size_t>(size));
    auto* mode = reinterpret_cast<DEVMODEW*>(settings.data());
    if (DocumentPropertiesW(nullptr, opened.Get(), name, mode, nullptr, DM_OUT_BUFFER) != IDOK) {
        return {};
    }
    mode->dmFields |= DM_ORIENTATION | DM_PAPERSIZE;
    mode->dmOrientation = DMORIENT_LANDSCAPE;
    mode->dmPaperSize = DMPAPER_A4;
    DocumentPropertiesW(nullptr, opened.Get(), name, mode, mode, DM_IN_BUFFER | DM_OUT_BUFFER);
    return settings;
}

SheetOnDevice SheetOf(HDC printer) {
    return {GetDeviceCaps(printer, LOGPIXELSX) / kMmPerInch, GetDeviceCaps(printer, LOGPIXELSY) / kMmPerInch,
            GetDeviceCaps(printer, PHYSICALOFFSETX), GetDeviceCaps(printer, PHYSICALOFFSETY), false};
}

bool SavePdf(const TracingPage& page, const std::filesystem::path& file, const std::wstring& title) {
    PdfCanvas canvas(kTracingSheetWidthMm, kTracingSheetHeightMm);
    DrawTracingPage(canvas, page);
    const std::string bytes = canvas.File(title);
    kx::ReplacingFile replaced(file.wstring());
    return replaced.Write(bytes.data(), static_cast<std::uint32_t>(bytes.size())) && replaced.Commit();
}

bool SaveColourPng(const TracingPage& page, const std::filesystem::path& file) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = DotsOf(kTracingSheetWidthMm);
    info.bmiHeader.biHeight = DotsOf(kTracingSheetHeightMm);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    void* bits = nullptr;
    const UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
    const UniqueBitmap bitmap(CreateDIBSection(dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!dc || !bitmap) {
        throw std::runtime_error("there is not enough memory for the page");
    }
    {
        const Selection selected(dc.get(), bitmap.get());
        PatBlt(dc.get(), 0, 0, static_cast<int>(info.bmiHeader.biWidth),
               static_cast<int>(info.bmiHeader.biHeight), WHITENESS);
        GdiCanvas canvas(dc.get(), {kPrintDpi / kMmPerInch, kPrintDpi / kMmPerInch, 0, 0, false});
        DrawTracingPage(canvas, page);
        GdiFlush();
    }
    const GdiPlusSession gdiPlus;
    return gdiPlus.IsStarted() && WritePng(bitmap.get(), file, kPrintDpi);
}

}  // namespace

TracingPage DescribeTracing(const kx::TestRecord& test, double startMs) {
    auto signal = SignalOf(test);
    if (!signal) {
        throw std::runtime_error("the test has no recording to print");
    }
    return {DescribePage(test, KX_LEAD_II), std::move(*signal), BeatsOf(test), startMs};
}

std::unique_ptr<PageImage> DrawTracingUpright(const TracingPage& page) {
    const PageLayout layout = LayOutPage(Paper::kA4);
    PageImage across(layout.height, layout.width);
    GdiCanvas canvas(across.Dc(), {kPrintDpi / kMmPerInch, kPrintDpi / kMmPerInch, kx::kPrintableTop,
                                   kx::kPrintableLeft, true});
    DrawTracingPage(canvas, page);
    GdiFlush();
    return across.TurnedRight();
}

bool SaveTracing(const TracingPage& page, PageFormat format, const std::filesystem::path& file,
                 const std::wstring& title) {
    switch (format) {
        case PageFormat::kPdf:
            return SavePdf(page, file, title);
        case PageFormat::kPng:
            return SaveColourPng(page, file);
        default:
            return SavePage(*DrawTracingUpright(page), Paper::kA4, format, file);
    }
}

bool PrintTracing(const TracingPage& page, const std::wstring& printer, const std::wstring& document,
                  std::wstring& reason) {
    const std::vector<std::byte> settings = SettingsOf(printer);
    SetLastError(ERROR_INVALID_PRINTER_NAME);
    const UniqueMemoryDc dc(settings.empty() ? nullptr
                                             : CreateDCW(L"WINSPOOL", printer.c_str(), nullptr,
                                                         reinterpret_cast<const DEVMODEW*>(settings.data())));
    DOCINFOW described{};
    described.cbSize = sizeof described;
    described.lpszDocName = document.c_str();
    bool done = false;
    if (dc && StartDocW(dc.get(), &described) > 0) {
        if (StartPage(dc.get()) > 0) {
            GdiCanvas canvas(dc.get(), SheetOf(dc.get()));
            DrawTracingPage(canvas, page);
            done = EndPage(dc.get()) > 0 && EndDoc(dc.get()) > 0;
        }
        if (!done) {
            AbortDoc(dc.get());
        }
    }
    if (!done) {
        reason = SystemMessage(GetLastError(), printer);
    }
    return done;
}

}  // namespace kxhost
