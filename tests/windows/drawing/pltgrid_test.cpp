#include "lib/pltgrid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/rig/recorded_reports.h"
#include "tests/windows/drawing/canvas.h"

namespace {

using kx::MemoryContext;
using kx::PlotGrid;
using kx::test::RecordedReports;
using Lines = std::vector<std::string>;

constexpr COLORREF kPaper = 0xFFFFFD;
constexpr COLORREF kMajor = 0xB7F095;
constexpr COLORREF kMinor = 0xEBFCE2;
constexpr COLORREF kFrame = 0xFFFFFF;

// A grid over pixels as the view makes it.
class Paper {
  public:
    Paper(int dpi, int width, int height, std::uint32_t style = 1) : grid_(reports_, dpi, dpi) {
        grid_.SetFrameRect({0, 0, MulDiv(width, 1000, dpi), MulDiv(height, 1000, dpi)});
        grid_.SetFrame(style, 20, kFrame);
        made_ = grid_.Render(memory_, kPaper, kMajor, kMinor, 32, false);
    }
    ~Paper() { PlotGrid::Unlock(memory_); }

    bool Made() const { return made_; }
    Lines Reports() { return reports_.Take(); }
    MemoryContext& Lock() {
        EXPECT_EQ(grid_.Lock(memory_), &memory_);
        return memory_;
    }
    COLORREF Pixel(int x, int y) const { return GetPixel(memory_.Handle(), x, y); }
    SIZE Size() const {
        BITMAP record = {};
        GetObjectA(GetCurrentObject(memory_.Handle(), OBJ_BITMAP), sizeof record, &record);
        return {record.bmWidth, record.bmHeight};
    }

  private:
    RecordedReports reports_;
    PlotGrid grid_;
    MemoryContext memory_;
    bool made_ = false;
};

TEST(PlotGrid, TheBitmapIsWidenedTo16PixelsAndOneRowHigher) {
    const struct {
        int dpi, width, height, bitmapWidth;
    } rows[] = {{96, 400, 300, 400}, {96, 401, 300, 416}, {120, 415, 77, 416}, {96, 1, 1, 16}};
    for (const auto& row : rows) {
        Paper paper(row.dpi, row.width, row.height);
        ASSERT_TRUE(paper.Made());
        paper.Lock();
        EXPECT_EQ(paper.Size().cx, row.bitmapWidth);
        EXPECT_EQ(paper.Size().cy, row.height + 1);
        for (int y = 0; y <= row.height; ++y) {
            for (int x = row.width; x < row.bitmapWidth; ++x) {
                ASSERT_EQ(paper.Pixel(x, y), kPaper) << x << ' ' << y << " of " << row.width;
            }
        }
    }
}

TEST(PlotGrid, At96DotsACellIs19PixelsWithoutDots) {
    // 10 x 5 whole cells: their places are MulDiv(192, j, 10) and so on.
    Paper paper(96, 192, 96, 0);
    paper.Lock();
    for (int y = 0; y < 96; ++y) {
        for (int x = 0; x < 192; ++x) {
            bool major = false;
            bool cell = false;
            for (int i = 0; i < 5; ++i) {
                const int down = y - MulDiv(96, i, 5);
                for (int j = 0; j < 10; ++j) {
                    const int right = x - MulDiv(192, j, 10);
                    const bool inside = down >= 0 && down < 19 && right >= 0 && right < 19;
                    cell = cell || inside;
                    major = major || (inside && (down < 2 || right < 2));
                }
            }
            ASSERT_EQ(paper.Pixel(x, y), major ? kMajor : kPaper) << x << ' ' << y << (cell ? "" : " gap");
        }
    }
}

TEST(PlotGrid, At120DotsTheMinorDotsShow) {
    Paper paper(120, 240, 120, 0);
    paper.Lock();
    // A cell of 24 pixels with a dot at each fifth in both directions.
    int dots = 0;
    for (int y = 2; y < 24; ++y) {
        for (int x = 2; x < 24; ++x) {
            dots += paper.Pixel(x, y) == kMinor ? 1 : 0;
        }
    }
    EXPECT_EQ(dots, 16);
    for (const int i : {1, 2, 3, 4}) {
        EXPECT_EQ(paper.Pixel(MulDiv(24, i, 5), MulDiv(24, 5 - i, 5)), kMinor) << i;
    }
    EXPECT_EQ(paper.Pixel(0, 12), kMajor);
    EXPECT_EQ(paper.Pixel(12, 1), kMajor);
    EXPECT_EQ(paper.Pixel(12, 2), kPaper);
}

TEST(PlotGrid, TheFrameCoversTheEdges) {
    Paper paper(96, 200, 100);
    paper.Lock();
    for (int x = 0; x < 200; ++x) {
        for (const int y : {0, 1, 98, 99}) {
            ASSERT_EQ(paper.Pixel(x, y), kFrame) << x << ' ' << y;
        }
    }
    for (int y = 0; y < 100; ++y) {
        for (const int x : {0, 1, 198, 199}) {
            ASSERT_EQ(paper.Pixel(x, y), kFrame) << x << ' ' << y;
        }
    }
    EXPECT_NE(paper.Pixel(2, 2), kFrame);
    EXPECT_EQ(paper.Pixel(50, 100), kPaper);
}

TEST(PlotGrid, WhatCannotBeMadeIsReportedOnce) {
    const struct {
        const char* name;
        int dpi;
        RECT frame;
        int bits;
    } rows[] = {
        {"no area", 96, {0, 0, 0, 0}, 32},
        {"turned over", 96, {100, 100, 0, 0}, 32},
        {"no resolution", 0, {0, 0, 2000, 2000}, 32},
        {"negative resolution", -96, {0, 0, 2000, 2000}, 32},
        {"too large", 96, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, 32},
        {"no such depth", 96, {0, 0, 2000, 2000}, 5},
    };
    for (const auto& row : rows) {
        RecordedReports reports;
        PlotGrid grid(reports, row.dpi, row.dpi);
        MemoryContext memory;
        grid.SetFrameRect(row.frame);
        EXPECT_FALSE(grid.Render(memory, kPaper, kMajor, kMinor, row.bits, false)) << row.name;
        const Lines lines = reports.Take();
        ASSERT_EQ(lines.size(), 1u) << row.name;
        EXPECT_EQ(lines[0].rfind("memory ..\\..\\lib\\pltgrid ", 0), 0u) << lines[0];
        EXPECT_EQ(grid.Lock(memory), nullptr) << row.name;
    }
}

TEST(PlotGrid, AnySpacingEnds) {
    const std::int32_t values[] = {INT32_MIN, -1, 0, 1, 39, 197, INT32_MAX};
    RecordedReports reports;
    PlotGrid grid(reports, 96, 96);
    grid.SetFrameRect({0, 0, 500, 400});
    for (const std::int32_t major : values) {
        for (const std::int32_t minor : values) {
            MemoryContext memory;
            grid.SetSpacing(major, minor, minor, major);
            EXPECT_TRUE(grid.Render(memory, kPaper, kMajor, kMinor, 32, minor == 39));
        }
    }
}

}  // namespace
