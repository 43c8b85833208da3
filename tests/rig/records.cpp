#include "tests/rig/records.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

namespace kx::test {
namespace {

// A raised cosine from `on` to `off` (ms), `microvolts` in its middle.
struct Deflection {
    double on;
    double off;
    double microvolts;
};
constexpr Deflection kWaves[] = {{150, 250, 150}, {350, 374, -150}, {374, 414, 1200}, {414, 450, -300}, {560, 750, 350}};

double Height(const Deflection& wave, double ms) {
    constexpr double kTurn = 6.283185307179586;
    return ms < wave.on || ms > wave.off ? 0 : wave.microvolts / 2 * (1 - std::cos(kTurn * (ms - wave.on) / (wave.off - wave.on)));
}

// The V6 markers stand at round places, those of the other leads further right.
void FillLead(KxLeadMeasurements& lead, int code) {
    const int shift = code == KX_LEAD_V6 ? 0 : 10 + code;
    const auto at = [shift](int ms) { return static_cast<std::uint16_t>(ms + shift); };
    const auto amplitude = [code](int sign, int rest) { return static_cast<std::int16_t>(sign * (100 * code + rest)); };
    lead.pOn = 150, lead.pOff = 250, lead.qrsOn = 350, lead.qrsOff = 450, lead.tOff = 750;
    lead.pOnMarker = at(200), lead.pPrimeOnMarker = at(260), lead.pOffMarker = at(330);
    lead.qOnMarker = at(300), lead.rOnMarker = at(340), lead.sOnMarker = at(380);
    lead.rPrimeOnMarker = at(420), lead.sPrimeOnMarker = at(460), lead.qrsOffMarker = at(520);
    lead.tOnMarker = at(500), lead.tPrimeOnMarker = at(560), lead.tOffMarker = at(630);
    lead.aP1 = amplitude(1, 1), lead.aP2 = amplitude(-1, 2), lead.aQ = amplitude(-1, 3);
    lead.aR = amplitude(1, 4), lead.aS = amplitude(-1, 5), lead.aR1 = amplitude(1, 6);
    lead.aS1 = amplitude(-1, 7), lead.aT1 = amplitude(1, 8), lead.aT2 = amplitude(-1, 9);
}

constexpr std::size_t kPage = 4096;

std::size_t PagesFor(std::size_t size) { return (size + kPage - 1) / kPage * kPage; }

void StoreBytes(std::uint8_t* place, long value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        place[i] = static_cast<std::uint8_t>(static_cast<unsigned long>(value) >> (8 * i));
    }
}

constexpr std::size_t kEpisodeSize = 3176;
constexpr std::size_t kSetOffset = 260;
constexpr std::size_t kLeadOffset = 42;
constexpr std::size_t kLeadSize = 122;

template <class Record>
void FillFrom(Record& record, std::size_t first, std::size_t end) {
    std::memset(reinterpret_cast<std::uint8_t*>(&record) + first, 0xFF, end - first);
}

}  // namespace

std::unique_ptr<TestRecord> NewRecord() {
    auto test = std::make_unique<TestRecord>();
    test->SetTestType(KX_TEST_RESTING);
    test->SetEcg("ecg", 3);
    test->CreateAnnotations(16);
    test->SetOriginalInterpretation(nullptr, "Testo di prima.");
    EpisodeRecord* const episode = test->AddEpisode(kTwelveLeadConfiguration, 12, 1000, 1000, 1000);
    episode->durationSeconds = 10;
    for (std::uint32_t i = 0; i < 12 * 1000; ++i) {
        double microvolts = 0;
        for (const Deflection& wave : kWaves) {
            microvolts += Height(wave, i % 1000);
        }
        episode->samples[i] = static_cast<std::int16_t>(microvolts * (i / 1000 % 2 == 0 ? 1.0 : 0.8));
    }
    KxMeasurementSet& set = episode->measurements;
    set.measured = 1;
    set.pDuration = 110, set.prInterval = 160, set.qrsDuration = 98, set.qtInterval = 390, set.qtc = 411;
    set.qtcBazett = 423, set.rrInterval = 801, set.qrsAxis = -35;
    for (int code = 0; code < KX_MEASURED_LEADS; ++code) {
        FillLead(set.leads[code], code);
    }
    test->ClearModified();
    return test;
}

ForeignRecord::Fenced::Fenced(std::size_t bytesSize) : size(bytesSize) {
    const std::size_t room = PagesFor(size);
    auto* const pages = static_cast<std::uint8_t*>(VirtualAlloc(nullptr, room + kPage, MEM_RESERVE, PAGE_NOACCESS));
    VirtualAlloc(pages, room, MEM_COMMIT, PAGE_READWRITE);
    bytes = pages + room - size;
}

ForeignRecord::Fenced::~Fenced() { VirtualFree(bytes + size - PagesFor(size), 0, MEM_RELEASE); }

ForeignRecord::ForeignRecord() : record_(KX_TEST_RECORD_SIZE), episode_(kEpisodeSize), samples_(0) {
    Store(7556, KX_TEST_RESTING, 4);
    Store(7608, 1, 4);
    Store(7612, static_cast<long>(reinterpret_cast<std::uintptr_t>(episode_.bytes)), 4);
    StoreEpisode(0, kEpisodeSize, 4);
    StoreEpisode(6, 5, 2);
    StoreEpisode(kSetOffset, 1872, 4);
    StoreEpisode(kSetOffset + 4, 1, 4);
}

ForeignRecord::ForeignRecord(const TestRecord& model)
    : record_(KX_TEST_RECORD_SIZE), episode_(kEpisodeSize), samples_(model.Episode(0)->totalSize - kEpisodeSize) {
    const KxEpisodeRecord& episode = *model.Episode(0);
    std::memcpy(record_.bytes, static_cast<const KxTestRecord*>(&model), record_.size);
    std::memcpy(episode_.bytes, &episode, episode_.size);
    std::memcpy(samples_.bytes, episode.samples, samples_.size);
    Record().episodes[0] = &Episode();
    Episode().samples = reinterpret_cast<std::int16_t*>(samples_.bytes);
}

ForeignRecord::~ForeignRecord() = default;

void ForeignRecord::Revoke() {
    DWORD before = 0;
    for (const Fenced* const memory : {&record_, &episode_, &samples_}) {
        VirtualProtect(memory->bytes, std::max<std::size_t>(memory->size, 1), PAGE_NOACCESS, &before);
    }
}

void ForeignRecord::Store(std::size_t offset, long value, int bytes) { StoreBytes(record_.bytes + offset, value, bytes); }

void ForeignRecord::StoreEpisode(std::size_t offset, long value, int bytes) { StoreBytes(episode_.bytes + offset, value, bytes); }

void ForeignRecord::StoreGlobal(std::size_t offset, int value) { StoreEpisode(kSetOffset + offset, value, 2); }

void ForeignRecord::StoreLead(std::size_t lead, std::size_t offset, int value) {
    StoreGlobal(kLeadOffset + kLeadSize * lead + offset, value);
}

std::unique_ptr<TestRecord> AbsurdRecord() {
    auto test = NewRecord();
    FillFrom<KxTestRecord>(*test, offsetof(KxTestRecord, acquisitionTime), offsetof(KxTestRecord, testType));
    FillFrom<KxTestRecord>(*test, offsetof(KxTestRecord, value7572), offsetof(KxTestRecord, buffer7584));
    KxEpisodeRecord& episode = *test->Episode(0);
    episode.sampleRate = 0;
    episode.resolutionNv = 0xFFFFFFFF;
    FillFrom(episode, offsetof(KxEpisodeRecord, durationSeconds), offsetof(KxEpisodeRecord, sampleRate));
    FillFrom(episode, offsetof(KxEpisodeRecord, measurements), sizeof(KxEpisodeRecord));
    return test;
}

}  // namespace kx::test
