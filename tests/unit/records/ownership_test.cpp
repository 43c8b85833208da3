// What a test record made here frees, and in which order; what it frees of a host's record: nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"
#include "tests/unit/watched_memory.h"

namespace kx {
namespace {

using test::FreedWhileWatching;
using test::WatchFreedMemory;

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
    const std::vector<void*> expected = {test->buffer7584,
                                         test->history->entries,
                                         test->history,
                                         test->spirometry,
                                         test->holterSummary,
                                         test->holterData,
                                         test->rawBlocks[1],
                                         test->rawBlocks[0],
                                         test->pressureSummary,
                                         test->pressures[1],
                                         test->pressures[0],
                                         test->currentStage,
                                         test->stages[1],
                                         test->stages[0],
                                         test->series9796,
                                         test->series[7],
                                         test->series[8],
                                         test->episodes[1]->samples,
                                         test->episodes[1],
                                         test->episodes[0]->samples,
                                         test->episodes[0],
                                         test->object7604,
                                         test->object7600,
                                         test->annotations,
                                         test->annotations2,
                                         test->ecg,
                                         test};
    WatchFreedMemory();
    delete test;
    std::vector<void*> addresses = FreedWhileWatching();
    // What the annotation stores free by themselves lies between.
    std::erase_if(addresses, [&expected](void* address) { return std::find(expected.begin(), expected.end(), address) == expected.end(); });
    EXPECT_EQ(addresses, expected);
}

TEST(Ownership, ReplacingAnObjectFreesThePreviousOne) {
    TestRecord test;
    test.SetSpirometry(NewSubRecord<KxSpirometry>());
    const void* previous = test.spirometry;
    auto next = NewSubRecord<KxSpirometry>();
    WatchFreedMemory();
    test.SetSpirometry(std::move(next));
    EXPECT_EQ(FreedWhileWatching(), std::vector<void*>{const_cast<void*>(previous)});

    EpisodeRecord* episode = test.AddEpisode(0, 12, 10, 500, 1000);
    const std::vector<std::uint8_t> block = episode->Serialize();
    void* samples = episode->samples;
    WatchFreedMemory();
    episode->Deserialize(block.data(), block.size());
    EXPECT_EQ(FreedWhileWatching(), std::vector<void*>{samples});
}

TEST(Ownership, NothingOfAHostsRecordIsFreed) {
    auto host = std::make_unique<KxTestRecord>();
    KxHistoryEntry entries[16] = {};
    KxHistory history = {0, entries};
    std::int16_t samples[24] = {};
    KxEpisodeRecord episode{};
    episode.storedLeads = 12;
    episode.samplesPerLead = 2;
    episode.samples = samples;
    host->history = &history;
    host->episodes[0] = &episode;
    host->episodeCount = 1;
    host->ecg = samples;
    const DateTime time(2013, 1, 1);
    WatchFreedMemory();
    TestRecord& test = *TestRecord::Of(host.get());
    test.SetOverreadInterpretation(&time, "a");
    test.SetConfirmedInterpretation(&time, "b");
    test.SetConfirmedBy("c");
    test.AddHistoryEntry(2, time, "d");
    test.CheckExternalReview();
    test.LastChangeTime();
    test.Episode(0)->DeriveLimbLeads();
    test.Episode(0)->Measurements().Clear();
    test.Episode(0)->Interpretation().SetText("e");
    EXPECT_TRUE(FreedWhileWatching().empty());
}

}  // namespace
}  // namespace kx
