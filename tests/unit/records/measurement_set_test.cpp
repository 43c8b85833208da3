#include "lib/dbclient/measurement_set.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

#include "lib/dbclient/episode_record.h"

namespace kx {
namespace {

std::vector<std::uint8_t> Bytes(const KxMeasurementSet& set) {
    std::vector<std::uint8_t> bytes(sizeof set);
    std::memcpy(bytes.data(), &set, sizeof set);
    return bytes;
}

// Places at which two sets differ, as offsets from their start.
std::set<std::size_t> Differences(const KxMeasurementSet& a, const KxMeasurementSet& b) {
    const auto left = Bytes(a);
    const auto right = Bytes(b);
    std::set<std::size_t> places;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (left[i] != right[i]) {
            places.insert(i);
        }
    }
    return places;
}

std::size_t LeadOffset(int lead, std::size_t inBlock) { return 42 + 122 * static_cast<std::size_t>(lead) + inBlock; }

TEST(MeasurementSet, IsClearedToItsSize) {
    MeasurementSet set;
    std::memset(static_cast<KxMeasurementSet*>(&set), 0xFF, sizeof set);
    EXPECT_NE(set.IsMeasured(), 0u);
    set.Clear();
    std::vector<std::uint8_t> expected(1872);
    expected[0] = 0x50;
    expected[1] = 0x07;
    EXPECT_EQ(Bytes(set), expected);
    EXPECT_EQ(Bytes(MeasurementSet()), expected);
}

struct Marker {
    std::size_t offset;
    std::uint16_t flag;
    std::uint32_t (MeasurementSet::*read)(int) const;
    void (MeasurementSet::*write)(int, std::uint16_t);
    bool (MeasurementSet::*isManual)(int) const;
    void (MeasurementSet::*setManual)(int, bool);
};

#define KX_MARKER(offset, flag, name)                                                                                                     \
    {                                                                                                                                     \
        offset, flag, &MeasurementSet::Lead##name##Marker, &MeasurementSet::SetLead##name##Marker, &MeasurementSet::IsLead##name##Manual, \
            &MeasurementSet::SetLead##name##Manual                                                                                        \
    }
constexpr Marker kMarkers[] = {
    KX_MARKER(84, 0x001, POn),     KX_MARKER(86, 0x002, PPrimeOn), KX_MARKER(88, 0x004, POff),     KX_MARKER(90, 0x008, QOn),
    KX_MARKER(92, 0x010, ROn),     KX_MARKER(94, 0x020, SOn),      KX_MARKER(96, 0x040, RPrimeOn), KX_MARKER(98, 0x080, SPrimeOn),
    KX_MARKER(100, 0x100, QrsOff), KX_MARKER(62, 0x200, TOn),      KX_MARKER(64, 0x400, TPrimeOn), KX_MARKER(66, 0x800, TOff),
};

TEST(MeasurementSet, MarkersAndTheirFlagsChangeNothingElse) {
    for (const Marker& marker : kMarkers) {
        for (const int lead : {0, 7, 14}) {
            MeasurementSet set;
            set.leads[lead].markerFlags = 0xF000;
            const MeasurementSet before = set;
            (set.*marker.write)(lead, 0xFFFF);
            EXPECT_EQ((set.*marker.read)(lead), 0xFFFFu) << marker.offset;
            EXPECT_EQ(Differences(set, before),
                      (std::set<std::size_t>{LeadOffset(lead, marker.offset), LeadOffset(lead, marker.offset + 1)}));
            set = before;
            EXPECT_FALSE((set.*marker.isManual)(lead)) << marker.flag;
            (set.*marker.setManual)(lead, true);
            EXPECT_TRUE((set.*marker.isManual)(lead)) << marker.flag;
            EXPECT_EQ(set.leads[lead].markerFlags, 0xF000 | marker.flag);
            set.leads[lead].markerFlags = 0xFFFF;
            (set.*marker.setManual)(lead, false);
            EXPECT_EQ(set.leads[lead].markerFlags, 0xFFFF & ~marker.flag) << marker.flag;
        }
    }
}

TEST(MeasurementSet, GlobalPointsAndTheirFlagsAreThoseOfBlockZero) {
    using Set = MeasurementSet;
    const struct {
        std::size_t offset;
        std::uint16_t flag;
        void (Set::*write)(std::uint16_t);
        bool (Set::*isManual)() const;
        void (Set::*setManual)(bool);
    } points[] = {
        {50, 0x01, &Set::SetPOn, &Set::IsPOnManual, &Set::SetPOnManual},
        {80, 0x02, &Set::SetPOff, &Set::IsPOffManual, &Set::SetPOffManual},
        {82, 0x04, &Set::SetQrsOn, &Set::IsQrsOnManual, &Set::SetQrsOnManual},
        {84, 0x08, &Set::SetQrsOff, &Set::IsQrsOffManual, &Set::SetQrsOffManual},
        {88, 0x10, &Set::SetTOff, &Set::IsTOffManual, &Set::SetTOffManual},
    };
    for (const auto& point : points) {
        MeasurementSet set;
        (set.*point.write)(0xFFFF);
        EXPECT_EQ(Differences(set, MeasurementSet()), (std::set<std::size_t>{point.offset, point.offset + 1}));
        set.leads[0].globalManualFlags = 0xFFE0;
        (set.*point.setManual)(true);
        EXPECT_TRUE((set.*point.isManual)());
        EXPECT_EQ(set.leads[0].globalManualFlags, 0xFFE0 | point.flag);
        (set.*point.setManual)(false);
        EXPECT_EQ(set.leads[0].globalManualFlags, 0xFFE0);
    }
}

TEST(MeasurementSet, HeartRateFollowsTheRrInterval) {
    const std::pair<int, int> rows[] = {{800, 75}, {0, 0}, {7, 8571}, {1000, 60}, {65535, 1}, {1, 60000}, {16000, 4}};
    for (const auto& [rr, rate] : rows) {
        MeasurementSet set;
        set.rrInterval = static_cast<std::uint16_t>(rr);
        EXPECT_EQ(set.HeartRate(), rate) << rr;
    }
}

TEST(MeasurementSet, StLevelsAreReadAtTheNearestTime) {
    MeasurementSet set;
    for (int k = 0; k < KX_ST_LEVELS; ++k) {
        set.leads[5].stLevel[k] = static_cast<std::int16_t>(-100 * (k + 1));
    }
    const std::pair<std::int32_t, std::int32_t> rows[] = {
        {0, -100}, {4, -100},  {5, -200}, {14, -200}, {15, -300},      {94, -1000},
        {95, 0},   {-4, -100}, {-5, 0},   {100, 0},   {2147483647, 0}, {-2147483647 - 1, 0},
    };
    for (const auto& [ms, level] : rows) {
        EXPECT_EQ(set.LeadStLevel(5, ms), level) << ms;
    }
    EXPECT_EQ(set.LeadStSlope(5, 80), -10000);  // -800 microvolts in 80 ms
    set.leads[5].stLevel[6] = -99;
    EXPECT_EQ(set.LeadStSlope(5, 60), 17);  // 1 microvolt in 60 ms
}

}  // namespace
}  // namespace kx
