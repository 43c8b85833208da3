#include "lib/annotation_store.h"

#include <random>

#include "lib/dbclient/test_record.h"
#include "tests/rig/recorded_reports.h"

namespace kx::test {
namespace {

using Times = std::vector<std::uint32_t>;

struct NormalBeats : AnnotationStore {
    NormalBeats(std::uint32_t beats, std::uint32_t interval) : AnnotationStore(beats) {
        for (std::uint32_t i = 0; i < beats; ++i) {
            AppendBeat(0, 1, i * interval, 7);
        }
        ClearModified();
    }
};

// ---- beats in their leads

TEST(AnnotationStore, ShowsABeatInTheLeadsThatHoldIt) {
    AnnotationStore store(4);
    ASSERT_TRUE(store.AppendBeat(3, 50, 100, 0b101));
    EXPECT_TRUE(store.Label(0) == 1 && store.SubLabel(0) == 3 && store.LeadMask(0) == 0b101);
    EXPECT_TRUE(store.LabelInLead(0, 17) == 1 && store.LabelInLead(0, 18) == 15 && store.LabelInLead(0, 3) == 1) << "3 is not stored";
    store.SetValue(19, 0, &LeadBeat::leadValue, 51);
    std::uint32_t slot = 0;
    EXPECT_TRUE(store.StrongestLead(0, &slot) == 51 && slot == 19);
    store.SetSubLabelAndLeadValue(0, 9, 33);
    EXPECT_TRUE(store.SubLabel(0) == 9 && store.Value(18, 0, &LeadBeat::leadValue) == 0);
    EXPECT_TRUE(store.StrongestLead(0, &slot) == 33 && slot == 17) << "the first of equals";

    AnnotationStore twelve(4, false), below(4);
    const std::uint32_t leads[] = {0, 11, 17, 20, UINT32_MAX};
    ASSERT_TRUE(twelve.AppendBeat(3, -50, 100, 5, leads) && below.AppendBeat(3, -50, 100, 0b111));
    EXPECT_TRUE(below.StrongestLead(0, &slot) == 0 && slot == 0) << "over all 20 slots";
    EXPECT_EQ(-50, twelve.Value(11, 0, &LeadBeat::leadValue));
    EXPECT_TRUE(twelve.StrongestLead(0, &slot) == 0 && slot == 1) << "a lead that is not stored has 0";
}

TEST(AnnotationStore, ReadsMillisecondsAndMicrovolts) {
    NormalBeats store(1, 0);
    store.SetValue(17, 0, &LeadBeat::amplitude1, 1000);
    store.SetValue(17, 0, &LeadBeat::amplitude5, -3);
    EXPECT_EQ(1220, store.AmplitudeMicrovolts(17, 0, &LeadBeat::amplitude1));
    EXPECT_EQ(-4, store.AmplitudeMicrovolts(17, 0, &LeadBeat::amplitude5));  // -3.66
    store.SetValue(17, 0, &LeadBeat::onsetOffset, -10);
    store.SetValue(18, 0, &LeadBeat::onsetOffset, -12);
    EXPECT_TRUE(store.OffsetMs(17, 0, &LeadBeat::onsetOffset) == -42 && store.QrsDurationMs(0) == 0) << "-41.67; no end";
    store.SetValue(17, 0, &LeadBeat::endOffset, 200);
    EXPECT_EQ(883, store.QrsDurationMs(0));  // 212 samples of 240 a second
    store.SetSampling(0, UINT32_MAX);
    EXPECT_EQ(0, store.QrsDurationMs(0) + store.OffsetMs(17, 0, &LeadBeat::endOffset));
    EXPECT_EQ(-6442451, store.AmplitudeMicrovolts(17, 0, &LeadBeat::amplitude5));
}

// Adding and removing, against a list of whole beats.
TEST(AnnotationStore, KeepsBeatsInOrderOfTimeThroughInsertionsAndRemovals) {
    struct Beat {
        std::uint32_t time;
        std::uint8_t label;
        std::int16_t tag;  // value8 in slot 17, one more in 18
        bool operator==(const Beat&) const = default;
    };
    std::mt19937 random(42);
    const auto upTo = [&random](std::uint32_t most) { return static_cast<std::uint32_t>(random() % (std::uint64_t{most} + 1)); };
    AnnotationStore store(0);
    std::vector<Beat> model;
    for (int step = 0; step < 6000; ++step) {
        const std::uint32_t action = upTo(99), chosen = upTo(static_cast<std::uint32_t>(model.size()));
        const auto label = static_cast<std::uint8_t>(upTo(3));
        if (action < 65) {
            const Beat beat{upTo(1) == 0 ? upTo(50) : upTo(UINT32_MAX), label, static_cast<std::int16_t>(step)};
            const auto before = std::ranges::lower_bound(model, beat.time, {}, &Beat::time);
            const auto index = static_cast<std::uint32_t>(before - model.begin());
            ASSERT_EQ(index, store.Insert(label, beat.time)) << step;
            ASSERT_EQ(0, store.Value(17, index, &LeadBeat::value8) + store.Value(18, index, &LeadBeat::value8)) << "not measured yet";
            store.SetValue(17, index, &LeadBeat::value8, beat.tag);
            store.SetValue(18, index, &LeadBeat::value8, static_cast<std::int16_t>(beat.tag + 1));
            model.insert(before, beat);
        } else if (action < 72 && chosen < model.size()) {
            store.RemoveAt(chosen);
            model.erase(model.begin() + chosen);
        } else if (action < 80 && chosen < model.size()) {
            const auto alike = [wanted = model[chosen]](const Beat& b) { return b.time == wanted.time && b.label == wanted.label; };
            ASSERT_TRUE(store.Remove(model[chosen].label, model[chosen].time));
            model.erase(std::ranges::find_if(model, alike));
        } else if (action == 80) {
            EXPECT_EQ(std::ranges::count(model, label, &Beat::label), store.CountOfLabel(label));
            store.RemoveLabel(label);
            std::erase_if(model, [label](const Beat& b) { return b.label == label; });
        } else if (action == 81) {
            const std::uint32_t to = chosen + upTo(12);
            store.RemoveRange(chosen, to);
            model.erase(model.begin() + chosen, model.begin() + std::min<std::ptrdiff_t>(to + 1, std::ssize(model)));
        }
        ASSERT_EQ(store.Count(), model.size()) << step;
        for (std::uint32_t i = 0; i < store.Count(); ++i) {
            ASSERT_TRUE(store.Time(i) == model[i].time && store.Label(i) == model[i].label) << step;
            ASSERT_TRUE(store.Value(17, i, &LeadBeat::value8) == model[i].tag && store.Value(18, i, &LeadBeat::value8) == model[i].tag + 1);
        }
    }
    EXPECT_FALSE(store.Remove(9, 9));
    EXPECT_GT(store.Capacity(), 100u);
}

TEST(AnnotationStore, GrowsByTenWhenFullAndTheTwelveLeadFormWithoutItsBeats) {
    NormalBeats store(5, 100);
    store.SetValue(18, 4, &LeadBeat::value8, 4);
    EXPECT_TRUE(!store.Append(1, 900) && store.Insert(1, 150) == 2u && store.Capacity() == 15 && store.LeadMask(2) == 0);
    EXPECT_EQ(4, store.Value(18, 5, &LeadBeat::value8));
    AnnotationStore twelve(2, false);
    ASSERT_TRUE(twelve.Append(1, 100) && twelve.Append(1, 200));
    twelve.SetValue(11, 1, &LeadBeat::value8, 7);
    ASSERT_TRUE(twelve.Insert(1, 300) == 2u && twelve.Append(1, 400));
    twelve.SetValue(11, 2, &LeadBeat::value8, 8);
    twelve.SetLabel(3, 5, true);
    EXPECT_TRUE(twelve.Value(11, 1, &LeadBeat::value8) == 7 && twelve.Value(11, 2, &LeadBeat::value8) == 0) << "absent";
    EXPECT_EQ(5, twelve.LabelInLead(3, 11));
    store.SetLabel(2, 5, true);
    EXPECT_EQ(store.Value(18, 2, &LeadBeat::leadValue), 1);
}

TEST(AnnotationStore, TellsTheHeartRateFromNormalBeatsAround) {
    using Labels = std::vector<std::uint8_t>;
    const auto rate = [](const Times& times, const Labels& labels, std::uint32_t at) {
        AnnotationStore store(static_cast<std::uint32_t>(times.size()));
        for (std::size_t i = 0; i < times.size(); ++i) {
            store.Append(labels[i], times[i]);
        }
        store.SetHeartRate(at, 9);
        store.UpdateHeartRate(at);
        return store.HeartRate(at);
    };
    EXPECT_EQ(rate({0, 1000, 2000, 3000, 4000, 5000, 6000, 6001}, Labels(8, 1), 3), 60) << "three to each side";
    EXPECT_EQ(rate({0, 1000, 1500, 2000, 9000}, {1, 5, 1, 5, 1}, 2), 120) << "up to the beat that is not normal";
    EXPECT_EQ(rate({0, 700}, {1, 1}, 0), 86) << "rounded";
    EXPECT_EQ(rate({0, 0, 1}, {1, 1, 1}, 1), 65535);
    EXPECT_EQ(rate({0, 800, 1600}, {1, 5, 1}, 1), 9) << "not a normal beat: as it was";
    EXPECT_TRUE(rate({500, 500, 500}, {1, 1, 1}, 1) == 9 && rate({500, 400}, {1, 1}, 0) == 9) << "no time between";
}

// The sanitizer sees a store that is freed twice or never.
TEST(RecordAnnotations, AreMadeReplacedAndFreedWithTheRecord) {
    TestRecord test;
    RecordedReports reports;
    EXPECT_TRUE(test.Annotations() == nullptr && !test.SetCurrentAnnotation(0, reports));
    ASSERT_TRUE(test.CreateAnnotations(4)->AppendBeat(0, 1, 100, 0b111) && test.CreateAnnotations2(2, false) != nullptr);
    EXPECT_EQ(0u, test.CreateAnnotations(3, true)->Count() + test.CreateAnnotations2(3)->Count());
    EXPECT_TRUE(test.ReplaceAnnotations2(nullptr) == nullptr && test.Annotations2() == nullptr);
    AnnotationStore* const store = test.ReplaceAnnotations(std::make_unique<AnnotationStore>(9));
    EXPECT_TRUE(test.SetCurrentAnnotation(0, reports) && !test.IsModified()) << "also of an empty store";
    ASSERT_TRUE(store->Append(1, 100) && store->Append(1, 200));
    EXPECT_TRUE(test.SetCurrentAnnotation(1, reports) && test.IsModified());
    EXPECT_FALSE(test.SetCurrentAnnotation(2, reports) || test.SetCurrentAnnotation(UINT32_MAX, reports));
    EXPECT_TRUE(test.currentAnnotation == 1 && reports.Take().size() == 3);
}

// ---- a block of bytes: what is written is read back, what is not whole is refused

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

constexpr char kTooSmall[] = "oem ..\\lib\\system 512 ann too small";
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

TEST(AnnotationBlock, ComesBackAsItWasWrittenUpToTheCapacity) {
    for (const std::uint32_t count : {1u, 5u, 77u}) {
        const Bytes block = MakeBlock(count);
        RecordedReports reports;
        AnnotationStore read(count), rebuilt(1), part(count - 1);
        ASSERT_TRUE(read.Read(block.data(), block.size(), reports) && rebuilt.Rebuild(block.data(), block.size(), false)) << count;
        EXPECT_TRUE(!read.IsModified() && read.SampleRate() == 500 && read.ResolutionNv() == 2440 && rebuilt.Capacity() == count);
        EXPECT_TRUE(block == Serialized(read) && block == Serialized(rebuilt)) << count;
        EXPECT_EQ(Lines(), reports.Take());
        EXPECT_EQ(count > 1, part.Read(block.data(), block.size(), reports));
        read.RemoveAt(count - 1);
        EXPECT_EQ(Serialized(read), Serialized(part));
        EXPECT_EQ(count > 1 ? Lines{kTooSmall} : (Lines{kTooSmall, kNoEntries}), reports.Take());
        // No beat of a recording that was there before comes with the entries of another.
        read.Clear();
        ASSERT_TRUE(read.ReadEntries(block.data(), block.size(), reports));
        EXPECT_TRUE(read.Count() == count && read.Time(0) == rebuilt.Time(0) && read.Value(17, 0, &LeadBeat::amplitude1) == 0);
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
    EXPECT_EQ(nullptr, AnnotationStore(3).Serialize()) << "nothing to write";
}

TEST(AnnotationBlock, IsRefusedAndReported) {
    const Bytes older = MakeBlock(2, 0xFF000001), large = MakeBlock(6, 0);
    for (const auto& [block, expected] : {std::pair{older, Lines{kVersion}}, {large, Lines{kTooSmall, kVersion}}}) {
        RecordedReports reports;
        AnnotationStore store(4);
        store.Append(5, 1234);
        EXPECT_FALSE(store.Read(block.data(), block.size(), reports));
        EXPECT_EQ(expected, reports.Take());
        EXPECT_FALSE(store.ReadEntries(block.data(), block.size(), reports));
        EXPECT_EQ(expected, reports.Take());
        EXPECT_TRUE(store.Count() == 1 && store.Time(0) == 1234);
        EXPECT_EQ(500u, store.SampleRate()) << "taken from the block all the same";
        EXPECT_TRUE(!store.Rebuild(block.data(), block.size(), false) && store.Count() == 0) << "discarded all the same";
        EXPECT_TRUE(!store.Append(1, 1) && !store.Insert(1, 1) && store.Serialize() == nullptr) << "it has no entries";
    }
}

}  // namespace
}  // namespace kx::test
