// The laws of re-measurement: what the reviewer placed stays, everything else follows.
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

using Lead = KxLeadMeasurements;
using LeadField = std::uint16_t Lead::*;

struct Marker {
    const char* name;
    LeadField field;
    std::uint16_t flag;
};

constexpr Marker kGlobal[] = {{"Pon", &Lead::pOn, KX_MANUAL_P_ON},
                              {"Poff", &Lead::pOff, KX_MANUAL_P_OFF},
                              {"QRSon", &Lead::qrsOn, KX_MANUAL_QRS_ON},
                              {"QRSoff", &Lead::qrsOff, KX_MANUAL_QRS_OFF},
                              {"Toff", &Lead::tOff, KX_MANUAL_T_OFF}};
constexpr Marker kLead[] = {{"Pon", &Lead::pOnMarker, KX_MANUAL_LEAD_P_ON},
                            {"P'on", &Lead::pPrimeOnMarker, KX_MANUAL_LEAD_P_PRIME_ON},
                            {"Poff", &Lead::pOffMarker, KX_MANUAL_LEAD_P_OFF},
                            {"Qon", &Lead::qOnMarker, KX_MANUAL_LEAD_Q_ON},
                            {"Ron", &Lead::rOnMarker, KX_MANUAL_LEAD_R_ON},
                            {"Son", &Lead::sOnMarker, KX_MANUAL_LEAD_S_ON},
                            {"R'on", &Lead::rPrimeOnMarker, KX_MANUAL_LEAD_R_PRIME_ON},
                            {"S'on", &Lead::sPrimeOnMarker, KX_MANUAL_LEAD_S_PRIME_ON},
                            {"QRSoff", &Lead::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                            {"Ton", &Lead::tOnMarker, KX_MANUAL_LEAD_T_ON},
                            {"T'on", &Lead::tPrimeOnMarker, KX_MANUAL_LEAD_T_PRIME_ON},
                            {"Toff", &Lead::tOffMarker, KX_MANUAL_LEAD_T_OFF}};
constexpr std::uint16_t kOnsets =
    KX_MANUAL_LEAD_Q_ON | KX_MANUAL_LEAD_R_ON | KX_MANUAL_LEAD_S_ON | KX_MANUAL_LEAD_R_PRIME_ON | KX_MANUAL_LEAD_S_PRIME_ON;

// A beat measured once, with something in every byte that is nobody's, and measured again and again.
class ManualMarkers : public testing::Test {
  protected:
    ManualMarkers() {
        std::memset(&set, 0x5A, sizeof set);
        set.rrInterval = 800;
        set.leads[0].globalManualFlags = 0;
        for (Lead& lead : set.leads) {
            lead.markerFlags = 0;
        }
        EXPECT_EQ(MeasureEpisode(episode.Get(), Kept()), 1u);
        first = set;
    }
    static Workspace& Kept() {
        static Workspace workspace;
        return workspace;
    }
    void Update() { ASSERT_EQ(UpdateDetection(episode.Get(), Kept()), 1u); }
    void ExpectFirstAgain(const std::string& name) {
        Update();
        EXPECT_EQ(std::memcmp(&first, &set, sizeof set), 0) << name;
    }

    Episode episode{SyntheticBeat{}};
    KxMeasurementSet& set = episode.Set();
    KxMeasurementSet first;
};

TEST_F(ManualMarkers, MoveTheirIntervals) {
    struct Move {
        const Marker& marker;
        int by;
        std::array<int, 4> intervals;  // PR, P, QRS, QT, in units of `by`
    };
    const Move kMoves[] = {{kGlobal[0], -12, {-1, -1, 0, 0}}, {kGlobal[1], 10, {0, 1, 0, 0}},  {kGlobal[2], -9, {1, 0, -1, -1}},
                           {kGlobal[2], 14, {1, 0, -1, -1}},  {kGlobal[3], -18, {0, 0, 1, 0}}, {kGlobal[4], 40, {0, 0, 0, 1}}};
    for (const Move& move : kMoves) {
        const int placed = set.leads[0].*move.marker.field + move.by;
        set.leads[0].*move.marker.field = static_cast<std::uint16_t>(placed);
        set.leads[0].globalManualFlags = move.marker.flag;
        Update();
        for (const Lead& lead : set.leads) {
            EXPECT_EQ(lead.*move.marker.field, placed) << move.marker.name;
        }
        std::array<int, 4> moved = {set.prInterval - first.prInterval, set.pDuration - first.pDuration, set.qrsDuration - first.qrsDuration,
                                    set.qtInterval - first.qtInterval};
        for (std::size_t i = 0; i < moved.size(); ++i) {
            EXPECT_EQ(moved[i], move.intervals[i] * move.by) << move.marker.name << " " << i;
        }
        set.leads[0].globalManualFlags = 0;
        ExpectFirstAgain(move.marker.name);
    }
}

// Any set of markers by hand, possible or not: they stay, and nothing outside the measurements changes.
TEST_F(ManualMarkers, StayWhateverTheyAre) {
    std::mt19937 random(77);
    for (int round = 0; round < 300; ++round) {
        const auto place = [&] {
            const auto kind = random() % 8;
            return static_cast<std::uint16_t>(kind == 0 ? 0 : kind == 1 ? 65535 - random() % 3 : random() % 1200);
        };
        for (Lead& lead : set.leads) {
            lead.globalManualFlags = static_cast<std::uint16_t>(random());
            lead.markerFlags = static_cast<std::uint16_t>(random() & random());
            std::for_each(std::begin(kGlobal), std::end(kGlobal), [&](const Marker& marker) { lead.*marker.field = place(); });
            std::for_each(std::begin(kLead), std::end(kLead), [&](const Marker& marker) { lead.*marker.field = place(); });
        }
        const auto before = std::make_unique<KxEpisodeRecord>(*episode.Get());
        Update();
        const KxMeasurementSet& old = before->measurements;
        for (std::size_t code = 0; code < KX_MEASURED_LEADS; ++code) {
            const Lead &was = old.leads[code], &is = set.leads[code];
            for (const Marker& marker : kGlobal) {
                EXPECT_TRUE((old.leads[0].globalManualFlags & marker.flag) == 0 || is.*marker.field == old.leads[0].*marker.field)
                    << round << " " << marker.name;
            }
            for (const Marker& marker : kLead) {
                EXPECT_TRUE((was.markerFlags & marker.flag) == 0 || is.*marker.field == was.*marker.field)
                    << round << " lead " << code << " " << marker.name;
            }
            EXPECT_TRUE(is.markerFlags == was.markerFlags && is.globalManualFlags == was.globalManualFlags);
            EXPECT_TRUE(is.reserved12 == was.reserved12 && is.reserved44 == was.reserved44 && is.fieldValue251 == was.fieldValue251 &&
                        is.fieldValue263 == was.fieldValue263 && is.fieldValue275 == was.fieldValue275);
            EXPECT_EQ(std::memcmp(is.reserved28, was.reserved28, sizeof is.reserved28), 0);
            EXPECT_EQ(std::memcmp(is.reserved34, was.reserved34, sizeof is.reserved34), 0);
            EXPECT_EQ(std::memcmp(is.reserved48, was.reserved48, sizeof is.reserved48), 0);
            EXPECT_EQ(std::memcmp(is.reserved68, was.reserved68, sizeof is.reserved68), 0);
        }
        EXPECT_TRUE(set.rrInterval == old.rrInterval && set.reserved18 == old.reserved18 && set.reserved32 == old.reserved32 &&
                    set.reserved34 == old.reserved34 && std::memcmp(set.reserved38, old.reserved38, sizeof set.reserved38) == 0);
        before->measurements = set;
        EXPECT_EQ(std::memcmp(before.get(), episode.Get(), sizeof(KxEpisodeRecord)), 0) << "outside the set";
    }
}

// A wave that is 0 by hand is absent; one point says so for all leads, a lead's marker for that lead alone.
TEST_F(ManualMarkers, TakeAWaveAwayAndPutItIn) {
    set.leads[0].pOff = 0;
    set.leads[0].globalManualFlags = KX_MANUAL_P_OFF;
    Update();
    EXPECT_EQ(set.pDuration | set.prInterval | set.pAxis, 0);
    for (const Lead& lead : set.leads) {
        EXPECT_EQ(lead.pOn | lead.pOff | lead.pOnMarker | lead.pOffMarker | lead.aP1, 0);
    }
    EXPECT_EQ(set.qtInterval, first.qtInterval);
    set.leads[0].globalManualFlags = 0;
    ExpectFirstAgain("P of all leads");

    Lead& lead = set.leads[KX_LEAD_V4];
    struct Row {
        const char* name;
        std::initializer_list<std::pair<LeadField, int>> markers;
        std::uint16_t flags;
        std::initializer_list<std::int16_t Lead::*> absent, present;  // which values are 0 afterwards
    };
    constexpr std::uint16_t kP = KX_MANUAL_LEAD_P_ON | KX_MANUAL_LEAD_P_PRIME_ON | KX_MANUAL_LEAD_P_OFF;
    constexpr std::uint16_t kT = KX_MANUAL_LEAD_T_ON | KX_MANUAL_LEAD_T_PRIME_ON | KX_MANUAL_LEAD_T_OFF;
    const Row kRows[] = {
        {"no P",
         {{&Lead::pOnMarker, 0}, {&Lead::pPrimeOnMarker, 0}, {&Lead::pOffMarker, 0}},
         kP,
         {&Lead::aP1, &Lead::aP2},
         {&Lead::aR, &Lead::aT1}},
        {"P' put in", {{&Lead::pPrimeOnMarker, 285}}, KX_MANUAL_LEAD_P_PRIME_ON, {}, {&Lead::aP1, &Lead::aP2}},
        {"no T",
         {{&Lead::tOnMarker, 0}, {&Lead::tPrimeOnMarker, 0}, {&Lead::tOffMarker, 0}},
         kT,
         {&Lead::aT1, &Lead::aT2},
         {&Lead::aR, &Lead::aP1}},
        {"T put in", {{&Lead::tOnMarker, 600}, {&Lead::tPrimeOnMarker, 0}, {&Lead::tOffMarker, 650}}, kT, {&Lead::aT2}, {&Lead::aT1}},
        {"R ended at its peak", {{&Lead::qrsOffMarker, 450}}, KX_MANUAL_LEAD_QRS_OFF, {&Lead::aS}, {&Lead::aR}},
    };
    for (const Row& row : kRows) {
        for (const auto& [field, value] : row.markers) {
            lead.*field = static_cast<std::uint16_t>(value);
        }
        lead.markerFlags = row.flags;
        Update();
        for (const auto& [field, value] : row.markers) {
            EXPECT_EQ(lead.*field, value) << row.name;
        }
        for (const auto amplitude : row.absent) {
            EXPECT_EQ(lead.*amplitude, 0) << row.name;
        }
        for (const auto amplitude : row.present) {
            EXPECT_NE(lead.*amplitude, 0) << row.name;
        }
        EXPECT_EQ(std::memcmp(&first.leads[KX_LEAD_V5], &set.leads[KX_LEAD_V5], sizeof lead), 0) << row.name;
        EXPECT_EQ(set.qtInterval, first.qtInterval) << row.name;
        lead.markerFlags = 0;
        ExpectFirstAgain(row.name);
    }
}

TEST_F(ManualMarkers, MoveTheAutomaticOnesAside) {
    set.leads[0].qrsOn = 300;  // back into the P wave
    set.leads[0].globalManualFlags = KX_MANUAL_QRS_ON;
    Update();
    EXPECT_TRUE(set.leads[0].pOff <= 300 && set.leads[0].pOff > set.leads[0].pOn);
    for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
        EXPECT_LE(set.leads[code].pOffMarker, 300) << code;
    }
    set.leads[0].globalManualFlags = 0;
    Lead& v6 = set.leads[KX_LEAD_V6];
    v6.tOffMarker = 600;
    v6.markerFlags = KX_MANUAL_LEAD_T_OFF;
    Update();
    EXPECT_TRUE(v6.tOnMarker <= 600 && v6.tOffMarker == 600);
}

// The QRS pane gives all five onsets their flags and the offset none: it was placed by hand with them all the same.
TEST_F(ManualMarkers, OfAWholeComplexKeepItsOffset) {
    Lead& lead = set.leads[KX_LEAD_II];
    const auto found = lead.qrsOffMarker;
    lead.qrsOffMarker = static_cast<std::uint16_t>(found + 40);
    lead.markerFlags = kOnsets & ~KX_MANUAL_LEAD_Q_ON;
    Update();
    EXPECT_EQ(lead.qrsOffMarker, found);
    lead.qrsOffMarker = static_cast<std::uint16_t>(found - 6);
    lead.markerFlags = kOnsets;
    Update();
    EXPECT_EQ(lead.qrsOffMarker, found - 6);
    lead.rPrimeOnMarker = static_cast<std::uint16_t>(found + 12);  // a component put in behind it
    Update();
    EXPECT_EQ(lead.qrsOffMarker, found + 12);
    lead.rPrimeOnMarker = 0;
    lead.markerFlags = 0;
    ExpectFirstAgain("reset");
}

// Components by hand, at every place and in every combination that the reviewer's rules allow: the amplitudes are those
// of the curve between the markers.
TEST_F(ManualMarkers, SetTheAmplitudesOfTheCurveBetweenThem) {
    constexpr LeadField kFields[] = {&Lead::qOnMarker, &Lead::rOnMarker, &Lead::sOnMarker, &Lead::rPrimeOnMarker, &Lead::sPrimeOnMarker};
    constexpr std::int16_t Lead::*kAmplitudes[] = {&Lead::aQ, &Lead::aR, &Lead::aS, &Lead::aR1, &Lead::aS1};
    Lead& lead = set.leads[KX_LEAD_II];
    const std::int16_t* samples = episode.Lead(KX_LEAD_II);  // 2 ms apart; the level before the complex is 0
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        std::array<int, 6> places{};  // the five onsets and the offset
        int last = 396;
        for (std::size_t i = 0; i < 5; ++i) {
            places[i] = random() % 3 == 0 ? 0 : last += 5 + static_cast<int>(random() % 20);
            lead.*kFields[i] = static_cast<std::uint16_t>(places[i]);
        }
        places[5] = last + 6 + static_cast<int>(random() % 20);
        lead.qrsOffMarker = static_cast<std::uint16_t>(places[5]);
        lead.markerFlags = kOnsets;
        Update();
        for (std::size_t i = 0; i < 5; ++i) {
            const int sign = i % 2 == 0 ? -1 : 1;
            const int next =
                *std::find_if(places.begin() + static_cast<std::ptrdiff_t>(i) + 1, places.end(), [](int place) { return place != 0; });
            int largest = 0;
            for (int k = (places[i] + 1) / 2; places[i] != 0 && 2 * k < next; ++k) {
                largest = std::max(largest, sign * samples[k]);
            }
            // The analysis reads between the samples: up to half a millisecond of the steepest slope.
            EXPECT_NEAR(lead.*kAmplitudes[i], sign * largest, 95) << "round " << round << " component " << i;
        }
    }
}

// A second component is looked for inside the wave as the reviewer bounds it; other samples are measured anew.
TEST_F(ManualMarkers, BoundTheSecondComponent) {
    for (std::size_t i = 330; i < 380; ++i) {  // T is biphasic in V4: its second half goes down
        std::int16_t& sample = episode.Lead(KX_LEAD_V4)[i];
        sample = static_cast<std::int16_t>(sample - std::lround(900 * std::sin((static_cast<double>(i) - 330) * 0.0628)));
    }
    Update();
    Lead& lead = set.leads[KX_LEAD_V4];
    const Lead before = lead;
    ASSERT_GT(before.tPrimeOnMarker, before.tOnMarker);
    ASSERT_LT(before.aT2, -300);
    lead.tOffMarker = static_cast<std::uint16_t>(before.tPrimeOnMarker - 6);
    lead.markerFlags = KX_MANUAL_LEAD_T_OFF;
    Update();
    EXPECT_EQ(lead.tPrimeOnMarker | lead.aT2, 0);
    EXPECT_EQ(lead.aT1, before.aT1);
}

}  // namespace
}  // namespace kx::analysis
