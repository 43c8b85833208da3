#include "dialogs/marker_view/trace/view_geometry.h"

namespace kx::test {
namespace {

// 4 pixels per mm across, 3 down.
constexpr DeviceMeasure kDevice = {1024, 256, 768, 256};
constexpr BeatMeasure kBeat = {600, 500, 1000};
constexpr ViewSettings kSettings = {20, 50, 0, 0};

TEST(ViewGeometry, ScalesTruncateAtEachStep) {
    const auto expectScales = [](const DeviceMeasure& device, const BeatMeasure& beat, const ViewSettings& settings,
                                 std::int32_t horizontal, std::int32_t heightOf1mV) {
        const ViewGeometry geometry(device, beat, settings, 400, 300);
        EXPECT_EQ(geometry.HorizontalScale(), horizontal) << "1000 x pixels per sample";
        EXPECT_EQ(geometry.SampleHeight(static_cast<std::int32_t>(1000000 / beat.resolutionNv)), heightOf1mV);
        EXPECT_EQ(geometry.SlopeHeight(100000), heightOf1mV) << "100 uV/ms stand as high";
    };
    expectScales(kDevice, {600, 500, 2000}, kSettings, 400, 60);
    expectScales(kDevice, {600, 300, 1000}, kSettings, 664, 60);       // a rate that does not divide
    expectScales({1000, 261, 700, 197}, kBeat, kSettings, 383, 71);    // pixels and mm that do not divide
    expectScales(kDevice, {600, 32000, 1000}, {10, 25, 0, 0}, 0, 30);  // below a thousandth
}

TEST(ViewGeometry, ANarrowBeatIsCentredAndAWideOneScrolls) {
    const ViewGeometry narrow(kDevice, kBeat, {20, 50, 70, 1000}, 401, 900);
    EXPECT_TRUE(narrow.HorizontalBar() == ScrollBarState() && narrow.VerticalBar() == ScrollBarState());
    EXPECT_TRUE(narrow.XOrigin() == (401 - 240) / 2 && narrow.Baseline() == 450);
    EXPECT_TRUE(narrow.ColumnOf(100) == 120 && narrow.SampleAt(120) == 100 && narrow.SampleAt(79) == -3);
    const struct {
        std::int32_t percent, microvolts, origin, baseline;
        ScrollBarState horizontal, vertical;
    } rows[] = {// 2400 pixels wide; 20 mm/mV: 300 pixels high, in a view of 100
                {0, 0, 0, 50, {2000, 333, 0}, {200, 67, 67}},
                {50, 500, -1000, 20, {2000, 333, 834}, {200, 67, 80}},
                {100, -2500, -2000, 200, {2000, 333, 1668}, {200, 67, 0}}};
    for (const auto& row : rows) {
        const ViewGeometry geometry(kDevice, kBeat, {20, 500, row.percent, row.microvolts}, 400, 100);
        EXPECT_TRUE(geometry.XOrigin() == row.origin && geometry.HorizontalBar() == row.horizontal) << row.percent;
        EXPECT_TRUE(geometry.Baseline() == row.baseline && geometry.VerticalBar() == row.vertical) << row.microvolts;
    }
    const std::int32_t percent = ViewGeometry(kDevice, kBeat, {20, 1000, 0, 0}, 400, 300).PercentShowing(300);
    EXPECT_EQ(ViewGeometry(kDevice, kBeat, {20, 1000, percent, 0}, 400, 300).ColumnOf(300), 200) << "a marker is brought into view";
}

TEST(ViewGeometry, ATraceEndsWithTheFirstPointBeyondTheEdge) {
    const ViewGeometry geometry(kDevice, kBeat, {20, 500, 0, 0}, 10, 100);
    std::vector<std::pair<int, int>> points;
    for (const bool inverted : {false, true}) {
        geometry.Trace(
            inverted, [](std::int32_t i) { return i; }, [&](int x, int y) { points.emplace_back(x, y); });
    }
    EXPECT_EQ(points, (std::vector<std::pair<int, int>>{{0, 50}, {4, 49}, {8, 48}, {12, 47}, {0, 50}, {4, 51}, {8, 52}, {12, 53}}));
}

TEST(ViewGeometry, ADragGoesToTheBeatsEndsButNotBeyondTheView) {
    const auto target = [](const BeatMeasure& beat, const ViewSettings& settings, std::int32_t column) {
        return ViewGeometry(kDevice, beat, settings, 400, 300).DragTarget(column);
    };
    EXPECT_TRUE(target(kBeat, kSettings, 180) == 250 && target(kBeat, kSettings, 9000) == 599);  // centred: columns 80 to 319
    EXPECT_EQ(target(kBeat, {20, 500, 0, 0}, 399), std::nullopt) << "last column, the beat goes on";
    EXPECT_EQ(target(kBeat, {20, 500, 50, 0}, 0), std::nullopt) << "first column, the beat goes on";
    EXPECT_EQ(target(kBeat, {20, 500, 50, 0}, 1), 250);
    EXPECT_EQ(target({600, 32000, 1000}, {20, 25, 0, 0}, 200), std::nullopt) << "no scale";
}

TEST(ViewGeometry, AStepIsOneSampleOrWhatAMillisecondTells) {
    const auto stepped = [](std::uint32_t rate, std::int32_t position, std::int32_t step) {
        return ViewGeometry(kDevice, {600, rate, 1000}, kSettings, 400, 300).Stepped(position, step);
    };
    EXPECT_TRUE(stepped(500, 100, 1) == 101 && stepped(500, 3, -50) == 1 && stepped(500, 599, 1) == 599 && stepped(500, 900, -1) == 599);
    EXPECT_TRUE(stepped(2000, 101, -1) == 100 && stepped(32000, 320, 1) == 336 && stepped(0, 7, 1) == 7);
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

TEST(Scrolling, FollowsEveryRequestWithinItsRange) {
    using Request = ScrollRequest;
    const auto across = [](std::int32_t value, Request request, std::int32_t thumb = 0) {
        return Scrolled(value, request, thumb, 1999, kHorizontalSteps);
    };
    EXPECT_EQ(across(50, Request::kEnd), 50);
    EXPECT_TRUE(across(50, Request::kLineBack) == 49 && across(50, Request::kLineForward) == 51 && across(85, Request::kPageForward) == 95);
    EXPECT_TRUE(across(5, Request::kPageBack) == 0 && across(50, Request::kLast) == 100 && across(50, Request::kThumbTrack, 500) == 25);
    EXPECT_EQ(Scrolled(0, Request::kThumbTrack, 500, 1999, kVerticalSteps), -1250);
    EXPECT_EQ(Scrolled(7, Request::kThumbTrack, 3, INT32_MAX, kHorizontalSteps), 0);
}

TEST(Readout, ShowsASignWhereverThereIsOne) {
    const auto readout = [](std::int32_t ms, std::int32_t microvolts, std::int32_t slope) {
        char text[kReadoutSize];
        FormatReadout(text, ms, microvolts, slope);
        return std::string(text);
    };
    EXPECT_EQ(readout(400, -1250, 12345), "400 ms\r\n-1250 uV\r\n12.34 uV/ms");
    EXPECT_EQ(readout(2, 5, -999), "2 ms\r\n5 uV\r\n-0.99 uV/ms");
    EXPECT_EQ(readout(0, 0, -9), "0 ms\r\n0 uV\r\n0.00 uV/ms");
    EXPECT_EQ(readout(INT32_MAX, INT32_MIN, INT32_MIN), "2147483647 ms\r\n-2147483648 uV\r\n-2147483.64 uV/ms");
}

}  // namespace
}  // namespace kx::test
