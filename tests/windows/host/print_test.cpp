// The printing of the workstation: files, printers, and the way from the window to both.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "host/printing/print_page_layout.h"
#include "host/resource_ids.h"
#include "tests/rig/raw_printer.h"
#include "tests/windows/host/host_fixture.h"
#include "tests/windows/host/host_process.h"

namespace kx::test {
namespace {

using kx::test::RawPrinter;
using kxhost::Paper;

// Dots of a page, true where it is black.
using Dots = std::vector<std::vector<bool>>;

// A monochrome BMP file: bottom-up rows padded to 32 bits, and a table of two colours.
Dots ReadBmp(const std::string& file) {
    BITMAPFILEHEADER head{};
    BITMAPINFOHEADER info{};
    RGBQUAD colours[2]{};
    if (file.size() < sizeof head + sizeof info + sizeof colours) {
        return {};
    }
    std::memcpy(&head, file.data(), sizeof head);
    std::memcpy(&info, file.data() + sizeof head, sizeof info);
    std::memcpy(colours, file.data() + sizeof head + info.biSize, sizeof colours);
    EXPECT_EQ(info.biBitCount, 1);
    // 300 dots per inch, so that the file is printed at its size.
    EXPECT_EQ(info.biXPelsPerMeter, 11811);
    EXPECT_EQ(info.biYPelsPerMeter, 11811);
    const std::size_t stride = static_cast<std::size_t>((info.biWidth + 31) / 32 * 4);
    EXPECT_EQ(file.size(), head.bfOffBits + stride * static_cast<std::size_t>(info.biHeight));
    Dots dots;
    for (LONG y = 0; y < info.biHeight; ++y) {
        const std::size_t row = head.bfOffBits + stride * static_cast<std::size_t>(info.biHeight - 1 - y);
        std::vector<bool>& line = dots.emplace_back();
        for (LONG x = 0; x < info.biWidth; ++x) {
            const auto byte = static_cast<unsigned char>(file.at(row + static_cast<std::size_t>(x / 8)));
            line.push_back(colours[byte >> (7 - x % 8) & 1].rgbGreen == 0);
        }
    }
    return dots;
}

class HostPrintTest : public HostTest {
  protected:
    HostResult Print(const std::vector<std::wstring>& to, const std::vector<std::wstring>& more = {}) const {
        std::vector<std::wstring> arguments = to;
        arguments.insert(arguments.end(), {L"--builtin", L"V5"});
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunHost(arguments);
    }
};

// On the page itself: the lines of the millimetre paper are where a ruler has them.
TEST_F(HostPrintTest, TwentyFiveMillimetresAreThatOnPaper) {
    const fs::path bmp = folder_ / L"page.bmp";
    ASSERT_EQ(Print({L"--print", bmp.wstring()}).exitCode, 0u);
    const Dots dots = ReadBmp(Read(bmp));
    const kxhost::PageBox grid = kxhost::LayOutPage(Paper::kA4).grid;
    const auto blackInColumn = [&](int x) {
        int black = 0;
        for (int y = grid.top; y < grid.bottom; ++y) {
            black += dots[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
        }
        return black;
    };
    const auto blackInRow = [&](int y) {
        int black = 0;
        for (int x = grid.left; x < grid.right; ++x) {
            black += dots[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
        }
        return black;
    };
    int found = 0;
    for (int mm = 25; mm < 130; mm += 25, ++found) {
        const int place = static_cast<int>(std::lround(mm * 300 / 25.4));
        EXPECT_GT(blackInColumn(grid.left + place), grid.Height() * 7 / 10) << mm;
        EXPECT_LT(blackInColumn(grid.left + place + 5), grid.Height() / 2) << mm;
        EXPECT_GT(blackInRow(grid.top + place), grid.Width() * 7 / 10) << mm;
        EXPECT_LT(blackInRow(grid.top + place + 5), grid.Width() / 2) << mm;
    }
    EXPECT_EQ(found, 5);
}

TEST_F(HostPrintTest, APrinterGetsTheBytesOfTheFile) {
    const fs::path pcl = folder_ / L"page.pcl";
    // The paper, the raster and a first row of white, which has no bytes.
    for (const auto& [paper, code] : {std::pair{L"Letter", "2"}, std::pair{L"A4", "26"}}) {
        ASSERT_EQ(Print({L"--print", pcl.wstring()}, {L"--paper", paper}).exitCode, 0u);
        std::string page = Read(pcl);
        page.erase(std::remove(page.begin(), page.end(), '\0'), page.end());
        const std::string begin = std::string("\x1B\x45\x1B&l") + code + "A\x1B&l0O\x1B*p0x0Y\x1B*t300R\x1B*r0F\x1B*r1A\x1B*b2M\x1B*b0W";
        EXPECT_TRUE(page.starts_with(begin)) << page.substr(0, 80);
    }
    RawPrinter printer;
    ASSERT_FALSE(printer.Name().empty()) << "the spooler refused the test's printer";
    const std::wstring name(printer.Name().begin(), printer.Name().end());
    const HostResult printed = Print({L"--print-to", name});
    EXPECT_EQ(printed.exitCode, 0u) << printed.error;
    EXPECT_EQ(printed.output.substr(0, 9), "rawBytes\t");
    EXPECT_TRUE(printer.Printed() == Read(pcl)) << printer.Printed().size() << " bytes";
}

TEST_F(HostPrintTest, APrinterThatLosesThePageIsAnError) {
    RawPrinter printer("", RawPrinter::Port::kUnreachable);
    ASSERT_FALSE(printer.Name().empty());
    const HostResult result = Print({L"--print-to", std::wstring(printer.Name().begin(), printer.Name().end())});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(Lines(result.error).size(), 1u) << result.error;
}

TEST_F(HostPrintTest, APrinterThatIsNotThereAndAFileThatCannotBeWrittenAreErrors) {
    const std::vector<std::wstring> rows[] = {
        {L"--print-to", L"no such printer"},
        {L"--print", (folder_ / L"no such folder" / L"x.pcl").wstring()},
        {L"--print", (folder_ / L"no such folder" / L"x.bmp").wstring()},
        {L"--print", (folder_ / L"no such folder" / L"x.png").wstring()},
    };
    for (const auto& row : rows) {
        const HostResult result = Print(row);
        const std::string name = fs::path(row[1]).string();
        EXPECT_EQ(result.exitCode, 1u) << name;
        EXPECT_EQ(result.output, "") << name;
        EXPECT_EQ(Lines(result.error).size(), 1u) << name << ": " << result.error;
    }
}

// The bytes of a PNG picture's chunk; empty when it has none of that name.
std::string ChunkOf(const std::string& png, const char* name) {
    const std::size_t place = png.find(name);
    return place == png.npos ? std::string() : png.substr(place + 4, static_cast<unsigned char>(png.at(place - 1)));
}

TEST_F(HostPrintTest, TheWholeTracingIsOneSheetByEveryWay) {
    const auto print = [](const std::vector<std::wstring>& to) {
        std::vector<std::wstring> arguments = to;
        arguments.push_back(L"--builtin");
        if (to[0] != L"--print-by-driver") {
            arguments.push_back(L"tracing");
        }
        return RunHost(arguments);
    };
    const auto file = [this](const wchar_t* name) { return (folder_ / name).wstring(); };
    for (const wchar_t* name : {L"t.pdf", L"t.png", L"t.pcl", L"t.bmp"}) {
        EXPECT_EQ(print({L"--print", file(name)}).exitCode, 0u) << fs::path(name).string();
    }
    EXPECT_EQ(Read(file(L"t.pdf")).substr(0, 5), "%PDF-");
    const std::string png = Read(file(L"t.png"));
    EXPECT_EQ(ChunkOf(png, "pHYs"), std::string("\0\0\x2E\x23\0\0\x2E\x23\1", 9)) << "11811 dots a metre are 300 an inch";
    EXPECT_EQ(ChunkOf(png, "IHDR").substr(0, 8), std::string("\0\0\x0D\xB4\0\0\x09\xB0", 8)) << "297 by 210 mm";
    // Upright for the printer: the paper's lines along the sheet's long side stand every 5 mm across it.
    const Dots dots = ReadBmp(Read(file(L"t.bmp")));
    const auto blackInColumn = [&](std::size_t x) {
        std::size_t black = 0;
        for (const auto& row : dots) {
            black += row[x];
        }
        return black;
    };
    const std::size_t bottom = dots[0].size() + 75 - static_cast<std::size_t>(std::lround(156 * 300 / 25.4)) - 1;
    for (int mm = 0; mm <= 125; mm += 5) {
        const std::size_t x = bottom + static_cast<std::size_t>(std::lround(mm * 300 / 25.4));
        EXPECT_GT(std::max(blackInColumn(x), std::max(blackInColumn(x - 1), blackInColumn(x + 1))), 2900u) << mm;
    }

    RawPrinter printer;
    ASSERT_FALSE(printer.Name().empty());
    const std::wstring name(printer.Name().begin(), printer.Name().end());
    EXPECT_EQ(print({L"--print-to", name}).exitCode, 0u);
    EXPECT_TRUE(printer.Printed() == Read(file(L"t.pcl")));
    const HostResult driven = print({L"--print-by-driver", name});
    EXPECT_EQ(driven.exitCode, 0u) << driven.error;
    EXPECT_NE(printer.Printed().find("%!PS"), std::string::npos) << "the test's printer has a PostScript driver";
    const HostResult refused = print({L"--print-by-driver", L"no such printer"});
    EXPECT_EQ(refused.exitCode, 1u);
    EXPECT_EQ(Lines(refused.error).size(), 1u) << refused.error;
}

// Of its first part; the messages of a status bar itself do not cross to another program.
std::wstring StatusText(HWND frame) {
    wchar_t text[512] = {};
    SendMessageW(GetDlgItem(frame, IDC_STATUS), WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return text;
}

int Chosen(HWND dialog, int id) { return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0)); }

TEST_F(HostPrintTest, TheWindowPrintsTheLeadThatIsShown) {
    RawPrinter printer;
    ASSERT_FALSE(printer.Name().empty());
    const OpenHost host({});
    ASSERT_NE(host.Frame(), nullptr);
    const auto openDialog = [&] {
        PostMessageW(host.Frame(), WM_COMMAND, IDM_FILE_PRINT, 0);
        return host.WaitForMessageBox();
    };
    constexpr int kWholeTracing = 12;
    const HWND whole = openDialog();
    ASSERT_NE(whole, nullptr);
    EXPECT_EQ(Chosen(whole, IDC_PRINT_LEAD), kWholeTracing) << "the tracing is shown";
    SendMessageW(whole, WM_COMMAND, IDCANCEL, 0);
    ASSERT_TRUE(WaitUntil([&] { return !host.HasMessageBox(); }));
    SendMessageW(host.Frame(), WM_COMMAND, IDM_VIEW_FIRST_PANE + 2, 0);
    const HWND left = openDialog();
    ASSERT_NE(left, nullptr);
    constexpr int kV6 = 11;  // what the general pane begins with
    EXPECT_EQ(Chosen(left, IDC_PRINT_LEAD), kV6);
    EXPECT_EQ(Chosen(left, IDC_PRINT_PAPER), 0);
    SendMessageW(left, WM_COMMAND, IDCANCEL, 0);
    ASSERT_TRUE(WaitUntil([&] { return !host.HasMessageBox(); }));
    EXPECT_EQ(printer.Printed(), "");

    const HWND dialog = openDialog();
    ASSERT_NE(dialog, nullptr);
    const LRESULT place = SendDlgItemMessageA(dialog, IDC_PRINT_PRINTER, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                              reinterpret_cast<LPARAM>(printer.Name().c_str()));
    ASSERT_NE(place, CB_ERR) << "the printer is not offered";
    SendDlgItemMessageW(dialog, IDC_PRINT_PRINTER, CB_SETCURSEL, static_cast<WPARAM>(place), 0);
    SendDlgItemMessageW(dialog, IDC_PRINT_LEAD, CB_SETCURSEL, 10, 0);
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitUntil([&] { return StatusText(host.Frame()).find(L"V5 stampata") != std::wstring::npos; }))
        << fs::path(StatusText(host.Frame())).string();
    const fs::path pcl = folder_ / L"page.pcl";
    ASSERT_EQ(Print({L"--print", pcl.wstring()}).exitCode, 0u);
    EXPECT_TRUE(printer.Printed() == Read(pcl)) << printer.Printed().size() << " bytes";
    EXPECT_FALSE(host.HasMessageBox());
}

}  // namespace
}  // namespace kx::test
