// What the measurement promises on recordings that cardiologists have marked, and that every collection is
// read.
#include <gtest/gtest.h>

#include <cmath>

#include "host/recording/median_beat.h"
#include "host/recording/wfdb_reader.h"
#include "tests/evaluation/judge.h"

namespace kx::evaluation {
namespace {

void ExpectReached(const char* scope, std::size_t boundary, const Errors& errors) {
    if (kLargestDeviation[boundary] == 0) {
        return;
    }
    EXPECT_GT(errors.values.size(), 60u) << scope << ", " << kBoundaryNames[boundary];
    EXPECT_LE(std::fabs(errors.Mean()), kLargestMean) << scope << ", " << kBoundaryNames[boundary];
    EXPECT_LE(errors.Deviation(), kLargestDeviation[boundary]) << scope << ", " << kBoundaryNames[boundary];
}

TEST(RealRecords, AreMeasuredAsCardiologistsMarkThem) {
    std::string error;
    const auto records = JudgeRecords(KX_RECORDS_DIR "/ludb", error);
    ASSERT_TRUE(records) << error;
    const auto sinus = SinusRecords(*records);
    int inventedP = 0, missedP = 0;
    for (std::size_t i = 0; i < kBoundaries; ++i) {
        Errors global, widest, leads;
        for (const RecordErrors* record : sinus) {
            Append(global, record->global[i]);
            Append(widest, record->widestOfBeats[i]);
            for (const auto& lead : record->leads) {
                Append(leads, lead[i]);
            }
        }
        ExpectReached("all leads", i, global);
        ExpectReached("by beat", i, widest);
        ExpectReached("each lead", i, leads);
        if (i == kQrsOn || i == kQrsOff || i == kTOff) {
            EXPECT_EQ(global.missed, 0) << kBoundaryNames[i];
        }
        missedP += i == kPOn ? global.missed : 0;
    }
    // Fibrillation, flutter and pacing have no P wave.
    for (const RecordErrors& record : *records) {
        inventedP += record.global[kPOn].invented;
    }
    EXPECT_LE(missedP, 1);
    EXPECT_EQ(inventedP, 0);
}

TEST(RealRecords, OfEveryCollectionAreRead) {
    struct Row {
        const char* path;
        double rate;
        std::size_t samples;
        int age;
        std::size_t beats;  // at least
    };
    constexpr Row kRows[] = {{"/ludb/1", 500, 5000, 51, 6},
                             {"/ptb/s0010_re", 1000, 38400, 81, 40},
                             {"/ptbxl/00001_lr.hea", 100, 1000, -1, 8},
                             {"/chapman/JS00001", 500, 5000, 85, 8}};
    for (const Row& row : kRows) {
        std::string error;
        const auto recording = recording::ReadWfdbAt(std::string(KX_RECORDS_DIR) + row.path, {}, error);
        ASSERT_TRUE(recording) << error;
        EXPECT_EQ(recording->sampleRate, row.rate) << row.path;
        EXPECT_EQ(recording->SampleCount(), row.samples) << row.path;
        EXPECT_EQ(recording->ageYears, row.age) << row.path;
        const auto beat = recording::MakeMedianBeat(*recording, error);
        ASSERT_TRUE(beat) << row.path << ": " << error;
        EXPECT_GE(beat->KeptCount(), row.beats) << row.path;
    }
}

}  // namespace
}  // namespace kx::evaluation
