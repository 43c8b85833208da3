#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "lib/annotation_store.h"
#include "tests/unit/watched_memory.h"
#include "tests/unit/collected_reports.h"

namespace {

using kx::AnnotationStore;
using kx::LeadBeat;
using kx::test::CollectedReports;
using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

constexpr char kTooSmall[] = "..\\lib\\system: ann too small";
constexpr char kInvalid[] = "..\\lib\\system: an invalid";
constexpr char kVersion[] = "..\\lib\\system: invalid version";

void Put(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t k = 0; k < 4; ++k) {
        bytes[at + k] = static_cast<std::uint8_t>(value >> (8 * k));
    }
}

// A block of random entries and lead beats, written byte by byte.
Bytes MakeBlock(std::uint32_t count) {
    Bytes block(20 + count * 68);
    std::mt19937 random(count);
    for (std::uint8_t& byte : block) {
        byte = static_cast<std::uint8_t>(random());
    }
    Put(block, 0, 20 + count * 68);
    Put(block, 4, count);
    Put(block, 8, 500);
    Put(block, 12, 2440);
    Put(block, 16, 0xFF000002);
    return block;
}

Bytes Serialized(const AnnotationStore& store) {
    const auto block = store.Serialize();
    return block != nullptr ? Bytes(block.get(), block.get() + store.SerializedSize()) : Bytes();
}

// Of size bytes the reader has exactly size: the sanitizer sees one more.
Bytes Part(const Bytes& block, std::size_t size) {
    Bytes part(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size));
    part.shrink_to_fit();
    return part;
}

TEST(AnnotationBlock, ComesBackAsItWasWritten) {
    for (const std::uint32_t count : {1u, 2u, 77u}) {
        const Bytes block = MakeBlock(count);
        CollectedReports reports;
        AnnotationStore read(count + 3);
        ASSERT_TRUE(read.Read(block.data(), block.size(), reports)) << count;
        EXPECT_FALSE(read.IsModified());
        EXPECT_EQ(500u, read.SampleRate());
        EXPECT_EQ(2440u, read.ResolutionNv());
        EXPECT_EQ(block, Serialized(read)) << count;

        AnnotationStore rebuilt(1);
        ASSERT_TRUE(rebuilt.Rebuild(block.data(), block.size(), false)) << count;
        EXPECT_EQ(count, rebuilt.Capacity());
        EXPECT_EQ(block, Serialized(rebuilt)) << count;
        EXPECT_EQ(Lines(), reports.texts);
    }
}

TEST(AnnotationBlock, StandsAtItsOffsets) {
    AnnotationStore store(4);
    store.SetSampling(360, 4880);
    store.AppendBeat(-7, 0x1234, 0x01020304, 0b010);
    store.Append(12, 5);
    store.SetHeartRate(0, 0x0506);
    store.SetValue(19, 1, &LeadBeat::widthHalf, 99);
    const Bytes block = Serialized(store);
    ASSERT_EQ(20u + 2 * 68, block.size());
    Bytes expected(block.size());
    Put(expected, 0, 156);
    Put(expected, 4, 2);
    Put(expected, 8, 360);
    Put(expected, 12, 4880);
    Put(expected, 16, 0xFF000002);
    Put(expected, 20, 0x01020304);
    Put(expected, 24, 0x0506F901);  // heart rate, sub-label -7, label 1
    Put(expected, 28, 5);
    Put(expected, 32, 12);
    expected[20 + 16 + 40 + 18] = 0x34;  // slot 18, entry 0, leadValue
    expected[20 + 16 + 40 + 19] = 0x12;
    expected[20 + 16 + 80 + 20] = 99;  // slot 19, entry 1, widthHalf
    EXPECT_EQ(expected, block);
}

TEST(AnnotationBlock, WritesZerosForLeadsThatAreNotStored) {
    AnnotationStore store(3, false);
    const std::uint32_t lead = 4;
    store.AppendBeat(1, 1, 1000, 1, &lead);
    const Bytes block = Serialized(store);
    ASSERT_EQ(88u, block.size());
    EXPECT_EQ(Bytes(60), Bytes(block.begin() + 28, block.end()));
    EXPECT_EQ(nullptr, AnnotationStore(3).Serialize()) << "nothing to write";
    const kx::test::FailingMemory failing(0);
    EXPECT_EQ(nullptr, store.Serialize());
}

TEST(AnnotationBlock, IsReadUpToTheCapacity) {
    const Bytes block = MakeBlock(5);
    CollectedReports reports;
    AnnotationStore all(5), three(3);
    ASSERT_TRUE(all.Read(block.data(), block.size(), reports));
    ASSERT_TRUE(three.Read(block.data(), block.size(), reports));
    EXPECT_EQ(Lines{kTooSmall}, std::exchange(reports.texts, {}));
    EXPECT_EQ(3u, three.Capacity());
    ASSERT_EQ(3u, three.Count());
    for (std::uint32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(all.Time(i), three.Time(i));
        for (std::uint32_t slot = 17; slot < 20; ++slot) {
            EXPECT_EQ(all.Value(slot, i, &LeadBeat::leadValue), three.Value(slot, i, &LeadBeat::leadValue))
                << slot;
        }
    }
    AnnotationStore entries(5);
    ASSERT_TRUE(entries.ReadEntries(block.data(), block.size(), reports));
    EXPECT_EQ(all.Time(4), entries.Time(4));
    EXPECT_EQ(0, entries.Value(17, 0, &LeadBeat::amplitude1));
    // No beat of a recording that was there before comes with the entries of another.
    all.Clear();
    ASSERT_TRUE(all.ReadEntries(block.data(), block.size(), reports));
    EXPECT_EQ(0, all.Value(17, 4, &LeadBeat::amplitude1));
}

TEST(AnnotationBlock, IsRefusedAndReported) {
    struct Row {
        const char* name;
        std::uint32_t capacity;
        std::uint32_t count;
        std::uint32_t version;
        Lines reports;
    };
    for (const Row& row : {Row{"older", 4, 2, 0xFF000001, {kVersion}}, Row{"no version", 4, 2, 0, {kVersion}},
                           Row{"older and too long", 4, 6, 0xFF000001, {kTooSmall, kVersion}},
                           Row{"no room at all", 0, 2, 0xFF000002, {kTooSmall, kInvalid}},
                           Row{"no room for nothing", 0, 0, 0xFF000002, {kInvalid}}}) {
        Bytes block = MakeBlock(row.count);
        Put(block, 16, row.version);
        CollectedReports reports;
        AnnotationStore store(row.capacity);
        store.Append(5, 1234);
        const std::uint32_t count = store.Count();
        EXPECT_FALSE(store.Read(block.data(), block.size(), reports)) << row.name;
        EXPECT_EQ(row.reports, std::exchange(reports.texts, {})) << row.name;
        EXPECT_FALSE(store.ReadEntries(block.data(), block.size(), reports)) << row.name;
        EXPECT_EQ(row.reports, std::exchange(reports.texts, {})) << row.name;
        EXPECT_EQ(count, store.Count()) << row.name;
        EXPECT_EQ(count != 0 ? 1234u : 0u, store.Time(0)) << row.name;
        EXPECT_EQ(500u, store.SampleRate()) << "taken from the block all the same";
    }
}

TEST(AnnotationBlock, IsNeverReadBeyondItsEnd) {
    const Bytes whole = MakeBlock(3);
    Bytes huge = MakeBlock(3);
    Put(huge, 4, UINT32_MAX);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        for (const Bytes& source : {whole, huge}) {
            const Bytes block = Part(source, size);
            CollectedReports reports;
            AnnotationStore store(9);
            store.Append(5, 1234);
            ASSERT_FALSE(store.Read(block.data(), block.size(), reports)) << size;
            ASSERT_FALSE(store.ReadEntries(block.data(), block.size(), reports)) << size;
            ASSERT_FALSE(store.Rebuild(block.data(), block.size(), true)) << size;
            ASSERT_EQ((Lines{kInvalid, kInvalid}), reports.texts) << size;
            ASSERT_EQ(1234u, store.Time(0)) << "nothing changed";
            ASSERT_EQ(240u, store.SampleRate()) << size;
            ASSERT_TRUE(store.IsModified()) << size;
        }
    }
    CollectedReports reports;
    AnnotationStore store(9);
    // Another version may count its bytes otherwise: it is told before a length that does not fit.
    Bytes older = Part(whole, whole.size() - 1);
    Put(older, 16, 0xFF000001);
    EXPECT_FALSE(store.Read(older.data(), older.size(), reports));
    EXPECT_EQ(Lines{kVersion}, std::exchange(reports.texts, {}));
    EXPECT_FALSE(store.Read(nullptr, 4096, reports));
    EXPECT_FALSE(store.Rebuild(nullptr, 4096, false));
    EXPECT_EQ(Lines{kInvalid}, reports.texts);
}

TEST(AnnotationBlock, RebuildsAnyStore) {
    Bytes block = MakeBlock(4);
    AnnotationStore store(9);
    store.Append(5, 1234);
    ASSERT_TRUE(store.Rebuild(block.data(), block.size(), true));
    EXPECT_EQ(4u, store.Capacity());
    EXPECT_EQ(4u, store.Count());
    store.SetLabel(0, 1, true);
    for (std::uint32_t slot = 0; slot < KX_BEAT_LEADS; ++slot) {
        EXPECT_EQ(slot < 12, store.Value(slot, 0, &LeadBeat::leadValue) != 0) << slot;
    }

    Put(block, 16, 1);
    EXPECT_FALSE(store.Rebuild(block.data(), block.size(), false));
    EXPECT_EQ(0u, store.Count()) << "discarded all the same";
    EXPECT_EQ(4u, store.Capacity());
    EXPECT_FALSE(store.Append(1, 1)) << "it has no entries";
    EXPECT_EQ(std::nullopt, store.Insert(1, 1));
    EXPECT_EQ(nullptr, store.Serialize());

    Put(block, 4, 0);
    EXPECT_FALSE(store.Rebuild(block.data(), block.size(), false));
    EXPECT_EQ(0u, store.Capacity());
    EXPECT_EQ(0u, store.Insert(1, 1)) << "and grows again";

    const kx::test::FailingMemory failing(0);
    EXPECT_FALSE(store.Rebuild(MakeBlock(2).data(), 156, false));
    EXPECT_EQ(0u, store.Count());
    EXPECT_FALSE(store.Append(1, 1));
}

}  // namespace
