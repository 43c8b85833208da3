// The interpretation of marked recordings, against what the cardiologists wrote of them.
#include <gtest/gtest.h>

#include <string>

#include "host/recording/median_beat.h"
#include "host/recording/test_builder.h"
#include "host/recording/wfdb/wfdb_reader.h"
#include "lib/dbclient/test_record.h"
#include "suite/kxanalyze/delineator.h"
#include "tests/unit/suite/ecg_cases.h"

namespace {

std::set<int> CodesOfRecord(const std::string& record) {
    kx::recording::ReadOptions options;
    // These recordings state no scale: one unit is one microvolt.
    if (record.starts_with("ludb/")) {
        options.unitsPerMv = 1000;
    }
    std::string error;
    const auto recording = kx::recording::ReadWfdb(std::string(KX_RECORDS_DIR "/") + record, options, error);
    EXPECT_TRUE(recording) << error;
    const auto beat = kx::recording::MakeMedianBeat(*recording, error);
    EXPECT_TRUE(beat) << error;
    kx::TestRecord test;
    kx::EpisodeRecord* episode = kx::recording::FillTestRecord(test, *recording, *beat);
    EXPECT_NE(nullptr, episode);
    EXPECT_NE(0u, kx::analysis::MeasureEpisode(episode));
    return kx::test::CodesOf(episode->measurements, test.Annotations());
}

bool HasOneOf(const std::set<int>& codes, std::initializer_list<int> wanted) {
    return std::any_of(wanted.begin(), wanted.end(), [&codes](int code) { return codes.contains(code); });
}

TEST(InterpreterOnRecords, CallsNoEcgAbnormalThatHasNothingButSinusRhythm) {
    for (const char* record : {"56", "62", "142", "152", "157", "161", "162", "166", "177", "187"}) {
        const std::set<int> codes = CodesOfRecord(std::string("ludb/") + record);
        EXPECT_TRUE(codes.contains(30036)) << record;
        EXPECT_FALSE(codes.contains(30134)) << record << ": " << testing::PrintToString(codes);
    }
}

TEST(InterpreterOnRecords, FindsWhatTheReadersFound) {
    struct Row {
        const char* record;
        const char* finding;
        std::initializer_list<int> codes;
    };
    for (const Row& row :
         {Row{"ludb/51", "atrial fibrillation", {30008}}, Row{"ludb/96", "atrial fibrillation", {30008}},
          Row{"ludb/101", "atrial fibrillation", {30008}}, Row{"ludb/112", "atrial fibrillation", {30008}},
          Row{"chapman/JS00001", "atrial fibrillation", {30009}},
          Row{"ludb/77", "first-degree AV block", {30042}}, Row{"ludb/107", "first-degree AV block", {30042}},
          Row{"ludb/131", "first-degree AV block", {30042}},
          Row{"ludb/51", "left bundle branch block", {30055}},
          Row{"chapman/JS00001", "right bundle branch block", {30053}},
          Row{"ludb/7", "anterior infarction", {30088, 30089}},
          Row{"ludb/21", "anterior infarction", {30088, 30089}},
          Row{"ludb/82", "inferior infarction", {30091, 30092}},
          Row{"ptb/s0010_re", "inferolateral infarction", {30092}},
          Row{"ludb/106", "ventricular extrasystole", {30019, 30020}},
          Row{"ludb/132", "atrial extrasystole", {30017, 30018}},
          Row{"ludb/1", "sinus bradycardia", {30006}}}) {
        const std::set<int> codes = CodesOfRecord(row.record);
        EXPECT_TRUE(HasOneOf(codes, row.codes))
            << row.record << ", " << row.finding << ": " << testing::PrintToString(codes);
    }
}

}  // namespace
