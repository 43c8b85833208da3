// Components and waves of one lead that the reviewer places, moves, takes away and puts in.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>

#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

using LeadField = std::uint16_t KxLeadMeasurements::*;

Episode MeasuredBeat() {
    Episode episode{SyntheticBeat{}};
    EXPECT_EQ(MeasureEpisode(episode.Get()), 1u);
    return episode;
}

// The largest deflection of a lead on one side of its level before the complex, from one marker to another,
// read off the samples (2 ms apart); 0 when there is none.
int LargestDeflection(Episode& episode, std::size_t code, int from, int to, int sign) {
    const std::int16_t* samples = episode.Lead(code);
    const int qrsOn = episode.Set().leads[0].qrsOn;
    double base = 0;
    for (int i = qrsOn / 2 - 7; i <= qrsOn / 2; ++i) {
        base += samples[i] / 8.0;
    }
    double largest = 0;
    for (int i = (from + 1) / 2; 2 * i < to; ++i) {
        largest = std::max(largest, sign * (samples[i] - base));
    }
    return sign * static_cast<int>(std::lround(largest));
}

// Components by hand, at every place and in every combination that the reviewer's rules allow: the amplitudes
// are those of the curve between the markers, the intrinsicoid deflection that of the last R.
TEST(ManualComponents, SetTheAmplitudesOfTheCurveBetweenThem) {
    constexpr std::size_t kCode = KX_LEAD_II;
    constexpr LeadField kOnsets[] = {&KxLeadMeasurements::qOnMarker, &KxLeadMeasurements::rOnMarker,
                                     &KxLeadMeasurements::sOnMarker, &KxLeadMeasurements::rPrimeOnMarker,
                                     &KxLeadMeasurements::sPrimeOnMarker};
    constexpr std::int16_t KxLeadMeasurements::*kAmplitudes[] = {
        &KxLeadMeasurements::aQ, &KxLeadMeasurements::aR, &KxLeadMeasurements::aS, &KxLeadMeasurements::aR1,
        &KxLeadMeasurements::aS1};
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        Episode episode = MeasuredBeat();
        KxLeadMeasurements& lead = episode.Set().leads[kCode];
        std::array<int, 6> places{};  // the five onsets and the offset
        int last = 396;
        for (std::size_t i = 0; i < 5; ++i) {
            if (random() % 3 != 0) {
                places[i] = last += 5 + static_cast<int>(random() % 20);
            }
            lead.*kOnsets[i] = static_cast<std::uint16_t>(places[i]);
        }
        places[5] = last + 6 + static_cast<int>(random() % 20);
        lead.qrsOffMarker = static_cast<std::uint16_t>(places[5]);
        lead.markerFlags = KX_MANUAL_LEAD_Q_ON | KX_MANUAL_LEAD_R_ON | KX_MANUAL_LEAD_S_ON |
                           KX_MANUAL_LEAD_R_PRIME_ON | KX_MANUAL_LEAD_S_PRIME_ON | KX_MANUAL_LEAD_QRS_OFF;
        ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
        int lastR = 0;
        for (std::size_t i = 0; i < 5; ++i) {
            const int sign = i % 2 == 0 ? -1 : 1;
            const int next = *std::find_if(places.begin() + static_cast<std::ptrdiff_t>(i) + 1, places.end(),
                                           [](int place) { return place != 0; });
            const int expected =
                places[i] == 0 ? 0 : LargestDeflection(episode, kCode, places[i], next, sign);
            // The analysis reads between the samples: up to half a millisecond of the steepest slope.
            EXPECT_NEAR(lead.*kAmplitudes[i], expected, 95) << "round " << round << " component " << i;
            EXPECT_EQ(lead.*kOnsets[i], places[i]) << "round " << round << " component " << i;
            lastR = sign > 0 && places[i] != 0 ? places[i] : lastR;
        }
        EXPECT_EQ(lead.qrsOffMarker, places[5]) << round;
        // The R wave's peak stands at 444 ms.
        const int deflection = lead.intrinsicoidDeflection + (lastR != 0 ? episode.Set().leads[0].qrsOn : 0);
        if (lastR == 0) {
            EXPECT_EQ(deflection, 0) << round;
        } else if (lastR < 444 && lead.aR + lead.aR1 > 1190) {
            EXPECT_NEAR(deflection, 444, 2) << round;
        } else if (deflection != episode.Set().leads[0].qrsOn) {
            EXPECT_GE(deflection, lastR) << round;
        }
    }
}

struct Placed {
    const char* name;
    std::initializer_list<std::pair<LeadField, int>> markers;
    std::uint16_t flags;
    // Which of the lead's values must be 0 afterwards, and which must not.
    std::initializer_list<std::int16_t KxLeadMeasurements::*> absent, present;
};

// What the wave boxes of the P and T panes write for one lead.
TEST(ManualComponents, WavesOfALeadAreTakenAwayAndPutInByHand) {
    using Lead = KxLeadMeasurements;
    constexpr std::uint16_t kP = KX_MANUAL_LEAD_P_ON | KX_MANUAL_LEAD_P_PRIME_ON | KX_MANUAL_LEAD_P_OFF;
    constexpr std::uint16_t kT = KX_MANUAL_LEAD_T_ON | KX_MANUAL_LEAD_T_PRIME_ON | KX_MANUAL_LEAD_T_OFF;
    const Placed kRows[] = {
        {"no P",
         {{&Lead::pOnMarker, 0}, {&Lead::pPrimeOnMarker, 0}, {&Lead::pOffMarker, 0}},
         kP,
         {&Lead::aP1, &Lead::aP2},
         {&Lead::aR, &Lead::aT1}},
        {"P' put in",
         {{&Lead::pPrimeOnMarker, 285}},
         KX_MANUAL_LEAD_P_PRIME_ON,
         {},
         {&Lead::aP1, &Lead::aP2}},
        {"no T",
         {{&Lead::tOnMarker, 0}, {&Lead::tPrimeOnMarker, 0}, {&Lead::tOffMarker, 0}},
         kT,
         {&Lead::aT1, &Lead::aT2},
         {&Lead::aR, &Lead::aP1}},
        {"T put in",
         {{&Lead::tOnMarker, 600}, {&Lead::tPrimeOnMarker, 0}, {&Lead::tOffMarker, 650}},
         kT,
         {&Lead::aT2},
         {&Lead::aT1}},
        {"no T'", {{&Lead::tPrimeOnMarker, 0}}, KX_MANUAL_LEAD_T_PRIME_ON, {&Lead::aT2}, {&Lead::aT1}},
    };
    for (const Placed& row : kRows) {
        Episode episode = MeasuredBeat();
        const KxMeasurementSet before = episode.Set();
        Lead& lead = episode.Set().leads[KX_LEAD_V4];
        for (const auto& [field, value] : row.markers) {
            lead.*field = static_cast<std::uint16_t>(value);
        }
        lead.markerFlags = row.flags;
        ASSERT_EQ(UpdateDetection(episode.Get()), 1u) << row.name;
        for (const auto& [field, value] : row.markers) {
            EXPECT_EQ(lead.*field, value) << row.name;
        }
        for (const auto amplitude : row.absent) {
            EXPECT_EQ(lead.*amplitude, 0) << row.name;
        }
        for (const auto amplitude : row.present) {
            EXPECT_NE(lead.*amplitude, 0) << row.name;
        }
        // The other leads and all leads together know nothing of it.
        EXPECT_EQ(std::memcmp(&before.leads[KX_LEAD_V5], &episode.Set().leads[KX_LEAD_V5], sizeof lead), 0)
            << row.name;
        EXPECT_EQ(episode.Set().qtInterval, before.qtInterval) << row.name;

        lead.markerFlags = 0;
        ASSERT_EQ(UpdateDetection(episode.Get()), 1u) << row.name;
        EXPECT_EQ(std::memcmp(&before, &episode.Set(), sizeof before), 0) << row.name << ", reset";
    }
}

// A second component is looked for inside the wave as the reviewer bounds it.
TEST(ManualComponents, AreLookedForInsideTheBoundariesPlacedByHand) {
    // T is biphasic in V4: its second half goes down.
    Episode episode{SyntheticBeat{}};
    for (std::size_t i = 330; i < 380; ++i) {
        episode.Lead(KX_LEAD_V4)[i] =
            static_cast<std::int16_t>(episode.Lead(KX_LEAD_V4)[i] -
                                      std::lround(900 * std::sin((static_cast<double>(i) - 330) * 0.0628)));
    }
    ASSERT_EQ(MeasureEpisode(episode.Get()), 1u);
    KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_V4];
    const KxLeadMeasurements before = lead;
    ASSERT_GT(before.tPrimeOnMarker, before.tOnMarker);
    ASSERT_LT(before.aT2, -300);
    // T ended before its second half begins: there is no second component.
    lead.tOffMarker = static_cast<std::uint16_t>(before.tPrimeOnMarker - 6);
    lead.markerFlags = KX_MANUAL_LEAD_T_OFF;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_EQ(lead.tPrimeOnMarker, 0);
    EXPECT_EQ(lead.aT2, 0);
    EXPECT_EQ(lead.aT1, before.aT1);
    // The complex ended at the peak of R: no S wave is left.
    KxLeadMeasurements& v5 = episode.Set().leads[KX_LEAD_V5];
    ASSERT_NE(v5.sOnMarker, 0);
    v5.qrsOffMarker = 450;
    v5.markerFlags = KX_MANUAL_LEAD_QRS_OFF;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_EQ(v5.sOnMarker | v5.aS, 0);
    EXPECT_GT(v5.aR, 1000);
}

TEST(ManualComponents, AQrsOffsetMovedWithoutItsFlagGoesBack) {
    constexpr std::uint16_t kOnsets = KX_MANUAL_LEAD_Q_ON | KX_MANUAL_LEAD_R_ON | KX_MANUAL_LEAD_S_ON |
                                      KX_MANUAL_LEAD_R_PRIME_ON | KX_MANUAL_LEAD_S_PRIME_ON;
    Episode episode = MeasuredBeat();
    KxLeadMeasurements& lead = episode.Set().leads[KX_LEAD_II];
    const std::uint16_t found = lead.qrsOffMarker;
    lead.qrsOffMarker = static_cast<std::uint16_t>(found + 40);
    lead.markerFlags = kOnsets;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_EQ(lead.qrsOffMarker, found);
    // Not before the last component.
    lead.rPrimeOnMarker = static_cast<std::uint16_t>(found + 12);
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_EQ(lead.qrsOffMarker, found + 12);
    // With its flag, set elsewhere, it stays.
    lead.rPrimeOnMarker = 0;
    lead.qrsOffMarker = static_cast<std::uint16_t>(found + 40);
    lead.markerFlags = kOnsets | KX_MANUAL_LEAD_QRS_OFF;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_EQ(lead.qrsOffMarker, found + 40);
}

}  // namespace
}  // namespace kx::analysis
