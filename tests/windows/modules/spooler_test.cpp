// Printing through the real spooler, to a printer whose port is a file.
#include "lib/spooler.h"

#include <gmock/gmock.h>

#include <cstring>

#include "lib/modules/system_services.h"
#include "lib/windows/gdi_handles.h"
#include "tests/rig/raw_printer.h"
#include "tests/rig/suite.h"

namespace kx::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class SpoolerTest : public testing::Test {
  protected:
    std::vector<std::string> Log() {
        std::vector<std::string> lines = suite_.TakeReports();
        std::erase_if(lines, [](const std::string& line) { return line == "LIBSTART" || line == "LIBSTOP"; });
        return lines;
    }
    // What arrives at a printer when `print` prints.
    std::string Printed(const std::function<void(PclSpooler&)>& print) {
        RawPrinter printer;
        EXPECT_FALSE(printer.Name().empty()) << "the spooler refused the test's printer";
        {
            PclSpooler spooler(printer.Name().c_str(), "page", &services_, 7);
            print(spooler);
        }
        return printer.Printed();
    }

    SpyingSuite suite_;
    SystemServices services_{nullptr};
};

TEST_F(SpoolerTest, SendsADocumentUnchanged) {
    std::string all;
    for (int i = 0; i < 256; ++i) {
        all += static_cast<char>(i);
    }
    const std::string printed = Printed([&](PclSpooler& spooler) {
        spooler.AnnounceJob();
        EXPECT_TRUE(spooler.IsOpen() && spooler.StartPage() && spooler.Write(all.data(), 256) && spooler.EndPage());
    });
    EXPECT_EQ(printed, all);
    EXPECT_THAT(Log(), ElementsAre("LOGOEMMESSAGE \"PCL5 Print\""));
}

// The same rows of 17 pixels, kept in words, or from the bottom up or from the top down and padded to 32 bits. The padding
// belongs to no pixel and stays white.
TEST_F(SpoolerTest, PrintsTheClearBitsOfAnyBitmapBlackFromTheTopDown) {
    const std::uint8_t top[] = {0x7F, 0xFF, 0x80, 0}, bottom[] = {0xFF, 0xFF, 0x00, 0};
    for (const LONG height : {0, 2, -2}) {
        struct {
            BITMAPINFOHEADER header;
            RGBQUAD colours[2];
        } info = {{sizeof info.header, 17, height, 1, 1, BI_RGB, 0, 0, 0, 0, 0}, {{}, {255, 255, 255, 0}}};
        std::uint8_t rows[8];
        void* pixels = rows;
        UniqueBitmap bitmap;
        if (height != 0) {
            bitmap.reset(CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &pixels, nullptr, 0));
        }
        std::memcpy(pixels, height <= 0 ? top : bottom, 4);
        std::memcpy(static_cast<std::uint8_t*>(pixels) + 4, height <= 0 ? bottom : top, 4);
        if (height == 0) {
            bitmap.reset(CreateBitmap(17, 2, 1, 1, rows));
        }
        ASSERT_NE(bitmap.get(), nullptr);
        EXPECT_EQ(Printed([&](PclSpooler& spooler) { EXPECT_TRUE(spooler.PrintBitmap(bitmap.get(), 250, 500, 300, 300)); }),
                  "\x1B*p0x0Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M\x1B*b2W\x00\x80\x1B*b4W\xFF\x00\x00\x80\x1B*rC\0"s)
            << height;
    }
    const UniqueBitmap colour(CreateBitmap(16, 16, 1, 32, nullptr));
    EXPECT_EQ(Printed([&](PclSpooler& spooler) {
                  EXPECT_FALSE(spooler.PrintBitmap(nullptr, 0, 0, 300, 300) || spooler.PrintBitmap(colour.get(), 0, 0, 300, 300));
              }),
              "");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(SpoolerTest, StaysQuietAfterOneReportWithoutAPrinter) {
    const std::uint8_t row[] = {1};
    PclSpooler spooler("no such printer", "page", &services_, 0);
    EXPECT_THAT(Log(), testing::Contains(StartsWith("LOGSYSTEMERROR ")).Times(1));
    EXPECT_FALSE(spooler.IsOpen() || spooler.StartPage() || spooler.Write("x", 1) || spooler.Reset() || spooler.RasterRow(row, 1) ||
                 spooler.EndPage() || spooler.Finish());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(SpoolerTest, TellsOfADocumentThatIsLostAtItsEnd) {
    const RawPrinter printer(RawPrinter::Port::kUnreachable);
    PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
    ASSERT_TRUE(spooler.StartPage() && spooler.Reset() && spooler.EndPage());
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_FALSE(spooler.Finish() || spooler.IsOpen() || spooler.Finish());
    EXPECT_THAT(Log(), testing::Contains(StartsWith("LOGSYSTEMERROR ")).Times(1));
}

}  // namespace
}  // namespace kx::test
