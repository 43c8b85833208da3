// spooler: a page image as PCL 5 commands, written to whatever takes bytes (spooler.cpp), and a printer that
// takes them past the graphics device interface: its document is of the system's type "RAW", so that every
// byte reaches it unchanged (spooler_win.cpp). Source: PCL 5 Printer Language Technical Reference Manual,
// Hewlett-Packard 1992, chapters 4, 5 and 15.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "lib/byte_stream.h"

// Declared as <windows.h> does, which the portable half is not to include.
struct HBITMAP__;

namespace kx {

class SystemServices;

// Where a printer's printable area begins on the paper, dots at 300 per inch.
inline constexpr std::int32_t kPrintableLeft = 75;
inline constexpr std::int32_t kPrintableTop = 150;

// Makes a row of a screen's monochrome bitmap, where a clear bit is black, one of a printer's, where a set
// bit is. Bits behind the row's `width` pixels, which fit into its rowBytes bytes, belong to none of them and
// become white.
void InvertClearBits(std::uint8_t* row, std::int32_t width, std::size_t rowBytes);

// Writes one page after another to a sink, which outlives it. Every operation tells whether all of its bytes
// were taken; after a failure the stream is what the sink made of it.
//
// Positions are dots at the resolution of the raster, from the corner of the paper; the printer counts from
// the corner of its printable area, which lies originX, originY dots inside.
class PclPage {
  public:
    PclPage(ByteSink& sink, std::int32_t originX, std::int32_t originY)
        : sink_(sink), originX_(originX), originY_(originY) {}

    // Each of these ends with a zero byte, which a printer ignores.
    bool Reset();
    bool FormFeed();
    bool Portrait();
    bool Landscape();
    bool EndRaster();

    // Puts the cursor at x, y and starts a raster of dpi dots per inch that follows the physical page and
    // whose rows are compressed as PackBits.
    bool BeginRaster(std::int32_t x, std::int32_t y, std::int32_t dpi);
    // One row of rowBytes bytes, the most significant bit leftmost, a set bit black. A row without a set bit
    // advances the raster by one blank row. False as well when there is no memory for the compressed row.
    bool RasterRow(const std::uint8_t* row, std::size_t rowBytes);
    // The rows of a monochrome bitmap, from the top down and rowBytes bytes each, of which a clear bit prints
    // black; see InvertClearBits, which changes them in place.
    bool RasterOfClearBits(std::uint8_t* bits, std::int32_t width, std::int32_t rows, std::size_t rowBytes);

  private:
    ByteSink& sink_;
    std::int32_t originX_;
    std::int32_t originY_;
    std::unique_ptr<std::uint8_t[]> packed_;  // of the longest row so far
    std::size_t packedSize_ = 0;
};

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
    bool PrintBitmap(HBITMAP__* bitmap, std::int32_t left, std::int32_t top, std::int32_t dpiX,
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
    void* printer_ = nullptr;
    PclPage page_;
};

}  // namespace kx
