// Which exchanged electrodes are remarked.
#include "host/recording/electrodes.h"

#include <gtest/gtest.h>

#include "host/recording/synthetic.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/unit/analyze/synthetic_beat.h"

namespace kx::recording {
namespace {

TEST(Electrodes, ThatAreExchangedAreRemarked) {
    // The limb leads that are recorded as I, II, III, aVR, aVL and aVF, upside down where negative (1 = I).
    const struct {
        const char* name;
        std::array<int, 6> leads;
        const char* remark;
    } rows[] = {{"in their places", {1, 2, 3, 4, 5, 6}, ""},
                {"arms", {-1, 3, 2, 5, 4, 6}, "left arm"},
                {"right arm and leg", {-3, -2, -1, 6, 5, 4}, "left leg"},
                {"left arm and leg, a record like another person's", {2, 1, -3, 4, 6, 5}, ""}};
    const auto find = [](const MedianBeat& beat, KxMeasurementSet set, int p2, int p3) {
        set.leads[1].aP1 = static_cast<std::int16_t>(p2);
        set.leads[2].aP1 = static_cast<std::int16_t>(p3);
        set.leads[2].aP2 = static_cast<std::int16_t>(-p3);
        return FindExchangedElectrodes(beat, set) != nullptr;
    };
    for (const auto& row : rows) {
        Recording recording = MakeSyntheticRecording();
        const auto right = recording.leads;
        for (std::size_t lead = 0; lead < row.leads.size(); ++lead) {
            recording.leads[lead] = right[static_cast<std::size_t>(std::abs(row.leads[lead])) - 1];
            for (float& value : recording.leads[lead]) {
                value = row.leads[lead] < 0 ? -value : value;
            }
        }
        std::string error;
        const auto beat = MakeMedianBeat(recording, error);
        ASSERT_TRUE(beat) << error;
        analysis::Episode episode({beat->leads.begin(), beat->leads.end()}, kWorkingRate, kResolutionNv);
        episode.Set().rrInterval = static_cast<std::uint16_t>(beat->rrMs);
        EXPECT_EQ(FindExchangedElectrodes(*beat, episode.Get()->measurements), nullptr) << row.name << ", not measured";
        ASSERT_EQ(analysis::MeasureEpisode(episode.Get()), 1u) << row.name;
        const char* remark = FindExchangedElectrodes(*beat, episode.Set());
        EXPECT_EQ(remark != nullptr, *row.remark != '\0') << row.name << ": " << (remark ? remark : "nothing");
        if (&row == rows) {
            const int p1 = episode.Set().leads[0].aP1;
            EXPECT_TRUE(find(*beat, episode.Set(), p1, -40)) << "left arm and leg, III ends upwards";
            EXPECT_FALSE(find(*beat, episode.Set(), p1, 40)) << "III ends downwards";
            EXPECT_FALSE(find(*beat, episode.Set(), p1 + 1, -40)) << "II is higher";
        }
        EXPECT_NE(std::string(remark ? remark : "").find(row.remark), std::string::npos) << row.name << ": " << remark;
    }
}

}  // namespace
}  // namespace kx::recording
