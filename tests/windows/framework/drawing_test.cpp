// The drawing surface, its smooth lines, and the grid, on pictures that are looked at.
#include "lib/pltgrid.h"
#include "lib/windows/bitmap.h"
#include "lib/windows/smooth_polyline.h"
#include "tests/rig/recorded_reports.h"
#include "tests/unit/grid_picture.h"
#include "tests/windows/framework/framework_rig.h"

namespace kx::test {
namespace {

using Rows = std::vector<std::string>;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// White, of the screen's depth.
class Canvas {
  public:
    Canvas(int width, int height) {
        const WindowContext screen(nullptr);
        bitmap_.CreateCompatible(screen, width, height);
        context_.SelectBitmap(bitmap_);
        context_.FillWhite(0, 0, width, height);
    }

    DeviceContext& Context() { return context_; }
    // Rows of letters: '.' white, '#' black, '+' any other colour.
    Rows Picture() const {
        Rows rows;
        for (int y = 0; y < bitmap_.Height(); ++y) {
            std::string row;
            for (int x = 0; x < bitmap_.Width(); ++x) {
                const COLORREF colour = GetPixel(context_.Handle(), x, y);
                row += colour == kWhite ? '.' : colour == kBlack ? '#' : '+';
            }
            rows.push_back(row);
        }
        return rows;
    }

  private:
    Bitmap bitmap_;
    MemoryContext context_;
};

TEST(Surface, DrawsInLogicalUnitsWithinItsClipping) {
    Canvas canvas(9, 4);
    DeviceContext& dc = canvas.Context();
    dc.SetMultipliers(200, 100);
    dc.SaveTransform();
    dc.SetMultipliers(5, 5);
    dc.RestoreTransform();
    POINT points[] = {{0, 0}, {3, 0}, {3, 4}};
    dc.SetPen(PS_SOLID, 1, kBlack);
    EXPECT_TRUE(dc.Polyline(points, 3));
    EXPECT_EQ(canvas.Picture(), (Rows{"#######..", "......#..", "......#..", "......#.."}));
    dc.FillWhite(0, 0, 5, 4);
    dc.SetClipRect({1, 1, 3, 4});
    EXPECT_TRUE(dc.Rectangle(1, 1, 4, 4));
    EXPECT_EQ(dc.FillRectOwnBrush({0, 0, 1, 1}), 0) << "no brush of its own yet";
    EXPECT_EQ(canvas.Picture(), (Rows{".........", "..####...", "..#......", "..####..."}));
    dc.ClearClip();
    dc.SetLogicalOrigin(100, 0);
    dc.SetSolidBrush(kBlack);
    EXPECT_NE(dc.FillRectOwnBrush({100, 0, 101, 1}), 0);
    EXPECT_EQ(canvas.Picture().front(), "##.......");
}

// Each on a white canvas of its own.
TEST(Surface, OperationsThatNoPaneCallsDrawWhatTheySay) {
    using Dc = DeviceContext;
    const auto black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    const Bitmap lines = Bitmap::MakeHatch(2, 1);
    const std::uint8_t pixels[16] = {};
    const UniqueIcon icon(CreateIcon(nullptr, 4, 2, 1, 1, pixels, pixels));
    const BITMAPINFO dib{{sizeof(BITMAPINFOHEADER), 1, 1, 1, 24, BI_RGB, 0, 0, 0, 0, 0}, {}};  // its pixel is where a colour would be
    const RECT all{0, 0, 6, 3}, most{0, 0, 5, 3}, part{2, 0, 4, 2};
    const auto right = HorizontalAlignment::kRight;
    POINT box[] = {{0, 0}, {6, 0}, {6, 3}, {0, 3}};
    const auto opaque = [](Dc& dc) { dc.SetOpaque(), dc.SetBackColor(kBlack); };
    const struct {
        const char* name;
        std::function<void(Dc&)> draws;
        const char* picture;
    } rows[] = {
        {"SetDeviceOrigin", [](Dc& dc) { dc.SetDeviceOrigin(2, 1), dc.FillBlack(0, 0, 2, 1); }, "...... ..##.. ......"},
        {"InvertPattern", [](Dc& dc) { dc.SetSolidBrush(kWhite), dc.InvertPattern(1, 0, 2, 1); }, ".##... ...... ......"},
        {"StretchFrom", [](Dc& dc) { dc.FillBlack(0, 0, 1, 1), dc.StretchFrom(2, 0, 4, 2, dc, 0, 0, 1, 1); }, "#.#### ..#### ......"},
        {"FrameRegion", [=](Dc& dc) { dc.FrameRegion(dc.RectRegion(most).get(), black, 1, 1); }, "#####. #...#. #####."},
        {"PolygonRegion", [&](Dc& dc) { dc.FillRegion(dc.PolygonRegion(box, 4).get(), black); }, "###### ###### ######"},
        {"GradientFill", [=](Dc& dc) { dc.GradientFill(most, kBlack, kWhite); }, "#++++. #++++. #++++."},
        {"Ellipse", [=](Dc& dc) { dc.Select(black), dc.Ellipse(0, 0, 6, 3); }, ".####. ###### .####."},
        {"SetDotBrush", [](Dc& dc) { dc.SetDotBrush(), dc.FillPattern(0, 0, 6, 3); }, "###.## ###### ######"},
        {"SelectSystemBrush", [](Dc& dc) { dc.SelectSystemBrush(), dc.FillPattern(0, 0, 6, 1); }, "++++++ ...... ......"},
        {"TextAt", [=](Dc& dc) { opaque(dc), dc.TextAt(" ", 3, 1, right, VerticalAlignment::kBottom); }, "###... ...... ......"},
        {"DrawTextIn", [=](Dc& dc) { opaque(dc), dc.DrawTextIn(" ", -1, part, 0); }, "..##.. ..##.. ......"},
        {"DrawIconAt", [&](Dc& dc) { dc.DrawIconAt(1, 1, icon.get()); }, "...... .####. .####."},
        {"DrawTransparent", [&](Dc& dc) { dc.DrawTransparent(0, 1, lines, kWhite); }, "...... .#.#.# .#.#.#"},
        {"DrawDib", [&](Dc& dc) { dc.DrawDib(part, &dib); }, "..##.. ..##.. ......"},
        {"DrawEdge", [=](Dc& dc) { dc.DrawEdge(all, BDR_SUNKENOUTER, BF_LEFT); }, "+..... +..... +....."},
        {"DrawFocusRect", [=](Dc& dc) { dc.DrawFocusRect(most); }, "#.#.#. ...... #.#.#."},
        {"WashOut", [=](Dc& dc) { dc.FillBlack(0, 0, 6, 3), dc.WashOut(part); }, "##++## ##++## ######"},
    };
    for (const auto& row : rows) {
        Canvas canvas(6, 3);
        row.draws(canvas.Context());
        const Rows picture = canvas.Picture();
        EXPECT_EQ(picture[0] + ' ' + picture[1] + ' ' + picture[2], row.picture) << row.name;
    }
    const auto both = Dc::CombineRegions(Dc().RectRegion({0, 0, 3, 3}).get(), Dc().RectRegion({2, 0, 6, 3}).get(), RGN_AND);
    EXPECT_TRUE(PtInRegion(both.get(), 2, 1) && !PtInRegion(both.get(), 1, 1) && !PtInRegion(both.get(), 3, 1));
    const auto round = Dc().EllipseRegion({0, 0, 60, 60});
    EXPECT_TRUE(PtInRegion(round.get(), 30, 1) && PtInRegion(round.get(), 30, 58) && !PtInRegion(round.get(), 5, 5));
}

// GDI+ takes them in batches of 1024.
TEST(Surface, SmoothLinesOfAnyNumberOfPointsHaveNoGaps) {
    for (const std::size_t count : {2u, 1024u, 1025u, 2500u}) {
        Canvas canvas(2500, 9);
        std::vector<POINT> points;
        for (LONG i = 0; points.size() < count; ++i) {
            points.push_back({i, 4 + (i % 3 - 1)});
        }
        canvas.Context().DrawSmoothPolyline(points.data(), static_cast<int>(count), kBlack, 1, 0);
        const Rows picture = canvas.Picture();
        for (std::size_t x = 1; x + 2 < count; ++x) {
            EXPECT_TRUE(picture[3][x] != '.' || picture[4][x] != '.' || picture[5][x] != '.') << count << ' ' << x;
        }
    }
    StopSmoothDrawing();
}

constexpr COLORREF kPaper = 0xFFFFFD, kMajor = 0xB7F095, kMinor = 0xEBFCE2;

TEST(Grid, OnABitmapIsThePaper) {
    for (const int dpi : {96, 120}) {
        RecordedReports reports;
        MemoryContext memory;
        PlotGrid grid(reports, dpi, dpi);
        PaperGrid paper{dpi, dpi};
        paper.frame = {0, 0, 1200, 900};
        paper.frameStyle = 1;
        paper.frameWidth = 20;
        paper.frameColour = kWhite;
        grid.SetFrameRect(paper.frame);
        grid.SetFrame(paper.frameStyle, paper.frameWidth, paper.frameColour);
        ASSERT_TRUE(grid.Render(memory, kPaper, kMajor, kMinor, 32, false));
        ASSERT_EQ(grid.Lock(memory), &memory);
        GridPicture picture(*paper.BitmapPixels());
        paper.Draw(picture, {kPaper, kMajor, kMinor});
        EXPECT_EQ(GetPixel(memory.Handle(), picture.width, 0), CLR_INVALID);
        for (int i = 0; i < picture.height * picture.width; ++i) {
            const int x = i % picture.width, y = i / picture.width;
            ASSERT_EQ(GetPixel(memory.Handle(), x, y), picture.Pixel(x, y)) << x << ' ' << y << " at " << dpi;
        }
        PlotGrid::Unlock(memory);
    }
}

TEST(Grid, ThatCannotBeMadeIsReportedOnce) {
    for (const KxRect& frame : {KxRect{100, 100, 0, 0}, KxRect{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}) {
        RecordedReports reports;
        PlotGrid grid(reports, 96, 96);
        MemoryContext memory;
        grid.SetFrameRect(frame);
        EXPECT_FALSE(grid.Render(memory, kPaper, kMajor, kMinor, 32, false));
        EXPECT_THAT(reports.Take(), testing::ElementsAre(testing::StartsWith("memory ..\\..\\lib\\pltgrid ")));
        EXPECT_EQ(grid.Lock(memory), nullptr);
    }
}

}  // namespace
}  // namespace kx::test
