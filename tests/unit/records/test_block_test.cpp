// A test goes into a block and comes out of it whole; a block that is not whole is refused.
#include "lib/dbclient/test_block.h"

#include <random>

#include "lib/annotation_store.h"
#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"

namespace kx::test {
namespace {

template <class Record>
std::unique_ptr<Record> Filled(std::mt19937& random) {
    auto record = NewSubRecord<Record>();
    auto* bytes = reinterpret_cast<unsigned char*>(record.get());
    for (std::size_t i = 8; i < sizeof(Record); ++i) {
        bytes[i] = static_cast<unsigned char>(random());
    }
    return record;
}

// Random in every field, with some of every sub-object.
void Fill(TestRecord& test, unsigned seed) {
    std::mt19937 random(seed);
    auto* fields = reinterpret_cast<unsigned char*>(static_cast<KxTestRecord*>(&test));
    for (std::size_t i = 0; i < offsetof(KxTestRecord, buffer7584); ++i) {
        fields[i] = static_cast<unsigned char>(random());
    }
    for (unsigned i = 0; i < 1 + seed % 3; ++i) {
        EpisodeRecord* episode = test.AddEpisode(0, 12, 40, 500, 1000);
        std::generate_n(episode->samples, 12 * 40, [&] { return static_cast<std::int16_t>(random()); });
        episode->measurements.qtInterval = static_cast<std::uint16_t>(random());
        test.AddStage(Filled<KxStressStage>(random));
        test.AddPressure(Filled<KxPressureReading>(random));
        test.AddHistoryEntry(random() % 9, {2026, 25, 11, 8, 30, 0, 0}, "Rossi");
    }
    test.SetCurrentStage(Filled<KxStressStage>(random));
    test.SetPressureSummary(Filled<KxPressureReading>(random));
    test.SetHolterData(Filled<KxHolterData>(random));
    test.SetHolterSummary(Filled<KxHolterSummary>(random));
    test.SetSpirometry(Filled<KxSpirometry>(random));
    test.AddRawBlock(*std::make_unique<KxRawBlock>());
    const KxSeriesPoint points[] = {{0, 70}, {10, -3}};
    test.SetSeries(-7, std::make_unique<ValueSeries>(points));
    test.SetSeries9796(std::make_unique<ValueSeries>(points));
    test.SetObject7600({1, 2, 3});
    test.SetObject7604({4, 5, 6});
    for (AnnotationStore* store : {test.CreateAnnotations(20, seed % 2 == 0), test.CreateAnnotations2(20)}) {
        store->SetSampling(500, 1000);
        for (std::uint32_t beat = 0; beat < 10; ++beat) {
            store->Append(1, 800 * beat);
        }
        for (KxLeadBeat* beats : reinterpret_cast<KxAnnotationStore*>(store)->leadBeats) {
            if (beats != nullptr) {
                beats[3].amplitude1 = static_cast<std::int16_t>(random());
            }
        }
    }
    std::vector<std::uint8_t> ecg(280 + 2 * 3 * 50);
    const std::uint32_t header[] = {3, 50, 500, 1000};
    std::memcpy(ecg.data(), header, sizeof header);
    test.SetEcg(ecg.data(), ecg.size());
}

TEST(TestBlock, ATestComesBackByteForByteAndADamagedBlockIsRefused) {
    std::mt19937 random(3);
    for (unsigned seed = 0; seed < 6; ++seed) {
        TestRecord test, back;
        if (seed > 0) {
            Fill(test, seed);
        }
        const std::vector<std::uint8_t> block = WriteTestBlock(test);
        ASSERT_EQ(ReadTestBlock(block, back), TestBlockFault::kNone) << seed;
        EXPECT_EQ(WriteTestBlock(back), block) << seed;
        std::uint32_t stored = 0, crc = ~0u;  // the sum of ISO 3309 by its definition, so that what is stored today can be read later
        std::memcpy(&stored, block.data() + 12, sizeof stored);
        for (std::size_t bit = 8 * 16; bit < 8 * block.size(); ++bit) {
            crc = crc >> 1 ^ ((crc ^ block[bit / 8] >> bit % 8) & 1 ? 0xEDB88320u : 0u);
        }
        EXPECT_EQ(stored, ~crc) << seed;
        EXPECT_EQ(std::memcmp(static_cast<KxTestRecord*>(&back), static_cast<KxTestRecord*>(&test), offsetof(KxTestRecord, buffer7584)), 0);
        EXPECT_TRUE(back.EpisodeCount() == test.EpisodeCount() && (back.Annotations() != nullptr) == (seed > 0));
        for (int i = 0; i < 60; ++i) {
            std::vector<std::uint8_t> damaged = block;
            damaged[random() % damaged.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
            TestRecord other, cut;
            EXPECT_NE(ReadTestBlock(damaged, other), TestBlockFault::kNone);
            EXPECT_NE(ReadTestBlock(std::span(block).first(random() % block.size()), cut), TestBlockFault::kNone);
        }
    }
}

}  // namespace
}  // namespace kx::test
