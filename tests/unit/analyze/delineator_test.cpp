// What is measured in beats whose waves are known.
#include "suite/kxanalyze/delineator.h"

#include <random>
#include <tuple>

#include "lib/atrial_lead.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

// One for all: what was measured before has no influence.
Workspace& Shared() {
    static Workspace workspace;
    return workspace;
}

Episode Measured(const SyntheticBeat& beat) {
    Episode episode(beat);
    EXPECT_EQ(MeasureEpisode(episode.Get(), Shared()), 1u);
    return episode;
}

TEST(Delineator, FindsTheSameBeatAtAnyRateAndResolution) {
    using L = KxLeadMeasurements;
    // Place (ms) and what it may be off, a sample more at any rate. A foot without a slope is seen late, an end early.
    const std::tuple<std::uint16_t L::*, int, int> places[] = {
        {&L::pOn, 230, 20},      {&L::pOff, 340, 20},      {&L::qrsOn, 400, 12},        {&L::qrsOff, 490, 10},
        {&L::tOff, 760, 25},     {&L::pOnMarker, 230, 25}, {&L::pOffMarker, 340, 25},   {&L::qOnMarker, 400, 12},
        {&L::rOnMarker, 424, 3}, {&L::sOnMarker, 464, 3},  {&L::qrsOffMarker, 490, 10}, {&L::tOffMarker, 760, 30}};
    // Height (uV), what it may be off, and how much more for every squared sample.
    const std::tuple<std::int16_t L::*, int, int, double> heights[] = {
        {&L::aP1, 150, 8, 0}, {&L::aQ, -150, 6, 0.5}, {&L::aR, 1000, 12, 1}, {&L::aS, -300, 8, 0.5}, {&L::aT1, 350, 8, 0}};
    for (const auto& [rate, resolutionNv] :
         {std::pair{100u, 1000u}, {250u, 4880u}, {500u, 1000u}, {1000u, 500u}, {977u, 2000u}, {32000u, 100u}}) {
        SCOPED_TRACE(rate);
        SyntheticBeat beat{.rate = rate, .resolutionNv = resolutionNv};
        beat.r.microvolts = 1000;
        Episode episode = Measured(beat);
        const KxMeasurementSet& set = episode.Set();
        const L& lead = set.leads[KX_LEAD_II];
        const double step = 1000.0 / rate;
        for (const auto& [field, ms, off] : places) {
            EXPECT_NEAR(lead.*field, ms, off + step);
        }
        for (const auto& [field, microvolts, off, perStep] : heights) {
            EXPECT_NEAR(lead.*field, microvolts, off + perStep * step * step);
        }
        EXPECT_EQ(lead.rPrimeOnMarker | lead.aR1 | lead.pPrimeOnMarker | lead.aP2 | lead.aT2, 0);
        EXPECT_NEAR(set.qrsAxis, 40, 2);
        EXPECT_NEAR(lead.intrinsicoidDeflection + lead.qrsOn, 444, 2 + step);
        EXPECT_TRUE(set.prInterval == lead.qrsOn - lead.pOn && set.qtInterval == lead.tOff - lead.qrsOn);
        EXPECT_EQ(set.qtc, std::round(set.qtInterval / std::cbrt(0.8)));
        EXPECT_EQ(set.qtcBazett, std::round(set.qtInterval / std::sqrt(0.8)));
    }
}

// The places of a beat do not move with the gain, the polarity or the baseline of its leads, nor far with their
// number, nor with the length of the block.
TEST(Delineator, AsksForNoGainAndForNoLead) {
    Episode whole = Measured({});
    const KxLeadMeasurements& expected = whole.Set().leads[0];
    // How many leads are left; gain of each lead n: 1 / (1 + gain * n), every second one upside down; baseline, length (ms), tolerance.
    const std::tuple<std::size_t, double, int, std::uint32_t, int> rows[] = {
        {12, 0.4, 0, 1200, 3}, {12, 0, 900, 1200, 0}, {6, 0, 0, 1200, 20}, {1, 0, 0, 1200, 25}, {12, 0, 0, 830, 20}};
    for (const auto& [leads, gains, offset, lengthMs, tolerance] : rows) {
        SCOPED_TRACE(testing::Message() << leads << " leads of " << lengthMs << " ms, gains " << gains << ", baseline " << offset);
        Episode episode(SyntheticBeat{.lengthMs = lengthMs});
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            const double gain = (gains > 0 && code % 2 == 1 ? -1 : 1) / (1 + gains * double(code));
            for (std::size_t i = 0; i < episode->samplesPerLead; ++i) {
                std::int16_t& sample = episode.Lead(code)[i];
                sample = static_cast<std::int16_t>(std::lround(sample * gain) + offset);
            }
            if (code >= leads) {
                episode->leadTable[code].leadCode = KX_LEAD_EMPTY;
            }
        }
        ASSERT_EQ(MeasureEpisode(episode.Get(), Shared()), 1u);
        const KxLeadMeasurements& got = episode.Set().leads[0];
        for (const auto point : {&KxLeadMeasurements::pOn, &KxLeadMeasurements::pOff, &KxLeadMeasurements::qrsOn,
                                 &KxLeadMeasurements::qrsOff, &KxLeadMeasurements::tOff}) {
            EXPECT_NEAR(got.*point, expected.*point, tolerance);
        }
    }
}

TEST(Delineator, NamesTheComponentsThatAreThere) {
    const struct {
        const char* name;
        SyntheticBeat beat;
        bool q, r, s;  // which components lead II must show
    } rows[] = {{"qRs", {}, true, true, true},
                {"Rs", {.q = {}}, false, true, true},
                {"R", {.q = {}, .s = {}}, false, true, false},
                {"QS", {.q = {400, 480, -900}, .r = {}, .s = {}}, true, false, false},
                {"rS", {.q = {}, .r = {400, 424, 200}, .s = {424, 480, -1000}}, false, true, true}};
    for (const auto& row : rows) {
        Episode episode = Measured(row.beat);
        const KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_II];
        EXPECT_TRUE((lead.qOnMarker != 0 && lead.aQ < 0) == row.q && (lead.rOnMarker != 0 && lead.aR > 0) == row.r &&
                    (lead.sOnMarker != 0 && lead.aS < 0) == row.s)
            << row.name;
        // aVR shows the complex upside down: where II begins with Q, aVR begins with R.
        EXPECT_EQ(episode.Set().leads[KX_LEAD_AVR].qOnMarker == 0, row.q) << row.name;
    }
}

// Microvolts, what is known of the recording, and whether a wave is measured.
constexpr std::tuple<double, AtrialLead, bool> kPWaves[] = {{0, AtrialLead::kUnknown, false},
                                                            {0, AtrialLead::kEveryBeat, false},
                                                            {10, AtrialLead::kUnknown, false},
                                                            {10, AtrialLead::kEveryBeat, true},
                                                            {150, AtrialLead::kNone, false}};
TEST(Delineator, SaysAbsentForAWaveThatIsNotThere) {
    for (const auto& [p, atria, present] : kPWaves) {
        Episode episode(SyntheticBeat{.p = {230, 340, p}});
        episode->value36 = static_cast<std::uint32_t>(atria);
        EXPECT_EQ(MeasureEpisode(episode.Get(), Shared()), 1u);
        const KxMeasurementSet& set = episode.Set();
        EXPECT_EQ((set.leads[0].pOn | set.leads[0].pOff | set.pDuration | set.prInterval | set.pAxis) != 0, present) << p;
        for (std::size_t code = 0; code < KX_MEASURED_LEADS; ++code) {
            const KxLeadMeasurements& lead = set.leads[code];
            EXPECT_EQ((lead.pOnMarker | lead.pPrimeOnMarker | lead.pOffMarker | lead.aP1 | lead.aP2) != 0,
                      present && code < KX_STANDARD_LEADS)
                << p;
        }
    }
    Episode noT = Measured({.rr = 0, .t = {}});
    EXPECT_EQ(noT.Set().leads[0].tOff | noT.Set().qtInterval | noT.Set().leads[KX_LEAD_II].aT1, 0);
    EXPECT_EQ(noT.Set().qtc | noT.Set().qtcBazett | noT.Set().rrInterval, 0);
}

TEST(Delineator, MeasuresStLevelsFromTheJPoint) {
    Episode episode(SyntheticBeat{.s = {}, .t = {560, 760, 0}});
    for (std::size_t i = 232; i < 600; ++i) {  // 200 uV behind the complex, falling to the line under the T wave
        episode.Lead(KX_LEAD_V2)[i] = static_cast<std::int16_t>(200 - std::min<std::size_t>(i - 232, 200));
    }
    ASSERT_EQ(MeasureEpisode(episode.Get(), Shared()), 1u);
    const KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_V2];
    for (int k = 3; k < KX_ST_LEVELS; ++k) {
        EXPECT_NEAR(lead.stLevel[k], 200 - ((lead.qrsOff + 10 * k) / 2.0 - 232), 6) << "ST level " << k;
    }
}

// A spike of 2 ms before the complex is neither its onset's error nor its R wave.
TEST(Delineator, MeasuresTheBeatBehindAPacingSpike) {
    Episode episode(SyntheticBeat{.p = {}, .q = {}, .r = {400, 520, 1200}, .s = {}});
    for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
        episode.Lead(code)[195] = static_cast<std::int16_t>(3000 * LeadWeight(code));
    }
    ASSERT_EQ(MeasureEpisode(episode.Get(), Shared()), 1u);
    EXPECT_NEAR(episode.Set().leads[0].qrsOn, 396, 6);
    EXPECT_NEAR(episode.Set().leads[KX_LEAD_II].aR, 1200, 40);
    EXPECT_EQ(episode.Set().leads[0].pOn, 0);
}

TEST(Delineator, LeavesOutLeadsThatCannotBeMeasuredAndSaysWhy) {
    Episode whole = Measured({});
    Episode broken{SyntheticBeat{}};
    for (std::size_t i = 0; i < broken->samplesPerLead; ++i) {
        broken.Lead(KX_LEAD_V1)[i] = -32768;
        broken.Lead(KX_LEAD_V2)[i] = 7;
        broken.Lead(KX_LEAD_V3)[i] = std::min<std::int16_t>(broken.Lead(KX_LEAD_V3)[i], 300);
        if (i % 7 == 0 || i < 3) {
            broken.Lead(KX_LEAD_II)[i] = -32768;  // bridged
        }
    }
    broken->leadTable[KX_LEAD_V6].leadCode = KX_LEAD_EMPTY;
    ASSERT_EQ(MeasureEpisode(broken.Get(), Shared()), 1u);
    const KxLeadMeasurements *is = broken.Set().leads, *was = whole.Set().leads;
    EXPECT_NEAR(is[0].qrsOn, was[0].qrsOn, 4);
    EXPECT_NEAR(is[0].tOff, was[0].tOff, 8);
    EXPECT_NEAR(is[KX_LEAD_II].aR, was[KX_LEAD_II].aR, 25);
    EXPECT_STREQ(Shared().LeadRefusal(KX_LEAD_V1), "more than half of its samples are missing");
    EXPECT_STREQ(Shared().LeadRefusal(KX_LEAD_V2), "it is flat");
    EXPECT_STREQ(Shared().LeadRefusal(KX_LEAD_V3), "it exceeds the range of the recorder");
    EXPECT_EQ(Shared().LeadRefusal(KX_LEAD_V6), nullptr);
    for (const std::size_t absent : {KX_LEAD_V1, KX_LEAD_V2, KX_LEAD_V3, KX_LEAD_V6}) {
        EXPECT_EQ(is[absent].rOnMarker | is[absent].aR | is[absent].tOffMarker | is[absent].stLevel[4], 0) << absent;
        EXPECT_EQ(is[absent].qrsOn, is[0].qrsOn);
    }
}

// A plateau is the converter's limit when it is long, level and steep on both sides; less than 10 uV are no signal.
TEST(Delineator, TellsAPlateauAndAFlatLeadAtTheirLimits) {
    // Samples, their first one, those 4 ms before and behind them, refused.
    const std::tuple<std::size_t, int, int, int, bool> rows[] = {
        {8, 980, 900, 900, true},  {7, 980, 900, 900, false}, {8, 979, 900, 900, false}, {8, 980, 901, 900, false},
        {8, 980, 900, 901, false}, {1, 9, 0, 0, true},        {1, 10, 0, 0, false}};
    for (const auto& [count, first, before, behind, refused] : rows) {
        for (const int sign : {1, -1}) {
            Episode episode{SyntheticBeat{}};
            std::int16_t* lead = episode.Lead(KX_LEAD_V3);
            std::fill_n(lead, episode->samplesPerLead, std::int16_t{0});
            std::fill_n(lead + 200, count, static_cast<std::int16_t>(sign * (count > 1 ? 1000 : first)));
            lead[200] = static_cast<std::int16_t>(sign * first);
            lead[198] = static_cast<std::int16_t>(sign * before);
            lead[201 + count] = static_cast<std::int16_t>(sign * behind);
            MeasureEpisode(episode.Get(), Shared());
            EXPECT_EQ(Shared().LeadRefusal(KX_LEAD_V3) != nullptr, refused) << count << ' ' << first << ' ' << before * sign;
        }
    }
}

// Whatever the samples are, the markers stand in the order of the waves and inside the beat.
TEST(Delineator, KeepsTheOrderOfTheWavesInNoise) {
    std::mt19937 random(20240611);
    int measured = 0;
    for (int round = 0; round < 20; ++round) {
        SyntheticBeat beat{.rr = static_cast<std::uint16_t>(random() % 1500)};
        beat.p.microvolts = round % 3 == 0 ? 0 : 120;
        Episode episode(beat);
        std::normal_distribution<double> step(0, round % 20 * 3.0);
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            double wander = 0;
            for (std::size_t i = 0; i < episode->samplesPerLead; ++i) {
                wander = 0.95 * wander + step(random);
                episode.Lead(code)[i] = static_cast<std::int16_t>(episode.Lead(code)[i] + std::lround(wander));
            }
        }
        measured += MeasureEpisode(episode.Get(), Shared()) != 0;
        const auto expectOrder = [&](std::vector<std::uint16_t> places, std::size_t code) {
            std::erase(places, 0);
            EXPECT_TRUE(std::ranges::is_sorted(places) && (places.empty() || places.back() <= 1200)) << round << " lead " << code;
        };
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            const KxLeadMeasurements& lead = episode.Set().leads[code];
            expectOrder({lead.pOn, lead.pOff, lead.qrsOn, lead.qrsOff, lead.tOff}, code);
            expectOrder({lead.pOnMarker, lead.pPrimeOnMarker, lead.pOffMarker, lead.qOnMarker, lead.rOnMarker, lead.sOnMarker,
                         lead.rPrimeOnMarker, lead.sPrimeOnMarker, lead.qrsOffMarker, lead.tOnMarker, lead.tPrimeOnMarker, lead.tOffMarker},
                        code);
            EXPECT_TRUE(lead.aQ <= 0 && lead.aS <= 0 && lead.aS1 <= 0 && lead.aR >= 0 && lead.aR1 >= 0) << round;
        }
    }
    EXPECT_GT(measured, 16);
}

}  // namespace
}  // namespace kx::analysis
