#include "dialogs/marker_view/trace/view_geometry.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

using kx::BeatMeasure;
using kx::DeviceMeasure;
using kx::ScrollBarState;
using kx::ScrollRequest;
using kx::ViewGeometry;
using kx::ViewSettings;

// 4 pixels per mm across, 3 down.
constexpr DeviceMeasure kDevice = {1024, 256, 768, 256};
constexpr BeatMeasure kBeat = {600, 500, 1000};
constexpr ViewSettings kSettings = {20, 50, 0, 0};

TEST(ViewGeometry, ScalesTruncateAtEachStep) {
    const struct {
        const char* name;
        DeviceMeasure device;
        BeatMeasure beat;
        ViewSettings settings;
        std::int32_t horizontal;   // 1000 x pixels per sample
        std::int32_t heightOf1mV;  // of a sample of 1 mV
        std::int32_t heightOf100;  // of a slope of 100 uV/ms
    } rows[] = {
        {"50 mm/s at 500 Hz", kDevice, kBeat, kSettings, 400, 60, 60},
        {"a rate that does not divide", kDevice, {600, 300, 1000}, kSettings, 664, 60, 60},
        {"pixels and mm that do not divide", {1000, 261, 700, 197}, kBeat, kSettings, 383, 71, 71},
        {"2 uV a unit", kDevice, {600, 500, 2000}, kSettings, 400, 60, 60},
        {"fast and high", kDevice, kBeat, {1000, 1000, 0, 0}, 8000, 3000, 3000},
        {"32 kHz at 25 mm/s is below a thousandth", kDevice, {600, 32000, 1000}, {10, 25, 0, 0}, 0, 30, 30},
    };
    for (const auto& row : rows) {
        const ViewGeometry geometry(row.device, row.beat, row.settings, 400, 300);
        EXPECT_EQ(geometry.HorizontalScale(), row.horizontal) << row.name;
        const auto units = static_cast<std::int32_t>(1000000 / row.beat.resolutionNv);
        EXPECT_EQ(geometry.SampleHeight(units), row.heightOf1mV) << row.name;
        EXPECT_EQ(geometry.SlopeHeight(100000), row.heightOf100) << row.name;
    }
}

TEST(ViewGeometry, ANarrowBeatIsCentredAndDoesNotScroll) {
    const ViewGeometry geometry(kDevice, kBeat, {20, 50, 70, 1000}, 401, 900);
    EXPECT_EQ(geometry.XOrigin(), (401 - 240) / 2);
    EXPECT_EQ(geometry.HorizontalBar(), ScrollBarState());
    EXPECT_EQ(geometry.Baseline(), 450);
    EXPECT_EQ(geometry.VerticalBar(), ScrollBarState());
    EXPECT_EQ(geometry.ColumnOf(0), 80);
    EXPECT_EQ(geometry.ColumnOf(100), 120);
    EXPECT_EQ(geometry.SampleAt(120), 100);
    EXPECT_EQ(geometry.SampleAt(79), -3);
}

TEST(ViewGeometry, AWideBeatScrolls) {
    // 2400 pixels wide; 20 mm/mV: 300 pixels high, in a view of 100.
    const struct {
        std::int32_t percent, microvolts, origin, baseline;
        ScrollBarState horizontal, vertical;
    } rows[] = {
        {0, 0, 0, 50, {2000, 333, 0}, {200, 67, 67}},
        {50, 500, -1000, 20, {2000, 333, 834}, {200, 67, 80}},
        {100, -2500, -2000, 200, {2000, 333, 1668}, {200, 67, 0}},
        {100, 2500, -2000, -100, {2000, 333, 1668}, {200, 67, 134}},
    };
    for (const auto& row : rows) {
        const ViewGeometry geometry(kDevice, kBeat, {20, 500, row.percent, row.microvolts}, 400, 100);
        EXPECT_EQ(geometry.XOrigin(), row.origin) << row.percent;
        EXPECT_EQ(geometry.HorizontalBar(), row.horizontal) << row.percent;
        EXPECT_EQ(geometry.Baseline(), row.baseline) << row.microvolts;
        EXPECT_EQ(geometry.VerticalBar(), row.vertical) << row.microvolts << " " << geometry.VerticalBar().position;
    }
}

TEST(ViewGeometry, ATraceEndsWithTheFirstPointBeyondTheEdge) {
    const ViewGeometry geometry(kDevice, kBeat, {20, 500, 0, 0}, 10, 100);
    std::vector<std::pair<int, int>> points;
    const auto collect = [&](std::int32_t x, std::int32_t y) { points.emplace_back(x, y); };
    geometry.Trace(
        false, [](std::int32_t i) { return i; }, collect);
    EXPECT_EQ(points, (std::vector<std::pair<int, int>>{{0, 50}, {4, 49}, {8, 48}, {12, 47}}));
    points.clear();
    geometry.Trace(
        true, [](std::int32_t i) { return i; }, collect);
    EXPECT_EQ(points.back(), (std::pair<int, int>{12, 53}));
}

TEST(ViewGeometry, ADragGoesToTheBeatsEndsButNotBeyondTheView) {
    // Centred: columns 80 to 319 of 400.
    const ViewGeometry narrow(kDevice, kBeat, kSettings, 400, 300);
    // Samples 0 to 99 of 600 are in the view.
    const ViewGeometry wide(kDevice, kBeat, {20, 500, 0, 0}, 400, 300);
    const ViewGeometry scrolled(kDevice, kBeat, {20, 500, 50, 0}, 400, 300);
    const struct {
        const char* name;
        const ViewGeometry& geometry;
        std::int32_t column;
        std::optional<std::int32_t> target;
    } rows[] = {
        {"inside", narrow, 180, 250},
        {"left of the view", narrow, -50, 0},
        {"right of the view", narrow, 9000, 599},
        {"last column, the beat goes on", wide, 399, std::nullopt},
        {"first column, the beat goes on", scrolled, 0, std::nullopt},
        {"second column", scrolled, 1, 250},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.geometry.DragTarget(row.column), row.target) << row.name;
    }
    EXPECT_EQ(ViewGeometry().DragTarget(5), std::nullopt);
    EXPECT_EQ(ViewGeometry(kDevice, {600, 32000, 1000}, {20, 25, 0, 0}, 400, 300).DragTarget(200), std::nullopt) << "no scale";
}

TEST(ViewGeometry, AStepIsOneSampleOrWhatAMillisecondTells) {
    const struct {
        const char* name;
        std::uint32_t rate;
        std::int32_t position, step, target;
    } rows[] = {
        {"one sample on", 500, 100, 1, 101},
        {"one sample back", 500, 100, -1, 99},
        {"first sample but one", 500, 3, -50, 1},
        {"stays above sample 0", 500, 1, -1, 1},
        {"last sample", 500, 599, 1, 599},
        {"from beyond the beat", 500, 900, -1, 599},
        {"two samples to a millisecond, on", 2000, 100, 1, 101},
        {"two samples to a millisecond, back", 2000, 101, -1, 100},
        {"32 samples to a millisecond, on", 32000, 320, 1, 336},
        {"32 samples to a millisecond, back", 32000, 320, -1, 303},
    };
    for (const auto& row : rows) {
        const ViewGeometry geometry(kDevice, {600, row.rate, 1000}, kSettings, 400, 300);
        EXPECT_EQ(geometry.Stepped(row.position, row.step), row.target) << row.name;
    }
    EXPECT_EQ(ViewGeometry().Stepped(7, 1), 7);
    EXPECT_EQ(ViewGeometry(kDevice, {600, 0, 1000}, kSettings, 400, 300).Stepped(7, 1), 7);
}

// What the owner hears of a step and sends back must not undo it.
TEST(ViewGeometry, EveryStepSurvivesTheWayThroughMilliseconds) {
    for (const std::uint32_t rate : {100u, 250u, 500u, 999u, 1000u, 1001u, 1024u, 2000u, 5000u, 32000u}) {
        const ViewGeometry geometry(kDevice, {2000, rate, 1000}, kSettings, 400, 300);
        const auto samplesPerSecond = static_cast<std::int32_t>(rate);
        for (std::int32_t position = 200; position < 1800; ++position) {
            for (const int step : {1, -1}) {
                const std::int32_t target = geometry.Stepped(position, step);
                const std::int32_t back = kx::SamplesFromMs(kx::MsFromSamples(target, samplesPerSecond), samplesPerSecond);
                const std::int32_t stay = kx::SamplesFromMs(kx::MsFromSamples(position, samplesPerSecond), samplesPerSecond);
                ASSERT_GT((back - stay) * step, 0) << rate << " Hz, " << position << " by " << step;
            }
        }
    }
}

TEST(ViewGeometry, AMarkerCanBeBroughtIntoView) {
    for (const std::int32_t sample : {0, 1, 50, 300, 550, 599}) {
        ViewSettings settings = {20, 1000, 0, 0};
        settings.horizontalPosition = ViewGeometry(kDevice, kBeat, settings, 400, 300).PercentShowing(sample);
        const ViewGeometry geometry(kDevice, kBeat, settings, 400, 300);
        EXPECT_GE(geometry.ColumnOf(sample), 0) << sample;
        EXPECT_LT(geometry.ColumnOf(sample), 400) << sample;
    }
}

TEST(HitsMarker, IsTheSameOnBothSides) {
    const struct {
        std::int32_t x, y;
        bool hit;
    } rows[] = {
        {100, 0, true},   {98, 5, true},    {102, 5, true},    {97, 5, false},   {103, 5, false},   {100, 299, true}, {88, 280, true},
        {112, 280, true}, {87, 290, false}, {113, 290, false}, {88, 279, false}, {112, 279, false}, {100, -3, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kx::HitsMarker(100, {24, 20}, 300, row.x, row.y), row.hit) << row.x << ' ' << row.y;
    }
    EXPECT_FALSE(kx::HitsMarker(INT32_MAX, {24, 20}, 300, INT32_MIN, 299));
}

TEST(Scrolling, FollowsEveryRequestWithinItsRange) {
    const struct {
        std::int32_t value;
        ScrollRequest request;
        std::int32_t thumb, percent;
    } rows[] = {
        {50, ScrollRequest::kLineBack, 0, 49},     {50, ScrollRequest::kLineForward, 0, 51},
        {50, ScrollRequest::kPageBack, 0, 40},     {50, ScrollRequest::kPageForward, 0, 60},
        {50, ScrollRequest::kThumbTrack, 500, 25}, {50, ScrollRequest::kThumbPosition, 2000, 100},
        {50, ScrollRequest::kThumbTrack, -7, 0},   {50, ScrollRequest::kThumbTrack, INT32_MAX, 100},
        {50, ScrollRequest::kFirst, 0, 0},         {50, ScrollRequest::kLast, 0, 100},
        {50, ScrollRequest::kEnd, 0, 50},          {5, ScrollRequest::kPageBack, 0, 0},
        {95, ScrollRequest::kPageForward, 0, 100},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(kx::Scrolled(row.value, row.request, row.thumb, 1999, kx::kHorizontalSteps), row.percent)
            << static_cast<int>(row.request) << " at " << row.value;
    }
    const struct {
        ScrollRequest request;
        std::int32_t microvolts;
    } vertical[] = {
        {ScrollRequest::kLineBack, -50},     {ScrollRequest::kLineForward, 50}, {ScrollRequest::kPageBack, -500},
        {ScrollRequest::kPageForward, 500},  {ScrollRequest::kFirst, -2500},    {ScrollRequest::kLast, 2500},
        {ScrollRequest::kThumbTrack, -1250},
    };
    for (const auto& row : vertical) {
        EXPECT_EQ(kx::Scrolled(0, row.request, 50, 199, kx::kVerticalSteps), row.microvolts) << static_cast<int>(row.request);
    }
    EXPECT_EQ(kx::Scrolled(7, ScrollRequest::kThumbTrack, 3, INT32_MAX, kx::kHorizontalSteps), 0);
}

TEST(Readout, ShowsASignWhereverThereIsOne) {
    const struct {
        std::int32_t ms, microvolts, slope;
        const char* text;
    } rows[] = {
        {0, 0, 0, "0 ms\r\n0 uV\r\n0.00 uV/ms"},
        {400, -1250, 12345, "400 ms\r\n-1250 uV\r\n12.34 uV/ms"},
        {2, 5, -12345, "2 ms\r\n5 uV\r\n-12.34 uV/ms"},
        {2, 5, -999, "2 ms\r\n5 uV\r\n-0.99 uV/ms"},
        {2, 5, -9, "2 ms\r\n5 uV\r\n0.00 uV/ms"},
        {INT32_MAX, INT32_MIN, INT32_MIN, "2147483647 ms\r\n-2147483648 uV\r\n-2147483.64 uV/ms"},
    };
    for (const auto& row : rows) {
        char text[kx::kReadoutSize];
        kx::FormatReadout(text, row.ms, row.microvolts, row.slope);
        EXPECT_EQ(std::string(text), row.text);
    }
}

// Whatever the device, the beat and the settings say: nothing is undefined, and every trace ends.
TEST(ViewGeometry, AbsurdInputIsHarmless) {
    const std::int32_t sizes[] = {INT32_MIN, -1, 0, 1, 256, 4000, INT32_MAX};
    const std::uint32_t counts[] = {0, 1, 5, 32000, UINT32_MAX};
    const std::int32_t values[] = {INT32_MIN, 0, 25, INT32_MAX};
    for (const std::int32_t mm : sizes) {
        for (const std::uint32_t count : counts) {
            for (const std::int32_t value : values) {
                for (const std::int32_t size : sizes) {
                    const DeviceMeasure device = {size, mm, size, mm};
                    const BeatMeasure beat = {count > 32000 ? 1000u : count, count, count};
                    const ViewGeometry geometry(device, beat, {value, value, 100, -2500}, size, size);
                    std::int32_t points = 0;
                    geometry.Trace(
                        value > 0, [&](std::int32_t i) { return geometry.SampleHeight(i % 2 == 0 ? -32768 : 32767); },
                        [&](std::int32_t, std::int32_t) { ++points; });
                    EXPECT_LE(points, geometry.Samples());
                    for (const std::int32_t where : sizes) {
                        (void)geometry.DragTarget(where);
                        (void)geometry.Stepped(where, size);
                        (void)geometry.PercentShowing(where);
                        (void)geometry.SlopeHeight(where);
                        (void)kx::HitsMarker(geometry.ColumnOf(where), {24, 20}, size, mm, size);
                    }
                }
            }
        }
    }
}

}  // namespace
