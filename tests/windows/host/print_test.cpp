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

// A monochrome BMP file as the system reads it.
class PageFile {
  public:
    explicit PageFile(const std::wstring& file)
        : bitmap_(LoadImageW(nullptr, file.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION)) {
        SelectObject(dc_, bitmap_);
    }
    ~PageFile() {
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;

    bool IsBlack(int x, int y) const { return GetPixel(dc_, x, y) == 0; }

  private:
    HDC dc_ = CreateCompatibleDC(nullptr);
    HANDLE bitmap_;
};

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
    // 300 dots per inch are 11811 a metre, across and down, so that the file is printed at its size.
    EXPECT_EQ(Read(bmp).substr(38, 8), std::string("\x23\x2E\0\0\x23\x2E\0\0", 8));
    const PageFile page(bmp.wstring());
    const kxhost::PageBox grid = kxhost::LayOutPage(Paper::kA4).grid;
    const auto blackInColumn = [&](int x) {
        int black = 0;
        for (int y = grid.top; y < grid.bottom; ++y) {
            black += page.IsBlack(x, y);
        }
        return black;
    };
    const auto blackInRow = [&](int y) {
        int black = 0;
        for (int x = grid.left; x < grid.right; ++x) {
            black += page.IsBlack(x, y);
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
    for (const wchar_t* name : {L"t.pdf", L"t.png", L"t.pcl"}) {
        EXPECT_EQ(print({L"--print", file(name)}).exitCode, 0u) << fs::path(name).string();
    }
    EXPECT_EQ(Read(file(L"t.pdf")).substr(0, 5), "%PDF-");
    const std::string png = Read(file(L"t.png"));
    EXPECT_NE(png.find(std::string("pHYs\0\0\x2E\x23\0\0\x2E\x23\1", 13)), png.npos) << "11811 dots a metre are 300 an inch";
    EXPECT_NE(png.find(std::string("IHDR\0\0\x0D\xB4\0\0\x09\xB0", 12)), png.npos) << "297 by 210 mm";
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

TEST_F(HostPrintTest, TheWindowPrintsTheLeadThatIsShown) {
    RawPrinter printer;
    ASSERT_FALSE(printer.Name().empty());
    const OpenHost host({});
    ASSERT_NE(host.Frame(), nullptr);
    SendMessageW(host.Frame(), WM_COMMAND, IDM_VIEW_FIRST_PANE + 2, 0);
    PostMessageW(host.Frame(), WM_COMMAND, IDM_FILE_PRINT, 0);
    const HWND dialog = host.WaitForMessageBox();
    ASSERT_NE(dialog, nullptr);
    constexpr int kV6 = 11;  // what the general pane begins with
    EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_PRINT_LEAD, CB_GETCURSEL, 0, 0), kV6);
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
