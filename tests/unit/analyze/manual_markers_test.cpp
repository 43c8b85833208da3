// The laws of re-measurement: what the reviewer placed stays, everything else follows.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>

#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

using LeadField = std::uint16_t KxLeadMeasurements::*;

struct Marker {
    const char* name;
    LeadField field;
    std::uint16_t flag;
};

constexpr Marker kGlobal[] = {{"Pon", &KxLeadMeasurements::pOn, KX_MANUAL_P_ON},
                              {"Poff", &KxLeadMeasurements::pOff, KX_MANUAL_P_OFF},
                              {"QRSon", &KxLeadMeasurements::qrsOn, KX_MANUAL_QRS_ON},
                              {"QRSoff", &KxLeadMeasurements::qrsOff, KX_MANUAL_QRS_OFF},
                              {"Toff", &KxLeadMeasurements::tOff, KX_MANUAL_T_OFF}};

constexpr Marker kLead[] = {{"Pon", &KxLeadMeasurements::pOnMarker, KX_MANUAL_LEAD_P_ON},
                            {"P'on", &KxLeadMeasurements::pPrimeOnMarker, KX_MANUAL_LEAD_P_PRIME_ON},
                            {"Poff", &KxLeadMeasurements::pOffMarker, KX_MANUAL_LEAD_P_OFF},
                            {"Qon", &KxLeadMeasurements::qOnMarker, KX_MANUAL_LEAD_Q_ON},
                            {"Ron", &KxLeadMeasurements::rOnMarker, KX_MANUAL_LEAD_R_ON},
                            {"Son", &KxLeadMeasurements::sOnMarker, KX_MANUAL_LEAD_S_ON},
                            {"R'on", &KxLeadMeasurements::rPrimeOnMarker, KX_MANUAL_LEAD_R_PRIME_ON},
                            {"S'on", &KxLeadMeasurements::sPrimeOnMarker, KX_MANUAL_LEAD_S_PRIME_ON},
                            {"QRSoff", &KxLeadMeasurements::qrsOffMarker, KX_MANUAL_LEAD_QRS_OFF},
                            {"Ton", &KxLeadMeasurements::tOnMarker, KX_MANUAL_LEAD_T_ON},
                            {"T'on", &KxLeadMeasurements::tPrimeOnMarker, KX_MANUAL_LEAD_T_PRIME_ON},
                            {"Toff", &KxLeadMeasurements::tOffMarker, KX_MANUAL_LEAD_T_OFF}};

// A beat measured once, with something in every reserved word.
Episode MeasuredBeat() {
    Episode episode{SyntheticBeat{}};
    KxMeasurementSet& set = episode.Set();
    set.reserved18 = 0x1818;
    set.reserved32 = 0x3232;
    set.reserved34 = 0x3434;
    std::fill(std::begin(set.reserved38), std::end(set.reserved38), std::uint8_t{38});
    for (KxLeadMeasurements& lead : set.leads) {
        lead.reserved12 = 0x1212;
        lead.fieldValue251 = -251;
        lead.fieldValue263 = 263;
        lead.fieldValue275 = 275;
        std::fill(std::begin(lead.reserved28), std::end(lead.reserved28), std::uint8_t{28});
        std::fill(std::begin(lead.reserved34), std::end(lead.reserved34), std::uint8_t{34});
        lead.reserved44 = 0x4444;
        std::fill(std::begin(lead.reserved48), std::end(lead.reserved48), std::uint8_t{48});
        std::fill(std::begin(lead.reserved68), std::end(lead.reserved68), std::uint8_t{68});
    }
    EXPECT_EQ(MeasureEpisode(episode.Get()), 1u);
    return episode;
}

struct Move {
    const Marker& marker;
    int by;
    int pr, p, qrs, qt;  // how much each interval must change, in units of `by`
};

TEST(ManualMarkers, AnIntervalMovesWithItsMarker) {
    const Move kMoves[] = {
        {kGlobal[0], -12, -1, -1, 0, 0}, {kGlobal[1], 10, 0, 1, 0, 0},  {kGlobal[2], -9, 1, 0, -1, -1},
        {kGlobal[2], 14, 1, 0, -1, -1},  {kGlobal[3], -18, 0, 0, 1, 0}, {kGlobal[4], 40, 0, 0, 0, 1},
    };
    for (const Move& move : kMoves) {
        Episode episode = MeasuredBeat();
        KxMeasurementSet& set = episode.Set();
        const KxMeasurementSet before = set;
        const int placed = set.leads[0].*move.marker.field + move.by;
        set.leads[0].*move.marker.field = static_cast<std::uint16_t>(placed);
        set.leads[0].globalManualFlags = move.marker.flag;
        ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
        for (const KxLeadMeasurements& lead : set.leads) {
            EXPECT_EQ(lead.*move.marker.field, placed) << move.marker.name;
        }
        const std::array<int, 4> moved = {
            set.prInterval - before.prInterval, set.pDuration - before.pDuration,
            set.qrsDuration - before.qrsDuration, set.qtInterval - before.qtInterval};
        const std::array<int, 4> expected = {move.pr * move.by, move.p * move.by, move.qrs * move.by,
                                             move.qt * move.by};
        EXPECT_EQ(moved, expected) << move.marker.name << " " << move.by;

        set.leads[0].globalManualFlags = 0;  // reset: the first measurement comes back
        ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
        EXPECT_EQ(std::memcmp(&before, &set, sizeof before), 0) << move.marker.name;
    }
}

TEST(ManualMarkers, AWaveSetAbsentStaysAbsent) {
    Episode episode = MeasuredBeat();
    KxMeasurementSet& set = episode.Set();
    set.leads[0].pOn = set.leads[0].pOff = 0;
    set.leads[0].globalManualFlags = KX_MANUAL_P_ON | KX_MANUAL_P_OFF;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_EQ(set.pDuration, 0);
    EXPECT_EQ(set.prInterval, 0);
    EXPECT_EQ(set.pAxis, 0);
    for (const KxLeadMeasurements& lead : set.leads) {
        EXPECT_EQ(lead.pOn | lead.pOff | lead.pOnMarker | lead.pOffMarker | lead.aP1, 0);
    }
    EXPECT_GT(set.qrsDuration, 0);

    // One of the two points is enough.
    Episode half = MeasuredBeat();
    half.Set().leads[0].pOff = 0;
    half.Set().leads[0].globalManualFlags = KX_MANUAL_P_OFF;
    ASSERT_EQ(UpdateDetection(half.Get()), 1u);
    EXPECT_EQ(half.Set().leads[0].pOn, 0);
    EXPECT_EQ(half.Set().prInterval, 0);

    // A lead's own absence is the lead's alone.
    Episode lead = MeasuredBeat();
    KxLeadMeasurements& v6 = lead.Set().leads[KX_LEAD_V6];
    v6.tOnMarker = v6.tPrimeOnMarker = v6.tOffMarker = 0;
    v6.markerFlags = KX_MANUAL_LEAD_T_ON | KX_MANUAL_LEAD_T_PRIME_ON | KX_MANUAL_LEAD_T_OFF;
    ASSERT_EQ(UpdateDetection(lead.Get()), 1u);
    EXPECT_EQ(v6.tOffMarker | v6.aT1, 0);
    EXPECT_GT(lead.Set().leads[KX_LEAD_V5].tOffMarker, 0);
    EXPECT_GT(lead.Set().qtInterval, 0);
}

// Any set of markers by hand, possible or not: they stay, no flag, reserved word or byte outside the set
// changes, what the analysis places lies on the right side of every marker that is itself in order.
TEST(ManualMarkers, StayWhateverTheyAre) {
    std::mt19937 random(77);
    for (int round = 0; round < 300; ++round) {
        Episode episode = MeasuredBeat();
        KxMeasurementSet& set = episode.Set();
        const auto place = [&] {
            const auto kind = random() % 8;
            return static_cast<std::uint16_t>(kind == 0   ? 0
                                              : kind == 1 ? 65535 - random() % 3
                                                          : random() % 1200);
        };
        set.leads[0].globalManualFlags = static_cast<std::uint16_t>(random());
        for (const Marker& marker : kGlobal) {
            set.leads[0].*marker.field = place();
        }
        for (KxLeadMeasurements& lead : set.leads) {
            lead.markerFlags = static_cast<std::uint16_t>(random() & random());
            for (const Marker& marker : kLead) {
                lead.*marker.field = place();
            }
        }
        const auto before = std::make_unique<KxEpisodeRecord>(*episode.Get());
        ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
        const KxMeasurementSet& old = before->measurements;
        for (const Marker& marker : kGlobal) {
            if ((old.leads[0].globalManualFlags & marker.flag) != 0) {
                EXPECT_EQ(set.leads[14].*marker.field, old.leads[0].*marker.field)
                    << round << " " << marker.name;
            }
        }
        for (std::size_t code = 0; code < KX_MEASURED_LEADS; ++code) {
            for (const Marker& marker : kLead) {
                if ((old.leads[code].markerFlags & marker.flag) != 0) {
                    EXPECT_EQ(set.leads[code].*marker.field, old.leads[code].*marker.field)
                        << round << " lead " << code << " " << marker.name;
                }
            }
            EXPECT_EQ(set.leads[code].markerFlags, old.leads[code].markerFlags);
            EXPECT_EQ(set.leads[code].globalManualFlags, old.leads[code].globalManualFlags);
            EXPECT_EQ(set.leads[code].reserved12, 0x1212);
            EXPECT_EQ(set.leads[code].fieldValue251, -251);
            EXPECT_EQ(set.leads[code].fieldValue275, 275);
            EXPECT_EQ(std::memcmp(set.leads[code].reserved48, old.leads[code].reserved48, 14), 0);
            EXPECT_EQ(std::memcmp(set.leads[code].reserved68, old.leads[code].reserved68, 12), 0);
        }
        EXPECT_EQ(set.rrInterval, old.rrInterval);
        before->measurements = set;
        EXPECT_EQ(std::memcmp(before.get(), episode.Get(), sizeof(KxEpisodeRecord)), 0) << "outside the set";
    }
}

TEST(ManualMarkers, AutomaticOnesGiveWay) {
    Episode episode = MeasuredBeat();
    KxMeasurementSet& set = episode.Set();
    // QRS onset dragged back into the P wave: the automatic end of P moves before it.
    set.leads[0].qrsOn = 300;
    set.leads[0].globalManualFlags = KX_MANUAL_QRS_ON;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_LE(set.leads[0].pOff, 300);
    EXPECT_GT(set.leads[0].pOff, set.leads[0].pOn);
    for (std::size_t code = 0; code < KX_STANDARD_LEADS; ++code) {
        EXPECT_LE(set.leads[code].pOffMarker, 300) << code;
    }
    // A lead's T offset dragged to the middle of the wave: its automatic onset stays before it.
    set.leads[0].globalManualFlags = 0;
    KxLeadMeasurements& v6 = set.leads[KX_LEAD_V6];
    v6.tOffMarker = 600;
    v6.markerFlags = KX_MANUAL_LEAD_T_OFF;
    ASSERT_EQ(UpdateDetection(episode.Get()), 1u);
    EXPECT_LE(v6.tOnMarker, 600);
    EXPECT_EQ(v6.tOffMarker, 600);
}

}  // namespace
}  // namespace kx::analysis
