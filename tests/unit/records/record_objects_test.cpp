// What a test record holds: its arrays, its history, its line in a list, and what is freed of it.
#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_list_entry.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/picture_locale.h"

namespace kx::test {
namespace {

bool Same(const KxDateTime& a, const KxDateTime& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

TEST(TestRecord, ArraysFillUpAndRefuse) {
    TestRecord test;
    for (std::uint32_t i = 0; i < 256; ++i) {
        ASSERT_TRUE(test.AddStage(NewSubRecord<KxStressStage>()) && test.AddRawBlock(KxRawBlock{}));
        ASSERT_TRUE(test.AddPressure(NewSubRecord<KxPressureReading>()) && test.AddPressure(NewSubRecord<KxPressureReading>()));
        EpisodeRecord* episode = test.AddEpisode(3, 1, 1, 500, 1000);
        ASSERT_TRUE(episode != nullptr && test.Episode(i) == episode) << i;
    }
    EXPECT_FALSE(test.AddStage(NewSubRecord<KxStressStage>()) || test.AddRawBlock(KxRawBlock{}));
    EXPECT_FALSE(test.AddPressure(NewSubRecord<KxPressureReading>()));
    EXPECT_TRUE(test.AddEpisode(0, 12, 10, 500, 1000) == nullptr && test.AddEpisode(nullptr, 0) == nullptr);
    EXPECT_TRUE(test.Stage(255) != nullptr && test.RawBlock(255) != nullptr && test.Pressure(511) != nullptr);
    EXPECT_TRUE(test.Stage(256) == nullptr && test.RawBlock(256) == nullptr && test.Pressure(512) == nullptr);
}

TEST(TestRecord, KeepsSeriesByCode) {
    TestRecord test;
    for (const int code : {-8, 25, INT32_MAX, INT32_MIN}) {
        EXPECT_TRUE(!test.SetSeries(code, std::make_unique<ValueSeries>()) && test.Series(code) == nullptr) << code;
    }
    EXPECT_TRUE(test.SetSeries(24, std::make_unique<ValueSeries>()));
    const std::vector<KxSeriesPoint> points(KX_SERIES_POINTS + 1);
    for (const auto& [given, taken] : {std::pair{0u, 0u}, {1u, 1u}, {KX_SERIES_POINTS, KX_SERIES_POINTS}, {KX_SERIES_POINTS + 1, 0u}}) {
        const ValueSeries series(std::span<const KxSeriesPoint>(points).first(given));
        EXPECT_TRUE(series.count == taken && (series.points != nullptr) == (taken != 0)) << given;
    }
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
    EXPECT_TRUE(entry.millisecondsInMinute == 59990 && entry.action == 15 && std::strlen(entry.user) == 31);
    EXPECT_FALSE(test.IsModified());
    entry.millisecondsInMinute = 59996;
    EXPECT_TRUE(Same(test.LastChangeTime(), DateTime(2013, 11, 5, 14, 5, 59, 100)));  // rounded up, not carried
    entry.year = 2014;
    EXPECT_EQ(test.LastChangeTime().Year(), 2013);
}

TEST(TestListEntry, SumsUpATest) {
    TestRecord test;
    test.acquisitionTime = DateTime(2013, 11, 5, 14, 5, 9, 50);
    test.SetPatientId("A-1");
    test.SetPatientName("Anna", "Maria", "Rossi");
    test.SetTestType(2);
    test.AddHistoryEntry(1, DateTime(2013, 12, 1), "x");
    const auto entry = std::make_unique<TestListEntry>(test);
    EXPECT_TRUE(Same(entry->acquisitionTime, test.acquisitionTime) && Same(entry->lastChangeTime, DateTime(2013, 12, 1)));
    char text[40];
    entry->SortName(text, sizeof text);
    EXPECT_EQ(std::string(entry->patientId) + ", " + text + std::to_string(entry->testType), "A-1, Rossi, Anna Maria2");
    EXPECT_TRUE(entry->AcquisitionText(text, sizeof text, Italian()) && !entry->AcquisitionText(text, 5, Italian()));
    for (const auto& [state, flags] : {std::pair{0, 0u}, {1, 1u}, {2, 2u}, {3, 4u}, {9, 0u}}) {
        test.reportState = static_cast<std::uint8_t>(state);
        EXPECT_EQ(std::make_unique<TestListEntry>(test)->stateFlags, flags) << state;
    }
}

}  // namespace
}  // namespace kx::test
