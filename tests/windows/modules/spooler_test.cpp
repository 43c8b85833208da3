// Printing through the real spooler, to a printer whose port is a file.
#include "lib/spooler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "lib/modules/system_services.h"
#include "tests/rig/raw_printer.h"
#include "tests/rig/suite.h"

namespace kx::test {
namespace {

using namespace std::string_literals;

struct BitmapDeleter {
    using pointer = HBITMAP;
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using OwnBitmap = std::unique_ptr<HBITMAP, BitmapDeleter>;

class SpoolerTest : public testing::Test {
  protected:
    std::vector<std::string> Log() {
        std::vector<std::string> lines = suite_.TakeReports();
        std::erase_if(lines, [](const std::string& line) { return line == "LIBSTART" || line == "LIBSTOP"; });
        return lines;
    }

    SpyingSuite suite_;
    SystemServices services_{nullptr};
};

TEST_F(SpoolerTest, SendsADocumentUnchanged) {
    RawPrinter printer;
    ASSERT_FALSE(printer.Name().empty()) << "the spooler refused the test's printer";
    std::string all;
    for (int i = 0; i < 256; ++i) {
        all += static_cast<char>(i);
    }
    {
        PclSpooler spooler(printer.Name().c_str(), "page", &services_, 7);
        ASSERT_TRUE(spooler.IsOpen());
        EXPECT_EQ(spooler.LogContext(), 7u);
        spooler.AnnounceJob();
        EXPECT_TRUE(spooler.StartPage());
        EXPECT_TRUE(spooler.Reset());
        EXPECT_TRUE(spooler.Write(all.data(), 256));
        EXPECT_TRUE(spooler.EndPage());
    }
    EXPECT_EQ(printer.Printed(),
              "\x1B"
              "E\0"s +
                  all);
    EXPECT_EQ(Log(), std::vector<std::string>{"LOGOEMMESSAGE \"PCL5 Print\""});
}

TEST_F(SpoolerTest, PrintsTheClearBitsOfABitmapBlack) {
    RawPrinter printer;
    // 20 pixels: the padding of a row to 32 bits belongs to no pixel and stays white.
    const std::uint8_t pixels[] = {0xFF, 0xFF, 0xF0, 0, 0x00, 0xFF, 0xF0, 0, 0xFF, 0xFF, 0xE0, 0};
    const OwnBitmap bitmap(CreateBitmap(20, 3, 1, 1, pixels));
    ASSERT_NE(bitmap.get(), nullptr);
    {
        PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
        EXPECT_TRUE(spooler.PrintBitmap(bitmap.get(), 1250, 1500, 300, 300));
    }
    EXPECT_EQ(printer.Printed(),
              "\x1B*p300x300Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M"
              "\x1B*b0W\x1B*b2W\x00\xFF\x1B*b4W\xFF\x00\x00\x10\x1B*rC\0"s);
    EXPECT_TRUE(Log().empty());
}

// The same rows, kept from the bottom up or from the top down and padded to 32 bits.
TEST_F(SpoolerTest, PrintsADibSectionFromTheTopDown) {
    for (const LONG height : {2, -2}) {
        RawPrinter printer;
        struct {
            BITMAPINFOHEADER header;
            RGBQUAD colours[2];
        } info = {{sizeof info.header, 17, height, 1, 1, BI_RGB, 0, 0, 0, 0, 0}, {{}, {255, 255, 255, 0}}};
        void* pixels = nullptr;
        const OwnBitmap bitmap(CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, &pixels, nullptr, 0));
        ASSERT_NE(bitmap.get(), nullptr);
        const std::uint8_t top[] = {0x7F, 0xFF, 0x80, 0}, bottom[] = {0xFF, 0xFF, 0x00, 0};
        std::memcpy(pixels, height < 0 ? top : bottom, 4);
        std::memcpy(static_cast<std::uint8_t*>(pixels) + 4, height < 0 ? bottom : top, 4);
        {
            PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
            EXPECT_TRUE(spooler.PrintBitmap(bitmap.get(), 250, 500, 300, 300));
        }
        EXPECT_EQ(printer.Printed(),
                  "\x1B*p0x0Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M"
                  "\x1B*b2W\x00\x80\x1B*b4W\xFF\x00\x00\x80\x1B*rC\0"s)
            << height;
    }
}

TEST_F(SpoolerTest, PrintsNoBitmapThatIsNone) {
    RawPrinter printer;
    const OwnBitmap colour(CreateBitmap(16, 16, 1, 32, nullptr));
    {
        PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
        EXPECT_FALSE(spooler.PrintBitmap(nullptr, 0, 0, 300, 300));
        EXPECT_FALSE(spooler.PrintBitmap(colour.get(), 0, 0, 300, 300));
    }
    EXPECT_EQ(printer.Printed(), "");
}

TEST_F(SpoolerTest, StaysQuietAfterOneReportWithoutAPrinter) {
    const std::uint8_t row[] = {1};
    char comment[32] = "untouched";
    const OwnBitmap bitmap(CreateBitmap(16, 1, 1, 1, nullptr));
    PclSpooler spooler("no such printer", "page", &services_, 0);
    // The system's message ends its line itself.
    const std::vector<std::string> opening = Log();
    EXPECT_EQ(std::count_if(opening.begin(), opening.end(), [](const std::string& line) { return line.find("LOGSYSTEMERROR ") == 0; }), 1)
        << testing::PrintToString(opening);
    EXPECT_FALSE(spooler.IsOpen() || spooler.StartPage() || spooler.Write("x", 1) || spooler.Reset() || spooler.FormFeed() ||
                 spooler.Portrait() || spooler.Landscape() || spooler.BeginRaster(0, 0, 300) || spooler.RasterRow(row, 1) ||
                 spooler.EndRaster() || spooler.EndPage() || spooler.PrintBitmap(bitmap.get(), 0, 0, 300, 300));
    EXPECT_TRUE(Log().empty());
    EXPECT_FALSE(spooler.PrinterComment(comment, sizeof comment));
    EXPECT_STREQ(comment, "untouched");
    const std::vector<std::string> lines = Log();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].find("LOGMEMORYERROR \"..\\..\\lib\\spooler\" "), 0u) << lines[0];
}

TEST_F(SpoolerTest, TellsOfADocumentThatIsLostAtItsEnd) {
    RawPrinter printer("", RawPrinter::Port::kUnreachable);
    PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
    ASSERT_TRUE(spooler.StartPage() && spooler.Reset() && spooler.EndPage());
    EXPECT_TRUE(Log().empty());
    EXPECT_FALSE(spooler.Finish());
    EXPECT_FALSE(spooler.IsOpen());
    EXPECT_FALSE(spooler.Finish()) << "a second time";
    const std::vector<std::string> lines = Log();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(), [](const std::string& line) { return line.find("LOGSYSTEMERROR ") == 0; }), 1)
        << testing::PrintToString(lines);
}

// A document begins as a file in the spooler's folder.
TEST_F(SpoolerTest, ClosesThePrinterThatRefusesTheDocument) {
    struct WithoutSpoolFolder {
        WithoutSpoolFolder() {
            char folder[MAX_PATH];
            GetSystemDirectoryA(folder, MAX_PATH);
            there = folder + "\\spool\\printers"s;
            away = there + ".away";
            done = MoveFileA(there.c_str(), away.c_str()) != FALSE;
        }
        ~WithoutSpoolFolder() { MoveFileA(away.c_str(), there.c_str()); }
        std::string there, away;
        bool done;
    };
    RawPrinter printer;
    ASSERT_FALSE(printer.Name().empty());
    {
        const WithoutSpoolFolder without;
        ASSERT_TRUE(without.done);
        PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
        EXPECT_FALSE(spooler.IsOpen());
        EXPECT_FALSE(spooler.StartPage() || spooler.Write("x", 1) || spooler.Finish());
    }
    EXPECT_EQ(printer.Printed(), "");
    const std::vector<std::string> lines = Log();
    EXPECT_EQ(std::count_if(lines.begin(), lines.end(), [](const std::string& line) { return line.find("LOGSYSTEMERROR ") == 0; }), 1)
        << testing::PrintToString(lines);
}

TEST_F(SpoolerTest, GivesThePrintersCommentWhenItFits) {
    RawPrinter printer("ambulatorio 3");
    PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
    char comment[14] = {};
    EXPECT_TRUE(spooler.PrinterComment(comment, sizeof comment));
    EXPECT_STREQ(comment, "ambulatorio 3");
    EXPECT_TRUE(Log().empty());
    EXPECT_FALSE(spooler.PrinterComment(comment, 13)) << "no room for the terminator";
    EXPECT_FALSE(spooler.PrinterComment(nullptr, 100));
    EXPECT_EQ(Log().size(), 2u);
}

TEST_F(SpoolerTest, ListsThePrintersThatFit) {
    RawPrinter printer;
    char names[4096];
    ASSERT_TRUE(PclSpooler::ListPrinters(names, sizeof names, &services_));
    EXPECT_NE(("^"s + names).find("^" + printer.Name() + "^"), std::string::npos) << names;
    // Every size: always terminated, never beyond, and whole names only.
    const std::string all = names;
    for (std::size_t size = 1; size <= all.size() + 1; ++size) {
        std::vector<char> buffer(size, 'x');
        EXPECT_TRUE(PclSpooler::ListPrinters(buffer.data(), size, &services_));
        const std::string text = buffer.data();
        EXPECT_LT(text.size(), size);
        EXPECT_TRUE(text.empty() || text.back() == '^') << text;
    }
    EXPECT_FALSE(PclSpooler::ListPrinters(names, 0, &services_));
    EXPECT_TRUE(Log().empty());
}

}  // namespace
}  // namespace kx::test
