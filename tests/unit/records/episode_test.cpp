// A median beat's record: its leads, its block, its measurements and its interpretation.
#include <numeric>

#include "lib/dbclient/episode_record.h"

namespace kx::test {
namespace {

constexpr std::int16_t kLeast = INT16_MIN;

// Twelve leads of `count` samples; lead l, sample i is 100 l + i.
struct TwelveLeads : EpisodeRecord {
    explicit TwelveLeads(std::uint32_t count) : EpisodeRecord(kTwelveLeadConfiguration, 12, count, 500, 1000) {
        for (std::uint32_t lead = 0; lead < 12; ++lead) {
            std::iota(Samples(lead), Samples(lead) + count, static_cast<std::int16_t>(100 * lead));
        }
    }
};

TEST(EpisodeRecord, IsLaidOutByItsConfiguration) {
    const struct {
        std::uint32_t configuration, leadCount, stored, firstSlot, storedConfiguration;
    } rows[] = {{0, 12, 12, 0, 0}, {0, 3, 12, 0, 0}, {1, 3, 3, 12, 1}, {1, 4, 4, 12, 1}, {1, 5, 0, 0, 1},
                {3, 1, 1, 17, 3},  {3, 3, 3, 17, 3}, {3, 4, 0, 0, 3},  {2, 12, 0, 0, 4}, {99, 12, 0, 0, 4}};
    for (const auto& row : rows) {
        EpisodeRecord episode(row.configuration, row.leadCount, 7, 500, 1000);
        SCOPED_TRACE(testing::Message() << row.configuration << " with " << row.leadCount);
        EXPECT_EQ(episode.storedLeads, row.stored);
        EXPECT_EQ(episode.leadConfiguration, row.storedConfiguration);
        EXPECT_EQ(episode.SamplesPerLead(), row.stored == 0 ? 0u : 7u);
        EXPECT_EQ(episode.totalSize, row.stored == 0 ? 0u : 3176 + 14 * row.stored);
        for (std::uint32_t slot = 0; slot < KX_LEAD_SLOTS; ++slot) {
            const bool used = slot - row.firstSlot < row.stored;
            EXPECT_EQ(episode.leadTable[slot].leadCode, used ? slot : std::uint32_t{KX_LEAD_EMPTY});
            EXPECT_TRUE(!used || episode.leadTable[slot].sampleOffset == 7 * (slot - row.firstSlot)) << slot;
        }
        EXPECT_EQ(episode.formatVersion, 5);
        EXPECT_EQ(episode.state, 2u);
        EXPECT_EQ(episode.interpretation.size, 1044u);
        KxMeasurementSet cleared{};
        cleared.size = 1872;
        EXPECT_EQ(std::memcmp(&episode.measurements, &cleared, sizeof cleared), 0);
    }
    const std::uint32_t impossible[][3] = {{0, 500, 1000}, {7, 0, 1000}, {7, 500, 0}, {0x80000000u, 500, 1000}, {0xFFFFFFFFu, 500, 1000}};
    for (const auto& [samples, rate, resolution] : impossible) {
        EpisodeRecord episode(0, 12, samples, rate, resolution);
        EXPECT_TRUE(episode.samples == nullptr && episode.SamplesPerLead() == 0) << samples << ' ' << rate << ' ' << resolution;
        EXPECT_TRUE(episode.Samples(0) == nullptr && episode.Sample(0, 0) == 0);
        EXPECT_TRUE(episode.Serialize().empty() && !episode.DeriveLimbLeads());
        episode.ClearSamples();
    }
}

TEST(EpisodeRecord, GivesAndTakesSamplesByLeadCode) {
    TwelveLeads episode(10);
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
        EXPECT_TRUE(episode.Samples(absent) == nullptr && episode.Sample(absent, 0) == 0) << absent;
    }
    episode.Samples(3)[0] = kLeast;
    EXPECT_EQ(episode.Sample(KX_LEAD_MINUS_AVR, 0), 32768);

    const std::int16_t values[11] = {7, 8};
    EXPECT_FALSE(episode.SetLeadSamples(2, values, 11) || episode.SetLeadSamples(12, values, 2) || episode.SetLeadSamples(2, nullptr, 2) ||
                 episode.SetLeadSamples(KX_LEAD_MINUS_AVR, values, 2));
    EXPECT_EQ(episode.Sample(2, 9), 209);
    EXPECT_TRUE(episode.SetLeadSamples(2, values, 2));
    const std::int16_t expected[] = {109, 7, 8, 0, 0, 0, 0, 0, 0, 0, 0, kLeast};  // from the last of lead 1 to the first of 3
    EXPECT_EQ(std::memcmp(episode.Samples(1) + 9, expected, sizeof expected), 0);
    episode.ShiftLead(4, 401);
    episode.ShiftLead(4, INT32_MIN);  // wraps, as 16 bits do
    EXPECT_EQ(episode.Sample(3, 9), 309);
    EXPECT_EQ(episode.Sample(4, 0), -1);
    EXPECT_EQ(episode.Sample(5, 0), 500);
}

TEST(EpisodeRecord, DerivesLimbLeads) {
    const struct {
        std::int16_t one, two, expected[4];  // III, aVR, aVL, aVF
    } rows[] = {
        {100, 300, {200, -200, -50, 250}},         {101, 300, {199, -200, -49, 250}},
        {-101, -300, {-199, 200, 49, -250}},                                                       // toward zero
        {30000, -30000, {5536, 0, -20536, 20536}}, {kLeast, kLeast, {0, kLeast, -16384, -16384}},  // wraps, as 16 bits do
    };
    TwelveLeads episode(1);
    for (const auto& row : rows) {
        episode.Samples(0)[0] = row.one;
        episode.Samples(1)[0] = row.two;
        ASSERT_TRUE(episode.DeriveLimbLeads());
        EXPECT_EQ(std::memcmp(episode.Samples(2), row.expected, sizeof row.expected), 0) << row.one << ' ' << row.two;
    }
    episode.leadTable[5].leadCode = KX_LEAD_EMPTY;
    episode.Samples(1)[0] = 5;
    EXPECT_FALSE(episode.DeriveLimbLeads());
    EXPECT_EQ(episode.Sample(2, 0), 0);
}

TEST(EpisodeRecord, KeepsTime) {
    TwelveLeads episode(1);
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
    TwelveLeads episode(10);
    episode.durationSeconds = 33;
    episode.measurements.reserved18 = 0xBEEF;
    episode.measurements.leads[14].reserved68[11] = 0x77;
    episode.Interpretation().SetText("Sinus rhythm.");
    return episode.Serialize();
}

TEST(EpisodeRecord, IsReadBackAsItWasStored) {
    std::vector<std::uint8_t> block = Block();
    ASSERT_EQ(block.size(), 3176u + 240);
    EpisodeRecord episode(block.data(), block.size());
    EXPECT_EQ(episode.Sample(11, 9), 1109);
    EXPECT_EQ(episode.DurationSeconds(), 33u);
    EXPECT_EQ(episode.measurements.reserved18, 0xBEEF);
    EXPECT_EQ(episode.measurements.leads[14].reserved68[11], 0x77);
    EXPECT_STREQ(episode.interpretation.text, "Sinus rhythm.");
    EXPECT_EQ(episode.Serialize(), block);
    EXPECT_EQ(std::accumulate(block.begin() + 256, block.begin() + 260, 0), 0) << "an address in the block";
    EXPECT_EQ(block[4] | block[5] << 8, std::accumulate(block.begin() + 3176, block.end(), 0) & 0xFFFF);

    EXPECT_FALSE(episode.Serialize(block.data(), block.size() - 1) || episode.Serialize(nullptr, 100000));
    EXPECT_TRUE(episode.Serialize(block.data(), block.size()));
    const auto longer = static_cast<std::uint32_t>(block.size() + 100);  // than its samples
    std::memcpy(block.data(), &longer, 4);
    block.resize(block.size() + 200);
    TwelveLeads other(3);
    EXPECT_TRUE(other.Deserialize(block.data()));
    EXPECT_EQ(other.Serialize(), Block());
    episode.totalSize = 3176;  // says that there are no samples
    EXPECT_FALSE(episode.Serialize(block.data(), block.size()));
    EXPECT_TRUE(episode.Serialize().empty());
}

void PutWord(std::vector<std::uint8_t>& block, std::size_t offset, std::uint32_t value) {
    std::memcpy(&block[offset], &value, sizeof value);
}

TEST(EpisodeRecord, RefusesWhatIsNoEpisode) {
    const struct {
        const char* what;
        void (*damage)(std::vector<std::uint8_t>&);
        bool taken;  // the fixed part
    } rows[] = {{"announces less than the fixed part", [](auto& b) { PutWord(b, 0, 3175); }, false},
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
                {"a count that wraps", [](auto& b) { PutWord(b, 8, 0x80000000u), PutWord(b, 12, 2); }, true}};
    for (const auto& row : rows) {
        std::vector<std::uint8_t> block = Block();
        row.damage(block);
        // A heap block of its exact size, so that a read behind it is found.
        EpisodeRecord fresh(block.data(), block.size());
        EXPECT_TRUE(fresh.samples == nullptr && fresh.totalSize == 0 && fresh.SamplesPerLead() == 0 && fresh.DurationSeconds() == 0)
            << row.what;
        EXPECT_EQ(fresh.measurements.reserved18, row.taken ? 0xBEEF : 0) << row.what;
        TwelveLeads used(3);
        EXPECT_FALSE(used.Deserialize(block.data(), block.size())) << row.what;
        EXPECT_EQ(used.SamplesPerLead(), row.taken ? 0u : 3u) << row.what;
        EXPECT_EQ(used.samples == nullptr, row.taken) << row.what;
    }
    TwelveLeads used(3);
    EXPECT_FALSE(used.Deserialize(nullptr));
    EXPECT_EQ(used.SamplesPerLead(), 3u);
}

// A lead table may say anything.
TEST(EpisodeRecord, ALeadBeyondTheSamplesIsAbsent) {
    std::vector<std::uint8_t> block = Block();
    for (const std::uint32_t offset : {111u, 119u, 120u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        PutWord(block, 64 + 8 * 3 + 4, offset);
        EpisodeRecord episode(block.data(), block.size());
        EXPECT_TRUE(episode.Samples(3) == nullptr && episode.Sample(KX_LEAD_MINUS_AVR, 0) == 0 && !episode.DeriveLimbLeads()) << offset;
        episode.ShiftLead(3, 1);
        EXPECT_NE(episode.Samples(4), nullptr) << offset;
    }
    block = Block();
    PutWord(block, 64 + 8 * 3, KX_LEAD_V6);    // the slot of aVR holds V6's samples
    PutWord(block, 64 + 8 * 11, 0xFFFFFFFFu);  // and that of V6 no lead there is
    EpisodeRecord episode(block.data(), block.size());
    EXPECT_EQ(episode.Samples(KX_LEAD_AVR), nullptr);
    EXPECT_EQ(episode.Sample(KX_LEAD_V6, 0), 300);
    EXPECT_EQ(episode.Samples(0xFFFFFFFFu), nullptr);

    TwelveLeads grown(10);  // of a block that is shorter than its leads
    for (const std::uint32_t perLead : {11u, 20u, 0x80000000u, 0xFFFFFFFFu}) {
        grown.samplesPerLead = perLead;
        EXPECT_TRUE(grown.Samples(0) == nullptr && grown.SampleMicrovolts(11, perLead - 1) == 0 && grown.AnnouncesTooMuch()) << perLead;
    }
    grown.samplesPerLead = 10;
    grown.totalSize -= 1;
    EXPECT_EQ(grown.Samples(KX_LEAD_I), nullptr);
}

TEST(InterpretationResult, HoldsTextCodeAndFlags) {
    InterpretationResult result;
    result.SetText(std::string(2000, 'x').c_str());
    result.SetCode("ABCDE");
    EXPECT_STREQ(result.code, "ABC");
    EXPECT_EQ(std::strlen(result.text), 1023u);
    result.SetResultTime(50);
    EXPECT_TRUE(result.IsBetween(50, 50) && !result.IsBetween(51, 100) && !result.IsBetween(0, 49));
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
}  // namespace kx::test
