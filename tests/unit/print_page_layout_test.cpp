#include "host/printing/print_page_layout.h"

#include "host/file_formats.h"

namespace kxhost {
namespace {

TEST(LayOutPage, EverythingStandsOnThePaperAndNothingOnAnother) {
    for (int tenths = -3000; tenths <= 3000; ++tenths) {
        EXPECT_LE(std::abs(DotsOf(tenths / 10.0) - tenths / 10.0 * 300 / 25.4), 0.5 + 1e-9) << tenths;
    }
    const struct {
        Paper paper;
        int width, height;  // what a printer can print on, dots
    } rows[] = {{Paper::kA4, 2480 - 150, 3508 - 300}, {Paper::kLetter, 2550 - 150, 3300 - 300}};
    for (const auto& row : rows) {
        SCOPED_TRACE(NameOf(row.paper));
        const PageLayout page = LayOutPage(row.paper);
        EXPECT_TRUE(page.width == row.width && page.height == row.height);
        for (const PageBox* box : {&page.patient, &page.grid, &page.tables, &page.statement, &page.footer}) {
            EXPECT_TRUE(box->left >= 0 && box->top >= 0 && box->right <= page.width && box->bottom <= page.height);
            EXPECT_TRUE(box->Width() > DotsOf(40) && box->Height() >= DotsOf(5));
        }
        EXPECT_TRUE(page.patient.bottom < page.grid.top && page.grid.right < page.tables.left);
        EXPECT_TRUE(page.grid.bottom < page.statement.top && page.statement.bottom <= page.footer.top);
        // The paper is whole squares of five millimetres, of their true size.
        EXPECT_EQ(page.gridWidthMm % 5 + page.gridHeightMm % 5, 0);
        EXPECT_NEAR(page.grid.Width(), page.gridWidthMm * 300 / 25.4, 1);
        EXPECT_NEAR(page.grid.Height(), page.gridHeightMm * 300 / 25.4, 1);
        EXPECT_EQ(PaperOf(NameOf(row.paper)), row.paper);
    }
    EXPECT_EQ(PaperOf("letter"), Paper::kLetter);
    EXPECT_EQ(PaperOf("A3"), std::nullopt);
    EXPECT_EQ(PageFormatOf("x.PCL"), PageFormat::kPcl);
    EXPECT_EQ(PageFormatOf("x.bmp"), PageFormat::kBmp);
    EXPECT_EQ(PageFormatOf("x.png"), PageFormat::kPng);
    EXPECT_EQ(PageFormatOf(".pcl"), std::nullopt);
}

TEST(ChooseScale, TakesTheLargestScaleAtWhichTheBeatFits) {
    const PageLayout page = LayOutPage(Paper::kA4);
    const struct {
        int durationMs, lowest, highest, speed, gain;
    } rows[] = {{1200, -300, 1500, 100, 40}, {1201, 0, 0, 50, 40},         {2400, 0, 0, 50, 40},         {2401, 0, 0, 25, 40},
                {1000000, 0, 0, 25, 40},     {1200, -1000, 3000, 100, 20}, {1200, -4000, 5000, 100, 10}, {1200, -9000, 9000, 100, 5},
                {0, 0, 0, 100, 40},          {1200, -32768, 32767, 100, 5}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.durationMs << " ms, " << row.lowest << " to " << row.highest);
        const WaveScale scale = ChooseScale(page, row.durationMs, row.lowest, row.highest);
        EXPECT_EQ(scale.mmPerSecond, row.speed);
        EXPECT_EQ(scale.mmPerMv, row.gain);
        EXPECT_TRUE(scale.zeroMm % 5 == 0 && scale.zeroMm >= 0 && scale.zeroMm <= page.gridHeightMm);
    }
    const WaveScale scale{100, 40, 5, 80};
    EXPECT_EQ(ColumnOf(page, scale, 250), page.grid.left + DotsOf(30));
    EXPECT_EQ(RowOf(page, scale, 625), page.grid.top + DotsOf(55));
    EXPECT_EQ(RowOf(page, scale, -625), page.grid.top + DotsOf(105));
    // Whatever is asked for stays a number that a device can take.
    EXPECT_EQ(ColumnOf(page, scale, 1e300), page.grid.left + DotsOf(1000));
    EXPECT_EQ(RowOf(page, scale, 1e300), page.grid.top - DotsOf(1000));
}

TEST(StaggerLabels, NoLabelCoversAnother) {
    const struct {
        const char* name;
        std::vector<LabelPlace> labels;
        std::vector<int> rows;
    } rows[] = {{"apart", {{100, 40}, {140, 40}}, {0, 0}},
                {"one dot too near", {{100, 40}, {139, 40}}, {0, 1}},
                {"in no order", {{160, 40}, {100, 40}, {130, 40}}, {0, 0, 1}},
                {"more than there are rows", {{100, 40}, {100, 40}, {100, 40}, {100, 40}}, {0, 1, 2, 2}},
                {"the row that is free first", {{100, 90}, {110, 20}, {140, 20}}, {0, 1, 1}}};
    for (const auto& row : rows) {
        EXPECT_EQ(StaggerLabels(row.labels, 3), row.rows) << row.name;
    }
}

}  // namespace
}  // namespace kxhost
