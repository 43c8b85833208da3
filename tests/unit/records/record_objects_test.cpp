// What a test record holds: its arrays, its history, its line in a list, and what is freed of it.
#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_list_entry.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"
#include "tests/unit/watched_memory.h"

namespace kx::test {
namespace {

const DateTime kTime(2013, 11, 5, 14, 5, 9);

bool Same(const KxDateTime& a, const KxDateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(TestRecord, ArraysFillUpAndRefuse) {
    TestRecord test;
    for (std::uint32_t i = 0; i < 256; ++i) {
        ASSERT_TRUE(test.AddStage(NewSubRecord<KxStressStage>()) && test.AddRawBlock(KxRawBlock{}));
        EpisodeRecord* episode = test.AddEpisode(3, 1, 1, 500, 1000);
        ASSERT_TRUE(episode != nullptr && test.Episode(i) == episode) << i;
    }
    for (int i = 0; i < 512; ++i) {
        ASSERT_TRUE(test.AddPressure(NewSubRecord<KxPressureReading>()));
    }
    EXPECT_FALSE(test.AddStage(NewSubRecord<KxStressStage>()) || test.AddRawBlock(KxRawBlock{}));
    EXPECT_FALSE(test.AddPressure(NewSubRecord<KxPressureReading>()));
    EXPECT_TRUE(test.AddEpisode(0, 12, 10, 500, 1000) == nullptr && test.AddEpisode(nullptr, 0) == nullptr);
    EXPECT_TRUE(test.Stage(255) != nullptr && test.RawBlock(255) != nullptr && test.Pressure(511) != nullptr);
    for (const int beyond : {512, -2}) {
        EXPECT_EQ(test.Stage(beyond), nullptr);
        EXPECT_EQ(test.Pressure(beyond), nullptr);
        EXPECT_EQ(test.RawBlock(beyond), nullptr);
        EXPECT_EQ(test.Episode(static_cast<std::uint32_t>(beyond)), nullptr);
    }
    EXPECT_EQ(test.EpisodeCount(), 256u);
    EXPECT_FALSE(test.IsModified());
    test.ReleaseEpisodes();
    EXPECT_EQ(test.EpisodeCount(), 0u);
    EXPECT_EQ(test.episodes[255], nullptr);
}

TEST(TestRecord, FindsTheLongestEpisodeBetweenTwoTimes) {
    // Episodes by their end (ms) and duration (s).
    const std::pair<std::uint32_t, std::uint32_t> episodes[] = {{10000, 10}, {20000, 4}, {40000, 10}, {41000, 60}, {90000, 30}};
    const struct {
        std::int64_t from, to;
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

TEST(TestRecord, KeepsSeriesByCode) {
    TestRecord test;
    for (const int code : {-8, 25, INT32_MAX, INT32_MIN}) {
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

TEST(History, TakesSixteenEntriesAndTellsTheLastChangeOnce) {
    TestRecord test;
    EXPECT_EQ(test.LastChangeTime().Year(), 0);
    EXPECT_FALSE(test.AddHistoryEntry(1, DateTime::None(), nullptr));
    for (std::uint32_t i = 0; i < 16; ++i) {
        EXPECT_TRUE(test.AddHistoryEntry(i, DateTime(2013, 11, 5, 14, 5, 59, 99), "a name of exactly forty characters......"));
    }
    EXPECT_FALSE(test.AddHistoryEntry(16, DateTime::None(), "x"));
    KxHistoryEntry& entry = test.history->entries[15];
    EXPECT_EQ(entry.millisecondsInMinute, 59990);
    EXPECT_EQ(entry.action, 15u);
    EXPECT_EQ(std::strlen(entry.user), 31u);
    EXPECT_FALSE(test.IsModified());
    entry.millisecondsInMinute = 59996;
    EXPECT_TRUE(Same(test.LastChangeTime(), DateTime(2013, 11, 5, 14, 5, 59, 100)));  // rounded up, not carried
    entry.year = 2014;
    EXPECT_EQ(test.LastChangeTime().Year(), 2013);
}

TEST(History, IsReadBackAsItWasStored) {
    History history;
    history.Add(2, kTime, "first");
    history.Add(3, kTime, "second");
    const std::vector<std::uint8_t> block = history.Serialize();
    ASSERT_EQ(block.size(), 8u + 88);
    History copy;
    ASSERT_TRUE(copy.Deserialize(block.data(), block.size()));
    EXPECT_EQ(copy.Serialize(), block);
    const struct {
        const char* what;
        std::uint32_t total, count;
        std::size_t size;
    } rows[] = {{"total of another count", 48, 2, block.size()},
                {"count of another total", 92, 1, block.size()},
                {"too many", 752, 17, 2000},
                {"cut", 92, 2, block.size() - 1},
                {"no header", 92, 2, 7},
                {"a count that wraps", 4, 0x5D1745D2, block.size()}};
    for (const auto& row : rows) {
        std::vector<std::uint8_t> broken = block;
        std::memcpy(&broken[0], &row.total, 4);
        std::memcpy(&broken[4], &row.count, 4);
        broken.resize(row.size);
        EXPECT_FALSE(copy.Deserialize(broken.data(), broken.size())) << row.what;
        EXPECT_EQ(copy.Serialize(), block) << row.what;
    }
    const std::uint8_t empty[] = {4, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_TRUE(copy.Deserialize(empty, sizeof empty) && !copy.Deserialize(nullptr, 100));
    EXPECT_EQ(copy.count, 0u);

    KxHistory bare{};  // a host's without entries
    bare.count = 3;
    History& none = History::Of(bare);
    EXPECT_FALSE(none.Add(2, kTime, "x") || none.HasAction(2) || none.Deserialize(empty, sizeof empty));
    EXPECT_TRUE(none.Serialize().empty());
    KxTestRecord test{};
    EXPECT_FALSE(TestRecord::Of(&test)->AddHistoryEntry(2, kTime, "x"));
    EXPECT_EQ(TestRecord::Of(&test)->LastChangeTime().Year(), 0);
}

TEST(TestListEntry, SumsUpATest) {
    TestRecord test;
    test.acquisitionTime = kTime;
    test.SetPatientId("A-1");
    test.SetPatientName("Anna", "Maria", "Rossi");
    std::memset(test.text6570, 'x', sizeof test.text6570);
    test.SetTestType(2);
    test.AddHistoryEntry(1, DateTime(2013, 12, 1), "x");
    const auto entry = std::make_unique<TestListEntry>(test);
    EXPECT_TRUE(Same(entry->acquisitionTime, kTime) && Same(entry->lastChangeTime, DateTime(2013, 12, 1)) && entry->testType == 2);
    EXPECT_EQ(std::strlen(entry->text6570), 503u);
    char text[40];
    entry->SortName(text, sizeof text);
    EXPECT_EQ(std::string(entry->patientId) + ", " + text, "A-1, Rossi, Anna Maria");
    EXPECT_TRUE(entry->AcquisitionText(text, sizeof text, Italian()) && !entry->AcquisitionText(text, 5, Italian()));
    EXPECT_STREQ(text, "05/11/2013, 14:05");
    for (const auto& [state, flags] : {std::pair{0, 0u}, {1, 1u}, {2, 2u}, {3, 4u}, {9, 0u}}) {
        test.reportState = static_cast<std::uint8_t>(state);
        EXPECT_EQ(std::make_unique<TestListEntry>(test)->stateFlags, flags) << state;
    }
    const std::pair<const char*, std::uint32_t> flagTexts[] = {{"1", 1}, {"8x", 8}, {"0", 0}, {"9", 0}, {"", 0}, {"x", 0}, {nullptr, 0}};
    for (const auto& [typed, flags] : flagTexts) {
        entry->stateFlags = 77;
        entry->SetStateFlags(typed);
        EXPECT_EQ(entry->stateFlags, flags) << flags;
    }
}

TEST(TestListEntry, IsComparedToTheSecond) {
    const auto entry = std::make_unique<TestListEntry>();
    std::strcpy(entry->patientId, "A");
    entry->acquisitionTime = entry->lastChangeTime = DateTime(2013, 11, 5, 14, 5, 9, 50);
    const struct {
        const char* id;
        DateTime time;
        bool same, newer;
    } rows[] = {
        {"A", {2013, 11, 5, 14, 5, 9, 99}, true, false}, {"B", {2013, 11, 5, 14, 5, 9}, false, false}, {"A", {2012, 12, 31}, false, true},
        {"A", {2013, 11, 5, 14, 5, 8}, false, true},     {"A", {2013, 11, 5, 14, 6, 0}, false, false}, {"A", {2013, 11, 6}, false, false},
        {"A", {2013, 10, 31, 23, 59, 59}, false, true}};
    for (const auto& row : rows) {
        const auto other = std::make_unique<TestListEntry>();
        std::strcpy(other->patientId, row.id);
        other->acquisitionTime = other->lastChangeTime = row.time;
        EXPECT_EQ(entry->SameTest(other.get()), row.same) << row.id << ' ' << row.time.Month();
        EXPECT_EQ(entry->IsNewerThan(other.get()), row.newer) << row.id << ' ' << row.time.Month();
    }
    EXPECT_FALSE(entry->SameTest(nullptr) || entry->IsNewerThan(nullptr));
}

TEST(Ownership, ARecordMadeHereFreesItsObjectsInOrder) {
    auto* test = new TestRecord;
    const std::uint8_t bytes[300] = {};
    test->SetBuffer7584(bytes, sizeof bytes);
    test->CreateAnnotations(3);
    test->CreateAnnotations2(3, true);
    test->SetEcg(bytes, sizeof bytes);
    test->SetObject7600({});
    test->SetObject7604({});
    test->SetSpirometry(NewSubRecord<KxSpirometry>());
    test->SetHolterSummary(NewSubRecord<KxHolterSummary>());
    test->SetHolterData(NewSubRecord<KxHolterData>());
    test->SetPressureSummary(NewSubRecord<KxPressureReading>());
    test->SetSeries9796(std::make_unique<ValueSeries>());
    for (int i = 0; i < 2; ++i) {
        test->AddRawBlock(KxRawBlock{});
        test->AddPressure(NewSubRecord<KxPressureReading>());
        test->AddStage(NewSubRecord<KxStressStage>());
        test->SetSeries(i, std::make_unique<ValueSeries>());
        test->AddEpisode(0, 12, 10, 500, 1000);
    }
    const KxTestRecord& t = *test;
    std::vector<const void*> expected;
    const auto then = [&expected](const auto*... objects) { (expected.push_back(objects), ...); };
    then(t.buffer7584, t.history->entries, t.history, t.spirometry, t.holterSummary, t.holterData, t.rawBlocks[1], t.rawBlocks[0]);
    then(t.pressureSummary, t.pressures[1], t.pressures[0], t.currentStage, t.stages[1], t.stages[0], t.series9796, t.series[7],
         t.series[8]);
    then(t.episodes[1]->samples, t.episodes[1], t.episodes[0]->samples, t.episodes[0], t.object7604, t.object7600);
    then(t.annotations, t.annotations2, t.ecg, test);
    WatchFreedMemory();
    delete test;
    std::vector<void*> addresses = FreedWhileWatching();
    // What the annotation stores free by themselves lies between.
    std::erase_if(addresses, [&](void* address) { return std::ranges::find(expected, address) == expected.end(); });
    EXPECT_THAT(addresses, testing::ElementsAreArray(expected));
}

}  // namespace
}  // namespace kx::test
