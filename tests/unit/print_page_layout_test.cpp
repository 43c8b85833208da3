#include "host/printing/print_page_layout.h"

namespace kxhost {
namespace {

TEST(ChooseScale, TakesTheLargestScaleAtWhichTheBeatFits) {
    const PageLayout page = LayOutPage(Paper::kA4);
    const struct {
        int durationMs, lowest, highest, speed, gain;
    } rows[] = {{1200, -300, 1500, 100, 40},  {1201, 0, 0, 50, 40},         {2401, 0, 0, 25, 40},          {1000000, 0, 0, 25, 40},
                {1200, -1000, 3000, 100, 20}, {1200, -4000, 5000, 100, 10}, {1200, -32768, 32767, 100, 5}, {0, 0, 0, 100, 40}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.durationMs << " ms, " << row.lowest << " to " << row.highest);
        const WaveScale scale = ChooseScale(page, row.durationMs, row.lowest, row.highest);
        EXPECT_TRUE(scale.mmPerSecond == row.speed && scale.mmPerMv == row.gain);
        EXPECT_TRUE(scale.zeroMm % 5 == 0 && scale.zeroMm >= 0 && scale.zeroMm <= page.gridHeightMm);
    }
    const WaveScale scale{100, 40, 5, 80};
    EXPECT_EQ(ColumnOf(page, scale, 250), page.grid.left + DotsOf(30));
    EXPECT_TRUE(RowOf(page, scale, 625) == page.grid.top + DotsOf(55) && RowOf(page, scale, -625) == page.grid.top + DotsOf(105));
    // Whatever is asked for stays a number that a device can take.
    EXPECT_EQ(ColumnOf(page, scale, 1e300), page.grid.left + DotsOf(1000));
}

}  // namespace
}  // namespace kxhost
