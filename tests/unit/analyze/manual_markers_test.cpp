// The laws of re-measurement: what the reviewer placed stays, everything else follows.
#include <random>
#include <span>

#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::analysis {
namespace {

using Lead = KxLeadMeasurements;
using LeadField = std::uint16_t Lead::*;

// The markers in the order of their flags' bits, from the lowest: those of the whole beat, those of one lead.
constexpr LeadField kGlobal[] = {&Lead::pOn, &Lead::pOff, &Lead::qrsOn, &Lead::qrsOff, &Lead::tOff};
constexpr LeadField kLead[] = {&Lead::pOnMarker,    &Lead::pPrimeOnMarker, &Lead::pOffMarker,     &Lead::qOnMarker,
                               &Lead::rOnMarker,    &Lead::sOnMarker,      &Lead::rPrimeOnMarker, &Lead::sPrimeOnMarker,
                               &Lead::qrsOffMarker, &Lead::tOnMarker,      &Lead::tPrimeOnMarker, &Lead::tOffMarker};
constexpr std::uint16_t kP = KX_MANUAL_LEAD_P_ON | KX_MANUAL_LEAD_P_PRIME_ON | KX_MANUAL_LEAD_P_OFF;
constexpr std::uint16_t kT = KX_MANUAL_LEAD_T_ON | KX_MANUAL_LEAD_T_PRIME_ON | KX_MANUAL_LEAD_T_OFF;
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
        EXPECT_EQ(MeasureEpisode(episode.Get(), workspace), 1u);
        first = set;
    }
    void Update() { ASSERT_EQ(UpdateDetection(episode.Get(), workspace), 1u); }
    void ExpectFirstAgain() {
        Update();
        EXPECT_EQ(std::memcmp(&first, &set, sizeof set), 0);
    }

    Workspace workspace;
    Episode episode{SyntheticBeat{}};
    KxMeasurementSet& set = episode.Set();
    KxMeasurementSet first;
};

TEST_F(ManualMarkers, MoveTheirIntervals) {
    // The marker, by how much it is moved, and PR, P, QRS and QT in units of that.
    const std::tuple<std::size_t, int, std::array<int, 4>> rows[] = {{0, -12, {-1, -1, 0, 0}}, {1, 10, {0, 1, 0, 0}},
                                                                     {2, -9, {1, 0, -1, -1}},  {2, 14, {1, 0, -1, -1}},
                                                                     {3, -18, {0, 0, 1, 0}},   {4, 40, {0, 0, 0, 1}}};
    for (const auto& [marker, by, intervals] : rows) {
        SCOPED_TRACE(marker);
        const LeadField field = kGlobal[marker];
        const int placed = set.leads[0].*field + by;
        set.leads[0].*field = static_cast<std::uint16_t>(placed);
        set.leads[0].globalManualFlags = static_cast<std::uint16_t>(1 << marker);
        Update();
        EXPECT_TRUE(std::ranges::all_of(set.leads, [&](const Lead& lead) { return lead.*field == placed; }));
        const std::array<int, 4> moved = {set.prInterval - first.prInterval, set.pDuration - first.pDuration,
                                          set.qrsDuration - first.qrsDuration, set.qtInterval - first.qtInterval};
        for (std::size_t i = 0; i < moved.size(); ++i) {
            EXPECT_EQ(moved[i], intervals[i] * by) << i;
        }
        set.leads[0].globalManualFlags = 0;
        ExpectFirstAgain();
    }
}

// What is nobody's, the reviewer's flags and what the caller measured.
std::string Untouched(const KxMeasurementSet& set) {
    std::string bytes;
    const auto add = [&](const auto&... fields) { (bytes.append(reinterpret_cast<const char*>(&fields), sizeof fields), ...); };
    for (const Lead& lead : set.leads) {
        add(lead.markerFlags, lead.globalManualFlags, lead.reserved12, lead.reserved28, lead.reserved34, lead.reserved44, lead.reserved48);
        add(lead.reserved68, lead.fieldValue251, lead.fieldValue263, lead.fieldValue275);
    }
    add(set.rrInterval, set.reserved18, set.reserved32, set.reserved34, set.reserved38);
    return bytes;
}

// Any set of markers by hand, possible or not: they stay, and nothing outside the measurements changes.
TEST_F(ManualMarkers, StayWhateverTheyAre) {
    std::mt19937 random(77);
    const auto place = [&](Lead& lead, std::span<const LeadField> markers) {
        for (const LeadField field : markers) {
            const auto kind = random() % 8;
            lead.*field = static_cast<std::uint16_t>(kind == 0 ? 0 : kind == 1 ? 65535 - random() % 3 : random() % 1200);
        }
    };
    const auto expectKept = [](const Lead& is, const Lead& was, unsigned flags, std::span<const LeadField> markers) {
        for (std::size_t i = 0; i < markers.size(); ++i) {
            EXPECT_TRUE((flags >> i & 1) == 0 || is.*markers[i] == was.*markers[i]) << "marker " << i << " of " << markers.size();
        }
    };
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        for (Lead& lead : set.leads) {
            lead.globalManualFlags = static_cast<std::uint16_t>(random());
            lead.markerFlags = static_cast<std::uint16_t>(random() & random());
            place(lead, kGlobal);
            place(lead, kLead);
        }
        const auto before = std::make_unique<KxEpisodeRecord>(*episode.Get());
        const Lead* was = before->measurements.leads;
        Update();
        for (std::size_t code = 0; code < KX_MEASURED_LEADS; ++code) {
            expectKept(set.leads[code], was[0], was[0].globalManualFlags, kGlobal);
            expectKept(set.leads[code], was[code], was[code].markerFlags, kLead);
        }
        EXPECT_EQ(Untouched(set), Untouched(before->measurements));
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
    ExpectFirstAgain();

    struct Row {
        const char* name;
        std::uint16_t flags;
        std::vector<std::pair<LeadField, std::uint16_t>> markers;
        std::vector<std::int16_t Lead::*> absent, present;  // which values are 0 afterwards
    };
    const Row rows[] = {{"no P", kP, {{&Lead::pOnMarker, 0}, {&Lead::pOffMarker, 0}}, {&Lead::aP1, &Lead::aP2}, {&Lead::aR, &Lead::aT1}},
                        {"P' put in", KX_MANUAL_LEAD_P_PRIME_ON, {{&Lead::pPrimeOnMarker, 285}}, {}, {&Lead::aP1, &Lead::aP2}},
                        {"no T", kT, {{&Lead::tOnMarker, 0}, {&Lead::tOffMarker, 0}}, {&Lead::aT1, &Lead::aT2}, {&Lead::aR, &Lead::aP1}},
                        {"T put in", kT, {{&Lead::tOnMarker, 600}, {&Lead::tOffMarker, 650}}, {&Lead::aT2}, {&Lead::aT1}},
                        {"R ended at its peak", KX_MANUAL_LEAD_QRS_OFF, {{&Lead::qrsOffMarker, 450}}, {&Lead::aS}, {&Lead::aR}}};
    Lead& lead = set.leads[KX_LEAD_V4];
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        lead.pPrimeOnMarker = lead.tPrimeOnMarker = 0;
        for (const auto& [field, value] : row.markers) {
            lead.*field = value;
        }
        lead.markerFlags = row.flags;
        Update();
        for (const auto& [field, value] : row.markers) {
            EXPECT_EQ(lead.*field, value);
        }
        EXPECT_TRUE(std::ranges::all_of(row.absent, [&](auto amplitude) { return lead.*amplitude == 0; }));
        EXPECT_TRUE(std::ranges::all_of(row.present, [&](auto amplitude) { return lead.*amplitude != 0; }));
        EXPECT_EQ(std::memcmp(&first.leads[KX_LEAD_V5], &set.leads[KX_LEAD_V5], sizeof lead), 0);
        EXPECT_EQ(set.qtInterval, first.qtInterval);
        lead.markerFlags = 0;
        ExpectFirstAgain();
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
    const std::uint16_t found = lead.qrsOffMarker;
    const struct {
        int offset, rPrime, flags, kept;  // the places behind the one that was found, 0: no R'
    } rows[] = {{40, 0, kOnsets & ~KX_MANUAL_LEAD_Q_ON, 0}, {-6, 0, kOnsets, -6}, {-6, 12, kOnsets, 12}};  // R' put in behind it
    for (const auto& row : rows) {
        lead.qrsOffMarker = static_cast<std::uint16_t>(found + row.offset);
        lead.rPrimeOnMarker = static_cast<std::uint16_t>(row.rPrime == 0 ? 0 : found + row.rPrime);
        lead.markerFlags = static_cast<std::uint16_t>(row.flags);
        Update();
        EXPECT_EQ(lead.qrsOffMarker, found + row.kept);
    }
    lead.rPrimeOnMarker = lead.markerFlags = 0;
    ExpectFirstAgain();
}

// Components by hand, at every place and in every combination that the reviewer's rules allow: the amplitudes are those
// of the curve between the markers.
TEST_F(ManualMarkers, SetTheAmplitudesOfTheCurveBetweenThem) {
    constexpr std::int16_t Lead::*kAmplitudes[] = {&Lead::aQ, &Lead::aR, &Lead::aS, &Lead::aR1, &Lead::aS1};
    Lead& lead = set.leads[KX_LEAD_II];
    const std::int16_t* samples = episode.Lead(KX_LEAD_II);  // 2 ms apart; the level before the complex is 0
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        std::array<int, 6> places{};  // the five onsets and the offset
        int last = 396;
        for (std::size_t i = 0; i < 6; ++i) {
            places[i] = i < 5 && random() % 3 == 0 ? 0 : last += 6 + static_cast<int>(random() % 20);
            lead.*kLead[3 + i] = static_cast<std::uint16_t>(places[i]);
        }
        lead.markerFlags = kOnsets;
        Update();
        int next = places[5];
        for (std::size_t i = 5; i-- > 0;) {
            const int sign = i % 2 == 0 ? -1 : 1;
            int largest = 0;
            for (int k = (places[i] + 1) / 2; places[i] != 0 && 2 * k < next; ++k) {
                largest = std::max(largest, sign * samples[k]);
            }
            next = places[i] != 0 ? places[i] : next;
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
    ASSERT_TRUE(before.tPrimeOnMarker > before.tOnMarker && before.aT2 < -300);
    lead.tOffMarker = static_cast<std::uint16_t>(before.tPrimeOnMarker - 6);
    lead.markerFlags = KX_MANUAL_LEAD_T_OFF;
    Update();
    EXPECT_TRUE(lead.tPrimeOnMarker == 0 && lead.aT2 == 0 && lead.aT1 == before.aT1);
}

}  // namespace
}  // namespace kx::analysis
