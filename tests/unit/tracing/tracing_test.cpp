// The tracing's arithmetic: true size, times that go on from column to column, and the calipers.
#include "host/tracing/tracing_layout.h"

#include "host/tracing/calipers.h"
#include "include/kxdialogs.h"

namespace kxhost {
namespace {

TEST(TracingLayout, EveryPixelOfACellIsTheTimeAndLevelThatAreDrawnThere) {
    for (const double dpi : {96.0, 120.0, 144.0}) {
        for (const double speed : kTracingSpeeds) {
            for (const Arrangement arrangement : {Arrangement::k3x4, Arrangement::k6x2, Arrangement::k12x1}) {
                const TracingScale scale{dpi / 25.4, speed, 10};
                const TracingLayout layout = LayOutTracing(arrangement, 1400, 700, scale, 2000, 60'000);
                unsigned seen = 0;
                double next = 2000;
                for (const TracingCell& cell : layout.cells) {
                    seen |= 1u << cell.lead;
                    for (int x = cell.left; x < cell.right; x += 37) {
                        const auto point = PointAt(layout, scale, x, cell.zero - 20);
                        ASSERT_TRUE(point);
                        EXPECT_EQ(point->lead, cell.lead);
                        EXPECT_EQ(ColumnIn(cell, scale, point->ms), x);
                        EXPECT_EQ(RowIn(cell, scale, point->millivolts), cell.zero - 20);
                    }
                    // A second is as many millimetres as the speed says; columns follow each other in time.
                    EXPECT_NEAR(PointAt(layout, scale, cell.left + 100, cell.zero)->ms - cell.startMs, 100 / (dpi / 25.4) / speed * 1000,
                                1e-6);
                    if (!cell.rhythm && cell.top == 0) {
                        EXPECT_NEAR(cell.startMs, next, 1e-6);
                        next = cell.EndMs(scale);
                    }
                }
                EXPECT_EQ(seen, 0xFFFu);
                EXPECT_NEAR(next, 2000 + layout.visibleMs, 1e-6);
                EXPECT_FALSE(PointAt(layout, scale, layout.gutter - 1, 10));
            }
        }
    }
}

TEST(TracingLayout, RowsKeepTheirLeastHeightAndAShortRecordingIsSharedAmongTheColumns) {
    const TracingScale scale;
    const TracingLayout low = LayOutTracing(Arrangement::k12x1, 800, 100, scale, 0, 10'000);
    EXPECT_EQ(low.height, static_cast<int>(12 * kLeastRowMm * scale.pixelsPerMm + 0.5));
    const TracingLayout wide = LayOutTracing(Arrangement::k3x4, 3000, 700, scale, 0, 10'000);
    EXPECT_NEAR(wide.visibleMs, 10'000, 20);
    EXPECT_NEAR(wide.cells[3].startMs, 2500, 20);
}

TEST(Calipers, MeasureBetweenTwoLegsAndNeverAcrossLeads) {
    Calipers calipers;
    EXPECT_FALSE(calipers.Take(100, 1000));
    calipers.Begin({1000, 0.5, KX_LEAD_II});
    calipers.MoveTo({1812, 0.18, KX_LEAD_II});
    EXPECT_EQ(calipers.Text(), L"812 ms   74 bpm   -0,32 mV");
    calipers.MoveTo({2000, 3.0, KX_LEAD_V1});
    EXPECT_NEAR(calipers.Ms(), 1000, 1e-9);
    EXPECT_NEAR(calipers.Millivolts(), -0.32, 1e-9);
    EXPECT_TRUE(calipers.Take(1003, 5));
    EXPECT_EQ(calipers.ActiveLeg(), 0);
    calipers.Nudge(-5000, 0.02, 10'000);
    EXPECT_EQ(calipers.Leg(0).ms, 0);
    calipers.TakeOther();
    calipers.Nudge(50'000, 0, 10'000);
    EXPECT_EQ(calipers.Text(), L"10000 ms   6 bpm   -0,34 mV");
    EXPECT_FALSE(calipers.Take(5000, 5));
    calipers.PutAway();
    EXPECT_FALSE(calipers.AreOut());
}

}  // namespace
}  // namespace kxhost
