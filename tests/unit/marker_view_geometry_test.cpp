#include "dialogs/marker_view/trace/view_geometry.h"

#include <climits>

namespace kx::test {
namespace {

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
        std::int32_t horizontal, heightOf1mV, heightOf100;  // 1000 x pixels per sample; of a slope of 100 uV/ms
    } rows[] = {{"50 mm/s at 500 Hz", kDevice, kBeat, kSettings, 400, 60, 60},
                {"a rate that does not divide", kDevice, {600, 300, 1000}, kSettings, 664, 60, 60},
                {"pixels and mm that do not divide", {1000, 261, 700, 197}, kBeat, kSettings, 383, 71, 71},
                {"2 uV a unit", kDevice, {600, 500, 2000}, kSettings, 400, 60, 60},
                {"32 kHz at 25 mm/s is below a thousandth", kDevice, {600, 32000, 1000}, {10, 25, 0, 0}, 0, 30, 30}};
    for (const auto& row : rows) {
        const ViewGeometry geometry(row.device, row.beat, row.settings, 400, 300);
        EXPECT_EQ(geometry.HorizontalScale(), row.horizontal) << row.name;
        EXPECT_EQ(geometry.SampleHeight(static_cast<std::int32_t>(1000000 / row.beat.resolutionNv)), row.heightOf1mV) << row.name;
        EXPECT_EQ(geometry.SlopeHeight(100000), row.heightOf100) << row.name;
    }
}

TEST(ViewGeometry, ANarrowBeatIsCentredAndAWideOneScrolls) {
    const ViewGeometry narrow(kDevice, kBeat, {20, 50, 70, 1000}, 401, 900);
    EXPECT_EQ(narrow.XOrigin(), (401 - 240) / 2);
    EXPECT_TRUE(narrow.HorizontalBar() == ScrollBarState() && narrow.VerticalBar() == ScrollBarState());
    EXPECT_EQ(narrow.Baseline(), 450);
    EXPECT_EQ(narrow.ColumnOf(100), 120);
    EXPECT_EQ(narrow.SampleAt(120), 100);
    EXPECT_EQ(narrow.SampleAt(79), -3);
    const struct {
        std::int32_t percent, microvolts, origin, baseline;
        ScrollBarState horizontal, vertical;
    } rows[] = {// 2400 pixels wide; 20 mm/mV: 300 pixels high, in a view of 100
                {0, 0, 0, 50, {2000, 333, 0}, {200, 67, 67}},
                {50, 500, -1000, 20, {2000, 333, 834}, {200, 67, 80}},
                {100, -2500, -2000, 200, {2000, 333, 1668}, {200, 67, 0}},
                {100, 2500, -2000, -100, {2000, 333, 1668}, {200, 67, 134}}};
    for (const auto& row : rows) {
        const ViewGeometry geometry(kDevice, kBeat, {20, 500, row.percent, row.microvolts}, 400, 100);
        EXPECT_EQ(geometry.XOrigin(), row.origin) << row.percent;
        EXPECT_EQ(geometry.HorizontalBar(), row.horizontal) << row.percent;
        EXPECT_EQ(geometry.Baseline(), row.baseline) << row.microvolts;
        EXPECT_EQ(geometry.VerticalBar(), row.vertical) << row.microvolts;
    }
    for (const std::int32_t sample : {0, 50, 300, 599}) {  // a marker can be brought into view
        ViewSettings settings = {20, 1000, 0, 0};
        settings.horizontalPosition = ViewGeometry(kDevice, kBeat, settings, 400, 300).PercentShowing(sample);
        const std::int32_t column = ViewGeometry(kDevice, kBeat, settings, 400, 300).ColumnOf(sample);
        EXPECT_TRUE(column >= 0 && column < 400) << sample;
    }
}

TEST(ViewGeometry, ATraceEndsWithTheFirstPointBeyondTheEdge) {
    const ViewGeometry geometry(kDevice, kBeat, {20, 500, 0, 0}, 10, 100);
    std::string points;
    const auto trace = [&](bool inverted) {
        points.clear();
        geometry.Trace(
            inverted, [](std::int32_t i) { return i; }, [&](int x, int y) { points += std::to_string(x) + "," + std::to_string(y) + " "; });
        return points;
    };
    EXPECT_EQ(trace(false), "0,50 4,49 8,48 12,47 ");
    EXPECT_EQ(trace(true), "0,50 4,51 8,52 12,53 ");
}

TEST(ViewGeometry, ADragGoesToTheBeatsEndsButNotBeyondTheView) {
    const struct {
        const char* name;
        BeatMeasure beat;
        ViewSettings settings;
        std::int32_t column;
        std::optional<std::int32_t> target;
    } rows[] = {{"inside", kBeat, kSettings, 180, 250},  // centred: columns 80 to 319
                {"left of the view", kBeat, kSettings, -50, 0},
                {"right of the view", kBeat, kSettings, 9000, 599},
                {"last column, the beat goes on", kBeat, {20, 500, 0, 0}, 399, std::nullopt},  // samples 0 to 99 are in the view
                {"first column, the beat goes on", kBeat, {20, 500, 50, 0}, 0, std::nullopt},
                {"second column", kBeat, {20, 500, 50, 0}, 1, 250},
                {"no scale", {600, 32000, 1000}, {20, 25, 0, 0}, 200, std::nullopt},
                {"no beat", {}, kSettings, 200, std::nullopt}};
    for (const auto& row : rows) {
        EXPECT_EQ(ViewGeometry(kDevice, row.beat, row.settings, 400, 300).DragTarget(row.column), row.target) << row.name;
    }
}

TEST(ViewGeometry, AStepIsOneSampleOrWhatAMillisecondTells) {
    const struct {
        std::uint32_t rate;
        std::int32_t position, step, target;
    } rows[] = {{500, 100, 1, 101},   {500, 100, -1, 99},    {500, 3, -50, 1},    {500, 1, -1, 1},
                {500, 599, 1, 599},   {500, 900, -1, 599},   {2000, 100, 1, 101}, {2000, 101, -1, 100},
                {32000, 320, 1, 336}, {32000, 320, -1, 303}, {0, 7, 1, 7}};
    for (const auto& row : rows) {
        const ViewGeometry geometry(kDevice, {600, row.rate, 1000}, kSettings, 400, 300);
        EXPECT_EQ(geometry.Stepped(row.position, row.step), row.target) << row.rate << " Hz, " << row.position << " by " << row.step;
    }
    // What the owner hears of a step and sends back must not undo it.
    for (const int rate : {100, 250, 500, 999, 1000, 1001, 1024, 2000, 5000, 32000}) {
        const ViewGeometry geometry(kDevice, {2000, static_cast<std::uint32_t>(rate), 1000}, kSettings, 400, 300);
        const auto heard = [rate](std::int32_t sample) { return SamplesFromMs(MsFromSamples(sample, rate), rate); };
        for (std::int32_t position = 200; position < 1800; ++position) {
            ASSERT_GT(heard(geometry.Stepped(position, 1)), heard(position)) << rate << " Hz, " << position;
            ASSERT_LT(heard(geometry.Stepped(position, -1)), heard(position)) << rate << " Hz, " << position;
        }
    }
}

TEST(HitsMarker, IsTheSameOnBothSides) {
    for (int x = 80; x <= 120; ++x) {
        EXPECT_EQ(HitsMarker(100, {24, 20}, 300, x, 279), std::abs(x - 100) <= 2) << x;
        EXPECT_EQ(HitsMarker(100, {24, 20}, 300, x, 280), std::abs(x - 100) <= 12) << x;
    }
    EXPECT_FALSE(HitsMarker(INT32_MAX, {24, 20}, 300, INT32_MIN, 299));
}

TEST(Scrolling, FollowsEveryRequestWithinItsRange) {
    const struct {
        std::int32_t value;
        ScrollRequest request;
        std::int32_t thumb, percent, microvolts;  // across, and down where 0 uV is the value
    } rows[] = {{50, ScrollRequest::kLineBack, 0, 49, -50},       {50, ScrollRequest::kLineForward, 0, 51, 50},
                {50, ScrollRequest::kPageBack, 0, 40, -500},      {50, ScrollRequest::kPageForward, 0, 60, 500},
                {50, ScrollRequest::kThumbTrack, 500, 25, -1250}, {50, ScrollRequest::kThumbPosition, 2000, 100, 2500},
                {50, ScrollRequest::kThumbTrack, -7, 0, -2500},   {50, ScrollRequest::kFirst, 0, 0, -2500},
                {50, ScrollRequest::kLast, 0, 100, 2500},         {50, ScrollRequest::kEnd, 0, 50, 0},
                {5, ScrollRequest::kPageBack, 0, 0, -500},        {95, ScrollRequest::kPageForward, 0, 100, 500}};
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.request));
        EXPECT_EQ(Scrolled(row.value, row.request, row.thumb, 1999, kHorizontalSteps), row.percent);
        EXPECT_EQ(Scrolled(0, row.request, row.thumb, 1999, kVerticalSteps), row.microvolts);
    }
    EXPECT_EQ(Scrolled(7, ScrollRequest::kThumbTrack, 3, INT32_MAX, kHorizontalSteps), 0);
}

TEST(Readout, ShowsASignWhereverThereIsOne) {
    const struct {
        std::int32_t ms, microvolts, slope;
        const char* text;
    } rows[] = {{400, -1250, 12345, "400 ms\r\n-1250 uV\r\n12.34 uV/ms"},
                {2, 5, -12345, "2 ms\r\n5 uV\r\n-12.34 uV/ms"},
                {2, 5, -999, "2 ms\r\n5 uV\r\n-0.99 uV/ms"},
                {0, 0, -9, "0 ms\r\n0 uV\r\n0.00 uV/ms"},
                {INT32_MAX, INT32_MIN, INT32_MIN, "2147483647 ms\r\n-2147483648 uV\r\n-2147483.64 uV/ms"}};
    for (const auto& row : rows) {
        char text[kReadoutSize];
        FormatReadout(text, row.ms, row.microvolts, row.slope);
        EXPECT_STREQ(text, row.text);
    }
}

// Whatever the device, the beat and the settings say: nothing is undefined, and every trace ends.
TEST(ViewGeometry, AbsurdInputIsHarmless) {
    constexpr std::int32_t kValues[] = {INT32_MIN, -1, 0, 1, 256, 4000, INT32_MAX};
    constexpr std::uint32_t kCounts[] = {0, 1, 5, 1000, UINT32_MAX};
    for (unsigned i = 0; i < 7 * 7 * 7 * 5 * 5; ++i) {
        const std::int32_t mm = kValues[i % 7], value = kValues[i / 7 % 7], size = kValues[i / 49 % 7];
        const std::uint32_t rate = kCounts[i / 343 % 5], samples = kCounts[i / 1715];
        const ViewGeometry geometry({size, mm, size, mm}, {samples % 5000, rate, rate}, {value, value, 100, -2500}, size, size);
        std::int32_t points = 0;
        geometry.Trace(
            value > 0, [&](std::int32_t k) { return geometry.SampleHeight(k % 2 == 0 ? -32768 : 32767); }, [&](int, int) { ++points; });
        EXPECT_LE(points, geometry.Samples());
        for (const std::int32_t where : kValues) {
            (void)geometry.DragTarget(where);
            (void)geometry.Stepped(where, size);
            (void)geometry.PercentShowing(where);
            (void)geometry.SlopeHeight(where);
            (void)HitsMarker(geometry.ColumnOf(where), {24, 20}, size, mm, size);
        }
    }
}

}  // namespace
}  // namespace kx::test
