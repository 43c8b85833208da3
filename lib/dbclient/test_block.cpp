#include "lib/dbclient/test_block.h"

#include <array>
#include <cstring>
#include <memory>
#include <new>

#include "lib/annotation_store.h"
#include "lib/dbclient/sub_records.h"
#include "lib/dbclient/test_record.h"

namespace kx {

namespace {

constexpr std::uint32_t Tag(const char (&name)[5]) {
    return static_cast<std::uint32_t>(name[0]) | static_cast<std::uint32_t>(name[1]) << 8 |
           static_cast<std::uint32_t>(name[2]) << 16 | static_cast<std::uint32_t>(name[3]) << 24;
}

constexpr std::uint32_t kMagic = Tag("KXTB");
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderSize = 16;
constexpr std::size_t kFieldsSize =
    offsetof(KxTestRecord, buffer7584);  // behind them stand pointers and counts
constexpr std::size_t kEcgHeaderSize = 280;
constexpr std::uint32_t kMostEcgBytes = 1u << 30;
constexpr std::uint32_t kFurtherSeries = 32;  // the series beside those of the slots

// Of the polynomial 0x04C11DB7, reflected (ISO 3309).
std::uint32_t Crc32(std::span<const std::uint8_t> bytes) {
    static const auto table = [] {
        std::array<std::uint32_t, 256> made{};
        for (std::uint32_t i = 0; i < made.size(); ++i) {
            std::uint32_t value = i;
            for (int bit = 0; bit < 8; ++bit) {
                value = value >> 1 ^ (value & 1 ? 0xEDB88320u : 0u);
            }
            made[i] = value;
        }
        return made;
    }();
    std::uint32_t crc = ~0u;
    for (const std::uint8_t byte : bytes) {
        crc = crc >> 8 ^ table[(crc ^ byte) & 0xFFu];
    }
    return ~crc;
}

// The size of a signal by its header; 0 when that makes no sense.
std::size_t EcgSize(const void* ecg) {
    std::uint32_t header[2];
    std::memcpy(header, ecg, sizeof header);
    const std::uint64_t size = kEcgHeaderSize + std::uint64_t{2} * header[0] * header[1];
    return header[0] <= KX_LEAD_SLOTS && size <= kMostEcgBytes ? static_cast<std::size_t>(size) : 0;
}

class Writer {
  public:
    void Words(std::initializer_list<std::uint32_t> words) {
        for (const std::uint32_t word : words) {
            Bytes(&word, sizeof word);
        }
    }
    void Bytes(const void* bytes, std::size_t size) {
        const auto* first = static_cast<const std::uint8_t*>(bytes);
        block.insert(block.end(), first, first + size);
    }
    void Chunk(std::uint32_t tag, const void* bytes, std::size_t size) {
        Words({tag, static_cast<std::uint32_t>(size)});
        Bytes(bytes, size);
    }
    template <class Record>
    void Fixed(std::uint32_t tag, const Record* record) {
        if (record != nullptr) {
            Chunk(tag, record, sizeof *record);
        }
    }
    void Series(std::uint32_t slot, const KxValueSeries* series) {
        if (Understood(series) == nullptr) {
            return;
        }
        Words({Tag("SERI"), static_cast<std::uint32_t>(4 + series->count * sizeof(KxSeriesPoint)), slot});
        Bytes(series->points, series->count * sizeof(KxSeriesPoint));
    }
    void Annotations(std::uint32_t tag, const KxAnnotationStore* store) {
        if (store == nullptr) {
            return;
        }
        std::uint32_t slots = 0;
        std::uint32_t held = 0;
        for (std::uint32_t slot = 0; slot < KX_BEAT_LEADS; ++slot) {
            slots |= store->leadBeats[slot] != nullptr ? 1u << slot : 0u;
            held += store->leadBeats[slot] != nullptr;
        }
        const std::uint32_t count = store->entries != nullptr ? store->count : 0;
        const std::size_t size = 20 + count * (sizeof(KxAnnotation) + held * sizeof(KxLeadBeat));
        Words({tag, static_cast<std::uint32_t>(size), store->capacity, count, store->sampleRate,
               store->resolutionNv, slots});
        Bytes(store->entries, count * sizeof(KxAnnotation));
        for (const KxLeadBeat* beats : store->leadBeats) {
            if (beats != nullptr) {
                Bytes(beats, count * sizeof(KxLeadBeat));
            }
        }
    }

    std::vector<std::uint8_t> block;
};

// The bytes of one chunk, taken from the front.
class Reader {
  public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    bool IsAtEnd() const { return bytes_.empty(); }
    bool Word(std::uint32_t& word) { return Take(&word, sizeof word); }
    bool Take(void* to, std::size_t size) {
        if (size > bytes_.size()) {
            return false;
        }
        if (size > 0) {
            std::memcpy(to, bytes_.data(), size);
        }
        bytes_ = bytes_.subspan(size);
        return true;
    }
    bool TakeChunk(std::uint32_t& tag, std::span<const std::uint8_t>& content) {
        std::uint32_t size = 0;
        if (!Word(tag) || !Word(size) || size > bytes_.size()) {
            return false;
        }
        content = bytes_.first(size);
        bytes_ = bytes_.subspan(size);
        return true;
    }
    std::size_t Left() const { return bytes_.size(); }
    const std::uint8_t* Data() const { return bytes_.data(); }

  private:
    std::span<const std::uint8_t> bytes_;
};

template <class Record>
std::unique_ptr<Record> TakeFixed(Reader& chunk) {
    auto record = std::make_unique<Record>();
    return chunk.Take(record.get(), sizeof(Record)) && chunk.IsAtEnd() ? std::move(record) : nullptr;
}

// Hands a fixed record to the setter that owns it; false when the chunk is no such record.
template <class Record, class Setter>
bool SetFixed(Reader& chunk, Setter set) {
    std::unique_ptr<Record> record = TakeFixed<Record>(chunk);
    if (record == nullptr || Understood(record.get()) == nullptr) {
        return false;
    }
    set(std::move(record));  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the setter owns it
    return true;
}

bool ReadSeries(Reader& chunk, TestRecord& test) {
    std::uint32_t slot = 0;
    if (!chunk.Word(slot) || slot > kFurtherSeries || chunk.Left() % sizeof(KxSeriesPoint) != 0) {
        return false;
    }
    std::vector<KxSeriesPoint> points(chunk.Left() / sizeof(KxSeriesPoint));
    chunk.Take(points.data(), points.size() * sizeof(KxSeriesPoint));
    auto series = std::make_unique<ValueSeries>(points);
    if (series->count != points.size()) {
        return false;
    }
    if (slot == kFurtherSeries) {
        test.SetSeries9796(std::move(series));
        return true;
    }
    return test.SetSeries(static_cast<int>(slot) + kFirstSeriesCode, std::move(series));
}

// Null: the chunk contradicts itself.
std::unique_ptr<AnnotationStore> ReadAnnotations(Reader& chunk) {
    std::uint32_t words[5];  // capacity, count, rate, resolution, slots
    if (!chunk.Take(words, sizeof words)) {
        return nullptr;
    }
    const auto [capacity, count, rate, resolution, slots] = words;
    constexpr std::uint32_t kChannels = 7u << kFirstChannelSlot;
    const std::uint64_t entries = std::uint64_t{count} * sizeof(KxAnnotation);
    if (count > capacity || entries > chunk.Left() || capacity > kMostEcgBytes / sizeof(KxAnnotation)) {
        return nullptr;
    }
    auto store = (slots & kChannels) != 0 ? std::make_unique<AnnotationStore>(capacity)
                                          : std::make_unique<AnnotationStore>(capacity, slots == 0);
    // The store begins as the record that the suite's modules read.
    auto& raw = *reinterpret_cast<KxAnnotationStore*>(store.get());
    if (count > 0 && raw.entries == nullptr) {
        return nullptr;
    }
    chunk.Take(raw.entries, static_cast<std::size_t>(entries));
    for (std::uint32_t slot = 0; slot < KX_BEAT_LEADS; ++slot) {
        if ((slots >> slot & 1) != 0 && (raw.leadBeats[slot] == nullptr ||
                                         !chunk.Take(raw.leadBeats[slot], count * sizeof(KxLeadBeat)))) {
            return nullptr;
        }
    }
    raw.count = count;
    store->SetSampling(rate, resolution);
    store->ClearModified();
    return chunk.IsAtEnd() ? std::move(store) : nullptr;
}

bool ReadSmallObject(Reader& chunk, TestRecord& test) {
    if (chunk.Left() == 12) {
        std::array<std::uint8_t, 12> bytes;
        return chunk.Take(bytes.data(), bytes.size()) && test.SetObject7600(bytes);
    }
    std::array<std::uint8_t, 24> bytes;
    return chunk.Take(bytes.data(), bytes.size()) && chunk.IsAtEnd() && test.SetObject7604(bytes);
}

bool ReadEcg(Reader& chunk, TestRecord& test) {
    const std::uint8_t* data = chunk.Data();
    const std::size_t size = chunk.Left();
    return size >= kEcgHeaderSize && EcgSize(data) == size && test.SetEcg(data, size);
}

// Values behind the pointers that are no pointers.
bool ReadFields(Reader& chunk, TestRecord& test) {
    return chunk.Take(static_cast<KxTestRecord*>(&test), kFieldsSize) && chunk.IsAtEnd();
}

bool ReadChunk(std::uint32_t tag, std::span<const std::uint8_t> content, TestRecord& test) {
    Reader chunk(content);
    switch (tag) {
        case Tag("RECD"):
            return ReadFields(chunk, test);
        case Tag("EPIS"):
            return test.AddEpisode(content.data(), content.size()) != nullptr;
        case Tag("ANN1"):
        case Tag("ANN2"): {
            auto store = ReadAnnotations(chunk);
            return store != nullptr &&
                   (tag == Tag("ANN1") ? test.ReplaceAnnotations(std::move(store))
                                       : test.ReplaceAnnotations2(std::move(store))) != nullptr;
        }
        case Tag("HIST"):
            return test.history != nullptr &&
                   static_cast<History*>(test.history)->Deserialize(content.data(), content.size());
        case Tag("ECG "):
            return ReadEcg(chunk, test);
        case Tag("OBJ "):
            return ReadSmallObject(chunk, test);
        case Tag("SERI"):
            return ReadSeries(chunk, test);
        case Tag("STAG"):
            return SetFixed<KxStressStage>(chunk, [&](auto stage) { test.AddStage(std::move(stage)); });
        case Tag("STAC"):
            return SetFixed<KxStressStage>(chunk,
                                           [&](auto stage) { test.SetCurrentStage(std::move(stage)); });
        case Tag("PRES"):
            return SetFixed<KxPressureReading>(chunk,
                                               [&](auto reading) { test.AddPressure(std::move(reading)); });
        case Tag("PRSU"):
            return SetFixed<KxPressureReading>(
                chunk, [&](auto reading) { test.SetPressureSummary(std::move(reading)); });
        case Tag("RAWB"): {
            const auto block = TakeFixed<KxRawBlock>(chunk);
            return block != nullptr && test.AddRawBlock(*block);
        }
        case Tag("HOLD"):
            return SetFixed<KxHolterData>(chunk, [&](auto data) { test.SetHolterData(std::move(data)); });
        case Tag("HOLS"):
            return SetFixed<KxHolterSummary>(
                chunk, [&](auto summary) { test.SetHolterSummary(std::move(summary)); });
        case Tag("SPIR"):
            return SetFixed<KxSpirometry>(chunk, [&](auto block) { test.SetSpirometry(std::move(block)); });
        default:
            return true;
    }
}

void WriteSubObjects(const TestRecord& test, Writer& out) {
    for (std::uint32_t slot = 0; slot < kFurtherSeries; ++slot) {
        out.Series(slot, test.series[slot]);
    }
    out.Series(kFurtherSeries, test.series9796);
    for (std::uint32_t i = 0; i < test.StageCount(); ++i) {
        out.Fixed(Tag("STAG"), Understood(test.stages[i]));
    }
    out.Fixed(Tag("STAC"), Understood(test.currentStage));
    for (std::uint32_t i = 0; i < test.PressureCount(); ++i) {
        out.Fixed(Tag("PRES"), Understood(test.pressures[i]));
    }
    out.Fixed(Tag("PRSU"), Understood(test.pressureSummary));
    for (std::uint32_t i = 0; i < test.RawBlockCount(); ++i) {
        out.Fixed(Tag("RAWB"), test.RawBlock(static_cast<int>(i)));
    }
    out.Fixed(Tag("HOLD"), Understood(test.holterData));
    out.Fixed(Tag("HOLS"), Understood(test.holterSummary));
    out.Fixed(Tag("SPIR"), Understood(test.spirometry));
}

}  // namespace

std::vector<std::uint8_t> WriteTestBlock(const TestRecord& test) {
    Writer out;
    out.Words({kMagic, kVersion, 0, 0});
    out.Chunk(Tag("RECD"), static_cast<const KxTestRecord*>(&test), kFieldsSize);
    if (test.history != nullptr) {
        const std::vector<std::uint8_t> history = static_cast<const History*>(test.history)->Serialize();
        out.Chunk(Tag("HIST"), history.data(), history.size());
    }
    for (std::uint32_t i = 0; i < test.EpisodeCount(); ++i) {
        const auto* episode = test.Episode(i);
        std::vector<std::uint8_t> bytes(episode->SerializedSize());
        // Computes the checksum anew, which is a field of the episode: a copy takes it.
        if (const_cast<EpisodeRecord*>(episode)->Serialize(bytes.data(), bytes.size())) {
            out.Chunk(Tag("EPIS"), bytes.data(), bytes.size());
        }
    }
    out.Annotations(Tag("ANN1"), test.annotations);
    out.Annotations(Tag("ANN2"), test.annotations2);
    if (test.ecg != nullptr && EcgSize(test.ecg) > 0) {
        out.Chunk(Tag("ECG "), test.ecg, EcgSize(test.ecg));
    }
    if (test.object7600 != nullptr) {
        out.Chunk(Tag("OBJ "), test.object7600, 12);
    }
    if (test.object7604 != nullptr) {
        out.Chunk(Tag("OBJ "), test.object7604, 24);
    }
    WriteSubObjects(test, out);
    const auto size = static_cast<std::uint32_t>(out.block.size());
    const std::uint32_t crc = Crc32(std::span(out.block).subspan(kHeaderSize));
    std::memcpy(out.block.data() + 8, &size, sizeof size);
    std::memcpy(out.block.data() + 12, &crc, sizeof crc);
    return std::move(out.block);
}

TestBlockFault ReadTestBlock(std::span<const std::uint8_t> block, TestRecord& test) {
    Reader all(block);
    std::uint32_t words[4];
    if (!all.Take(words, sizeof words) || words[0] != kMagic) {
        return TestBlockFault::kNotATest;
    }
    if (words[1] > kVersion) {
        return TestBlockFault::kNewer;
    }
    if (words[2] != block.size() || words[3] != Crc32(block.subspan(kHeaderSize))) {
        return TestBlockFault::kDamaged;
    }
    try {
        while (!all.IsAtEnd()) {
            std::uint32_t tag = 0;
            std::span<const std::uint8_t> content;
            if (!all.TakeChunk(tag, content) || !ReadChunk(tag, content, test)) {
                return TestBlockFault::kDamaged;
            }
        }
    } catch (const std::bad_alloc&) {
        return TestBlockFault::kNoMemory;
    }
    return TestBlockFault::kNone;
}

}  // namespace kx
