// A page image sent to a printer as PCL 5, past the graphics device interface: the document is of the
// spooler's type "RAW", so that every byte reaches the printer unchanged.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "lib/byte_stream.h"
#include "lib/modules/system_services.h"
#include "lib/pcl.h"

namespace kx {

// One printer with one open document, from construction to destruction; neither when the printer or the
// document could not be opened, and then every operation is false. Where to place Reset, the orientation,
// FormFeed and the page calls is the caller's matter. Never retries. Texts are Windows-1252.
class PclSpooler final : public ByteSink {
  public:
    // A failure is reported once by the system's message. log may be null and outlives the spooler;
    // logContext is the caller's own number for the job, kept with it.
    PclSpooler(const char* printerName, const char* documentName, SystemServices* log,
               std::uint32_t logContext);
    ~PclSpooler();
    PclSpooler(const PclSpooler&) = delete;
    PclSpooler& operator=(const PclSpooler&) = delete;

    bool IsOpen() const { return printer_ != nullptr; }
    std::uint32_t LogContext() const { return logContext_; }

    // Writes "PCL5 Print" to the suite's log.
    void AnnounceJob();

    // Ends the document and closes the printer at once, as the destructor does, and tells whether the
    // document was taken: some printers are found missing only then. A failure is reported by the system's
    // message.
    bool Finish();

    bool StartPage();
    bool EndPage();
    // Passes the bytes on; true only when all of them were taken.
    bool Write(const void* bytes, std::uint32_t count) override;
    // The document is started with the spooler: true while it is open.
    bool CreateAlways(Reporter* log) override;

    // The commands of a page; see PclPage. Dots from the corner of the paper.
    bool Reset() { return page_.Reset(); }
    bool FormFeed() { return page_.FormFeed(); }
    bool Portrait() { return page_.Portrait(); }
    bool Landscape() { return page_.Landscape(); }
    bool BeginRaster(std::int32_t x, std::int32_t y, std::int32_t dpi) {
        return page_.BeginRaster(x, y, dpi);
    }
    bool RasterRow(const std::uint8_t* row, std::size_t rowBytes) { return page_.RasterRow(row, rowBytes); }
    bool EndRaster() { return page_.EndRaster(); }

    // Sends a monochrome bitmap, of which a clear bit (black on the screen) prints black, as one raster of
    // dpiX dots per inch with its corner at left, top, thousandths of an inch from the corner of the paper.
    // False when there is no such bitmap, when memory is short (reported; nothing is sent) or when a row was
    // refused.
    bool PrintBitmap(HBITMAP bitmap, std::int32_t left, std::int32_t top, std::int32_t dpiX,
                     std::int32_t dpiY);

    // The comment that the printer was set up with. False, reported, when there is none or it does not fit
    // into size - 1 characters; the buffer is then as it was.
    bool PrinterComment(char* buffer, std::size_t size);

    // The names of the local printers, each followed by "^", as many as fit. False, reported, when they
    // cannot be enumerated; the buffer is then empty. log may be null.
    static bool ListPrinters(char* buffer, std::size_t size, SystemServices* log);
    bool ListPrinters(char* buffer, std::size_t size) { return ListPrinters(buffer, size, log_); }

  private:
    std::int32_t originX_ = kPrintableLeft;
    std::int32_t originY_ = kPrintableTop;
    SystemServices* log_;
    std::uint32_t logContext_;
    HANDLE printer_ = nullptr;
    PclPage page_;
};

}  // namespace kx
