// spooler: the printer.
#include <windows.h>

#include <winspool.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "lib/modules/module_instance.h"
#include "lib/modules/system_services.h"
#include "lib/spooler.h"

namespace kx {
namespace {

constexpr char kSource[] = "..\\..\\lib\\spooler";
constexpr std::uint32_t kNoCommentLine = 214;
constexpr std::uint32_t kNoBitsLine = 268;
constexpr std::uint32_t kNoPrinterListLine = 305;

constexpr DWORD kRawDocumentLevel = 1;
constexpr DWORD kCommentLevel = 1;
constexpr DWORD kPrinterListLevel = 2;

void ReportSystemError(SystemServices* log) {
    if (log != nullptr) {
        ModuleInstance::LogLastSystemError(*log);
    }
}

void ReportMemoryError(SystemServices* log, std::uint32_t line) {
    if (log != nullptr) {
        log->LOGMEMORYERROR(kSource, line);
    }
}

// Zeroed, and aligned for any of the spooler's records, which begin such a buffer.
std::unique_ptr<BYTE[]> AllocateInfo(DWORD size) {
    return std::unique_ptr<BYTE[]>(size == 0 ? nullptr : new (std::nothrow) BYTE[size]());
}

}  // namespace

PclSpooler::PclSpooler(const char* printerName, const char* documentName, SystemServices* log,
                       std::uint32_t logContext)
    : log_(log), logContext_(logContext), page_(*this, originX_, originY_) {
    // The spooler's interface takes writable texts and writes to neither.
    if (!OpenPrinterA(const_cast<char*>(printerName), &printer_, nullptr)) {
        ReportSystemError(log_);
        printer_ = nullptr;
        return;
    }
    char raw[] = "RAW";
    DOC_INFO_1A document{const_cast<char*>(documentName), nullptr, raw};
    if (StartDocPrinterA(printer_, kRawDocumentLevel, reinterpret_cast<BYTE*>(&document)) == 0) {
        ReportSystemError(log_);
        ClosePrinter(printer_);
        printer_ = nullptr;
    }
}

PclSpooler::~PclSpooler() {
    Finish();
}

bool PclSpooler::Finish() {
    if (printer_ == nullptr) {
        return false;
    }
    const bool taken = EndDocPrinter(printer_) != FALSE;
    if (!taken) {
        ReportSystemError(log_);
    }
    ClosePrinter(printer_);
    printer_ = nullptr;
    return taken;
}

void PclSpooler::AnnounceJob() {
    if (log_ != nullptr) {
        log_->LOGOEMMESSAGE("PCL5 Print");
    }
}

bool PclSpooler::StartPage() {
    return printer_ != nullptr && StartPagePrinter(printer_) != 0;
}

bool PclSpooler::EndPage() {
    return printer_ != nullptr && EndPagePrinter(printer_) != FALSE;
}

bool PclSpooler::Write(const void* bytes, std::uint32_t count) {
    DWORD written = 0;
    return printer_ != nullptr &&
           WritePrinter(printer_, const_cast<void*>(bytes), count, &written) != FALSE && written == count;
}

bool PclSpooler::CreateAlways(Reporter*) {
    return IsOpen();
}

bool PclSpooler::PrintBitmap(HBITMAP bitmap, std::int32_t left, std::int32_t top, std::int32_t dpiX,
                             std::int32_t dpiY) {
    BITMAP record = {};
    if (printer_ == nullptr || bitmap == nullptr || GetObjectA(bitmap, sizeof record, &record) == 0 ||
        record.bmWidth <= 0 || record.bmHeight <= 0 || record.bmPlanes != 1 || record.bmBitsPixel != 1) {
        return false;
    }
    // The rows come from the top down, each padded to 16 bits, however the bitmap keeps them.
    const int rowBytes = (record.bmWidth + 15) / 16 * 2;
    const int rows = record.bmHeight;
    const std::int64_t size = std::int64_t{rowBytes} * rows;
    std::unique_ptr<std::uint8_t[]> bits;
    if (size <= 0x7FFFFFFF) {
        bits.reset(new (std::nothrow) std::uint8_t[static_cast<std::size_t>(size)]);
    }
    if (bits == nullptr) {
        ReportMemoryError(log_, kNoBitsLine);
        return false;
    }
    if (GetBitmapBits(bitmap, static_cast<LONG>(size), bits.get()) != size) {
        return false;
    }
    return BeginRaster(MulDiv(left, dpiX, 1000), MulDiv(top, dpiY, 1000), dpiX) &&
           page_.RasterOfClearBits(bits.get(), record.bmWidth, rows, static_cast<std::size_t>(rowBytes)) &&
           EndRaster();
}

bool PclSpooler::PrinterComment(char* buffer, std::size_t size) {
    DWORD needed = 0;
    if (printer_ != nullptr) {
        GetPrinterA(printer_, kCommentLevel, nullptr, 0, &needed);
        const std::unique_ptr<BYTE[]> bytes = AllocateInfo(needed);
        if (bytes != nullptr && GetPrinterA(printer_, kCommentLevel, bytes.get(), needed, &needed)) {
            const char* comment = reinterpret_cast<const PRINTER_INFO_1A*>(bytes.get())->pComment;
            if (comment != nullptr && buffer != nullptr && std::strlen(comment) < size) {
                std::snprintf(buffer, size, "%s", comment);
                return true;
            }
        }
    }
    ReportMemoryError(log_, kNoCommentLine);
    return false;
}

bool PclSpooler::ListPrinters(char* buffer, std::size_t size, SystemServices* log) {
    if (buffer == nullptr || size == 0) {
        return false;
    }
    std::memset(buffer, 0, size);
    DWORD needed = 0;
    DWORD count = 0;
    if (EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, kPrinterListLevel, nullptr, 0, &needed, &count)) {
        return true;  // there are none
    }
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
        ReportSystemError(log);
        return false;
    }
    const std::unique_ptr<BYTE[]> bytes = AllocateInfo(needed);
    if (bytes == nullptr) {
        ReportMemoryError(log, kNoPrinterListLine);
        return false;
    }
    if (!EnumPrintersA(PRINTER_ENUM_LOCAL, nullptr, kPrinterListLevel, bytes.get(), needed, &needed,
                       &count)) {
        ReportSystemError(log);
        return false;
    }
    const auto* printers = reinterpret_cast<const PRINTER_INFO_2A*>(bytes.get());
    std::size_t used = 0;
    for (DWORD i = 0; i < count; ++i) {
        const char* name = printers[i].pPrinterName;
        const std::size_t length = name == nullptr ? 0 : std::strlen(name);
        // With its separator, and room for the terminator; a shorter name may fit where a longer one does
        // not.
        if (length > 0 && used + length + 1 < size) {
            std::copy_n(name, length, buffer + used);
            buffer[used + length] = '^';
            used += length + 1;
        }
    }
    return true;
}

}  // namespace kx
