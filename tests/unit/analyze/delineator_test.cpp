// What is measured in beats whose waves are known.
#include "suite/kxanalyze/delineator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

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

struct Expected {
    const char* what;
    double value, got, tolerance;
};

TEST(Delineator, FindsTheSameBeatAtAnyRateAndResolution) {
    constexpr std::pair<std::uint32_t, std::uint32_t> kRows[] = {{100, 1000}, {250, 4880}, {500, 1000},
                                                                 {1000, 500}, {977, 2000}, {32000, 100}};
    for (const auto& [rate, resolutionNv] : kRows) {
        SyntheticBeat beat{.rate = rate, .resolutionNv = resolutionNv};
        beat.r.microvolts = 1000;
        Episode episode = Measured(beat);
        const KxMeasurementSet& set = episode.Set();
        const KxLeadMeasurements& lead = set.leads[KX_LEAD_II];
        const double step = 1000.0 / rate;
        // A foot without a slope is seen late, an end early.
        const Expected table[] = {
            {"P onset", 230, double(lead.pOn), 20 + step},
            {"P offset", 340, double(lead.pOff), 20 + step},
            {"QRS onset", 400, double(lead.qrsOn), 12 + step},
            {"QRS offset", 490, double(lead.qrsOff), 10 + step},
            {"T offset", 760, double(lead.tOff), 25 + step},
            {"P onset of II", 230, double(lead.pOnMarker), 25 + step},
            {"P offset of II", 340, double(lead.pOffMarker), 25 + step},
            {"Q onset", 400, double(lead.qOnMarker), 12 + step},
            {"R onset", 424, double(lead.rOnMarker), 3 + step},
            {"S onset", 464, double(lead.sOnMarker), 3 + step},
            {"QRS offset of II", 490, double(lead.qrsOffMarker), 10 + step},
            {"T offset of II", 760, double(lead.tOffMarker), 30 + step},
            {"P1 amplitude", beat.p.microvolts, double(lead.aP1), 8},
            {"Q amplitude", beat.q.microvolts, double(lead.aQ), 6 + step * step / 2},
            {"R amplitude", beat.r.microvolts, double(lead.aR), 12 + step * step},
            {"S amplitude", beat.s.microvolts, double(lead.aS), 8 + step * step / 2},
            {"T1 amplitude", beat.t.microvolts, double(lead.aT1), 8},
            {"no second components", 0, double(lead.rPrimeOnMarker + lead.aR1 + lead.pPrimeOnMarker + lead.aP2 + lead.aT2), 0},
            {"QRS axis", 40, double(set.qrsAxis), 2},
            {"intrinsicoid deflection", 444, double(lead.intrinsicoidDeflection + lead.qrsOn), 2 + step},
            {"PR", double(lead.qrsOn - lead.pOn), double(set.prInterval), 0},
            {"QT", double(lead.tOff - lead.qrsOn), double(set.qtInterval), 0},
            {"QTc", std::round(set.qtInterval / std::cbrt(0.8)), double(set.qtc), 0},
            {"QTc by Bazett", std::round(set.qtInterval / std::sqrt(0.8)), double(set.qtcBazett), 0},
        };
        for (const Expected& expected : table) {
            EXPECT_NEAR(expected.got, expected.value, expected.tolerance) << rate << " a second: " << expected.what;
        }
    }
}

// The places of a beat do not move with the gain, the polarity or the baseline of its leads, nor far with their
// number, nor with the length of the block.
TEST(Delineator, AsksForNoGainAndForNoLead) {
    Episode whole = Measured({});
    const KxLeadMeasurements& expected = whole.Set().leads[0];
    struct Row {
        const char* name;
        std::size_t leads;  // how many are left
        double gain;        // of each lead n: 1 / (1 + gain * n), every second one upside down
        int offset;
        std::uint32_t lengthMs;
        int tolerance;
    };
    const Row kRows[] = {{"gains", 12, 0.4, 0, 1200, 3}, {"baselines", 12, 0, 900, 1200, 0}, {"8 leads", 8, 0, 0, 1200, 20},
                         {"6 leads", 6, 0, 0, 1200, 20}, {"3 leads", 3, 0, 0, 1200, 20},     {"1 lead", 1, 0, 0, 1200, 25},
                         {"830 ms", 12, 0, 0, 830, 20}};
    for (const Row& row : kRows) {
        Episode episode(SyntheticBeat{.lengthMs = row.lengthMs});
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            const double gain = (row.gain > 0 && code % 2 == 1 ? -1 : 1) / (1 + row.gain * double(code));
            for (std::size_t i = 0; i < episode->samplesPerLead; ++i) {
                std::int16_t& sample = episode.Lead(code)[i];
                sample = static_cast<std::int16_t>(std::lround(sample * gain) + row.offset);
            }
            if (code >= row.leads) {
                episode->leadTable[code].leadCode = KX_LEAD_EMPTY;
            }
        }
        ASSERT_EQ(MeasureEpisode(episode.Get(), Shared()), 1u) << row.name;
        const KxLeadMeasurements& got = episode.Set().leads[0];
        for (const auto point : {&KxLeadMeasurements::pOn, &KxLeadMeasurements::pOff, &KxLeadMeasurements::qrsOn,
                                 &KxLeadMeasurements::qrsOff, &KxLeadMeasurements::tOff}) {
            EXPECT_NEAR(got.*point, expected.*point, row.tolerance) << row.name;
        }
    }
}

struct Complex {
    const char* name;
    SyntheticBeat beat;
    bool q, r, s;  // which components lead II must show
};

TEST(Delineator, NamesTheComponentsThatAreThere) {
    const Complex kComplexes[] = {
        {"qRs", {}, true, true, true},
        {"Rs", {.q = {}}, false, true, true},
        {"R", {.q = {}, .s = {}}, false, true, false},
        {"QS", {.q = {400, 480, -900}, .r = {}, .s = {}}, true, false, false},
        {"rS", {.q = {}, .r = {400, 424, 200}, .s = {424, 480, -1000}}, false, true, true},
    };
    for (const Complex& complex : kComplexes) {
        Episode episode = Measured(complex.beat);
        const KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_II];
        EXPECT_EQ(lead.qOnMarker != 0 && lead.aQ < 0, complex.q) << complex.name;
        EXPECT_EQ(lead.rOnMarker != 0 && lead.aR > 0, complex.r) << complex.name;
        EXPECT_EQ(lead.sOnMarker != 0 && lead.aS < 0, complex.s) << complex.name;
        // aVR shows the complex upside down: where II begins with Q, aVR begins with R.
        EXPECT_EQ(episode.Set().leads[KX_LEAD_AVR].qOnMarker == 0, complex.q) << complex.name;
    }
}

TEST(Delineator, SaysAbsentForAWaveThatIsNotThere) {
    Episode noP = Measured({.p = {}});
    const KxMeasurementSet& set = noP.Set();
    EXPECT_EQ(set.leads[0].pOn | set.leads[0].pOff | set.pDuration | set.prInterval | set.pAxis, 0);
    for (const KxLeadMeasurements& lead : set.leads) {
        EXPECT_EQ(lead.pOnMarker | lead.pPrimeOnMarker | lead.pOffMarker | lead.aP1 | lead.aP2, 0);
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
    EXPECT_NEAR(broken.Set().leads[0].qrsOn, whole.Set().leads[0].qrsOn, 4);
    EXPECT_NEAR(broken.Set().leads[0].tOff, whole.Set().leads[0].tOff, 8);
    EXPECT_NEAR(broken.Set().leads[KX_LEAD_II].aR, whole.Set().leads[KX_LEAD_II].aR, 25);
    EXPECT_STREQ(Shared().LeadRefusal(KX_LEAD_V1), "more than half of its samples are missing");
    EXPECT_STREQ(Shared().LeadRefusal(KX_LEAD_V2), "it is flat");
    EXPECT_STREQ(Shared().LeadRefusal(KX_LEAD_V3), "it exceeds the range of the recorder");
    EXPECT_EQ(Shared().LeadRefusal(KX_LEAD_V6), nullptr);
    for (const std::size_t absent : {KX_LEAD_V1, KX_LEAD_V2, KX_LEAD_V3, KX_LEAD_V6}) {
        const KxLeadMeasurements& lead = broken.Set().leads[absent];
        EXPECT_EQ(lead.rOnMarker | lead.aR | lead.tOffMarker | lead.stLevel[4], 0) << absent;
        EXPECT_EQ(lead.qrsOn, broken.Set().leads[0].qrsOn);
    }
}

// Whatever the samples are, the markers stand in the order of the waves and inside the beat.
TEST(Delineator, KeepsTheOrderOfTheWavesInNoise) {
    std::mt19937 random(20240611);
    int measured = 0;
    for (int round = 0; round < 60; ++round) {
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
        const auto ascending = [&](std::initializer_list<std::uint16_t> places, std::size_t code) {
            int before = 0;
            for (const std::uint16_t place : places) {
                EXPECT_TRUE(place == 0 || (place >= before && place <= 1200)) << "round " << round << " lead " << code;
                before = place == 0 ? before : place;
            }
        };
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            const KxLeadMeasurements& lead = episode.Set().leads[code];
            ascending({lead.pOn, lead.pOff, lead.qrsOn, lead.qrsOff, lead.tOff}, code);
            ascending({lead.pOnMarker, lead.pPrimeOnMarker, lead.pOffMarker, lead.qOnMarker, lead.rOnMarker, lead.sOnMarker,
                       lead.rPrimeOnMarker, lead.sPrimeOnMarker, lead.qrsOffMarker, lead.tOnMarker, lead.tPrimeOnMarker, lead.tOffMarker},
                      code);
            EXPECT_TRUE(lead.aQ <= 0 && lead.aS <= 0 && lead.aS1 <= 0 && lead.aR >= 0 && lead.aR1 >= 0) << round;
        }
    }
    EXPECT_GT(measured, 50);
}

}  // namespace
}  // namespace kx::analysis
