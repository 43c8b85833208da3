#include "lib/spooler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "lib/windows/bitmap.h"
#include "tests/support/raw_printer.h"
#include "tests/windows/dialogs/library_under_test.h"

namespace kx {
namespace {

using test::RawPrinter;
using namespace std::string_literals;

// Reports arrive in the kxsys.dll that the library under test lays.
class SpoolerTest : public testing::Test {
  protected:
    std::vector<std::string> Log() {
        std::vector<std::string> lines = library_.TakeLog();
        std::erase_if(lines, [](const std::string& line) { return line == "LIBSTART" || line == "LIBSTOP"; });
        return lines;
    }

    test::LibraryUnderTest library_{test::SystemModule::kCurrent};
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
    Bitmap bitmap;
    ASSERT_TRUE(bitmap.Create(20, 3, 1, 1, pixels));
    {
        PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
        EXPECT_TRUE(spooler.PrintBitmap(bitmap, 1250, 1500, 300, 300));
    }
    EXPECT_EQ(printer.Printed(),
              "\x1B*p300x300Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M"
              "\x1B*b0W\x1B*b2W\x00\xFF\x1B*b4W\xFF\x00\x00\x10\x1B*rC\0"s);
    EXPECT_TRUE(Log().empty());
}

TEST_F(SpoolerTest, PrintsNoBitmapThatIsNone) {
    RawPrinter printer;
    Bitmap none, colour;
    ASSERT_TRUE(colour.Create(16, 16, 1, 32, nullptr));
    {
        PclSpooler spooler(printer.Name().c_str(), "page", &services_, 0);
        EXPECT_FALSE(spooler.PrintBitmap(none, 0, 0, 300, 300));
        EXPECT_FALSE(spooler.PrintBitmap(colour, 0, 0, 300, 300));
    }
    EXPECT_EQ(printer.Printed(), "");
}

TEST_F(SpoolerTest, StaysQuietAfterOneReportWithoutAPrinter) {
    const std::uint8_t row[] = {1};
    char comment[32] = "untouched";
    Bitmap bitmap;
    ASSERT_TRUE(bitmap.Create(16, 1, 1, 1, nullptr));
    PclSpooler spooler("no such printer", "page", &services_, 0);
    // The system's message ends its line itself.
    const std::vector<std::string> opening = Log();
    EXPECT_EQ(std::count_if(opening.begin(), opening.end(),
                            [](const std::string& line) { return line.find("LOGSYSTEMERROR ") == 0; }),
              1)
        << testing::PrintToString(opening);
    EXPECT_FALSE(spooler.IsOpen() || spooler.StartPage() || spooler.Write("x", 1) || spooler.Reset() ||
                 spooler.FormFeed() || spooler.Portrait() || spooler.Landscape() ||
                 spooler.BeginRaster(0, 0, 300) || spooler.RasterRow(row, 1) || spooler.EndRaster() ||
                 spooler.EndPage() || spooler.PrintBitmap(bitmap, 0, 0, 300, 300));
    EXPECT_TRUE(Log().empty());
    EXPECT_FALSE(spooler.PrinterComment(comment, sizeof comment));
    EXPECT_STREQ(comment, "untouched");
    const std::vector<std::string> lines = Log();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].find("LOGMEMORYERROR \"..\\..\\lib\\spooler\" "), 0u) << lines[0];
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
}  // namespace kx
