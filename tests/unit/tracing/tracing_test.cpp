// The tracing's arithmetic: true size, times that go on from column to column, and the calipers.
#include "host/tracing/tracing_layout.h"

#include "host/recording/median_beat.h"
#include "host/recording/synthetic.h"
#include "host/recording/test_builder.h"
#include "host/tracing/calipers.h"
#include "host/tracing/tracing_signal.h"
#include "include/kxdialogs.h"
#include "lib/dbclient/test_record.h"

namespace kxhost {
namespace {

TEST(TracingLayout, EveryPixelOfACellIsTheTimeAndLevelThatAreDrawnThere) {
    for (int i = 0; i < 9; ++i) {
        const double dpi = 96 + i % 3 * 24, speed = kTracingSpeeds[static_cast<std::size_t>(i / 3) % std::size(kTracingSpeeds)];
        const TracingScale scale{dpi / 25.4, speed, 10};
        for (const Arrangement arrangement : {Arrangement::k3x4, Arrangement::k6x2, Arrangement::k12x1}) {
            const TracingLayout layout = LayOutTracing(arrangement, 1400, 700, scale, 2000, 60'000);
            unsigned seen = 0;
            double next = 2000;
            for (const TracingCell& cell : layout.cells) {
                seen |= 1u << cell.lead;
                for (int x = cell.left; x < cell.right; x += 37) {
                    const auto point = PointAt(layout, scale, x, cell.zero - 20);
                    ASSERT_TRUE(point && point->lead == cell.lead && ColumnIn(cell, scale, point->ms) == x);
                    EXPECT_EQ(RowIn(cell, scale, point->millivolts), cell.zero - 20);
                }
                // A second is as many millimetres as the speed says; columns follow each other in time.
                EXPECT_NEAR(PointAt(layout, scale, cell.left + 100, cell.zero)->ms - cell.startMs, 100 / scale.pixelsPerMm / speed * 1000,
                            1e-6);
                if (!cell.rhythm && cell.top == 0) {
                    EXPECT_NEAR(cell.startMs, next, 1e-6);
                    next = cell.EndMs(scale);
                }
            }
            EXPECT_TRUE(seen == 0xFFF && !PointAt(layout, scale, layout.gutter - 1, 10));
            EXPECT_NEAR(next, 2000 + layout.visibleMs, 1e-6);
        }
    }
}

TEST(TracingSignal, IsThatOfTheRecordWithItsBeats) {
    kx::recording::Recording recording = kx::recording::MakeSyntheticRecording({.sampleRate = 250, .seconds = 4});
    recording.resolutionUv.fill(2.5);
    std::string error;
    const auto beat = kx::recording::MakeMedianBeat(recording, error);
    ASSERT_TRUE(beat) << error;
    kx::TestRecord test;
    EXPECT_TRUE(BeatsOf(test).empty() && !SignalOf(test));
    FillTestRecord(test, recording, *beat);
    const TracingSignal signal = SignalOf(test).value();
    ASSERT_TRUE(signal.sampleRate == 250 && signal.leads.size() == 12 && signal.SampleCount() == 1000);
    for (std::size_t i = 0; i < 12 * 1000; ++i) {
        ASSERT_NEAR(signal.Millivolts(i % 12, i / 12), recording.leads[i % 12][i / 12] / 1000, 0.00126) << i;
    }
    const std::vector<TracedBeat> beats = BeatsOf(test);
    ASSERT_EQ(beats.size(), beat->beatsMs.size());
    for (std::size_t i = 0; i < beats.size(); ++i) {
        EXPECT_TRUE(beats[i].timeMs == beat->beatsMs[i] && beats[i].label == 1 && beats[i].inMedian == beat->kept[i]) << i;
    }
}

TEST(Calipers, MeasureBetweenTwoLegsAndNeverAcrossLeads) {
    Calipers calipers;
    EXPECT_FALSE(calipers.Take(100, 1000));
    calipers.Begin({1000, 0.5, KX_LEAD_II});
    calipers.MoveTo({1812, 0.18, KX_LEAD_II});
    EXPECT_EQ(calipers.Text(), L"812 ms   74 bpm   -0,32 mV");
    calipers.MoveTo({2000, 3.0, KX_LEAD_V1});
    EXPECT_TRUE(std::abs(calipers.Ms() - 1000) < 1e-9 && std::abs(calipers.Millivolts() + 0.32) < 1e-9);
    EXPECT_TRUE(calipers.Take(1003, 5));
    calipers.Nudge(-5000, 0.02, 10'000);
    EXPECT_EQ(calipers.Leg(0).ms, 0);
    calipers.TakeOther();
    calipers.Nudge(50'000, 0, 10'000);
    EXPECT_EQ(calipers.Text(), L"10000 ms   6 bpm   -0,34 mV");
    EXPECT_FALSE(calipers.Take(5000, 5));
}

}  // namespace
}  // namespace kxhost
