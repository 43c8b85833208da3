// A median beat's record: its leads, its block, its measurements and its interpretation.
#include <numeric>

#include "lib/dbclient/episode_record.h"
#include "lib/fiducial_markers.h"

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
    const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t> rows[] = {
        {0, 12, 12, 0, 0}, {0, 3, 12, 0, 0}, {1, 3, 3, 12, 1}, {1, 4, 4, 12, 1}, {1, 5, 0, 0, 1},
        {3, 1, 1, 17, 3},  {3, 3, 3, 17, 3}, {3, 4, 0, 0, 3},  {2, 12, 0, 0, 4}, {99, 12, 0, 0, 4}};
    KxMeasurementSet cleared{};
    cleared.size = 1872;
    for (const auto& [configuration, leadCount, stored, firstSlot, storedConfiguration] : rows) {
        const EpisodeRecord episode(configuration, leadCount, 7, 500, 1000);
        SCOPED_TRACE(testing::Message() << configuration << " with " << leadCount);
        EXPECT_TRUE(episode.storedLeads == stored && episode.leadConfiguration == storedConfiguration);
        EXPECT_EQ(episode.totalSize, stored == 0 ? 0u : 3176 + 14 * stored);
        for (std::uint32_t slot = 0; slot < KX_LEAD_SLOTS; ++slot) {
            const bool used = slot - firstSlot < stored;
            EXPECT_EQ(episode.leadTable[slot].leadCode, used ? slot : std::uint32_t{KX_LEAD_EMPTY});
            EXPECT_TRUE(!used || episode.leadTable[slot].sampleOffset == 7 * (slot - firstSlot)) << slot;
        }
        EXPECT_EQ(std::memcmp(&episode.measurements, &cleared, sizeof cleared), 0);
    }
    const std::uint32_t impossible[][3] = {{0, 500, 1000}, {7, 0, 1000}, {7, 500, 0}, {0x80000000u, 500, 1000}, {0xFFFFFFFFu, 500, 1000}};
    for (const auto& [samples, rate, resolution] : impossible) {
        EpisodeRecord episode(0, 12, samples, rate, resolution);
        EXPECT_TRUE(episode.Samples(0) == nullptr && episode.Sample(0, 0) == 0 && episode.SamplesPerLead() == 0) << samples << ' ' << rate;
        EXPECT_TRUE(episode.Serialize().empty() && !episode.DeriveLimbLeads());
    }
}

TEST(EpisodeRecord, GivesAndTakesSamplesByLeadCode) {
    TwelveLeads episode(10);
    episode.resolutionNv = 1250;
    const std::tuple<std::uint32_t, std::uint32_t, int, int> rows[] = {{3, 1, 301, 376},       {KX_LEAD_MINUS_AVR, 2, -302, -378},
                                                                       {3, 2, 302, 378},       {3, 10, 0, 0},
                                                                       {3, 0xFFFFFFFFu, 0, 0}, {12, 0, 0, 0},
                                                                       {17, 0, 0, 0},          {23, 0, 0, 0},
                                                                       {24, 0, 0, 0},          {0xFFFFFFFFu, 0, 0, 0}};
    for (const auto& [lead, place, sample, microvolts] : rows) {
        EXPECT_EQ(episode.Sample(lead, place), sample) << lead;
        EXPECT_EQ(episode.SampleMicrovolts(lead, place), microvolts) << lead;
    }
    const std::int16_t values[11] = {7, 8};
    EXPECT_FALSE(episode.SetLeadSamples(2, values, 11) || episode.SetLeadSamples(12, values, 2) || episode.SetLeadSamples(2, nullptr, 2) ||
                 episode.SetLeadSamples(KX_LEAD_MINUS_AVR, values, 2));
    EXPECT_EQ(episode.Sample(2, 9), 209);
    EXPECT_TRUE(episode.SetLeadSamples(2, values, 2));
    episode.Samples(3)[0] = kLeast;
    EXPECT_EQ(episode.Sample(KX_LEAD_MINUS_AVR, 0), 32768);
    const std::int16_t expected[] = {109, 7, 8, 0, 0, 0, 0, 0, 0, 0, 0, kLeast};  // from the last of lead 1 to the first of 3
    EXPECT_EQ(std::memcmp(episode.Samples(1) + 9, expected, sizeof expected), 0);
    episode.ShiftLead(4, 401);
    episode.ShiftLead(4, INT32_MIN);  // wraps, as 16 bits do
    EXPECT_TRUE(episode.Sample(3, 9) == 309 && episode.Sample(4, 0) == -1 && episode.Sample(5, 0) == 500);
}

// Those of a lead, in the order of their table; then those of the whole beat.
TEST(MeasurementSet, ReachesEachMarkerByItsOwnName) {
    using M = MeasurementSet;
#define LEAD(name) &M::SetLead##name##Marker, &M::Lead##name##Marker, &M::SetLead##name##Manual, &M::IsLead##name##Manual
#define BEAT(name) &M::Set##name, &M::name, &M::Set##name##Manual, &M::Is##name##Manual
    const std::tuple<void (M::*)(int, std::uint16_t), std::uint32_t (M::*)(int) const, void (M::*)(int, bool), bool (M::*)(int) const>
        leads[] = {{LEAD(POn)},      {LEAD(PPrimeOn)}, {LEAD(POff)},   {LEAD(QOn)}, {LEAD(ROn)},      {LEAD(SOn)},
                   {LEAD(RPrimeOn)}, {LEAD(SPrimeOn)}, {LEAD(QrsOff)}, {LEAD(TOn)}, {LEAD(TPrimeOn)}, {LEAD(TOff)}};
    const std::tuple<void (M::*)(std::uint16_t), std::uint32_t (M::*)() const, void (M::*)(bool), bool (M::*)() const> beats[] = {
        {BEAT(POn)}, {BEAT(POff)}, {BEAT(QrsOn)}, {BEAT(QrsOff)}, {BEAT(TOff)}};
#undef LEAD
#undef BEAT
    M set;
    const auto expect = [&set](const FiducialMarker& marker, std::size_t lead, std::uint16_t KxLeadMeasurements::*flags, auto... at) {
        const auto check = [&set, &marker, lead, flags, at...](auto write, auto read, auto mark, auto isMarked) {
            set.leads[lead].*flags = 0xF000;
            (set.*write)(at..., 0xFFFF), (set.*mark)(at..., true);
            EXPECT_TRUE(set.leads[lead].*marker.ms == 0xFFFF && (set.*read)(at...) == 0xFFFF && (set.*isMarked)(at...)) << marker.field;
            EXPECT_EQ(set.leads[lead].*flags, 0xF000 | marker.flag) << marker.field;
            (set.*mark)(at..., false);
            EXPECT_TRUE(set.leads[lead].*flags == 0xF000 && !(set.*isMarked)(at...)) << marker.field;
        };
        return check;
    };
    for (std::size_t i = 0; i < std::size(leads); ++i) {
        std::apply(expect(kLeadMarkers[i], 14, &KxLeadMeasurements::markerFlags, 14), leads[i]);
    }
    for (std::size_t i = 0; i < std::size(beats); ++i) {
        std::apply(expect(kGlobalMarkers[i], 0, &KxLeadMeasurements::globalManualFlags), beats[i]);
    }
}

TEST(EpisodeRecord, DerivesLimbLeads) {
    const struct {
        std::int16_t one, two, expected[4];  // III, aVR, aVL, aVF
    } rows[] = {{100, 300, {200, -200, -50, 250}},
                {101, 300, {199, -200, -49, 250}},
                {-101, -300, {-199, 200, 49, -250}},        // toward zero
                {30000, -30000, {5536, 0, -20536, 20536}},  // wraps, as 16 bits do
                {kLeast, kLeast, {0, kLeast, -16384, -16384}}};
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

using Bytes = std::vector<std::uint8_t>;

Bytes Block() {
    TwelveLeads episode(10);
    episode.durationSeconds = 33;
    episode.measurements.reserved18 = 0xBEEF;
    episode.Interpretation().SetText("Sinus rhythm.");
    return episode.Serialize();
}

TEST(EpisodeRecord, IsReadBackAsItWasStored) {
    Bytes block = Block();
    ASSERT_EQ(block.size(), 3176u + 240);
    EpisodeRecord episode(block.data(), block.size());
    EXPECT_TRUE(episode.Sample(11, 9) == 1109 && episode.DurationSeconds() == 33 && episode.measurements.reserved18 == 0xBEEF);
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
    for (const auto& [before, after] : {std::pair{33, 34u}, {65000, 65000u}}) {
        episode.durationSeconds = static_cast<std::uint16_t>(before);
        episode.AddSecond();
        EXPECT_EQ(episode.DurationSeconds(), after);
    }
}

void PutWord(Bytes& block, std::size_t offset, std::uint32_t value) { std::memcpy(&block[offset], &value, sizeof value); }

TEST(EpisodeRecord, RefusesWhatIsNoEpisode) {
    // Whether the fixed part is taken.
    const std::tuple<const char*, void (*)(Bytes&), bool> rows[] = {
        {"announces less than the fixed part", [](Bytes& b) { PutWord(b, 0, 3175); }, false},
        {"shorter than the fixed part", [](Bytes& b) { b.resize(3175); }, false},
        {"empty", [](Bytes& b) { b.clear(); }, false},
        {"announces no samples", [](Bytes& b) { PutWord(b, 0, 3176); }, true},
        {"cut", [](Bytes& b) { b.pop_back(); }, true},
        {"another version", [](Bytes& b) { b[6] = 4; }, true},
        {"a sample changed", [](Bytes& b) { b.back() ^= 1; }, true},
        {"the checksum changed", [](Bytes& b) { b[4] ^= 1; }, true},
        {"no leads", [](Bytes& b) { PutWord(b, 8, 0); }, true},
        {"more samples than bytes", [](Bytes& b) { PutWord(b, 12, 11); }, true},
        {"2^31 samples, and says so", [](Bytes& b) { PutWord(b, 0, ~0u), PutWord(b, 12, 0x80000000u); }, true},
        {"a count that wraps", [](Bytes& b) { PutWord(b, 8, 0x80000000u), PutWord(b, 12, 2); }, true}};
    for (const auto& [what, damage, taken] : rows) {
        SCOPED_TRACE(what);
        Bytes block = Block();
        damage(block);
        // A heap block of its exact size, so that a read behind it is found.
        const EpisodeRecord fresh(block.data(), block.size());
        EXPECT_TRUE(fresh.samples == nullptr && fresh.totalSize == 0 && fresh.SamplesPerLead() == 0 && fresh.DurationSeconds() == 0);
        EXPECT_EQ(fresh.measurements.reserved18, taken ? 0xBEEF : 0);
        TwelveLeads used(3);
        EXPECT_FALSE(used.Deserialize(block.data(), block.size()));
        EXPECT_TRUE(used.SamplesPerLead() == (taken ? 0u : 3u) && (used.samples == nullptr) == taken);
    }
    TwelveLeads used(3);
    EXPECT_FALSE(used.Deserialize(nullptr));
    EXPECT_EQ(used.SamplesPerLead(), 3u);
}

TEST(EpisodeRecord, FindsALeadByTheTableAndOnlyWithinTheSamples) {
    Bytes block = Block();
    PutWord(block, 64 + 8 * 3, KX_LEAD_V6);    // the slot of aVR holds V6's samples
    PutWord(block, 64 + 8 * 11, 0xFFFFFFFFu);  // and that of V6 no lead there is
    PutWord(block, 64 + 8 * 4 + 4, 111);       // one sample of aVL too far
    EpisodeRecord episode(block.data(), block.size());
    EXPECT_TRUE(episode.Samples(KX_LEAD_AVR) == nullptr && episode.Samples(KX_LEAD_AVL) == nullptr && !episode.DeriveLimbLeads());
    EXPECT_EQ(episode.Sample(KX_LEAD_V6, 0), 300);
}

}  // namespace
}  // namespace kx::test
