// The built-in recording: the ECG of a healthy adult, by its leads and by its measurements.
#include "host/recording/synthetic.h"

#include <gtest/gtest.h>

#include "host/recording/median_beat.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::recording {
namespace {

TEST(SyntheticRecording, IsTheSameEveryTimeAndOfTheStatedSize) {
    const Recording first = MakeSyntheticRecording(), second = MakeSyntheticRecording();
    EXPECT_EQ(first.leads, second.leads);
    EXPECT_EQ(first.SampleCount(), 5000u);
    EXPECT_EQ(first.sampleRate, 500);
    EXPECT_NE(MakeSyntheticRecording({.seed = 1}).leads, first.leads);
    EXPECT_EQ(MakeSyntheticRecording({.sampleRate = 1000, .seconds = 2.5}).SampleCount(), 2500u);
}

TEST(SyntheticRecording, HoldsTheLawsOfTheLimbLeads) {
    const Recording recording = MakeSyntheticRecording();
    for (std::size_t i = 0; i < recording.SampleCount(); ++i) {
        const double one = recording.leads[kLeadI][i], two = recording.leads[kLeadII][i];
        ASSERT_NEAR(recording.leads[kLeadIII][i], two - one, 0.01) << i;
        ASSERT_NEAR(
            recording.leads[kLeadAVR][i] + recording.leads[kLeadAVL][i] + recording.leads[kLeadAVF][i], 0,
            0.01)
            << i;
    }
}

TEST(SyntheticRecording, MeasuresAsAHealthyAdult) {
    struct Row {
        const char* what;
        int value, from, to;
    };
    for (const double rate : {250.0, 500.0, 1000.0}) {
        std::string error;
        const auto beat = MakeMedianBeat(MakeSyntheticRecording({.sampleRate = rate}), error);
        ASSERT_TRUE(beat) << error;
        analysis::Episode episode({beat->leads.begin(), beat->leads.end()}, kWorkingRate, kResolutionNv);
        episode.Set().rrInterval = static_cast<std::uint16_t>(beat->rrMs);
        ASSERT_EQ(analysis::MeasureEpisode(episode.Get()), 1u);
        const KxMeasurementSet& set = episode.Set();
        const KxLeadMeasurements* leads = set.leads;
        // Limits of normal of P. W. Macfarlane and T. D. V. Lawrie, Comprehensive Electrocardiology.
        const Row kRows[] = {
            {"P duration", set.pDuration, 80, 120},
            {"PR", set.prInterval, 120, 200},
            {"QRS duration", set.qrsDuration, 70, 110},
            {"QT", set.qtInterval, 340, 430},
            {"P axis", set.pAxis, 0, 75},
            {"QRS axis", set.qrsAxis, -30, 90},
            {"S in V1", leads[KX_LEAD_V1].aS, -1800, -300},
            {"R in V5", leads[KX_LEAD_V5].aR, 700, 2600},
            {"Sokolow-Lyon", leads[KX_LEAD_V5].aR - leads[KX_LEAD_V1].aS, 1000, 3500},
            {"Q in V6", leads[KX_LEAD_V6].aQ, -300, 0},
            {"T in II", leads[KX_LEAD_II].aT1, 100, 700},
            {"T in aVR", leads[KX_LEAD_AVR].aT1, -600, -50},
            {"ST in V5", leads[KX_LEAD_V5].stLevel[6], -50, 150},
            {"intrinsicoid deflection in V5", leads[KX_LEAD_V5].intrinsicoidDeflection, 20, 50},
        };
        for (const Row& row : kRows) {
            EXPECT_GE(row.value, row.from) << row.what << " at " << rate;
            EXPECT_LE(row.value, row.to) << row.what << " at " << rate;
        }
        for (std::size_t lead = 0; lead < kLeadCount; ++lead) {
            EXPECT_EQ(leads[lead].pPrimeOnMarker != 0 && lead != KX_LEAD_V1, false) << kLeadNames[lead];
            EXPECT_EQ(leads[lead].sPrimeOnMarker, 0) << kLeadNames[lead];
        }
    }
}

}  // namespace
}  // namespace kx::recording
