#include "lib/pltgrid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/rig/recorded_reports.h"
#include "tests/unit/grid_picture.h"
#include "tests/windows/drawing/canvas.h"

namespace {

using kx::MemoryContext;
using kx::PlotGrid;
using kx::test::RecordedReports;

constexpr COLORREF kPaper = 0xFFFFFD, kMajor = 0xB7F095, kMinor = 0xEBFCE2, kFrame = 0xFFFFFF;

TEST(PlotGrid, TheBitmapShowsThePaper) {
    for (const int dpi : {96, 120}) {
        RecordedReports reports;
        MemoryContext memory;
        PlotGrid grid(reports, dpi, dpi);
        kx::PaperGrid paper{dpi, dpi};
        paper.frame = {0, 0, 2500, 1700};
        paper.frameStyle = 1;
        paper.frameWidth = 20;
        paper.frameColour = kFrame;
        grid.SetFrameRect(paper.frame);
        grid.SetFrame(paper.frameStyle, paper.frameWidth, paper.frameColour);
        ASSERT_TRUE(grid.Render(memory, kPaper, kMajor, kMinor, 32, false));
        ASSERT_EQ(grid.Lock(memory), &memory);
        kx::test::GridPicture picture(*paper.BitmapPixels());
        paper.Draw(picture, {kPaper, kMajor, kMinor});
        BITMAP record{};
        GetObjectA(GetCurrentObject(memory.Handle(), OBJ_BITMAP), sizeof record, &record);
        EXPECT_EQ(record.bmWidth, picture.width);
        EXPECT_EQ(record.bmHeight, picture.height);
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                ASSERT_EQ(GetPixel(memory.Handle(), x, y), picture.Pixel(x, y)) << x << ' ' << y << " at " << dpi;
            }
        }
        PlotGrid::Unlock(memory);
    }
}

TEST(PlotGrid, WhatCannotBeMadeIsReportedOnce) {
    const struct {
        const char* name;
        int dpi;
        KxRect frame;
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
        const std::vector<std::string> lines = reports.Take();
        ASSERT_EQ(lines.size(), 1u) << row.name;
        EXPECT_EQ(lines[0].rfind("memory ..\\..\\lib\\pltgrid ", 0), 0u) << lines[0];
        EXPECT_EQ(grid.Lock(memory), nullptr) << row.name;
    }
}

}  // namespace
