#include "lib/dbclient/test_record.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "lib/dbclient/sub_records.h"

namespace kx {
namespace {

TEST(TestRecord, StartsEmpty) {
    const TestRecord test;
    KxTestRecord expected{};
    expected.testType = 1;
    expected.history = test.history;
    expected.currentStage = test.currentStage;
    EXPECT_EQ(std::memcmp(static_cast<const KxTestRecord*>(&test), &expected, sizeof expected), 0);
    ASSERT_NE(test.history, nullptr);
    EXPECT_EQ(test.history->count, 0u);
    EXPECT_NE(test.Stage(-1), nullptr);
    EXPECT_EQ(test.Episode(0), nullptr);
}

TEST(TestRecord, HoldsUpTo256Episodes) {
    TestRecord test;
    for (std::uint32_t i = 0; i < 256; ++i) {
        EpisodeRecord* episode = test.AddEpisode(3, 1, 1, 500, 1000);
        ASSERT_NE(episode, nullptr) << i;
        EXPECT_EQ(test.Episode(i), episode);
    }
    EXPECT_EQ(test.AddEpisode(0, 12, 10, 500, 1000), nullptr);
    EXPECT_EQ(test.AddEpisode(nullptr, 0), nullptr);
    EXPECT_EQ(test.EpisodeCount(), 256u);
    EXPECT_EQ(test.Episode(256), nullptr);
    EXPECT_EQ(test.Episode(0xFFFFFFFFu), nullptr);
    EXPECT_FALSE(test.IsModified());
    test.ReleaseEpisodes();
    EXPECT_EQ(test.EpisodeCount(), 0u);
    EXPECT_EQ(test.Episode(0), nullptr);
    EXPECT_EQ(test.episodes[255], nullptr);
}

TEST(TestRecord, FindsTheLongestEpisodeBetweenTwoTimes) {
    // Episodes by their end (ms) and duration (s).
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> episodes = {{10000, 10}, {20000, 4}, {40000, 10}, {41000, 60}, {90000, 30}};
    const struct {
        std::int64_t from;
        std::int64_t to;
        int expected;  // -1: none
    } rows[] = {
        {0, 10000, 0},      {5000, 15000, 0},  // 5 s; the second starts behind the end: -1 s
        {9999, 20000, 1},                      // 0 s, then 4 s, then -10 s ends the search
        {10000, 40000, 3},                     // 4 s, 10 s, 30 s; the last does not improve
        {16500, 20500, 1},                     // 3 s (cut down from 3.5), then negative
        {20000, 40000, 3},                     // 10 s, then 20 s
        {41000, 100000, 4}, {90000, 100000, -1},
        {-5000, 1000, 0},   {0, 4294967296, 0},  // 10 s; the second is not better, and the search ends there
    };
    TestRecord test;
    for (const auto& [end, duration] : episodes) {
        EpisodeRecord* episode = test.AddEpisode(3, 1, 1, 500, 1000);
        episode->SetEndTimeMs(end);
        episode->durationSeconds = duration;
    }
    for (const auto& row : rows) {
        const EpisodeRecord* expected = row.expected < 0 ? nullptr : test.Episode(static_cast<std::uint32_t>(row.expected));
        EXPECT_EQ(test.LongestEpisodeBetween(row.from, row.to), expected) << row.from << " to " << row.to;
    }
}

TEST(TestRecord, ArraysFillUpAndRefuse) {
    TestRecord test;
    for (int i = 0; i < 256; ++i) {
        ASSERT_TRUE(test.AddStage(NewSubRecord<KxStressStage>()));
        ASSERT_TRUE(test.AddRawBlock(KxRawBlock{}));
    }
    for (int i = 0; i < 512; ++i) {
        ASSERT_TRUE(test.AddPressure(NewSubRecord<KxPressureReading>()));
    }
    EXPECT_FALSE(test.AddStage(NewSubRecord<KxStressStage>()));
    EXPECT_FALSE(test.AddRawBlock(KxRawBlock{}));
    EXPECT_FALSE(test.AddPressure(NewSubRecord<KxPressureReading>()));
    EXPECT_EQ(test.Stage(256), nullptr);
    EXPECT_EQ(test.Stage(-2), nullptr);
    EXPECT_NE(test.Stage(255), nullptr);
    EXPECT_EQ(test.Pressure(-1), nullptr);
    EXPECT_EQ(test.RawBlock(256), nullptr);
    EXPECT_NE(test.RawBlock(255), nullptr);
}

TEST(TestRecord, KeepsSeriesByCode) {
    TestRecord test;
    for (const int code : {-8, 25, 2147483647, -2147483647 - 1}) {
        EXPECT_FALSE(test.SetSeries(code, std::make_unique<ValueSeries>())) << code;
        EXPECT_EQ(test.Series(code), nullptr) << code;
    }
    const std::vector<KxSeriesPoint> points = {{10, 5}, {20, 6}};
    EXPECT_TRUE(test.SetSeries(-7, std::make_unique<ValueSeries>(points)));
    EXPECT_TRUE(test.SetSeries(24, std::make_unique<ValueSeries>()));
    EXPECT_EQ(ValueAt(test.Series(-7), 9), std::nullopt);
    EXPECT_EQ(ValueAt(test.Series(-7), 19), 5);
    EXPECT_EQ(ValueAt(test.Series(-7), 4000000000u), 6);
}

TEST(History, TakesSixteenEntries) {
    TestRecord test;
    for (std::uint32_t i = 0; i < 16; ++i) {
        EXPECT_TRUE(test.AddHistoryEntry(i, DateTime(2013, 11, 5, 14, 5, 59, 99), "Dr. Bianchi"));
    }
    EXPECT_FALSE(test.AddHistoryEntry(16, DateTime::None(), "x"));
    const KxHistoryEntry& entry = test.history->entries[15];
    EXPECT_EQ(entry.millisecondsInMinute, 59990);
    EXPECT_EQ(entry.action, 15u);
    EXPECT_STREQ(entry.user, "Dr. Bianchi");
    EXPECT_FALSE(test.IsModified());

    History other;
    EXPECT_FALSE(other.Add(1, DateTime::None(), nullptr));
    EXPECT_TRUE(other.Add(1, DateTime::None(), "a name of exactly forty characters......"));
    EXPECT_EQ(std::strlen(other.entries[0].user), 31u);
}

TEST(History, IsReadBackAsItWasStored) {
    History history;
    history.Add(2, DateTime(2013, 11, 5, 14, 5), "first");
    history.Add(3, DateTime(2013, 11, 5, 14, 6), "second");
    const std::vector<std::uint8_t> block = history.Serialize();
    ASSERT_EQ(block.size(), 8u + 88);
    EXPECT_EQ(block[0], 92);
    EXPECT_EQ(block[4], 2);
    History copy;
    ASSERT_TRUE(copy.Deserialize(block.data(), block.size()));
    EXPECT_EQ(copy.Serialize(), block);

    const struct {
        const char* what;
        std::uint32_t total;
        std::uint32_t count;
        std::size_t size;
    } rows[] = {
        {"total of another count", 48, 2, block.size()}, {"count of another total", 92, 1, block.size()},
        {"17 entries", 17 * 44 + 4, 17, block.size()},   {"a count whose size wraps", 4, 0x80000000u, block.size()},
        {"bytes missing", 92, 2, block.size() - 1},      {"no room for the count", 92, 2, 7},
    };
    for (const auto& row : rows) {
        std::vector<std::uint8_t> broken = block;
        std::memcpy(&broken[0], &row.total, 4);
        std::memcpy(&broken[4], &row.count, 4);
        broken.resize(row.size);
        EXPECT_FALSE(copy.Deserialize(broken.data(), broken.size())) << row.what;
        EXPECT_EQ(copy.Serialize(), block) << row.what;
    }
    EXPECT_FALSE(copy.Deserialize(nullptr, 100));
    const std::uint8_t empty[] = {4, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_TRUE(copy.Deserialize(empty, sizeof empty));
    EXPECT_EQ(copy.count, 0u);
}

TEST(History, WithoutBufferDoesNothing) {
    KxHistory bare{};
    bare.count = 3;
    History& history = History::Of(bare);
    EXPECT_FALSE(history.Add(2, DateTime::None(), "x"));
    EXPECT_FALSE(history.HasAction(2));
    EXPECT_TRUE(history.Serialize().empty());
    const std::uint8_t empty[] = {4, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_FALSE(history.Deserialize(empty, sizeof empty));
    KxTestRecord test{};
    EXPECT_FALSE(TestRecord::Of(&test)->AddHistoryEntry(2, DateTime::None(), "x"));
    EXPECT_EQ(TestRecord::Of(&test)->LastChangeTime().Year(), 0);
}

TEST(TestRecord, TakesItsLastChangeFromTheHistoryOnce) {
    TestRecord test;
    EXPECT_EQ(test.LastChangeTime().Year(), 0);
    test.AddHistoryEntry(1, DateTime(2012, 1, 1), "first");
    test.AddHistoryEntry(1, DateTime(2013, 11, 5, 14, 5, 59, 0), "last");
    test.history->entries[1].millisecondsInMinute = 59996;
    const DateTime time = test.LastChangeTime();
    EXPECT_EQ(time.MillisecondsSince(DateTime(2013, 11, 5, 14, 5, 59)), 1000);
    EXPECT_EQ(time.hundredths, 100);  // rounded up, not carried
    test.AddHistoryEntry(1, DateTime(2014, 1, 1), "later");
    EXPECT_EQ(test.LastChangeTime().Year(), 2013);
}

}  // namespace
}  // namespace kx
