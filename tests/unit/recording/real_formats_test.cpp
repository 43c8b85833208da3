// One ECG in three formats.
#include "host/recording/median_beat.h"
#include "host/recording/open_recording.h"
#include "host/recording/test_builder.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxanalyze/delineator.h"

namespace kx::recording {
namespace {

TEST(RealFormats, HoldTheSameSamplesAndAreMeasuredTheSame) {
    std::vector<Recording> recordings;
    std::vector<KxMeasurementSet> measured;
    for (const char* name : {"Example.xml", "Example.scp", "Example.dcm"}) {
        std::string error;
        auto recording = OpenRecording(std::string(KX_RECORDS_DIR "/formats/") + name, {}, error);
        ASSERT_TRUE(recording) << error;
        const auto beat = MakeMedianBeat(*recording, error);
        ASSERT_TRUE(beat) << error;
        TestRecord test;
        EpisodeRecord* episode = FillTestRecord(test, *recording, *beat);
        EXPECT_NE(analysis::MeasureEpisode(episode), 0u);
        EXPECT_STREQ(test.patientId, "SBJ-123");
        EXPECT_STREQ(test.patientName, "Clark^^^");
        EXPECT_EQ(test.birthDate.year, 1953);
        EXPECT_EQ(test.acquisitionTime.year, 2002);
        EXPECT_EQ(test.sex, KX_SEX_MALE);
        recordings.push_back(std::move(*recording));
        measured.push_back(episode->measurements);
    }
    for (const std::size_t other : {1u, 2u}) {
        EXPECT_EQ(recordings[other].leads, recordings[0].leads);
        EXPECT_EQ(std::memcmp(&measured[other], &measured[0], sizeof measured[0]), 0);
    }
}

}  // namespace
}  // namespace kx::recording
