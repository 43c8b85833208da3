#include "lib/dbclient/episode_record.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

namespace kx {
namespace {

constexpr std::int16_t kLeast = std::numeric_limits<std::int16_t>::min();

// Twelve leads of `count` samples; lead l, sample i is 100 l + i.
EpisodeRecord TwelveLeads(std::uint32_t count) { return EpisodeRecord(kTwelveLeadConfiguration, 12, count, 500, 1000); }

void FillLeads(EpisodeRecord& episode) {
    for (std::uint32_t lead = 0; lead < 12; ++lead) {
        std::vector<std::int16_t> samples(episode.SamplesPerLead());
        for (std::size_t i = 0; i < samples.size(); ++i) {
            samples[i] = static_cast<std::int16_t>(100 * lead + i);
        }
        ASSERT_TRUE(episode.SetLeadSamples(lead, samples.data(), episode.SamplesPerLead()));
    }
}

TEST(EpisodeRecord, IsLaidOutByItsConfiguration) {
    const struct {
        std::uint32_t configuration;
        std::uint32_t leadCount;
        std::uint32_t stored;
        std::vector<std::uint32_t> slots;
        std::uint32_t storedConfiguration;
    } rows[] = {
        {0, 12, 12, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 0},
        {0, 3, 12, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}, 0},
        {1, 3, 3, {12, 13, 14}, 1},
        {1, 4, 4, {12, 13, 14, 15}, 1},
        {1, 5, 0, {}, 1},
        {3, 1, 1, {17}, 3},
        {3, 3, 3, {17, 18, 19}, 3},
        {3, 4, 0, {}, 3},
        {2, 12, 0, {}, 4},
        {99, 12, 0, {}, 4},
    };
    for (const auto& row : rows) {
        EpisodeRecord episode(row.configuration, row.leadCount, 7, 500, 1000);
        SCOPED_TRACE(testing::Message() << row.configuration << " with " << row.leadCount);
        EXPECT_EQ(episode.storedLeads, row.stored);
        EXPECT_EQ(episode.leadConfiguration, row.storedConfiguration);
        EXPECT_EQ(episode.SamplesPerLead(), row.stored == 0 ? 0u : 7u);
        EXPECT_EQ(episode.totalSize, row.stored == 0 ? 0u : 3176 + 14 * row.stored);
        std::vector<std::uint32_t> slots;
        for (std::uint32_t slot = 0; slot < KX_LEAD_SLOTS; ++slot) {
            if (episode.leadTable[slot].leadCode != KX_LEAD_EMPTY) {
                EXPECT_EQ(episode.leadTable[slot].leadCode, slot);
                EXPECT_EQ(episode.leadTable[slot].sampleOffset, 7 * slots.size());
                slots.push_back(slot);
            }
        }
        EXPECT_EQ(slots, row.slots);
        EXPECT_EQ(episode.formatVersion, 5);
        EXPECT_EQ(episode.state, 2u);
        EXPECT_EQ(episode.measurements.size, 1872u);
        EXPECT_EQ(episode.interpretation.size, 1044u);
    }
}

TEST(EpisodeRecord, HasNoSamplesWithoutAPositiveValueOrMemory) {
    const std::uint32_t rows[][3] = {{0, 500, 1000}, {7, 0, 1000}, {7, 500, 0}, {0x80000000u, 500, 1000}, {0xFFFFFFFFu, 500, 1000}};
    for (const auto& [samples, rate, resolution] : rows) {
        EpisodeRecord episode(0, 12, samples, rate, resolution);
        EXPECT_EQ(episode.samples, nullptr) << samples << ' ' << rate << ' ' << resolution;
        EXPECT_EQ(episode.SamplesPerLead(), 0u) << samples << ' ' << rate << ' ' << resolution;
        EXPECT_EQ(episode.Samples(0), nullptr);
        EXPECT_EQ(episode.Sample(0, 0), 0);
        EXPECT_TRUE(episode.Serialize().empty());
        EXPECT_FALSE(episode.DeriveLimbLeads());
        episode.ClearSamples();
    }
}

TEST(EpisodeRecord, GivesSamplesByLeadCode) {
    EpisodeRecord episode = TwelveLeads(10);
    FillLeads(episode);
    episode.resolutionNv = 1250;
    EXPECT_EQ(episode.Sample(3, 9), 309);
    EXPECT_EQ(episode.Sample(KX_LEAD_MINUS_AVR, 9), -309);
    EXPECT_EQ(episode.Samples(KX_LEAD_MINUS_AVR), episode.Samples(KX_LEAD_AVR));
    EXPECT_EQ(episode.SampleMicrovolts(3, 1), 376);  // 376.25
    EXPECT_EQ(episode.SampleMicrovolts(3, 2), 378);  // 377.5
    EXPECT_EQ(episode.SampleMicrovolts(16, 2), -378);
    EXPECT_EQ(episode.Sample(3, 10), 0);
    EXPECT_EQ(episode.Sample(3, 0xFFFFFFFFu), 0);
    for (const std::uint32_t absent : {12u, 17u, 20u, 23u, 24u, 0xFFFFFFFFu}) {
        EXPECT_EQ(episode.Samples(absent), nullptr) << absent;
        EXPECT_EQ(episode.Sample(absent, 0), 0) << absent;
    }
    episode.Samples(3)[0] = kLeast;
    EXPECT_EQ(episode.Sample(KX_LEAD_MINUS_AVR, 0), 32768);
}

TEST(EpisodeRecord, StoresALeadWholeOrNotAtAll) {
    EpisodeRecord episode = TwelveLeads(4);
    FillLeads(episode);
    const std::int16_t values[] = {7, 8, 9, 10, 11};
    EXPECT_FALSE(episode.SetLeadSamples(2, values, 5));
    EXPECT_FALSE(episode.SetLeadSamples(12, values, 2));
    EXPECT_FALSE(episode.SetLeadSamples(KX_LEAD_MINUS_AVR, values, 2));
    EXPECT_FALSE(episode.SetLeadSamples(2, nullptr, 2));
    EXPECT_EQ(episode.Sample(2, 0), 200);
    EXPECT_EQ(episode.Sample(3, 0), 300);
    EXPECT_TRUE(episode.SetLeadSamples(2, values, 2));
    const std::int16_t expected[] = {103, 7, 8, 0, 0, 300};  // from the last of lead 1 to the first of 3
    EXPECT_EQ(std::memcmp(episode.Samples(1) + 3, expected, sizeof expected), 0);
    episode.ShiftLead(3, 301);
    EXPECT_EQ(episode.Sample(3, 0), -1);
    EXPECT_EQ(episode.Sample(4, 0), 400);
    episode.ShiftLead(3, std::numeric_limits<std::int32_t>::min());  // wraps, as 16 bits do
    EXPECT_EQ(episode.Sample(3, 0), -1);
}

TEST(EpisodeRecord, DerivesLimbLeads) {
    const struct {
        std::int16_t one;
        std::int16_t two;
        std::int16_t expected[4];  // III, aVR, aVL, aVF
    } rows[] = {
        {100, 300, {200, -200, -50, 250}},
        {101, 300, {199, -200, -49, 250}},  // truncated toward zero
        {-101, -300, {-199, 200, 49, -250}},
        {0, 0, {0, 0, 0, 0}},
        {30000, -30000, {5536, 0, -20536, 20536}},  // wraps, as 16 bits do
        {kLeast, kLeast, {0, kLeast, -16384, -16384}},
    };
    for (const auto& row : rows) {
        EpisodeRecord episode = TwelveLeads(1);
        episode.Samples(0)[0] = row.one;
        episode.Samples(1)[0] = row.two;
        ASSERT_TRUE(episode.DeriveLimbLeads());
        for (std::uint32_t lead = 2; lead < 6; ++lead) {
            EXPECT_EQ(episode.Sample(lead, 0), row.expected[lead - 2]) << row.one << ' ' << row.two << " lead " << lead;
        }
    }
    EpisodeRecord episode = TwelveLeads(1);
    episode.leadTable[5].leadCode = KX_LEAD_EMPTY;
    episode.Samples(1)[0] = 5;
    EXPECT_FALSE(episode.DeriveLimbLeads());
    EXPECT_EQ(episode.Sample(2, 0), 0);
}

TEST(EpisodeRecord, KeepsTime) {
    EpisodeRecord episode = TwelveLeads(1);
    episode.durationSeconds = 64999;
    episode.AddSecond();
    episode.AddSecond();
    EXPECT_EQ(episode.DurationSeconds(), 65000u);
    episode.SetState(0);
    episode.AddSecond();
    EXPECT_EQ(episode.DurationSeconds(), 1u);
    episode.SetEndTimeMs(123456);
    EXPECT_EQ(episode.measurements.episodeTime, 123456u);
}

std::vector<std::uint8_t> Block() {
    EpisodeRecord episode = TwelveLeads(10);
    FillLeads(episode);
    episode.durationSeconds = 33;
    episode.measurements.reserved18 = 0xBEEF;
    episode.measurements.leads[14].reserved68[11] = 0x77;
    episode.Interpretation().SetText("Sinus rhythm.");
    return episode.Serialize();
}

TEST(EpisodeRecord, IsReadBackAsItWasStored) {
    const std::vector<std::uint8_t> block = Block();
    ASSERT_EQ(block.size(), 3176u + 240);
    EpisodeRecord episode(block.data(), block.size());
    EXPECT_EQ(episode.Sample(11, 9), 1109);
    EXPECT_EQ(episode.DurationSeconds(), 33u);
    EXPECT_EQ(episode.measurements.reserved18, 0xBEEF);
    EXPECT_EQ(episode.measurements.leads[14].reserved68[11], 0x77);
    char text[32];
    episode.Interpretation().Text(text, sizeof text);
    EXPECT_STREQ(text, "Sinus rhythm.");
    EXPECT_EQ(episode.Serialize(), block);
    for (std::size_t i = 256; i < 260; ++i) {
        EXPECT_EQ(block[i], 0) << "an address in the block";
    }
    std::uint16_t checksum;
    std::memcpy(&checksum, &block[4], 2);
    std::uint32_t sum = 0;
    for (std::size_t i = 3176; i < block.size(); ++i) {
        sum += block[i];
    }
    EXPECT_EQ(checksum, sum & 0xFFFF);
}

TEST(EpisodeRecord, SerializesOnlyIntoRoomEnough) {
    EpisodeRecord episode = TwelveLeads(10);
    std::vector<std::uint8_t> block(episode.SerializedSize(), 0xAA);
    EXPECT_FALSE(episode.Serialize(block.data(), block.size() - 1));
    EXPECT_EQ(block[0], 0xAA);
    EXPECT_FALSE(episode.Serialize(nullptr, 100000));
    EXPECT_TRUE(episode.Serialize(block.data(), block.size()));
    episode.totalSize = 3176;  // says that there are no samples
    EXPECT_FALSE(episode.Serialize(block.data(), block.size()));
    EXPECT_TRUE(episode.Serialize().empty());
}

// Neither a block that is shorter than its leads nor a field that has grown is read past its end.
TEST(EpisodeRecord, SamplesPastTheBlockMakeEveryLeadAbsent) {
    EpisodeRecord episode = TwelveLeads(10);
    EXPECT_NE(episode.Samples(KX_LEAD_I), nullptr);
    for (const std::uint32_t perLead : {11u, 20u, 0x80000000u, 0xFFFFFFFFu}) {
        episode.samplesPerLead = perLead;
        for (std::uint32_t lead = 0; lead < KX_STANDARD_LEADS; ++lead) {
            EXPECT_EQ(episode.Samples(lead), nullptr) << perLead;
            EXPECT_EQ(episode.SampleMicrovolts(lead, perLead - 1), 0) << perLead;
        }
        EXPECT_TRUE(episode.AnnouncesTooMuch()) << perLead;
        EXPECT_FALSE(episode.DeriveLimbLeads()) << perLead;
    }
    episode.samplesPerLead = 10;
    episode.totalSize -= 1;
    EXPECT_EQ(episode.Samples(KX_LEAD_I), nullptr);
}

void PutWord(std::vector<std::uint8_t>& block, std::size_t offset, std::uint32_t value) {
    std::memcpy(&block[offset], &value, sizeof value);
}

TEST(EpisodeRecord, RefusesWhatIsNoEpisode) {
    const struct {
        const char* what;
        void (*damage)(std::vector<std::uint8_t>&);
        bool taken;  // the fixed part
    } rows[] = {
        {"announces less than the fixed part", [](auto& b) { PutWord(b, 0, 3175); }, false},
        {"shorter than the fixed part", [](auto& b) { b.resize(3175); }, false},
        {"empty", [](auto& b) { b.clear(); }, false},
        {"announces no samples", [](auto& b) { PutWord(b, 0, 3176); }, true},
        {"cut", [](auto& b) { b.pop_back(); }, true},
        {"another version", [](auto& b) { b[6] = 4; }, true},
        {"a sample changed", [](auto& b) { b.back() ^= 1; }, true},
        {"the checksum changed", [](auto& b) { b[4] ^= 1; }, true},
        {"no leads", [](auto& b) { PutWord(b, 8, 0); }, true},
        {"more samples than bytes", [](auto& b) { PutWord(b, 12, 11); }, true},
        {"2^31 samples, and says so", [](auto& b) { PutWord(b, 0, ~0u), PutWord(b, 12, 0x80000000u); }, true},
        {"2^64 samples", [](auto& b) { PutWord(b, 8, ~0u), PutWord(b, 12, ~0u); }, true},
        {"a count that wraps", [](auto& b) { PutWord(b, 8, 0x80000000u), PutWord(b, 12, 2); }, true},
    };
    for (const auto& row : rows) {
        std::vector<std::uint8_t> block = Block();
        row.damage(block);
        // A heap block of its exact size, so that a read behind it is found.
        EpisodeRecord fresh(block.data(), block.size());
        EXPECT_EQ(fresh.samples, nullptr) << row.what;
        EXPECT_EQ(fresh.totalSize, 0u) << row.what;
        EXPECT_EQ(fresh.SamplesPerLead(), 0u) << row.what;
        EXPECT_EQ(fresh.DurationSeconds(), 0u) << row.what;
        EXPECT_EQ(fresh.measurements.reserved18, row.taken ? 0xBEEF : 0) << row.what;

        EpisodeRecord used = TwelveLeads(3);
        EXPECT_FALSE(used.Deserialize(block.data(), block.size())) << row.what;
        EXPECT_EQ(used.SamplesPerLead(), row.taken ? 0u : 3u) << row.what;
        EXPECT_EQ(used.samples == nullptr, row.taken) << row.what;
    }
    EpisodeRecord used = TwelveLeads(3);
    EXPECT_FALSE(used.Deserialize(nullptr));
    EXPECT_EQ(used.SamplesPerLead(), 3u);
}

TEST(EpisodeRecord, TakesABlockThatIsLongerThanItsSamples) {
    std::vector<std::uint8_t> block = Block();
    const auto size = static_cast<std::uint32_t>(block.size());
    PutWord(block, 0, size + 100);
    block.resize(size + 200);
    EpisodeRecord episode = TwelveLeads(3);
    EXPECT_TRUE(episode.Deserialize(block.data()));
    EXPECT_EQ(episode.SerializedSize(), size);
    EXPECT_EQ(episode.Serialize(), Block());
}

// A lead table may say anything.
TEST(EpisodeRecord, ALeadBeyondTheSamplesIsAbsent) {
    for (const std::uint32_t offset : {111u, 119u, 120u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        std::vector<std::uint8_t> block = Block();
        PutWord(block, 64 + 8 * 3 + 4, offset);
        EpisodeRecord episode(block.data(), block.size());
        EXPECT_EQ(episode.Samples(3), nullptr) << offset;
        EXPECT_EQ(episode.Sample(KX_LEAD_MINUS_AVR, 0), 0) << offset;
        EXPECT_FALSE(episode.DeriveLimbLeads()) << offset;
        episode.ShiftLead(3, 1);
        EXPECT_NE(episode.Samples(4), nullptr) << offset;
    }
    std::vector<std::uint8_t> block = Block();
    PutWord(block, 64 + 8 * 3, KX_LEAD_V6);    // the slot of aVR holds V6's samples
    PutWord(block, 64 + 8 * 11, 0xFFFFFFFFu);  // and that of V6 no lead there is
    EpisodeRecord episode(block.data(), block.size());
    EXPECT_EQ(episode.Samples(KX_LEAD_AVR), nullptr);
    EXPECT_EQ(episode.Sample(KX_LEAD_V6, 0), 300);
    EXPECT_EQ(episode.Samples(0xFFFFFFFFu), nullptr);
}

TEST(InterpretationResult, HoldsTextCodeAndFlags) {
    InterpretationResult result;
    EXPECT_EQ(result.size, 1044u);
    result.SetText(std::string(2000, 'x').c_str());
    result.SetCode("ABCDE");
    EXPECT_STREQ(result.code, "ABC");
    EXPECT_EQ(std::strlen(result.text), 1023u);
    result.SetText("short");
    char text[4];
    result.Text(text, sizeof text);
    EXPECT_STREQ(text, "sho");
    result.Text(nullptr, 4);
    result.Text(text, 0);
    result.SetResultTime(50);
    EXPECT_TRUE(result.IsBetween(50, 50));
    EXPECT_FALSE(result.IsBetween(51, 100));
    result.flags = 0xFFFFFFFCu;
    result.SetFlag0(true);
    result.SetFlag1(true);
    result.SetFlag0(false);
    EXPECT_EQ(result.flags, 0xFFFFFFFEu);
    std::memset(result.text, 'y', sizeof result.text);
    std::memset(result.code, 'z', sizeof result.code);
    char whole[2048];
    result.Text(whole, sizeof whole);
    EXPECT_EQ(std::strlen(whole), 1023u);
    result.Code(whole, sizeof whole);
    EXPECT_STREQ(whole, "zzz");
}

}  // namespace
}  // namespace kx
