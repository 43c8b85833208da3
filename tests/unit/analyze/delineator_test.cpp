// What is measured in beats whose waves are known.
#include "suite/kxanalyze/delineator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

struct Expected {
    const char* what;
    double value;
    double got;
    double tolerance;
};

template <std::size_t N>
void ExpectAll(const char* row, const Expected (&table)[N]) {
    for (const Expected& expected : table) {
        EXPECT_NEAR(expected.got, expected.value, expected.tolerance) << row << ": " << expected.what;
    }
}

struct Recording {
    const char* name;
    std::uint32_t rate;
    std::uint32_t resolutionNv;
};

TEST(Delineator, FindsTheSameBeatAtAnyRateAndResolution) {
    constexpr Recording kRecordings[] = {{"100 Hz", 100, 1000},           {"250 Hz, 4.88 uV", 250, 4880},
                                         {"500 Hz", 500, 1000},           {"1000 Hz, 0.5 uV", 1000, 500},
                                         {"977 Hz", 977, 2000},           {"4000 Hz", 4000, 1000},
                                         {"32000 Hz, 0.1 uV", 32000, 100}};
    for (const Recording& recording : kRecordings) {
        SyntheticBeat beat;
        beat.rate = recording.rate;
        beat.resolutionNv = recording.resolutionNv;
        if (recording.resolutionNv == 100) {
            beat.r.microvolts = 1000;
        }
        Episode episode(beat);
        ASSERT_EQ(MeasureEpisode(episode.Get()), 1u) << recording.name;
        const KxMeasurementSet& set = episode.Set();
        const KxLeadMeasurements& lead = set.leads[KX_LEAD_II];
        // A sample lasts 10 ms at 100 Hz.
        const double step = 1000.0 / recording.rate;
        // A foot without a slope is seen late, an end early.
        const Expected table[] = {
            {"measured", 1, static_cast<double>(set.measured), 0},
            {"global P onset", 230, static_cast<double>(lead.pOn), 14 + step},
            {"global P offset", 340, static_cast<double>(lead.pOff), 14 + step},
            {"global QRS onset", 400, static_cast<double>(lead.qrsOn), 12 + step},
            {"global QRS offset", 490, static_cast<double>(lead.qrsOff), 8 + step},
            {"global T offset", 760, static_cast<double>(lead.tOff), 20 + step},
            {"P onset", 230, static_cast<double>(lead.pOnMarker), 20 + step},
            {"P offset", 340, static_cast<double>(lead.pOffMarker), 20 + step},
            {"Q onset", 400, static_cast<double>(lead.qOnMarker), 10 + step},
            {"R onset", 424, static_cast<double>(lead.rOnMarker), 3 + step},
            {"S onset", 464, static_cast<double>(lead.sOnMarker), 3 + step},
            {"QRS offset", 490, static_cast<double>(lead.qrsOffMarker), 10 + step},
            {"T offset", 760, static_cast<double>(lead.tOffMarker), 25 + step},
            {"P1 amplitude", beat.p.microvolts, static_cast<double>(lead.aP1), 6},
            {"Q amplitude", beat.q.microvolts, static_cast<double>(lead.aQ), 6 + step * step / 2},
            {"R amplitude", beat.r.microvolts, static_cast<double>(lead.aR), 12 + step * step},
            {"S amplitude", beat.s.microvolts, static_cast<double>(lead.aS), 8 + step * step / 2},
            {"no R'", 0, static_cast<double>(lead.rPrimeOnMarker + lead.aR1), 0},
            {"no P'", 0, static_cast<double>(lead.pPrimeOnMarker + lead.aP2), 0},
            {"T1 amplitude", beat.t.microvolts, static_cast<double>(lead.aT1), 6},
            {"no T'", 0, static_cast<double>(lead.tPrimeOnMarker + lead.aT2), 0},
            {"QRS axis", 40, static_cast<double>(set.qrsAxis), 2},
        };
        ExpectAll(recording.name, table);
    }
}

TEST(Delineator, DerivesIntervalsFromTheGlobalPoints) {
    Episode episode{SyntheticBeat{}};
    ASSERT_EQ(MeasureEpisode(episode.Get()), 1u);
    const KxMeasurementSet& set = episode.Set();
    const KxLeadMeasurements& block = set.leads[0];
    EXPECT_EQ(set.prInterval, block.qrsOn - block.pOn);
    EXPECT_EQ(set.qtInterval, block.tOff - block.qrsOn);
    EXPECT_EQ(set.rrInterval, 800);
    EXPECT_EQ(set.qtc, std::lround(set.qtInterval / std::cbrt(0.8)));
    EXPECT_EQ(set.qtcBazett, std::lround(set.qtInterval / std::sqrt(0.8)));
    EXPECT_EQ(set.episodeTime, episode->endTimeMs);
    // The peak of R stands 20 ms behind its onset.
    EXPECT_NEAR(set.leads[KX_LEAD_V5].intrinsicoidDeflection, 444 - block.qrsOn, 2);

    Episode unknownRate{SyntheticBeat{.rr = 0}};
    ASSERT_EQ(MeasureEpisode(unknownRate.Get()), 1u);
    EXPECT_EQ(unknownRate.Set().qtc, 0);
    EXPECT_EQ(unknownRate.Set().qtcBazett, 0);
    EXPECT_EQ(unknownRate.Set().rrInterval, 0);
    EXPECT_GT(unknownRate.Set().qtInterval, 300);
}

// A beat and which components of its QRS complex lead II must show.
struct Complex {
    const char* name;
    SyntheticBeat beat;
    bool q, r, s;
};

TEST(Delineator, NamesTheComponentsThatAreThere) {
    const Complex kComplexes[] = {
        {"qRs", {}, true, true, true},
        {"Rs", {.q = {}}, false, true, true},
        {"qR", {.s = {}}, true, true, false},
        {"R", {.q = {}, .s = {}}, false, true, false},
        {"QS", {.q = {400, 480, -900}, .r = {}, .s = {}}, true, false, false},
        {"rS", {.q = {}, .r = {400, 424, 200}, .s = {424, 480, -1000}}, false, true, true},
    };
    for (const Complex& complex : kComplexes) {
        Episode episode(complex.beat);
        ASSERT_EQ(MeasureEpisode(episode.Get()), 1u) << complex.name;
        const KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_II];
        EXPECT_EQ(lead.qOnMarker != 0 && lead.aQ < 0, complex.q) << complex.name;
        EXPECT_EQ(lead.rOnMarker != 0 && lead.aR > 0, complex.r) << complex.name;
        EXPECT_EQ(lead.sOnMarker != 0 && lead.aS < 0, complex.s) << complex.name;
        EXPECT_EQ(lead.rPrimeOnMarker, 0) << complex.name;
        // aVR shows the complex upside down: where II begins with Q, aVR begins with R.
        const KxLeadMeasurements& inverted = episode.Set().leads[KX_LEAD_AVR];
        EXPECT_EQ(inverted.qOnMarker == 0, complex.q) << complex.name;
    }
}

TEST(Delineator, SaysAbsentForAWaveThatIsNotThere) {
    Episode noP{SyntheticBeat{.p = {}}};
    ASSERT_EQ(MeasureEpisode(noP.Get()), 1u);
    const KxMeasurementSet& set = noP.Set();
    EXPECT_EQ(set.leads[0].pOn, 0);
    EXPECT_EQ(set.leads[0].pOff, 0);
    EXPECT_EQ(set.pDuration, 0);
    EXPECT_EQ(set.prInterval, 0);
    EXPECT_EQ(set.pAxis, 0);
    for (const KxLeadMeasurements& lead : set.leads) {
        EXPECT_EQ(lead.pOnMarker | lead.pPrimeOnMarker | lead.pOffMarker | lead.aP1 | lead.aP2, 0);
    }
    Episode noT{SyntheticBeat{.t = {}}};
    ASSERT_EQ(MeasureEpisode(noT.Get()), 1u);
    EXPECT_EQ(noT.Set().leads[0].tOff, 0);
    EXPECT_EQ(noT.Set().qtInterval, 0);
    EXPECT_EQ(noT.Set().qtc, 0);
    EXPECT_EQ(noT.Set().leads[KX_LEAD_II].aT1, 0);
}

TEST(Delineator, MeasuresStLevelsFromTheJPoint) {
    // Level 200 uV from the end of QRS on, falling to the line under the T wave.
    SyntheticBeat beat{.s = {}, .t = {}};
    beat.r = {400, 440, 1200};
    Episode episode(beat);
    for (std::size_t i = 210; i < 600; ++i) {
        episode.Lead(KX_LEAD_V2)[i] = static_cast<std::int16_t>(200 - std::min<std::size_t>(i - 210, 200));
    }
    ASSERT_EQ(MeasureEpisode(episode.Get()), 1u);
    const KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_V2];
    for (int k = 3; k < KX_ST_LEVELS; ++k) {
        const double sample = (lead.qrsOff + 10 * k) / 2.0;
        EXPECT_NEAR(lead.stLevel[k], 200 - (sample - 210), 6) << "ST level " << k;
    }
    EXPECT_NEAR(episode.Set().leads[KX_LEAD_V5].stLevel[5], 0, 3);
}

TEST(Delineator, TakesNoNoticeOfABaselineOffset) {
    Episode plain{SyntheticBeat{}};
    Episode shifted{SyntheticBeat{}};
    for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
        for (std::size_t i = 0; i < shifted->samplesPerLead; ++i) {
            shifted.Lead(code)[i] =
                static_cast<std::int16_t>(shifted.Lead(code)[i] + 3000 - 500 * static_cast<int>(code));
        }
    }
    ASSERT_EQ(MeasureEpisode(plain.Get()), 1u);
    ASSERT_EQ(MeasureEpisode(shifted.Get()), 1u);
    EXPECT_EQ(std::memcmp(&plain.Set(), &shifted.Set(), sizeof(KxMeasurementSet)), 0);
}

TEST(Delineator, BridgesMissingSamplesAndLeads) {
    Episode whole{SyntheticBeat{}};
    Episode broken{SyntheticBeat{}};
    for (std::size_t i = 0; i < broken->samplesPerLead; ++i) {
        broken.Lead(KX_LEAD_V1)[i] = -32768;
        if (i % 7 == 0 || i < 3) {
            broken.Lead(KX_LEAD_II)[i] = -32768;
        }
    }
    broken->leadTable[KX_LEAD_V6].leadCode = KX_LEAD_EMPTY;
    ASSERT_EQ(MeasureEpisode(whole.Get()), 1u);
    ASSERT_EQ(MeasureEpisode(broken.Get()), 1u);
    EXPECT_NEAR(broken.Set().leads[0].qrsOn, whole.Set().leads[0].qrsOn, 3);
    EXPECT_NEAR(broken.Set().leads[0].tOff, whole.Set().leads[0].tOff, 5);
    EXPECT_NEAR(broken.Set().leads[KX_LEAD_II].aR, whole.Set().leads[KX_LEAD_II].aR, 25);
    for (const std::size_t absent : {KX_LEAD_V1, KX_LEAD_V6}) {
        const KxLeadMeasurements& lead = broken.Set().leads[absent];
        EXPECT_EQ(lead.rOnMarker | lead.aR | lead.tOffMarker | lead.stLevel[4], 0);
        EXPECT_EQ(lead.qrsOn, broken.Set().leads[0].qrsOn);
    }
}

// Whatever the samples are, the markers stand in the order of the waves and inside the beat.
TEST(Delineator, KeepsTheOrderOfTheWavesInNoise) {
    std::mt19937 random(20240611);
    int measured = 0;
    for (int round = 0; round < 200; ++round) {
        SyntheticBeat beat;
        beat.p.microvolts = round % 3 == 0 ? 0 : 120;
        beat.rr = static_cast<std::uint16_t>(random() % 1500);
        Episode episode(beat);
        std::normal_distribution<double> step(0, round % 20 * 3.0);
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            double wander = 0;
            for (std::size_t i = 0; i < episode->samplesPerLead; ++i) {
                wander = 0.95 * wander + step(random);
                episode.Lead(code)[i] =
                    static_cast<std::int16_t>(episode.Lead(code)[i] + std::lround(wander));
            }
        }
        measured += MeasureEpisode(episode.Get()) != 0;
        const KxMeasurementSet& set = episode.Set();
        const auto ascending = [&](std::initializer_list<std::uint16_t> places, std::size_t code) {
            int before = 0;
            for (const std::uint16_t place : places) {
                EXPECT_TRUE(place == 0 || place >= before) << "round " << round << " lead " << code;
                EXPECT_LE(place, 1200) << "round " << round;
                before = place == 0 ? before : place;
            }
        };
        for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
            const KxLeadMeasurements& lead = set.leads[code];
            ascending({lead.pOn, lead.pOff, lead.qrsOn, lead.qrsOff, lead.tOff}, code);
            ascending({lead.pOnMarker, lead.pPrimeOnMarker, lead.pOffMarker, lead.qOnMarker, lead.rOnMarker,
                       lead.sOnMarker, lead.rPrimeOnMarker, lead.sPrimeOnMarker, lead.qrsOffMarker,
                       lead.tOnMarker, lead.tPrimeOnMarker, lead.tOffMarker},
                      code);
            EXPECT_LE(lead.aQ, 0);
            EXPECT_LE(lead.aS, 0);
            EXPECT_LE(lead.aS1, 0);
            EXPECT_GE(lead.aR, 0);
            EXPECT_GE(lead.aR1, 0);
        }
    }
    EXPECT_GT(measured, 180);
}

}  // namespace
}  // namespace kx::analysis
