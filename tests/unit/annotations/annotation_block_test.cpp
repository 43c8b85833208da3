// A store as a block of bytes: what is written is read back, what is not whole is refused.
#include <random>
#include <utility>

#include "lib/annotation_store.h"
#include "tests/rig/recorded_reports.h"
#include "tests/unit/watched_memory.h"

namespace kx::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

constexpr char kTooSmall[] = "oem ..\\lib\\system 512 ann too small";
constexpr char kInvalid[] = "oem ..\\lib\\system 506 an invalid";
constexpr char kNoEntries[] = "oem ..\\lib\\system 518 an invalid";
constexpr char kVersion[] = "oem ..\\lib\\system 524 invalid version";

void Put(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t k = 0; k < 4; ++k) {
        bytes[at + k] = static_cast<std::uint8_t>(value >> (8 * k));
    }
}

// A block of random entries and lead beats, written byte by byte.
Bytes MakeBlock(std::uint32_t count, std::uint32_t version = 0xFF000002) {
    Bytes block(20 + count * 68);
    std::mt19937 random(count);
    std::generate(block.begin(), block.end(), [&] { return static_cast<std::uint8_t>(random()); });
    const std::uint32_t header[] = {20 + count * 68, count, 500, 2440, version};
    for (std::size_t i = 0; i < 5; ++i) {
        Put(block, 4 * i, header[i]);
    }
    return block;
}

Bytes Serialized(const AnnotationStore& store) {
    const auto block = store.Serialize();
    return block != nullptr ? Bytes(block.get(), block.get() + store.SerializedSize()) : Bytes();
}

TEST(AnnotationBlock, ComesBackAsItWasWritten) {
    for (const std::uint32_t count : {1u, 2u, 77u}) {
        const Bytes block = MakeBlock(count);
        RecordedReports reports;
        AnnotationStore read(count + 3), rebuilt(1);
        ASSERT_TRUE(read.Read(block.data(), block.size(), reports) && rebuilt.Rebuild(block.data(), block.size(), false)) << count;
        EXPECT_TRUE(!read.IsModified() && read.SampleRate() == 500 && read.ResolutionNv() == 2440);
        EXPECT_EQ(count, rebuilt.Capacity());
        EXPECT_EQ(block, Serialized(read)) << count;
        EXPECT_EQ(block, Serialized(rebuilt)) << count;
        EXPECT_EQ(Lines(), reports.Take());
    }
}

TEST(AnnotationBlock, StandsAtItsOffsets) {
    AnnotationStore store(4);
    store.SetSampling(360, 4880);
    store.AppendBeat(-7, 0x1234, 0x01020304, 0b010);
    store.Append(12, 5);
    store.SetHeartRate(0, 0x0506);
    store.SetValue(19, 1, &LeadBeat::widthHalf, 99);
    Bytes expected(20 + 2 * 68);
    const std::uint32_t words[] = {156, 2, 360, 4880, 0xFF000002, 0x01020304, 0x0506F901 /* heart rate, sub-label -7, label 1 */, 5, 12};
    for (std::size_t i = 0; i < std::size(words); ++i) {
        Put(expected, 4 * i, words[i]);
    }
    expected[20 + 16 + 40 + 18] = 0x34;  // slot 18, entry 0, leadValue
    expected[20 + 16 + 40 + 19] = 0x12;
    expected[20 + 16 + 80 + 20] = 99;  // slot 19, entry 1, widthHalf
    EXPECT_EQ(expected, Serialized(store));

    AnnotationStore other(3, false);  // zeros for leads that are not stored
    const std::uint32_t lead = 4;
    other.AppendBeat(1, 1, 1000, 1, &lead);
    const Bytes block = Serialized(other);
    ASSERT_EQ(88u, block.size());
    EXPECT_EQ(Bytes(60), Bytes(block.begin() + 28, block.end()));
    EXPECT_EQ(nullptr, AnnotationStore(3).Serialize()) << "nothing to write";
    const FailingMemory failing(0);
    EXPECT_EQ(nullptr, other.Serialize());
}

TEST(AnnotationBlock, IsReadUpToTheCapacity) {
    const Bytes block = MakeBlock(5);
    RecordedReports reports;
    AnnotationStore all(5), three(3);
    ASSERT_TRUE(all.Read(block.data(), block.size(), reports) && three.Read(block.data(), block.size(), reports));
    EXPECT_EQ(Lines{kTooSmall}, reports.Take());
    all.RemoveRange(3, 4);
    EXPECT_EQ(3u, three.Capacity());
    EXPECT_EQ(Serialized(all), Serialized(three));
    // No beat of a recording that was there before comes with the entries of another.
    all.Clear();
    ASSERT_TRUE(all.ReadEntries(block.data(), block.size(), reports));
    EXPECT_EQ(5u, all.Count());
    EXPECT_EQ(three.Time(2), all.Time(2));
    EXPECT_EQ(0, all.Value(17, 0, &LeadBeat::amplitude1));
}

TEST(AnnotationBlock, IsRefusedAndReported) {
    const struct {
        std::uint32_t capacity, count, version;
        Lines reports;
    } rows[] = {{4, 2, 0xFF000001, {kVersion}},
                {4, 2, 0, {kVersion}},
                {4, 6, 0xFF000001, {kTooSmall, kVersion}},
                {0, 2, 0xFF000002, {kTooSmall, kNoEntries}},
                {0, 0, 0xFF000002, {kNoEntries}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const Bytes block = MakeBlock(row.count, row.version);
        RecordedReports reports;
        AnnotationStore store(row.capacity);
        const bool room = store.Append(5, 1234);
        EXPECT_FALSE(store.Read(block.data(), block.size(), reports));
        EXPECT_EQ(row.reports, reports.Take());
        EXPECT_FALSE(store.ReadEntries(block.data(), block.size(), reports));
        EXPECT_EQ(row.reports, reports.Take());
        EXPECT_TRUE(store.Count() == (room ? 1u : 0u) && store.Time(0) == (room ? 1234u : 0u));
        EXPECT_EQ(500u, store.SampleRate()) << "taken from the block all the same";
    }
}

TEST(AnnotationBlock, IsNeverReadBeyondItsEnd) {
    const Bytes whole = MakeBlock(3);
    Bytes huge = whole, older = MakeBlock(3, 0xFF000001);
    Put(huge, 4, UINT32_MAX);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        for (const Bytes& source : {whole, huge}) {
            const Bytes block(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(size));  // a sanitizer sees one byte more
            RecordedReports reports;
            AnnotationStore store(9);
            store.Append(5, 1234);
            ASSERT_FALSE(store.Read(block.data(), size, reports) || store.ReadEntries(block.data(), size, reports) ||
                         store.Rebuild(block.data(), size, true))
                << size;
            ASSERT_EQ((Lines{kInvalid, kInvalid}), reports.Take()) << size;
            ASSERT_TRUE(store.Time(0) == 1234 && store.SampleRate() == 240 && store.IsModified()) << "nothing changed, " << size;
        }
    }
    RecordedReports reports;
    AnnotationStore store(9);
    // Another version may count its bytes otherwise: it is told before a length that does not fit.
    EXPECT_FALSE(store.Read(older.data(), older.size() - 1, reports));
    EXPECT_EQ(Lines{kVersion}, reports.Take());
    EXPECT_FALSE(store.Read(nullptr, 4096, reports) || store.Rebuild(nullptr, 4096, false));
    EXPECT_EQ(Lines{kInvalid}, reports.Take());
}

TEST(AnnotationBlock, RebuildsAnyStore) {
    const Bytes block = MakeBlock(4), older = MakeBlock(4, 1), empty = MakeBlock(0, 1);
    AnnotationStore store(9);
    store.Append(5, 1234);
    ASSERT_TRUE(store.Rebuild(block.data(), block.size(), true));
    EXPECT_TRUE(store.Capacity() == 4 && store.Count() == 4);
    store.SetLabel(0, 1, true);
    for (std::uint32_t slot = 0; slot < KX_BEAT_LEADS; ++slot) {
        EXPECT_EQ(slot < 12, store.Value(slot, 0, &LeadBeat::leadValue) != 0) << slot;
    }
    EXPECT_FALSE(store.Rebuild(older.data(), older.size(), false));
    EXPECT_TRUE(store.Count() == 0 && store.Capacity() == 4) << "discarded all the same";
    EXPECT_TRUE(!store.Append(1, 1) && !store.Insert(1, 1) && store.Serialize() == nullptr) << "it has no entries";
    EXPECT_FALSE(store.Rebuild(empty.data(), empty.size(), false));
    EXPECT_EQ(0u, store.Capacity());
    EXPECT_EQ(0u, store.Insert(1, 1)) << "and grows again";
    const FailingMemory failing(0);
    EXPECT_FALSE(store.Rebuild(block.data(), block.size(), false));
    EXPECT_TRUE(store.Count() == 0 && !store.Append(1, 1));
}

}  // namespace
}  // namespace kx::test
